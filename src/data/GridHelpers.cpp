#include "GridHelpers.h"
#include "Recordset.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

// A cell as the grid shows it, by the type of the query's column.
QVariant gridCell(const QVariant& v, FieldType type, bool& rightAligned) {
    if (IsNull(v)) return v;
    switch (type) {
    case FieldType::Currency:
        rightAligned = true;
        return Format(v, QStringLiteral("currency"));
    case FieldType::Single:
        rightAligned = true;
        return Format(v, QStringLiteral("fixed"));
    case FieldType::Long:
        return v;
    default:
        if (v.typeId() != QMetaType::QDate && v.typeId() != QMetaType::QDateTime && IsNumeric(v)) {
            rightAligned = true;
            return Format(v, QStringLiteral("fixed"));
        }
        return v;
    }
}

bool cellEquals(const QVariant& cell, const QVariant& key) {
    if (IsNull(cell) || IsNull(key)) return false;
    if (IsNumeric(cell) && IsNumeric(key)) return CDbl(cell) == CDbl(key);
    return CStr(cell) == CStr(key);
}

} // namespace

void fillgridarray(Database& database, const QString& sql, GridArray& array, bool editable, int lastColumn,
                   int firstColumn) {
    trap(QStringLiteral("fillgridarray"), [&] {
        auto rs = database.openRecordset(sql, RecordsetType::Snapshot);
        int count = 1;
        if (!rs->EOF_()) {
            rs->MoveLast();
            count = rs->RecordCount();
            rs->MoveFirst();
        }
        array.resize(count, lastColumn);
        for (int c = 0; c < lastColumn; ++c)
            array.column(c).visible = true;
        for (int r = 0; !rs->EOF_(); ++r) {
            for (int c = 0; c < lastColumn; ++c) {
                bool right = false;
                array.setValue(r, c, gridCell(rs->value(c), rs->fieldType(c), right));
                if (right) array.column(c).rightAligned = true;
            }
            rs->MoveNext();
        }
        rs->Close();
        for (int c = 0; c < std::max(lastColumn, array.columnCount()); ++c)
            array.column(c).visible = c >= firstColumn && c < lastColumn;
        array.setEditable(editable);
    });
}

void FillGridNames(GridArray& grid, const QString& table, const QString& column, const QString& idField,
                   const QString& nameField, const QString& databaseFile, const QString& sql, bool translate,
                   qint16 maxComboItems, bool comboOnly, const QString& extraField, bool validate,
                   bool addBlank) {
    Database db;
    try {
        db.open(databaseFile);
        auto rs = db.openRecordset(sql, RecordsetType::Snapshot);
        const int index = grid.columnByCaption(column);
        if (index < 0)
            raiseError(err::SubscriptOutOfRange, QStringLiteral("Quillary"),
                       QStringLiteral("The grid has no column '%1'.").arg(column));
        GridColumn& col = grid.column(index);
        col.valueItems.clear();
        col.presentation = comboOnly ? 2 : 3;
        col.translate = translate;
        col.validate = validate;
        col.maxComboItems = maxComboItems;
        if (addBlank || rs->EOF_()) col.valueItems.append(GridValueItem{QString(""), QString(), QVariant()});
        while (!rs->EOF_()) {
            const QVariant id = rs->value(idField);
            if (!IsNull(id)) {
                const QVariant name = rs->value(nameField);
                GridValueItem item{id, IsNull(name) ? QString() : CStr(name), QVariant()};
                if (!extraField.isEmpty()) item.extra = rs->value(extraField);
                col.valueItems.append(item);
            }
            rs->MoveNext();
        }
        rs->Close();
        db.close();
    } catch (const VbError& e) {
        db.close();
        const QString text = e.number() == err::MissingObject
                                 ? QStringLiteral("Database out of date, problem reading ") + table +
                                       QStringLiteral(", ") + idField + QStringLiteral(", ") + nameField
                                 : e.description() + u' ' + QString::number(e.number()) +
                                       QStringLiteral(" - ") + column + QStringLiteral(", ") + idField +
                                       QStringLiteral(", ") + nameField;
        ShowMessage(text, msg::OKOnly, Firm(), QStringLiteral("An Error has Occurred"), QString(),
                    msg::Information, true);
    }
}

QVariant NullToZero(const QVariant& value) {
    return IsNull(value) ? QVariant(0) : value;
}

float SumGridColumn(const GridArray& array, int column) {
    float total = 0.0f;
    for (int r = 0; r < array.rowCount(); ++r) {
        const QVariant cell = array.value(r, column);
        if (!IsNull(cell) && IsNumeric(cell)) total = static_cast<float>(double(total) + CDbl(cell));
    }
    return total;
}

float SumGridColumnWhere(const GridArray& array, int sumColumn, int keyColumn, const QVariant& key) {
    float total = 0.0f;
    for (int r = 0; r < array.rowCount(); ++r) {
        const QVariant cell = array.value(r, sumColumn);
        if (cellEquals(array.value(r, keyColumn), key) && !IsNull(cell) && IsNumeric(cell))
            total = static_cast<float>(double(total) + CDbl(cell));
    }
    return total;
}

bool IsOutOfRange(const QVariant& value, int typeCode, bool isSigned) {
    if (IsNull(value) || !IsNumeric(value)) return true;
    double upper = 0;
    switch (typeCode) {
    case 3:
        upper = 32767;
        break;
    case 4:
        upper = 2147483647;
        break;
    case 5:
        upper = 922337203685471;
        break;
    case 6:
        upper = 3.4E+38;
        break;
    case 7:
        upper = 1.7E+308;
        break;
    default:
        upper = 0;
    }
    const double lower = isSigned ? -upper : 0;
    const double v = CDbl(value);
    return v < lower || v > upper;
}

} // namespace ql
