#include "AccessKeys.h"

namespace ql {

QString WithAccessKey(const QString& caption, QString& taken) {
    for (int i = 0; i < caption.size(); ++i) {
        const QChar c = caption.at(i).toLower();
        if (c.isLetter() && !taken.contains(c)) {
            taken += c;
            return caption.left(i) + u'&' + caption.mid(i) + u':';
        }
    }
    // A long form runs out of the caption's letters: a digit, or another letter, shown beside it.
    static const QString spare = QStringLiteral("1234567890abcdefghijklmnopqrstuvwxyz");
    for (const QChar c : spare)
        if (!taken.contains(c)) {
            taken += c;
            return caption + QStringLiteral(" (&") + c.toUpper() + QStringLiteral("):");
        }
    return caption + u':';
}

} // namespace ql
