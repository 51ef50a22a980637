// Editing a pay from the command line, as a black box on the demo farm: the farm hand's first pay, an
// edited line with its save, a typed PAYE and its life, a removed line, and a committed pay.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include <QRegularExpression>

namespace qltest {
namespace {

class CliEditTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(cli({"init", "--demo"}).exitCode, 0);
        // Employee 1 of the demo: the weekly farm hand on M, enrolled in KiwiSaver.
        const CliResult added = cli({"add-pay", "1"});
        ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    }
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }
    static QString label(const QString& out, const QString& name) {
        const auto m = QRegularExpression(QStringLiteral("\"%1\": \"([^\"]*)\"").arg(name)).match(out);
        return m.hasMatch() ? m.captured(1) : QStringLiteral("<none>");
    }
    void sql(const QString& text) {
        ql::Database db;
        db.open(ql::WageFileName());
        db.execute(text);
        db.close();
    }
};

TEST_F(CliEditTest, EditedUnitsRecalculateTheWholePay) {
    const CliResult r = cli({"edit", "1", "1", "0", "2", "45"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    // 45 h x 25.50 = 1147.50. Yearly 59670: 15600 x 12.25% + 37900 x 19.25% + 6170 x 31.75%
    // = 1911 + 7295.75 + 1958.975 = 11165.725; / 52 = 214.725, cut to 214.72.
    EXPECT_EQ(label(r.out, "lblGross"), QStringLiteral("$1,147.50"));
    EXPECT_EQ(label(r.out, "lblPaye"), QStringLiteral("$214.72"));
    // KiwiSaver 3.5% of 1147.50 = 40.1625, cut to 40.16; take-home 1147.50 - 214.72 - 40.16.
    EXPECT_EQ(label(r.out, "lblDeduct"), QStringLiteral("$40.16"));
    EXPECT_EQ(label(r.out, "lblTakehome"), QStringLiteral("$892.62"));
    EXPECT_TRUE(r.out.contains(QStringLiteral("[\"    Ordinary Time (x1)\", \"45.00\", \"25.50\", \"1147.50\", \"\"]")));
    EXPECT_TRUE(r.out.contains(QStringLiteral("[\"Take Home Pay\", \"\", \"\", \"\", \"892.62\"]")));
    EXPECT_TRUE(r.out.contains(QStringLiteral("\"TakeHome\": 892.6200")));

    const CliResult slip = cli({"payslip", "1"});
    ASSERT_EQ(slip.exitCode, 0);
    EXPECT_TRUE(slip.out.startsWith(QStringLiteral("[\n  [\"Gross\", \"\", \"\", \"\", \"\"],")));
}

TEST_F(CliEditTest, TextThatIsNoNumberIsRefused) {
    const CliResult r = cli({"edit", "1", "1", "0", "2", "abc"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Invalid entry in column 3"))) << r.err.toStdString();
}

TEST_F(CliEditTest, TypedPayeLastsUntilAnotherTabIsSaved) {
    ASSERT_EQ(cli({"edit", "1", "1", "0", "2", "45"}).exitCode, 0);
    const CliResult typed = cli({"set-paye", "1", "200"});
    ASSERT_EQ(typed.exitCode, 0) << typed.err.toStdString();
    EXPECT_EQ(label(typed.out, "lblPaye"), QStringLiteral("$200.00"));
    EXPECT_TRUE(typed.out.contains(QStringLiteral("[\"PAYE\", \"\", \"\", \"\", \"-200.00\"]")));
    // Leaving the deductions view, even unchanged, recalculates the tax.
    const CliResult again = cli({"edit", "1", "5", "0", "2", "1147.50"});
    ASSERT_EQ(again.exitCode, 0) << again.err.toStdString();
    EXPECT_EQ(label(again.out, "lblPaye"), QStringLiteral("$214.72"));
}

TEST_F(CliEditTest, RemovingTheLastLineLeavesNoLines) {
    const CliResult r = cli({"delete-line", "1", "5", "0"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("\"DeductionDetails\": []"))) << r.out.toStdString();
    EXPECT_EQ(label(r.out, "lblDeduct"), QStringLiteral("$0.00"));
}

TEST_F(CliEditTest, CommittedPayRefusesEveryEdit) {
    sql(QStringLiteral("UPDATE Wages SET Reference = 'W1' WHERE WageID = 1"));
    const QString committed = QStringLiteral("This pay has already been committed (recorded as paid).");
    for (const QStringList& args : {QStringList{"edit", "1", "1", "0", "2", "45"}, QStringList{"edit", "1", "1", "2", "1", "2"},
                                    QStringList{"delete-line", "1", "1", "0"}, QStringList{"set-paye", "1", "10"}}) {
        const CliResult r = cli(args);
        EXPECT_EQ(r.exitCode, 1) << args.join(' ').toStdString();
        EXPECT_TRUE(r.err.contains(committed)) << r.err.toStdString();
    }
    const CliResult shown = cli({"pay", "1"});
    EXPECT_TRUE(shown.out.contains(QStringLiteral("\"Hours\": 0.0000"))) << "nothing of the pay changed";
}

} // namespace
} // namespace qltest
