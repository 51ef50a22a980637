#include "Currency.h"
#include "VbError.h"
#include <QVariant>
#include <cmath>
#include <limits>

namespace ql {
namespace {
[[noreturn]] void overflow() { raiseError(err::Overflow); }

std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
    std::int64_t r;
    if (__builtin_add_overflow(a, b, &r))
        overflow();
    return r;
}
} // namespace

// A Currency in a QVariant also answers toDouble() and toString(), so code that reads a field as a
// plain number or text gets the amount rather than nothing.
const bool registered = [] {
    QMetaType::registerConverter<Currency, double>(&Currency::toDouble);
    QMetaType::registerConverter<Currency, QString>(&Currency::toString);
    return true;
}();

Currency Currency::fromDouble(double d) {
    // Most amounts are already whole ten-thousandths. Below 2^40 the double product lies within 2^-13
    // of the exact one, so a whole product is the rounded result and the extended product is not needed.
    const double product = d * 10000.0;
    if (std::fabs(product) < 1099511627776.0) {
        const auto whole = static_cast<std::int64_t>(product);
        if (static_cast<double>(whole) == product) return fromRaw(whole);
    }
    if (!std::isfinite(d))
        overflow();
    // The product in extended precision decides ties as the runtime does (1.23445 -> 1.2345).
    const long double scaled = static_cast<long double>(d) * 10000.0L;
    if (scaled >= 9223372036854775807.0L || scaled < -9223372036854775808.0L)
        overflow();
    // To nearest, ties to even: the program never leaves the default rounding mode, in which llrint
    // rounds so without saving and restoring the floating-point state, as nearbyintl or a cast toward
    // zero would at every call; every amount read from a database passes here.
    return fromRaw(static_cast<std::int64_t>(std::llrint(scaled)));
}

Currency Currency::fromLong(std::int64_t whole) {
    std::int64_t r;
    if (__builtin_mul_overflow(whole, Scale, &r))
        overflow();
    return fromRaw(r);
}

QString Currency::toFixed4() const {
    const bool neg = m_raw < 0;
    const unsigned long long mag =
        neg ? static_cast<unsigned long long>(-(m_raw + 1)) + 1ULL : static_cast<unsigned long long>(m_raw);
    const unsigned long long whole = mag / Scale;
    const unsigned long long frac = mag % Scale;
    return (neg ? QStringLiteral("-") : QString()) + QString::number(whole) + QLatin1Char('.') +
           QStringLiteral("%1").arg(frac, 4, 10, QLatin1Char('0'));
}

QString Currency::toString() const {
    QString s = toFixed4();
    while (s.endsWith(QLatin1Char('0')))
        s.chop(1);
    if (s.endsWith(QLatin1Char('.')))
        s.chop(1);
    return s;
}

Currency Currency::operator-() const {
    if (m_raw == std::numeric_limits<std::int64_t>::min())
        overflow();
    return fromRaw(-m_raw);
}

Currency Currency::operator+(Currency o) const { return fromRaw(checkedAdd(m_raw, o.m_raw)); }

Currency Currency::operator-(Currency o) const {
    std::int64_t r;
    if (__builtin_sub_overflow(m_raw, o.m_raw, &r))
        overflow();
    return fromRaw(r);
}

Currency Currency::operator*(Currency o) const { return fromDouble(toDouble() * o.toDouble()); }

Currency Currency::operator*(std::int64_t whole) const {
    std::int64_t r;
    if (__builtin_mul_overflow(m_raw, whole, &r))
        overflow();
    return fromRaw(r);
}

} // namespace ql
