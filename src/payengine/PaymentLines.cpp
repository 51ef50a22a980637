#include "PaymentLines.h"
#include "AddPay.h"
#include "AppContext.h"
#include "PayTotals.h"
#include "PayView.h"
#include "data/GridArray.h"
#include "data/Recordset.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"

// Arithmetic types. Units are Single; rates and amounts are Currency. A product or quotient that
// lands in a Currency is taken in double and converted once, half to even at four decimals; one that
// lands in a Single is taken in double and rounded once to float (the same as float arithmetic for
// one operation).

namespace ql {

namespace {

float singleOf(const QVariant& v) { return IsNull(v) ? 0.0f : CSng(v); }
Currency currencyOf(const QVariant& v) { return IsNull(v) ? Currency() : CCur(v); }
bool isTrue(const QVariant& v) { return !IsNull(v) && CBool(v); }

Currency times(Currency amount, float factor) {
    return Currency::fromDouble(amount.toDouble() * static_cast<double>(factor));
}

// The hours a pay the employee was set up with (EmployeeTerms, made by the employee editor); 0 when
// none, and then the occupation's standard hours count.
float usualHours(Database& db, qint32 employeeID) {
    if (!db.hasTable(QStringLiteral("EmployeeTerms"))) return 0;
    return singleOf(
        db.scalar(QStringLiteral("SELECT UsualHours FROM EmployeeTerms WHERE EmployeeID = %1").arg(employeeID)));
}

} // namespace

Currency CalcSalary(Currency yearlyTotal, float paysPerYear) {
    if (yearlyTotal <= Currency())
        return Currency();
    // The factor is a double: 50,000 over 26 pays is 1,923.0769.
    const double factor = paysPerYear > 0 ? 1.0 / static_cast<double>(paysPerYear) : 0.0;
    return Currency::fromDouble(yearlyTotal.toDouble() * factor);
}

void updateSalary(Recordset& details, qint32 wageID, qint32 paymentNameID, Currency salary, Currency& gross) {
    if (details.EOF_() && details.BOF())
        return;
    details.MoveFirst();
    while (!details.EOF_()) {
        if (CLng(details.value(QStringLiteral("WageID"))) == wageID &&
            CLng(details.value(QStringLiteral("PaymentNameID"))) == paymentNameID)
            break;
        details.MoveNext();
    }
    if (details.EOF_())
        return;
    details.Edit();
    details.setValue(QStringLiteral("Payment"), QVariant::fromValue(salary));
    const float units = singleOf(details.value(QStringLiteral("DetailHours")));
    if (units > 0) {
        details.setValue(QStringLiteral("EquivPayRate"),
                         QVariant::fromValue(Currency::fromDouble(salary.toDouble() / static_cast<double>(units))));
    } else {
        details.setValue(QStringLiteral("DetailHours"), QVariant(1.0f));
        details.setValue(QStringLiteral("EquivPayRate"), QVariant::fromValue(salary));
    }
    details.Update();
    gross += currencyOf(details.value(QStringLiteral("Payment")));
}

void AddDefaultPayments(qint32 lastWageID, qint32 wageID, Currency& gross, Currency payRate,
                        qint32 employeeTypeID, float weeksPerPay, float paysPerYear, bool firstPay,
                        qint32 employeeID, const QString& unitOfPay) {
    Database& db = App().WageDatabase;
    auto last = db.openRecordset(
        QStringLiteral("SELECT iif(PaymentNames.Calculation>0,"
                       "PaymentNames.PayUnitname || ' (x' || vbstr(PaymentNames.Calculation) || ')',"
                       "PaymentNames.PayUnitname) AS PaymentName, "
                       "PaymentNames.PaymentNameID, PaymentDetails.DetailHours, PaymentDetails.EquivPayRate, "
                       "PaymentNames.Salary, PaymentDetails.Payment "
                       "FROM PaymentNames INNER JOIN PaymentDetails "
                       "ON PaymentNames.PaymentNameID = PaymentDetails.PaymentNameID "
                       "WHERE PaymentDetails.WageID = ") +
            QString::number(lastWageID) + QStringLiteral(";"),
        RecordsetType::Snapshot);
    auto details = db.openRecordset(QStringLiteral("SELECT * FROM PaymentDetails WHERE WageID = ") +
                                        QString::number(wageID),
                                    RecordsetType::Dynaset);
    gross = Currency();
    qint32 salaryName = 0;

    auto lines = db.openRecordset(
        QStringLiteral("SELECT PaymentNames.PayUnitname, PaymentTypes.PaymentNameID, PaymentNames.Calculation, "
                       "PaymentTypes.Standardhours, PaymentNames.Salary "
                       "FROM PaymentNames INNER JOIN PaymentTypes "
                       "ON PaymentNames.PaymentNameID = PaymentTypes.PaymentNameID "
                       "WHERE PaymentTypes.EmployeeTypeID= ") +
            QString::number(employeeTypeID) + QStringLiteral(" ORDER BY PaymentTypes.[Order];"),
        RecordsetType::Snapshot);
    const bool lastHasLines = !(last->EOF_() && last->BOF());
    // A first pay's first line with standard hours takes the employee's own usual hours.
    float ownHours = firstPay || !lastHasLines ? usualHours(db, employeeID) : 0.0f;
    while (!lines->EOF_()) {
        const qint32 nameID = CLng(lines->value(QStringLiteral("PaymentNameID")));
        details->AddNew();
        details->setValue(QStringLiteral("WageID"), QVariant(wageID));
        details->setValue(QStringLiteral("PaymentNameID"), QVariant(nameID));

        const QVariant standard = lines->value(QStringLiteral("Standardhours"));
        float units = IsNull(standard) ? 0.0f : static_cast<float>(static_cast<double>(CSng(standard)) *
                                                                    static_cast<double>(weeksPerPay));
        if (ownHours > 0 && units > 0 && !isTrue(lines->value(QStringLiteral("Salary")))) {
            units = ownHours;
            ownHours = 0;
        }
        if (!firstPay && lastHasLines) {
            for (last->MoveFirst(); !last->EOF_(); last->MoveNext()) {
                if (CLng(last->value(QStringLiteral("PaymentNameID"))) == nameID) {
                    units = singleOf(last->value(QStringLiteral("DetailHours")));
                    break;
                }
            }
        }
        details->setValue(QStringLiteral("DetailHours"), QVariant(units));

        if (!isTrue(lines->value(QStringLiteral("Salary")))) {
            const float calculation = singleOf(lines->value(QStringLiteral("Calculation")));
            details->setValue(QStringLiteral("EquivPayRate"), QVariant::fromValue(times(payRate, calculation)));
            // The stored units times the stored rate.
            const Currency payment = times(currencyOf(details->value(QStringLiteral("EquivPayRate"))),
                                           singleOf(details->value(QStringLiteral("DetailHours"))));
            details->setValue(QStringLiteral("Payment"), QVariant::fromValue(payment));
            gross += currencyOf(details->value(QStringLiteral("Payment")));
        } else {
            salaryName = nameID;
        }
        details->Update();
        lines->MoveNext();
    }
    lines->Close();

    Currency yearlyTotal;
    if (salaryName > 0) {
        yearlyTotal = currencyOf(db.scalar(QStringLiteral("SELECT YearlyTotal FROM Employees WHERE EmployeeID = ") +
                                           QString::number(employeeID)));
        const Currency salary = CalcSalary(yearlyTotal, paysPerYear);
        if (salary > Currency())
            updateSalary(*details, wageID, salaryName, salary, gross);
    }
    details->Close();
    last->Close();

    if (yearlyTotal == Currency() && gross == Currency()) {
        ShowMessage(QStringLiteral("No payments set up for this employee.\r\n\r\n  ") +
                        TranslateText(QStringLiteral("Please add some |0| in |1| payments"),
                                      QStringList{unitOfPay, QStringLiteral("Gross")}),
                    msg::OKOnly, Firm(), QStringLiteral("Information Required"), QString(), msg::Information,
                    false);
    }
}

void RecalcPaymentRow(GridArray& grid, int row, int column, const QString& newText) {
    float units = 0;
    Currency rate, amount;
    const QVariant unitsCell = grid.value(row, 2);
    const QVariant rateCell = grid.value(row, 3);
    const QVariant amountCell = grid.value(row, 4);
    // Rate and amount pass through a Single on the way in.
    if (IsNumeric(unitsCell))
        units = CSng(unitsCell);
    if (IsNumeric(rateCell))
        rate = Currency::fromSingle(CSng(rateCell));
    if (IsNumeric(amountCell))
        amount = Currency::fromSingle(CSng(amountCell));
    const QVariant nameCell = grid.value(row, 1);
    const qint32 nameID = IsNumeric(nameCell) ? CLng(nameCell) : 0;
    const bool salaryLine = isTrue(GetPayInfoSalary(nameID));

    auto unitsFromAmount = [&] {
        units = static_cast<float>(amount.toDouble() / rate.toDouble());
    };
    switch (column) {
    case 2:
        units = CSng(newText);
        if (salaryLine && units > 0)
            rate = Currency::fromDouble(amount.toDouble() / static_cast<double>(units));
        else
            amount = times(rate, units);
        break;
    case 3:
        rate = Currency::fromSingle(CSng(newText));
        if (salaryLine && rate > Currency())
            unitsFromAmount();
        else
            amount = times(rate, units);
        break;
    case 4: {
        amount = Currency::fromSingle(CSng(newText));
        const double typed = CDbl(newText);
        if (units >= 1) {
            rate = Currency::fromDouble(typed / static_cast<double>(units));
        } else {
            if (rate < Currency::fromLong(1))
                rate = Currency::fromLong(1);
            units = static_cast<float>(typed / rate.toDouble());
        }
        break;
    }
    case 1:
        rate = Currency::fromSingle(GetPayInfoRate(CLng(newText)));
        if (salaryLine && rate > Currency())
            unitsFromAmount();
        else
            amount = times(rate, units);
        break;
    default:
        break;
    }
    grid.setValue(row, 2, Format(QVariant(units), QStringLiteral("fixed")));
    grid.setValue(row, 3, Format(QVariant::fromValue(rate), QStringLiteral("fixed")));
    grid.setValue(row, 4, Format(QVariant::fromValue(amount), QStringLiteral("currency")));
}

void UpdatePayTotals(PayView& form) {
    const float hours = SumGridColumn(form.WageGridArray, 2);
    const Currency gross = Currency::fromSingle(SumGridColumn(form.WageGridArray, 4));
    form.datPays.setValueNow(QStringLiteral("Hours"), QVariant(hours));
    form.datPays.setValueNow(QStringLiteral("Gross"), QVariant::fromValue(gross));
    form.setCaption(QStringLiteral("lblGross"), Format(QVariant::fromValue(gross), QStringLiteral("currency")));
    if (gross > Currency())
        ReCalcPAYE(form);
}

} // namespace ql
