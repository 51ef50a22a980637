// CalcPAYE end to end on a pay: the yearly conversion chosen by the number of steps, the TaxDetails
// row, the two-decimal result, and the published cases on the template rows.
#include "PayeFixture.h"
#include "payengine/Paye.h"
#include "runtime/Convert.h"

using namespace ql;

namespace qltest {
namespace {

Currency cur(const char* text) { return Currency::fromDouble(QString::fromLatin1(text).toDouble()); }

class CalcPayeTest : public PayeTest {
protected:
    struct Row {
        qint32 payIntervalID;
        Currency taxable;
        qint32 taxTypeID;
        Currency paye;
    };
    Row taxDetail(qint32 wageID) {
        auto rs = db().openRecordset(
            QStringLiteral("SELECT PayIntervalID, TaxableAmount, TaxTypeID, PAYE FROM TaxDetails WHERE WageID = %1")
                .arg(wageID),
            RecordsetType::Snapshot);
        EXPECT_FALSE(rs->EOF_());
        return {CLng(rs->value(0)), CCur(rs->value(1)), CLng(rs->value(2)), CCur(rs->value(3))};
    }
};

TEST_F(CalcPayeTest, FlatTypeRunsThroughTheRoundingProcessOnly) {
    withoutEquations();
    const qint32 flat = addTaxType(QStringLiteral("S"), {{1e9, 17.5f}});
    const qint32 weekly = intervalWith(52);
    const qint32 emp = addEmployee(flat, weekly, QStringLiteral("S"));
    const qint32 wage = addWage(emp);
    // 300 x 0.174999997 = 52.4999991 -> 52.5000.
    EXPECT_EQ(CalcPAYE(emp, wage, cur("300"), 52), QStringLiteral("$52.50"));
    const Row row = taxDetail(wage);
    EXPECT_EQ(row.payIntervalID, weekly);
    EXPECT_EQ(row.taxable, cur("300"));
    EXPECT_EQ(row.taxTypeID, flat);
    EXPECT_EQ(row.paye, cur("52.5"));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

TEST_F(CalcPayeTest, FlatTypeTestsTheCodesAgainstThePayItself) {
    withoutEquations();
    const qint32 flat = addTaxType(QStringLiteral("Flat"), {{1e9, 10.0f}});
    const qint32 emp = addEmployee(flat, intervalWith(52), QStringLiteral("ML"));
    const qint32 wage = addWage(emp);
    // T is 1000 (the pay, not 52000): in the first low-income range, rebate 1000 x 0.105 / 52 = 2.0192.
    // 100 - 2.0192 = 97.9808 is kept; what leaves is 97.98.
    EXPECT_EQ(CalcPAYE(emp, wage, cur("1000"), 52), QStringLiteral("$97.98"));
    EXPECT_EQ(taxDetail(wage).paye, cur("97.9808"));
}

TEST_F(CalcPayeTest, ResultIsWhatTheCurrencyFormatShows) {
    withoutEquations();
    const qint32 bands = addTaxType(QStringLiteral("Bands"), {{10000, 10.0f}, {1e9, 20.0f}});
    const qint32 emp = addEmployee(bands, intervalWith(52), QStringLiteral("ML"));
    const qint32 wage = addWage(emp);
    TaxDetailRecord record;
    record.TaxableAmount = cur("1000");
    qint32 closing = 2;
    const QString query = QStringLiteral("SELECT upperlimit, taxrate, taxtypeID FROM TaxSteps WHERE taxtypeID = %1 "
                                         "ORDER BY upperlimit")
                              .arg(bands);
    // Without an equation the 1000 is taken as yearly: 100 less 2.0192.
    EXPECT_EQ(StoreTaxDetails(query, cur("1000"), emp, wage, 52, closing, record), cur("97.98"));
    EXPECT_EQ(record.PAYE, cur("97.9808"));
    EXPECT_EQ(taxDetail(wage).paye, cur("97.9808"));
}

TEST_F(CalcPayeTest, NothingTaxableLeavesNoTaxDetailsRow) {
    withoutEquations();
    const qint32 flat = addTaxType(QStringLiteral("S"), {{1e9, 17.5f}});
    const qint32 emp = addEmployee(flat, intervalWith(52), QStringLiteral("S"));
    const qint32 wage = addWage(emp);
    CalcPAYE(emp, wage, cur("300"), 52);
    EXPECT_EQ(taxDetailRows(wage), 1);
    // The old row goes and no new one comes, whatever the tax.
    EXPECT_EQ(CalcPAYE(emp, wage, Currency(), 52), QStringLiteral("$0.00"));
    EXPECT_EQ(taxDetailRows(wage), 0);
    CalcPAYE(emp, wage, cur("-50"), 52);
    EXPECT_EQ(taxDetailRows(wage), 0);
}

TEST_F(CalcPayeTest, RecalculationReplacesTheRow) {
    withoutEquations();
    const qint32 flat = addTaxType(QStringLiteral("S"), {{1e9, 10.0f}});
    const qint32 emp = addEmployee(flat, intervalWith(52), QStringLiteral("S"));
    const qint32 wage = addWage(emp);
    CalcPAYE(emp, wage, cur("300"), 52);
    CalcPAYE(emp, wage, cur("400"), 52);
    EXPECT_EQ(taxDetailRows(wage), 1);
    EXPECT_EQ(taxDetail(wage).paye, cur("40"));
}

TEST_F(CalcPayeTest, TaxTypeWithoutStepsGivesNothingAndTypeZero) {
    withoutEquations();
    const qint32 empty = addTaxType(QStringLiteral("Empty"), {});
    const qint32 emp = addEmployee(empty, intervalWith(52), QStringLiteral("M"));
    const qint32 wage = addWage(emp);
    EXPECT_EQ(CalcPAYE(emp, wage, cur("500"), 52), QStringLiteral("$0.00"));
    const Row row = taxDetail(wage);
    EXPECT_EQ(row.taxTypeID, 0);
    EXPECT_EQ(row.paye, Currency());
    EXPECT_EQ(row.taxable, cur("500"));
}

TEST_F(CalcPayeTest, NoPaysPerYearTaxesThePayAsItStands) {
    withoutEquations();
    const qint32 bands = addTaxType(QStringLiteral("Bands"), {{100, 10.0f}, {1e9, 20.0f}});
    const qint32 emp = addEmployee(bands, intervalWith(0), QStringLiteral("ML"));
    const qint32 wage = addWage(emp);
    // 100 x 0.1 + 400 x 0.2 = 90, with no equation and no code.
    EXPECT_EQ(CalcPAYE(emp, wage, cur("500"), 0), QStringLiteral("$90.00"));
    EXPECT_EQ(taxDetail(wage).paye, cur("90"));
}

// The template's main tax type (the one of more than one step) and its equations.
class PublishedPayeTest : public CalcPayeTest {
protected:
    void SetUp() override {
        CalcPayeTest::SetUp();
        Database modules;
        modules.open(ModuleFileName());
        const int rows = modules.scalar(QStringLiteral("SELECT count(*) FROM TaxEquations WHERE CountryPhone = 64 "
                                                       "AND TaxProcessID IN (1, 2)")).toInt();
        modules.close();
        if (rows < 2)
            GTEST_SKIP() << "the template has no yearly equations of country 64 yet";
    }
    QString payeOf(const char* taxable, float paysPerYear) {
        const QVariant mainType = db().scalar(
            QStringLiteral("SELECT taxtypeID FROM TaxSteps GROUP BY taxtypeID HAVING count(*) > 1 LIMIT 1"));
        EXPECT_TRUE(mainType.isValid()) << "the template has no banded tax type";
        const qint32 emp = addEmployee(mainType.toInt(), intervalWith(paysPerYear), QStringLiteral("M"));
        const qint32 wage = addWage(emp);
        const QString paye = CalcPAYE(emp, wage, cur(taxable), paysPerYear);
        EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
        return paye;
    }
};

// 52000 a year: 15600 x 12.25% + 36400 x 19.25% = 1911 + 7007 = 8918; / 52 = 171.50.
TEST_F(PublishedPayeTest, Weekly1000) { EXPECT_EQ(payeOf("1000", 52), QStringLiteral("$171.50")); }

// 15600 a year: 15600 x 12.25% = 1911; / 52 = 36.75.
TEST_F(PublishedPayeTest, Weekly300) { EXPECT_EQ(payeOf("300", 52), QStringLiteral("$36.75")); }

// 18000 a year: 1911 + 2400 x 19.25% = 2373; / 52 = 45.634 -> 45.63 a week; x 52 / 12 = 197.73.
TEST_F(PublishedPayeTest, Monthly1500) { EXPECT_EQ(payeOf("1500", 12), QStringLiteral("$197.73")); }

} // namespace
} // namespace qltest
