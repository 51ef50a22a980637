// Text to number with the runtime's locale rules: blanks around, one sign before or after,
// parentheses for a negative, the currency sign before or after, grouping marks anywhere after the
// first digit, ".5" and "5.", an exponent, and the &H / &O forms.
#include "Convert.h"
#include "NumberText.h"
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace ql {

QLocale vbLocale() { return QLocale(); }

namespace {

bool isBlank(QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QChar(0x00A0); }

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

bool matchesAt(const QString& text, qsizetype pos, const QString& what) {
    return !what.isEmpty() && QStringView(text).mid(pos).startsWith(what, Qt::CaseInsensitive);
}

// The power of ten of the leading significant digit of "123.45e6"-style text (about).
long decimalMagnitude(const std::string& ascii) {
    const auto ePos = ascii.find('e');
    const std::string mant = ascii.substr(0, ePos);
    long exp = 0;
    if (ePos != std::string::npos) {
        const std::string e = ascii.substr(ePos + 1);
        exp = std::strtol(e.c_str(), nullptr, 10);
        // strtol saturates at the long range; keep the sum below from overflowing.
        if (exp > 1000000L)
            exp = 1000000L;
        if (exp < -1000000L)
            exp = -1000000L;
    }
    const auto dot = mant.find('.');
    const long intDigits = static_cast<long>(dot == std::string::npos ? mant.size() : dot);
    const auto firstNonZero = mant.find_first_of("123456789");
    if (firstNonZero == std::string::npos)
        return -1;
    return intDigits - static_cast<long>(firstNonZero) + exp;
}

} // namespace

NumberParse parseNumberText(const QString& text, const QLocale& locale) {
    NumberParse r;
    const QString decimal = locale.decimalPoint();
    const QString group = locale.groupSeparator();
    const QString currency = locale.currencySymbol();
    const QString minus = locale.negativeSign();
    const QString plus = locale.positiveSign();

    qsizetype i = 0;
    const qsizetype n = text.size();
    auto skipBlanks = [&] {
        while (i < n && isBlank(text[i]))
            ++i;
    };
    // Returns +1/-1 when a sign stands at i (and steps over it), else 0.
    auto takeSign = [&]() -> int {
        if (i >= n)
            return 0;
        if (text[i] == QLatin1Char('-') || matchesAt(text, i, minus)) {
            i += text[i] == QLatin1Char('-') ? 1 : minus.size();
            return -1;
        }
        if (text[i] == QLatin1Char('+') || matchesAt(text, i, plus)) {
            i += text[i] == QLatin1Char('+') ? 1 : plus.size();
            return 1;
        }
        return 0;
    };

    int sign = 0;
    bool paren = false, closed = false, hadCurrency = false;

    // Leading part: blanks, one sign or one "(", one currency sign, in any order.
    for (;;) {
        skipBlanks();
        if (i >= n)
            break;
        if (sign == 0 && !paren) {
            if (int s = takeSign()) {
                sign = s;
                continue;
            }
            if (text[i] == QLatin1Char('(')) {
                paren = true;
                ++i;
                continue;
            }
        }
        if (!hadCurrency && matchesAt(text, i, currency)) {
            hadCurrency = true;
            i += currency.size();
            continue;
        }
        break;
    }

    // &H and &O stand alone apart from blanks.
    if (i < n && text[i] == QLatin1Char('&')) {
        if (sign != 0 || paren || hadCurrency)
            return r;
        const QStringView body = QStringView(text).mid(i).trimmed();
        qsizetype used = 0;
        const auto v = readRadix(body, &used);
        if (v && used == body.size() && used > 2) {
            r.ok = true;
            r.value = *v;
        }
        return r;
    }

    // The number itself, gathered as plain ASCII for from_chars.
    std::string ascii;
    bool anyDigit = false, inFraction = false;
    while (i < n) {
        const QChar c = text[i];
        if (isDigit(c)) {
            ascii.push_back(static_cast<char>(c.unicode()));
            anyDigit = true;
            ++i;
        } else if (!inFraction && matchesAt(text, i, decimal)) {
            ascii.push_back('.');
            inFraction = true;
            i += decimal.size();
        } else if (anyDigit && !inFraction && matchesAt(text, i, group)) {
            i += group.size();
        } else {
            break;
        }
    }
    if (!anyDigit)
        return r;
    if (i < n && (text[i] == QLatin1Char('e') || text[i] == QLatin1Char('E') || text[i] == QLatin1Char('d') ||
                  text[i] == QLatin1Char('D'))) {
        ascii.push_back('e');
        ++i;
        if (i < n && (text[i] == QLatin1Char('-') || text[i] == QLatin1Char('+'))) {
            ascii.push_back(static_cast<char>(text[i].unicode()));
            ++i;
        }
        bool expDigit = false;
        while (i < n && isDigit(text[i])) {
            ascii.push_back(static_cast<char>(text[i].unicode()));
            expDigit = true;
            ++i;
        }
        if (!expDigit)
            return r;
    }

    // Trailing part: blanks, one sign (when none led), the currency sign, the closing ")".
    for (;;) {
        skipBlanks();
        if (i >= n)
            break;
        if (sign == 0 && !paren) {
            if (int s = takeSign()) {
                sign = s;
                continue;
            }
        }
        if (!hadCurrency && matchesAt(text, i, currency)) {
            hadCurrency = true;
            i += currency.size();
            continue;
        }
        if (paren && !closed && text[i] == QLatin1Char(')')) {
            closed = true;
            ++i;
            continue;
        }
        return r;
    }
    if (paren && !closed)
        return r;

    double v = 0;
    const auto res = std::from_chars(ascii.data(), ascii.data() + ascii.size(), v);
    if (res.ptr != ascii.data() + ascii.size())
        return r;
    if (res.ec == std::errc::result_out_of_range) {
        // Too small underflows to zero; too large is an overflow, not a non-number.
        if (decimalMagnitude(ascii) > 0) {
            r.overflow = true;
            return r;
        }
        v = 0.0;
    } else if (res.ec != std::errc()) {
        return r;
    }
    r.ok = true;
    r.value = (sign < 0 || paren) ? -v : v;
    if (r.value == 0.0)
        r.value = 0.0; // no negative zero from "-0"
    return r;
}

std::optional<double> readRadix(QStringView body, qsizetype* used) {
    *used = 0;
    if (body.size() < 2 || body[0] != QLatin1Char('&'))
        return std::nullopt;
    const QChar kind = body[1].toUpper();
    const int base = kind == QLatin1Char('H') ? 16 : kind == QLatin1Char('O') ? 8 : 0;
    if (base == 0)
        return std::nullopt;
    quint64 value = 0;
    qsizetype i = 2;
    for (; i < body.size(); ++i) {
        const QChar c = body[i].toUpper();
        const int d = (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ? c.unicode() - '0'
                      : (c >= QLatin1Char('A') && c <= QLatin1Char('F')) ? c.unicode() - 'A' + 10
                                                                         : 99;
        if (d >= base || value * base + d > 0xFFFFFFFFULL)
            break;
        value = value * base + d;
    }
    *used = i;
    if (value <= 0xFFFF)
        return static_cast<double>(static_cast<qint16>(static_cast<quint16>(value)));
    return static_cast<double>(static_cast<qint32>(static_cast<quint32>(value)));
}

std::optional<double> parseNumber(const QString& text, const QLocale& locale) {
    const NumberParse p = parseNumberText(text, locale);
    if (!p.ok)
        return std::nullopt;
    return p.value;
}

} // namespace ql
