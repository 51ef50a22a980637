// Template rows that carry New Zealand's tax figures: pay intervals, tax types and steps, ESCT bands,
// and the deduction and contribution names with their rates and thresholds.
//
// Tax year 2026/27 (1 April 2026 to 31 March 2027). Every figure of that year stands once, in the
// constants below; next year's update is an edit of this block.
#include "Schema.h"
#include "TemplateRows.h"
#include <cmath>

namespace ql {

namespace taxyear2026 {
// Income tax bands: upper limit of each band (yearly) and its rate in per cent; the last goes on.
constexpr double Band1Limit = 15600, Band1Rate = 10.5;
constexpr double Band2Limit = 53500, Band2Rate = 17.5;
constexpr double Band3Limit = 78100, Band3Rate = 30;
constexpr double Band4Limit = 180000, Band4Rate = 33;
constexpr double TopRate = 39;
// ACC earners' levy: per cent of liable earnings, up to the yearly maximum.
constexpr double AccLevyRate = 1.75;
constexpr double AccLevyMaximum = 156641;
// Flat rates of the secondary codes and of no notification (before the levy).
constexpr double RateSB = 10.5, RateS = 17.5, RateSH = 30, RateST = 33, RateSA = 39, RateND = 45;
// KiwiSaver: employee default rate and employer minimum, in per cent.
constexpr double KiwiSaverEmployeeRate = 3.5;
constexpr double KiwiSaverEmployerRate = 3.5;
// Student loan: per cent above the yearly threshold. The published threshold is $24,128 a year with
// per-pay thresholds of $464, $928, $1,856 and $2,010.66 (cents cut). The stored figure sits a little
// below it: divided as a Single by 52, 26, 13 or 12 pays and taken to four decimals it lands between
// 0.0017 and 0.0092 below each per-pay threshold, so that cutting the base to cents leaves exactly the
// earnings less that threshold. 24,128 itself gives 2,010.6666 a month, a cent too much off the base.
constexpr double StudentLoanRate = 12;
constexpr double StudentLoanThreshold = 24127.90;
// ESCT bands on the year's salary: lower edge and rate as a fraction. The first band's row stands
// below zero, so that a yearly figure of 0 still finds a rate.
constexpr double EsctEdge2 = 18720, EsctEdge3 = 64200, EsctEdge4 = 93720, EsctEdge5 = 216000;
constexpr double EsctRate1 = 0.105, EsctRate2 = 0.175, EsctRate3 = 0.30, EsctRate4 = 0.33, EsctRate5 = 0.39;
} // namespace taxyear2026

namespace {

// The upper limit of a last step: no yearly figure reaches it.
constexpr double OpenLimit = 999999999;

// Rates go into the table as Singles, as the column holds them.
QVariant rate(double percent) {
    return QVariant(static_cast<double>(static_cast<float>(percent)));
}

// A rate of a half per cent (3.5) makes every other cent of earnings a product with a half in its fifth
// decimal, which the conversion to four decimals may carry up to a whole cent before the cut: 14.57 at
// 3.5% would give 0.51 where the cut of 0.50995 is 0.50. The Single just below such a rate (a quarter of
// a millionth less) settles each of those halves downward and moves no other product, for any pay up
// to about $20,000; it still shows as 3.50.
QVariant cutRate(double percent) {
    return QVariant(static_cast<double>(std::nextafter(static_cast<float>(percent), 0.0f)));
}

void addPayIntervals(Database& db) {
    insertRows(db, QStringLiteral("PayInterval"),
               {QStringLiteral("PayIntervalID"), QStringLiteral("IntervalName"),
                QStringLiteral("PaysPerYear"), QStringLiteral("NumberOfDays"),
                QStringLiteral("KiwiSaverCredit")},
               {
                   {1, QStringLiteral("Weekly"), 52, 7, 0},
                   {2, QStringLiteral("Fortnightly"), 26, 14, 0},
                   {3, QStringLiteral("Four-weekly"), 13, 28, 0},
                   {4, QStringLiteral("Monthly"), 12, 0, 0},
                   {5, QStringLiteral("One-off"), 0, 0, 0},
               });
}

void addTaxTypes(Database& db) {
    using namespace taxyear2026;
    insertRows(db, QStringLiteral("TaxTypes"),
               {QStringLiteral("TaxTypeID"), QStringLiteral("Taxname"), QStringLiteral("Order")},
               {
                   {1, QStringLiteral("M"), 1},
                   {2, QStringLiteral("SB"), 2},
                   {3, QStringLiteral("S"), 3},
                   {4, QStringLiteral("SH"), 4},
                   {5, QStringLiteral("ST"), 5},
                   {6, QStringLiteral("SA"), 6},
                   {7, QStringLiteral("ND"), 7},
                   // The one-off pay's extra-pay method: the tax year's figures work out its tax.
                   {8, QStringLiteral("Extra pay"), 8},
               });
    // The main type carries the levy in its steps: each band's rate plus the levy, and an edge at the
    // levy's maximum above which the levy stops.
    insertRows(db, QStringLiteral("TaxSteps"),
               {QStringLiteral("TaxStepsID"), QStringLiteral("taxtypeID"), QStringLiteral("upperlimit"),
                QStringLiteral("taxrate")},
               {
                   {1, 1, Band1Limit, rate(Band1Rate + AccLevyRate)},
                   {2, 1, Band2Limit, rate(Band2Rate + AccLevyRate)},
                   {3, 1, Band3Limit, rate(Band3Rate + AccLevyRate)},
                   {4, 1, AccLevyMaximum, rate(Band4Rate + AccLevyRate)},
                   {5, 1, Band4Limit, rate(Band4Rate)},
                   {6, 1, OpenLimit, rate(TopRate)},
                   // Flat types: one step, the levy on every dollar.
                   {7, 2, OpenLimit, rate(RateSB + AccLevyRate)},
                   {8, 3, OpenLimit, rate(RateS + AccLevyRate)},
                   {9, 4, OpenLimit, rate(RateSH + AccLevyRate)},
                   {10, 5, OpenLimit, rate(RateST + AccLevyRate)},
                   {11, 6, OpenLimit, rate(RateSA + AccLevyRate)},
                   {12, 7, OpenLimit, rate(RateND + AccLevyRate)},
                   {13, 8, OpenLimit, rate(0)},
               });
}

void addEsct(Database& db) {
    using namespace taxyear2026;
    insertRows(db, QStringLiteral("ESCT"), {QStringLiteral("Salary"), QStringLiteral("Rate")},
               {
                   {-1, EsctRate1},
                   {EsctEdge2, EsctRate2},
                   {EsctEdge3, EsctRate3},
                   {EsctEdge4, EsctRate4},
                   {EsctEdge5, EsctRate5},
               });
}

void addDeductionsAndContributions(Database& db) {
    using namespace taxyear2026;
    const QStringList deductColumns{QStringLiteral("DeductNameID"),   QStringLiteral("DeductionName"),
                                    QStringLiteral("CountryPhone"),   QStringLiteral("TaxName"),
                                    QStringLiteral("Percentage"),     QStringLiteral("LowerThreshold"),
                                    QStringLiteral("UpperThreshold"), QStringLiteral("MaxPercent")};
    insertRows(db, QStringLiteral("DeductNames"), deductColumns,
               {
                   {1, QStringLiteral("KiwiSaver"), 64, QStringLiteral("kiwisaver"),
                    cutRate(KiwiSaverEmployeeRate), 0, 0, 0},
                   {2, QStringLiteral("Student Loan"), 64, QStringLiteral("studentloan"),
                    rate(StudentLoanRate), StudentLoanThreshold, 0, 0},
                   {3, QStringLiteral("Union Fees"), 64, QString(), 0, 0, 0, 0},
                   {4, QStringLiteral("Board"), 64, QString(), 0, 0, 0, 0},
                   {5, QStringLiteral("Child Support"), 64, QString(), 0, 0, 0, 0},
                   {6, QStringLiteral("Advance Repayment"), 64, QString(), 0, 0, 0, 0},
               });
    const QStringList contributionColumns{
        QStringLiteral("ContributionNameID"), QStringLiteral("ContributionName"),
        QStringLiteral("CountryPhone"),       QStringLiteral("TaxName"),
        QStringLiteral("Percentage"),         QStringLiteral("LowerThreshold"),
        QStringLiteral("UpperThreshold"),     QStringLiteral("MaxPercent")};
    insertRows(db, QStringLiteral("ContributionNames"), contributionColumns,
               {
                   {1, QStringLiteral("Employer KiwiSaver"), 64, QStringLiteral("kiwisaver"),
                    rate(KiwiSaverEmployerRate), 0, 0, 0},
                   {2, QStringLiteral("Employer Superannuation"), 64, QString(), rate(3), 0, 0, 0},
               });
}

} // namespace

void addTemplateTaxRows(Database& db) {
    addPayIntervals(db);
    addTaxTypes(db);
    addEsct(db);
    addDeductionsAndContributions(db);
}

} // namespace ql
