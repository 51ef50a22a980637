#include "WorkPatternHistory.h"
#include "EarningKinds.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"

namespace ql::holidays {

QList<WorkPattern> WorkPatternsOf(Database& wage, qint32 employeeID) {
    EnsureHolidayTables(wage);
    // Each kept date through PatternOn, so that a pattern reads the same here as in the rules.
    QList<WorkPattern> out;
    const QVariantList dates = wage.firstColumn(
        QStringLiteral("SELECT FromDate FROM HolidayWorkPattern WHERE EmployeeID = %1 ORDER BY FromDate").arg(employeeID));
    for (const QVariant& v : dates) {
        if (IsNull(v) || !IsDate(v)) continue;
        if (const auto p = PatternOn(wage, employeeID, CDate(v))) out << *p;
    }
    return out;
}

void RemoveWorkPattern(Database& wage, qint32 employeeID, const QDate& from) {
    EnsureHolidayTables(wage);
    wage.execute(QStringLiteral("DELETE FROM HolidayWorkPattern WHERE EmployeeID = ? AND FromDate = ?"),
                 {employeeID, from.toString(Qt::ISODate)});
}

} // namespace ql::holidays
