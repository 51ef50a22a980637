#pragma once
// Internals shared by the conversion and format files: the parse with its overflow flag, and the
// decimal digits of a binary number as the runtime prints them.
#include <QLocale>
#include <QString>
#include <QStringView>
#include <optional>
#include <string>

namespace ql {

struct NumberParse {
    bool ok = false;
    bool overflow = false; // numeric but beyond a Double
    double value = 0.0;
};
NumberParse parseNumberText(const QString& text, const QLocale& locale);

// "&H1F" / "&O17" read as far as the digits go: a value that fits 16 bits is an Integer, else 32 bits,
// as the runtime reads them. `used` is how many characters were read; nullopt when no "&H"/"&O" leads.
std::optional<double> readRadix(QStringView text, qsizetype* used);

// A number as significant digits and a power of ten: value = 0.d1d2d3... x 10^(exponent + 1), i.e.
// "12345", exponent 2 is 123.45. Trailing zeros are dropped; zero has empty digits.
struct DecimalDigits {
    bool negative = false;
    std::string digits;
    int exponent = 0;
};
// Rounded to `significant` digits (15 for a Double, 7 for a Single) half to even, as printf does.
DecimalDigits decimalDigits(double value, int significant);

// The runtime's text of a number from its digits: plain while the digits fit `significant` decimal
// places and the exponent is below `significant`, else "1.2345E+15". Always '.'.
QString vbNumberText(const DecimalDigits& d, int significant);

} // namespace ql
