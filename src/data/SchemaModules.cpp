// The modules database: the equations, the suite's menu options and the help numbers of screens.
// ReportHeadings is optional and not created here; readers look for it in the table list first.
#include "Schema.h"

namespace ql {

void createModulesSchema(Database& db) {
    db.executeScript(QStringLiteral(R"SQL(
CREATE TABLE TaxEquations (
    TaxProcessID LONG,
    CountryPhone LONG DEFAULT 0,
    Equation TEXT(255)
);
CREATE INDEX TaxEquationsProcess ON TaxEquations(TaxProcessID, CountryPhone);
-- One row per menu entry, in MenuOptionID order. MenuGroup is "Modules", "Tools", "Reports" or "Help";
-- the row of group "Closing" holds the caption that replaces the last Modules entry.
CREATE TABLE MenuOptions (
    MenuOptionID INTEGER PRIMARY KEY AUTOINCREMENT,
    MenuGroup TEXT(20),
    Caption TEXT(100),
    HelpFile TEXT(255),
    HelpKind LONG DEFAULT 0
);
CREATE TABLE ScreenHelp (
    ScreenNumber LONG NOT NULL PRIMARY KEY,
    HelpContextID LONG DEFAULT 0,
    HelpAltContextID LONG DEFAULT 0
);
)SQL"));
}

} // namespace ql
