#include "Texts.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <limits>

namespace ql {
namespace {

QString valueText(const QVariant& v) {
    if (IsNull(v)) return QStringLiteral("...");
    if (v.typeId() == QMetaType::QString) return v.toString();
    return CStr(v);
}

} // namespace

QString TranslateText(const QString& text, const QVariantList& values) {
    if (text.isEmpty()) return QString();
    QString result;
    QString marked;
    try {
        qsizetype i = 0;
        while (i < text.size()) {
            const QChar c = text.at(i);
            if (c != QLatin1Char('|')) {
                result += c;
                marked += c;
                ++i;
                continue;
            }
            qsizetype j = i + 1;
            qint64 index = 0;
            while (j < text.size() && text.at(j).isDigit() && text.at(j).unicode() < 128) {
                index = index * 10 + (text.at(j).unicode() - '0');
                if (index > std::numeric_limits<qint32>::max()) raiseError(err::Overflow);
                ++j;
            }
            if (index >= values.size()) raiseError(err::SubscriptOutOfRange);
            const QString value = valueText(values.at(index));
            result += value;
            marked += QLatin1Char('|') + value + QLatin1Char('|');
            const qsizetype close = text.indexOf(QLatin1Char('|'), i + 1);
            if (close >= 0) {
                i = close + 1;
            } else {
                result += QLatin1Char('|');
                marked += QLatin1Char('|');
                ++i;
            }
        }
    } catch (const std::exception&) {
        return marked.isEmpty() ? QString() : marked + QLatin1Char('?');
    }
    return result;
}

QString TranslateText(const QString& text, const QStringList& values) {
    QVariantList list;
    list.reserve(values.size());
    for (const QString& v : values)
        list.append(v);
    return TranslateText(text, list);
}

QString EscapeAccessKeys(const QVariant& value) {
    if (IsNull(value)) return QString();
    QString text = value.typeId() == QMetaType::QString ? value.toString() : CStr(value);
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QString EscapeReportText(const QVariant& value) {
    if (IsNull(value)) return QString();
    QString text = value.typeId() == QMetaType::QString ? value.toString() : CStr(value);
    text.remove(QLatin1Char('&'));
    text.replace(QLatin1Char('\''), QStringLiteral("''"));
    // Text typed on this platform breaks lines with a bare LF; any break would end the literal.
    static const QString lineBreak = QStringLiteral("' + chr(13) + chr(10) + '");
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\r') && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n')) {
            out += lineBreak;
            ++i;
        } else if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            out += lineBreak;
        } else {
            out += c;
        }
    }
    return out;
}

} // namespace ql
