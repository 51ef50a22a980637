#pragma once
// The rebates grid without widgets: a table of rebates for the country of the installation, one row a
// rebate, over a query, a database and a key column given at run time. The grid is edited in memory;
// nothing reaches the table until the dialog closes, when SaveData writes every row back and deletes
// the rows deleted in the grid. frm_Rebates shows this object.
#include "data/Database.h"
#include "data/GridArray.h"
#include <QString>
#include <QStringList>

namespace ql {

class Recordset;

// Columns of the grid and of the table, in order.
enum RebateColumn {
    RebateIDColumn = 0,
    RebateColumn = 1,
    HeadingColumn = 2,
    RateColumn = 3,
    QuantityColumn = 4,
    CountryColumn = 5
};

class RebatesForm {
public:
    RebatesForm();
    ~RebatesForm();

    // The load: opens the database and the query, copies the rows into the grid and names the columns.
    // An empty query still gives the columns of its fields.
    void Form_Load(const QString& query, const QString& databasePath, const QString& keyColumn);

    // State, in the dialog's order.
    int highestColumn = -1; // the number of fields minus 1; -1 before a load
    QString rebatesQuery;
    QString databasePath;
    QString keyColumn;
    GridArray tgrd_data;
    Database database;
    int rowCount = 0;
    QString rememberedText; // column 4's text before an edit
    QString countryCode;
    QString labelText = QStringLiteral("Rebates"); // the dialog's label, named in the delete question

    void NameRebateCols();
    static QStringList BooleanValueItems();  // "True", "False"
    static QStringList AddBooleanPictures(); // the picture of each value item, in the same order

    // A cell typed by the user: false when refused (the grid stays in the cell). Column 1 is cut to 30
    // characters; column 2 must be a whole number from 0 to 2147483647, column 3 a number from 0 to
    // 3.4e+38.
    bool storeCell(int row, int column, const QString& text);
    // A click on the Quantity picture: the grid steps to the other value item; a blank cell takes the
    // opposite of what it held (SetBoolean).
    void quantityClick(int row);
    void SetBoolean(int row);

    // Adds a row behind the current one (at the end when the current row has no key yet), with
    // "False" in column 4; returns the new row.
    int cmd_Add(int currentRow);
    // Asks "Delete |0|?" for the current row (the first when none) and deletes it from the grid on Yes.
    // True when a row was deleted.
    bool cmd_Delete(int currentRow);
    // cmd_okay and the title bar's close: saves and releases. Failing steps are skipped; runs once.
    void Form_Unload();

    // Writes the grid to the table. True when it ran to its end.
    bool SaveData();
    // Writes the fields of one grid row into the recordset's current row and updates it; false when the
    // row was not stored.
    bool SaveValues(Recordset& rs, int row);

    // The key of a grid row: 0 when empty or no number.
    qint32 keyOf(int row) const;

private:
    bool m_unloaded = false;
};

// The rebates table of the farm database, made when an older file has none yet.
void EnsureRebatesTable(Database& farm);
// The query the program gives the dialog: the farm's rebates of this installation's country.
QString FarmRebatesQuery();

} // namespace ql
