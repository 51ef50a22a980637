// Default payment lines, the salary line and the edit rules of a payment row.
#include "LinesFixture.h"
#include "payengine/PaymentLines.h"

using namespace linestest;
using ql::Currency;

namespace {

struct PaymentLine {
    qint32 name;
    float units;
    Currency rate;
    Currency amount;
};

QList<PaymentLine> linesOf(ql::Database& db, qint32 wageID) {
    QList<PaymentLine> out;
    auto rs = db.openRecordset(QStringLiteral("SELECT PaymentNameID, DetailHours, EquivPayRate, Payment FROM "
                                              "PaymentDetails WHERE WageID = %1 ORDER BY rowid")
                                   .arg(wageID),
                               ql::RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext())
        out.append({ql::CLng(rs->value(0)), ql::CSng(rs->value(1)),
                    ql::IsNull(rs->value(2)) ? Currency::fromRaw(-1) : ql::CCur(rs->value(2)),
                    ql::IsNull(rs->value(3)) ? Currency::fromRaw(-1) : ql::CCur(rs->value(3))});
    return out;
}

} // namespace

TEST(CalcSalary, OneShareOfTheYearToFourDecimals) {
    EXPECT_EQ(ql::CalcSalary(cur("52000"), 52), cur("1000"));
    // 50000 / 26 = 1923.076923...; a Single factor would give 1923.0770.
    EXPECT_EQ(ql::CalcSalary(cur("50000"), 26), cur("1923.0769"));
    EXPECT_EQ(ql::CalcSalary(cur("52000"), 12), cur("4333.3333"));
    EXPECT_EQ(ql::CalcSalary(cur("52000"), 0), Currency());
    EXPECT_EQ(ql::CalcSalary(cur("0"), 52), Currency());
    EXPECT_EQ(ql::CalcSalary(cur("-100"), 52), Currency());
}

TEST_F(LinesTest, FirstPayOfAnHourlyEmployeeTakesStandardUnits) {
    addEmployee(100, 1, "25.50");
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    Currency gross;
    // weeksPerPay = Single(52.14 / 52) = 1.00269234180450439453125
    ql::AddDefaultPayments(0, wage, gross, cur("25.50"), 100, 1.00269234180450439453125f, 52, true,
                           app.CurrentEmployeeID, QStringLiteral("Hour"));
    const auto lines = linesOf(app.WageDatabase, wage);
    ASSERT_EQ(lines.size(), 2);
    // Units: Single(40 x 1.0026923418) = 40.107692718505859375 (a double chain gives 40.1076923077).
    EXPECT_EQ(lines[0].name, 100);
    EXPECT_EQ(lines[0].units, 40.107692718505859375f);
    EXPECT_EQ(lines[0].rate, cur("25.50"));
    // 25.50 x 40.1076927185 = 1022.74616432 -> 1022.7462
    EXPECT_EQ(lines[0].amount, cur("1022.7462"));
    // Overtime has no standard hours: 0 units at 1.5 x 25.50 = 38.25.
    EXPECT_EQ(lines[1].name, 101);
    EXPECT_EQ(lines[1].units, 0.0f);
    EXPECT_EQ(lines[1].rate, cur("38.25"));
    EXPECT_EQ(lines[1].amount, Currency());
    EXPECT_EQ(gross, cur("1022.7462"));
    EXPECT_TRUE(scripted.calls.isEmpty());
}

TEST_F(LinesTest, SingleUnitsAndDoubleUnitsDisagreeInTheLastPlace) {
    addEmployee(100, 1, "100");
    qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    Currency gross;
    ql::AddDefaultPayments(0, wage, gross, cur("100"), 100, 1.00269234180450439453125f, 52, true,
                           app.CurrentEmployeeID, QStringLiteral("Hour"));
    // 100 x 40.107692718505859375 = 4010.7692718... -> 4010.7693; in double 4010.7692307... -> 4010.7692.
    EXPECT_EQ(gross, cur("4010.7693"));

    // Monthly: weeksPerPay = Single(52.14 / 12) = 4.344999790..., units Single(40 x that) = 173.79998779296875.
    wage = blankWage(QStringLiteral("21/11/2026"));
    ql::AddDefaultPayments(0, wage, gross, cur("25"), 100, 4.344999790191650390625f, 12, true,
                           app.CurrentEmployeeID, QStringLiteral("Hour"));
    EXPECT_EQ(linesOf(app.WageDatabase, wage)[0].units, 173.79998779296875f);
    // 25 x 173.79998779 = 4344.99969482 -> 4344.9997; a double chain would give 4345.0000.
    EXPECT_EQ(gross, cur("4344.9997"));
}

TEST_F(LinesTest, SalaryOverTwelveTwentySixAndFiftyTwoPays) {
    addEmployee(101, 1, "0", "52000");
    struct Case {
        float paysPerYear, weeksPerPay, units;
        const char* salary;
    } cases[] = {
        // units = Single(40 x Single(52.14 / pays)); rate = salary / units to four decimals
        {12, 4.344999790191650390625f, 173.79998779296875f, "4333.3333"},
        {26, 2.0053846836090087890625f, 80.21538543701171875f, "2000"},
        {52, 1.00269234180450439453125f, 40.107692718505859375f, "1000"},
    };
    for (const Case& c : cases) {
        const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
        Currency gross;
        ql::AddDefaultPayments(0, wage, gross, Currency(), 101, c.weeksPerPay, c.paysPerYear, true,
                               app.CurrentEmployeeID, QStringLiteral("Hour"));
        const auto lines = linesOf(app.WageDatabase, wage);
        ASSERT_EQ(lines.size(), 1);
        EXPECT_EQ(lines[0].units, c.units);
        EXPECT_EQ(lines[0].amount, cur(c.salary)) << c.paysPerYear;
        // 4333.3333 / 173.79998779 = 24.93287..., 2000 / 80.2153854 = 24.93287..., 1000 / 40.1076927 = 24.93287...
        EXPECT_EQ(lines[0].rate, cur("24.9329")) << c.paysPerYear;
        EXPECT_EQ(gross, cur(c.salary));
    }
    EXPECT_TRUE(scripted.calls.isEmpty());
}

TEST_F(LinesTest, SalaryLineWithoutStandardHoursHasOneUnit) {
    exec("UPDATE PaymentTypes SET Standardhours = NULL WHERE EmployeeTypeID = 101");
    addEmployee(101, 1, "0", "52000");
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    Currency gross;
    ql::AddDefaultPayments(0, wage, gross, Currency(), 101, 1.00269234180450439453125f, 52, true,
                           app.CurrentEmployeeID, QStringLiteral("Hour"));
    const auto lines = linesOf(app.WageDatabase, wage);
    EXPECT_EQ(lines[0].units, 1.0f);
    EXPECT_EQ(lines[0].rate, cur("1000"));
    EXPECT_EQ(lines[0].amount, cur("1000"));
}

TEST_F(LinesTest, NoPaysPerYearLeavesTheSalaryLineEmptyWithoutAMessage) {
    addEmployee(101, 5, "0", "52000");
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    Currency gross;
    ql::AddDefaultPayments(0, wage, gross, Currency(), 101, 52.14f, 0, true, app.CurrentEmployeeID,
                           QStringLiteral("Hour"));
    const auto lines = linesOf(app.WageDatabase, wage);
    ASSERT_EQ(lines.size(), 1);
    // Rate and amount were never set: the column defaults.
    EXPECT_EQ(lines[0].amount, Currency());
    EXPECT_EQ(gross, Currency());
    EXPECT_TRUE(scripted.calls.isEmpty());
}

TEST_F(LinesTest, NoPaymentsMessageWhenNothingGivesAnAmount) {
    addEmployee(102, 1, "20");
    qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    Currency gross;
    ql::AddDefaultPayments(0, wage, gross, cur("20"), 102, 1.0f, 52, true, app.CurrentEmployeeID,
                           QStringLiteral("Hour"));
    ASSERT_EQ(scripted.calls.size(), 1);
    EXPECT_EQ(scripted.calls[0].heading, QStringLiteral("Information Required"));
    EXPECT_EQ(scripted.calls[0].message,
              QStringLiteral("No payments set up for this employee.\r\n\r\n  Please add some Hour in Gross payments"));
    EXPECT_EQ(scripted.calls[0].caption, ql::Firm());

    // Lines without units give the message too, and the rows stay.
    wage = blankWage(QStringLiteral("21/11/2026"));
    ql::AddDefaultPayments(0, wage, gross, cur("20"), 103, 1.0f, 52, true, app.CurrentEmployeeID,
                           QStringLiteral("Day"));
    ASSERT_EQ(scripted.calls.size(), 2);
    EXPECT_TRUE(scripted.calls[1].message.endsWith(QStringLiteral("Please add some Day in Gross payments")));
    EXPECT_EQ(linesOf(app.WageDatabase, wage).size(), 1);

    // A salary line with a yearly salary of 0 and nothing else.
    exec("INSERT INTO PaymentTypes VALUES (102, 104, 40, 1)");
    wage = blankWage(QStringLiteral("22/11/2026"));
    ql::AddDefaultPayments(0, wage, gross, cur("20"), 102, 1.0f, 52, true, app.CurrentEmployeeID,
                           QStringLiteral("Hour"));
    EXPECT_EQ(scripted.calls.size(), 3);
}

TEST_F(LinesTest, SecondPayTakesTheLastPaysUnits) {
    addEmployee(100, 1, "20");
    const qint32 first = blankWage(QStringLiteral("13/11/2026"));
    Currency gross;
    ql::AddDefaultPayments(0, first, gross, cur("20"), 100, 1.0f, 52, true, app.CurrentEmployeeID,
                           QStringLiteral("Hour"));
    // The user edits the ordinary line to 37.5 units and adds a holiday pay line by hand.
    exec(QStringLiteral("UPDATE PaymentDetails SET DetailHours = 37.5 WHERE WageID = %1 AND PaymentNameID = 100")
             .arg(first));
    exec(QStringLiteral("INSERT INTO PaymentDetails VALUES (%1, 103, 8, 20, 160)").arg(first));
    exec("UPDATE PaymentTypes SET Standardhours = 10 WHERE EmployeeTypeID = 100 AND PaymentNameID = 101");

    const qint32 second = blankWage(QStringLiteral("20/11/2026"));
    ql::AddDefaultPayments(first, second, gross, cur("20"), 100, 1.0f, 52, false, app.CurrentEmployeeID,
                           QStringLiteral("Hour"));
    const auto lines = linesOf(app.WageDatabase, second);
    ASSERT_EQ(lines.size(), 2); // the hand-added holiday pay is not carried
    EXPECT_EQ(lines[0].units, 37.5f);
    EXPECT_EQ(lines[0].amount, cur("750"));
    // Overtime: the last pay had 0 units on that line, and those win over the new standard 10.
    EXPECT_EQ(lines[1].units, 0.0f);

    // A first pay never looks at the last one.
    const qint32 third = blankWage(QStringLiteral("27/11/2026"));
    ql::AddDefaultPayments(second, third, gross, cur("20"), 100, 1.0f, 52, true, app.CurrentEmployeeID,
                           QStringLiteral("Hour"));
    EXPECT_EQ(linesOf(app.WageDatabase, third)[0].units, 40.0f);
    EXPECT_EQ(linesOf(app.WageDatabase, third)[1].units, 10.0f);
}

TEST_F(LinesTest, LineAddedToTheTypeAppearsWithStandardUnits) {
    addEmployee(100, 1, "20");
    const qint32 first = blankWage(QStringLiteral("13/11/2026"));
    Currency gross;
    ql::AddDefaultPayments(0, first, gross, cur("20"), 100, 1.0f, 52, true, app.CurrentEmployeeID,
                           QStringLiteral("Hour"));
    exec("INSERT INTO PaymentTypes VALUES (100, 103, 8, 3)");
    const qint32 second = blankWage(QStringLiteral("20/11/2026"));
    ql::AddDefaultPayments(first, second, gross, cur("20"), 100, 1.0f, 52, false, app.CurrentEmployeeID,
                           QStringLiteral("Hour"));
    const auto lines = linesOf(app.WageDatabase, second);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[2].name, 103);
    EXPECT_EQ(lines[2].units, 8.0f);
    EXPECT_EQ(gross, cur("960")); // 40 x 20 + 0 + 8 x 20
}

// --- edits of a payment row ------------------------------------------------------------------------

class PaymentRowTest : public LinesTest {
protected:
    ql::GridArray grid;
    void SetUp() override {
        LinesTest::SetUp();
        ql::FillpayInfoArray(QStringLiteral("SELECT PaymentNameID, Calculation, Salary FROM PaymentNames "), true);
    }
    void row(const char* name, const char* units, const char* rate, const char* amount) {
        grid = ql::GridArray();
        grid.resize(1, 5);
        grid.setValue(0, 0, 1);
        grid.setValue(0, 1, QString::fromLatin1(name));
        grid.setValue(0, 2, QString::fromLatin1(units));
        grid.setValue(0, 3, QString::fromLatin1(rate));
        grid.setValue(0, 4, QString::fromLatin1(amount));
    }
    QString cell(int c) { return grid.value(0, c).toString(); }
};

TEST_F(PaymentRowTest, UnitsOnAnOrdinaryLineMoveTheAmount) {
    row("100", "40.00", "25.50", "$1,020.00");
    grid.setValue(0, 2, QStringLiteral("38.5"));
    ql::RecalcPaymentRow(grid, 0, 2, QStringLiteral("38.5"));
    EXPECT_EQ(cell(2), QStringLiteral("38.50"));
    EXPECT_EQ(cell(3), QStringLiteral("25.50"));
    EXPECT_EQ(cell(4), QStringLiteral("$981.75"));
}

TEST_F(PaymentRowTest, UnitsOnASalaryLineMoveTheRate) {
    row("102", "40.00", "25.00", "$1,000.00");
    ql::RecalcPaymentRow(grid, 0, 2, QStringLiteral("50"));
    EXPECT_EQ(cell(3), QStringLiteral("20.00"));
    EXPECT_EQ(cell(4), QStringLiteral("$1,000.00"));
    // Rate on a salary line moves the units.
    ql::RecalcPaymentRow(grid, 0, 3, QStringLiteral("40"));
    EXPECT_EQ(cell(2), QStringLiteral("25.00"));
    EXPECT_EQ(cell(4), QStringLiteral("$1,000.00"));
}

TEST_F(PaymentRowTest, AmountTypedOnFewUnitsRecalculatesUnitsFromTheRate) {
    // Units 0.5 are below 1, and a rate of 0 first becomes 1.
    row("100", "0.50", "0.00", "$0.00");
    ql::RecalcPaymentRow(grid, 0, 4, QStringLiteral("120"));
    EXPECT_EQ(cell(2), QStringLiteral("120.00"));
    EXPECT_EQ(cell(3), QStringLiteral("1.00"));
    EXPECT_EQ(cell(4), QStringLiteral("$120.00"));
    // With units of 1 or more the rate follows.
    row("100", "8", "20", "160");
    ql::RecalcPaymentRow(grid, 0, 4, QStringLiteral("200"));
    EXPECT_EQ(cell(2), QStringLiteral("8.00"));
    EXPECT_EQ(cell(3), QStringLiteral("25.00"));
    EXPECT_EQ(cell(4), QStringLiteral("$200.00"));
}

TEST_F(PaymentRowTest, ANewNameTakesTheBareMultiplier) {
    row("101", "10", "30", "300");
    ql::RecalcPaymentRow(grid, 0, 1, QStringLiteral("101"));
    EXPECT_EQ(cell(3), QStringLiteral("1.50"));
    EXPECT_EQ(cell(4), QStringLiteral("$15.00"));
}

TEST_F(PaymentRowTest, CellsThatAreNotNumbersCountAsZero) {
    row("100", "", "abc", "");
    ql::RecalcPaymentRow(grid, 0, 2, QStringLiteral("5"));
    EXPECT_EQ(cell(2), QStringLiteral("5.00"));
    EXPECT_EQ(cell(3), QStringLiteral("0.00"));
    EXPECT_EQ(cell(4), QStringLiteral("$0.00"));
}
