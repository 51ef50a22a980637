// The equations of the template modules database: for each country, turning a pay's taxable amount
// into a yearly figure (process 1), the yearly tax back into the tax of one pay (2; 4 with the yearly
// credit x of the special codes; 5 the low-income form), and the rounding of an amount (3).
//
// Tax year 2026/27 (1 April 2026 to 31 March 2027). Inland Revenue's method for the main codes:
// the yearly figure is the pay times the pays in the year, cents dropped; the yearly tax (with the ACC
// levy, carried by the tax steps) is divided by 52 and cut to cents, then multiplied by 52, divided by
// the pays in the year and cut to cents again. The secondary codes and the deductions are cut to cents.
//
// Country 64 keeps infix formulas for TaxEvaluator, with its functions SALARY (whole dollars),
// PAYE/METAXCODE/MLTAXCODE (cut to cents) and ROUND (two decimals). Every other country keeps postfix
// texts for fhCEval: d or t is the amount, p the pays, "i" the floor; they hold whole numbers only, so
// that they read alike whatever the machine's decimal mark.
//
// Why the small additions before each cut: a tax step's rate passes through a Single, so the yearly
// tax of the steps can come out a few ten-thousandths short, and a double can land a hair below a whole
// cent. The exact yearly tax of the steps is a multiple of $0.0025 (whole dollars times rates in
// quarter per cents), so a weekly figure that is not a whole cent lies at least $0.0025 / 52 =
// $0.000048 below the next one. Adding $0.00004 to the weekly figure before the cut brings a shortfall
// of up to $0.002 in the yearly tax back to its cent and never moves a correct figure (nor one up to
// $0.0004 too high). Above $180,000 the exact weekly figure keeps a quarter of a cent from any cut, so
// the larger shortfall of the 39% step there does no harm either. The other additions are far below
// the steps they guard: a yearly figure has at most four decimals (0.00005 before dropping cents), a
// figure of one pay from whole weekly cents is at least 1/(100 x pays) from the next cent (0.000001),
// and an amount of four decimals is at least a hundredth of a cent from the next cent (0.001 cent).
#include "TemplateTaxEquations.h"
#include "TemplateRows.h"
#include <QList>
#include <QVariantList>

namespace ql {

namespace taxyear2026 {
// The tax of one pay is worked out on the week.
constexpr int WeeksInYear = 52;
} // namespace taxyear2026

namespace {

using taxyear2026::WeeksInYear;

const QString WeeksText = QString::number(WeeksInYear);

// Country 64: infix.
QString infixAnnual() {
    return QStringLiteral("SALARY(x*(p)+0.00005)");
}
// weekly = FN((tax)/52 + 0.00004), per pay = FN(weekly*52/(p) + 0.000001)
QString infixPerPay(const QString& function, const QString& yearlyTax) {
    return QStringLiteral("%1(%1(%2/%3+0.00004)*%3/(p)+0.000001)").arg(function, yearlyTax, WeeksText);
}
// Cut toward zero to cents, so that a negative amount mirrors a positive one.
QString infixRound() {
    return QStringLiteral("ROUND(FIX(x*100+SGN(x)/1000)/100)");
}

// Other countries: postfix, whole numbers only (0.00005 is 1 20000 /).
QString postfixAnnual() {
    return QStringLiteral("d p * 1 20000 / + i");
}
QString postfixPerPay() {
    return QStringLiteral("t %1 / 1 25000 / + 100 * i 100 / %1 * p / 1 1000000 / + 100 * i 100 /")
        .arg(WeeksText);
}
// |d| is (d^2)^(1/2) and the sign d/|d| (a division by zero gives 0 there).
QString postfixRound() {
    return QStringLiteral("d 2 ^ 1 2 / ^ 100 * 1 1000 / + i 100 / d d 2 ^ 1 2 / ^ / *");
}

} // namespace

void addTemplateTaxEquations(Database& modules) {
    QList<QVariantList> rows{
        {1, 64, infixAnnual()},
        {2, 64, infixPerPay(QStringLiteral("PAYE"), QStringLiteral("t"))},
        {3, 64, infixRound()},
        // The yearly credit x comes off the yearly tax; in parentheses, so that a negative credit reads.
        {4, 64, infixPerPay(QStringLiteral("METAXCODE"), QStringLiteral("(t-(x))"))},
        {5, 64, infixPerPay(QStringLiteral("MLTAXCODE"), QStringLiteral("t"))},
    };
    for (int country : {61, 55, 598}) {
        rows.append({1, country, postfixAnnual()});
        rows.append({2, country, postfixPerPay()});
        rows.append({3, country, postfixRound()});
    }
    insertRows(modules, QStringLiteral("TaxEquations"),
               {QStringLiteral("TaxProcessID"), QStringLiteral("CountryPhone"), QStringLiteral("Equation")},
               rows);
}

} // namespace ql
