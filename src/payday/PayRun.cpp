#include "PayRun.h"
#include "PaydayEmployees.h"
#include "PaydayPays.h"
#include "data/Recordset.h"
#include "frame/Dialogs.h"
#include "frame/FirstPayAnswer.h"
#include "frame/Messages.h"
#include "ledger/Roster.h"
#include "ledger/WageScreen.h"
#include "payengine/AppContext.h"
#include "payengine/PayList.h"
#include "payengine/PayTotals.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"
#include <cmath>

namespace ql {

namespace {

QString text(const QVariant& v) {
    return IsNull(v) ? QString() : CStr(v).trimmed();
}
Currency money(const QVariant& v) {
    return IsNull(v) ? Currency() : CCur(v);
}

// The reference and figures of a pay's Wages row.
void takeFigures(PayRunItem& item, const Recordset& row) {
    item.reference = text(row.value(QStringLiteral("Reference")));
    item.gross = money(row.value(QStringLiteral("TotalTaxable")));
    item.paye = money(row.value(QStringLiteral("PAYE")));
    item.nonTaxable = money(row.value(QStringLiteral("NonTaxAllow")));
    item.deductions = money(row.value(QStringLiteral("Deductions")));
    item.takeHome = money(row.value(QStringLiteral("TakeHome")));
}

} // namespace

QDate NextPayDate(const QDate& lastPay, float paysPerYear, float numberOfDays) {
    if (!lastPay.isValid()) return QDate();
    if (numberOfDays > 0) return DateAdd(QStringLiteral("d"), numberOfDays, lastPay);
    if (paysPerYear > 0) return DateAdd(QStringLiteral("m"), paysPerYear / 12.0f, lastPay);
    return QDate();
}

QList<PayRunItem> ProposePayRun(Database& wage, const QDate& runDate) {
    QList<PayRunItem> items;
    for (const Payee& payee : CurrentPayees(wage)) {
        PayRunItem item;
        item.employeeID = payee.employeeID;
        item.name = payee.name;
        auto interval = wage.openRecordset(
            QStringLiteral(
                "SELECT PayInterval.IntervalName, PayInterval.PaysPerYear, PayInterval.NumberOfDays FROM "
                "PayInterval INNER JOIN Employees ON PayInterval.PayIntervalID = Employees.PayIntervalID "
                "WHERE Employees.EmployeeID = %1")
                .arg(payee.employeeID),
            RecordsetType::Snapshot);
        float paysPerYear = 0, numberOfDays = 0;
        if (!interval->EOF_()) {
            item.interval = text(interval->value(QStringLiteral("IntervalName")));
            paysPerYear = IsNull(interval->value(QStringLiteral("PaysPerYear")))
                              ? 0.0f
                              : CSng(interval->value(QStringLiteral("PaysPerYear")));
            numberOfDays = IsNull(interval->value(QStringLiteral("NumberOfDays")))
                               ? 0.0f
                               : CSng(interval->value(QStringLiteral("NumberOfDays")));
        }
        interval->Close();
        // The last regular pay: when it is not committed yet, it is the one this run pays.
        auto last =
            wage.openRecordset(QStringLiteral("SELECT * FROM Wages WHERE EmployeeID = %1 AND OneOff = 0 "
                                              "ORDER BY Wages.Date DESC, WageID DESC LIMIT 1")
                                   .arg(payee.employeeID),
                               RecordsetType::Snapshot);
        if (last->EOF_()) {
            item.payDate = runDate;
        } else {
            const QDate lastDate = CDate(last->value(QStringLiteral("Date")));
            const QString reference = text(last->value(QStringLiteral("Reference")));
            if (reference.isEmpty() || lastDate >= runDate) {
                item.wageID = CLng(last->value(QStringLiteral("WageID")));
                item.payDate = lastDate;
                takeFigures(item, *last);
            } else {
                item.payDate = NextPayDate(lastDate, paysPerYear, numberOfDays);
            }
        }
        last->Close();
        // Paid already for this run (committed on or after the run date), or not due yet: not in the run.
        if (item.committed() && item.payDate > runDate) continue;
        if (!item.payDate.isValid() || item.payDate > runDate) continue;
        item.periodStart = PayPeriodStart(item.payDate, paysPerYear, numberOfDays);
        items << item;
    }
    return items;
}

void RefreshPayRunItems(Database& wage, QList<PayRunItem>& items) {
    for (PayRunItem& item : items) {
        if (item.wageID == 0) continue;
        auto row = wage.openRecordset(
            QStringLiteral("SELECT Reference, TotalTaxable, PAYE, NonTaxAllow, Deductions, TakeHome FROM Wages "
                           "WHERE WageID = %1")
                .arg(item.wageID),
            RecordsetType::Snapshot);
        if (row->EOF_()) {
            item.wageID = 0; // removed meanwhile: to be added again
            item.reference.clear();
        } else {
            takeFigures(item, *row);
        }
        row->Close();
    }
}

PayRunAdder::PayRunAdder() : m_screen(new WageScreen), m_previousForm(App().WageForm) {
    AppContext& app = App();
    FillEmployeeArray();
    app.WageForm = m_screen;
    InitData(*m_screen);
    for (int i = 1; i < app.EmployeeArray.size(); ++i)
        m_screen->cboEmployeeItems.append(
            {app.EmployeeArray.at(i).NameLastFirst, app.EmployeeArray.at(i).EmployeeID});
}

PayRunAdder::~PayRunAdder() {
    App().WageForm = m_previousForm;
    delete m_screen;
}

bool PayRunAdder::add(const PayRunItem& item, QString& failure) {
    if (item.wageID != 0) return true;
    AppContext& app = App();
    Database& wage = app.WageDatabase;
    int index = -1;
    for (int i = 1; i < app.EmployeeArray.size(); ++i)
        if (app.EmployeeArray.at(i).EmployeeID == item.employeeID) index = i - 1;
    if (index < 0) {
        failure = QStringLiteral("%1: not on the payroll").arg(item.name);
        return false;
    }
    Dialogs& outer = dialogs();
    FirstPayAnswer answer(outer, Format(QVariant(item.payDate), QStringLiteral("Short date")));
    setDialogs(&answer);
    bool added = false;
    try {
        // The whole add holds the payroll's write lock, and the pay is looked for again under it:
        // another run adding the same pay at the same time waits, then finds it there.
        wage.beginWriteTrans();
        const QVariant there = wage.scalar(
            QStringLiteral("SELECT min(WageID) FROM Wages WHERE EmployeeID = %1 AND OneOff = 0 AND [Date] >= '%2'")
                .arg(item.employeeID)
                .arg(item.payDate.toString(Qt::ISODate)));
        if (!IsNull(there)) {
            wage.commitTrans();
            setDialogs(&outer);
            return true;
        }
        const QVariant highest = wage.scalar(QStringLiteral("SELECT max(WageID) FROM Wages"));
        const qint32 before = IsNull(highest) ? 0 : CLng(highest);
        m_screen->selectEmployeeItem(index);
        bool refused = false;
        if (answer.asked == 0) {
            if (!m_screen->TaxCodeTest()) {
                failure = QStringLiteral("%1: %2").arg(item.name, answer.lastMessage.simplified());
                refused = true;
            } else {
                m_screen->showAddEdit = [](WageScreen&) { calendarChoice().AddPayChoice = true; };
                m_screen->CalWage_DateClick(item.payDate);
            }
        }
        if (!refused) {
            m_screen->datPays.UpdateRecord();
            const QVariant id = wage.scalar(
                QStringLiteral("SELECT min(WageID) FROM Wages WHERE EmployeeID = %1 AND WageID > %2")
                    .arg(item.employeeID)
                    .arg(before));
            if (IsNull(id)) {
                failure = QStringLiteral("%1: no pay was added").arg(item.name);
            } else {
                // Leaving a view saves the pay, which brings its tax.
                m_screen->cmdSelect_Click(1);
                m_screen->tgrdwages_LostFocus();
                m_screen->datPays.UpdateRecord();
                added = true;
            }
        }
        if (added)
            wage.commitTrans();
        else
            wage.rollback();
    } catch (const VbError& e) {
        failure = QStringLiteral("%1: %2").arg(item.name, e.description());
        added = false;
        try {
            if (wage.inTransaction()) wage.rollback();
        } catch (const VbError&) {
        }
    }
    setDialogs(&outer);
    return added;
}

namespace {
PayCommitter& committerSlot() {
    static PayCommitter committer;
    return committer;
}
} // namespace

void setPayCommitter(PayCommitter committer) {
    committerSlot() = std::move(committer);
}
const PayCommitter& installedPayCommitter() {
    return committerSlot();
}

PayView* PayRunAdder::standOn(const PayRunItem& item) {
    if (item.wageID == 0) return nullptr;
    AppContext& app = App();
    int index = -1;
    for (int i = 1; i < app.EmployeeArray.size(); ++i)
        if (app.EmployeeArray.at(i).EmployeeID == item.employeeID) index = i - 1;
    if (index < 0) return nullptr;
    if (m_screen->cboEmployeeIndex != index) m_screen->selectEmployeeItem(index);
    PayList& list = m_screen->datPays;
    // The list shows the employee's pays by date, standing on the last; the run's pay is usually it.
    if (!list.EOF_() && !list.BOF() && CLng(list.value(QStringLiteral("WageID"))) == item.wageID)
        return m_screen;
    for (list.MoveFirst(); !list.EOF_(); list.MoveNext())
        if (CLng(list.value(QStringLiteral("WageID"))) == item.wageID) return m_screen;
    return nullptr;
}

void SettlePayRunItems(const QList<PayRunItem>& items, const QSet<qint32>& leftOut) {
    PayRunAdder screen;
    for (const PayRunItem& item : items) {
        if (item.wageID == 0 || item.committed() || leftOut.contains(item.employeeID)) continue;
        PayView* view = screen.standOn(item);
        if (!view || App().CurrentWageID != item.wageID) continue;
        skipErrors([&] { SettlePayFigures(*view); });
    }
}

PayRunCommit CommitPayRun(const QList<PayRunItem>& items, const QSet<qint32>& leftOut,
                          const PayCommitter& commit,
                          const std::function<bool(int, int, const QString&)>& progress) {
    PayRunCommit result;
    QList<PayRunItem> toCommit;
    for (const PayRunItem& i : items)
        if (i.wageID != 0 && !i.committed() && !leftOut.contains(i.employeeID)) toCommit << i;
    PayRunAdder screen;
    Database& wage = App().WageDatabase;
    for (int n = 0; n < toCommit.size(); ++n) {
        const PayRunItem& item = toCommit.at(n);
        const auto rest = [&] {
            for (int m = n; m < toCommit.size(); ++m)
                result.notDone << toCommit.at(m).name;
        };
        if (progress && !progress(n, static_cast<int>(toCommit.size()), item.name)) {
            result.cancelled = true;
            rest();
            break;
        }
        // A pay committed meanwhile (by hand, or by a run cut short) is not committed twice.
        const QString already = text(
            wage.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(item.wageID)));
        if (!already.isEmpty()) continue;
        PayView* view = screen.standOn(item);
        QString message = view ? QString() : QStringLiteral("the pay is no longer there");
        if (view) {
            try {
                message = commit(*view, item);
            } catch (const VbError& e) {
                message = e.description();
            }
        }
        const QString reference = text(
            wage.scalar(QStringLiteral("SELECT Reference FROM Wages WHERE WageID = %1").arg(item.wageID)));
        // Committed by another process while this one tried: it stands committed, once.
        if (!message.isEmpty() && !reference.isEmpty()) continue;
        if (!message.isEmpty() || reference.isEmpty()) {
            result.failure = QStringLiteral("%1: %2").arg(
                item.name,
                message.isEmpty() ? QStringLiteral("the pay was not committed") : message.simplified());
            rest();
            break;
        }
        result.done << QStringLiteral("%1 (%2)").arg(item.name, reference);
    }
    if (progress && !result.cancelled)
        progress(static_cast<int>(toCommit.size()), static_cast<int>(toCommit.size()), QString());
    return result;
}

QList<PayRunItem> AddPayRunPays(const QDate& runDate, QStringList& failures) {
    Database& wage = App().WageDatabase;
    {
        PayRunAdder adder;
        for (const PayRunItem& item : ProposePayRun(wage, runDate)) {
            QString failure;
            if (!adder.add(item, failure)) failures << failure;
        }
    }
    return ProposePayRun(wage, runDate);
}

Currency PayRunTotal(const QList<PayRunItem>& items) {
    Currency total;
    for (const PayRunItem& i : items)
        total += i.takeHome;
    return total;
}

} // namespace ql
