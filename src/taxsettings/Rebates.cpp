#include "Rebates.h"
#include "data/Recordset.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "frame/Texts.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"
#include <QSet>
#include <cfloat>

namespace ql {

namespace {

const QStringList kColumnNames{QStringLiteral("RebateID"), QStringLiteral("Rebate"),
                               QStringLiteral("Heading"),  QStringLiteral("Rate"),
                               QStringLiteral("Quantity"), QStringLiteral("Country")};

void rebateMessage(const QString& text) {
    ShowMessage(text, msg::OKOnly, Firm(), QStringLiteral("An Error has Occurred"), QString(),
                msg::Information, true);
}

QString cellText(const GridArray& grid, int row, int column) {
    const QVariant v = grid.value(row, column);
    return IsNull(v) ? QString() : CStr(v);
}

} // namespace

RebatesForm::RebatesForm() = default;
RebatesForm::~RebatesForm() = default;

QStringList RebatesForm::BooleanValueItems() {
    return {QStringLiteral("True"), QStringLiteral("False")};
}
QStringList RebatesForm::AddBooleanPictures() {
    return {QStringLiteral("ticked"), QStringLiteral("unticked")};
}

void RebatesForm::Form_Load(const QString& query, const QString& path, const QString& key) {
    rebatesQuery = query;
    databasePath = path;
    keyColumn = key;
    countryCode = QString::number(CountryPhone());
    database.open(path);
    auto rs = database.openRecordset(query, RecordsetType::Snapshot);
    highestColumn = rs->fieldCount() - 1;
    rowCount = 0;
    if (!rs->EOF_()) {
        rs->MoveLast();
        rowCount = rs->RecordCount();
        rs->MoveFirst();
    }
    tgrd_data.resize(rowCount, highestColumn + 1);
    for (int row = 0; row < rowCount; ++row, rs->MoveNext()) {
        for (int column = 0; column <= highestColumn; ++column) {
            skipErrors([&] {
                const QVariant v = rs->value(column);
                // The grid shows Quantity through its value items.
                if (column == QuantityColumn)
                    tgrd_data.setValue(row, column,
                                       !IsNull(v) && !CBool(v) ? QStringLiteral("false")
                                                               : QStringLiteral("true"));
                else
                    tgrd_data.setValue(row, column, v);
            });
        }
    }
    rs->Close();
    NameRebateCols();
}

void RebatesForm::NameRebateCols() {
    tgrd_data.setHeadings(kColumnNames);
    GridColumn& quantity = tgrd_data.column(QuantityColumn);
    quantity.valueItems.clear();
    const QStringList items = BooleanValueItems();
    const QStringList pictures = AddBooleanPictures();
    for (int i = 0; i < items.size(); ++i)
        quantity.valueItems.append(GridValueItem{items.at(i), items.at(i), pictures.at(i)});
    quantity.presentation = 2;
    GridColumn& heading = tgrd_data.column(HeadingColumn);
    heading.valueItems.clear();
    heading.presentation = 2;
    const QString order = CodeOrder() ? QStringLiteral("Order by [Secondary Codes ID];")
                                      : QStringLiteral("Order by [Cached Name];");
    auto codes = database.openRecordset(
        QStringLiteral("SELECT [Secondary Codes ID], [Cached Name] FROM [Secondary Codes] ") + order,
        RecordsetType::Snapshot);
    for (; !codes->EOF_(); codes->MoveNext())
        heading.valueItems.append(GridValueItem{codes->value(0), codes->value(1).toString(), QVariant()});
    codes->Close();
    tgrd_data.column(RebateIDColumn).visible = false;
    tgrd_data.column(CountryColumn).visible = false;
}

bool RebatesForm::storeCell(int row, int column, const QString& text) {
    switch (column) {
    case RebateColumn:
        if (text.isEmpty()) return false;
        tgrd_data.setValue(row, column, text.left(30));
        return true;
    case HeadingColumn:
        if (!IsNumeric(text) || CDbl(text) < 0 || CDbl(text) > 2147483647.0) return false;
        break;
    case RateColumn:
        if (!IsNumeric(text) || CDbl(text) < 0 || CDbl(text) > 3.4e+38) return false;
        break;
    case QuantityColumn:
        rememberedText = cellText(tgrd_data, row, column);
        tgrd_data.setValue(row, column, text);
        SetBoolean(row);
        return true;
    default:
        break;
    }
    tgrd_data.setValue(row, column, text);
    return true;
}

void RebatesForm::quantityClick(int row) {
    rememberedText = cellText(tgrd_data, row, QuantityColumn);
    const QStringList items = BooleanValueItems();
    int match = -1;
    for (int i = 0; i < items.size(); ++i)
        if (items.at(i).compare(rememberedText.trimmed(), Qt::CaseInsensitive) == 0) match = i;
    // The grid steps to the next value item; a text that is none of them leaves a blank.
    tgrd_data.setValue(row, QuantityColumn, match < 0 ? QString() : items.at((match + 1) % items.size()));
    SetBoolean(row);
}

void RebatesForm::SetBoolean(int row) {
    if (!cellText(tgrd_data, row, QuantityColumn).trimmed().isEmpty()) return;
    tgrd_data.setValue(row, QuantityColumn,
                       rememberedText == QLatin1String("True") ? QStringLiteral("False")
                                                               : QStringLiteral("True"));
}

qint32 RebatesForm::keyOf(int row) const {
    const QVariant v = tgrd_data.value(row, RebateIDColumn);
    return !IsNull(v) && IsNumeric(v) ? CLng(v) : 0;
}

int RebatesForm::cmd_Add(int currentRow) {
    const bool atEnd = tgrd_data.rowCount() == 0 || currentRow < 0 || currentRow >= tgrd_data.rowCount() ||
                       keyOf(currentRow) == 0;
    const int row = atEnd ? tgrd_data.rowCount() : currentRow + 1;
    tgrd_data.insertRow(row);
    tgrd_data.setValue(row, QuantityColumn, QStringLiteral("False"));
    rowCount = tgrd_data.rowCount();
    return row;
}

bool RebatesForm::cmd_Delete(int currentRow) {
    if (highestColumn < 0 || tgrd_data.rowCount() == 0) return false;
    const int row = currentRow >= 0 && currentRow < tgrd_data.rowCount() ? currentRow : 0;
    const QString name = cellText(tgrd_data, row, RebateColumn);
    const qint16 answer =
        ShowMessage(TranslateText(QStringLiteral("Delete |0|?"), QStringList{name, labelText}), msg::YesNo,
                    TranslateText(QStringLiteral("Delete |1|"), QStringList{name, labelText}),
                    QStringLiteral("Please Confirm"), QString(), 4, true);
    if (answer != msg::Yes) return false;
    tgrd_data.deleteRow(row);
    rowCount = tgrd_data.rowCount();
    return true;
}

void RebatesForm::Form_Unload() {
    if (m_unloaded) return;
    m_unloaded = true;
    skipErrors([&] {
        if (database.isOpen() && highestColumn >= 0) SaveData();
    });
    skipErrors([&] { database.close(); });
}

bool RebatesForm::SaveData() {
    bool result = false;
    std::unique_ptr<Recordset> rs;
    try {
        rs = database.openRecordset(rebatesQuery, RecordsetType::Dynaset);
        for (int row = 0; row < tgrd_data.rowCount(); ++row) {
            const qint32 key = keyOf(row);
            if (key >= 1) {
                rs->FindFirst(QStringLiteral("[") + keyColumn + QStringLiteral("]=") + QString::number(key));
                if (rs->NoMatch()) {
                    rebateMessage(
                        QStringLiteral("Description - An unknow error was generated in frmRebates.Savedata"));
                    continue;
                }
                rs->Edit();
                SaveValues(*rs, row);
            } else {
                rs->AddNew();
                if (SaveValues(*rs, row)) {
                    rs->MoveLast();
                    tgrd_data.setValue(row, RebateIDColumn, rs->value(keyColumn));
                }
            }
        }
        // A table row whose key stands in no grid row was deleted in the grid.
        QSet<qint32> kept;
        for (int row = 0; row < tgrd_data.rowCount(); ++row)
            kept.insert(keyOf(row));
        bool inUse = false;
        if (!rs->EOF_() || !rs->BOF()) rs->MoveFirst();
        for (; !rs->EOF_(); rs->MoveNext()) {
            if (kept.contains(CLng(rs->value(keyColumn)))) continue;
            try {
                rs->Delete();
            } catch (const VbError& e) {
                if (e.number() != err::RowInUse) throw;
                inUse = true;
            }
        }
        if (inUse) rebateMessage(QStringLiteral("Database error, deletion cancelled!"));
        result = true;
        rs->Close();
    } catch (const VbError& e) {
        ShowSettingsError(e, QStringLiteral("frm_rebates.SaveData"));
    }
    return result;
}

bool RebatesForm::SaveValues(Recordset& rs, int row) {
    for (int field = 1; field <= highestColumn; ++field) {
        skipErrors([&] {
            const QVariant cell = tgrd_data.value(row, field);
            switch (field) {
            case RebateColumn:
                rs.setValue(field, IsNull(cell) ? QVariant() : QVariant(CStr(cell)));
                break;
            case HeadingColumn:
                rs.setValue(field, CLng(cell));
                break;
            case RateColumn:
                rs.setValue(field, CSng(cell));
                break;
            case QuantityColumn:
                rs.setValue(field, CBool(cell));
                break;
            case CountryColumn:
                rs.setValue(field, countryCode);
                break;
            default:
                rebateMessage(QStringLiteral("Something wrong!!"));
                break;
            }
        });
    }
    try {
        rs.Update();
        return true;
    } catch (const VbError& e) {
        skipErrors([&] { rs.CancelUpdate(); });
        if (e.number() == err::DuplicateKey)
            rebateMessage(QStringLiteral("None unique entry discarded"));
        else if (e.number() == err::RequiredField)
            rebateMessage(QStringLiteral("Required field is missing"));
        else
            ShowSettingsError(e, QStringLiteral("frm_Rebates.SaveValues"));
    }
    return false;
}

void EnsureRebatesTable(Database& farm) {
    farm.executeScript(QStringLiteral(R"SQL(
CREATE TABLE IF NOT EXISTS Rebates (
    RebateID INTEGER PRIMARY KEY AUTOINCREMENT,
    Rebate TEXT(30) NOT NULL,
    Heading LONG DEFAULT 0,
    Rate SINGLE DEFAULT 0,
    Quantity YESNO DEFAULT 0,
    Country TEXT(10)
);
CREATE UNIQUE INDEX IF NOT EXISTS RebatesCountryName ON Rebates(Country, Rebate);
)SQL"));
}

QString FarmRebatesQuery() {
    return QStringLiteral(
               "SELECT RebateID, Rebate, Heading, Rate, Quantity, Country FROM Rebates WHERE Country = '") +
           QString::number(CountryPhone()) + QStringLiteral("' ORDER BY Rebate");
}

} // namespace ql
