#include "PayLineFigures.h"
#include "runtime/Convert.h"

namespace ql {

namespace {
Currency money(const QVariant& v) {
    return IsNull(v) ? Currency() : CCur(v);
}
// The lines' amounts added up exactly, as Currency.
Currency sum(Database& wage, const QString& table, const QString& column, qint32 wageID) {
    Currency total;
    for (const QVariant& v : wage.firstColumn(
             QStringLiteral("SELECT [%1] FROM %2 WHERE WageID = %3").arg(column, table).arg(wageID)))
        total += money(v);
    return total;
}
} // namespace

bool FiguresFromLines(Database& wage, qint32 wageID, LineFigures& figures) {
    const int payments =
        wage.scalar(QStringLiteral("SELECT count(*) FROM PaymentDetails WHERE WageID = %1").arg(wageID)).toInt();
    const int taxLines =
        wage.scalar(QStringLiteral("SELECT count(*) FROM TaxDetails WHERE WageID = %1").arg(wageID)).toInt();
    if (payments == 0 || taxLines == 0) return false;
    LineFigures f;
    f.totalTaxable = sum(wage, QStringLiteral("PaymentDetails"), QStringLiteral("Payment"), wageID) +
                     sum(wage, QStringLiteral("TaxAllowDetails"), QStringLiteral("TaxableAllow"), wageID);
    f.paye = sum(wage, QStringLiteral("TaxDetails"), QStringLiteral("PAYE"), wageID);
    f.nonTaxAllow = sum(wage, QStringLiteral("NonTaxAllowDetails"), QStringLiteral("NonTaxAllow"), wageID);
    f.deductions = sum(wage, QStringLiteral("DeductionDetails"), QStringLiteral("Deductions"), wageID);
    f.takeHome = f.totalTaxable - f.paye + f.nonTaxAllow - f.deductions;
    figures = f;
    return true;
}

LineFigures StoredFigures(Database& wage, qint32 wageID) {
    LineFigures f;
    const QVariantList row = wage.firstRow(
        QStringLiteral("SELECT TotalTaxable, PAYE, NonTaxAllow, Deductions, TakeHome FROM Wages WHERE WageID = %1")
            .arg(wageID));
    if (row.size() < 5) return f;
    f.totalTaxable = money(row.at(0));
    f.paye = money(row.at(1));
    f.nonTaxAllow = money(row.at(2));
    f.deductions = money(row.at(3));
    f.takeHome = money(row.at(4));
    return f;
}

namespace {
bool wholeCents(Currency c) {
    return c.raw() % 100 == 0;
}
} // namespace

LineFigures FiguresInLine(const LineFigures& stored, const LineFigures& lines) {
    // A figure whose lines add up to whole cents is that sum; lines with parts of a cent were rounded
    // by the save that stored the figure, which stays.
    LineFigures f = stored;
    auto take = [](Currency& figure, Currency sum) {
        if (wholeCents(sum)) figure = sum;
    };
    take(f.totalTaxable, lines.totalTaxable);
    take(f.paye, lines.paye);
    take(f.nonTaxAllow, lines.nonTaxAllow);
    take(f.deductions, lines.deductions);
    f.takeHome = f.totalTaxable - f.paye + f.nonTaxAllow - f.deductions;
    return f;
}

bool BringFiguresInLine(Database& wage, qint32 wageID) {
    LineFigures lines;
    wage.beginWriteTrans();
    try {
        if (!FiguresFromLines(wage, wageID, lines) ||
            StoredFigures(wage, wageID) == FiguresInLine(StoredFigures(wage, wageID), lines)) {
            wage.commitTrans();
            return false;
        }
        lines = FiguresInLine(StoredFigures(wage, wageID), lines);
        wage.execute(QStringLiteral("UPDATE Wages SET TotalTaxable = ?, PAYE = ?, NonTaxAllow = ?, Deductions = ?, "
                                    "TakeHome = ? WHERE WageID = ? AND Reference IS NULL"),
                     {lines.totalTaxable.toDouble(), lines.paye.toDouble(), lines.nonTaxAllow.toDouble(),
                      lines.deductions.toDouble(), lines.takeHome.toDouble(), wageID});
        wage.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        throw;
    }
    return true;
}

} // namespace ql
