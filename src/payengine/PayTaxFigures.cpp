#include "PayTaxFigures.h"
#include "data/Database.h"
#include "runtime/Convert.h"

namespace ql {

void EnsurePayTaxFiguresTable(Database& wage) {
    if (wage.hasTable(QStringLiteral("PayTaxFigures"))) return;
    // Amounts in ten-thousandths, as Currency holds them.
    wage.executeScript(QStringLiteral(
        "CREATE TABLE IF NOT EXISTS PayTaxFigures ("
        " WageID LONG PRIMARY KEY REFERENCES Wages(WageID) ON DELETE CASCADE,"
        " GivingCredit LONG DEFAULT 0, NotLiable LONG DEFAULT 0, LowestRate LONG DEFAULT 0);"));
}

PayTaxFigures LoadPayTaxFigures(Database& wage, qint32 wageID) {
    PayTaxFigures f;
    if (!wage.hasTable(QStringLiteral("PayTaxFigures"))) return f;
    const QVariantList row = wage.firstRow(
        QStringLiteral("SELECT GivingCredit, NotLiable, LowestRate FROM PayTaxFigures WHERE WageID = %1").arg(wageID));
    if (row.size() < 3) return f;
    f.givingCredit = Currency::fromRaw(row.at(0).toLongLong());
    f.notLiable = Currency::fromRaw(row.at(1).toLongLong());
    f.lowestRate = row.at(2).toInt() != 0;
    return f;
}

void SavePayTaxFigures(Database& wage, qint32 wageID, const PayTaxFigures& f) {
    if (f.empty()) {
        if (wage.hasTable(QStringLiteral("PayTaxFigures"))) wage.execute(QStringLiteral("DELETE FROM PayTaxFigures WHERE WageID = ?"), {wageID});
        return;
    }
    EnsurePayTaxFiguresTable(wage);
    wage.execute(QStringLiteral("INSERT OR REPLACE INTO PayTaxFigures (WageID, GivingCredit, NotLiable, LowestRate) "
                                "VALUES (?, ?, ?, ?)"),
                 {wageID, qint64(f.givingCredit.raw()), qint64(f.notLiable.raw()), f.lowestRate ? 1 : 0});
}

} // namespace ql
