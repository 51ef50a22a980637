#include "FinalPayOnFinish.h"
#include "PayHistory.h"
#include "frame/FirstPayAnswer.h"
#include "ledger/Roster.h"
#include "ledger/WageScreen.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/VbError.h"
#include <memory>

namespace ql::holidays {

namespace {

VbError refusal(const QString& text) { return VbError(5, QStringLiteral("FinalPay"), text); }

// A wage screen of its own standing on the employee, as the pay run uses one; the program's own
// screen, and the employee and pay it shows, are put back when it goes.
class FinishScreen {
public:
    explicit FinishScreen(qint32 employeeID)
        : m_previous(App().WageForm), m_employee(App().CurrentEmployee), m_employeeID(App().CurrentEmployeeID),
          m_addressID(App().CurrentAddressID), m_wageID(App().CurrentWageID) {
        AppContext& app = App();
        FillEmployeeArray();
        app.WageForm = &m_screen;
        InitData(m_screen);
        int index = -1;
        for (int i = 1; i < app.EmployeeArray.size(); ++i) {
            m_screen.cboEmployeeItems.append({app.EmployeeArray.at(i).NameLastFirst, app.EmployeeArray.at(i).EmployeeID});
            if (app.EmployeeArray.at(i).EmployeeID == employeeID) index = i - 1;
        }
        m_index = index;
    }
    ~FinishScreen() {
        AppContext& app = App();
        app.WageForm = m_previous;
        app.CurrentEmployee = m_employee;
        app.CurrentEmployeeID = m_employeeID;
        app.CurrentAddressID = m_addressID;
        app.CurrentWageID = m_wageID;
    }
    FinishScreen(const FinishScreen&) = delete;
    FinishScreen& operator=(const FinishScreen&) = delete;
    bool onRoster() const { return m_index >= 0; }
    WageScreen& screen() { return m_screen; }
    int index() const { return m_index; }

    // Leaving the payment view saves the pay, which brings its tax, totals and payslip.
    void recalculate(qint32 wageID) {
        if (m_screen.cboEmployeeIndex != m_index) m_screen.selectEmployeeItem(m_index);
        PayList& list = m_screen.datPays;
        for (list.MoveFirst(); !list.EOF_(); list.MoveNext())
            if (CLng(list.value(QStringLiteral("WageID"))) == wageID) break;
        if (list.EOF_()) throw refusal(QStringLiteral("Pay %1 is not in its employee's list.").arg(wageID));
        m_screen.cmdSelect_Click(1);
        m_screen.tgrdwages_LostFocus();
        m_screen.datPays.UpdateRecord();
    }

private:
    WageScreen m_screen;
    PayView* m_previous;
    decltype(AppContext::CurrentEmployee) m_employee;
    qint32 m_employeeID, m_addressID, m_wageID;
    int m_index = -1;
};

// Adds a pay dated the day through the calendar's "add" (or the first-pay question); its WageID.
qint32 addPayOn(FinishScreen& s, Database& wage, qint32 employeeID, const QDate& day) {
    Dialogs& outer = dialogs();
    FirstPayAnswer answer(outer, Format(QVariant(day), QStringLiteral("Short date")));
    setDialogs(&answer);
    const QVariant highest = wage.scalar(QStringLiteral("SELECT max(WageID) FROM Wages"));
    const qint32 before = IsNull(highest) ? 0 : CLng(highest);
    try {
        s.screen().selectEmployeeItem(s.index());
        if (answer.asked == 0) {
            if (!s.screen().TaxCodeTest()) throw refusal(answer.lastMessage.simplified());
            s.screen().showAddEdit = [](WageScreen&) { calendarChoice().AddPayChoice = true; };
            s.screen().CalWage_DateClick(day);
            s.screen().showAddEdit = nullptr;
        }
        s.screen().cmdSelect_Click(1);
        s.screen().tgrdwages_LostFocus();
        s.screen().datPays.UpdateRecord();
    } catch (...) {
        setDialogs(&outer);
        throw;
    }
    setDialogs(&outer);
    const QVariant id = wage.scalar(
        QStringLiteral("SELECT min(WageID) FROM Wages WHERE EmployeeID = %1 AND WageID > %2").arg(employeeID).arg(before));
    if (IsNull(id)) throw refusal(QStringLiteral("No pay was added for the final pay."));
    return CLng(id);
}

struct Cover {
    qint32 open = 0;      // an uncommitted regular pay whose period holds the day
    qint32 committed = 0; // a committed regular pay whose period holds the day
};

Cover coverOf(Database& wage, qint32 employeeID, const QDate& day) {
    Cover c;
    for (const PayRecord& p : LoadPays(wage, employeeID)) {
        if (p.oneOff || day < p.start || day > p.end) continue;
        const QVariant ref = wage.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(p.wageID));
        const bool committed = !IsNull(ref) && !CStr(ref).trimmed().isEmpty();
        qint32& slot = committed ? c.committed : c.open;
        if (slot == 0) slot = p.wageID;
    }
    return c;
}

QString money2(Currency c) { return ToCents(c).toFixed4().chopped(2); }

// The employee's first pay carrying final holiday lines; 0 when none does.
qint32 payWithFinalLines(Database& wage, qint32 employeeID) {
    for (const PayRecord& p : LoadPays(wage, employeeID))
        if (FinalHolidayAmount(wage, p.wageID) > Currency()) return p.wageID;
    return 0;
}

} // namespace

FinishedPay MakeFinalPay(qint32 employeeID, const QDate& lastDay) {
    Database& wage = App().WageDatabase;
    FinishedPay out;
    // The holiday lines made earlier (final-pay --add-to, so that the pay could be edited and committed
    // while the employee was still on the payroll) are the final pay: they are never paid twice.
    if (const qint32 earlier = payWithFinalLines(wage, employeeID)) {
        out.wageID = earlier;
        out.result = ComputeFinalPay(wage, employeeID, lastDay, earlier);
        out.tax = StoredFinalPayTax(earlier);
        out.choice = QStringLiteral("Pay %1 already carries the final pay's holiday lines, so no pay was changed.")
                         .arg(earlier);
        return out;
    }
    out.result = ComputeFinalPay(wage, employeeID, lastDay);
    const Cover cover = coverOf(wage, employeeID, lastDay);
    if (out.result.lines.isEmpty()) {
        out.choice = QStringLiteral("Nothing is owed for holidays on the last day, so no pay was changed.");
        return out;
    }
    FinishScreen s(employeeID);
    if (!s.onRoster()) throw refusal(QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));
    wage.beginWriteTrans();
    try {
        if (cover.open != 0) {
            out.wageID = cover.open;
            out.choice = QStringLiteral("Pay %1, not yet committed, covers the last day: it is the final pay.").arg(cover.open);
        } else {
            // A pay is added after the employee's last regular pay, never before it.
            const QVariant latest = wage.scalar(
                QStringLiteral("SELECT max(Date) FROM Wages WHERE EmployeeID = %1 AND OneOff = 0").arg(employeeID));
            QDate day = lastDay;
            if (!IsNull(latest) && CDate(latest) >= lastDay) day = CDate(latest).addDays(1);
            out.wageID = addPayOn(s, wage, employeeID, day);
            out.added = true;
            if (cover.committed != 0) {
                // The time up to the last day was paid already: only the holiday lines belong here.
                for (const char* table : {"PaymentDetails", "TaxAllowDetails", "NonTaxAllowDetails"})
                    wage.execute(QStringLiteral("DELETE FROM %1 WHERE WageID = %2").arg(QLatin1String(table)).arg(out.wageID));
                out.choice = QStringLiteral("Committed pay %1 covers the last day, so pay %2 was added on %3 for the "
                                            "holiday lines alone.")
                                 .arg(cover.committed)
                                 .arg(out.wageID)
                                 .arg(day.toString(Qt::ISODate));
            } else {
                out.choice = QStringLiteral("No pay covered the last day, so pay %1 was added on it with the usual lines "
                                            "for the time since the last pay; change them for the days worked.")
                                 .arg(out.wageID);
            }
        }
        out.result = ComputeFinalPay(wage, employeeID, lastDay, out.wageID);
        AddFinalPayLines(wage, out.wageID, out.result);
        s.recalculate(out.wageID);
        out.tax = StoredFinalPayTax(out.wageID);
        out.result.notes << QStringLiteral("Pay %1 leaves the wage screen with the employee: to change or commit it, "
                                           "clear the finish date, then finish again (nothing is made twice).")
                                .arg(out.wageID);
        wage.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        throw;
    }
    return out;
}

QString FinalPayText(const FinishedPay& pay) {
    QStringList lines{pay.choice};
    for (const FinalPayLine& l : pay.result.lines)
        lines << QStringLiteral("%1: %2 (%3)").arg(l.caption, money2(l.amount), l.working);
    if (!pay.result.lines.isEmpty()) lines << QStringLiteral("Total: %1").arg(money2(pay.result.total));
    if (pay.tax) lines << QStringLiteral("Tax: %1").arg(pay.tax->working());
    lines << pay.result.notes;
    return lines.join(QLatin1Char('\n'));
}

} // namespace ql::holidays
