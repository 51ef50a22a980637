#pragma once
// Inland Revenue's published arithmetic for a New Zealand pay, exactly, in whole cents: the yearly
// figure in whole dollars, the bands and the levy, the weekly figure cut to cents and the pay's figure
// cut again; the flat codes on whole dollars; student loan, KiwiSaver, ESCT, child support with the
// protected net earnings, the payroll giving credit and the extra-pay method. All figures come from a
// TaxYearFigures; nothing here knows a year.
#include "TaxYear.h"

namespace ql::ird {

enum class CodeKind { Main, MainCredit, Flat, Tailored, Unknown };

struct TaxCode {
    CodeKind kind = CodeKind::Unknown;
    QString flat;             // for Flat: SB, S, SH, ST, SA, ND, CAE, EDW, NSW
    bool studentLoan = false; // "SL" in the code
    bool secondary() const;   // SL on every dollar: the flat codes of secondary income and STC
};

// "M", "ME", "M SL", "ME SL" ("MSL", "MESL"), "SB" ... "SA SL", "ND", "CAE", "EDW", "NSW", "STC" ("STC SL"),
// in any case; Unknown for anything else.
TaxCode ParseTaxCode(const QString& code);

// PAYE with the levy on one pay of earnings (cents) for pays in the year. tailoredRate: the rate of a
// tailored code as its certificate gives it (thousandths of a per cent, the levy included).
// levyLiableCents: the part of the earnings liable for the levy (-1: all of it).
qint64 PayeCents(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                 qint32 tailoredRate = 0);
// The same without the ACC levy: the tax element, for the payroll giving credit and child support.
qint64 TaxElementCents(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                       qint32 tailoredRate = 0);

// The per-pay student loan threshold in cents (cut): 46400 weekly on a $24,128 threshold.
qint64 StudentLoanThresholdCents(const TaxYearFigures& f, int pays);
// Student loan of one pay; specialRate (thousandths of a per cent) above 0 replaces the year's rate.
qint64 StudentLoanCents(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                        qint32 specialRate = 0);

// The commissioner's compulsory extra deduction (SLCIR) at rate (thousandths of a per cent): the whole
// dollars of the pay less the per-pay threshold (none on secondary codes), to the nearest cent.
qint64 StudentLoanCommissionerCents(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                                    qint32 rate);
// Student loan on an extra pay made apart from a regular pay: the rate (the special rate when above 0) on
// its whole dollars, no threshold, cut to cents; none without SL in the code.
qint64 ExtraPayStudentLoanCents(const TaxYearFigures& f, const TaxCode& code, qint64 extraCents,
                                qint32 specialRate = 0);

// A rate (thousandths of a per cent) of an amount, cut to cents: KiwiSaver and the like.
qint64 PercentCutCents(qint64 amountCents, qint32 rate);
// ESCT: the employer's contribution cut to whole dollars, times the rate, cut to cents.
qint64 EsctCents(qint64 contributionCents, qint32 rate);
// The ESCT rate for a year's salary and wages plus gross employer contributions (whole dollars).
qint32 EsctRateFor(const TaxYearFigures& f, qint64 dollars);

// Child support of one pay: the amount asked, at most what leaves 60% of the net pay (earnings less
// the tax element) to the employee.
qint64 ChildSupportCents(qint64 earningsCents, qint64 taxElementCents, qint64 askedCents);
// The payroll giving credit: a third of the donations (0.333333, cut), at most the tax element.
qint64 PayrollGivingCreditCents(qint64 donationCents, qint64 taxElementCents);

// The extra-pay method: the grossed-up figure is the yearly figure of the last four weeks' earnings
// (annualisedCents: their total times 13, or one monthly pay times 12) plus the extra pay, cents
// dropped; the extra pay takes the one rate of the band it falls in, plus the levy on the part
// liableCents up to the levy's maximum. The codes of secondary income gross up from their low threshold
// amount as well; ND, NSW, CAE, EDW and tailored codes take their own rate and the levy.
qint64 ExtraPayPayeCents(const TaxYearFigures& f, const TaxCode& code, qint64 annualisedCents,
                         qint64 extraCents, qint64 liableCents, qint32 tailoredRate = 0);
// The low threshold amount of a secondary code (whole dollars: SB 0, S the top of the lowest band + 1,
// ...), added to the annualised earnings before an extra pay is grossed up; -1 for other codes.
qint64 LowThresholdDollars(const TaxYearFigures& f, const TaxCode& code);
// The rate (thousandths of a per cent, levy not included) the extra-pay method takes, and whether it is
// the lowest band's (the payday filing's lump sum indicator; never for ND, NSW, CAE, EDW and tailored codes).
qint32 ExtraPayRate(const TaxYearFigures& f, const TaxCode& code, qint64 annualisedCents, qint64 extraCents,
                    qint32 tailoredRate = 0);
bool ExtraPayAtLowestRate(const TaxYearFigures& f, const TaxCode& code, qint64 annualisedCents, qint64 extraCents);

} // namespace ql::ird
