#pragma once
// The demo farm with two pays per current employee added from the command line; the second pay of
// each is made committed (reference and payment date written directly) on the payment date below.
// The demo's payday details are taken away: each test types what it needs.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payday/BankAccount.h"
#include "payday/IrdNumber.h"
#include "payday/PaydayTables.h"
#include "payengine/AppContext.h"
#include <QDate>
#include <QFile>
#include <QStringList>

namespace qltest {

inline const QDate kPaymentDate(2026, 12, 1);

// The k-th valid IRD number from 50-000-000 on (k from 0).
inline QString validIrd(int k) {
    for (qint64 n = 50000000;; ++n) {
        const QString s = QString::number(n);
        if (ql::IsValidIrdNumber(s) && k-- == 0) return s;
    }
}

// The k-th account of the bank and branch that passes its check.
inline QString validAccount(int k, const QString& bankBranch = QStringLiteral("12-3001")) {
    for (qint64 base = 1000000;; ++base) {
        const QString s = QStringLiteral("%1-%2-00").arg(bankBranch).arg(base, 7, 10, QChar(u'0'));
        if (ql::IsValidBankAccount(s) && k-- == 0) return s;
    }
}

// A written file's text; empty when it can't be read.
inline QString readFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

// The fields of each line of a CSV file whose lines end in CR LF.
inline QList<QStringList> csvLines(const QString& text) {
    QList<QStringList> lines;
    EXPECT_TRUE(text.endsWith(QStringLiteral("\r\n")));
    for (const QString& l : text.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        EXPECT_FALSE(l.contains(u'\n'));
        lines << l.split(u',');
    }
    return lines;
}

class PaydayTest : public DocumentsTest {
protected:
    void SetUp() override {
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
        for (int id = 1; id <= 5; ++id) {
            const QString e = QString::number(id);
            ASSERT_EQ(
                runCli({QStringLiteral("add-pay"), e, QStringLiteral("2026-10-30")}, docs->path()).exitCode,
                0);
            ASSERT_EQ(runCli({QStringLiteral("add-pay"), e}, docs->path()).exitCode, 0);
        }
        wage.open(ql::WageFileName());
        wage.execute(
            QStringLiteral("UPDATE Wages SET Reference = 'PAY' || WageID, PaymentDate = '%1' WHERE WageID IN "
                           "(SELECT max(WageID) FROM Wages GROUP BY EmployeeID)")
                .arg(kPaymentDate.toString(Qt::ISODate)));
        // These tests type the details themselves, as on a farm whose details nobody has typed yet.
        clearPaydayDetails();
    }
    void TearDown() override {
        wage.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    // Valid IRD numbers for every employee and the employer (through the payday settings).
    void fixIrdNumbers() {
        for (int id = 1; id <= 7; ++id)
            wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = ? WHERE EmployeeID = ?"),
                         {validIrd(id), id});
        ql::PaydaySettings s = ql::LoadPaydaySettings(wage);
        s.employerIrd = validIrd(0);
        s.contactName = QStringLiteral("Pat Payroll");
        s.contactPhone = QStringLiteral("03 555 0101");
        s.contactEmail = QStringLiteral("pay@example.nz");
        ql::SavePaydaySettings(wage, s);
    }
    // Valid IRD numbers, the employer's paying account and an account for each employee on the roster:
    // what the bank files need.
    void giveBankDetails() {
        fixIrdNumbers();
        ql::PaydaySettings s = ql::LoadPaydaySettings(wage);
        s.payingAccount = QStringLiteral("01-0902-0068389-00");
        ql::SavePaydaySettings(wage, s);
        for (int id = 1; id <= 5; ++id)
            ql::SetEmployeeBankAccount(wage, id, validAccount(id));
    }
    // A farm whose payday details nobody has typed yet: the demo's are taken away.
    void clearPaydayDetails() {
        wage.execute(QStringLiteral("DELETE FROM PaydaySettings"));
        wage.execute(QStringLiteral("DELETE FROM PaydayBankAccounts"));
    }
    QVariant scalar(const QString& sql) { return wage.scalar(sql); }

    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
    ql::Database wage;
};

} // namespace qltest
