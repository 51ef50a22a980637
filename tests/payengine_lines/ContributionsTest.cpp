// Employer contributions and ESCT on the template's bands (2026/27).
#include "LinesFixture.h"
#include "payengine/Contributions.h"
#include "runtime/VbError.h"

using namespace linestest;
using ql::Currency;

class ContributionsTest : public LinesTest {
protected:
    void SetUp() override {
        LinesTest::SetUp();
        exec("INSERT INTO ContributionNames VALUES (100, 'Fixed super', 0, 'other', 0, 0, 0, 0)");
    }
};

TEST_F(ContributionsTest, EsctBandEdgesAreStrict) {
    // Template ESCT rows: -1 at 0.105, 18720 at 0.175, 64200 at 0.30, 93720 at 0.33, 216000 at 0.39.
    // The contribution 100.99 bears ESCT on 100 whole dollars.
    struct Case {
        qint32 interval;
        const char* base;
        const char* esct;
    } cases[] = {
        {1, "0", "10.5"},            // yearly 0: the row below zero
        {1, "360", "10.5"},          // 360 x 52 = 18720, not below 18720
        {1, "360.01", "17.5"},       // 18720.52
        {4, "5350", "17.5"},         // 5350 x 12 = 64200
        {4, "5350.01", "30"},        // 64200.12
        {4, "7810", "30"},           // 93720
        {4, "7810.01", "33"},        // 93720.12
        {4, "18000", "33"},          // 216000
        {4, "18000.01", "39"},       // 216000.12
    };
    for (const Case& c : cases) {
        addEmployee(100, c.interval, "20", "0", QStringLiteral("M"), true);
        EXPECT_EQ(ql::CalcESCT(1, cur("100.99"), cur(c.base)), cur(c.esct)) << c.base;
    }
}

TEST_F(ContributionsTest, EsctOnWholeDollarsAtTheRateAsItStands) {
    addEmployee(100, 1, "20", "0", QStringLiteral("M"), true);
    exec("DELETE FROM ESCT");
    exec("INSERT INTO ESCT VALUES (0, 0.1), (10000, 0.2)");
    exec("UPDATE PayInterval SET PaysPerYear = 1 WHERE PayIntervalID = 1");
    // 123.99 at 0.2 (the highest rate below 10000.01): 123 x 0.2 = 24.60
    EXPECT_EQ(ql::CalcESCT(1, cur("123.99"), cur("10000.01")), cur("24.6"));
    exec("DELETE FROM ESCT");
    exec("INSERT INTO ESCT VALUES (0, 0.5)");
    EXPECT_EQ(ql::CalcESCT(1, cur("123.99"), cur("100")), cur("61.5"));
    // Another tax name bears none.
    EXPECT_EQ(ql::CalcESCT(100, cur("123.99"), cur("100")), Currency());
    // No row below the salary: the Null rate fails, and the error reaches the caller.
    EXPECT_THROW(ql::CalcESCT(1, cur("123.99"), cur("0")), ql::VbError);
}

TEST_F(ContributionsTest, CreditIsAlwaysZero) {
    addEmployee(100, 1, "20", "0", QStringLiteral("M"), true);
    exec("UPDATE PayInterval SET KiwiSaverCredit = 10");
    EXPECT_EQ(ql::GetKiwiSaverCredit(QStringLiteral("20/11/2026")), Currency());
}

TEST_F(ContributionsTest, DefaultLinesAndTheirRecalculation) {
    // A payroll without tax years: the rows keep their ESCT and the pay's is one calculation on the total.
    const qint32 emp = addEmployee(100, 1, "20", "0", QStringLiteral("M"), true);
    app.WageDatabase.execute(QStringLiteral("INSERT INTO EmployerContributions VALUES (?, 1, 0, 0), (?, 100, 25, 0)"),
                             {emp, emp});
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    ql::AddDefaultContribution(wage, cur("1000"), true, emp, 52);
    // KiwiSaver 3.5% of 1000 = 35, ESCT on 35 at 52000 a year (0.175) = 6.125 -> 6.125;
    // the fixed 25 has percentage 100 and no ESCT.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT ContributionNameID, Percentage, AmountCalcon, Contributions, ESCT "
                                    "FROM ContributionDetails WHERE WageID = %1 ORDER BY ContributionNameID")
                         .arg(wage)),
              (QStringList{QStringLiteral("1|3.5|1000.0000|35.0000|6.1250"),
                           QStringLiteral("100|100|25.0000|25.0000|0.0000")}));

    view.setCaption(QStringLiteral("lblPayDate"), QStringLiteral("20/11/2026"));
    ql::UpdateContributions(cur("800"), wage, view, QStringLiteral("lblKiwiSaver"), QStringLiteral("lblPayDate"),
                            QStringLiteral("lblTaxCredit"), QStringLiteral("lblESCT"));
    // Only the KiwiSaver line is recalculated and counted: 3.5% of 800 = 28.
    EXPECT_EQ(view.caption(QStringLiteral("lblKiwiSaver")), QStringLiteral("$28.00"));
    // ESCT of the total under the last line's name (100, not KiwiSaver): 0.
    EXPECT_EQ(view.caption(QStringLiteral("lblESCT")), QStringLiteral("$0.00"));
    EXPECT_EQ(view.caption(QStringLiteral("lblTaxCredit")), QStringLiteral("$0.00"));
    // The row's ESCT keeps what it got when the row was added.
    EXPECT_EQ(money(QStringLiteral("SELECT ESCT FROM ContributionDetails WHERE WageID = %1 AND ContributionNameID = 1")
                        .arg(wage)),
              cur("6.125"));

    // With the KiwiSaver line last, the total is taxed: 28 at 800 x 52 = 41600 (0.175) = 4.90.
    exec(QStringLiteral("DELETE FROM ContributionDetails WHERE ContributionNameID = 100"));
    ql::UpdateContributions(cur("800"), wage, view, QStringLiteral("lblKiwiSaver"), QStringLiteral("lblPayDate"),
                            QStringLiteral("lblTaxCredit"), QStringLiteral("lblESCT"));
    EXPECT_EQ(view.caption(QStringLiteral("lblESCT")), QStringLiteral("$4.90"));
}

TEST_F(ContributionsTest, NoLinesGiveZeroTotals) {
    const qint32 emp = addEmployee(100, 1, "20", "0", QStringLiteral("M"), true);
    Q_UNUSED(emp);
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    view.setCaption(QStringLiteral("lblKiwiSaver"), QStringLiteral("12"));
    ql::UpdateContributions(cur("800"), wage, view, QStringLiteral("lblKiwiSaver"), QStringLiteral("lblPayDate"),
                            QStringLiteral("lblTaxCredit"), QStringLiteral("lblESCT"));
    EXPECT_EQ(view.caption(QStringLiteral("lblKiwiSaver")), QStringLiteral("$0.00"));
    EXPECT_EQ(view.caption(QStringLiteral("lblTaxCredit")), QStringLiteral("$0.00"));
}

TEST_F(ContributionsTest, RowEditPutsTheRowsEsctInColumnFour) {
    addEmployee(100, 1, "20", "0", QStringLiteral("M"), true);
    ql::GridArray grid;
    grid.resize(1, 6);
    grid.setValue(0, 0, 1);
    grid.setValue(0, 1, QStringLiteral("1"));
    grid.setValue(0, 2, QStringLiteral("$1,000.00"));
    grid.setValue(0, 3, QStringLiteral("3.50"));
    grid.setValue(0, 4, QStringLiteral("$0.00"));
    grid.setValue(0, 5, QStringLiteral("$35.00"));
    ql::RecalcContributionRow(grid, 0, 3, QStringLiteral("4"), cur("1000"));
    // 4% of 1000 = 40; ESCT 40 x 0.175 (52000 a year) = 7.00
    EXPECT_EQ(grid.value(0, 5).toString(), QStringLiteral("$40.00"));
    EXPECT_EQ(grid.value(0, 4).toString(), QStringLiteral("$7.00"));
    EXPECT_EQ(grid.value(0, 3).toString(), QStringLiteral("4.00"));
    ql::RecalcContributionRow(grid, 0, 5, QStringLiteral("50"), cur("1000"));
    EXPECT_EQ(grid.value(0, 3).toString(), QStringLiteral("5.00"));
    EXPECT_EQ(grid.value(0, 4).toString(), QStringLiteral("$8.75"));
}
