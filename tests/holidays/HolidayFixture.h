#pragma once
// A fresh payroll database with the template rows, and employees and pays written into it directly,
// for the holiday rules to read.
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Schema.h"
#include "holidays/EarningKinds.h"
#include "holidays/WorkPattern.h"
#include <QDate>
#include <QDir>
#include <gtest/gtest.h>

namespace qltest {

class HolidayTest : public DocumentsTest {
protected:
    // Template payment names: 1 Ordinary Time, 2 Overtime (x1.5), 5 Holiday Pay, 7 Salary.
    static constexpr int kOrdinary = 1, kOvertime = 2, kHolidayPay = 5, kSalary = 7;

    void SetUp() override {
        wage = ql::openOrCreate(ql::DatabaseKind::Wage, QDir(docs->path()).filePath(QStringLiteral("wage.db")));
        ql::holidays::EnsureHolidayTables(wage);
    }
    void TearDown() override { wage.close(); }

    // An hourly or salaried employee paid weekly (interval 1) or fortnightly (2).
    void addEmployee(int id, const QDate& hired, double rate, double salary = 0, int interval = 1) {
        wage.execute(QStringLiteral("INSERT INTO Employees (EmployeeID, AddressID, EmployeeTypeID, DateHired, PayRate, "
                                    "YearlyTotal, PayIntervalID, TaxCode) VALUES (?, ?, 1, ?, ?, ?, ?, 'M')"),
                     {id, id, hired.toString(Qt::ISODate), rate, salary, interval});
    }
    // A pay ending on the date with its payment lines (name, hours, rate); returns its WageID.
    int addPay(int employeeID, const QDate& end, const QList<std::tuple<int, double, double>>& lines,
               const QString& interval = QStringLiteral("Weekly")) {
        wage.execute(QStringLiteral("INSERT INTO Wages (EmployeeID, Date, PayInterval, OneOff, Rate) VALUES (?, ?, ?, 0, 0)"),
                     {employeeID, end.toString(Qt::ISODate), interval});
        const int wageID = int(wage.lastInsertRowId());
        for (const auto& [name, hours, rate] : lines)
            wage.execute(QStringLiteral("INSERT INTO PaymentDetails (WageID, PaymentNameID, DetailHours, EquivPayRate, "
                                        "Payment) VALUES (?, ?, ?, ?, ?)"),
                         {wageID, name, hours, rate, hours * rate});
        return wageID;
    }
    void setPattern(int employeeID, const QDate& from, std::array<float, 7> hours) {
        ql::holidays::WorkPattern p;
        p.from = from;
        p.hours = hours;
        ql::holidays::SetWorkPattern(wage, employeeID, p);
    }

    ql::Database wage;
};

} // namespace qltest
