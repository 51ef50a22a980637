#pragma once
// The demo farm or a fresh installation, pays written straight into the payroll database, and reads
// of both databases, for the black-box tests of the commit commands.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace qltest {

inline QJsonDocument parseJson(const QString& text) {
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(text.toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << text.toStdString();
    return doc;
}

inline QStringList args(std::initializer_list<const char*> list) {
    QStringList out;
    for (const char* a : list)
        out << QString::fromUtf8(a);
    return out;
}

// The databases of the documents folder the commands use (the caller's FERNHOLD_DOCUMENTS).
inline ql::Database openWage() {
    ql::Database db;
    db.open(ql::WageFileName());
    return db;
}
inline ql::Database openFarm() {
    ql::Database db;
    db.open(ql::DataFileName());
    return db;
}

// A pay added as the wage screen adds it; its WageID.
inline qint32 addPayByCli(const QString& documents, const QString& employeeID, const QString& date) {
    const CliResult r = runCli({QStringLiteral("add-pay"), employeeID, date}, documents);
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    return parseJson(r.out)
        .object()
        .value(QStringLiteral("Wages"))
        .toObject()
        .value(QStringLiteral("WageID"))
        .toInt();
}

// Copies of a pay with all its lines, a week apart after it; their WageIDs.
inline QList<qint32> clonePay(ql::Database& wage, qint32 wageID, int copies) {
    static const char* const details[] = {"PaymentDetails",   "TaxAllowDetails",     "NonTaxAllowDetails",
                                          "DeductionDetails", "ContributionDetails", "TaxDetails"};
    QList<qint32> ids;
    wage.beginTrans();
    for (int i = 1; i <= copies; ++i) {
        wage.execute(
            QStringLiteral(
                "INSERT INTO Wages (EmployeeID, Date, Rate, TaxCode, PayInterval, OneOff, Hours, Gross, "
                "TaxAllow, TotalTaxable, PAYE, NonTaxAllow, Deductions, TakeHome, KiwiSaverContribution, "
                "ESCTDeductions, TaxCreditKiwiSaver) SELECT EmployeeID, date(Date, '+%1 days'), Rate, "
                "TaxCode, PayInterval, OneOff, Hours, Gross, TaxAllow, TotalTaxable, PAYE, NonTaxAllow, "
                "Deductions, TakeHome, KiwiSaverContribution, ESCTDeductions, TaxCreditKiwiSaver FROM "
                "Wages WHERE WageID = %2")
                .arg(7 * i)
                .arg(wageID));
        const qint32 id = qint32(wage.lastInsertRowId());
        for (const char* table : details) {
            const QString t = QString::fromLatin1(table);
            QStringList columns;
            auto rs = wage.openRecordset(QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(t),
                                         ql::RecordsetType::Snapshot);
            for (int c = 0; c < rs->fieldCount(); ++c)
                if (rs->fieldName(c).compare(QStringLiteral("WageID"), Qt::CaseInsensitive) != 0)
                    columns << QLatin1Char('[') + rs->fieldName(c) + QLatin1Char(']');
            wage.execute(
                QStringLiteral(
                    "INSERT INTO %1 (WageID, %2) SELECT %3, %2 FROM %1 WHERE WageID = %4 ORDER BY rowid")
                    .arg(t, columns.join(u','))
                    .arg(id)
                    .arg(wageID));
        }
        ids << id;
    }
    wage.commitTrans();
    return ids;
}

// A pay of employee 1 of the demo farm with the figures of the worked example: 1,000.00 taxable for
// 40 hours, 50.00 non-taxable, 20.00 deductions, 180.00 PAYE, 850.00 take-home.
inline qint32 addDemoPay(ql::Database& wage, const QString& date, qint32 employeeID = 1) {
    wage.execute(
        QStringLiteral(
            "INSERT INTO Wages (EmployeeID, Date, PayInterval, Hours, Gross, TotalTaxable, PAYE, "
            "NonTaxAllow, Deductions, TakeHome) VALUES (?, ?, 'Weekly', 40, 1000, 1000, 180, 50, 20, 850)"),
        {employeeID, date});
    return qint32(wage.lastInsertRowId());
}

} // namespace qltest
