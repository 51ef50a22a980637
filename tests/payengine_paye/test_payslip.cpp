// The payslip lines: the PaySlip rows in order, the sections and their totals, and the labels they set.
#include "PayeFixture.h"
#include "reports/PaySlipLines.h"
#include "runtime/Convert.h"

using namespace ql;

namespace qltest {
namespace {

class PaySlipTest : public PayeTest {
protected:
    void SetUp() override {
        PayeTest::SetUp();
        const qint32 flat = addTaxType(QStringLiteral("S"), {{1e9, 17.5f}});
        emp = addEmployee(flat, intervalWith(52), QStringLiteral("M"));
        wage = addWage(emp);
        app.CurrentWageID = wage;
        exec("INSERT INTO PaymentNames (PaymentNameID, PayUnitname, Calculation, Salary) VALUES "
             "(9001, 'Ordinary time', 1, 0), (9002, 'Overtime', 1.5, 0), (9003, 'Salary', 0, 1)");
        exec("INSERT INTO TaxAllowName (TaxNameID, taxAllowancename, taxallowrate) VALUES (9101, 'Dog', 20), "
             "(9102, 'Tools', 5)");
        exec("INSERT INTO NonTaxAllowName (NonTaxNameID, NonTaxallowname, NonTaxRate) VALUES (9201, 'Meal', 10)");
        exec("INSERT INTO DeductNames (DeductNameID, DeductionName, TaxName, Percentage) VALUES "
             "(9301, 'Union', '', 0), (9302, 'KiwiSaver', 'KiwiSaver', 3)");
        exec("INSERT INTO ContributionNames (ContributionNameID, ContributionName, TaxName, Percentage) VALUES "
             "(9401, 'Employer KiwiSaver', 'kiwisaver', 3)");
    }
    void exec(const char* sql) { db().execute(QString::fromLatin1(sql).replace(QLatin1String("%W"), QString::number(wage))); }

    void fullPay() {
        exec("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) VALUES "
             "(%W, 9001, 40, 25, 1000), (%W, 9002, 2, 37.5, 75)");
        // A negative allowance never shows and never counts.
        exec("INSERT INTO TaxAllowDetails (WageID, TaxNameID, Amountcalcon, taxallowrate, TaxableAllow) VALUES "
             "(%W, 9101, 1, 20, 20), (%W, 9102, 1, 5, -5)");
        exec("INSERT INTO TaxDetails (WageID, PayIntervalID, TaxableAmount, TaxTypeID, PAYE) VALUES "
             "(%W, 1, 1095, 1, 171.5)");
        exec("INSERT INTO NonTaxAllowDetails (WageID, NonTaxNameID, Amountcalcon, NonTaxRate, NonTaxAllow) VALUES "
             "(%W, 9201, 2, 10, 20)");
        exec("INSERT INTO DeductionDetails (WageID, DeductNameID, AmountCalcon, Percentage, Deductions) VALUES "
             "(%W, 9301, 0, 100, 10), (%W, 9302, 1095, 3, 32.85)");
        exec("INSERT INTO ContributionDetails (WageID, ContributionNameID, AmountCalcon, Percentage, ESCT, "
             "Contributions) VALUES (%W, 9401, 1095, 3, 3.45, 32.85)");
    }
    void enrol(bool on) {
        db().execute(QStringLiteral("UPDATE Employees SET KiwiSaverEnrolled = %1 WHERE EmployeeID = %2")
                         .arg(on ? 1 : 0)
                         .arg(emp));
        app.EmployeeArray[app.CurrentEmployee].KiwiSaverEnrolled = on;
    }
    QStringList slip() {
        QStringList rows;
        auto rs = db().openRecordset(QStringLiteral("SELECT Description, Number, Rate, Amount, Total FROM PaySlip"),
                                     RecordsetType::Snapshot);
        while (!rs->EOF_()) {
            QStringList cells;
            for (int i = 0; i < 5; ++i)
                cells << rs->value(i).toString();
            rows << cells.join(QLatin1Char('|'));
            rs->MoveNext();
        }
        return rows;
    }
    QString label(const char* name) { return view.caption(QString::fromLatin1(name)); }

    BareView view;
    qint32 emp = 0;
    qint32 wage = 0;
};

TEST_F(PaySlipTest, WholeSlipOfAnEnrolledEmployee) {
    fullPay();
    enrol(true);
    RefreshPaySlip(view);
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
    // Net = 1095 - 171.50 = 923.50; take-home = 923.50 + 20 - (10 + 32.85) = 900.65.
    const QStringList expected{
        "Gross||||",
        "    Ordinary time (x1)|40.00|25.00|1000.00|",
        "    Overtime (x1.5)|2.00|37.50|75.00|",
        "||||1075.00",
        "Taxable Allowances||||",
        "    Dog|1.00|20.00|20.00|",
        "||||20.00",
        "||||",
        "Total Taxable||||1095.00",
        "PAYE||||-171.50",
        "Net||||923.50",
        "||||",
        "Non Taxable Allowances||||",
        "    Meal|2.00|10.00|20.00|",
        "||||20.00",
        "||||",
        "Deductions||||",
        "    Union|0.00|100.00|10.00|",
        "    KiwiSaver|1095.00|3.00|32.85|",
        "||||-42.85",
        "||||",
        "Take Home Pay||||900.65",
        "||||",
        "Employer Contributions||||",
        "    Employer KiwiSaver|1095.00|3.00|32.85|",
    };
    EXPECT_EQ(slip(), expected);
    EXPECT_EQ(label("lblGross"), QStringLiteral("$1,075.00"));
    EXPECT_EQ(label("lblTaxable"), QStringLiteral("$20.00"));
    EXPECT_EQ(label("lblTotalTaxable"), QStringLiteral("$1,095.00"));
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$171.50"));
    EXPECT_EQ(label("lblNonTax"), QStringLiteral("$20.00"));
    EXPECT_EQ(label("lblDeduct"), QStringLiteral("$42.85"));
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$900.65"));
    EXPECT_EQ(label("lblKiwiSaver"), QStringLiteral("$32.85"));
    // The credit is 0 and smaller than the contributions.
    EXPECT_EQ(label("lblTaxCredit"), QStringLiteral("$0.00"));
}

TEST_F(PaySlipTest, RefreshingTwiceHoldsOneSlip) {
    fullPay();
    RefreshPaySlip(view);
    const QStringList first = slip();
    RefreshPaySlip(view);
    EXPECT_EQ(slip(), first);
}

TEST_F(PaySlipTest, RefreshesInOneTransactionFollowEveryChange) {
    fullPay();
    db().beginTrans();
    RefreshPaySlip(view);
    const QStringList first = slip();
    // Labels changed by hand between two refreshes of unchanged lines are set again.
    view.setCaption(QStringLiteral("lblGross"), QStringLiteral("1"));
    RefreshPaySlip(view);
    EXPECT_EQ(slip(), first);
    EXPECT_EQ(label("lblGross"), QStringLiteral("$1,075.00"));
    // A changed line shows at the next refresh.
    exec("UPDATE PaymentDetails SET Payment = 1100 WHERE WageID = %W AND PaymentNameID = 9001");
    RefreshPaySlip(view);
    EXPECT_EQ(slip().at(1), QStringLiteral("    Ordinary time (x1)|40.00|25.00|1100.00|"));
    EXPECT_EQ(label("lblGross"), QStringLiteral("$1,175.00"));
    // So does a line undone by a savepoint's rollback, and the slip it had written is written again.
    db().beginTrans();
    exec("UPDATE PaymentDetails SET Payment = 900 WHERE WageID = %W AND PaymentNameID = 9001");
    RefreshPaySlip(view);
    EXPECT_EQ(label("lblGross"), QStringLiteral("$975.00"));
    db().rollback();
    RefreshPaySlip(view);
    EXPECT_EQ(slip().at(1), QStringLiteral("    Ordinary time (x1)|40.00|25.00|1100.00|"));
    EXPECT_EQ(label("lblGross"), QStringLiteral("$1,175.00"));
    db().commitTrans();
}

TEST_F(PaySlipTest, NotEnrolledHasNoContributionSectionAndKeepsItsLabels) {
    fullPay();
    enrol(false);
    view.setCaption(QStringLiteral("lblKiwiSaver"), QStringLiteral("7"));
    RefreshPaySlip(view);
    const QStringList rows = slip();
    EXPECT_EQ(rows.last(), QStringLiteral("Take Home Pay||||900.65"));
    EXPECT_FALSE(rows.contains(QStringLiteral("Employer Contributions||||")));
    EXPECT_EQ(label("lblKiwiSaver"), QStringLiteral("$7.00"));
}

TEST_F(PaySlipTest, EmptySectionsShowZeroInTheirOwnWay) {
    RefreshPaySlip(view);
    // Gross always has its total row; a summed section without lines puts 0.00 in its heading's amount.
    const QStringList expected{
        "Gross||||",
        "||||0.00",
        "Taxable Allowances|||0.00|",
        "||||",
        "Total Taxable||||0.00",
        "PAYE||||0.00",
        "Net||||0.00",
        "||||",
        "Non Taxable Allowances|||0.00|",
        "||||",
        "Deductions|||0.00|",
        "||||",
        "Take Home Pay||||0.00",
    };
    EXPECT_EQ(slip(), expected);
    EXPECT_EQ(label("lblGross"), QStringLiteral("$0.00"));
    EXPECT_EQ(label("lblPaye"), QStringLiteral("$0.00"));
    EXPECT_EQ(label("lblTakehome"), QStringLiteral("$0.00"));
}

TEST_F(PaySlipTest, ANameWithoutMultiplierStandsAlone) {
    exec("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) VALUES "
         "(%W, 9003, 1, 1923.0769, 1923.0769)");
    RefreshPaySlip(view);
    // The line shows two decimals and the sum is of what is shown.
    EXPECT_EQ(slip().mid(0, 3), (QStringList{"Gross||||", "    Salary|1.00|1923.08|1923.08|", "||||1923.08"}));
}

TEST_F(PaySlipTest, LargeAmountsGoThroughTheRunningSingle) {
    exec("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) VALUES "
         "(%W, 9001, 1, 123456.78, 123456.78)");
    RefreshPaySlip(view);
    // 123456.78 as a Single is 123456.78125, which prints with seven digits as 123456.8: the slip's
    // total shows 80 cents where the line shows 78. The label, whose figure the pay stores, holds the
    // line's 78 cents.
    const QStringList rows = slip();
    EXPECT_EQ(rows[1], QStringLiteral("    Ordinary time (x1)|1.00|123456.78|123456.78|"));
    EXPECT_EQ(rows[2], QStringLiteral("||||123456.80"));
    EXPECT_EQ(label("lblGross"), QStringLiteral("$123,456.78"));
}

TEST_F(PaySlipTest, PaymentLinesQueryWithAndWithoutKeys) {
    exec("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, Payment) VALUES "
         "(%W, 9002, 2, 37.5, 75)");
    auto plain = db().openRecordset(GetPaymentLinesSQL(wage, false), RecordsetType::Snapshot);
    ASSERT_EQ(plain->fieldCount(), 4);
    EXPECT_EQ(plain->value(0).toString(), QStringLiteral("Overtime (x1.5)"));
    auto keyed = db().openRecordset(GetPaymentLinesSQL(wage, true), RecordsetType::Snapshot);
    ASSERT_EQ(keyed->fieldCount(), 6);
    EXPECT_EQ(keyed->fieldName(1), QStringLiteral("PaymentNameID"));
    EXPECT_EQ(keyed->fieldName(4), QStringLiteral("Salary"));
    EXPECT_EQ(CLng(keyed->value(1)), 9002);
}

} // namespace
} // namespace qltest
