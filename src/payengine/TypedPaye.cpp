#include "TypedPaye.h"
#include "runtime/Convert.h"

namespace ql {

void EnsureTypedPaye(Database& wage) {
    if (wage.hasTable(QStringLiteral("QuillaryTypedPaye"))) return;
    wage.executeScript(QStringLiteral(
        "CREATE TABLE IF NOT EXISTS QuillaryTypedPaye (\n"
        "    WageID INTEGER PRIMARY KEY,\n"
        "    PAYE CURRENCY\n"
        ");\n"
        "CREATE TRIGGER IF NOT EXISTS QuillaryTypedPayeGoes AFTER DELETE ON TaxDetails BEGIN "
        "DELETE FROM QuillaryTypedPaye WHERE WageID = OLD.WageID; END;\n"
        "CREATE TRIGGER IF NOT EXISTS QuillaryTypedPayeGoesWithPay AFTER DELETE ON Wages BEGIN "
        "DELETE FROM QuillaryTypedPaye WHERE WageID = OLD.WageID; END;\n"));
}

void RecordTypedPaye(Database& wage, qint32 wageID, Currency paye) {
    EnsureTypedPaye(wage);
    wage.execute(QStringLiteral("INSERT OR REPLACE INTO QuillaryTypedPaye (WageID, PAYE) VALUES (?, ?)"),
                 {wageID, paye.toDouble()});
}

std::optional<Currency> TypedPaye(Database& wage, qint32 wageID) {
    if (!wage.hasTable(QStringLiteral("QuillaryTypedPaye"))) return std::nullopt;
    const QVariantList row = wage.firstRow(
        QStringLiteral("SELECT t.PAYE, d.PAYE FROM QuillaryTypedPaye t JOIN TaxDetails d ON d.WageID = t.WageID "
                       "WHERE t.WageID = %1")
            .arg(wageID));
    // Only while the tax line still holds the typed figure.
    if (row.size() < 2 || IsNull(row.at(0)) || IsNull(row.at(1)) || CCur(row.at(0)) != CCur(row.at(1)))
        return std::nullopt;
    return CCur(row.at(0));
}

} // namespace ql
