#include "frmPaydaySettings.h"
#include "BankAccount.h"
#include "IrdNumber.h"
#include "PaydayTables.h"
#include "data/FarmDetails.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

namespace {

QLineEdit* edit(QWidget* parent, const QString& name, const QString& value, int maxLength) {
    auto* e = new QLineEdit(value, parent);
    e->setObjectName(name);
    e->setMaxLength(maxLength);
    return e;
}

} // namespace

frmPaydaySettings::frmPaydaySettings(Database& wage, QWidget* parent) : QDialog(parent), m_wage(wage) {
    setWindowTitle(QStringLiteral("Payday Settings"));
    setModal(true);
    const PaydaySettings s = LoadPaydaySettings(wage);
    txtContactName = edit(this, QStringLiteral("txtContactName"), s.contactName, 255);
    txtContactPhone = edit(this, QStringLiteral("txtContactPhone"), s.contactPhone, 30);
    txtContactEmail = edit(this, QStringLiteral("txtContactEmail"), s.contactEmail, 255);
    txtEmployerIRD = edit(this, QStringLiteral("txtEmployerIRD"), s.employerIrd, 20);
    txtEmployerIRD->setPlaceholderText(GetIRDNumber());
    txtPayingAccount = edit(this, QStringLiteral("txtPayingAccount"), s.payingAccount, 30);
    txtPayingAccount->setPlaceholderText(QStringLiteral("01-0902-0068389-00"));

    txtContactName->setAccessibleName(QStringLiteral("Payroll contact name"));
    txtContactPhone->setAccessibleName(QStringLiteral("Payroll contact phone"));
    txtContactEmail->setAccessibleName(QStringLiteral("Payroll contact email"));
    txtEmployerIRD->setAccessibleName(QStringLiteral("Employer IRD number"));
    txtPayingAccount->setAccessibleName(QStringLiteral("Paying bank account"));

    auto* form = new QFormLayout;
    const auto row = [&](const QString& caption, QLineEdit* e) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(e);
        form->addRow(label, e);
    };
    row(QStringLiteral("Payroll &contact:"), txtContactName);
    row(QStringLiteral("&Phone:"), txtContactPhone);
    row(QStringLiteral("&Email:"), txtContactEmail);
    row(QStringLiteral("Employer &IRD number:"), txtEmployerIRD);
    row(QStringLiteral("Pays leave &from account:"), txtPayingAccount);
    auto* note = new QLabel(
        QStringLiteral("Leave the IRD number empty to use the farm's (%1).").arg(GetIRDNumber()), this);
    note->setWordWrap(true);
    note->setAccessibleName(QStringLiteral("Note on the IRD number"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setAccessibleName(QStringLiteral("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setAccessibleName(QStringLiteral("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmPaydaySettings::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(note);
    layout->addWidget(buttons);
    setTabOrder(txtContactName, txtContactPhone);
    setTabOrder(txtContactPhone, txtContactEmail);
    setTabOrder(txtContactEmail, txtEmployerIRD);
    setTabOrder(txtEmployerIRD, txtPayingAccount);
    setMinimumWidth(420);
}

void frmPaydaySettings::accept() {
    PaydaySettings s = LoadPaydaySettings(m_wage);
    s.contactName = txtContactName->text();
    s.contactPhone = txtContactPhone->text();
    s.contactEmail = txtContactEmail->text();
    s.employerIrd = txtEmployerIRD->text();
    s.payingAccount = txtPayingAccount->text();
    const QString problem = PaydaySettingsProblem(s);
    if (!problem.isEmpty()) {
        ShowMessage(problem, msg::OKOnly, Firm(), QStringLiteral("Please Check"), QString(), msg::Warning,
                    true);
        QLineEdit* culprit = txtContactEmail;
        if (!s.employerIrd.trimmed().isEmpty() && !IsValidIrdNumber(s.employerIrd))
            culprit = txtEmployerIRD;
        else if (!s.payingAccount.trimmed().isEmpty() && !IsValidBankAccount(s.payingAccount))
            culprit = txtPayingAccount;
        else if (!PayrollContactNameProblem(s.contactName).isEmpty())
            culprit = txtContactName;
        else if (!PayrollContactPhoneProblem(s.contactPhone).isEmpty())
            culprit = txtContactPhone;
        culprit->setFocus();
        culprit->selectAll();
        return;
    }
    SavePaydaySettings(m_wage, s);
    QDialog::accept();
}

bool ShowPaydaySettings(Database& wage, QWidget* owner) {
    frmPaydaySettings d(wage, owner);
    return d.exec() == QDialog::Accepted;
}

} // namespace ql
