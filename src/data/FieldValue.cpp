#include "FieldValue.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"
#include <QDateTime>
#include <cmath>
#include <sqlite3.h>

namespace ql {

std::optional<FieldType> fieldTypeFromDeclared(const QString& declared) {
    QString t = declared.trimmed().toUpper();
    const auto paren = t.indexOf(u'(');
    if (paren >= 0) t = t.left(paren).trimmed();
    if (t.isEmpty()) return std::nullopt;
    if (t == QLatin1String("CURRENCY") || t == QLatin1String("MONEY")) return FieldType::Currency;
    if (t == QLatin1String("SINGLE") || t == QLatin1String("FLOAT4")) return FieldType::Single;
    if (t == QLatin1String("DOUBLE") || t == QLatin1String("REAL") || t == QLatin1String("FLOAT") ||
        t == QLatin1String("NUMERIC") || t == QLatin1String("DECIMAL"))
        return FieldType::Double;
    if (t == QLatin1String("LONG") || t == QLatin1String("INTEGER") || t == QLatin1String("INT") ||
        t == QLatin1String("COUNTER") || t == QLatin1String("BIGINT"))
        return FieldType::Long;
    if (t == QLatin1String("SMALLINT") || t == QLatin1String("SHORT")) return FieldType::Integer;
    if (t == QLatin1String("BYTE") || t == QLatin1String("TINYINT")) return FieldType::Byte;
    if (t == QLatin1String("DATETIME") || t == QLatin1String("DATE")) return FieldType::Date;
    if (t == QLatin1String("YESNO") || t == QLatin1String("BIT") || t == QLatin1String("BOOLEAN"))
        return FieldType::Boolean;
    if (t == QLatin1String("MEMO") || t == QLatin1String("LONGTEXT")) return FieldType::Memo;
    if (t == QLatin1String("TEXT") || t.contains(QLatin1String("CHAR"))) return FieldType::Text;
    return std::nullopt;
}

QString isoDateText(const QDateTime& dt) {
    if (dt.time() == QTime(0, 0)) return dt.date().toString(Qt::ISODate);
    return dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

namespace {

// "yyyy-mm-dd" exactly, as the data layer stores a date; anything else gives an invalid date.
template <class Char> QDate isoDate(const Char* text, qsizetype size) {
    if (size != 10 || text[4] != '-' || text[7] != '-') return QDate();
    int digits[8], n = 0;
    for (int i = 0; i < 10; ++i) {
        if (i == 4 || i == 7) continue;
        const int c = int(text[i]);
        if (c < '0' || c > '9') return QDate();
        digits[n++] = c - '0';
    }
    return QDate(digits[0] * 1000 + digits[1] * 100 + digits[2] * 10 + digits[3], digits[4] * 10 + digits[5],
                 digits[6] * 10 + digits[7]);
}

bool isNumber(const QVariant& v) {
    switch (v.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::Int:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

QVariant dateFromStored(const QVariant& stored) {
    if (isNumber(stored)) {
        const double serial = stored.toDouble();
        const QDate date = SerialToDate(std::floor(serial));
        const double frac = serial - std::floor(serial);
        if (frac == 0.0) return date;
        return QDateTime(date, QTime(0, 0).addMSecs(qint64(std::llround(frac * 86400000.0))));
    }
    // The stored form "yyyy-mm-dd" read without the general parse: lists read dates by the thousand.
    if (stored.typeId() == QMetaType::QString) {
        const QString& text = *static_cast<const QString*>(stored.constData());
        const QDate quick = isoDate(text.utf16(), text.size());
        if (quick.isValid()) return quick;
    }
    const QString s = stored.toString().trimmed();
    const QDate d = QDate::fromString(s.left(10), Qt::ISODate);
    if (d.isValid()) {
        if (s.size() <= 10) return d;
        QTime t = QTime::fromString(s.mid(11, 8), QStringLiteral("HH:mm:ss"));
        if (!t.isValid()) t = QTime::fromString(s.mid(11, 5), QStringLiteral("HH:mm"));
        if (!t.isValid() || t == QTime(0, 0)) return d;
        return QDateTime(d, t);
    }
    return stored.toString();
}

QVariant storedDate(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return isoDateText(value.toDateTime());
    case QMetaType::QString: {
        const QString s = value.toString().trimmed();
        const QVariant iso = dateFromStored(s);
        if (iso.typeId() == QMetaType::QDate) return iso.toDate().toString(Qt::ISODate);
        if (iso.typeId() == QMetaType::QDateTime) return isoDateText(iso.toDateTime());
        return isoDateText(CDateTime(value));
    }
    default:
        if (value.typeId() == qMetaTypeId<Currency>()) return storedDate(value.value<Currency>().toDouble());
        if (isNumber(value)) {
            const QVariant d = dateFromStored(value);
            return d.typeId() == QMetaType::QDate ? d.toDate().toString(Qt::ISODate)
                                                  : isoDateText(d.toDateTime());
        }
        return isoDateText(CDateTime(value));
    }
}

} // namespace

std::optional<Currency> storedCurrency(FieldType type, sqlite3_value* v) {
    QVariant stored;
    switch (sqlite3_value_type(v)) {
    case SQLITE_NULL:
        return std::nullopt;
    case SQLITE_INTEGER:
        if (type == FieldType::Long) return Currency::fromLong(qint32(sqlite3_value_int64(v)));
        [[fallthrough]];
    case SQLITE_FLOAT:
        if (type == FieldType::Single)
            return Currency::fromSingle(static_cast<float>(sqlite3_value_double(v)));
        if (type == FieldType::Currency || type == FieldType::Double)
            return Currency::fromDouble(sqlite3_value_double(v));
        stored = sqlite3_value_type(v) == SQLITE_INTEGER ? QVariant(qint64(sqlite3_value_int64(v)))
                                                         : QVariant(sqlite3_value_double(v));
        break;
    case SQLITE_TEXT:
        stored =
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(v)), sqlite3_value_bytes(v));
        break;
    default:
        stored = QByteArray(static_cast<const char*>(sqlite3_value_blob(v)), sqlite3_value_bytes(v));
    }
    const QVariant typed = typedValue(type, stored);
    if (IsNull(typed) || !IsNumeric(typed)) return std::nullopt;
    return CCur(typed);
}

QDate storedIsoDate(const char* utf8, qsizetype size) {
    return isoDate(utf8, size);
}

QVariant typedValue(FieldType type, const QVariant& stored) {
    if (!stored.isValid() || stored.isNull()) return QVariant();
    const bool numeric = isNumber(stored);
    try {
        switch (type) {
        case FieldType::Currency:
            return QVariant::fromValue(numeric ? Currency::fromDouble(stored.toDouble()) : CCur(stored));
        case FieldType::Single:
            return numeric ? QVariant(static_cast<float>(stored.toDouble())) : QVariant(CSng(stored));
        case FieldType::Double:
            return numeric ? QVariant(stored.toDouble()) : QVariant(CDbl(stored));
        case FieldType::Long:
            return stored.typeId() == QMetaType::LongLong ? QVariant(qint32(stored.toLongLong()))
                                                          : QVariant(CLng(stored));
        case FieldType::Integer:
            return stored.typeId() == QMetaType::LongLong ? QVariant(qint16(stored.toLongLong()))
                                                          : QVariant(CInt(stored));
        case FieldType::Byte:
            return QVariant(static_cast<uchar>(stored.toLongLong()));
        case FieldType::Boolean:
            return numeric ? QVariant(stored.toDouble() != 0.0) : QVariant(CBool(stored));
        case FieldType::Date:
            return dateFromStored(stored);
        case FieldType::Text:
        case FieldType::Memo:
            return stored.toString();
        }
    } catch (const VbError&) {
        // A stored text that the type cannot read is shown as it is.
    }
    return stored;
}

QVariant storedValue(FieldType type, const QVariant& value) {
    if (!value.isValid() || value.isNull()) return QVariant();
    try {
        switch (type) {
        case FieldType::Currency:
            if (value.typeId() == qMetaTypeId<Currency>()) return value.value<Currency>().toDouble();
            return CCur(value).toDouble();
        case FieldType::Single:
            return static_cast<double>(CSng(value));
        case FieldType::Double:
            return CDbl(value);
        case FieldType::Long:
            return qint64(CLng(value));
        case FieldType::Integer:
            return qint64(CInt(value));
        case FieldType::Byte: {
            const qint32 b = CLng(value);
            if (b < 0 || b > 255) raiseError(err::Overflow);
            return qint64(b);
        }
        case FieldType::Boolean:
            return qint64(CBool(value) ? 1 : 0);
        case FieldType::Date:
            return storedDate(value);
        case FieldType::Text:
        case FieldType::Memo:
            if (value.typeId() == QMetaType::QString) return value;
            return CStr(value);
        }
    } catch (const VbError& e) {
        if (e.number() == err::Overflow) throw;
        raiseError(3421, QStringLiteral("DAO.Field"),
                   QStringLiteral("Data type conversion error: '%1' is no %2 value.")
                       .arg(value.toString(),
                            type == FieldType::Date ? QStringLiteral("date") : QStringLiteral("numeric")));
    }
    return value;
}

} // namespace ql
