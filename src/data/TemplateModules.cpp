// Template rows of a new modules database: the suite's menu options, the help numbers of the screens,
// and the equations (TemplateTaxEquations.cpp).
#include "Schema.h"
#include "TemplateRows.h"
#include "TemplateTaxEquations.h"

namespace ql {

void addModulesTemplate(Database& db) {
    insertRows(
        db, QStringLiteral("MenuOptions"),
        {QStringLiteral("MenuGroup"), QStringLiteral("Caption"), QStringLiteral("HelpFile"),
         QStringLiteral("HelpKind")},
        {
            {QStringLiteral("Modules"), QStringLiteral("Cashbook"), QString(""), 0},
            {QStringLiteral("Modules"), QStringLiteral("Address Book"), QString(""), 0},
            {QStringLiteral("Modules"), QStringLiteral("Livestock"), QString(""), 0},
            {QStringLiteral("Modules"), QStringLiteral("Quillary"), QString(""), 0},
            {QStringLiteral("Modules"), QStringLiteral("Exit"), QString(""), 0},
            {QStringLiteral("Tools"), QStringLiteral("Backup Data"), QString(""), 0},
            {QStringLiteral("Tools"), QStringLiteral("Restore Data"), QString(""), 0},
            {QStringLiteral("Tools"), QStringLiteral("Options"), QString(""), 0},
            {QStringLiteral("Reports"), QStringLiteral("Wage Reports"), QString(""), 0},
            {QStringLiteral("Reports"), QStringLiteral("Leave Reports"), QString(""), 0},
            {QStringLiteral("Help"), QStringLiteral("Quillary Help"), QStringLiteral("quillary.html"), 1},
            {QStringLiteral("Help"), QStringLiteral("Fernhold Help"), QStringLiteral("fernhold.html"), 2},
            {QStringLiteral("Closing"), QStringLiteral("Exit Fernhold"), QString(""), 0},
        });
    // The main screen is 7.
    insertRows(
        db, QStringLiteral("ScreenHelp"),
        {QStringLiteral("ScreenNumber"), QStringLiteral("HelpContextID"), QStringLiteral("HelpAltContextID")},
        {
            {7, 7000, 7001},
            {8, 8000, 8001},
            {9, 9000, 9001},
        });
    addTemplateTaxEquations(db);
}

} // namespace ql
