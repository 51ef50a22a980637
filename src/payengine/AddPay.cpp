#include "AddPay.h"
#include "WriteBatch.h"
#include "Allowances.h"
#include "AppContext.h"
#include "Contributions.h"
#include "Deductions.h"
#include "PayTotals.h"
#include "PayView.h"
#include "Paye.h"
#include "PaymentLines.h"
#include "data/Recordset.h"
#include "frame/Messages.h"
#include "frame/Texts.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

QString idText(qint32 id) {
    return QString::number(id);
}

// A pay date as a text keeps the form a date takes when it is turned into text.
QString dateAsText(const QDate& d) {
    return dateText(QVariant(d));
}

} // namespace

void AddnextPay(PayView& form) {
    QString payDate;
    AddPayment(App().CurrentEmployeeID, payDate, false, form);
}

void AddPayment(qint32 employeeID, QString& payDate, bool firstPay, PayView& form) {
    AppContext& app = App();
    WriteBatch batch(app.WageDatabase);
    const EmployeeRecord& employee = app.EmployeeArray.at(app.CurrentEmployee);
    const qint32 employeeTypeID = employee.EmployeeTypeID;
    const Currency payRate = employee.PayRate;
    QString unitOfPay = employee.UnitOfPay;
    if (unitOfPay.isEmpty()) unitOfPay = QStringLiteral("Hour");
    const QString taxCode = employee.TaxCode;

    float numberOfDays = 0, paysPerYear = 0, weeksPerPay = 0;
    GetPayInterval(employeeID, numberOfDays, paysPerYear, weeksPerPay);
    const qint32 lastWageID = GetLastPayID();
    if (!IsDate(payDate)) GetAddDate(employeeID, payDate, paysPerYear, numberOfDays, form);
    const QString intervalName = GetIntervalName();

    qint32 wageID = 0;
    AddBlankWage(employeeID, payDate, payRate, wageID, intervalName, taxCode, false, Currency(), Currency(),
                 Currency());
    if (!firstPay) DefaultValuesToLastPay(wageID, lastWageID);

    Currency gross;
    AddDefaultPayments(lastWageID, wageID, gross, payRate, employeeTypeID, weeksPerPay, paysPerYear, firstPay,
                       employeeID, unitOfPay);
    AddDefaulttaxable(lastWageID, wageID, employeeTypeID);
    const Currency taxable = gross + SumTaxAllow(wageID);
    AddDefaultNontax(lastWageID, wageID, employeeTypeID);
    AddDefaultDeduct(wageID, taxable, firstPay, employeeID, paysPerYear);

    if (IsKiwiSaverEnrolled(employeeID)) {
        AddDefaultContribution(wageID, taxable, firstPay, employeeID, paysPerYear);
        if (!IsDate(payDate)) payDate = Format(QVariant(Today()), QStringLiteral("short date"));
        form.setLabelValue(QStringLiteral("lblTaxCredit"), QVariant::fromValue(GetKiwiSaverCredit(payDate)));
    }

    // Only the TaxDetails row counts here; the text comes again with the recalculation below.
    CalcPAYE(employeeID, wageID, taxable, paysPerYear);

    // The refresh repositions the list inside this procedure: no grid fill and no first-pay prompt
    // may start from there.
    app.ReloadingPays = true;
    form.datPays.Refresh();
    app.ReloadingPays = false;
    form.datPays.MoveLast();

    ReCalcPAYE(form);
    SetTakeHome(form);
}

void GetPayInterval(qint32 employeeID, float& numberOfDays, float& paysPerYear, float& weeksPerPay) {
    numberOfDays = 0;
    paysPerYear = 0;
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("SELECT PayInterval.NumberOfDays, PayInterval.PaysPerYear "
                       "FROM PayInterval INNER JOIN Employees "
                       "ON PayInterval.PayIntervalID = Employees.PayIntervalID "
                       "WHERE Employees.EmployeeID = ") +
            idText(employeeID),
        RecordsetType::Snapshot);
    if (!rs->EOF_()) {
        const QVariant days = rs->value(QStringLiteral("NumberOfDays"));
        const QVariant pays = rs->value(QStringLiteral("PaysPerYear"));
        numberOfDays = IsNull(days) ? 0.0f : CSng(days);
        paysPerYear = IsNull(pays) ? 0.0f : CSng(pays);
    }
    rs->Close();
    // The year has 52.14 weeks. The quotient is taken in double and kept as a Single.
    if (paysPerYear > 0)
        weeksPerPay = static_cast<float>(52.14 / static_cast<double>(paysPerYear));
    else
        weeksPerPay = static_cast<float>(52.14);
}

void GetAddDate(qint32 employeeID, QString& payDate, float paysPerYear, float numberOfDays, PayView& form) {
    trap(QStringLiteral("GetAddDate"), [&] {
        QString base;
        auto rs = App().WageDatabase.openRecordset(
            QStringLiteral("SELECT Date From Wages Where EmployeeID = ") + idText(employeeID) +
                QStringLiteral(" And OneOff = 0 ORDER BY Wages.Date DESC "
                               "LIMIT 1;"),
            RecordsetType::Snapshot);
        if (!rs->EOF_()) {
            const QVariant d = rs->value(QStringLiteral("Date"));
            if (!IsNull(d)) base = dateText(d);
        }
        rs->Close();
        if (!IsDate(base)) base = form.caption(QStringLiteral("lblPayDate"));
        if (IsDate(base)) {
            const QDate baseDate = CDate(base);
            if (numberOfDays > 0) {
                payDate = dateAsText(DateAdd(QStringLiteral("d"), numberOfDays, baseDate));
            } else if (paysPerYear > 0) {
                // Months per pay as a Single quotient, which the date step rounds to whole months:
                // 12 pays move one month, 24 two, 4 none.
                const float months = paysPerYear / 12.0f;
                payDate = dateAsText(DateAdd(QStringLiteral("m"), months, baseDate));
            }
        } else {
            payDate = Format(QVariant(Today()), QStringLiteral("short date"));
        }
    });
}

qint32 GetLastPayID() {
    const QVariant id = App().WageDatabase.scalar(
        QStringLiteral("Select WageID from Wages where EmployeeID = ") + idText(App().CurrentEmployeeID) +
        QStringLiteral(" AND OneOff = 0 Order by Wages.date Desc LIMIT 1"));
    return IsNull(id) ? 0 : CLng(id);
}

QString GetIntervalName() {
    const QVariant name = App().WageDatabase.scalar(
        QStringLiteral("SELECT PayInterval.IntervalName FROM PayInterval INNER JOIN Employees "
                       "ON PayInterval.PayIntervalID = Employees.PayIntervalID "
                       "WHERE Employees.EmployeeID = ") +
        idText(App().CurrentEmployeeID));
    return IsNull(name) ? QString() : CStr(name);
}

void AddBlankWage(qint32 employeeID, const QString& payDate, Currency rate, qint32& wageID,
                  const QString& payInterval, const QString& taxCode, bool oneOff, Currency gross,
                  Currency paye, Currency takeHome) {
    // A dynaset of no rows takes the new one: the pays already there need not be read.
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("SELECT * FROM Wages WHERE WageID = 0 AND WageID <> 0"), RecordsetType::Dynaset);
    rs->AddNew();
    const QDate date = IsDate(payDate) ? CDate(payDate) : Today();
    rs->setValue(QStringLiteral("Date"), QVariant(date));
    rs->setValue(QStringLiteral("Rate"), QVariant::fromValue(rate));
    rs->setValue(QStringLiteral("EmployeeID"), QVariant(employeeID));
    rs->setValue(QStringLiteral("TaxCode"), QVariant(taxCode));
    rs->setValue(QStringLiteral("PayInterval"), QVariant(payInterval));
    if (oneOff) {
        rs->setValue(QStringLiteral("OneOff"), QVariant(true));
        rs->setValue(QStringLiteral("Gross"), QVariant::fromValue(gross));
        rs->setValue(QStringLiteral("TotalTaxable"), QVariant::fromValue(gross));
        rs->setValue(QStringLiteral("PAYE"), QVariant::fromValue(paye));
        rs->setValue(QStringLiteral("TakeHome"), QVariant::fromValue(takeHome));
    }
    rs->Update();
    rs->setBookmark(rs->LastModified());
    wageID = CLng(rs->value(QStringLiteral("WageID")));
    rs->Close();
}

void DefaultValuesToLastPay(qint32 newWageID, qint32 lastWageID) {
    Database& db = App().WageDatabase;
    // Each pay's own row, found by its key, so that the time does not grow with the pays stored. A pay
    // that is not there leaves the table's first row, as a failed find leaves a recordset where it stood:
    // the copy is made all the same.
    auto row = [&](qint32 wageID) {
        auto rs = db.openRecordset(QStringLiteral("SELECT * FROM Wages WHERE [WageID]=") + idText(wageID),
                                   RecordsetType::Dynaset);
        if (rs->EOF_()) {
            rs->Close();
            rs = db.openRecordset(QStringLiteral("SELECT * FROM Wages ORDER BY WageID LIMIT 1"),
                                  RecordsetType::Dynaset);
        }
        return rs;
    };
    auto to = row(newWageID);
    auto from = row(lastWageID);
    QStringList columns{QStringLiteral("Hours"),      QStringLiteral("Gross"),
                        QStringLiteral("TaxAllow"),   QStringLiteral("TotalTaxable"),
                        QStringLiteral("PAYE"),       QStringLiteral("NonTaxAllow"),
                        QStringLiteral("Deductions"), QStringLiteral("TakeHome")};
    if (IsKiwiSaverEnrolled(App().CurrentEmployeeID))
        columns << QStringLiteral("KiwiSaverContribution") << QStringLiteral("ESCTDeductions");
    to->Edit();
    for (const QString& c : columns)
        to->setValue(c, from->value(c));
    to->Update();
    to->Close();
    from->Close();
}

void FirstPayPrompt(PayView& form, const QString& employeeName) {
    QString answer =
        InputBx(TranslateText(QStringLiteral("Enter date of first pay for |0|"), QStringList{employeeName}),
                QStringLiteral("Pay Date"), Format(QVariant(Today()), QStringLiteral("Short date")));
    if (!IsDate(answer)) answer = Format(QVariant(Today()), QStringLiteral("Short date"));
    AddPayment(App().CurrentEmployeeID, answer, true, form);
    form.refreshGrid();
}

void RepositionPay(PayList& recordset, PayView& form, const QString& employeeName) {
    trap(QStringLiteral("RepositionPay"), [&] {
        AppContext& app = App();
        if (app.ReloadingPays) {
            if (recordset.EOF_() && recordset.BOF()) FirstPayPrompt(form, employeeName);
            app.CurrentWageID = CLng(recordset.value(QStringLiteral("WageID")));
            return;
        }
        if (!recordset.EOF_() && !recordset.BOF()) {
            app.CurrentWageID = CLng(recordset.value(QStringLiteral("WageID")));
            FillWageGrid(form);
            return;
        }
        if (recordset.EOF_()) {
            if (form.DeleteEmployee(employeeName))
                form.reloadEmployees();
            else
                FirstPayPrompt(form, employeeName);
        }
    });
}

void SetEmpArray(qint32 value, const QString& kind) {
    trap(QStringLiteral("SetEmpArray"), [&] {
        const bool byEmployee = kind == QLatin1String("employee");
        const bool byAddress = kind == QLatin1String("address");
        if (!byEmployee && !byAddress) return;
        AppContext& app = App();
        for (qint32 i = 0; i < app.EmployeeArray.size(); ++i) {
            const EmployeeRecord& e = app.EmployeeArray.at(i);
            if ((byEmployee && e.EmployeeID == value) || (byAddress && e.AddressID == value)) {
                app.CurrentEmployeeID = e.EmployeeID;
                app.CurrentAddressID = e.AddressID;
                app.CurrentEmployee = i;
                return;
            }
        }
    });
}

void SelectCurrentEmp(const QVector<qint32>& itemData, int& listIndex) {
    trap(QStringLiteral("SelectCurrentEmp"), [&] {
        for (int i = 0; i < itemData.size(); ++i)
            if (itemData.at(i) == App().CurrentEmployeeID) listIndex = i;
    });
}

void FillpayInfoArray(const QString& query, bool withSalary) {
    trap(QStringLiteral("FillpayInfoArray"), [&] {
        auto rs = App().WageDatabase.openRecordset(query, RecordsetType::Snapshot);
        if (rs->EOF_() && rs->BOF()) {
            rs->Close();
            return;
        }
        rs->MoveLast();
        const int count = rs->RecordCount();
        // Indexes 0 to count: the last record stays empty.
        QVector<PayInfoRecord>& info = App().PayInfo;
        info = QVector<PayInfoRecord>(count + 1);
        rs->MoveFirst();
        for (int i = 0; !rs->EOF_(); ++i, rs->MoveNext()) {
            const QVariant id = rs->value(0);
            const QVariant rate = rs->value(1);
            if (!IsNull(id)) info[i].id = CLng(id);
            if (!IsNull(rate)) info[i].rate = CSng(rate);
            if (withSalary) {
                const QVariant salary = rs->value(QStringLiteral("Salary"));
                if (!IsNull(salary)) info[i].salary = QVariant(CBool(salary));
            }
        }
        rs->Close();
    });
}

float GetPayInfoRate(qint32 id) {
    for (const PayInfoRecord& r : App().PayInfo)
        if (r.id == id) return r.rate;
    return 0.0f;
}

QVariant GetPayInfoSalary(qint32 id) {
    for (const PayInfoRecord& r : App().PayInfo)
        if (r.id == id) return r.salary;
    return QVariant();
}

} // namespace ql
