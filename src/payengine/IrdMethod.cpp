#include "IrdMethod.h"
#include <QStringList>

namespace ql::ird {

namespace {

// Money below is in hundred-thousandths of a dollar ("units"): whole dollars times a rate in
// thousandths of a per cent lands there exactly. A cent is 1000 units.
constexpr qint64 UnitsPerCent = 1000;
constexpr qint64 UnitsPerDollar = 100000;
constexpr int WeeksInYear = 52;

qint64 floorDiv(qint64 a, qint64 b) {
    const qint64 q = a / b;
    return (a % b != 0 && ((a < 0) != (b < 0))) ? q - 1 : q;
}

qint64 wholeDollars(qint64 cents) {
    return floorDiv(cents, 100);
}

qint64 bandsTax(const QList<TaxBand>& bands, qint64 dollars) {
    qint64 units = 0, lower = 0;
    for (const TaxBand& b : bands) {
        const qint64 top = b.upTo > 0 ? qMin(b.upTo, dollars) : dollars;
        if (top > lower) units += (top - lower) * b.rate;
        if (b.upTo == 0 || dollars <= b.upTo) break;
        lower = b.upTo;
    }
    return units;
}

// The levy on a yearly figure; at or above the maximum, the maximum's levy cut to cents.
qint64 levyUnits(const TaxYearFigures& f, qint64 dollars) {
    if (dollars < f.accMaxLiable) return dollars * f.accLevyRate;
    return floorDiv(f.accMaxLiable * f.accLevyRate, UnitsPerCent) * UnitsPerCent;
}

qint64 creditUnits(const TaxYearFigures& f, qint64 dollars) {
    if (dollars < f.ietcFrom || dollars >= f.ietcTo) return 0;
    qint64 units = f.ietcAmount * UnitsPerDollar;
    if (dollars > f.ietcAbatesFrom) units -= (dollars - f.ietcAbatesFrom) * f.ietcAbatement;
    return qMax<qint64>(units, 0);
}

// The weekly figure of a yearly amount cut to cents, then the pay's figure cut again.
qint64 perPayCents(qint64 yearlyUnits, int pays) {
    if (yearlyUnits <= 0) return 0;
    const qint64 weekly = floorDiv(yearlyUnits, qint64(WeeksInYear) * UnitsPerCent);
    return pays == WeeksInYear ? weekly : floorDiv(weekly * WeeksInYear, pays);
}

// The tax element's rate of a flat or tailored code. A tailored code's certificate rate holds the levy.
qint32 flatRate(const TaxYearFigures& f, const TaxCode& code, qint32 tailoredRate) {
    return code.kind == CodeKind::Tailored ? qMax(tailoredRate - f.accLevyRate, 0) : f.flatRates.value(code.flat);
}

qint64 payeOrTax(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                 qint32 tailoredRate, bool withLevy) {
    if (earningsCents <= 0 || pays <= 0) return 0;
    const qint32 levy = withLevy ? f.accLevyRate : 0;
    switch (code.kind) {
    case CodeKind::Main:
    case CodeKind::MainCredit: {
        const qint64 annual = floorDiv(earningsCents * pays, 100);
        qint64 units = bandsTax(f.bands, annual) + (withLevy ? levyUnits(f, annual) : 0);
        if (code.kind == CodeKind::MainCredit) units -= creditUnits(f, annual);
        return perPayCents(units, pays);
    }
    case CodeKind::Flat:
        return floorDiv(wholeDollars(earningsCents) * (flatRate(f, code, tailoredRate) + levy), UnitsPerCent);
    case CodeKind::Tailored:
        // Whole dollars times the certificate's rate, which already holds the levy.
        return floorDiv(wholeDollars(earningsCents) * (withLevy ? tailoredRate : flatRate(f, code, tailoredRate)),
                        UnitsPerCent);
    case CodeKind::Unknown:
        break;
    }
    return 0;
}

} // namespace

bool TaxCode::secondary() const {
    return kind == CodeKind::Flat || kind == CodeKind::Tailored;
}

TaxCode ParseTaxCode(const QString& text) {
    QString c = text.toUpper().simplified();
    TaxCode code;
    if (c.endsWith(QLatin1String("SL")) && c != QLatin1String("SL")) {
        code.studentLoan = true;
        c = c.left(c.size() - 2).trimmed();
    }
    if (c == QLatin1String("M")) {
        code.kind = CodeKind::Main;
    } else if (c == QLatin1String("ME")) {
        code.kind = CodeKind::MainCredit;
    } else if (c == QLatin1String("STC")) {
        code.kind = CodeKind::Tailored;
    } else if (FlatRateCodes().contains(c)) {
        code.kind = CodeKind::Flat;
        code.flat = c;
        // Only the codes of secondary income carry a student loan.
        const bool secondaryCode = c.startsWith(QLatin1Char('S'));
        if (code.studentLoan && !secondaryCode) code.kind = CodeKind::Unknown;
    } else {
        code.kind = CodeKind::Unknown;
    }
    return code;
}

qint64 PayeCents(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                 qint32 tailoredRate) {
    return payeOrTax(f, code, earningsCents, pays, tailoredRate, true);
}

qint64 TaxElementCents(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                       qint32 tailoredRate) {
    return payeOrTax(f, code, earningsCents, pays, tailoredRate, false);
}

qint64 StudentLoanThresholdCents(const TaxYearFigures& f, int pays) {
    return pays > 0 ? floorDiv(f.studentLoanThreshold * 100, pays) : 0;
}

qint64 StudentLoanCents(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                        qint32 specialRate) {
    if (!code.studentLoan || earningsCents <= 0) return 0;
    const qint32 rate = specialRate > 0 ? specialRate : f.studentLoanRate;
    const qint64 base = wholeDollars(earningsCents) * 100 - (code.secondary() ? 0 : StudentLoanThresholdCents(f, pays));
    if (base <= 0) return 0;
    // Cents times thousandths of a per cent: hundred-thousandths of a cent.
    return floorDiv(base * rate, UnitsPerDollar);
}

qint64 StudentLoanCommissionerCents(const TaxYearFigures& f, const TaxCode& code, qint64 earningsCents, int pays,
                                    qint32 rate) {
    if (rate <= 0 || earningsCents <= 0) return 0;
    const qint64 base = wholeDollars(earningsCents) * 100 - (code.secondary() ? 0 : StudentLoanThresholdCents(f, pays));
    return base <= 0 ? 0 : floorDiv(base * rate + UnitsPerDollar / 2, UnitsPerDollar);
}

qint64 ExtraPayStudentLoanCents(const TaxYearFigures& f, const TaxCode& code, qint64 extraCents, qint32 specialRate) {
    if (!code.studentLoan || extraCents <= 0) return 0;
    const qint32 rate = specialRate > 0 ? specialRate : f.studentLoanRate;
    return floorDiv(wholeDollars(extraCents) * 100 * rate, UnitsPerDollar);
}

qint64 PercentCutCents(qint64 amountCents, qint32 rate) {
    return amountCents <= 0 ? 0 : floorDiv(amountCents * rate, UnitsPerDollar);
}

qint64 EsctCents(qint64 contributionCents, qint32 rate) {
    return contributionCents <= 0 ? 0 : floorDiv(wholeDollars(contributionCents) * rate, UnitsPerCent);
}

qint32 EsctRateFor(const TaxYearFigures& f, qint64 dollars) {
    for (const TaxBand& b : f.esctBands)
        if (b.upTo == 0 || dollars <= b.upTo) return b.rate;
    return f.esctBands.isEmpty() ? 0 : f.esctBands.last().rate;
}

qint64 ChildSupportCents(qint64 earningsCents, qint64 taxElementCents, qint64 askedCents) {
    const qint64 net = earningsCents - taxElementCents;
    // What may go: the net pay less its protected 60%, that is 40% of it, cut to cents.
    const qint64 most = net > 0 ? floorDiv(net * 40, 100) : 0;
    return qBound<qint64>(0, askedCents, most);
}

qint64 PayrollGivingCreditCents(qint64 donationCents, qint64 taxElementCents) {
    if (donationCents <= 0) return 0;
    return qMin(floorDiv(donationCents * 333333, 1000000), qMax<qint64>(taxElementCents, 0));
}

namespace {

const QList<TaxBand>& extraPayBands(const TaxYearFigures& f) {
    return f.extraPayBands.isEmpty() ? f.bands : f.extraPayBands;
}

// The band the grossed-up figure (the yearly figure plus the extra pay, cents dropped) falls in.
int extraPayBand(const TaxYearFigures& f, qint64 annualisedCents, qint64 extraCents) {
    const qint64 grossedUp = floorDiv(annualisedCents + extraCents, 100);
    const QList<TaxBand>& bands = extraPayBands(f);
    for (int i = 0; i < bands.size(); ++i)
        if (bands.at(i).upTo == 0 || grossedUp <= bands.at(i).upTo) return i;
    return int(bands.size()) - 1;
}

} // namespace

// A code of secondary income (SB, S, SH, ST, SA) grosses an extra pay up from the bottom of the band of
// its own rate: the low threshold amount (SB none, S 14,001 on the 2024/25 bands, SH 48,001, ST 70,001,
// SA 180,001) is added to the annualised earnings. -1 for every other code.
qint64 LowThresholdDollars(const TaxYearFigures& f, const TaxCode& code) {
    if (code.kind != CodeKind::Flat || !code.flat.startsWith(QLatin1Char('S'))) return -1;
    const qint32 rate = f.flatRates.value(code.flat, -1);
    const QList<TaxBand>& bands = extraPayBands(f);
    for (int i = 0; i < bands.size(); ++i)
        if (bands.at(i).rate == rate) return i == 0 ? 0 : bands.at(i - 1).upTo + 1;
    return -1;
}

namespace {

// The yearly figure an extra pay is grossed up from, or -1 when the code takes a flat rate.
qint64 grossingBaseCents(const TaxYearFigures& f, const TaxCode& code, qint64 annualisedCents) {
    if (code.kind == CodeKind::Main || code.kind == CodeKind::MainCredit) return annualisedCents;
    const qint64 low = LowThresholdDollars(f, code);
    return low < 0 ? -1 : annualisedCents + low * 100;
}

} // namespace

qint32 ExtraPayRate(const TaxYearFigures& f, const TaxCode& code, qint64 annualisedCents, qint64 extraCents,
                    qint32 tailoredRate) {
    if (code.kind == CodeKind::Unknown) return 0;
    const qint64 base = grossingBaseCents(f, code, annualisedCents);
    if (base < 0) return flatRate(f, code, tailoredRate);
    const int band = extraPayBand(f, base, extraCents);
    return band < 0 ? 0 : extraPayBands(f).at(band).rate;
}

bool ExtraPayAtLowestRate(const TaxYearFigures& f, const TaxCode& code, qint64 annualisedCents, qint64 extraCents) {
    const qint64 base = grossingBaseCents(f, code, annualisedCents);
    return base >= 0 && extraCents > 0 && extraPayBand(f, base, extraCents) == 0;
}

qint64 ExtraPayPayeCents(const TaxYearFigures& f, const TaxCode& code, qint64 annualisedCents,
                         qint64 extraCents, qint64 liableCents, qint32 tailoredRate) {
    if (extraCents <= 0 || code.kind == CodeKind::Unknown) return 0;
    liableCents = qBound<qint64>(0, liableCents, extraCents);
    const qint32 rate = ExtraPayRate(f, code, annualisedCents, extraCents, tailoredRate);
    const qint64 base = grossingBaseCents(f, code, annualisedCents);
    if (base < 0)
        // Cents times (rate + levy on the liable part) in hundred-thousandths of a cent.
        return floorDiv(extraCents * rate + liableCents * f.accLevyRate, UnitsPerDollar);
    const qint64 annualised = floorDiv(base, 100);
    const qint64 grossedUp = floorDiv(base + extraCents, 100);
    // The levy in hundred-thousandths of a cent, on the liable part up to the maximum.
    qint64 levy = 0;
    if (grossedUp <= f.accMaxLiable)
        levy = liableCents * f.accLevyRate;
    else if (annualised <= f.accMaxLiable)
        levy = qMin(liableCents, (f.accMaxLiable - annualised) * 100) * f.accLevyRate;
    return floorDiv(extraCents * rate + levy, UnitsPerDollar);
}

} // namespace ql::ird
