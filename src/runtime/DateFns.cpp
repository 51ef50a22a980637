#include "DateFns.h"
#include "Convert.h"
#include "DateText.h"
#include "MathFns.h"
#include "VbError.h"
#include <cmath>

namespace ql {
namespace {

std::function<QDateTime()>& clock() {
    static std::function<QDateTime()> c;
    return c;
}

bool isDateKind(const QVariant& v) {
    const int id = v.metaType().id();
    return v.isValid() && (id == QMetaType::QDate || id == QMetaType::QDateTime);
}

QDate checkedDate(const QDate& d) {
    if (!d.isValid() || d.year() < 100 || d.year() > 9999)
        raiseError(err::InvalidProcedureCall);
    return d;
}

} // namespace

double DateToSerial(const QDate& d) { return static_cast<double>(ZeroDate.daysTo(d)); }

QDate SerialToDate(double serial) {
    // The whole part counts days; the fraction is the time of day on either side of zero.
    if (!std::isfinite(serial) || std::fabs(serial) > 2958466.0)
        raiseError(err::Overflow);
    return ZeroDate.addDays(static_cast<qint64>(std::trunc(serial)));
}

bool IsDate(const QVariant& v) {
    if (isDateKind(v))
        return true;
    if (v.isValid() && v.metaType().id() == QMetaType::QString)
        return parseDateText(v.toString(), vbLocale()).has_value();
    return false;
}

QDateTime CDateTime(const QVariant& v) {
    if (!v.isValid())
        raiseError(err::InvalidUseOfNull);
    const int id = v.metaType().id();
    if (id == QMetaType::QDateTime)
        return v.toDateTime();
    if (id == QMetaType::QDate)
        return QDateTime(v.toDate(), QTime(0, 0));
    if (id == QMetaType::QString) {
        if (auto dt = parseDateText(v.toString(), vbLocale()))
            return *dt;
        raiseError(err::TypeMismatch);
    }
    if (!IsNumeric(v))
        raiseError(err::TypeMismatch);
    const double serial = CDbl(v);
    const QDate day = SerialToDate(serial);
    const double frac = std::fabs(serial - std::trunc(serial));
    const qint64 ms = static_cast<qint64>(std::llround(frac * 86400000.0));
    return QDateTime(day, QTime(0, 0)).addMSecs(std::min<qint64>(ms, 86399999));
}

QDate CDate(const QVariant& v) {
    // A date read from a database is one already: no local time to make of it on the way.
    const int id = v.metaType().id();
    if (id == QMetaType::QDate) return v.toDate();
    if (id == QMetaType::QDateTime) return v.toDateTime().date();
    return CDateTime(v).date();
}

// A fractional count is rounded half to even, as whole-number conversions are: 0.5 month is none,
// 1.5 months are two, 2.5 months are two. Pays per year over 12 relies on 12 -> 1, 24 -> 2, 4 -> 0.
QDate DateAdd(const QString& interval, double number, const QDate& date) {
    if (!date.isValid())
        raiseError(err::InvalidUseOfNull);
    const double n = roundHalfEven(number);
    if (!std::isfinite(n) || std::fabs(n) > 1e7)
        raiseError(err::InvalidProcedureCall);
    const int whole = static_cast<int>(n);
    const QString iv = interval.trimmed().toLower();
    if (iv == QLatin1String("d") || iv == QLatin1String("y") || iv == QLatin1String("w"))
        return checkedDate(date.addDays(whole));
    if (iv == QLatin1String("ww"))
        return checkedDate(date.addDays(qint64(whole) * 7));
    if (iv == QLatin1String("m"))
        return checkedDate(date.addMonths(whole)); // Qt clamps the day to the month's last day
    if (iv == QLatin1String("q"))
        return checkedDate(date.addMonths(whole * 3));
    if (iv == QLatin1String("yyyy"))
        return checkedDate(date.addYears(whole));
    raiseError(err::InvalidProcedureCall);
}

QDate Today() { return Now().date(); }

QDateTime Now() {
    if (clock())
        return clock()();
    return QDateTime::currentDateTime();
}

void setClockForTesting(std::function<QDateTime()> c) { clock() = std::move(c); }

QString shortDateFormat() { return fourDigitYear(vbLocale().dateFormat(QLocale::ShortFormat)); }

QString dateText(const QVariant& v) {
    const QDateTime dt = CDateTime(v);
    const QLocale loc = vbLocale();
    const QString day = loc.toString(dt.date(), shortDateFormat());
    if (v.metaType().id() == QMetaType::QDate || dt.time() == QTime(0, 0))
        return day;
    const QString time = loc.toString(dt.time(), longTimeFormat(loc));
    if (dt.date() == ZeroDate)
        return time; // a time alone shows no date
    return day + QLatin1Char(' ') + time;
}

} // namespace ql
