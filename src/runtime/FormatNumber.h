#pragma once
// The number side of Format: a numeric value with its kind, and the texts of the number formats.
#include "Currency.h"
#include "NumberText.h"
#include <QLocale>
#include <QString>

namespace ql {

struct NumberValue {
    enum class Kind { Double, Single, Currency, Whole } kind = Kind::Double;
    double number = 0.0;
    ql::Currency currency;
    qint64 whole = 0;
};

// A rounded magnitude split at the decimal mark; the sign apart.
struct FixedText {
    bool negative = false;
    QString whole;
    QString fraction;
};

DecimalDigits digitsOf(const NumberValue& v);
FixedText roundedText(const DecimalDigits& d, int decimals);
QString grouped(const QString& whole, const QString& separator);

// "0.00", ".00", "#,##0.0", "0%": zeros are shown digits, '#' optional ones, ',' groups.
QString numberPicture(const NumberValue& value, const QString& picture, const QLocale& locale);
// "fixed" (no grouping) and "standard" (grouping) with the given decimals.
QString fixedText(const NumberValue& value, int decimals, bool grouping, const QLocale& locale);
// "currency": the locale's form with two decimals; a negative has a leading minus.
QString currencyText(const NumberValue& value, const QLocale& locale);

} // namespace ql
