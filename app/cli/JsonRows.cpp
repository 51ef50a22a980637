#include "JsonRows.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include <QDate>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>

namespace cli {

namespace {

QString fourDecimals(double d) {
    return QString::number(d, 'f', 4);
}

QString jsonValue(const QVariant& v, ql::FieldType type) {
    if (ql::IsNull(v)) return QStringLiteral("null");
    if (v.userType() == qMetaTypeId<ql::Currency>()) return v.value<ql::Currency>().toFixed4();
    switch (type) {
    case ql::FieldType::Boolean:
        return v.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case ql::FieldType::Byte:
    case ql::FieldType::Integer:
    case ql::FieldType::Long:
        return QString::number(v.toLongLong());
    case ql::FieldType::Single:
        return fourDecimals(static_cast<double>(v.toFloat()));
    case ql::FieldType::Double:
        return fourDecimals(v.toDouble());
    case ql::FieldType::Date:
        if (v.typeId() == QMetaType::QDateTime && v.toDateTime().time() != QTime(0, 0))
            return jsonString(v.toDateTime().toString(Qt::ISODate));
        return jsonString(v.toDate().toString(Qt::ISODate));
    default:
        break;
    }
    // Columns of expressions carry no declared type: go by the value.
    switch (v.typeId()) {
    case QMetaType::Bool:
        return v.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QString::number(v.toLongLong());
    case QMetaType::Float:
    case QMetaType::Double:
        return fourDecimals(v.toDouble());
    default:
        return jsonString(v.toString());
    }
}

} // namespace

QString jsonVariant(const QVariant& value) {
    if (value.typeId() == QMetaType::QDate) return jsonString(value.toDate().toString(Qt::ISODate));
    return jsonValue(value, ql::FieldType::Memo);
}

QString jsonString(const QString& text) {
    const QByteArray doc = QJsonDocument(QJsonArray{QJsonValue(text)}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(doc.mid(1, doc.size() - 2));
}

QString jsonRow(const ql::Recordset& rs) {
    QStringList fields;
    for (int i = 0; i < rs.fieldCount(); ++i)
        fields << jsonString(rs.fieldName(i)) + QStringLiteral(": ") +
                      jsonValue(rs.value(i), rs.fieldType(i));
    return QLatin1Char('{') + fields.join(QStringLiteral(", ")) + QLatin1Char('}');
}

QString jsonRows(ql::Database& db, const QString& sql, int indent) {
    auto rs = db.openRecordset(sql, ql::RecordsetType::Snapshot);
    QStringList rows;
    const QString pad(indent + 2, QLatin1Char(' '));
    for (; !rs->EOF_(); rs->MoveNext())
        rows << pad + jsonRow(*rs);
    rs->Close();
    if (rows.isEmpty()) return QStringLiteral("[]");
    return QStringLiteral("[\n") + rows.join(QStringLiteral(",\n")) + QLatin1Char('\n') +
           QString(indent, QLatin1Char(' ')) + QLatin1Char(']');
}

} // namespace cli
