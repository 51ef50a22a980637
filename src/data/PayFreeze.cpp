#include "PayFreeze.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"

namespace ql {

QString deletedPaysTableScript();

namespace {

const char* const kLineTables[] = {"PaymentDetails",   "TaxAllowDetails",     "NonTaxAllowDetails",
                                   "DeductionDetails", "ContributionDetails", "TaxDetails"};

QString frozen(const QString& id) {
    return QStringLiteral("(coalesce((SELECT Reference FROM Wages WHERE WageID = %1), '') <> '' OR EXISTS (SELECT 1 "
                          "FROM QuillaryHeldPays WHERE WageID = %1))")
        .arg(id);
}

QString raise() {
    return QStringLiteral("SELECT RAISE(ABORT, '%1');").arg(frozenPayText());
}

// The figures a committed or held pay keeps.
// The pay's Date is not among them: the calendar may move a committed pay to another day, which changes
// neither its posting nor its payment date.
const char* const kFigures[] = {"EmployeeID", "Rate",        "TaxCode",
                                "OneOff",     "Hours",      "Gross",       "TaxAllow",
                                "TotalTaxable", "PAYE",     "NonTaxAllow", "Deductions",
                                "TakeHome",   "KiwiSaverContribution", "ESCTDeductions", "TaxCreditKiwiSaver"};

QString guardScript() {
    QStringList changed;
    for (const char* f : kFigures)
        changed << QStringLiteral("NEW.[%1] IS NOT OLD.[%1]").arg(QString::fromLatin1(f));
    QString script = QStringLiteral(
        "CREATE TABLE IF NOT EXISTS QuillaryHeldPays (\n"
        "    WageID INTEGER PRIMARY KEY,\n"
        "    Reference TEXT(50),\n"
        "    HeldAt DATETIME\n"
        ");\n");
    script += deletedPaysTableScript() + QStringLiteral(";\n");
    script += QStringLiteral(
                  "CREATE TRIGGER IF NOT EXISTS QuillaryFrozenPay BEFORE UPDATE ON Wages WHEN "
                  "(coalesce(OLD.Reference, '') <> '' OR EXISTS (SELECT 1 FROM QuillaryHeldPays WHERE WageID = "
                  "OLD.WageID)) AND (%1 OR (coalesce(OLD.Reference, '') <> '' AND (NEW.Reference IS NOT "
                  "OLD.Reference OR (OLD.PaymentDate IS NOT NULL AND NEW.PaymentDate IS NOT OLD.PaymentDate)))) "
                  "BEGIN %2 END;\n")
                  .arg(changed.join(QStringLiteral(" OR ")), raise());
    for (const char* t : kLineTables) {
        const QString table = QString::fromLatin1(t);
        script += QStringLiteral("CREATE TRIGGER IF NOT EXISTS QuillaryFrozen%1Insert BEFORE INSERT ON %1 WHEN "
                                 "%2 BEGIN %3 END;\n")
                      .arg(table, frozen(QStringLiteral("NEW.WageID")), raise());
        script += QStringLiteral("CREATE TRIGGER IF NOT EXISTS QuillaryFrozen%1Update BEFORE UPDATE ON %1 WHEN "
                                 "%2 OR %3 BEGIN %4 END;\n")
                      .arg(table, frozen(QStringLiteral("NEW.WageID")), frozen(QStringLiteral("OLD.WageID")),
                           raise());
        // A line goes with its pay when the pay is deleted, once the pay's record is kept.
        script += QStringLiteral("CREATE TRIGGER IF NOT EXISTS QuillaryFrozen%1Delete BEFORE DELETE ON %1 WHEN "
                                 "%2 AND NOT EXISTS (SELECT 1 FROM QuillaryDeletedPays WHERE WageID = OLD.WageID) "
                                 "BEGIN %3 END;\n")
                      .arg(table, frozen(QStringLiteral("OLD.WageID")), raise());
    }
    // A deleted pay leaves no hold behind for a pay that might take its number.
    script += QStringLiteral("CREATE TRIGGER IF NOT EXISTS QuillaryHeldPayDeleted AFTER DELETE ON Wages BEGIN "
                             "DELETE FROM QuillaryHeldPays WHERE WageID = OLD.WageID; END;\n");
    return script;
}

int triggerCount() {
    return 2 + 3 * int(std::size(kLineTables));
}

} // namespace

QString deletedPaysTableScript() {
    return QStringLiteral("CREATE TABLE IF NOT EXISTS QuillaryDeletedPays (\n"
                          "    WageID LONG NOT NULL PRIMARY KEY,\n"
                          "    EmployeeID LONG,\n"
                          "    [Date] DATETIME,\n"
                          "    Reference TEXT(50),\n"
                          "    PaymentDate DATETIME,\n"
                          "    Hours SINGLE,\n"
                          "    TotalTaxable CURRENCY,\n"
                          "    PAYE CURRENCY,\n"
                          "    NonTaxAllow CURRENCY,\n"
                          "    Deductions CURRENCY,\n"
                          "    TakeHome CURRENCY,\n"
                          "    ReversalID LONG DEFAULT 0,\n"
                          "    DeletedAt DATETIME\n"
                          ")");
}

QString frozenPayText() {
    return QStringLiteral("This pay has already been committed or posted to the Cashbook, so its details "
                          "cannot be altered.");
}

void EnsurePayFreeze(Database& wage) {
    const QVariant have = wage.scalar(QStringLiteral(
        "SELECT count(*) FROM sqlite_master WHERE (type = 'trigger' AND name LIKE 'QuillaryFrozen%') OR "
        "(type = 'trigger' AND name = 'QuillaryHeldPayDeleted') OR (type = 'table' AND name IN "
        "('QuillaryHeldPays', 'QuillaryDeletedPays'))"));
    if (have.toInt() == triggerCount() + 2) return;
    if (!wage.hasTable(QStringLiteral("Wages"))) return;
    wage.beginTrans();
    try {
        wage.executeScript(guardScript());
        wage.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        throw;
    }
}

bool PayFrozen(Database& wage, qint32 wageID) {
    if (!StoredReference(wage, wageID).isEmpty()) return true;
    if (!wage.hasTable(QStringLiteral("QuillaryHeldPays"))) return false;
    return !IsNull(wage.scalar(QStringLiteral("SELECT WageID FROM QuillaryHeldPays WHERE WageID = %1").arg(wageID)));
}

QString StoredReference(Database& wage, qint32 wageID) {
    const QVariant v = wage.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(wageID));
    return IsNull(v) ? QString() : v.toString();
}

void HoldPay(Database& wage, qint32 wageID, const QString& reference) {
    EnsurePayFreeze(wage);
    wage.beginWriteTrans();
    try {
        const QVariantList row =
            wage.firstRow(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(wageID));
        if (row.isEmpty())
            raiseError(3021, QStringLiteral("Quillary"),
                       QStringLiteral("This pay is no longer there: another user or program deleted it."));
        if (!IsNull(row.at(0)) && !row.at(0).toString().isEmpty())
            raiseError(3197, QStringLiteral("Quillary"),
                       QStringLiteral("This pay was committed meanwhile by another user or program, with the "
                                      "reference %1.")
                           .arg(row.at(0).toString()));
        wage.execute(QStringLiteral("INSERT OR REPLACE INTO QuillaryHeldPays (WageID, Reference, HeldAt) VALUES "
                                    "(?, ?, datetime('now'))"),
                     {wageID, reference});
        wage.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        throw;
    }
}

void ReleasePay(Database& wage, qint32 wageID) {
    if (!wage.hasTable(QStringLiteral("QuillaryHeldPays"))) return;
    wage.execute(QStringLiteral("DELETE FROM QuillaryHeldPays WHERE WageID = %1").arg(wageID));
}

} // namespace ql
