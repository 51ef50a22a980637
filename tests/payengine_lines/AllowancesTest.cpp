// Taxable and non-taxable allowance lines.
#include "LinesFixture.h"
#include "payengine/Allowances.h"

using namespace linestest;
using ql::Currency;

class AllowancesTest : public LinesTest {
protected:
    void SetUp() override {
        LinesTest::SetUp();
        exec("INSERT INTO TaxAllowName VALUES (100, 'Dog', 5, 0), (101, 'Tools', 2.5, 0), (102, 'Board', 1, 1)");
        exec("INSERT INTO TaxAllowTypes VALUES (101, 100, 1), (100, 100, 2), (102, 100, 3)");
        exec("INSERT INTO NonTaxAllowName VALUES (100, 'Meals', 12.5), (101, 'Mileage', 0.8)");
        exec("INSERT INTO NonTaxAllowTypes VALUES (101, 100, 2), (100, 100, 1)");
    }
};

TEST_F(AllowancesTest, FirstPayHasEveryAllowanceOfTheTypeAtZeroInListOrder) {
    addEmployee(100, 1, "20");
    const qint32 wage = blankWage(QStringLiteral("20/11/2026"));
    ql::AddDefaulttaxable(0, wage, 100);
    ql::AddDefaultNontax(0, wage, 100);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TaxNameID, taxallowrate, Amountcalcon, TaxableAllow FROM TaxAllowDetails "
                                    "WHERE WageID = %1 ORDER BY rowid")
                         .arg(wage)),
              (QStringList{QStringLiteral("101|2.5|0.0000|0.0000"), QStringLiteral("100|5|0.0000|0.0000"),
                           QStringLiteral("102|1|0.0000|0.0000")}));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT NonTaxNameID, NonTaxRate, NonTaxAllow FROM NonTaxAllowDetails "
                                    "WHERE WageID = %1 ORDER BY rowid")
                         .arg(wage)),
              (QStringList{QStringLiteral("100|12.5|0.0000"), QStringLiteral("101|0.80000001192092896|0.0000")}));
    EXPECT_EQ(ql::SumTaxAllow(wage), Currency());
}

TEST_F(AllowancesTest, SecondPayCopiesQuantityRateAndAmount) {
    addEmployee(100, 1, "20");
    const qint32 first = blankWage(QStringLiteral("13/11/2026"));
    ql::AddDefaulttaxable(0, first, 100);
    ql::AddDefaultNontax(0, first, 100);
    // An amount that does not equal rate x quantity is copied as it stands.
    exec(QStringLiteral("UPDATE TaxAllowDetails SET Amountcalcon = 3, taxallowrate = 4, TaxableAllow = 13 "
                        "WHERE WageID = %1 AND TaxNameID = 100")
             .arg(first));
    exec(QStringLiteral("UPDATE TaxAllowDetails SET Amountcalcon = 7, TaxableAllow = 7 WHERE WageID = %1 AND TaxNameID = 102")
             .arg(first));
    exec(QStringLiteral("UPDATE NonTaxAllowDetails SET Amountcalcon = 2, NonTaxAllow = 25 WHERE WageID = %1 "
                        "AND NonTaxNameID = 100")
             .arg(first));
    exec("DELETE FROM TaxAllowTypes WHERE TaxNameID = 101");
    const qint32 second = blankWage(QStringLiteral("20/11/2026"));
    ql::AddDefaulttaxable(first, second, 100);
    ql::AddDefaultNontax(first, second, 100);
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT TaxNameID, taxallowrate, Amountcalcon, TaxableAllow FROM TaxAllowDetails "
                                    "WHERE WageID = %1 ORDER BY rowid")
                         .arg(second)),
              (QStringList{QStringLiteral("100|4|3.0000|13.0000"), QStringLiteral("102|1|7.0000|7.0000")}));
    EXPECT_EQ(rowsOf(QStringLiteral("SELECT NonTaxNameID, Amountcalcon, NonTaxAllow FROM NonTaxAllowDetails "
                                    "WHERE WageID = %1 ORDER BY rowid")
                         .arg(second)),
              (QStringList{QStringLiteral("100|2.0000|25.0000"), QStringLiteral("101|0.0000|0.0000")}));
    EXPECT_EQ(ql::SumTaxAllow(second), cur("20"));
    // Only the allowance marked as outside KiwiSaver.
    EXPECT_EQ(ql::ExcludeKiwiSaver(second), cur("7"));
    EXPECT_EQ(ql::ExcludeKiwiSaver(9999), Currency());
}

class AllowanceRowTest : public AllowancesTest {
protected:
    ql::GridArray grid;
    void row(const char* name, const char* calcOn, const char* rate, const char* amount) {
        grid = ql::GridArray();
        grid.resize(1, 5);
        grid.setValue(0, 0, 1);
        grid.setValue(0, 1, QString::fromLatin1(name));
        grid.setValue(0, 2, QString::fromLatin1(calcOn));
        grid.setValue(0, 3, QString::fromLatin1(rate));
        grid.setValue(0, 4, QString::fromLatin1(amount));
    }
    QString cell(int c) { return grid.value(0, c).toString(); }
};

TEST_F(AllowanceRowTest, AmountTypedOverNothingBecomesAQuantityAtRateOne) {
    row("100", "0", "0", "0");
    ql::RecalcAllowanceRow(grid, 0, 4, QStringLiteral("17.5"));
    EXPECT_EQ(cell(2), QStringLiteral("17.50"));
    EXPECT_EQ(cell(3), QStringLiteral("1.00"));
    EXPECT_EQ(cell(4), QStringLiteral("$17.50"));
}

TEST_F(AllowanceRowTest, AmountTypedOverARateGivesTheQuantity) {
    row("100", "0", "2", "0");
    ql::RecalcAllowanceRow(grid, 0, 4, QStringLiteral("17"));
    EXPECT_EQ(cell(2), QStringLiteral("8.50"));
    EXPECT_EQ(cell(3), QStringLiteral("2.00"));
    // With a quantity the rate follows.
    row("100", "4", "2", "8");
    ql::RecalcAllowanceRow(grid, 0, 4, QStringLiteral("10"));
    EXPECT_EQ(cell(3), QStringLiteral("2.50"));
}

TEST_F(AllowanceRowTest, QuantityRateAndNameMoveTheAmount) {
    ql::FillpayInfoArray(QStringLiteral("SELECT TaxNameID, TaxAllowRate from TaxAllowName"), false);
    row("100", "3", "5", "15");
    ql::RecalcAllowanceRow(grid, 0, 2, QStringLiteral("4"));
    EXPECT_EQ(cell(4), QStringLiteral("$20.00"));
    ql::RecalcAllowanceRow(grid, 0, 3, QStringLiteral("$2.125"));
    EXPECT_EQ(cell(3), QStringLiteral("2.12")); // the rate goes through RoundCurrency
    EXPECT_EQ(cell(4), QStringLiteral("$8.48"));
    // A new name: its rate on the old quantity.
    ql::RecalcAllowanceRow(grid, 0, 1, QStringLiteral("101"));
    EXPECT_EQ(cell(3), QStringLiteral("2.50"));
    EXPECT_EQ(cell(4), QStringLiteral("$10.00"));
}
