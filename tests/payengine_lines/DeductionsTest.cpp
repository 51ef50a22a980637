// Deduction lines: thresholds, cap, fixed amounts, KiwiSaver base and hand-set lines.
#include "payengine/Deductions.h"
#include "LinesFixture.h"

using namespace linestest;
using ql::Currency;

namespace {

struct Result {
    float percentage = 0;
    Currency calcOn, amount;
};

Result calc(float specialRate, const char* fixed, const char* base, qint32 id, float paysPerYear) {
    Result r;
    ql::CalcDeduction(specialRate, cur(fixed), cur(base), id, paysPerYear, r.percentage, r.calcOn, r.amount);
    return r;
}

} // namespace

class DeductionsTest : public LinesTest {
protected:
    void SetUp() override {
        LinesTest::SetUp();
        // id, name, country, tax name, percentage, lower, upper, max
        exec("INSERT INTO DeductNames VALUES (100, 'Lower', 0, '', 10, 5200, 0, 0), "
             "(101, 'Upper', 0, '', 10, 0, 20800, 0), (102, 'Capped', 0, '', 10, 0, 0, 5), "
             "(103, 'Both', 0, '', 10, 5200, 20800, 0), (104, 'Plain', 0, '', 10, NULL, NULL, NULL)");
    }
};

TEST_F(DeductionsTest, LimitsOfAName) {
    EXPECT_EQ(ql::GetDeductLimit(103, 0), 20800.0f);
    EXPECT_EQ(ql::GetDeductLimit(103, 1), 5200.0f);
    EXPECT_EQ(ql::GetDeductLimit(102, 2), 5.0f);
    EXPECT_EQ(ql::GetDeductLimit(102, 3), 10.0f);
    EXPECT_EQ(ql::GetDeductLimit(102, 4), 0.0f);
    EXPECT_EQ(ql::GetDeductLimit(104, 0), 0.0f); // Null
    EXPECT_EQ(ql::GetDeductLimit(999, 3), 0.0f); // no row
}

TEST_F(DeductionsTest, LowerThresholdComesOffTheBase) {
    // 500 - 5200 / 52 = 400; 10% = 40
    const Result r = calc(0, "0", "500", 100, 52);
    EXPECT_EQ(r.calcOn, cur("400"));
    EXPECT_EQ(r.percentage, 10.0f);
    EXPECT_EQ(r.amount, cur("40"));
    // Below the threshold nothing is left.
    EXPECT_EQ(calc(0, "0", "50", 100, 52).calcOn, Currency());
}

TEST_F(DeductionsTest, UpperThresholdCapsTheBase) {
    // 20800 / 52 = 400
    const Result r = calc(0, "0", "500", 101, 52);
    EXPECT_EQ(r.calcOn, cur("400"));
    EXPECT_EQ(r.amount, cur("40"));
}

TEST_F(DeductionsTest, UpperBeforeLower) {
    // min(500, 400) - 100 = 300; 10% = 30
    const Result r = calc(0, "0", "500", 103, 52);
    EXPECT_EQ(r.calcOn, cur("300"));
    EXPECT_EQ(r.amount, cur("30"));
}

TEST_F(DeductionsTest, NoPaysPerYearIgnoresBothThresholds) {
    const Result r = calc(0, "0", "500", 103, 0);
    EXPECT_EQ(r.calcOn, cur("500"));
    EXPECT_EQ(r.amount, cur("50"));
}

TEST_F(DeductionsTest, CapAlsoCapsAFixedAmount) {
    // Max 5% of 1000 = 50 < fixed 80
    const Result r = calc(0, "80", "1000", 102, 52);
    EXPECT_EQ(r.amount, cur("50"));
    EXPECT_EQ(r.calcOn, cur("50"));
    EXPECT_EQ(r.percentage, 100.0f);
}

TEST_F(DeductionsTest, SpecialRateOfZeroFallsBackToTheName) {
    EXPECT_EQ(calc(0, "0", "200", 104, 52).percentage, 10.0f);
    const Result r = calc(4, "0", "200", 104, 52);
    EXPECT_EQ(r.percentage, 4.0f);
    EXPECT_EQ(r.amount, cur("8"));
}

TEST_F(DeductionsTest, StudentLoanPublishedCase) {
    // Template row 2: 12% above the yearly threshold. Weekly 600: (600 - 464) x 12% = 16.32.
    // The base keeps the fraction of a cent by which the weekly threshold lies below 464.
    const Result r = calc(0, "0", "600", 2, 52);
    EXPECT_EQ(r.calcOn, cur("136.0019"));
    EXPECT_EQ(r.amount, cur("16.32"));
}

TEST_F(DeductionsTest, KiwiSaverPublishedCase) {
    // Template row 1: 3.5%. Weekly 465.00 x 3.5% = 16.275, cut to 16.27.
    const Result r = calc(0, "0", "465", 1, 52);
    EXPECT_EQ(r.amount, cur("16.27"));
}

TEST_F(DeductionsTest, MonthlyThresholdIsASingleQuotient) {
    // 24127.90 as a Single is 24127.900390625; over 12 as a Single 2010.6583... -> 2010.6583, a fraction
    // of a cent below the published 2,010.66. 3000 - 2010.6583 = 989.3417, cut to 989.34.
    const Result r = calc(0, "0", "3000", 2, 12);
    EXPECT_EQ(r.calcOn, cur("989.3417"));
    EXPECT_EQ(r.amount, cur("118.72"));
}

TEST_F(DeductionsTest, MonthlyStudentLoanOfTheIssue) {
    // 2,015.00 a month: (2015 - 2010.66) x 12% = 0.5208, cut to 0.52.
    EXPECT_EQ(calc(0, "0", "2015", 2, 12).amount, cur("0.52"));
}

TEST_F(DeductionsTest, DefaultLinesComeFromTheEmployeesDeductions) {
    const qint32 emp = addEmployee(100, 1, "20");
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    ql::AddDefaultDeduct(wage, cur("500"), true, emp, 52);
    EXPECT_TRUE(
        rowsOf(QStringLiteral("SELECT * FROM DeductionDetails WHERE WageID = %1").arg(wage)).isEmpty());

    app.WageDatabase.execute(QStringLiteral("INSERT INTO EmployeeDeductions VALUES (?, 100, NULL, NULL, ''), "
                                            "(?, 0, 5, 0, ''), (?, 102, 80, 0, '')"),
                             {emp, emp, emp});
    const qint32 wage2 = blankWage(QStringLiteral("27/11/2026"));
    ql::AddDefaultDeduct(wage2, cur("1000"), true, emp, 52);
    EXPECT_EQ(
        rowsOf(
            QStringLiteral("SELECT DeductNameID, Percentage, AmountCalcon, Deductions FROM DeductionDetails "
                           "WHERE WageID = %1 ORDER BY DeductNameID")
                .arg(wage2)),
        (QStringList{QStringLiteral("100|10|900.0000|90.0000"), QStringLiteral("102|100|50.0000|50.0000")}));
}

TEST_F(DeductionsTest, RecalculationLeavesHundredPercentLinesAlone) {
    const qint32 emp = addEmployee(100, 1, "20");
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    // A fixed 50 (percentage 100) and a 10% line on 300.
    exec(QStringLiteral("INSERT INTO DeductNames VALUES (105, 'Fixed', 0, '', 0, 0, 0, 0)"));
    app.WageDatabase.execute(QStringLiteral("INSERT INTO EmployeeDeductions VALUES (?, 105, 50, 0, ''), "
                                            "(?, 104, 0, 0, '')"),
                             {emp, emp});
    ql::AddDefaultDeduct(wage, cur("300"), true, emp, 52);
    ql::UpdateDeductions(cur("300"), wage, view, QStringLiteral("lblDeduct"), Currency());
    // The total counts only the lines it recalculated.
    EXPECT_EQ(view.caption(QStringLiteral("lblDeduct")), QStringLiteral("$30.00"));

    // A percentage line set to exactly 100 by hand stops being recalculated.
    exec(QStringLiteral("UPDATE DeductionDetails SET Percentage = 100, Deductions = 12.34 WHERE WageID = %1 "
                        "AND DeductNameID = 104")
             .arg(wage));
    ql::UpdateDeductions(cur("800"), wage, view, QStringLiteral("lblDeduct"), Currency());
    EXPECT_EQ(money(QStringLiteral(
                        "SELECT Deductions FROM DeductionDetails WHERE WageID = %1 AND DeductNameID = 104")
                        .arg(wage)),
              cur("12.34"));
    EXPECT_EQ(view.caption(QStringLiteral("lblDeduct")), QStringLiteral("$0.00"));
}

TEST_F(DeductionsTest, KiwiSaverBaseLeavesOutExcludedAllowancesOnlyForTheExactName) {
    const qint32 emp = addEmployee(100, 1, "20");
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    app.WageDatabase.execute(
        QStringLiteral("INSERT INTO EmployeeDeductions VALUES (?, 1, 0, 0, 'KiwiSaver')"), {emp});
    ql::AddDefaultDeduct(wage, cur("565"), true, emp, 52);
    // Taxable 565 of which 100 is excluded: 465 x 3.5% = 16.27.
    ql::UpdateDeductions(cur("565"), wage, view, QStringLiteral("lblDeduct"), cur("100"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT AmountCalcon, Deductions FROM DeductionDetails WHERE WageID = %1")
                         .arg(wage)),
              QStringList{QStringLiteral("465.0000|16.2700")});
    // "kiwisaver" in the employee's row is not the name: the whole taxable counts. 565 x 3.5% = 19.775
    // -> 19.77
    exec(QStringLiteral("UPDATE EmployeeDeductions SET TaxName = 'kiwisaver'"));
    ql::UpdateDeductions(cur("565"), wage, view, QStringLiteral("lblDeduct"), cur("100"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT AmountCalcon FROM DeductionDetails WHERE WageID = %1").arg(wage)),
              QStringList{QStringLiteral("565.0000")});
}

TEST_F(DeductionsTest, EnrolmentIsReadFromTheEmployee) {
    const qint32 a = addEmployee(100, 1, "20", "0", QStringLiteral("M"), true);
    const qint32 b = addEmployee(100, 1, "20");
    EXPECT_TRUE(ql::IsKiwiSaverEnrolled(a));
    EXPECT_FALSE(ql::IsKiwiSaverEnrolled(b));
    EXPECT_FALSE(ql::IsKiwiSaverEnrolled(9999));
}

// --- edits of a deduction row --------------------------------------------------------------------------

class DeductionRowTest : public DeductionsTest {
protected:
    ql::GridArray grid;
    void row(const char* name, const char* calcOn, const char* pct, const char* amount) {
        grid = ql::GridArray();
        grid.resize(1, 5);
        grid.setValue(0, 0, 1);
        grid.setValue(0, 1, QString::fromLatin1(name));
        grid.setValue(0, 2, QString::fromLatin1(calcOn));
        grid.setValue(0, 3, QString::fromLatin1(pct));
        grid.setValue(0, 4, QString::fromLatin1(amount));
    }
    QString cell(int c) { return grid.value(0, c).toString(); }
};

TEST_F(DeductionRowTest, EditsByColumn) {
    row("104", "$300.00", "10.00", "$30.00");
    ql::RecalcDeductionRow(grid, 0, 2, QStringLiteral("400"));
    EXPECT_EQ(cell(2), QStringLiteral("$400.00"));
    EXPECT_EQ(cell(4), QStringLiteral("$40.00"));
    ql::RecalcDeductionRow(grid, 0, 3, QStringLiteral("12.5"));
    EXPECT_EQ(cell(3), QStringLiteral("12.50"));
    EXPECT_EQ(cell(4), QStringLiteral("$50.00"));
    ql::RecalcDeductionRow(grid, 0, 4, QStringLiteral("20"));
    EXPECT_EQ(cell(3), QStringLiteral("5.00"));
    // No base: the calculated-on follows from the percentage.
    row("104", "0", "10", "0");
    ql::RecalcDeductionRow(grid, 0, 4, QStringLiteral("25"));
    EXPECT_EQ(cell(2), QStringLiteral("$250.00"));
    // No base and no percentage: a hand-set line of 100 per cent.
    row("104", "0", "0", "0");
    ql::RecalcDeductionRow(grid, 0, 4, QStringLiteral("25"));
    EXPECT_EQ(cell(2), QStringLiteral("$25.00"));
    EXPECT_EQ(cell(3), QStringLiteral("100.00"));
}

TEST_F(DeductionRowTest, ANewNameTakesTheEmployeesSettings) {
    addEmployee(100, 1, "20");
    row("103", "", "", "");
    ql::DefaultDeductionRow(1, cur("500"), grid, 0);
    ql::RecalcDeductionRow(grid, 0, 1, QStringLiteral("103"));
    EXPECT_EQ(cell(2), QStringLiteral("$300.00"));
    EXPECT_EQ(cell(3), QStringLiteral("10.00"));
    EXPECT_EQ(cell(4), QStringLiteral("$30.00"));
    // Any other column leaves the row to RecalcDeductionRow.
    row("103", "1", "2", "3");
    ql::DefaultDeductionRow(2, cur("500"), grid, 0);
    EXPECT_EQ(cell(2), QStringLiteral("1"));
}
