#pragma once
// A fresh payroll database with the template rows, and employees and pays written into it directly,
// for the holiday rules to read.
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Schema.h"
#include "holidays/EarningKinds.h"
#include "holidays/WorkPattern.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QDir>
#include <gtest/gtest.h>

namespace qltest {

// Money as the tests write it ("1105.7692").
inline ql::Currency cur(const char* text) { return ql::Currency::fromDouble(QString::fromLatin1(text).toDouble()); }

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
    // The farm hand of the leave and final pay tests: hired 4 March 2024, Monday to Friday 8 hours at $25,
    // paid weekly on Sundays; the 52 weeks to 6 December 2026: 8 winter weeks of 30 hours (June, July), 10
    // calving weeks of 40 ordinary hours and 20 of overtime at time and a half (August to mid October), 34
    // weeks of 40 hours. Gives the winter and calving weeks it wrote.
    struct FarmHandWeeks {
        int winter = 0, calving = 0;
    };
    FarmHandWeeks addFarmHand() {
        FarmHandWeeks n;
        addEmployee(1, QDate(2024, 3, 4), 25.0);
        setPattern(1, QDate(2024, 3, 4), {8, 8, 8, 8, 8, 0, 0});
        const QDate last(2026, 12, 6);
        for (int w = 51; w >= 0; --w) {
            const QDate end = last.addDays(-7 * w);
            if (end >= QDate(2026, 6, 1) && end < QDate(2026, 7, 27)) {
                addPay(1, end, {{kOrdinary, 30, 25}});
                ++n.winter;
            } else if (end >= QDate(2026, 8, 2) && end < QDate(2026, 10, 11)) {
                addPay(1, end, {{kOrdinary, 40, 25}, {kOvertime, 20, 37.5}});
                ++n.calving;
            } else {
                addPay(1, end, {{kOrdinary, 40, 25}});
            }
        }
        return n;
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
