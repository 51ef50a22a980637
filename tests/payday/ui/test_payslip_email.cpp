// "Email" on the preview of one payslip, as the wage ledger's commit opens it: the slip shown goes to
// its employee through the pay run's sender; a failed send says why and the pay stays committed.
#include "DemoPayrollUi.h"
#include "mail/PaySlipEmail.h"
#include "mail/PaySlipEmailDialog.h"
#include "payday/PayRun.h"
#include "payengine/PayView.h"
#include "payday/frmPayRun.h"
#include "reports/PrintPaySlip.h"
#include "reports/ReportDriver.h"
#include "reports/ReportPreviewDialog.h"
#include "reports/ReportScreen.h"
#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>

namespace qltest {
namespace {

class PaySlipEmailTest : public DemoPayrollUiTest {
protected:
    void SetUp() override {
        DemoPayrollUiTest::SetUp();
        startMailServer();
        ql::installPaySlipEmailAction();
    }
    void TearDown() override {
        ql::setReportScreenActions({});
        ql::setPreviewShownHook({});
        DemoPayrollUiTest::TearDown();
    }
    // The pay's slip as the report screen prepares it when the wage ledger stands on the pay.
    ql::PreparedReport slipOf(ql::PayRunAdder& adder, const ql::PayRunItem& item) {
        ql::PayView* view = adder.standOn(item);
        EXPECT_NE(view, nullptr);
        if (!view) return {};
        view->openView(6);
        ql::ReportScreen screen;
        ql::PreparePaySlip(screen, *view, QStringLiteral("Weekly up to 6/11/2026"), item.reference,
                           QVariant(item.payDate), false);
        ql::UseCustomizedHeadings(screen.cry_report);
        return screen.cry_report.prepare();
    }
    // Opens the preview the report screen opens, presses its Email and closes it; false when the
    // preview offered no Email.
    bool emailFromPreview(const ql::PreparedReport& report) {
        bool offered = false;
        ql::setPreviewShownHook([&](QDialog* preview) {
            for (QAction* a : preview->actions())
                if (a->objectName() == QLatin1String("Email the payslip")) {
                    offered = true;
                    EXPECT_EQ(a->shortcut(), QKeySequence(QStringLiteral("Ctrl+E")));
                    a->trigger();
                }
            preview->reject();
        });
        ql::PreviewReports({report}, report.name, nullptr, ql::reportScreenActions(report));
        ql::setPreviewShownHook({});
        return offered;
    }
    QList<ql::PayRunItem> commitRun() {
        ql::frmPayRun d(context.WageDatabase);
        d.dtpRunDate->setDate(QDate(2026, 11, 6));
        EXPECT_EQ(d.addPays(), 5);
        d.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::None));
        EXPECT_EQ(d.commitPays(), 5);
        d.propose();
        return d.items();
    }
    int committed() {
        return context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE Reference IS NOT NULL"))
            .toInt();
    }
};

TEST_F(PaySlipEmailTest, ThePreviewedSlipGoesToItsEmployee) {
    const QList<ql::PayRunItem> run = commitRun();
    ASSERT_EQ(run.size(), 5);
    const ql::PayRunItem item = run.at(1);
    ASSERT_TRUE(item.committed());
    ql::PayRunAdder adder;
    const ql::PreparedReport report = slipOf(adder, item);
    ASSERT_EQ(context.CurrentWageID, item.wageID);
    ASSERT_TRUE(emailFromPreview(report));

    const QString to = ql::PaySlipMailOf(context.WageDatabase, item.wageID).to;
    ASSERT_FALSE(to.isEmpty());
    EXPECT_EQ(dialogs.calls.last().message, QStringLiteral("The payslip was sent to %1.").arg(to));
    ASSERT_EQ(sink->received(1), 1);
    EXPECT_EQ(sink->text(QStringLiteral("1.rcpt")).trimmed(), to);
    EXPECT_TRUE(sink->text(QStringLiteral("1.subject")).startsWith(QStringLiteral("Payslip 6 November 2026")))
        << sink->text(QStringLiteral("1.subject")).toStdString();
    const QStringList files = sink->attachments(1);
    ASSERT_EQ(files.size(), 1);
    const QString text = pdfText(files.first());
    EXPECT_TRUE(text.contains(QStringLiteral("Payslip For ") + item.name)) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Reference: ") + item.reference)) << text.toStdString();
}

TEST_F(PaySlipEmailTest, AFailedSendSaysWhyAndThePayStaysCommitted) {
    const QList<ql::PayRunItem> run = commitRun();
    ASSERT_EQ(run.size(), 5);
    ql::MailSettings mail = ql::ReadMailSettings();
    mail.port = 1; // nothing listens there
    ql::SaveMailSettings(mail);
    ql::PayRunAdder adder;
    const ql::PreparedReport report = slipOf(adder, run.first());
    ASSERT_TRUE(emailFromPreview(report));
    const QString said = dialogs.calls.last().message;
    EXPECT_TRUE(said.startsWith(QStringLiteral("The payslip was not sent: ") + run.first().name + u':'))
        << said.toStdString();
    EXPECT_TRUE(said.contains(QStringLiteral("did not take it"))) << said.toStdString();
    EXPECT_EQ(committed(), 5);
    EXPECT_EQ(sink->received(0), 0);
}

TEST_F(PaySlipEmailTest, OnlyACommittedPaysSlipIsSentAndOnlyPayslipsOfferIt) {
    commitRun();
    // The next week's pays (of the weekly employees), added and not committed.
    ql::frmPayRun next(context.WageDatabase);
    next.dtpRunDate->setDate(QDate(2026, 11, 13));
    ASSERT_GE(next.addPays(), 1);
    ql::PayRunItem open;
    for (const ql::PayRunItem& i : next.items())
        if (i.wageID && !i.committed()) open = i;
    ASSERT_NE(open.wageID, 0);
    ql::PayRunAdder adder;
    const ql::PreparedReport report = slipOf(adder, open);
    const QString why = ql::EmailShownPaySlip(open.wageID, report);
    EXPECT_EQ(why, open.name + QStringLiteral(": the pay is not committed, so its payslip is not sent yet."));
    EXPECT_EQ(sink->received(0), 0);

    ql::PreparedReport history = report;
    history.reportFile = QStringLiteral("ql_quickview.rpt");
    EXPECT_TRUE(ql::reportScreenActions(history).isEmpty());
    EXPECT_EQ(ql::reportScreenActions(report).size(), 1);
}

} // namespace
} // namespace qltest
