#pragma once
// Conversions between text, numbers and variants, with the runtime's rules (locale-aware, half to
// even for whole numbers). A variant is a QVariant; Null is an invalid QVariant. Money in a variant is
// a ql::Currency, a Single is float, a Double is double, a Long is qint32, a date is QDate (QDateTime
// when it carries a time), Yes/No is bool.
#include "Currency.h"
#include <QLocale>
#include <QVariant>
#include <optional>
#include <type_traits>

namespace ql {

// The locale every conversion and format uses: QLocale() (the system one unless a test sets a default).
QLocale vbLocale();

inline QVariant Null() { return QVariant(); }
inline bool IsNull(const QVariant& v) { return !v.isValid(); }

// Text to Double by the runtime's numeric rules in the given locale; nullopt when not numeric.
std::optional<double> parseNumber(const QString& text, const QLocale& locale = vbLocale());

bool IsNumeric(const QVariant& v);
bool IsNumeric(const QString& text);

// Conversions; a value that does not convert raises Type mismatch (13), Null raises Invalid use of
// Null (94), and a value out of the type's range raises Overflow (6).
double CDbl(const QVariant& v);
float CSng(const QVariant& v);
Currency CCur(const QVariant& v);
qint32 CLng(const QVariant& v);
qint16 CInt(const QVariant& v);
bool CBool(const QVariant& v);

// Number to text as the runtime prints it: 15 significant digits for Double, 7 for Single, exact for
// Currency, the locale's decimal mark, no grouping.
QString CStr(const QVariant& v);
QString CStr(double d);
QString CStr(float f);
QString CStr(Currency c);
QString CStr(bool b);
// Whole numbers print as they are (an int would otherwise be ambiguous between Double and Single).
template <class T>
    requires(std::is_integral_v<T> && !std::is_same_v<T, bool>)
QString CStr(T whole) {
    return QString::number(static_cast<qlonglong>(whole));
}
// Str: always '.', a leading blank for values >= 0.
QString Str(double d);
// Val: reads as far as it can; blanks anywhere are removed; only '.' as the decimal mark.
double Val(const QString& text);

} // namespace ql
