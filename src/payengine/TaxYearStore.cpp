#include "TaxYearStore.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QHash>
#include <QMutex>

namespace ql {

namespace {

const QString kTable = QStringLiteral("TaxYearFigures");

[[noreturn]] void refuse(const QString& message) {
    throw VbError(5, QStringLiteral("TaxYear"), message);
}

// A stored period back to its figures: the row's JSON is one full period of its year.
TaxYearFigures parseRow(const QString& taxYear, const QString& starts, const QString& ends, const QString& figures) {
    QJsonObject root;
    root.insert(QStringLiteral("taxYear"), taxYear);
    root.insert(QStringLiteral("starts"), starts);
    root.insert(QStringLiteral("ends"), ends);
    QJsonObject period = QJsonDocument::fromJson(figures.toUtf8()).object();
    // Parsed as the first period of a year that starts on its own effective date.
    root.insert(QStringLiteral("starts"), period.value(QStringLiteral("effective")));
    root.insert(QStringLiteral("periods"), QJsonArray{period});
    TaxYearFigures f = ParseTaxYear(QJsonDocument(root).toJson(QJsonDocument::Compact)).first();
    f.starts = QDate::fromString(starts, Qt::ISODate);
    return f;
}

// Every pay asks for its period several times; a row's text parsed once is kept, keyed by the text.
TaxYearFigures fromRow(const QString& taxYear, const QString& starts, const QString& ends, const QString& figures) {
    static QMutex lock;
    static QHash<QString, TaxYearFigures> parsed;
    const QString key = taxYear + QLatin1Char('\n') + starts + QLatin1Char('\n') + ends + QLatin1Char('\n') + figures;
    {
        QMutexLocker hold(&lock);
        if (auto it = parsed.constFind(key); it != parsed.constEnd()) return *it;
    }
    TaxYearFigures f = parseRow(taxYear, starts, ends, figures);
    QMutexLocker hold(&lock);
    if (parsed.size() >= 256) parsed.clear();
    parsed.insert(key, f);
    return f;
}

void storePeriods(Database& wage, const QList<TaxYearFigures>& periods) {
    const TaxYearFigures& first = periods.first();
    const QString starts = first.starts.toString(Qt::ISODate), ends = first.ends.toString(Qt::ISODate);
    const QVariant overlapping = wage.scalar(
        QStringLiteral("SELECT TaxYear FROM %1 WHERE TaxYear <> '%2' AND Starts <= '%3' AND Ends >= '%4' LIMIT 1")
            .arg(kTable, QString(first.taxYear).replace(QLatin1Char('\''), QStringLiteral("''")), ends, starts));
    if (!IsNull(overlapping) && overlapping.isValid())
        refuse(QStringLiteral("The tax year %1 (%2 to %3) overlaps the stored tax year %4; nothing was imported.")
                   .arg(first.taxYear, starts, ends, CStr(overlapping)));
    wage.execute(QStringLiteral("DELETE FROM %1 WHERE TaxYear = ?").arg(kTable), {first.taxYear});
    for (const TaxYearFigures& f : periods)
        wage.execute(QStringLiteral("INSERT INTO %1 (EffectiveDate, TaxYear, Starts, Ends, Figures) "
                                    "VALUES (?, ?, ?, ?, ?)")
                         .arg(kTable),
                     {f.effective.toString(Qt::ISODate), f.taxYear, starts, ends,
                      QString::fromUtf8(TaxYearPeriodJson(f))});
}

QList<TaxYearFigures> readRows(Database& wage, const QString& where) {
    QList<TaxYearFigures> result;
    auto rs = wage.openRecordset(
        QStringLiteral("SELECT TaxYear, Starts, Ends, Figures FROM %1 %2 ORDER BY EffectiveDate").arg(kTable, where),
        RecordsetType::Snapshot);
    while (!rs->EOF_()) {
        result.append(fromRow(CStr(rs->value(0)), CStr(rs->value(1)), CStr(rs->value(2)), CStr(rs->value(3))));
        rs->MoveNext();
    }
    rs->Close();
    return result;
}

} // namespace

void EnsureTaxYearTables(Database& wage) {
    // Asked at every pay's calculation: one look at the schema, not a list of every table.
    const QVariant found = wage.scalar(
        QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = '%1' COLLATE NOCASE").arg(kTable));
    if (found.isValid() && !IsNull(found)) return;
    wage.executeScript(QStringLiteral("CREATE TABLE IF NOT EXISTS %1 ("
                                      " EffectiveDate TEXT(10) PRIMARY KEY,"
                                      " TaxYear TEXT(20) NOT NULL, Starts TEXT(10) NOT NULL, Ends TEXT(10) NOT NULL,"
                                      " Figures LONGTEXT NOT NULL);")
                           .arg(kTable));
    for (const QByteArray& file : ShippedTaxYearFiles()) storePeriods(wage, ParseTaxYear(file));
}

QList<TaxYearFigures> ImportTaxYear(Database& wage, const QByteArray& json) {
    const QList<TaxYearFigures> periods = ParseTaxYear(json);
    EnsureTaxYearTables(wage);
    const bool own = !wage.inTransaction();
    if (own) wage.beginTrans();
    try {
        storePeriods(wage, periods);
        if (own) wage.commitTrans();
    } catch (...) {
        if (own) wage.rollback();
        throw;
    }
    return periods;
}

QList<TaxYearFigures> StoredTaxYears(Database& wage) {
    EnsureTaxYearTables(wage);
    return readRows(wage, QString());
}

std::optional<TaxYearFigures> TaxYearInForce(Database& wage, const QDate& date) {
    if (!date.isValid()) return std::nullopt;
    EnsureTaxYearTables(wage);
    const QString d = date.toString(Qt::ISODate);
    const QList<TaxYearFigures> rows = readRows(
        wage, QStringLiteral("WHERE EffectiveDate = (SELECT Max(EffectiveDate) FROM %1 WHERE EffectiveDate <= '%2' "
                             "AND Ends >= '%2')")
                  .arg(kTable, d));
    if (rows.isEmpty()) return std::nullopt;
    return rows.first();
}

} // namespace ql
