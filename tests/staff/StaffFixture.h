#pragma once
// A new installation without the demo (quillary-cli init), driven by the command line as a farmer
// setting up would, with a look into both databases to see what was, or wasn't, written.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include "payday/BankAccount.h"
#include "payday/IrdNumber.h"
#include <QFile>

namespace qltest {

// The k-th number from 120-000-000 up that passes Inland Revenue's check.
inline QString irdNumber(int k) {
    for (qint64 n = 120000000;; ++n)
        if (ql::IsValidIrdNumber(QString::number(n)) && k-- == 0) return QString::number(n);
}

// The k-th account at one branch that passes its bank's check.
inline QString bankAccount(int k) {
    for (qint64 base = 1234500;; ++base) {
        const QString s = QStringLiteral("01-0902-%1-00").arg(base, 7, 10, QChar(u'0'));
        if (ql::IsValidBankAccount(s) && k-- == 0) return s;
    }
}

inline QString fileText(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

class StaffTest : public DocumentsTest {
protected:
    void SetUp() override {
        const CliResult r = runCli({QStringLiteral("init")}, docs->path());
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    }
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }

    // Every row of both databases as text: equal snapshots mean nothing was written.
    QString snapshot() {
        QString all;
        for (const QString& path : {ql::WageFileName(), ql::DataFileName()}) {
            ql::Database db;
            db.open(path);
            for (const QString& table : db.tableNames()) {
                all += QStringLiteral("== ") + table + u'\n';
                // Each row whole: every column's value quoted by SQLite, joined.
                QStringList cols;
                for (const QVariant& c :
                     db.firstColumn(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table)))
                    cols << QStringLiteral("quote([%1])").arg(c.toString());
                for (const QVariant& v : db.firstColumn(
                         QStringLiteral("SELECT %1 FROM [%2]").arg(cols.join(QStringLiteral(" || ',' || ")), table)))
                    all += v.toString() + u'\n';
            }
        }
        return all;
    }

    QStringList employerArgs() const {
        return {QStringLiteral("employer"),      QStringLiteral("--name"),          QStringLiteral("Kowhai Flats Dairy"),
                QStringLiteral("--address"),     QStringLiteral("12 River Road"),   QStringLiteral("--city"),
                QStringLiteral("Te Awamutu"),    QStringLiteral("--postcode"),      QStringLiteral("3800"),
                QStringLiteral("--ird"),         QStringLiteral("49-091-850"),      QStringLiteral("--contact-name"),
                QStringLiteral("Pat Payroll"),   QStringLiteral("--contact-phone"), QStringLiteral("07 871 0000"),
                QStringLiteral("--contact-email"), QStringLiteral("pat@kowhai.example.nz"), QStringLiteral("--account"),
                QStringLiteral("01-0902-0068389-00")};
    }
    // A weekly hourly hand on M in KiwiSaver at 3.5% with a bank account.
    QStringList handArgs() const {
        return {QStringLiteral("employee"), QStringLiteral("add"), QStringLiteral("--first"), QStringLiteral("Mere"),
                QStringLiteral("--last"), QStringLiteral("Tane"), QStringLiteral("--start"), QStringLiteral("2026-04-01"),
                QStringLiteral("--tax-code"), QStringLiteral("M"), QStringLiteral("--interval"), QStringLiteral("weekly"),
                QStringLiteral("--rate"), QStringLiteral("26.50"), QStringLiteral("--hours"), QStringLiteral("40"),
                QStringLiteral("--ird"), irdNumber(1), QStringLiteral("--kiwisaver"), QStringLiteral("3.5"),
                QStringLiteral("--account"), bankAccount(1), QStringLiteral("--address"),
                QStringLiteral("3 Farm Lane"), QStringLiteral("--city"), QStringLiteral("Te Awamutu"),
                QStringLiteral("--birth"), QStringLiteral("1998-02-03")};
    }
    // A monthly salaried manager on M SL in KiwiSaver at 4%.
    QStringList managerArgs() const {
        return {QStringLiteral("employee"), QStringLiteral("add"), QStringLiteral("--first"), QStringLiteral("Sam"),
                QStringLiteral("--last"), QStringLiteral("Brown"), QStringLiteral("--start"), QStringLiteral("2026-04-01"),
                QStringLiteral("--tax-code"), QStringLiteral("M SL"), QStringLiteral("--interval"),
                QStringLiteral("monthly"), QStringLiteral("--salary"), QStringLiteral("78000"), QStringLiteral("--ird"),
                irdNumber(2), QStringLiteral("--kiwisaver"), QStringLiteral("4"), QStringLiteral("--account"),
                bankAccount(2), QStringLiteral("--occupation"), QStringLiteral("Farm Manager"),
                QStringLiteral("--address"), QStringLiteral("40 Totara Street"), QStringLiteral("--city"),
                QStringLiteral("Cambridge")};
    }
    // A fortnightly relief milker on S.
    QStringList milkerArgs() const {
        return {QStringLiteral("employee"), QStringLiteral("add"), QStringLiteral("--first"), QStringLiteral("Ana"),
                QStringLiteral("--last"), QStringLiteral("Kerr"), QStringLiteral("--start"), QStringLiteral("2026-04-01"),
                QStringLiteral("--tax-code"), QStringLiteral("S"), QStringLiteral("--interval"),
                QStringLiteral("fortnightly"), QStringLiteral("--rate"), QStringLiteral("28"), QStringLiteral("--hours"),
                QStringLiteral("30"), QStringLiteral("--ird"), irdNumber(3), QStringLiteral("--account"),
                bankAccount(3), QStringLiteral("--occupation"), QStringLiteral("Relief Milker"),
                QStringLiteral("--address"), QStringLiteral("7 Ohaupo Road"), QStringLiteral("--city"),
                QStringLiteral("Ohaupo")};
    }
};

} // namespace qltest
