#pragma once
// A payroll with employees on a pinned clock, and the leave tab's model over it.
#include "PayrollRows.h"
#include "TestEnv.h"
#include "frame/Messages.h"
#include "leave/LeaveScreen.h"
#include "leave/basLeave.h"
#include "ledger/Roster.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <memory>

namespace qltest {

class LeaveTest : public DocumentsTest {
protected:
    std::unique_ptr<PayrollRows> rows = std::make_unique<PayrollRows>();
    std::unique_ptr<ql::LeaveScreen> screen = std::make_unique<ql::LeaveScreen>();

    void TearDown() override {
        screen.reset();
        ql::App().WageDatabase.close();
        ql::setClockForTesting({});
    }
    static void setToday(const QDate& d) {
        ql::setClockForTesting([d] { return QDateTime(d, QTime(10, 0)); });
    }
    // Opens the payroll as the program does and makes employeeID the current employee.
    void open(qint64 employeeID) {
        if (!ql::App().WageDatabase.isOpen())
            ql::App().WageDatabase = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
        ql::FillEmployeeArray();
        select(employeeID);
    }
    void select(qint64 employeeID) {
        ql::AppContext& app = ql::App();
        for (int i = 1; i < app.EmployeeArray.size(); ++i)
            if (app.EmployeeArray.at(i).EmployeeID == employeeID) {
                app.CurrentEmployee = i;
                app.CurrentEmployeeID = qint32(employeeID);
                app.CurrentAddressID = app.EmployeeArray.at(i).AddressID;
                return;
            }
        ADD_FAILURE() << "employee " << employeeID << " is not on the roster";
    }
    qint64 hire(const QString& hired, const QString& last = QStringLiteral("Hale")) {
        return rows->employee(rows->address(last, QStringLiteral("Mere")), hired);
    }
    void leave(qint64 employee, int type, int kind, double days, const QString& from, const QString& to,
               const QVariant& comments = QVariant()) {
        rows->wage.execute(
            QStringLiteral("INSERT INTO LeaveDetails (EmployeeID, LeaveTypeID, TransTypeID, NumberofDays, "
                           "DateFrom, DateTo, Comments) VALUES (?, ?, ?, ?, ?, ?, ?)"),
            {employee, type, kind, days, from, to, comments});
    }
    int count(const QString& where) {
        return rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM LeaveDetails WHERE ") + where).toInt();
    }
    QStringList row(int r) const {
        QStringList out;
        for (int c = 3; c < 8; ++c)
            out << screen->cellText(r, c);
        return out;
    }
    int messages(const QString& heading) const {
        int n = 0;
        for (const ql::DialogCall& c : rows->dialogs.calls)
            n += c.heading == heading;
        return n;
    }
    const ql::DialogCall* last(const QString& heading) const {
        for (int i = rows->dialogs.calls.size() - 1; i >= 0; --i)
            if (rows->dialogs.calls.at(i).heading == heading) return &rows->dialogs.calls.at(i);
        return nullptr;
    }
    static QString d(int y, int m, int day) { return ql::dateText(QDate(y, m, day)); }
};

} // namespace qltest
