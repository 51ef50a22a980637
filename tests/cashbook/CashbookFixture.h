#pragma once
// A payroll and a farm database in a fresh folder, an employee with a bank, and a wage screen that
// stands on one stored pay, for the commit and the posting.
#include "PayrollRows.h"
#include "TestEnv.h"
#include "data/Recordset.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"
#include <gtest/gtest.h>

namespace qltest {

// The wage screen as far as the commit needs it: the pay list.
class CommitScreen : public ql::PayView {
public:
    void SelectLabel(const QString&) override {}
    void openView(int) override {}
};

struct PayFigures {
    double hours = 40;
    double totalTaxable = 1000;
    double nonTaxAllow = 50;
    double deductions = 20;
    double paye = 180;
    double takeHome = 850;
    QVariant details;
    QVariant reference;
    QString date = QStringLiteral("2026-05-04");
};

class CashbookTest : public ::testing::Test {
protected:
    TempDocuments docs;
    PayrollRows rows;
    CommitScreen screen;
    qint64 employeeID = 0;

    CashbookTest() {
        rows.context.WageDatabase = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
        rows.context.WageForm = &screen;
        rows.farm.execute(QStringLiteral(
            "INSERT INTO Addresses (AddressID, BusinessFlag, BusName) VALUES (40, 1, 'Inland Revenue')"));
        const qint64 address = rows.address(QStringLiteral("Hale"), QStringLiteral("Mere"));
        rows.farm.execute(QStringLiteral("UPDATE Addresses SET BusName = 'Mere Hale' WHERE AddressID = ?"),
                          {address});
        employeeID = rows.employee(address);
        rows.wage.execute(
            QStringLiteral("UPDATE Employees SET BankID = 1, EnterpriseID = 3 WHERE EmployeeID = ?"),
            {employeeID});
        rows.context.CurrentEmployeeID = qint32(employeeID);
    }
    ~CashbookTest() override {
        screen.datPays.setDatabase(nullptr);
        rows.context.WageForm = nullptr;
        rows.context.WageDatabase.close();
    }

    // The accounts at their defaults, as the dialog's OK stores them.
    void setAccounts(bool nonCash = false, qint32 taxOffice = 40) {
        rows.farm.execute(QStringLiteral("UPDATE PayeInfo SET PAYEAccount = 401002, WageAccount = 401001, "
                                         "PaymentAccount = 401005, AdjustAccount = 401008, PAYENonCash = ?, "
                                         "PAYEAddressID = ?"),
                          {nonCash ? 1 : 0, taxOffice});
    }

    qint32 addPay(const PayFigures& f = PayFigures()) {
        rows.wage.execute(
            QStringLiteral("INSERT INTO Wages (EmployeeID, Date, PayInterval, Hours, Gross, TotalTaxable, "
                           "PAYE, NonTaxAllow, Deductions, TakeHome, Details, Reference) "
                           "VALUES (?, ?, 'Weekly', ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
            {employeeID, f.date, f.hours, f.totalTaxable, f.totalTaxable, f.paye, f.nonTaxAllow, f.deductions,
             f.takeHome, f.details, f.reference});
        return qint32(rows.wage.lastInsertRowId());
    }

    void standOn(qint32 wageID) {
        screen.datPays.setDatabase(&rows.context.WageDatabase);
        screen.datPays.setRecordSource(
            QStringLiteral("SELECT Wages.* FROM Wages WHERE Wages.EmployeeID = %1 ORDER BY Wages.Date")
                .arg(employeeID));
        screen.datPays.Refresh();
        while (!screen.datPays.EOF_() && ql::CLng(screen.datPays.value(QStringLiteral("WageID"))) != wageID)
            screen.datPays.MoveNext();
        rows.context.CurrentWageID = wageID;
    }

    void lastBankRow(qint32 bank, double balance, qint32 count) {
        rows.farm.execute(QStringLiteral("INSERT INTO Transactions (Date, BanksID, Amount, Balance, [Count]) "
                                         "VALUES ('2026-04-30', ?, 0, ?, ?)"),
                          {bank, balance, count});
    }

    int count(const QString& sql) { return rows.farm.scalar(sql).toInt(); }
    QVariant farmValue(const QString& sql) { return rows.farm.scalar(sql); }
    QVariant wageValue(const QString& sql) { return rows.wage.scalar(sql); }
};

} // namespace qltest
