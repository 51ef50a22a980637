#include "PayRunRecord.h"
#include "PaydayEmployees.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <QHash>

namespace ql {

namespace {
void ensureTable(Database& wage) {
    if (wage.hasTable(QStringLiteral("QuillaryPayRunPays"))) return;
    wage.executeScript(QStringLiteral("CREATE TABLE IF NOT EXISTS QuillaryPayRunPays (\n"
                                      "    RunDate DATETIME NOT NULL,\n"
                                      "    WageID LONG NOT NULL,\n"
                                      "    PRIMARY KEY (RunDate, WageID)\n"
                                      ")"));
}
} // namespace

void RecordPayRunPays(Database& wage, const QDate& runDate, const QList<PayRunItem>& items) {
    ensureTable(wage);
    wage.beginWriteTrans();
    try {
        for (const PayRunItem& item : items)
            if (item.wageID != 0)
                wage.execute(QStringLiteral("INSERT OR IGNORE INTO QuillaryPayRunPays (RunDate, WageID) VALUES (?, ?)"),
                             {runDate.toString(Qt::ISODate), item.wageID});
        wage.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        throw;
    }
}

QList<PayRunItem> RecordedCommittedPays(Database& wage, const QDate& runDate) {
    QList<PayRunItem> items;
    if (!wage.hasTable(QStringLiteral("QuillaryPayRunPays"))) return items;
    QHash<qint32, QString> names;
    for (const Payee& p : CurrentPayees(wage))
        names.insert(p.employeeID, p.name);
    auto rs = wage.openRecordset(
        QStringLiteral("SELECT Wages.WageID, Wages.EmployeeID, Wages.Reference, Wages.[Date] FROM QuillaryPayRunPays "
                       "INNER JOIN Wages ON Wages.WageID = QuillaryPayRunPays.WageID WHERE "
                       "QuillaryPayRunPays.RunDate = '%1' AND Wages.Reference IS NOT NULL ORDER BY Wages.WageID")
            .arg(runDate.toString(Qt::ISODate)),
        RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        PayRunItem item;
        item.wageID = CLng(rs->value(QStringLiteral("WageID")));
        item.employeeID = CLng(rs->value(QStringLiteral("EmployeeID")));
        item.reference = CStr(rs->value(QStringLiteral("Reference"))).trimmed();
        item.payDate = CDate(rs->value(QStringLiteral("Date")));
        item.name = names.value(item.employeeID, QStringLiteral("Employee %1").arg(item.employeeID));
        if (!item.reference.isEmpty()) items << item;
    }
    rs->Close();
    return items;
}

QString PaySlipFileName(const PayRunItem& item) {
    QString name = QStringLiteral("Payslip %1 %2").arg(item.reference, item.name);
    static const QString refused = QStringLiteral("/\\:*?\"<>|");
    for (QChar& c : name)
        if (refused.contains(c) || c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u'_';
    name = name.simplified();
    if (name.size() > 120) name = name.left(120).trimmed();
    return name + QStringLiteral(".pdf");
}

} // namespace ql
