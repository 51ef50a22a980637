// Digits for the number formats: the value's decimal text (15 significant digits for a Double, 7 for
// a Single, exact for Currency and whole numbers), rounded half away from zero on that text.
#include "FormatNumber.h"
#include "NumberText.h"

namespace ql {
namespace {

// value x 10^decimals, rounded half away from zero on the digit text, as a decimal digit string.
std::string scaledDigits(const DecimalDigits& d, int decimals) {
    const std::string& digits = d.digits;
    if (digits.empty())
        return "0";
    const long keep = static_cast<long>(d.exponent) + decimals + 1; // digits at or above 10^-decimals
    if (keep <= 0)
        return (keep == 0 && digits[0] >= '5') ? "1" : "0";
    std::string s = digits.substr(0, static_cast<std::size_t>(std::min<long>(keep, static_cast<long>(digits.size()))));
    const bool up = keep < static_cast<long>(digits.size()) && digits[static_cast<std::size_t>(keep)] >= '5';
    if (keep > static_cast<long>(digits.size()))
        s.append(static_cast<std::size_t>(keep - static_cast<long>(digits.size())), '0');
    if (up) {
        long i = static_cast<long>(s.size()) - 1;
        while (i >= 0 && s[static_cast<std::size_t>(i)] == '9')
            s[static_cast<std::size_t>(i--)] = '0';
        if (i < 0)
            s.insert(s.begin(), '1');
        else
            ++s[static_cast<std::size_t>(i)];
    }
    const auto first = s.find_first_not_of('0');
    return first == std::string::npos ? "0" : s.substr(first);
}

DecimalDigits exactDigits(bool negative, unsigned long long magnitude, int scale) {
    DecimalDigits d;
    if (magnitude == 0)
        return d;
    d.negative = negative;
    std::string s = std::to_string(magnitude);
    d.exponent = static_cast<int>(s.size()) - 1 - scale;
    while (!s.empty() && s.back() == '0')
        s.pop_back();
    d.digits = s;
    return d;
}

} // namespace

DecimalDigits digitsOf(const NumberValue& v) {
    switch (v.kind) {
    case NumberValue::Kind::Currency: {
        const std::int64_t raw = v.currency.raw();
        const bool neg = raw < 0;
        const unsigned long long mag =
            neg ? static_cast<unsigned long long>(-(raw + 1)) + 1ULL : static_cast<unsigned long long>(raw);
        return exactDigits(neg, mag, 4);
    }
    case NumberValue::Kind::Whole: {
        const bool neg = v.whole < 0;
        const unsigned long long mag =
            neg ? static_cast<unsigned long long>(-(v.whole + 1)) + 1ULL : static_cast<unsigned long long>(v.whole);
        return exactDigits(neg, mag, 0);
    }
    case NumberValue::Kind::Single: return decimalDigits(v.number, 7);
    case NumberValue::Kind::Double: break;
    }
    return decimalDigits(v.number, 15);
}

FixedText roundedText(const DecimalDigits& d, int decimals) {
    FixedText t;
    t.negative = d.negative; // a negative that rounds to zero keeps its sign
    std::string s = scaledDigits(d, decimals);
    if (s.size() < static_cast<std::size_t>(decimals) + 1)
        s.insert(0, static_cast<std::size_t>(decimals) + 1 - s.size(), '0');
    t.whole = QString::fromLatin1(s.substr(0, s.size() - static_cast<std::size_t>(decimals)));
    t.fraction = QString::fromLatin1(s.substr(s.size() - static_cast<std::size_t>(decimals)));
    return t;
}

QString grouped(const QString& whole, const QString& separator) {
    QString out;
    const qsizetype n = whole.size();
    for (qsizetype i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0)
            out += separator;
        out += whole[i];
    }
    return out;
}

QString numberPicture(const NumberValue& value, const QString& picture, const QLocale& locale) {
    // Literal text before and after the digit part; '%' anywhere scales by 100.
    const QString digitChars = QStringLiteral("0#,.");
    qsizetype first = -1, last = -1;
    for (qsizetype i = 0; i < picture.size(); ++i)
        if (digitChars.contains(picture[i])) {
            if (first < 0)
                first = i;
            last = i;
        }
    if (first < 0)
        return QString();
    const QString prefix = picture.left(first);
    const QString suffix = picture.mid(last + 1);
    const QString body = picture.mid(first, last - first + 1);
    const qsizetype point = body.indexOf(QLatin1Char('.'));
    const QString intPart = point < 0 ? body : body.left(point);
    const QString fracPart = point < 0 ? QString() : body.mid(point + 1);
    const int minInt = static_cast<int>(intPart.count(QLatin1Char('0')));
    const bool grouping = intPart.contains(QLatin1Char(','));
    const int minDec = static_cast<int>(fracPart.count(QLatin1Char('0')));
    const int maxDec = minDec + static_cast<int>(fracPart.count(QLatin1Char('#')));

    DecimalDigits d = digitsOf(value);
    if (picture.contains(QLatin1Char('%')) && !d.digits.empty())
        d.exponent += 2;
    FixedText t = roundedText(d, maxDec);
    while (t.fraction.size() > minDec && t.fraction.endsWith(QLatin1Char('0')))
        t.fraction.chop(1);
    QString whole = t.whole == QLatin1String("0") ? QString() : t.whole;
    if (whole.size() < minInt)
        whole = QString(minInt - whole.size(), QLatin1Char('0')) + whole;
    if (grouping)
        whole = grouped(whole, locale.groupSeparator());
    QString text = whole;
    if (!t.fraction.isEmpty())
        text += locale.decimalPoint() + t.fraction;
    else if (point >= 0 && whole.isEmpty())
        text = QStringLiteral("0"); // nothing left of ".##" for a zero
    if (t.negative)
        text = locale.negativeSign() + text;
    return prefix + text + suffix;
}

QString fixedText(const NumberValue& value, int decimals, bool grouping, const QLocale& locale) {
    const FixedText t = roundedText(digitsOf(value), decimals);
    QString text = grouping ? grouped(t.whole, locale.groupSeparator()) : t.whole;
    if (decimals > 0)
        text += locale.decimalPoint() + t.fraction;
    return t.negative ? locale.negativeSign() + text : text;
}

namespace {

// The locale's currency form around its number, kept while the locale stays the same: asking the
// locale for it costs more than the rest of a currency text, and grids ask for it in every cell.
struct CurrencyForm {
    QLocale locale;
    QString before, after; // the text around the number, symbol included
    QString group, point, minus;
    bool known = false;
};

const CurrencyForm& currencyForm(const QLocale& locale) {
    thread_local CurrencyForm form;
    if (form.known && form.locale == locale) return form;
    form.locale = locale;
    form.group = locale.groupSeparator();
    form.point = locale.decimalPoint();
    form.minus = locale.negativeSign();
    // The locale's placement of its sign, taken from its own text for one unit.
    const QString pattern = locale.toCurrencyString(1.0, locale.currencySymbol(), 2);
    const QString one = QStringLiteral("1") + form.point + QStringLiteral("00");
    const qsizetype at = pattern.indexOf(one);
    form.before = at < 0 ? locale.currencySymbol() : pattern.left(at);
    form.after = at < 0 ? QString() : pattern.mid(at + one.size());
    form.known = true;
    return form;
}

// A Currency amount to whole units and cents, half away from zero as the digit text rounds, straight
// from its integer: grids format every amount cell of a list this way.
FixedText currencyCents(const Currency& amount) {
    const std::int64_t raw = amount.raw();
    const unsigned long long mag =
        raw < 0 ? static_cast<unsigned long long>(-(raw + 1)) + 1ULL : static_cast<unsigned long long>(raw);
    const unsigned long long cents = mag / 100 + (mag % 100 >= 50 ? 1 : 0);
    FixedText t;
    t.negative = raw < 0;
    t.whole = QString::number(cents / 100);
    const char fraction[2] = {char('0' + cents % 100 / 10), char('0' + cents % 10)};
    t.fraction = QString::fromLatin1(fraction, 2);
    return t;
}

} // namespace

QString currencyText(const NumberValue& value, const QLocale& locale) {
    const CurrencyForm& form = currencyForm(locale);
    const FixedText t = value.kind == NumberValue::Kind::Currency ? currencyCents(value.currency)
                                                                  : roundedText(digitsOf(value), 2);
    QString text;
    text.reserve(form.minus.size() + form.before.size() + t.whole.size() * 4 / 3 + 3 + form.after.size());
    // A negative amount shows a leading minus before the whole form.
    if (t.negative) text += form.minus;
    text += form.before;
    text += grouped(t.whole, form.group);
    text += form.point;
    text += t.fraction;
    text += form.after;
    return text;
}

} // namespace ql
