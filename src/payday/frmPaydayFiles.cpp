#include "frmPaydayFiles.h"
#include "BankFile.h"
#include "BankFileCheck.h"
#include "PaydayFileCheck.h"
#include "PaydayFiles.h"
#include "PaydayTables.h"
#include "PaydayText.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frmBankAccounts.h"
#include "frmPaydaySettings.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

namespace {

QDateEdit* dateEdit(QWidget* parent, const QString& name, const QString& accessible, const QDate& date) {
    auto* d = new QDateEdit(date, parent);
    d->setObjectName(name);
    d->setAccessibleName(accessible);
    d->setCalendarPopup(true);
    d->setDisplayFormat(QStringLiteral("dd MMM yyyy"));
    return d;
}

QPushButton* button(QWidget* parent, const QString& name, const QString& caption, const QString& accessible) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAccessibleName(accessible);
    b->setAutoDefault(false);
    return b;
}

// The names written otherwise than stored, after the message.
QString notesText(const QStringList& notes) {
    return notes.isEmpty() ? QString() : QStringLiteral("\n\n") + notes.join(u'\n');
}

void refuse(const QString& why, const QString& heading) {
    ShowMessage(why, msg::OKOnly, Firm(), heading, QString(), msg::Warning, true);
}

} // namespace

frmPaydayFiles::frmPaydayFiles(Database& wage, QWidget* parent) : QDialog(parent), m_wage(wage) {
    setWindowTitle(QStringLiteral("Payday Files"));
    setModal(true);
    const PaydaySettings settings = LoadPaydaySettings(wage);
    dtpPaymentDate =
        dateEdit(this, QStringLiteral("dtpPaymentDate"), QStringLiteral("Payment date"), Today());
    const QDate since = settings.lastDetailsFile.isValid() ? settings.lastDetailsFile : Today().addMonths(-1);
    dtpSince = dateEdit(this, QStringLiteral("dtpSince"), QStringLiteral("New and departing employees since"),
                        since);
    cboBankFormat = new QComboBox(this);
    cboBankFormat->setObjectName(QStringLiteral("cboBankFormat"));
    cboBankFormat->setAccessibleName(QStringLiteral("Bank file format"));
    for (BankFormat f : BankFormats())
        cboBankFormat->addItem(BankFormatName(f), static_cast<int>(f));
    selectFormatOfPayingAccount();

    cmdPaydayFile = button(this, QStringLiteral("cmdPaydayFile"), QStringLiteral("&Payday filing file..."),
                           QStringLiteral("Make the payday filing file"));
    cmdDetailsFile =
        button(this, QStringLiteral("cmdDetailsFile"), QStringLiteral("&Employee details file..."),
               QStringLiteral("Make the employee details file"));
    cmdBankFile = button(this, QStringLiteral("cmdBankFile"), QStringLiteral("&Bank file..."),
                         QStringLiteral("Make the bank file"));
    cmdSettings = button(this, QStringLiteral("cmdSettings"), QStringLiteral("Se&ttings..."),
                         QStringLiteral("Payday settings"));
    cmdAccounts = button(this, QStringLiteral("cmdAccounts"), QStringLiteral("Bank &accounts..."),
                         QStringLiteral("Employee bank accounts"));
    auto* cmdClose =
        button(this, QStringLiteral("cmdClose"), QStringLiteral("&Close"), QStringLiteral("Close"));

    auto* grid = new QGridLayout;
    const auto label = [&](const QString& caption, QWidget* buddy, int row) {
        auto* l = new QLabel(caption, this);
        l->setBuddy(buddy);
        grid->addWidget(l, row, 0);
        grid->addWidget(buddy, row, 1);
    };
    label(QStringLiteral("Pays paid &on:"), dtpPaymentDate, 0);
    grid->addWidget(cmdPaydayFile, 0, 2);
    label(QStringLiteral("Started or finished &since:"), dtpSince, 1);
    grid->addWidget(cmdDetailsFile, 1, 2);
    label(QStringLiteral("Bank &format:"), cboBankFormat, 2);
    grid->addWidget(cmdBankFile, 2, 2);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(cmdSettings);
    bottom->addWidget(cmdAccounts);
    bottom->addStretch();
    bottom->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addSpacing(8);
    layout->addLayout(bottom);

    setTabOrder(dtpPaymentDate, cmdPaydayFile);
    setTabOrder(cmdPaydayFile, dtpSince);
    setTabOrder(dtpSince, cmdDetailsFile);
    setTabOrder(cmdDetailsFile, cboBankFormat);
    setTabOrder(cboBankFormat, cmdBankFile);
    setTabOrder(cmdBankFile, cmdSettings);
    setTabOrder(cmdSettings, cmdAccounts);
    setTabOrder(cmdAccounts, cmdClose);

    choosePath = [this](const QString& caption, const QString& suggested) {
        return QFileDialog::getSaveFileName(this, caption, QDir::home().filePath(suggested),
                                            QStringLiteral("CSV files (*.csv);;All files (*)"));
    };
    connect(cmdPaydayFile, &QPushButton::clicked, this, [this] { makePaydayFile(); });
    connect(cmdDetailsFile, &QPushButton::clicked, this, [this] { makeDetailsFile(); });
    connect(cmdBankFile, &QPushButton::clicked, this, [this] { makeBankFile(); });
    connect(cmdSettings, &QPushButton::clicked, this, [this] {
        if (ShowPaydaySettings(m_wage, this)) selectFormatOfPayingAccount();
    });
    connect(cmdAccounts, &QPushButton::clicked, this, [this] { ShowEmployeeBankAccounts(m_wage, this); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void frmPaydayFiles::selectFormatOfPayingAccount() {
    const BankFormat f = BankFormatForAccount(LoadPaydaySettings(m_wage).payingAccount);
    const int index = cboBankFormat->findData(static_cast<int>(f));
    if (index >= 0) cboBankFormat->setCurrentIndex(index);
}

QString frmPaydayFiles::save(const QString& caption, const QString& suggested, const QString& text,
                             const QString& what, const FileCheck& check) {
    const QString path = choosePath(caption, suggested);
    if (path.isEmpty()) return QString();
    try {
        WritePaydayFile(path, text, what, check);
    } catch (const VbError& e) {
        refuse(e.description(), QStringLiteral("An Error has Occurred"));
        return QString();
    }
    return QDir::toNativeSeparators(path);
}

void frmPaydayFiles::tell(const QString& caption, const QString& text) {
    ShowMessage(text, msg::OKOnly, Firm(), caption, QString(), msg::Information, true);
}

bool frmPaydayFiles::makePaydayFile() {
    const QDate date = dtpPaymentDate->date();
    const QString caption = QStringLiteral("Payday Filing File");
    const PaydayFile file = EmploymentInformationFile(m_wage, date);
    if (!file.ok()) {
        refuse(file.refusal, caption);
        return false;
    }
    const QString path = save(caption, QStringLiteral("EI_%1.csv").arg(date.toString(QStringLiteral("yyyyMMdd"))),
                              file.text, QStringLiteral("payday filing file"), CheckEmploymentInformationFile);
    if (path.isEmpty()) return false;
    tell(caption, QStringLiteral("The payday filing file of %1 is saved as %2, ready to upload to Inland Revenue.")
                          .arg(Counted(file.lines, QStringLiteral("pay"), QStringLiteral("pays")), path) +
                      notesText(file.notes));
    return true;
}

bool frmPaydayFiles::makeDetailsFile() {
    const QString caption = QStringLiteral("Employee Details File");
    const PaydayFile file = EmployeeDetailsFile(m_wage, dtpSince->date());
    if (!file.ok()) {
        refuse(file.refusal, caption);
        return false;
    }
    const QString path =
        save(caption, QStringLiteral("ED_%1.csv").arg(Today().toString(QStringLiteral("yyyyMMdd"))), file.text,
             QStringLiteral("employee details file"), CheckEmployeeDetailsFile);
    if (path.isEmpty()) return false;
    PaydaySettings s = LoadPaydaySettings(m_wage);
    s.lastDetailsFile = Today();
    SavePaydaySettings(m_wage, s);
    tell(caption, QStringLiteral("The details of %1 are saved as %2.")
                          .arg(Counted(file.lines, QStringLiteral("new or departing employee"),
                                       QStringLiteral("new or departing employees")),
                               path) +
                      notesText(file.notes));
    return true;
}

bool frmPaydayFiles::makeBankFile() {
    const QDate date = dtpPaymentDate->date();
    const QString caption = QStringLiteral("Bank File");
    const auto format = static_cast<BankFormat>(cboBankFormat->currentData().toInt());
    const QDate made = Today();
    BankFile file = MakeBankFile(m_wage, date, format, made);
    // A pay date already past: the bank would refuse it, so today is offered instead.
    if (file.pastDue &&
        ShowMessage(file.refusal + QStringLiteral("\n\nHave the bank pay today, %1?").arg(dateText(QVariant(made))),
                    msg::YesNo, Firm(), caption, QString(), msg::Question, true) == msg::Yes)
        file = MakeBankFile(m_wage, date, format, made, made);
    else if (file.pastDue)
        return false;
    if (!file.ok()) {
        refuse(file.refusal, caption);
        return false;
    }
    const QString path =
        save(caption,
             QStringLiteral("%1_%2.csv").arg(BankFormatName(format).remove(u' '), date.toString(QStringLiteral("yyyyMMdd"))),
             file.text, QStringLiteral("bank file"),
             [format, made](const QString& text) { return CheckBankFile(text, format, made); });
    if (path.isEmpty()) return false;
    tell(caption, QStringLiteral("%1 of %2 in all, due %3, are saved as %4 for %5's import.")
                          .arg(Counted(file.payments, QStringLiteral("payment"), QStringLiteral("payments")),
                               QStringLiteral("$%1.%2")
                                   .arg(file.totalCents / 100)
                                   .arg(file.totalCents % 100, 2, 10, QChar(u'0')),
                               dateText(QVariant(file.due)), path, BankFormatName(format)) +
                      notesText(file.notes));
    return true;
}

void ShowPaydayFiles(Database& wage, QWidget* owner) {
    frmPaydayFiles d(wage, owner);
    d.exec();
}

} // namespace ql
