#pragma once
// The three databases of the system as code: their tables, keys, indexes and cascades, a schema
// version per database (PRAGMA user_version), and opening with creation.
//
// Column types carry the engine's type names so that a recordset knows each column's type:
// CURRENCY, SINGLE, DOUBLE, LONG, SMALLINT (16-bit Integer), DATETIME, YESNO, TEXT(n), LONGTEXT
// (Memo); a Counter is INTEGER PRIMARY KEY AUTOINCREMENT.
#include "Database.h"
#include <QString>

namespace ql {

enum class DatabaseKind { Wage, Farm, Modules };

// Current schema version of each kind; a later change raises it and upgrades older files on open.
int schemaVersion(DatabaseKind kind);
// "payroll", "farm", "modules"
QString databaseKindName(DatabaseKind kind);

// Opens the database of the kind at path. A file that does not exist is created with its schema and
// the template rows (created is set true). A file that exists but is not a database of this kind
// (not SQLite, or without the kind's tables) raises a VbError naming the file, which is left untouched.
Database openOrCreate(DatabaseKind kind, const QString& path, bool* created = nullptr);
// Whether openOrCreate makes a missing payroll or farm file (it does unless told otherwise); when
// not, a missing file is an error that names it.
void setDataFilesCreated(bool created);

// The tables of each kind on an empty open database (no rows).
void createWageSchema(Database& db);
void createFarmSchema(Database& db);
void createModulesSchema(Database& db);
// The indexes of Wages that the pay list and the wage history read (also made by createWageSchema).
void createWageHistoryIndex(Database& db);

// The template rows of each kind (see Template*.cpp).
void addWageTemplate(Database& db);
void addFarmTemplate(Database& db);
void addModulesTemplate(Database& db);

} // namespace ql
