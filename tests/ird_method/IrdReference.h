#pragma once
// A second computation of Inland Revenue's method, written from the specification's own steps and
// kept apart from the engine's: amounts in millionths of a dollar (six decimal places), a band's tax as
// income x rate - constant, divisions rounded to six decimals before a cut to cents.
#include "payengine/TaxYear.h"
#include <QString>

namespace irdref {

using Micro = long long; // millionths of a dollar

inline Micro roundDiv(Micro a, Micro b) { // to the nearest, halves up (a, b > 0)
    return (2 * a + b) / (2 * b);
}
inline Micro cutToCents(Micro m) {
    return m < 0 ? 0 : m / 10000 * 10000;
}
// A rate in thousandths of a per cent as millionths a dollar: 10.5% -> 105000.
inline Micro rateMicro(qint32 thousandths) {
    return Micro(thousandths) * 10;
}

// Income x rate - constant, the constant making the bands below at their own rates.
inline Micro bandTax(const QList<ql::TaxBand>& bands, long long dollars) {
    if (dollars <= 0) return 0;
    Micro constant = 0;
    long long lower = 0;
    for (const ql::TaxBand& b : bands) {
        const Micro r = rateMicro(b.rate);
        if (b.upTo == 0 || dollars <= b.upTo) return dollars * r - constant;
        // Moving up a band: the constant grows by the band's edge times the rise of the rate.
        const ql::TaxBand* next = &b + 1;
        constant += b.upTo * (rateMicro(next->rate) - r);
        lower = b.upTo;
    }
    (void)lower;
    return 0;
}

inline qint32 flatRate(const ql::TaxYearFigures& f, const QString& base) {
    return f.flatRates.value(base);
}

inline QString baseOf(const QString& code, bool& sl) {
    sl = code.endsWith(QLatin1String(" SL"));
    return sl ? code.left(code.size() - 3) : code;
}

inline long long paye(const ql::TaxYearFigures& f, const QString& code, long long cents, int pays) {
    bool sl = false;
    const QString base = baseOf(code, sl);
    if (base != QLatin1String("M") && base != QLatin1String("ME")) {
        const long long dollars = cents / 100;
        return cutToCents(dollars * (rateMicro(flatRate(f, base)) + rateMicro(f.accLevyRate))) / 10000;
    }
    const long long annual = cents * pays / 100; // whole dollars, cents dropped
    Micro total = bandTax(f.bands, annual);
    total += annual < f.accMaxLiable ? annual * rateMicro(f.accLevyRate)
                                     : cutToCents(f.accMaxLiable * rateMicro(f.accLevyRate));
    if (base == QLatin1String("ME") && annual >= f.ietcFrom && annual < f.ietcTo) {
        Micro credit = f.ietcAmount * 1000000;
        if (annual > f.ietcAbatesFrom) credit -= (annual - f.ietcAbatesFrom) * rateMicro(f.ietcAbatement);
        if (credit > 0) total -= credit;
    }
    if (total <= 0) return 0;
    const Micro weekly = cutToCents(roundDiv(total, 52));
    const Micro perPay = pays == 52 ? weekly : cutToCents(roundDiv(weekly * 52, pays));
    return perPay / 10000;
}

inline long long studentLoan(const ql::TaxYearFigures& f, const QString& code, long long cents, int pays) {
    bool sl = false;
    const QString base = baseOf(code, sl);
    if (!sl) return 0;
    const Micro pay = (cents / 100) * 1000000;
    const bool main = base == QLatin1String("M") || base == QLatin1String("ME");
    const Micro threshold = main ? cutToCents(roundDiv(f.studentLoanThreshold * 1000000, pays)) : 0;
    if (pay <= threshold) return 0;
    // (pay - threshold) x rate: millionths x thousandths of a per cent / 100000.
    return cutToCents((pay - threshold) * f.studentLoanRate / 100000) / 10000;
}

} // namespace irdref
