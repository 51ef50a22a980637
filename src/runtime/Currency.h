#pragma once
// Money: a signed 64-bit count of ten-thousandths. Conversions from binary floating point round
// half to even at four decimals; arithmetic that leaves the range raises error 6.
#include <QMetaType>
#include <QString>
#include <compare>
#include <cstdint>

namespace ql {

class Currency {
public:
    static constexpr std::int64_t Scale = 10000;

    constexpr Currency() = default;
    static constexpr Currency fromRaw(std::int64_t tenThousandths) {
        Currency c;
        c.m_raw = tenThousandths;
        return c;
    }
    // d x 10000 taken in extended precision, then half to even; out of range raises Overflow.
    static Currency fromDouble(double d);
    static Currency fromSingle(float f) { return fromDouble(static_cast<double>(f)); }
    static Currency fromLong(std::int64_t whole);

    constexpr std::int64_t raw() const { return m_raw; }
    double toDouble() const { return static_cast<double>(m_raw) / static_cast<double>(Scale); }
    float toSingle() const { return static_cast<float>(toDouble()); }

    // Exact decimal text with a '.' mark: trailing zeros dropped ("1.5", "2", "-0.0001").
    QString toString() const;
    // Exact decimal text with a '.' mark and exactly four decimals ("0.1200").
    QString toFixed4() const;

    Currency operator-() const;
    Currency operator+(Currency o) const;
    Currency operator-(Currency o) const;
    Currency& operator+=(Currency o) { return *this = *this + o; }
    Currency& operator-=(Currency o) { return *this = *this - o; }
    // Currency x Currency: the double product of the two decimal values, back to Currency.
    Currency operator*(Currency o) const;
    Currency operator*(std::int64_t whole) const;

    constexpr auto operator<=>(const Currency&) const = default;
    constexpr bool operator==(const Currency&) const = default;

private:
    std::int64_t m_raw = 0;
};

} // namespace ql

Q_DECLARE_METATYPE(ql::Currency)
