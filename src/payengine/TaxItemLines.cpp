#include "TaxItemLines.h"
#include "data/Database.h"
#include "runtime/Convert.h"

namespace ql {

QString TaxItemLineCondition(const QString& taxName) {
    const QString byTaxName = QStringLiteral("lower(DeductNames.TaxName) = '%1'").arg(taxName);
    if (taxName == taxitem::ChildSupport)
        return QStringLiteral("(%1 OR lower(DeductNames.DeductionName) = 'child support')").arg(byTaxName);
    return byTaxName;
}

qint32 TaxItemDeductID(Database& wage, const QString& taxName) {
    const QVariant id = wage.scalar(QStringLiteral("SELECT DeductNameID FROM DeductNames WHERE %1 "
                                                   "ORDER BY DeductNameID LIMIT 1")
                                        .arg(TaxItemLineCondition(taxName)));
    return id.isValid() && !IsNull(id) ? CLng(id) : 0;
}

void EnsureTaxItemDeductNames(Database& wage) {
    const struct {
        const QString& taxName;
        const char* name;
    } names[] = {{taxitem::PayrollGiving, "Payroll Giving"},
                 {taxitem::Commissioner, "Student Loan SLCIR"},
                 {taxitem::Borrower, "Student Loan SLBOR"}};
    for (const auto& n : names) {
        if (TaxItemDeductID(wage, n.taxName) != 0) continue;
        const qint64 id =
            wage.scalar(QStringLiteral("SELECT Coalesce(Max(DeductNameID), 0) + 1 FROM DeductNames")).toLongLong();
        // Amounts the method works out; no percentage, threshold or cap of the name's own.
        wage.execute(QStringLiteral("INSERT INTO DeductNames (DeductNameID, DeductionName, CountryPhone, TaxName, "
                                    "Percentage, LowerThreshold, UpperThreshold, MaxPercent) "
                                    "VALUES (?, ?, 64, ?, 0, 0, 0, 0)"),
                     {id, QString::fromLatin1(n.name), n.taxName});
    }
}

} // namespace ql
