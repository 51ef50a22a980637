#include "Format.h"
#include "Convert.h"
#include "DateFns.h"
#include "DateText.h"
#include "FormatNumber.h"
#include "VbError.h"

namespace ql {
namespace {

bool isNumberKind(const QVariant& v) {
    if (!v.isValid())
        return false;
    const int id = v.metaType().id();
    return id != QMetaType::QString && id != QMetaType::QDate && id != QMetaType::QDateTime &&
           id != QMetaType::QByteArray && IsNumeric(v);
}

bool isDateKind(const QVariant& v) {
    const int id = v.metaType().id();
    return v.isValid() && (id == QMetaType::QDate || id == QMetaType::QDateTime);
}

NumberValue numberOf(const QVariant& v) {
    NumberValue n;
    const int id = v.metaType().id();
    if (id == qMetaTypeId<ql::Currency>()) {
        n.kind = NumberValue::Kind::Currency;
        n.currency = v.value<ql::Currency>();
    } else if (id == QMetaType::Float) {
        n.kind = NumberValue::Kind::Single;
        n.number = static_cast<double>(v.value<float>());
    } else if (id == QMetaType::Int || id == QMetaType::LongLong || id == QMetaType::Short ||
               id == QMetaType::UInt || id == QMetaType::Long || id == QMetaType::UShort) {
        n.kind = NumberValue::Kind::Whole;
        n.whole = v.toLongLong();
    } else {
        n.number = CDbl(v);
    }
    return n;
}

// A format of day, month, year or time fields rather than digits.
bool isDatePicture(const QString& f) {
    bool quoted = false;
    for (qsizetype i = 0; i < f.size(); ++i) {
        const QChar c = f[i];
        if (c == QLatin1Char('"'))
            quoted = !quoted;
        else if (c == QLatin1Char('\\'))
            ++i;
        else if (!quoted && QStringLiteral("dmyhnswq").contains(c.toLower()))
            return true;
    }
    return false;
}

QString dateSeparator(const QLocale& locale) {
    for (QChar c : locale.dateFormat(QLocale::ShortFormat))
        if (!c.isLetter())
            return QString(c);
    return QStringLiteral("/");
}

QString two(int n) { return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')); }

// The runtime's date pictures: d dd ddd dddd, m mm mmm mmmm (minutes after h), yy yyyy, y (day of the
// year), h hh, n nn, s ss, w, ww, q, AM/PM, "/" as the locale's date separator, quoted literals.
QString datePicture(const QDateTime& dt, const QString& f, const QLocale& locale) {
    const QDate d = dt.date();
    const QTime t = dt.time();
    const bool twelveHour = f.contains(QLatin1String("AM/PM"), Qt::CaseInsensitive) ||
                            f.contains(QLatin1String("A/P"), Qt::CaseInsensitive);
    QString out;
    bool afterHour = false;
    for (qsizetype i = 0; i < f.size();) {
        const QChar c = f[i];
        if (c == QLatin1Char('"')) {
            const qsizetype end = f.indexOf(QLatin1Char('"'), i + 1);
            out += f.mid(i + 1, (end < 0 ? f.size() : end) - i - 1);
            i = end < 0 ? f.size() : end + 1;
            continue;
        }
        if (c == QLatin1Char('\\') && i + 1 < f.size()) {
            out += f[i + 1];
            i += 2;
            continue;
        }
        if (f.mid(i, 5).compare(QLatin1String("AM/PM"), Qt::CaseInsensitive) == 0) {
            const QString ap = t.hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
            out += f[i].isUpper() ? ap : ap.toLower();
            i += 5;
            continue;
        }
        if (f.mid(i, 3).compare(QLatin1String("A/P"), Qt::CaseInsensitive) == 0) {
            const QString ap = t.hour() < 12 ? QStringLiteral("A") : QStringLiteral("P");
            out += f[i].isUpper() ? ap : ap.toLower();
            i += 3;
            continue;
        }
        const QChar k = c.toLower();
        qsizetype n = 1;
        while (i + n < f.size() && f[i + n].toLower() == k)
            ++n;
        if (k == QLatin1Char('d')) {
            if (n == 1)
                out += QString::number(d.day());
            else if (n == 2)
                out += two(d.day());
            else if (n == 3)
                out += locale.dayName(d.dayOfWeek(), QLocale::ShortFormat);
            else if (n == 4)
                out += locale.dayName(d.dayOfWeek(), QLocale::LongFormat);
            else if (n == 5)
                out += locale.toString(d, shortDateFormat());
            else
                out += locale.toString(d, QLocale::LongFormat);
        } else if (k == QLatin1Char('m')) {
            // After an hour (or before seconds) "m" is the minute.
            qsizetype j = i + n;
            while (j < f.size() && !f[j].isLetter())
                ++j;
            const bool minute = n <= 2 && (afterHour || (j < f.size() && f[j].toLower() == QLatin1Char('s')));
            if (minute)
                out += n == 1 ? QString::number(t.minute()) : two(t.minute());
            else if (n == 1)
                out += QString::number(d.month());
            else if (n == 2)
                out += two(d.month());
            else if (n == 3)
                out += locale.monthName(d.month(), QLocale::ShortFormat);
            else
                out += locale.monthName(d.month(), QLocale::LongFormat);
        } else if (k == QLatin1Char('y')) {
            if (n == 1)
                out += QString::number(d.dayOfYear());
            else if (n == 2)
                out += two(d.year() % 100);
            else
                out += QString::number(d.year());
        } else if (k == QLatin1Char('h')) {
            int h = t.hour();
            if (twelveHour)
                h = h % 12 == 0 ? 12 : h % 12;
            out += n == 1 ? QString::number(h) : two(h);
        } else if (k == QLatin1Char('n')) {
            out += n == 1 ? QString::number(t.minute()) : two(t.minute());
        } else if (k == QLatin1Char('s')) {
            out += n == 1 ? QString::number(t.second()) : two(t.second());
        } else if (k == QLatin1Char('w')) {
            out += n == 1 ? QString::number(d.dayOfWeek() % 7 + 1) : QString::number(d.weekNumber());
        } else if (k == QLatin1Char('q')) {
            out += QString::number((d.month() - 1) / 3 + 1);
        } else if (c == QLatin1Char('/')) {
            out += QString(dateSeparator(locale)).repeated(n);
        } else {
            out += f.mid(i, n);
        }
        if (k.isLetter())
            afterHour = k == QLatin1Char('h');
        i += n;
    }
    return out;
}

QString namedDate(const QDateTime& dt, const QString& name, const QLocale& locale, bool* known) {
    *known = true;
    if (name == QLatin1String("short date"))
        return locale.toString(dt.date(), shortDateFormat());
    if (name == QLatin1String("long date"))
        return locale.toString(dt.date(), QLocale::LongFormat);
    if (name == QLatin1String("medium date"))
        return datePicture(dt, QStringLiteral("dd-mmm-yy"), locale);
    if (name == QLatin1String("general date"))
        return dateText(QVariant(dt));
    if (name == QLatin1String("long time"))
        return locale.toString(dt.time(), longTimeFormat(locale));
    if (name == QLatin1String("medium time"))
        return datePicture(dt, QStringLiteral("hh:nn AM/PM"), locale);
    if (name == QLatin1String("short time"))
        return datePicture(dt, QStringLiteral("hh:nn"), locale);
    *known = false;
    return QString();
}

QString formatNumber(const QVariant& value, const QString& format, const QString& name, const QLocale& locale) {
    const NumberValue n = numberOf(value);
    if (name == QLatin1String("currency"))
        return currencyText(n, locale);
    if (name == QLatin1String("fixed"))
        return fixedText(n, 2, false, locale);
    if (name == QLatin1String("standard"))
        return fixedText(n, 2, true, locale);
    if (name == QLatin1String("percent"))
        return fixedText(NumberValue{NumberValue::Kind::Double, CDbl(value) * 100.0, {}, 0}, 2, false, locale) +
               QLatin1Char('%');
    if (name == QLatin1String("general number"))
        return CStr(value);
    if (name == QLatin1String("yes/no"))
        return CBool(value) ? QStringLiteral("Yes") : QStringLiteral("No");
    if (name == QLatin1String("true/false"))
        return CBool(value) ? QStringLiteral("True") : QStringLiteral("False");
    if (name == QLatin1String("on/off"))
        return CBool(value) ? QStringLiteral("On") : QStringLiteral("Off");
    const QString text = numberPicture(n, format, locale);
    return text.isNull() ? format : text;
}

} // namespace

QString Format(const QVariant& value, const QString& format) {
    if (!value.isValid())
        return QString(); // Null formats to nothing
    const QLocale locale = vbLocale();
    // A number in "Currency" or "Fixed", the formats of the figure cells of every list, goes straight
    // to its text.
    if (isNumberKind(value)) {
        if (format.compare(QLatin1String("currency"), Qt::CaseInsensitive) == 0)
            return currencyText(numberOf(value), locale);
        if (format.compare(QLatin1String("fixed"), Qt::CaseInsensitive) == 0)
            return fixedText(numberOf(value), 2, false, locale);
    }
    const QString name = format.trimmed().toLower();
    if (name.isEmpty()) {
        if (isDateKind(value))
            return dateText(value);
        return CStr(value);
    }

    static const QStringList numberNames{QStringLiteral("currency"),       QStringLiteral("fixed"),
                                         QStringLiteral("standard"),       QStringLiteral("percent"),
                                         QStringLiteral("general number"), QStringLiteral("yes/no"),
                                         QStringLiteral("true/false"),     QStringLiteral("on/off")};
    static const QStringList dateNames{QStringLiteral("short date"),   QStringLiteral("long date"),
                                       QStringLiteral("medium date"),  QStringLiteral("general date"),
                                       QStringLiteral("long time"),    QStringLiteral("medium time"),
                                       QStringLiteral("short time")};
    const bool wantsDate = !numberNames.contains(name) && (dateNames.contains(name) || isDatePicture(name));

    if (wantsDate) {
        // Numbers are serial dates; text that is neither a date nor a number stays as it is.
        QDateTime dt;
        if (isDateKind(value) || IsDate(value) || isNumberKind(value) || IsNumeric(value))
            dt = CDateTime(value);
        else
            return value.toString();
        bool dateName = false;
        const QString named = namedDate(dt, name, locale, &dateName);
        return dateName ? named : datePicture(dt, format.trimmed(), locale);
    }

    QVariant number = value;
    if (isDateKind(value))
        number = QVariant(CDbl(value));
    else if (!isNumberKind(value)) {
        if (value.metaType().id() == QMetaType::Bool)
            number = QVariant(CDbl(value));
        else if (IsNumeric(value))
            number = QVariant(CDbl(value));
        else
            return value.toString();
    }
    return formatNumber(number, format.trimmed(), name, locale);
}

} // namespace ql
