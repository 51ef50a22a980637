#include "DateText.h"
#include "DateFns.h"
#include <QRegularExpression>
#include <QStringList>
#include <array>

namespace ql {
namespace {

struct Part {
    QString text;
    bool isNumber = false;
};

int windowYear(const QString& digits) {
    const int y = digits.toInt();
    if (digits.size() <= 2)
        return y < 30 ? 2000 + y : 1900 + y;
    return y;
}

// 1..12 for a month name or its abbreviation (at least three letters) in English or the locale.
int monthFromName(const QString& word, const QLocale& locale) {
    if (word.size() < 3)
        return 0;
    static const QLocale english(QLocale::English);
    for (const QLocale* loc : {&locale, &english}) {
        for (int m = 1; m <= 12; ++m) {
            const QString longName = loc->monthName(m, QLocale::LongFormat);
            const QString shortName = loc->monthName(m, QLocale::ShortFormat);
            if (longName.startsWith(word, Qt::CaseInsensitive) ||
                word.compare(shortName, Qt::CaseInsensitive) == 0 ||
                QString(shortName).remove(QLatin1Char('.')).compare(word, Qt::CaseInsensitive) == 0)
                return m;
        }
    }
    return 0;
}

bool isWeekdayName(const QString& word, const QLocale& locale) {
    static const QLocale english(QLocale::English);
    for (const QLocale* loc : {&locale, &english})
        for (int d = 1; d <= 7; ++d)
            if (word.compare(loc->dayName(d, QLocale::LongFormat), Qt::CaseInsensitive) == 0 ||
                word.compare(loc->dayName(d, QLocale::ShortFormat), Qt::CaseInsensitive) == 0)
                return true;
    return false;
}

// The locale's order of day ('d'), month ('M') and year ('y') in its short date.
QString localeOrder(const QLocale& locale) {
    QString order;
    for (QChar c : locale.dateFormat(QLocale::ShortFormat)) {
        const QChar k = c == QLatin1Char('d') ? QLatin1Char('d')
                        : c == QLatin1Char('M') ? QLatin1Char('M')
                        : c == QLatin1Char('y') ? QLatin1Char('y')
                                                : QChar();
        if (!k.isNull() && !order.contains(k))
            order += k;
    }
    return order.size() == 3 ? order : QStringLiteral("dMy");
}

std::optional<QDate> fromOrder(const std::array<QString, 3>& n, const QString& order) {
    int d = 0, m = 0, y = 0;
    for (int i = 0; i < 3; ++i) {
        if (n[i].size() > 2 && order[i] != QLatin1Char('y'))
            return std::nullopt; // a long number is only ever the year
        if (order[i] == QLatin1Char('d'))
            d = n[i].toInt();
        else if (order[i] == QLatin1Char('M'))
            m = n[i].toInt();
        else
            y = windowYear(n[i]);
    }
    const QDate date(y, m, d);
    if (!date.isValid() || y < 100 || y > 9999)
        return std::nullopt;
    return date;
}

std::optional<QTime> takeTime(QString& text) {
    static const QRegularExpression re(
        QStringLiteral("(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2}))?\\s*(a\\.?m\\.?|p\\.?m\\.?)?(?![\\w])"),
        QRegularExpression::CaseInsensitiveOption);
    const auto m = re.match(text);
    if (!m.hasMatch())
        return QTime(0, 0);
    int h = m.captured(1).toInt();
    const int min = m.captured(2).toInt();
    const int sec = m.captured(3).isEmpty() ? 0 : m.captured(3).toInt();
    const QString ap = m.captured(4).toLower();
    if (!ap.isEmpty()) {
        if (h < 1 || h > 12)
            return std::nullopt;
        if (ap.startsWith(QLatin1Char('p')) && h != 12)
            h += 12;
        else if (ap.startsWith(QLatin1Char('a')) && h == 12)
            h = 0;
    }
    const QTime t(h, min, sec);
    if (!t.isValid())
        return std::nullopt;
    text.remove(m.capturedStart(), m.capturedLength());
    return t;
}

std::optional<QDate> dateFromParts(const QList<Part>& parts, const QLocale& locale) {
    QStringList numbers;
    int month = 0;
    int names = 0;
    for (const Part& p : parts) {
        if (p.isNumber) {
            numbers << p.text;
        } else if (int m = monthFromName(p.text, locale)) {
            month = m;
            ++names;
        } else if (!isWeekdayName(p.text, locale)) {
            return std::nullopt;
        }
    }
    if (names > 1)
        return std::nullopt;
    const int thisYear = Today().year();
    auto made = [](int y, int m, int d) -> std::optional<QDate> {
        const QDate date(y, m, d);
        if (!date.isValid() || y < 100 || y > 9999)
            return std::nullopt;
        return date;
    };
    auto looksLikeYear = [](const QString& s) { return s.size() > 2 || s.toInt() > 31; };

    if (names == 1) {
        if (numbers.size() == 2) {
            // "5 Mar 2024", "Mar 5 2024"; a long or large number is the year wherever it stands.
            if (looksLikeYear(numbers[0]) && !looksLikeYear(numbers[1]))
                return made(windowYear(numbers[0]), month, numbers[1].toInt());
            return made(windowYear(numbers[1]), month, numbers[0].toInt());
        }
        if (numbers.size() == 1) {
            if (looksLikeYear(numbers[0]))
                return made(windowYear(numbers[0]), month, 1);
            return made(thisYear, month, numbers[0].toInt());
        }
        return std::nullopt;
    }
    if (numbers.size() == 3) {
        const std::array<QString, 3> n{numbers[0], numbers[1], numbers[2]};
        const QString first = localeOrder(locale);
        for (const QString& order : {first, QStringLiteral("Mdy"), QStringLiteral("dMy"), QStringLiteral("yMd")})
            if (auto d = fromOrder(n, order))
                return d;
        return std::nullopt;
    }
    if (numbers.size() == 2) {
        if (looksLikeYear(numbers[1]) && numbers[0].toInt() <= 12)
            return made(windowYear(numbers[1]), numbers[0].toInt(), 1); // "3/2024"
        const bool dayFirst = localeOrder(locale).indexOf(QLatin1Char('d')) < localeOrder(locale).indexOf(QLatin1Char('M'));
        const int a = numbers[0].toInt(), b = numbers[1].toInt();
        if (auto d = dayFirst ? made(thisYear, b, a) : made(thisYear, a, b))
            return d;
        return dayFirst ? made(thisYear, a, b) : made(thisYear, b, a);
    }
    return std::nullopt;
}

} // namespace

std::optional<QDateTime> parseDateText(const QString& input, const QLocale& locale) {
    QString text = input.trimmed();
    if (text.isEmpty())
        return std::nullopt;
    static const QRegularExpression iso(QStringLiteral("^(\\d{4})-(\\d{1,2})-(\\d{1,2})(?:[T ](.*))?$"));
    std::optional<QDate> date;
    std::optional<QTime> time;
    if (const auto m = iso.match(text); m.hasMatch()) {
        const QDate d(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
        if (!d.isValid())
            return std::nullopt;
        QString rest = m.captured(4);
        time = takeTime(rest);
        if (!time || !rest.trimmed().isEmpty())
            return std::nullopt;
        return QDateTime(d, *time);
    }
    const bool hadColon = text.contains(QLatin1Char(':'));
    time = takeTime(text);
    if (!time || (hadColon && text.contains(QLatin1Char(':'))))
        return std::nullopt;

    static const QRegularExpression token(QStringLiteral("(\\d+)|(\\p{L}+)|([\\s/.,\\-]+)|(.)"));
    QList<Part> parts;
    for (auto it = token.globalMatch(text); it.hasNext();) {
        const auto m = it.next();
        if (m.capturedLength(1))
            parts.append({m.captured(1), true});
        else if (m.capturedLength(2))
            parts.append({m.captured(2), false});
        else if (m.capturedLength(4))
            return std::nullopt;
    }
    if (parts.isEmpty())
        return hadColon ? std::optional<QDateTime>(QDateTime(ZeroDate, *time)) : std::nullopt;
    date = dateFromParts(parts, locale);
    if (!date)
        return std::nullopt;
    return QDateTime(*date, *time);
}

QString fourDigitYear(const QString& format) {
    static const QRegularExpression years(QStringLiteral("y+"));
    QString out = format;
    out.replace(years, QStringLiteral("yyyy"));
    return out;
}

QString longTimeFormat(const QLocale& locale) {
    static const QRegularExpression zone(QStringLiteral("\\s*t+\\s*"));
    QString f = locale.timeFormat(QLocale::LongFormat);
    f.replace(zone, QStringLiteral(" "));
    return f.trimmed();
}

} // namespace ql
