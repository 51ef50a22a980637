#include "basLeave.h"
#include "LeaveScreen.h"
#include "data/GridHelpers.h"
#include "data/Recordset.h"
#include "data/SqlDate.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

QDate hiredDate() {
    const AppContext& app = App();
    return app.EmployeeArray.value(app.CurrentEmployee).DateHired;
}

bool cellIsEmpty(const QVariant& v) {
    return IsNull(v) || v.toString().isEmpty();
}

} // namespace

QString tabLeaveCaptions() {
    return QStringLiteral("Annual Leave|Sick Leave|Special Leave|In Lieu|Leave without Pay");
}

QStringList leaveHeaders(int leaveTypeID) {
    return {QStringLiteral("LeaveID"),
            QStringLiteral("EmployeeID"),
            QStringLiteral("LeaveTypeID"),
            QStringLiteral("Description"),
            leaveTypeID == leave::InLieu ? QStringLiteral("Hours") : QStringLiteral("Days"),
            QStringLiteral("Date From"),
            QStringLiteral("Date To"),
            QStringLiteral("Comments")};
}

void GetCurrentYear(QDate& start, QDate& end) {
    trap(QStringLiteral("GetCurrentYear"), [&] {
        QDate hired = hiredDate();
        if (!hired.isValid()) hired = ZeroDate;
        const QDate today = Today();
        if (hired > today) {
            start = hired;
            end = DateAdd(QStringLiteral("d"), -1, DateAdd(QStringLiteral("yyyy"), 1, hired));
            return;
        }
        // The first anniversary on or after today closes the year, so on the anniversary itself the
        // year is still the old one.
        for (int n = 1;; ++n) {
            const QDate anniversary = DateAdd(QStringLiteral("yyyy"), n, hired);
            if (today <= anniversary) {
                start = DateAdd(QStringLiteral("yyyy"), n - 1, hired);
                end = DateAdd(QStringLiteral("d"), -1, anniversary);
                return;
            }
        }
    });
}

void FillLeaveData(LeaveScreen& form, int tabIndex) {
    trap(QStringLiteral("FillLeaveData"), [&] {
        AppContext& app = App();
        form.LeaveArray = GridArray();
        form.tgrdLeave = LeaveGrid{};
        QDate start, end;
        GetCurrentYear(start, end);
        form.CurrentLeaveTypeID = tabIndex + 1;
        form.LeaveLoadedEmployeeID = app.CurrentEmployeeID;
        form.LeaveSelect =
            QStringLiteral("SELECT LeaveDetails.LeaveID, LeaveDetails.EmployeeID, LeaveDetails.LeaveTypeID, "
                           "LeaveDetails.TransTypeID, LeaveDetails.NumberofDays, LeaveDetails.DateFrom, "
                           "LeaveDetails.DateTo, "
                           "LeaveDetails.Comments FROM LeaveDetails");
        form.LeaveWhere =
            QStringLiteral(" WHERE LeaveDetails.EmployeeID = ") + QString::number(app.CurrentEmployeeID) +
            QStringLiteral(" AND LeaveDetails.LeaveTypeID = ") + QString::number(form.CurrentLeaveTypeID) +
            QStringLiteral(" AND LeaveDetails.TransTypeID > 0");
        if (form.currentYear()) {
            form.LeaveWhere += QStringLiteral(" And (LeaveDetails.[DateFrom] >= ") + SQLDate(start) +
                               QStringLiteral(" AND LeaveDetails.[DateFrom] <= ") + SQLDate(end) +
                               QStringLiteral(")");
            form.lblfDate = dateText(start);
            form.lbltDate = dateText(end);
            form.lblHired = QStringLiteral("From");
        } else {
            const QDate hired = hiredDate();
            form.lblfDate = hired.isValid() && hired > ZeroDate ? dateText(hired) : QString();
            form.lbltDate = dateText(Today());
            form.lblHired = QStringLiteral("Hired");
        }
        fillgridarray(app.WageDatabase,
                      form.LeaveSelect + form.LeaveWhere + QStringLiteral(" ORDER BY LeaveDetails.DateFrom"),
                      form.LeaveArray, true, leave::ColumnCount, leave::Description);
        form.LeaveArray.setHeadings(leaveHeaders(form.CurrentLeaveTypeID));
        FillGridNames(form.LeaveArray, QStringLiteral("TransType"), QStringLiteral("Description"),
                      QStringLiteral("TransTypeID"), QStringLiteral("TransType"), app.WageDatabase.path(),
                      QStringLiteral("SELECT TransType.TransTypeID, TransType.TransType FROM TransType "
                                     "WHERE TransTypeID > 1"),
                      false, 0, true, QString(), false, false);
        if (form.onArrayLoaded) form.onArrayLoaded();
        RefreshLeaveTotals(form);
    });
}

void InitLeave(LeaveScreen& form, int tabIndex) {
    trap(QStringLiteral(" InitLeave"), [&] {
        form.CurrentLeaveTypeID = 0;
        FillLeaveData(form, tabIndex);
    });
}

float GetLeaveCarriedForward(const QString& dateText, qint32 leaveTypeID, qint32 addressID) {
    // By address, so that every Employees row of one person shares one balance; cut on DateTo, so a
    // transaction running into the period counts neither here nor in the period's totals.
    const QString sql =
        QStringLiteral("SELECT Sum(iif(TransType.Added, NumberofDays, -NumberofDays)) AS Days FROM TransType "
                       "INNER JOIN (Employees INNER JOIN LeaveDetails ON Employees.EmployeeID = "
                       "LeaveDetails.EmployeeID) ON TransType.TransTypeID = LeaveDetails.TransTypeID Where "
                       "(((LeaveDetails.DateTo) < ") +
        SQLDate(dateText) + QStringLiteral(") And ((Employees.AddressID) = ") + QString::number(addressID) +
        QStringLiteral(")) GROUP BY LeaveDetails.LeaveTypeID HAVING (((LeaveDetails.LeaveTypeID)=") +
        QString::number(leaveTypeID) + QStringLiteral("));");
    auto rs = App().WageDatabase.openRecordset(sql, RecordsetType::Snapshot);
    float days = 0.0f;
    if (!rs->EOF_()) days = CSng(NullToZero(rs->value(0)));
    rs->Close();
    return days;
}

void RefreshLeaveTotals(LeaveScreen& form) {
    form.UpdateGrid();
    const GridArray& a = form.LeaveArray;
    const float allocated = SumGridColumnWhere(a, leave::Days, leave::Description, leave::Added) -
                            SumGridColumnWhere(a, leave::Days, leave::Description, leave::Subtracted);
    const float taken = SumGridColumnWhere(a, leave::Days, leave::Description, leave::Taken);
    float carried = 0.0f;
    if (form.currentYear()) {
        form.cForwardVisible = true;
        carried = GetLeaveCarriedForward(form.lblfDate, form.CurrentLeaveTypeID, App().CurrentAddressID);
        form.txtLeaveCForward = Format(QVariant(carried), QStringLiteral("0.0"));
    } else {
        form.cForwardVisible = false;
    }
    const float available = (carried + allocated) - taken;
    form.txtLeaveAdded = Format(QVariant(allocated), QStringLiteral("0.0"));
    form.txtLeaveTaken = Format(QVariant(taken), QStringLiteral("0.0"));
    form.txtLeaveAvailable = Format(QVariant(available), QStringLiteral("0.0"));
    form.fieldsChanged();
}

void SaveLeaveXArray(LeaveScreen& form) {
    trap(QStringLiteral("SaveLeaveXArray"), [&] {
        AppContext& app = App();
        // The array of one employee is never written under another.
        if (form.LeaveLoadedEmployeeID == 0 || form.LeaveLoadedEmployeeID != app.CurrentEmployeeID ||
            form.CurrentLeaveTypeID <= 0)
            return;
        form.UpdateGrid();
        app.WageDatabase.execute(QStringLiteral("DELETE FROM LeaveDetails") + form.LeaveWhere);
        auto rs = app.WageDatabase.openRecordset(form.LeaveSelect, RecordsetType::Dynaset);
        GridArray& a = form.LeaveArray;
        for (int r = 0; r < a.rowCount(); ++r) {
            if (cellIsEmpty(a.value(r, leave::Description))) continue;
            rs->AddNew();
            rs->setValue(QStringLiteral("EmployeeID"), app.CurrentEmployeeID);
            rs->setValue(QStringLiteral("LeaveTypeID"), form.CurrentLeaveTypeID);
            if (!IsDate(a.value(r, leave::DateFrom)))
                a.setValue(r, leave::DateFrom, Format(QVariant(Today()), QStringLiteral("short date")));
            if (!IsDate(a.value(r, leave::DateTo))) a.setValue(r, leave::DateTo, a.value(r, leave::DateFrom));
            for (int c = leave::Description; c <= leave::Comments; ++c)
                if (!IsNull(a.value(r, c))) rs->setValue(c, a.value(r, c));
            rs->Update();
        }
        rs->Close();
    });
}

void HideWageButtons(PayView& form) {
    for (const char* name : {"cmdAddPay", "cmdDelete", "cmdMemo", "cmdQuick", "datPays"})
        form.control(QString::fromLatin1(name)).visible = false;
}

} // namespace ql
