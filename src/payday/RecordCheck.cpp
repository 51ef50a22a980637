#include "RecordCheck.h"
#include "IrdNumber.h"

namespace ql {

bool IsLetterOrBlank(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u' ';
}

bool IsLetterDigitBlankOrDash(QChar c) {
    return IsLetterOrBlank(c) || IsDigit(c) || c == u'-';
}

bool IsDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool IsEmailCharacter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || IsDigit(c) || c == u'@' || c == u'-' ||
           c == u'_' || c == u'.';
}

QList<CsvRecord> SplitCsvRecords(const QString& text, bool lfAllowed, QStringList& problems) {
    QList<CsvRecord> records;
    if (text.isEmpty()) {
        problems << QStringLiteral("The file is empty.");
        return records;
    }
    if (!lfAllowed && !text.endsWith(u'\n'))
        problems << QStringLiteral("The last line does not end with a line break.");
    const QStringList lines = text.split(u'\n');
    const int count = static_cast<int>(lines.size()) - (text.endsWith(u'\n') ? 1 : 0);
    for (int i = 0; i < count; ++i) {
        QString l = lines.at(i);
        const bool last = i == count - 1 && !text.endsWith(u'\n');
        if (l.endsWith(u'\r'))
            l.chop(1);
        else if (!lfAllowed && !last)
            problems << QStringLiteral("Line %1: ends without a carriage return before its line feed.").arg(i + 1);
        if (l.isEmpty()) {
            problems << QStringLiteral("Line %1: is empty.").arg(i + 1);
            continue;
        }
        for (const QChar c : l) {
            const ushort u = c.unicode();
            if (u < 0x20 || u >= 0x7F) {
                problems << (u < 0x20 || u == 0x7F
                                 ? QStringLiteral("Line %1: holds a control character (code %2).").arg(i + 1).arg(u)
                                 : QStringLiteral("Line %1: holds \"%2\", which is not plain ASCII.")
                                       .arg(i + 1)
                                       .arg(c));
                break;
            }
        }
        records << CsvRecord{i + 1, l.split(u',')};
    }
    return records;
}

RecordCheck::RecordCheck(const CsvRecord& record, QString who, QStringList& problems)
    : m_record(record), m_who(std::move(who)), m_problems(problems), m_values(record.fields) {}

void RecordCheck::problem(const QString& what) {
    m_problems << (m_who.isEmpty() ? QStringLiteral("Line %1: %2").arg(m_record.line).arg(what)
                                   : QStringLiteral("Line %1 (%2): %3").arg(m_record.line).arg(m_who, what));
}

bool RecordCheck::fieldCount(int count) {
    const int n = static_cast<int>(m_values.size());
    bool extraEmpty = n >= count;
    for (int i = count; i < n; ++i)
        extraEmpty = extraEmpty && m_values.at(i).isEmpty();
    if (n == count || extraEmpty) {
        while (m_values.size() > count) m_values.removeLast();
        return true;
    }
    problem(QStringLiteral("has %1 fields; the layout has %2.").arg(n).arg(count));
    return false;
}

void RecordCheck::text(int position, const QString& name, int size, bool required,
                       const std::function<bool(QChar)>& allowed, const QString& allowedWords) {
    const QString& v = value(position);
    if (v.isEmpty()) {
        if (required) problem(QStringLiteral("%1 is missing.").arg(name));
        return;
    }
    if (v.trimmed().isEmpty()) {
        problem(QStringLiteral("%1 holds only blanks.").arg(name));
        return;
    }
    if (v != v.trimmed()) problem(QStringLiteral("%1 \"%2\" has blanks at its ends.").arg(name, v));
    if (v.size() > size)
        problem(QStringLiteral("%1 \"%2\" is %3 characters long; the layout takes %4.").arg(name, v).arg(v.size()).arg(size));
    for (const QChar c : v)
        if (!allowed(c)) {
            problem(QStringLiteral("%1 \"%2\" holds \"%3\"; it may hold %4.").arg(name, v, QString(c), allowedWords));
            break;
        }
}

std::optional<qint64> RecordCheck::number(int position, const QString& name, int size, bool required,
                                          bool signedAllowed) {
    const QString& v = value(position);
    if (v.isEmpty()) {
        if (required) problem(QStringLiteral("%1 is missing (write 0 for none).").arg(name));
        return std::nullopt;
    }
    const QString digits = signedAllowed && v.startsWith(u'-') ? v.mid(1) : v;
    bool ok = !digits.isEmpty() && digits.size() <= size;
    for (const QChar c : digits)
        ok = ok && IsDigit(c);
    if (!ok) {
        problem(QStringLiteral("%1 \"%2\" is not a%3 whole number of up to %4 digits.")
                    .arg(name, v, signedAllowed ? QString() : QStringLiteral(" positive"))
                    .arg(size));
        return std::nullopt;
    }
    return v.toLongLong();
}

QDate RecordCheck::date(int position, const QString& name, bool required, const QString& format) {
    const QString& v = value(position);
    if (v.isEmpty()) {
        if (required) problem(QStringLiteral("%1 is missing.").arg(name));
        return QDate();
    }
    QDate d = QDate::fromString(v, format);
    bool shape = v.size() == format.size();
    for (int i = 0; shape && i < v.size(); ++i)
        shape = format.at(i).isLetter() ? IsDigit(v.at(i)) : v.at(i) == format.at(i);
    if (!shape || !d.isValid()) {
        problem(QStringLiteral("%1 \"%2\" is not a date written %3.").arg(name, v, format.toUpper()));
        return QDate();
    }
    // Two-digit years are of this century.
    if (!format.contains(QStringLiteral("yyyy")) && d.year() < 2000) d = d.addYears(100);
    return d;
}

void RecordCheck::oneOf(int position, const QString& name, const QStringList& values, bool required) {
    const QString& v = value(position);
    if (v.isEmpty()) {
        if (required) problem(QStringLiteral("%1 is missing.").arg(name));
        return;
    }
    if (!values.contains(v))
        problem(QStringLiteral("%1 \"%2\" is not one of %3.").arg(name, v, values.join(QStringLiteral(", "))));
}

void RecordCheck::irdNumber(int position, const QString& name, bool unknownAllowed, bool required) {
    const QString& v = value(position);
    if (v.isEmpty()) {
        if (required) problem(QStringLiteral("%1 is missing.").arg(name));
        return;
    }
    bool nine = v.size() == 9;
    for (const QChar c : v)
        nine = nine && IsDigit(c);
    if (!nine) {
        problem(QStringLiteral("%1 \"%2\" is not nine digits.").arg(name, v));
        return;
    }
    if (v == QStringLiteral("000000000")) {
        if (!unknownAllowed) problem(QStringLiteral("%1 may not be 000000000.").arg(name));
        return;
    }
    if (!IsValidIrdNumber(v)) problem(QStringLiteral("%1 %2 fails Inland Revenue's check.").arg(name, v));
}

void RecordCheck::equals(int position, const QString& name, const QString& expected) {
    if (value(position) != expected)
        problem(QStringLiteral("%1 is \"%2\"; it must be \"%3\".").arg(name, value(position), expected));
}

void RecordCheck::empty(int position, const QString& name, const QString& why) {
    if (!blank(position)) problem(QStringLiteral("%1 \"%2\" must be empty %3.").arg(name, value(position), why));
}

} // namespace ql
