// Adding a pay: interval, pay date, the Wages row, the roster lookups and the whole order of a new pay.
#include "LinesFixture.h"
#include "frame/Messages.h"
#include "runtime/Format.h"

using namespace linestest;
using ql::Currency;

TEST_F(LinesTest, PayIntervalWeeksPerPayIsASingleOfFiftyTwoPointOneFour) {
    const qint32 emp = addEmployee(100, 1, "20");
    float days = -1, pays = -1, weeks = -1;
    ql::GetPayInterval(emp, days, pays, weeks);
    EXPECT_EQ(days, 7.0f);
    EXPECT_EQ(pays, 52.0f);
    EXPECT_EQ(weeks, 1.00269234180450439453125f); // just above 1
    const qint32 oneOff = addEmployee(100, 5, "20");
    ql::GetPayInterval(oneOff, days, pays, weeks);
    EXPECT_EQ(pays, 0.0f);
    EXPECT_EQ(weeks, 52.1399993896484375f); // Single(52.14)
}

TEST_F(LinesTest, AddDateByDaysIgnoresPaysPerYear) {
    const qint32 emp = addEmployee(100, 1, "20");
    blankWage(QStringLiteral("13/11/2026"));
    blankWage(QStringLiteral("6/11/2026"));
    QString date;
    ql::GetAddDate(emp, date, 12, 7, view);
    EXPECT_EQ(ql::CDate(date), QDate(2026, 11, 20));
}

TEST_F(LinesTest, AddDateByMonthsClampsTheDay) {
    const qint32 emp = addEmployee(100, 4, "20");
    blankWage(QStringLiteral("31/01/2026"));
    QString date;
    ql::GetAddDate(emp, date, 12, 0, view);
    EXPECT_EQ(ql::CDate(date), QDate(2026, 2, 28));
    // 24 pays move two months, 4 pays none.
    ql::GetAddDate(emp, date, 24, 0, view);
    EXPECT_EQ(ql::CDate(date), QDate(2026, 3, 31));
    QString unchanged = QStringLiteral("x");
    ql::GetAddDate(emp, unchanged, 4, 0, view);
    EXPECT_EQ(ql::CDate(unchanged), QDate(2026, 1, 31));
}

TEST_F(LinesTest, AddDateWithoutIntervalLeavesTheDateEmpty) {
    const qint32 emp = addEmployee(100, 5, "20");
    blankWage(QStringLiteral("13/11/2026"));
    QString date;
    ql::GetAddDate(emp, date, 0, 0, view);
    EXPECT_TRUE(date.isEmpty());
    // The blank pay then takes today.
    const qint32 id = blankWage(date);
    EXPECT_EQ(ql::CDate(scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(id))), QDate(2026, 11, 20));
}

TEST_F(LinesTest, OneOffPaysGiveNoBaseDateAndAreNeverTheLastPay) {
    const qint32 emp = addEmployee(100, 1, "20");
    blankWage(QStringLiteral("13/11/2026"), true);
    EXPECT_EQ(ql::GetLastPayID(), 0);
    view.setCaption(QStringLiteral("lblPayDate"), QStringLiteral("1/10/2026"));
    QString date;
    ql::GetAddDate(emp, date, 52, 7, view);
    EXPECT_EQ(ql::CDate(date), QDate(2026, 10, 8));
    // Neither a base nor a shown date: today.
    view.setCaption(QStringLiteral("lblPayDate"), QString());
    date.clear();
    ql::GetAddDate(emp, date, 52, 7, view);
    EXPECT_EQ(ql::CDate(date), QDate(2026, 11, 20));

    const qint32 regular = blankWage(QStringLiteral("6/11/2026"));
    blankWage(QStringLiteral("20/11/2026"), true);
    EXPECT_EQ(ql::GetLastPayID(), regular);
}

TEST_F(LinesTest, BlankWageHoldsTheEmployeesFigures) {
    addEmployee(100, 1, "23.75", "0", QStringLiteral("ME"));
    qint32 id = 0;
    ql::AddBlankWage(app.CurrentEmployeeID, QStringLiteral("5/03/2026"), cur("23.75"), id, ql::GetIntervalName(),
                     QStringLiteral("ME"), false, cur("99"), cur("9"), cur("90"));
    EXPECT_GT(id, 0);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT Date, Rate, TaxCode, PayInterval, OneOff, Gross, Reference FROM Wages "
                                    "WHERE WageID = %1")
                         .arg(id)),
              QStringList{QStringLiteral("2026-03-05|23.7500|ME|Weekly|false|0.0000|Null")});
    ql::AddBlankWage(app.CurrentEmployeeID, QStringLiteral("no date"), cur("23.75"), id, QStringLiteral("One-off"),
                     QStringLiteral("ME"), true, cur("99"), cur("9"), cur("90"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT Date, OneOff, Gross, TotalTaxable, PAYE, TakeHome FROM Wages "
                                    "WHERE WageID = %1")
                         .arg(id)),
              QStringList{QStringLiteral("2026-11-20|true|99.0000|99.0000|9.0000|90.0000")});
}

TEST_F(LinesTest, LastPaysTotalsAreCopiedWithKiwiSaverOnlyWhenEnrolled) {
    addEmployee(100, 1, "20");
    const qint32 last = blankWage(QStringLiteral("13/11/2026"));
    exec(QStringLiteral("UPDATE Wages SET Hours = 40, Gross = 800, TaxAllow = 10, TotalTaxable = 810, PAYE = 100, "
                        "NonTaxAllow = 5, Deductions = 20, TakeHome = 695, KiwiSaverContribution = 24, "
                        "ESCTDeductions = 4 WHERE WageID = %1")
             .arg(last));
    const qint32 next = blankWage(QStringLiteral("20/11/2026"));
    ql::DefaultValuesToLastPay(next, last);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT Hours, Gross, TaxAllow, TotalTaxable, PAYE, NonTaxAllow, Deductions, "
                                    "TakeHome, KiwiSaverContribution, ESCTDeductions FROM Wages WHERE WageID = %1")
                         .arg(next)),
              QStringList{QStringLiteral("40|800.0000|10.0000|810.0000|100.0000|5.0000|20.0000|695.0000|0.0000|0.0000")});
    exec(QStringLiteral("UPDATE Employees SET KiwiSaverEnrolled = 1"));
    ql::DefaultValuesToLastPay(next, last);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT KiwiSaverContribution, ESCTDeductions FROM Wages WHERE WageID = %1").arg(next)),
              QStringList{QStringLiteral("24.0000|4.0000")});
}

TEST_F(LinesTest, EmployeeLookupsOfTheRoster) {
    const qint32 a = addEmployee(100, 1, "20");
    const qint32 b = addEmployee(100, 1, "21");
    ql::SetEmpArray(a, QStringLiteral("employee"));
    EXPECT_EQ(app.CurrentEmployeeID, a);
    EXPECT_EQ(app.CurrentEmployee, 1);
    ql::SetEmpArray(app.EmployeeArray[2].AddressID, QStringLiteral("address"));
    EXPECT_EQ(app.CurrentEmployeeID, b);
    EXPECT_EQ(app.CurrentEmployee, 2);
    ql::SetEmpArray(9999, QStringLiteral("employee"));
    ql::SetEmpArray(a, QStringLiteral("other"));
    EXPECT_EQ(app.CurrentEmployeeID, b);

    int index = 7;
    ql::SelectCurrentEmp({a, b, 3, b}, index);
    EXPECT_EQ(index, 3); // the walk goes on to the end
    index = 7;
    ql::SelectCurrentEmp({a, 3}, index);
    EXPECT_EQ(index, 7);
}

TEST_F(LinesTest, PayInfoLookup) {
    app.PayInfo = {ql::PayInfoRecord{42, 1.0f, QVariant()}};
    ql::FillpayInfoArray(QStringLiteral("SELECT PaymentNameID, Calculation, Salary FROM PaymentNames WHERE 0"), true);
    EXPECT_EQ(app.PayInfo.size(), 1); // an empty result leaves it as it was
    ql::FillpayInfoArray(QStringLiteral("SELECT PaymentNameID, Calculation, Salary FROM PaymentNames "
                                        "WHERE PaymentNameID >= 100 ORDER BY PaymentNameID"),
                         true);
    ASSERT_EQ(app.PayInfo.size(), 6); // five rows and an empty last record
    EXPECT_EQ(ql::GetPayInfoRate(101), 1.5f);
    EXPECT_EQ(ql::GetPayInfoRate(999), 0.0f);
    EXPECT_TRUE(ql::GetPayInfoSalary(102).toBool());
    EXPECT_FALSE(ql::GetPayInfoSalary(100).toBool());
    EXPECT_TRUE(ql::IsNull(ql::GetPayInfoSalary(999)));
    ql::FillpayInfoArray(QStringLiteral("SELECT PaymentNameID, Calculation, Salary FROM PaymentNames "), false);
    EXPECT_TRUE(ql::IsNull(ql::GetPayInfoSalary(102)));
}

// --- whole pays -------------------------------------------------------------------------------------

TEST_F(LinesTest, FirstAndSecondPayOfAnHourlyEmployee) {
    exec("INSERT INTO TaxAllowName VALUES (100, 'Dog', 5, 0)");
    exec("INSERT INTO TaxAllowTypes VALUES (100, 100, 1)");
    const qint32 emp = addEmployee(100, 1, "25.50");
    // No pay yet: the reposition of the refreshed list asks for the first pay date; the answer is taken.
    scripted.queueInput(QStringLiteral("6/11/2026"));
    view.datPays.Refresh();
    ASSERT_EQ(scripted.calls.size(), 1);
    EXPECT_EQ(scripted.calls[0].message, QStringLiteral("Enter date of first pay for Jo Test"));
    EXPECT_EQ(scripted.calls[0].caption, QStringLiteral("Pay Date"));
    EXPECT_EQ(scripted.calls[0].text, ql::Format(QVariant(QDate(2026, 11, 20)), QStringLiteral("Short date")));
    const qint32 first = app.CurrentWageID;
    EXPECT_GT(first, 0);
    EXPECT_EQ(ql::CDate(scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(first))),
              QDate(2026, 11, 6));
    // 40.1076927185 units at 25.50 = 1022.7462
    EXPECT_EQ(money(QStringLiteral("SELECT Sum(Payment) FROM PaymentDetails WHERE WageID = %1").arg(first)),
              cur("1022.7462"));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TaxNameID, taxallowrate, Amountcalcon, TaxableAllow FROM TaxAllowDetails "
                                    "WHERE WageID = %1")
                         .arg(first)),
              QStringList{QStringLiteral("100|5|0.0000|0.0000")});

    // The user sets the dog allowance to 3 at 5 and the ordinary line to 45 units.
    exec(QStringLiteral("UPDATE TaxAllowDetails SET Amountcalcon = 3, TaxableAllow = 15 WHERE WageID = %1").arg(first));
    exec(QStringLiteral("UPDATE PaymentDetails SET DetailHours = 45, Payment = 1147.5 WHERE WageID = %1 "
                        "AND PaymentNameID = 100")
             .arg(first));
    exec("UPDATE TaxAllowName SET taxallowrate = 6");

    ql::AddnextPay(view);
    const qint32 second = app.CurrentWageID;
    EXPECT_NE(second, first);
    EXPECT_EQ(ql::CDate(scalar(QStringLiteral("SELECT Date FROM Wages WHERE WageID = %1").arg(second))),
              QDate(2026, 11, 13));
    EXPECT_EQ(money(QStringLiteral("SELECT Sum(Payment) FROM PaymentDetails WHERE WageID = %1").arg(second)),
              cur("1147.5"));
    // The last pay's allowance is copied, not recalculated at the name's new rate.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT taxallowrate, Amountcalcon, TaxableAllow FROM TaxAllowDetails "
                                    "WHERE WageID = %1")
                         .arg(second)),
              QStringList{QStringLiteral("5|3.0000|15.0000")});
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TaxableAmount FROM TaxDetails WHERE WageID = %1").arg(second)),
              QStringList{QStringLiteral("1162.5000")});
    EXPECT_EQ(app.CurrentTab, 6); // the take-home view
    Q_UNUSED(emp);
}

TEST_F(LinesTest, EnrolledEmployeeGetsContributionsAndACreditOfZero) {
    const qint32 emp = addEmployee(100, 1, "20", "0", QStringLiteral("M"), true);
    app.WageDatabase.execute(QStringLiteral("INSERT INTO EmployerContributions VALUES (?, 1, 0, 0)"), {emp});
    app.WageDatabase.execute(QStringLiteral("INSERT INTO EmployeeDeductions VALUES (?, 1, 0, 0, 'KiwiSaver')"), {emp});
    blankWage(QStringLiteral("13/11/2026"));
    view.datPays.Refresh();
    ql::AddnextPay(view);
    const qint32 wage = app.CurrentWageID;
    // The line is made on the new lines' taxable (40.1076927185 units at 20 = 802.1539), but the
    // recalculation that ends the add works on the totals copied from the last pay, which were 0 here:
    // the line then stands on 0 until the next save.
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT ContributionNameID, AmountCalcon, Contributions FROM ContributionDetails "
                                    "WHERE WageID = %1")
                         .arg(wage)),
              QStringList{QStringLiteral("1|0.0000|0.0000")});
    EXPECT_EQ(money(QStringLiteral("SELECT TaxCreditKiwiSaver FROM Wages WHERE WageID = %1").arg(wage)), Currency());

    // Not enrolled: no contribution rows at all.
    const qint32 other = addEmployee(100, 1, "20");
    app.WageDatabase.execute(QStringLiteral("INSERT INTO EmployerContributions VALUES (?, 1, 0, 0)"), {other});
    blankWage(QStringLiteral("13/11/2026"));
    view.datPays.Refresh();
    ql::AddnextPay(view);
    EXPECT_EQ(scalar(QStringLiteral("SELECT count(*) FROM ContributionDetails WHERE WageID = %1").arg(app.CurrentWageID))
                  .toInt(),
              0);
}
