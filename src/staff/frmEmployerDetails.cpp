#include "frmEmployerDetails.h"
#include "EmployerDetails.h"
#include "data/Database.h"
#include "data/PayeInfo.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

namespace {

QLineEdit* edit(QWidget* parent, const char* name, const char* accessible, int maxLength) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(QString::fromLatin1(name));
    e->setAccessibleName(QString::fromLatin1(accessible));
    e->setMaxLength(maxLength);
    return e;
}

} // namespace

EmployerPanel::EmployerPanel(Database& wage, int part, QWidget* parent) : QWidget(parent), m_wage(wage) {
    setObjectName(QStringLiteral("EmployerPanel"));
    txtName = edit(this, "txtFarmName", "Farm or business name", 100);
    txtAddress = edit(this, "txtAddress", "Postal address", 100);
    txtCity = edit(this, "txtCity", "Town or city", 100);
    txtPostcode = edit(this, "txtPostcode", "Postcode", 100);
    txtIRD = edit(this, "txtEmployerIRD", "Employer IRD number", 20);
    txtGST = edit(this, "txtGST", "GST number", 20);
    txtContactName = edit(this, "txtContactName", "Payroll contact name", 20);
    txtContactPhone = edit(this, "txtContactPhone", "Payroll contact phone", 30);
    txtContactEmail = edit(this, "txtContactEmail", "Payroll contact email", 255);
    txtAccount = edit(this, "txtPayingAccount", "Paying bank account", 30);
    txtAccount->setPlaceholderText(QStringLiteral("01-0902-0068389-00"));
    txtIRD->setPlaceholderText(QStringLiteral("123-456-789"));
    cboPayeFiling = new QComboBox(this);
    cboPayeFiling->setObjectName(QStringLiteral("cboPayeFiling"));
    cboPayeFiling->setAccessibleName(QStringLiteral("PAYE filing"));
    cboPayeFiling->addItem(QStringLiteral("month"), 1);
    cboPayeFiling->addItem(QStringLiteral("two months"), 2);
    cboPayeFiling->addItem(QStringLiteral("six months"), 6);

    auto* form = new QFormLayout;
    const auto row = [&](const QString& caption, QWidget* w) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(w);
        form->addRow(label, w);
    };
    const bool farmPart = part != 2, bankPart = part != 1;
    for (QWidget* w : {static_cast<QWidget*>(txtName), static_cast<QWidget*>(txtAddress),
                       static_cast<QWidget*>(txtCity), static_cast<QWidget*>(txtPostcode),
                       static_cast<QWidget*>(txtIRD), static_cast<QWidget*>(txtGST),
                       static_cast<QWidget*>(txtContactName), static_cast<QWidget*>(txtContactPhone),
                       static_cast<QWidget*>(txtContactEmail)})
        w->setVisible(farmPart);
    txtAccount->setVisible(bankPart);
    cboPayeFiling->setVisible(bankPart);
    if (farmPart) {
        row(QStringLiteral("Farm or business na&me:"), txtName);
        row(QStringLiteral("&Address:"), txtAddress);
        row(QStringLiteral("&Town or city:"), txtCity);
        row(QStringLiteral("Post&code:"), txtPostcode);
        row(QStringLiteral("&IRD number:"), txtIRD);
        row(QStringLiteral("&GST number:"), txtGST);
        row(QStringLiteral("Payroll c&ontact:"), txtContactName);
        row(QStringLiteral("&Phone:"), txtContactPhone);
        row(QStringLiteral("&Email:"), txtContactEmail);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(form);
    if (bankPart) {
        row(QStringLiteral("Pa&ys leave from bank account:"), txtAccount);
        row(QStringLiteral("PAYE filed e&very:"), cboPayeFiling);
        auto* tax = new QPushButton(QStringLiteral("Ta&x Information (cashbook accounts)..."), this);
        tax->setObjectName(QStringLiteral("cmdTaxInformation"));
        tax->setAccessibleName(QStringLiteral("Tax Information"));
        connect(tax, &QPushButton::clicked, this, [this] { runPayeInfoDialog(this); });
        auto* line = new QHBoxLayout;
        line->addWidget(tax);
        line->addStretch();
        layout->addLayout(line);
    }
    lblProblems = new QLabel(this);
    lblProblems->setObjectName(QStringLiteral("lblProblems"));
    lblProblems->setAccessibleName(QStringLiteral("Problems"));
    lblProblems->setWordWrap(true);
    lblProblems->setStyleSheet(QStringLiteral("color: #a00000"));
    lblProblems->hide();
    layout->addWidget(lblProblems);
    load();
}

void EmployerPanel::load() {
    Database farm;
    farm.open(DataFileName());
    const EmployerDetails d = LoadEmployerDetails(m_wage, farm);
    txtName->setText(d.name);
    txtAddress->setText(d.address);
    txtCity->setText(d.city);
    txtPostcode->setText(d.postcode);
    txtIRD->setText(d.ird);
    txtGST->setText(d.gst);
    txtContactName->setText(d.contactName);
    txtContactPhone->setText(d.contactPhone);
    txtContactEmail->setText(d.contactEmail);
    txtAccount->setText(d.account);
    const int i = cboPayeFiling->findData(d.payeMonths);
    cboPayeFiling->setCurrentIndex(i < 0 ? 0 : i);
}

bool EmployerPanel::save() {
    Database farm;
    farm.open(DataFileName());
    EmployerDetails d = LoadEmployerDetails(m_wage, farm);
    d.name = txtName->text();
    d.address = txtAddress->text();
    d.city = txtCity->text();
    d.postcode = txtPostcode->text();
    d.ird = txtIRD->text();
    d.gst = txtGST->text();
    d.contactName = txtContactName->text();
    d.contactPhone = txtContactPhone->text();
    d.contactEmail = txtContactEmail->text();
    d.account = txtAccount->text();
    d.payeMonths = cboPayeFiling->currentData().toInt();
    try {
        SaveEmployerDetails(m_wage, farm, d);
    } catch (const VbError& e) {
        lblProblems->setText(e.description());
        lblProblems->show();
        QLineEdit* culprit = e.description().contains(QStringLiteral("account")) ? txtAccount
                             : e.description().contains(QStringLiteral("IRD"))   ? txtIRD
                             : e.description().contains(QStringLiteral("name"))  ? txtName
                                                                                  : txtContactName;
        if (culprit->isVisible()) culprit->setFocus();
        return false;
    }
    lblProblems->hide();
    return true;
}

frmEmployerDetails::frmEmployerDetails(Database& wage, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmEmployerDetails"));
    setWindowTitle(QStringLiteral("Employer Details"));
    setModal(true);
    m_panel = new EmployerPanel(wage, 0, this);
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* save = buttons->addButton(QStringLiteral("&Save"), QDialogButtonBox::AcceptRole);
    QPushButton* cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    save->setObjectName(QStringLiteral("cmdSave"));
    save->setAccessibleName(QStringLiteral("Save"));
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmEmployerDetails::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_panel);
    layout->addWidget(buttons);
    setMinimumWidth(460);
}

void frmEmployerDetails::accept() {
    if (m_panel->save()) QDialog::accept();
}

bool ShowEmployerDetails(Database& wage, QWidget* owner) {
    frmEmployerDetails d(wage, owner);
    return d.exec() == QDialog::Accepted;
}

} // namespace ql
