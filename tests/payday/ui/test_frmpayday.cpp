// The payday screens offscreen: numbers checked where they are typed, files refused with the
// employees to fix, then written.
#include "../PaydayFixture.h"
#include "cashbook/PaySlipPrinter.h"
#include "payday/frmBankAccounts.h"
#include "payday/frmPayRun.h"
#include "payday/frmPaydayFiles.h"
#include "payday/frmPaydaySettings.h"
#include "payengine/PayList.h"
#include "payengine/PayView.h"
#include "runtime/DateFns.h"
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

namespace qltest {
namespace {

void snapshot(QWidget& w, const char* name) {
    // A picture for a person to look at; the test does not depend on it.
    w.show();
    const QString dir = qEnvironmentVariable("PAYDAY_SNAPSHOTS");
    if (!dir.isEmpty()) w.grab().save(dir + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png"));
}

TEST_F(PaydayTest, SettingsDialogChecksWhatIsTyped) {
    ql::frmPaydaySettings d(wage);
    snapshot(d, "payday_settings");
    d.txtContactName->setText(QStringLiteral("Pat Payroll"));
    d.txtEmployerIRD->setText(QStringLiteral("136410133"));
    d.accept();
    EXPECT_EQ(d.result(), QDialog::Rejected);
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("fails Inland Revenue's check")));
    EXPECT_EQ(ql::LoadPaydaySettings(wage).contactName, QString()); // nothing stored
    d.txtEmployerIRD->setText(QStringLiteral("136-410-132"));
    d.txtPayingAccount->setText(QStringLiteral("01-0902-0068388-00"));
    d.accept();
    EXPECT_EQ(dialogs.calls.size(), 2);
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("fails its check digit")));
    d.txtPayingAccount->setText(QStringLiteral("01-0902-0068389-00"));
    d.accept();
    EXPECT_EQ(d.result(), QDialog::Accepted);
    const ql::PaydaySettings s = ql::LoadPaydaySettings(wage);
    EXPECT_EQ(s.contactName, QStringLiteral("Pat Payroll"));
    EXPECT_EQ(s.employerIrd, QStringLiteral("136-410-132"));
    EXPECT_EQ(s.payingAccount, QStringLiteral("01-0902-0068389-00"));
    EXPECT_FALSE(d.txtContactName->accessibleName().isEmpty());
}

TEST_F(PaydayTest, BankAccountsAreCheckedWhenTyped) {
    ql::frmBankAccounts d(wage);
    snapshot(d, "bank_accounts");
    QTableWidget* grid = d.tgrdAccounts;
    ASSERT_EQ(grid->rowCount(), 5); // the current employees
    EXPECT_EQ(grid->item(0, 0)->text(), QStringLiteral("Dana Fictional"));
    grid->item(0, 1)->setText(QStringLiteral("01-0902-0068388-00"));
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("fails its check digit")));
    EXPECT_EQ(grid->item(0, 1)->text(), QString());
    grid->item(0, 1)->setText(validAccount(4));
    EXPECT_EQ(dialogs.calls.size(), 1);
    EXPECT_EQ(ql::EmployeeBankAccount(wage, 4), validAccount(4));
    EXPECT_TRUE(d.commitRow(1, validAccount(5)));
    EXPECT_FALSE(d.commitRow(1, QStringLiteral("12-3001-12")));
    EXPECT_EQ(grid->item(1, 1)->text(), validAccount(5));
}

TEST_F(PaydayTest, FilesDialogRefusesThenWrites) {
    ql::frmPaydayFiles d(wage);
    snapshot(d, "payday_files");
    d.dtpPaymentDate->setDate(kPaymentDate);
    QString written;
    d.choosePath = [&](const QString&, const QString& suggested) {
        written = docs->path() + QLatin1Char('/') + suggested;
        return written;
    };
    wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = '111-111-112' WHERE EmployeeID = 2"));
    EXPECT_FALSE(d.makePaydayFile());
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_TRUE(
        dialogs.calls.last().message.contains(QStringLiteral("Barry Sampleton: IRD number 111-111-112")));
    EXPECT_TRUE(written.isEmpty());

    fixIrdNumbers();
    EXPECT_TRUE(d.makePaydayFile());
    EXPECT_TRUE(written.endsWith(QStringLiteral("EI_20261201.csv")));
    EXPECT_TRUE(QFile::exists(written));
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("ready to upload to Inland Revenue")));

    d.dtpSince->setDate(QDate(2025, 10, 1));
    EXPECT_TRUE(d.makeDetailsFile());
    EXPECT_TRUE(ql::LoadPaydaySettings(wage).lastDetailsFile.isValid());

    ql::PaydaySettings s = ql::LoadPaydaySettings(wage);
    s.payingAccount = validAccount(0, QStringLiteral("02-0001")); // a BNZ account
    ql::SavePaydaySettings(wage, s);
    ql::frmPaydayFiles again(wage);
    EXPECT_EQ(again.cboBankFormat->currentText(), QStringLiteral("BNZ"));
    again.dtpPaymentDate->setDate(kPaymentDate);
    again.choosePath = d.choosePath;
    EXPECT_FALSE(again.makeBankFile()); // no employee has an account yet
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("no bank account")));
    for (int id = 1; id <= 5; ++id)
        ql::SetEmployeeBankAccount(wage, id, validAccount(id));
    EXPECT_TRUE(again.makeBankFile());
    EXPECT_TRUE(written.endsWith(QStringLiteral("BNZ_20261201.csv")));
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("5 payments of $")));
}

// A pay date already past: the screen says so and offers today; No writes nothing, Yes pays today.
TEST_F(PaydayTest, FilesDialogOffersTodayForAPastPayDate) {
    fixIrdNumbers();
    ql::PaydaySettings s = ql::LoadPaydaySettings(wage);
    s.payingAccount = validAccount(0, QStringLiteral("02-0001"));
    ql::SavePaydaySettings(wage, s);
    for (int id = 1; id <= 5; ++id)
        ql::SetEmployeeBankAccount(wage, id, validAccount(id));
    wage.execute(QStringLiteral("UPDATE Wages SET PaymentDate = '2026-11-06' WHERE Reference IS NOT NULL"));
    ql::frmPaydayFiles d(wage);
    d.dtpPaymentDate->setDate(QDate(2026, 11, 6));
    QString written;
    d.choosePath = [&](const QString&, const QString& suggested) {
        written = docs->path() + QLatin1Char('/') + suggested;
        return written;
    };
    dialogs.queueAnswer(ql::msg::No);
    EXPECT_FALSE(d.makeBankFile());
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("is past"))) << dialogs.calls.last().message.toStdString();
    EXPECT_TRUE(written.isEmpty());
    dialogs.queueAnswer(ql::msg::Yes);
    EXPECT_TRUE(d.makeBankFile());
    const QStringList header = readFile(written).section(QStringLiteral("\r\n"), 0, 0).split(u',');
    EXPECT_EQ(header.value(6), ql::Today().toString(QStringLiteral("yyMMdd")));
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("5 payments of $")));
}

} // namespace
} // namespace qltest

namespace qltest {
namespace {

class PayRunScreenTest : public DocumentsTest {
protected:
    void SetUp() override {
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
        context.WageDatabase.open(ql::WageFileName());
    }
    void TearDown() override {
        context.WageDatabase.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    int pays() { return context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM Wages")).toInt(); }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

TEST_F(PayRunScreenTest, ProposesAddsLeavesOutAndNeverAddsTwice) {
    ql::frmPayRun d(context.WageDatabase);
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    ASSERT_EQ(d.tgrdRun->rowCount(), 5);
    EXPECT_EQ(d.tgrdRun->item(0, 7)->text(), QStringLiteral("To add"));
    EXPECT_TRUE(d.cmdAddPays->isEnabled());
    d.tgrdRun->item(1, 0)->setCheckState(Qt::Unchecked); // Eli Madeup left out
    EXPECT_EQ(d.addPays(), 4);
    EXPECT_EQ(pays(), 4);
    ASSERT_EQ(d.tgrdRun->rowCount(), 5);
    EXPECT_EQ(d.tgrdRun->item(1, 7)->text(), QStringLiteral("To add"));
    EXPECT_EQ(d.tgrdRun->item(1, 0)->checkState(), Qt::Unchecked); // still left out
    EXPECT_EQ(d.tgrdRun->item(0, 7)->text(), QStringLiteral("Added"));
    EXPECT_TRUE(d.tgrdRun->item(0, 4)->text().startsWith(u'$'));
    EXPECT_TRUE(d.lblTotal->text().startsWith(QStringLiteral("5 pays, take-home $")));
    snapshot(d, "pay_run");
    d.tgrdRun->item(1, 0)->setCheckState(Qt::Checked);
    EXPECT_EQ(d.addPays(), 1);
    EXPECT_EQ(pays(), 5);
    EXPECT_FALSE(d.cmdAddPays->isEnabled());
    EXPECT_EQ(d.addPays(), 0);
    EXPECT_EQ(pays(), 5);
    // Opening a pay goes through the main window's hook.
    qint32 opened = -1;
    d.openInLedger = [&](qint32, qint32 wageID) { opened = wageID; };
    d.tgrdRun->setCurrentCell(0, 1);
    d.cmdOpen->click();
    EXPECT_EQ(opened, d.items().at(0).wageID);

    // Without a commit of a pay the run cannot be committed.
    d.commitPay = {};
    d.propose();
    EXPECT_FALSE(d.cmdCommit->isEnabled());
    int failures = 1;
    d.commitPay = [&](ql::PayView& screen, const ql::PayRunItem& item) -> QString {
        if (item.employeeID == 3 && failures-- > 0) return QStringLiteral("Need reference");
        screen.datPays.setValueNow(QStringLiteral("Reference"), QStringLiteral("R%1").arg(item.wageID));
        return QString();
    };
    d.propose();
    ASSERT_TRUE(d.cmdCommit->isEnabled());
    EXPECT_EQ(d.commitPays(), 2); // Dana Fictional and Eli Madeup, then Casey Placeholder fails
    EXPECT_TRUE(dialogs.calls.last().message.contains(
        QStringLiteral("The run stopped at Casey Placeholder: Need reference")));
    EXPECT_TRUE(dialogs.calls.last().message.contains(
        QStringLiteral("Not committed yet:\nCasey Placeholder\nBarry Sampleton")));
    EXPECT_EQ(d.tgrdRun->item(0, 7)->text(), QStringLiteral("Committed (R%1)").arg(d.items().at(0).wageID));
    EXPECT_EQ(d.commitPays(), 3);
    EXPECT_FALSE(d.cmdCommit->isEnabled());
    EXPECT_EQ(
        context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE length(Reference) > 0"))
            .toInt(),
        5);
    EXPECT_EQ(pays(), 5);
}

} // namespace
} // namespace qltest

namespace qltest {
namespace {

TEST_F(PayRunScreenTest, TheWholeDemoFarmCommittedAndPostedFromTheScreen) {
    ql::SavePrintPaySlip(0); // no report screen per pay in this test
    ql::frmPayRun d(context.WageDatabase);
    ASSERT_TRUE(d.commitPay) << "the commit dialog's steps by default";
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    EXPECT_EQ(d.addPays(), 5);
    ASSERT_TRUE(d.cmdCommit->isEnabled());
    EXPECT_EQ(d.commitPays(), 5);
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("5 pays were committed.")));
    for (int r = 0; r < 5; ++r)
        EXPECT_TRUE(d.tgrdRun->item(r, 7)->text().startsWith(QStringLiteral("Committed ("))) << r;
    EXPECT_FALSE(d.cmdCommit->isEnabled());
    EXPECT_EQ(d.commitPays(), 0);
    ql::Database farm;
    farm.open(ql::DataFileName());
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(DISTINCT WageID) FROM QuillaryPostedPays")).toInt(),
              5);
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM QuillaryPostedPays")).toInt(), 5);
    farm.close();
    EXPECT_EQ(pays(), 5);
}

} // namespace
} // namespace qltest
