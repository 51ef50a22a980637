#include "IrdNumber.h"
#include <array>

namespace ql {

namespace {

constexpr qint64 kLowest = 10000000;
constexpr qint64 kHighest = 150000000;

// The check digit of an eight-digit base with the given weights; 10 means none.
int checkDigit(const QString& base, const std::array<int, 8>& weights) {
    int sum = 0;
    for (int i = 0; i < 8; ++i)
        sum += base.at(i).digitValue() * weights[static_cast<size_t>(i)];
    const int remainder = sum % 11;
    return remainder == 0 ? 0 : 11 - remainder;
}

} // namespace

QString IrdDigits(const QString& text) {
    QString digits;
    for (const QChar c : text.trimmed()) {
        if (c == u'-' || c == u' ') continue;
        digits += c;
    }
    return digits;
}

bool IsValidIrdNumber(const QString& text) {
    const QString digits = IrdDigits(text);
    if (digits.size() < 8 || digits.size() > 9) return false;
    for (const QChar c : digits)
        if (!c.isDigit() || c.unicode() > 127) return false;
    const qint64 number = digits.toLongLong();
    if (number < kLowest || number > kHighest) return false;
    const QString base = digits.left(digits.size() - 1).rightJustified(8, u'0');
    const int given = digits.back().digitValue();
    int check = checkDigit(base, {3, 2, 7, 6, 5, 4, 3, 2});
    if (check == 10) check = checkDigit(base, {7, 4, 3, 2, 5, 2, 7, 6});
    return check != 10 && check == given;
}

QString IrdNumberNineDigits(const QString& text) {
    if (!IsValidIrdNumber(text)) return QString();
    return IrdDigits(text).rightJustified(9, u'0');
}

} // namespace ql
