// The pay run from one screen: one confirmation with the count and the totals, no screen per pay, the
// payslips where the run sends them, and the totals of every column beneath the list.
#include "DemoPayrollUi.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "payday/frmPayRun.h"
#include "reports/ReportPreviewDialog.h"
#include <QAction>
#include <QComboBox>
#include <QFileInfo>
#include <algorithm>
#include <QDateEdit>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

namespace qltest {
namespace {

QString money(ql::Currency c) {
    return ql::Format(QVariant::fromValue(c), QStringLiteral("Currency"));
}

using PayRunSlipsTest = DemoPayrollUiTest;

TEST_F(PayRunSlipsTest, TotalsOfEveryColumnBeneathTheList) {
    ql::frmPayRun d(context.WageDatabase);
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    ASSERT_EQ(d.addPays(), 5);
    ql::Currency gross, paye, deductions, takeHome;
    for (const ql::PayRunItem& i : d.items()) {
        gross += i.gross;
        paye += i.paye;
        deductions += i.deductions;
        takeHome += i.takeHome;
    }
    ASSERT_EQ(d.tgrdTotals->rowCount(), 1);
    EXPECT_EQ(d.tgrdTotals->item(0, 1)->text(), QStringLiteral("5 pays"));
    EXPECT_EQ(d.tgrdTotals->item(0, 3)->text(), money(gross));
    EXPECT_EQ(d.tgrdTotals->item(0, 4)->text(), money(paye));
    EXPECT_EQ(d.tgrdTotals->item(0, 5)->text(), money(deductions));
    EXPECT_EQ(d.tgrdTotals->item(0, 6)->text(), money(takeHome));
    EXPECT_GT(gross, ql::Currency());
    // A pay left out leaves the totals at once.
    const ql::PayRunItem first = d.items().at(0);
    d.tgrdRun->item(0, 0)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(d.tgrdTotals->item(0, 1)->text(), QStringLiteral("4 pays"));
    EXPECT_EQ(d.tgrdTotals->item(0, 6)->text(), money(takeHome - first.takeHome));
    EXPECT_FALSE(d.tgrdRun->wordWrap());
}

// A first pay made by the wage screen has its PAYE only after a save: the run brings it in before it
// asks, so the totals of the question are the ones committed.
TEST_F(PayRunSlipsTest, TheQuestionShowsTheFiguresTheCommitGives) {
    ASSERT_EQ(runCli({QStringLiteral("add-pay"), QStringLiteral("1"), QStringLiteral("2026-11-06")}, docs->path())
                  .exitCode,
              0);
    const auto stored = [&](const QString& sql) { return context.WageDatabase.scalar(sql); };
    ASSERT_EQ(ql::CCur(stored(QStringLiteral("SELECT PAYE FROM Wages WHERE EmployeeID = 1"))), ql::Currency())
        << "a first pay as the wage screen leaves it";
    ql::frmPayRun d(context.WageDatabase);
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    d.addPays();
    ASSERT_EQ(d.items().size(), 5);
    d.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::None));
    const int before = int(dialogs.calls.size());
    EXPECT_EQ(d.commitPays(), 5);
    ASSERT_GT(dialogs.calls.size(), before);
    const QString question = dialogs.calls.at(before).message;
    ASSERT_TRUE(question.startsWith(QStringLiteral("Commit 5 pays"))) << question.toStdString();
    const ql::Currency paye =
        ql::CCur(stored(QStringLiteral("SELECT sum(PAYE) FROM Wages WHERE length(Reference) > 0")));
    const ql::Currency takeHome =
        ql::CCur(stored(QStringLiteral("SELECT sum(TakeHome) FROM Wages WHERE length(Reference) > 0")));
    EXPECT_GT(ql::CCur(stored(QStringLiteral("SELECT PAYE FROM Wages WHERE EmployeeID = 1"))), ql::Currency());
    EXPECT_TRUE(question.contains(QStringLiteral("PAYE: ") + money(paye))) << question.toStdString();
    EXPECT_TRUE(question.contains(QStringLiteral("Take-home: ") + money(takeHome))) << question.toStdString();
    // The list beneath shows the same.
    EXPECT_EQ(d.tgrdTotals->item(0, 4)->text(), money(paye));
}

TEST_F(PayRunSlipsTest, OneConfirmationThenEveryPayslipAsAPdfFile) {
    QTemporaryDir out;
    const QString folder = out.path() + QStringLiteral("/slips");
    ql::frmPayRun d(context.WageDatabase);
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    ASSERT_EQ(d.addPays(), 5);
    d.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::PdfFolder));
    d.txtSlipFolder->setText(folder);
    const QString question = d.confirmationText();
    EXPECT_TRUE(question.startsWith(QStringLiteral("Commit 5 pays of "))) << question.toStdString();
    for (const char* line : {"\nGross: $", "\nPAYE: $", "\nDeductions: $", "\nTake-home: $"})
        EXPECT_TRUE(question.contains(QLatin1String(line))) << line;
    EXPECT_TRUE(question.contains(QStringLiteral("payday filing file"))) << question.toStdString();
    EXPECT_TRUE(question.contains(QStringLiteral("direct-credit file"))) << question.toStdString();
    EXPECT_TRUE(question.contains(QDir::toNativeSeparators(folder)));

    const int before = dialogs.calls.size();
    EXPECT_EQ(d.commitPays(), 5);
    // The confirmation and the account of what was done: nothing in between.
    QStringList shown;
    for (int i = before; i < dialogs.calls.size(); ++i)
        shown << dialogs.calls.at(i).message;
    ASSERT_EQ(dialogs.calls.size(), before + 2) << shown.join(QStringLiteral("\n---\n")).toStdString();
    EXPECT_EQ(dialogs.calls.at(before).message, question);
    EXPECT_TRUE(dialogs.calls.last().message.startsWith(QStringLiteral("5 pays were committed.")));
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("5 payslips were saved as PDF files")))
        << dialogs.calls.last().message.toStdString();
    ASSERT_EQ(d.slipFiles().size(), 5);
    QStringList names;
    for (const ql::PayRunItem& i : d.items())
        names << i.name;
    for (const QString& file : d.slipFiles()) {
        ASSERT_TRUE(QFileInfo::exists(file)) << file.toStdString();
        const QString text = pdfText(file);
        const auto who = std::find_if(names.cbegin(), names.cend(),
                                      [&](const QString& n) { return QFileInfo(file).fileName().contains(n); });
        ASSERT_NE(who, names.cend()) << file.toStdString();
        EXPECT_TRUE(text.contains(*who)) << text.toStdString();
        // The slip's lines are its own pay's, not those of the pay shown before it.
        const ql::PayRunItem& item = d.items().at(static_cast<int>(who - names.cbegin()));
        const QString takeHome = ql::Format(QVariant::fromValue(item.takeHome), QStringLiteral("0.00"));
        EXPECT_TRUE(text.contains(takeHome)) << who->toStdString() << " " << takeHome.toStdString() << "\n"
                                             << text.toStdString();
    }
    EXPECT_EQ(ql::ReadSlipDelivery(), ql::SlipDelivery::PdfFolder); // the choice is kept
    EXPECT_EQ(ql::ReadSlipFolder(), folder);
}

TEST_F(PayRunSlipsTest, NoAnswerCommitsNothing) {
    ql::frmPayRun d(context.WageDatabase);
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    ASSERT_EQ(d.addPays(), 5);
    dialogs.queueAnswer(ql::msg::No);
    EXPECT_EQ(d.commitPays(), 0);
    EXPECT_EQ(context.WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE Reference IS NOT NULL"))
                  .toInt(),
              0);
}

TEST_F(PayRunSlipsTest, OnePreviewHoldsEverySlip) {
    ql::frmPayRun d(context.WageDatabase);
    d.dtpRunDate->setDate(QDate(2026, 11, 6));
    ASSERT_EQ(d.addPays(), 5);
    d.cboPayslips->setCurrentIndex(static_cast<int>(ql::SlipDelivery::Preview));
    int previews = 0;
    QString saved;
    QTemporaryDir out;
    ql::setPdfPathChooser([&](QWidget*, const QString&) { return out.filePath(QStringLiteral("all.pdf")); });
    ql::setPreviewShownHook([&](QDialog* preview) {
        ++previews;
        // Save PDF from the preview, by its key.
        for (QAction* a : preview->actions())
            if (a->objectName() == QLatin1String("Save PDF")) a->trigger();
        preview->reject();
    });
    EXPECT_EQ(d.commitPays(), 5);
    ql::setPreviewShownHook({});
    ql::setPdfPathChooser({});
    EXPECT_EQ(previews, 1);
    const QString text = pdfText(out.filePath(QStringLiteral("all.pdf")));
    for (const ql::PayRunItem& i : d.items())
        EXPECT_TRUE(text.contains(i.name)) << i.name.toStdString();
    EXPECT_TRUE(dialogs.calls.last().message.contains(QStringLiteral("5 payslips were shown in one preview.")));
}

} // namespace
} // namespace qltest
