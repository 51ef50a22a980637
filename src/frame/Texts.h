#pragma once
// Texts with numbered marks, and the escapes for labels and report formulas.
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>

namespace ql {

// Puts values[n] in place of each "|n|" mark; a Null value shows as "...". A bad mark never stops
// the caller: the text comes back as far as it was marked, with "?" at its end.
QString TranslateText(const QString& text, const QVariantList& values);
QString TranslateText(const QString& text, const QStringList& values = {});

// Doubles each "&" so that a label shows it instead of taking it as an access key; Null gives "".
QString EscapeAccessKeys(const QVariant& value);

// Safe inside a single-quoted literal of a report formula: drops "&", doubles "'", and turns each
// line break into "' + chr(13) + chr(10) + '". Null gives "".
QString EscapeReportText(const QVariant& value);

} // namespace ql
