#pragma once
// Queries into grid arrays, the name lists of grid columns, and sums over grid columns.
#include "Database.h"
#include "GridArray.h"
#include <QString>
#include <QVariant>

namespace ql {

// Loads sql (a snapshot of database) into array: rows 0 to count - 1 (one empty row for an empty
// query), columns 0 to lastColumn - 1. Currency cells in "currency" format, Single in "fixed", Long as
// they are, other numeric values in "fixed", the rest as they are; formatted numbers are right-aligned.
// Columns firstColumn to lastColumn - 1 are shown, the others hidden; editable is kept on the array.
// Errors are reported under "fillgridarray".
void fillgridarray(Database& database, const QString& sql, GridArray& array, bool editable, int lastColumn,
                   int firstColumn);

// Makes the column captioned column show names for stored ids: its value list becomes the rows of sql on
// databaseFile (value idField, name nameField, second value extraField when given), with a blank entry
// first when addBlank or when the query is empty.
void FillGridNames(GridArray& grid, const QString& table, const QString& column, const QString& idField,
                   const QString& nameField, const QString& databaseFile, const QString& sql, bool translate,
                   qint16 maxComboItems, bool comboOnly, const QString& extraField, bool validate,
                   bool addBlank);

// Null becomes 0; any other value stays.
QVariant NullToZero(const QVariant& value);

// True when value isn't numeric or doesn't fit the type: 3 Integer, 4 Long, 5 Currency, 6 Single,
// 7 Double; the lower bound is minus the upper one when isSigned, else 0. Other codes allow only 0.
bool IsOutOfRange(const QVariant& value, int typeCode, bool isSigned);

} // namespace ql
