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
    if (!std::isfinite(d))
        overflow();
    // The product in extended precision decides ties as the runtime does (1.23445 -> 1.2345).
    const long double scaled = static_cast<long double>(d) * 10000.0L;
    if (scaled >= 9223372036854775807.0L || scaled < -9223372036854775808.0L)
        overflow();
    // To nearest, ties to even, by hand: nearbyintl saves and restores the floating-point state at
    // every call, and every amount read from a database passes here.
    std::int64_t r = static_cast<std::int64_t>(scaled); // toward zero
    const long double fraction = scaled - static_cast<long double>(r); // exact
    if (fraction > 0.5L || (fraction == 0.5L && (r & 1)))
        ++r;
    else if (fraction < -0.5L || (fraction == -0.5L && (r & 1)))
        --r;
    return fromRaw(r);
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
