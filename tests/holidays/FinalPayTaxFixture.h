#pragma once
// A payroll of one employer from the command line, employees added and finished as a farmer types them,
// and the figures of their pays read back from the payroll file.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace qltest {

class FinalPayTaxTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(cli({QStringLiteral("init")}).exitCode, 0);
        const CliResult r =
            cli({"employer", "--name", "Kowhai Flats", "--ird", "49-091-850", "--contact-name", "Pat Payroll",
                 "--contact-phone", "07 871 0000", "--contact-email", "pat@kowhai.example.nz", "--account",
                 "01-0902-0068389-00", "--address", "12 River Road", "--city", "Te Awamutu", "--postcode",
                 "3800"});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    }
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }

    // A salaried employee, weekly unless more gives another --interval; returns the id.
    qint32 addEmployee(const QString& code, const QString& start, const QString& salary,
                       const QStringList& more = {}) {
        QStringList args{"employee", "add",        "--first",    "Final",     "--last",     code,
                         "--start",  start,        "--tax-code", code,        "--interval", "weekly",
                         "--salary", salary,       "--ird",      "048130046", "--address",  "3 Farm Lane",
                         "--city",   "Te Awamutu", "--birth",    "1990-02-03"};
        if (more.contains(QStringLiteral("--interval")))
            args.remove(args.indexOf(QStringLiteral("--interval")), 2);
        const CliResult r = cli(args + more);
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        return r.out.section(QStringLiteral("\"EmployeeID\": "), 1).section(u',', 0, 0).trimmed().toInt();
    }
    qint32 addPay(qint32 employee, const QString& date) {
        const CliResult r = cli({QStringLiteral("add-pay"), QString::number(employee), date});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        return r.out.section(QStringLiteral("\"WageID\": "), 1).section(u',', 0, 0).trimmed().toInt();
    }
    void commit(qint32 wageID, const QString& paymentDate) {
        const CliResult r = cli({"commit", QString::number(wageID), "--date", paymentDate, "--cashbook",
                                 "off", "--print", "off"});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    }
    // `employee finish` as JSON.
    QJsonObject finish(qint32 employee, const QString& lastDay) {
        const CliResult r =
            cli({QStringLiteral("employee"), QStringLiteral("finish"), QString::number(employee), lastDay});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        return QJsonDocument::fromJson(r.out.toUtf8()).object();
    }
    // `final-pay ... --add-to` as JSON: the final pay made on a pay while the employee is still on the
    // payroll, so that the pay can still be edited and committed (a finished employee's pays leave the
    // wage screen with the employee).
    QJsonObject finalPayOn(qint32 employee, const QString& lastDay, qint32 wageID) {
        const CliResult r = cli({QStringLiteral("final-pay"), QString::number(employee), lastDay,
                                 QStringLiteral("--add-to"), QString::number(wageID)});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        return QJsonDocument::fromJson(r.out.toUtf8()).object();
    }
    // Writes a tax code straight into the employee's row: for the codes of Inland Revenue's method the
    // template has no tax type of (NSW), which the employee commands therefore refuse.
    void setTaxCodeInFile(qint32 employee, const QString& code) {
        ql::Database db;
        db.open(ql::WageFileName());
        db.execute(QStringLiteral("UPDATE Employees SET TaxCode = ? WHERE EmployeeID = ?"), {code, employee});
        db.close();
    }
    // A figure of the payroll database in cents.
    qint64 figure(const QString& sql) {
        ql::Database db;
        db.open(ql::WageFileName());
        const QVariant v = db.scalar(sql);
        db.close();
        return std::llround(v.toDouble() * 100.0);
    }
    qint64 wages(qint32 wageID, const char* column) {
        return figure(
            QStringLiteral("SELECT %1 FROM Wages WHERE WageID = %2").arg(QLatin1String(column)).arg(wageID));
    }
    qint64 deduction(qint32 wageID, const char* name) {
        return figure(
            QStringLiteral("SELECT Total(d.Deductions) FROM DeductionDetails d JOIN DeductNames n ON "
                           "n.DeductNameID = d.DeductNameID WHERE d.WageID = %1 AND n.DeductionName = '%2'")
                .arg(wageID)
                .arg(QLatin1String(name)));
    }
    // The pay's PAYE as stored in its row and in its tax line.
    void expectPaye(qint32 wageID, qint64 cents) {
        EXPECT_EQ(wages(wageID, "PAYE"), cents);
        EXPECT_EQ(figure(QStringLiteral("SELECT Total(PAYE) FROM TaxDetails WHERE WageID = %1").arg(wageID)),
                  cents);
    }
    void expectTakeHomeFollows(qint32 wageID) {
        EXPECT_EQ(wages(wageID, "TakeHome"), wages(wageID, "TotalTaxable") - wages(wageID, "PAYE") +
                                                 wages(wageID, "NonTaxAllow") - wages(wageID, "Deductions"));
    }
    // The payday filing file of a payment date, by line.
    QList<QStringList> paydayFile(const QString& paymentDate) {
        const QString out = docs->path() + QStringLiteral("/ei.csv");
        const CliResult r = cli({QStringLiteral("payday-file"), paymentDate, QStringLiteral("--out"), out});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString() << r.out.toStdString();
        QFile f(out);
        QList<QStringList> lines;
        if (!f.open(QIODevice::ReadOnly)) return lines;
        for (const QString& l :
             QString::fromUtf8(f.readAll()).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
            lines << l.split(u',');
        return lines;
    }
    static qint64 cents(const QJsonValue& v) { return std::llround(v.toDouble() * 100.0); }
};

} // namespace qltest
