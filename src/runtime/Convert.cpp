#include "Convert.h"
#include "DateFns.h"
#include "MathFns.h"
#include "NumberText.h"
#include "VbError.h"
#include <cfloat>
#include <charconv>
#include <cmath>

namespace ql {
namespace {

enum class Kind { Null, Currency, Single, Double, Whole, Bool, Text, Date, DateTime, Other };

Kind kindOf(const QVariant& v) {
    if (!v.isValid())
        return Kind::Null;
    const int id = v.metaType().id();
    if (id == qMetaTypeId<ql::Currency>())
        return Kind::Currency;
    switch (id) {
    case QMetaType::Float: return Kind::Single;
    case QMetaType::Double: return Kind::Double;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar: return Kind::Whole;
    case QMetaType::Bool: return Kind::Bool;
    case QMetaType::QString:
    case QMetaType::QByteArray:
    case QMetaType::QChar: return Kind::Text;
    case QMetaType::QDate: return Kind::Date;
    case QMetaType::QDateTime: return Kind::DateTime;
    default: return Kind::Other;
    }
}

double textToDouble(const QString& text) {
    const NumberParse p = parseNumberText(text, vbLocale());
    if (p.overflow)
        raiseError(err::Overflow);
    if (!p.ok)
        raiseError(err::TypeMismatch);
    return p.value;
}

double dateTimeSerial(const QDateTime& dt) {
    const double days = DateToSerial(dt.date());
    const double frac = dt.time().msecsSinceStartOfDay() / 86400000.0;
    // The time of day counts away from zero on both sides of the zero date.
    return days < 0 ? days - frac : days + frac;
}

// The sign-aware decimal text for a Currency with the locale's mark.
QString localMark(QString text) {
    const QString mark = vbLocale().decimalPoint();
    if (mark != QLatin1String("."))
        text.replace(QLatin1Char('.'), mark);
    return text;
}

} // namespace

bool IsNumeric(const QString& text) { return parseNumberText(text, vbLocale()).ok; }

bool IsNumeric(const QVariant& v) {
    switch (kindOf(v)) {
    case Kind::Currency:
    case Kind::Single:
    case Kind::Double:
    case Kind::Whole:
    case Kind::Bool: return true;
    case Kind::Text: return IsNumeric(v.toString());
    default: return false; // Null, dates and anything else
    }
}

double CDbl(const QVariant& v) {
    switch (kindOf(v)) {
    case Kind::Null: raiseError(err::InvalidUseOfNull);
    case Kind::Currency: return v.value<ql::Currency>().toDouble();
    case Kind::Single: return static_cast<double>(v.value<float>());
    case Kind::Double: return v.toDouble();
    case Kind::Whole: return static_cast<double>(v.toLongLong());
    case Kind::Bool: return v.toBool() ? -1.0 : 0.0;
    case Kind::Text: return textToDouble(v.toString());
    case Kind::Date: return DateToSerial(v.toDate());
    case Kind::DateTime: return dateTimeSerial(v.toDateTime());
    default: raiseError(err::TypeMismatch);
    }
}

float CSng(const QVariant& v) {
    if (kindOf(v) == Kind::Single)
        return v.value<float>();
    const double d = CDbl(v);
    if (std::fabs(d) > static_cast<double>(FLT_MAX)) {
        // Values between FLT_MAX and the next power of two still round to FLT_MAX.
        const float f = static_cast<float>(d);
        if (std::isinf(f))
            raiseError(err::Overflow);
        return f;
    }
    return static_cast<float>(d);
}

Currency CCur(const QVariant& v) {
    switch (kindOf(v)) {
    case Kind::Currency: return v.value<ql::Currency>();
    case Kind::Single: return Currency::fromSingle(v.value<float>());
    case Kind::Whole: return Currency::fromLong(v.toLongLong());
    default: return Currency::fromDouble(CDbl(v));
    }
}

namespace {
template <class Int> Int wholeNumber(const QVariant& v) {
    constexpr double lo = static_cast<double>(std::numeric_limits<Int>::min());
    constexpr double hi = static_cast<double>(std::numeric_limits<Int>::max());
    double r;
    if (kindOf(v) == Kind::Currency) {
        // Half to even on the exact ten-thousandths.
        const std::int64_t raw = v.value<ql::Currency>().raw();
        std::int64_t q = raw / Currency::Scale;
        const std::int64_t rem = raw % Currency::Scale;
        const std::int64_t half = Currency::Scale / 2;
        if (rem > half || (rem == half && (q % 2 != 0)))
            ++q;
        else if (rem < -half || (rem == -half && (q % 2 != 0)))
            --q;
        r = static_cast<double>(q);
    } else if (kindOf(v) == Kind::Whole) {
        r = static_cast<double>(v.toLongLong());
    } else {
        r = roundHalfEven(CDbl(v));
    }
    if (!(r >= lo && r <= hi))
        raiseError(err::Overflow);
    return static_cast<Int>(r);
}
} // namespace

qint32 CLng(const QVariant& v) { return wholeNumber<qint32>(v); }
qint16 CInt(const QVariant& v) { return wholeNumber<qint16>(v); }

bool CBool(const QVariant& v) {
    switch (kindOf(v)) {
    case Kind::Null: raiseError(err::InvalidUseOfNull);
    case Kind::Bool: return v.toBool();
    case Kind::Currency: return v.value<ql::Currency>().raw() != 0;
    case Kind::Text: {
        const QString t = v.toString().trimmed();
        if (t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
            return true;
        if (t.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
            return false;
        return textToDouble(t) != 0.0;
    }
    case Kind::Other: raiseError(err::TypeMismatch);
    default: return CDbl(v) != 0.0;
    }
}

// ---- number to text ------------------------------------------------------------------------------

DecimalDigits decimalDigits(double value, int significant) {
    DecimalDigits d;
    if (value == 0.0 || !std::isfinite(value))
        return d;
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific, significant - 1);
    std::string s(buf, res.ptr);
    std::size_t i = 0;
    if (s[0] == '-') {
        d.negative = true;
        i = 1;
    }
    const auto e = s.find('e');
    for (std::size_t k = i; k < e; ++k)
        if (s[k] != '.')
            d.digits.push_back(s[k]);
    d.exponent = std::stoi(s.substr(e + 1));
    while (!d.digits.empty() && d.digits.back() == '0')
        d.digits.pop_back();
    if (d.digits.empty())
        d.negative = false;
    return d;
}

QString vbNumberText(const DecimalDigits& d, int significant) {
    if (d.digits.empty())
        return QStringLiteral("0");
    const int n = static_cast<int>(d.digits.size());
    const int e = d.exponent;
    QString out = d.negative ? QStringLiteral("-") : QString();
    const bool plain = e >= 0 ? e < significant : (n - 1 - e) <= significant;
    if (plain) {
        if (e < 0) {
            out += QStringLiteral("0.") + QString(-e - 1, QLatin1Char('0')) + QString::fromLatin1(d.digits);
        } else if (n <= e + 1) {
            out += QString::fromLatin1(d.digits) + QString(e + 1 - n, QLatin1Char('0'));
        } else {
            out += QString::fromLatin1(d.digits.substr(0, e + 1)) + QLatin1Char('.') +
                   QString::fromLatin1(d.digits.substr(e + 1));
        }
        return out;
    }
    out += QLatin1Char(d.digits[0]);
    if (n > 1)
        out += QLatin1Char('.') + QString::fromLatin1(d.digits.substr(1));
    out += e < 0 ? QStringLiteral("E-") : QStringLiteral("E+");
    out += QStringLiteral("%1").arg(std::abs(e), 2, 10, QLatin1Char('0'));
    return out;
}

QString CStr(double d) { return localMark(vbNumberText(decimalDigits(d, 15), 15)); }
QString CStr(float f) { return localMark(vbNumberText(decimalDigits(static_cast<double>(f), 7), 7)); }
QString CStr(Currency c) { return localMark(c.toString()); }
QString CStr(bool b) { return b ? QStringLiteral("True") : QStringLiteral("False"); }

QString CStr(const QVariant& v) {
    switch (kindOf(v)) {
    case Kind::Null: raiseError(err::InvalidUseOfNull);
    case Kind::Currency: return CStr(v.value<ql::Currency>());
    case Kind::Single: return CStr(v.value<float>());
    case Kind::Double: return CStr(v.toDouble());
    case Kind::Whole: return QString::number(v.toLongLong());
    case Kind::Bool: return CStr(v.toBool());
    case Kind::Text: return v.toString();
    case Kind::Date:
    case Kind::DateTime: return dateText(v);
    default: raiseError(err::TypeMismatch);
    }
}

QString Str(double d) {
    const QString t = vbNumberText(decimalDigits(d, 15), 15);
    return t.startsWith(QLatin1Char('-')) ? t : QLatin1Char(' ') + t;
}

double Val(const QString& text) {
    QString s;
    for (QChar c : text)
        if (c != QLatin1Char(' ') && c != QLatin1Char('\t') && c != QLatin1Char('\n') && c != QLatin1Char('\r'))
            s += c;
    qsizetype i = 0;
    const qsizetype n = s.size();
    if (n >= 2 && s[0] == QLatin1Char('&')) {
        qsizetype used = 0;
        return readRadix(s, &used).value_or(0.0);
    }
    std::string a;
    if (i < n && (s[i] == QLatin1Char('-') || s[i] == QLatin1Char('+')))
        a.push_back(static_cast<char>(s[i++].unicode()));
    bool dot = false;
    std::size_t mantissaDigits = 0;
    while (i < n) {
        if (s[i].isDigit() && s[i].unicode() < 128) {
            a.push_back(static_cast<char>(s[i].unicode()));
            ++mantissaDigits;
        } else if (s[i] == QLatin1Char('.') && !dot) {
            a.push_back('.');
            dot = true;
        } else {
            break;
        }
        ++i;
    }
    if (mantissaDigits == 0)
        return 0.0;
    if (i < n && (s[i].toUpper() == QLatin1Char('E') || s[i].toUpper() == QLatin1Char('D'))) {
        std::string ex = "e";
        qsizetype j = i + 1;
        if (j < n && (s[j] == QLatin1Char('-') || s[j] == QLatin1Char('+')))
            ex.push_back(static_cast<char>(s[j++].unicode()));
        bool any = false;
        while (j < n && s[j].isDigit() && s[j].unicode() < 128) {
            ex.push_back(static_cast<char>(s[j++].unicode()));
            any = true;
        }
        if (any)
            a += ex;
    }
    const char* b = a.data();
    if (*b == '+')
        ++b;
    double v = 0.0;
    const auto res = std::from_chars(b, a.data() + a.size(), v);
    if (res.ec == std::errc::result_out_of_range) {
        // Beyond a Double is an overflow; below the smallest one reads as zero.
        const auto e = a.find('e');
        const bool tinyExponent = e != std::string::npos && a.find('-', e) != std::string::npos;
        if (!tinyExponent)
            raiseError(err::Overflow);
        return 0.0;
    }
    return v == 0.0 ? 0.0 : v;
}

} // namespace ql
