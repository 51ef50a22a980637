#include "PaydayText.h"

namespace ql {

namespace {

// Letters that do not decompose into a plain letter and a mark.
QString spelledOut(QChar c) {
    switch (c.unicode()) {
    case 0x00C6: return QStringLiteral("AE");
    case 0x00E6: return QStringLiteral("ae");
    case 0x0152: return QStringLiteral("OE");
    case 0x0153: return QStringLiteral("oe");
    case 0x00DF: return QStringLiteral("ss");
    case 0x00D8: return QStringLiteral("O");
    case 0x00F8: return QStringLiteral("o");
    case 0x0110: return QStringLiteral("D");
    case 0x0111: return QStringLiteral("d");
    case 0x00D0: return QStringLiteral("D");
    case 0x00F0: return QStringLiteral("d");
    case 0x0141: return QStringLiteral("L");
    case 0x0142: return QStringLiteral("l");
    case 0x00DE: return QStringLiteral("Th");
    case 0x00FE: return QStringLiteral("th");
    case 0x0131: return QStringLiteral("i");
    case 0x2018:
    case 0x2019:
    case 0x201A:
    case 0x2032:
    case 0x02BB: // okina
    case 0x02BC: return QStringLiteral("'");
    case 0x201C:
    case 0x201D:
    case 0x201E:
    case 0x2033: return QStringLiteral("\"");
    case 0x2010:
    case 0x2011:
    case 0x2012:
    case 0x2013:
    case 0x2014:
    case 0x2212: return QStringLiteral("-");
    case 0x2026: return QStringLiteral("...");
    default: return QString();
    }
}

} // namespace

QString PlainAscii(const QString& text) {
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString out;
    out.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        const ushort u = c.unicode();
        if (u >= 0x20 && u < 0x7F) {
            out += c;
        } else if (c.isSpace() || u == u'\t' || u == u'\n' || u == u'\r') {
            out += u' ';
        } else if (c.category() == QChar::Mark_NonSpacing || c.category() == QChar::Mark_SpacingCombining ||
                   c.category() == QChar::Mark_Enclosing) {
            continue; // the accent of a letter already written
        } else {
            out += spelledOut(c); // empty for control and unknown characters: dropped
        }
    }
    return out.simplified();
}

bool IsBankCharacter(QChar c) {
    const ushort u = c.unicode();
    if ((u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z') || (u >= u'0' && u <= u'9')) return true;
    return u == u' ' || u == u'-' || u == u'&' || u == u'/' || u == u'?' || u == u'_' || u == u'.';
}

QString BankText(const QString& text, int length) {
    QString out;
    for (const QChar c : PlainAscii(text))
        if (IsBankCharacter(c)) out += c;
    return out.simplified().left(length).trimmed();
}

bool IsKeyboardCharacter(QChar c) {
    const ushort u = c.unicode();
    return u >= 0x20 && u < 0x7F && u != u',' && u != u'[' && u != u']' && u != u'\\' && u != u'"';
}

QString Counted(qint64 n, const QString& one, const QString& many) {
    return QStringLiteral("%1 %2").arg(n).arg(n == 1 ? one : many);
}

} // namespace ql
