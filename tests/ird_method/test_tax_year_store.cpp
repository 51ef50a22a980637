// The tax years of a payroll: the shipped years stored on first use, the period in force on a date,
// refusals that write nothing, and a year imported from a file: its figures reach the pays dated in it,
// swept against the second computation, and no other pay.
#include "../payengine_paye/PayeFixture.h"
#include "IrdReference.h"
#include "payengine/IrdMethod.h"
#include "payengine/Paye.h"
#include "payengine/TaxYearStore.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <iostream>

using namespace ql;

namespace qltest {
namespace {

const QByteArray kOtherYear = R"({
    "taxYear": "2027/28", "starts": "2027-04-01", "ends": "2028-03-31",
    "periods": [{
        "effective": "2027-04-01",
        "bands": [{"upTo": 20000, "rate": 12}, {"upTo": 60000, "rate": 20}, {"upTo": 100000, "rate": 31},
                  {"rate": 40}],
        "accLevy": {"rate": 2.05, "maxLiableEarnings": 160000},
        "independentEarnerCredit": {"amount": 600, "from": 25000, "abatesFrom": 70000, "to": 74000,
                                    "abatementPerDollar": 0.15},
        "flatRates": {"SB": 12, "S": 20, "SH": 31, "ST": 34, "SA": 40, "ND": 46, "CAE": 19, "EDW": 18,
                      "NSW": 11},
        "studentLoan": {"rate": 10, "threshold": 26000},
        "esctBands": [{"upTo": 20000, "rate": 12}, {"upTo": 70000, "rate": 20}, {"rate": 40}],
        "kiwiSaver": {"employeeDefault": 4, "employeeRates": [4, 6, 8, 10], "employerMinimum": 4}
    }]
})";

class TaxYearStoreTest : public PayeTest {
protected:
    void SetUp() override {
        PayeTest::SetUp();
        // The shipped years, as a payroll has them (the base fixture works without).
        db().execute(QStringLiteral("DROP TABLE TaxYearFigures"));
        EnsureTaxYearTables(db());
    }
    qint32 wageOn(qint32 employeeID, const char* date) {
        db().execute(QStringLiteral("INSERT INTO Wages (EmployeeID, [Date]) VALUES (?, ?)"),
                     {employeeID, QString::fromLatin1(date)});
        return qint32(db().lastInsertRowId());
    }
    int storedRows() { return db().scalar(QStringLiteral("SELECT count(*) FROM TaxYearFigures")).toInt(); }
};

TEST_F(TaxYearStoreTest, ShippedYearsAndThePeriodInForce) {
    const QList<TaxYearFigures> all = StoredTaxYears(db());
    QStringList dates;
    for (const TaxYearFigures& f : all) dates << f.effective.toString(Qt::ISODate);
    EXPECT_EQ(dates, (QStringList{"2024-04-01", "2024-07-31", "2025-04-01", "2026-04-01"}));
    EXPECT_EQ(TaxYearInForce(db(), QDate(2024, 7, 30))->bands.first().upTo, 14000);
    EXPECT_EQ(TaxYearInForce(db(), QDate(2024, 7, 31))->bands.first().upTo, 15600);
    // The later period carries over what it does not repeat.
    EXPECT_EQ(TaxYearInForce(db(), QDate(2024, 7, 31))->accLevyRate, 1600);
    EXPECT_EQ(TaxYearInForce(db(), QDate(2026, 3, 31))->accLevyRate, 1670);
    EXPECT_EQ(TaxYearInForce(db(), QDate(2027, 3, 31))->accLevyRate, 1750);
    EXPECT_FALSE(TaxYearInForce(db(), QDate(2027, 4, 1)).has_value());
    EXPECT_FALSE(TaxYearInForce(db(), QDate(2024, 3, 31)).has_value());
}

TEST_F(TaxYearStoreTest, BadFilesAreRefusedAndWriteNothing) {
    EnsureTaxYearTables(db());
    const int before = storedRows();
    QByteArray noFlat = kOtherYear;
    noFlat.replace("\"NSW\": 11", "\"XX\": 11");
    QByteArray badRate = kOtherYear;
    badRate.replace("\"rate\": 2.05", "\"rate\": 2.0505");
    QByteArray overlapping = kOtherYear;
    overlapping.replace("\"starts\": \"2027-04-01\"", "\"starts\": \"2027-03-01\"")
        .replace("\"effective\": \"2027-04-01\"", "\"effective\": \"2027-03-01\"");
    for (const QByteArray& json : {QByteArray("{not json"), noFlat, badRate, overlapping}) {
        try {
            ImportTaxYear(db(), json);
            ADD_FAILURE() << "accepted: " << json.left(60).toStdString();
        } catch (const VbError& e) {
            EXPECT_FALSE(e.description().isEmpty());
        }
        EXPECT_EQ(storedRows(), before);
    }
}

TEST_F(TaxYearStoreTest, AnImportedYearChangesThePaysDatedInItAndNoOther) {
    const qint32 emp = addEmployee(1, intervalWith(52), QStringLiteral("M"));
    const qint32 in2026 = wageOn(emp, "2026-06-01");
    const qint32 in2027 = wageOn(emp, "2027-06-01");
    const Currency taxable = Currency::fromLong(1234);
    const QString before2026 = CalcPAYE(emp, in2026, taxable, 52);
    const QString before2027 = CalcPAYE(emp, in2027, taxable, 52);

    ImportTaxYear(db(), kOtherYear);
    const auto imported = TaxYearInForce(db(), QDate(2027, 6, 1));
    ASSERT_TRUE(imported.has_value());
    EXPECT_EQ(imported->taxYear, QStringLiteral("2027/28"));

    const ird::TaxCode m = ird::ParseTaxCode(QStringLiteral("M"));
    EXPECT_EQ(CalcPAYE(emp, in2026, taxable, 52), before2026);
    const QString after2027 = CalcPAYE(emp, in2027, taxable, 52);
    EXPECT_NE(after2027, before2027);
    EXPECT_EQ(CCur(after2027), Currency::fromRaw(ird::PayeCents(*imported, m, 123400, 52) * 100));
    // 1234 x 52 = 64168: 2400 + 8000 + 1292.08 + levy 1315.444 = 13007.524, / 52 = 250.14.
    EXPECT_EQ(after2027, QStringLiteral("$250.14"));

    // The imported figures, as stored and read back, against the second computation.
    qint64 differ = 0, checked = 0;
    for (const char* code : {"M", "ME", "M SL", "S SL", "CAE", "NSW", "ND"})
        for (int pays : {52, 26, 13, 12})
            for (qint64 c = 1; c <= 1000000; c += 97) {
                const ird::TaxCode tc = ird::ParseTaxCode(QString::fromLatin1(code));
                ++checked;
                if (ird::PayeCents(*imported, tc, c, pays) != irdref::paye(*imported, QString::fromLatin1(code), c, pays) ||
                    ird::StudentLoanCents(*imported, tc, c, pays) !=
                        irdref::studentLoan(*imported, QString::fromLatin1(code), c, pays))
                    ++differ;
            }
    std::cout << "imported year: " << checked << " pays, " << differ << " differ" << std::endl;
    EXPECT_EQ(differ, 0);
}

TEST_F(TaxYearStoreTest, ReimportingAYearReplacesItsPeriods) {
    ImportTaxYear(db(), kOtherYear);
    QByteArray changed = kOtherYear;
    changed.replace("\"rate\": 2.05", "\"rate\": 2.5");
    ImportTaxYear(db(), changed);
    EXPECT_EQ(TaxYearInForce(db(), QDate(2027, 6, 1))->accLevyRate, 2500);
    EXPECT_EQ(storedRows(), 5);
}

} // namespace
} // namespace qltest
