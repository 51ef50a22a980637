#include "Paye.h"
#include "AppContext.h"
#include "CountryEquations.h"
#include "EditChecks.h"
#include "ExtraPay.h"
#include "FinalPayTax.h"
#include "IrdPay.h"
#include "PayTaxFigures.h"
#include "PayView.h"
#include "TypedPaye.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "frame/Texts.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include <cmath>

namespace ql {

namespace {

const QString kLocation = QStringLiteral("CalcPAYE");

QString stepQuery(qint32 employeeID) {
    return QStringLiteral(
               "SELECT "
               "TaxSteps.[upperlimit], "
               "TaxSteps.[taxrate], "
               "TaxSteps.taxtypeID, "
               "TaxTypes.[Taxname] "
               "FROM (TaxTypes INNER JOIN Employees ON TaxTypes.[TaxTypeID] = Employees.[TaxTypeID]) "
               "INNER JOIN TaxSteps ON TaxTypes.[TaxTypeID] = TaxSteps.[taxtypeID] "
               "WHERE Employees.[EmployeeID] = %1 ORDER BY TaxSteps.[upperlimit];")
        .arg(employeeID);
}

Currency fieldCurrency(const Recordset& rs, const QString& name) {
    const QVariant v = rs.value(name);
    return IsNull(v) ? Currency() : CCur(v);
}

// A Currency divided by a whole number is a Double.
double per52(Currency c) {
    return c.toDouble() / 52.0;
}

QString currentTaxCode() {
    AppContext& app = App();
    const qint32 i = app.CurrentEmployee;
    if (i < 0 || i >= app.EmployeeArray.size()) raiseError(err::SubscriptOutOfRange);
    return app.EmployeeArray[i].TaxCode.toUpper();
}

} // namespace

void CalcTaxSteps(const QString& query, Currency annual, float paysPerYear, TaxDetailRecord& record,
                  Currency& paye, qint32& closingProcess) {
    auto rs = App().WageDatabase.openRecordset(query, RecordsetType::Snapshot);
    Currency total;
    Currency lowerLimit;
    Currency remaining = annual;
    float rate = 0.0f;
    const bool debug = Debug();
    QString stepLog;

    while (!rs->EOF_() && !rs->BOF()) {
        rate = static_cast<float>(CSng(rs->value(QStringLiteral("taxrate"))) / 100.0f);
        const Currency upperLimit = fieldCurrency(*rs, QStringLiteral("upperlimit"));
        const Currency band = upperLimit - lowerLimit;
        Currency amount;
        // Strictly below: an annual figure equal to a limit fills that step with the remainder.
        if (upperLimit < annual) {
            amount = band;
            lowerLimit = upperLimit;
            remaining = remaining - band;
        } else if (remaining <= Currency()) {
            amount = Currency();
        } else {
            amount = remaining;
            remaining = Currency();
        }
        const Currency stepTax = Currency::fromDouble(amount.toDouble() * static_cast<double>(rate));
        total += stepTax;
        if (debug) {
            stepLog += QStringLiteral("lowerlimit=") + CStr(per52(lowerLimit)) + QStringLiteral(" amount=") +
                       CStr(per52(amount)) + QStringLiteral(" rate=") + CStr(rate) + QStringLiteral("PAYE=") +
                       CStr(per52(stepTax)) + QStringLiteral(" Payetotal=") + CStr(per52(total)) +
                       QStringLiteral("\r\n");
        }
        rs->MoveNext();
    }
    rs->Close();
    // Above the last limit the last rate goes on.
    if (remaining > Currency())
        total += Currency::fromDouble(remaining.toDouble() * static_cast<double>(rate));

    Currency result;
    if (paysPerYear <= 0.0f) {
        result = total;
    } else {
        Currency x;
        Currency y;
        if (CountryPhone() == 64)
            ApplySpecialTaxCode(currentTaxCode(), annual, paysPerYear, closingProcess, x, y);
        result = CountrySpecificEquation(total, paysPerYear, closingProcess, x);
        result = result - y;
    }
    paye = result;
    record.PAYE = result;
    if (!stepLog.isEmpty())
        ShowMessage(stepLog, 0, Firm(), QStringLiteral("An Error has Occurred"), QString(), 6, true);
}

void AddTaxDetail(qint32 wageID, const TaxDetailRecord& record) {
    if (record.TaxableAmount <= Currency()) return;
    // A dynaset of no rows takes the new one: the tax lines of other pays need not be read.
    auto rs = App().WageDatabase.openRecordset(QStringLiteral("SELECT * FROM TaxDetails WHERE 0 = 1"),
                                               RecordsetType::Dynaset);
    rs->AddNew();
    rs->setValue(QStringLiteral("WageID"), wageID);
    rs->setValue(QStringLiteral("PayIntervalID"), record.PayIntervalID);
    rs->setValue(QStringLiteral("TaxableAmount"), QVariant::fromValue(record.TaxableAmount));
    rs->setValue(QStringLiteral("TaxTypeID"), record.TaxTypeID);
    rs->setValue(QStringLiteral("PAYE"), QVariant::fromValue(record.PAYE));
    rs->Update();
    rs->Close();
}

Currency StoreTaxDetails(const QString& query, Currency annual, qint32 /*employeeID*/, qint32 wageID,
                         float paysPerYear, qint32& closingProcess, TaxDetailRecord& record) {
    Currency paye;
    Currency shown;
    trap(kLocation, [&] {
        CalcTaxSteps(query, annual, paysPerYear, record, paye, closingProcess);
        App().WageDatabase.execute(
            QStringLiteral("Delete FROM TaxDetails WHERE TaxDetails.WageID = %1").arg(wageID));
        AddTaxDetail(wageID, record);
        // What leaves here is what the format shows: two decimals.
        shown = CCur(Format(QVariant::fromValue(paye), QStringLiteral("currency")));
    });
    return shown;
}

QString CalcPAYE(qint32 employeeID, qint32 wageID, Currency taxable, float paysPerYear) {
    QString result;
    trap(kLocation, [&] {
        const QString query = stepQuery(employeeID);
        auto rs = App().WageDatabase.openRecordset(query, RecordsetType::Snapshot);
        qint32 openingProcess = TaxProcessRound;
        qint32 closingProcess = TaxProcessRound;
        TaxDetailRecord record;
        record.TaxableAmount = taxable;
        record.PayIntervalID = GetPayIntervalID();
        if (!rs->EOF_()) {
            record.TaxTypeID = CLng(rs->value(QStringLiteral("taxtypeID")));
            rs->MoveLast();
            // One step is a flat rate: no yearly conversion, only the rounding process.
            if (rs->RecordCount() > 1) {
                openingProcess = TaxProcessAnnualise;
                closingProcess = TaxProcessPerPay;
            }
        }
        rs->Close();
        // An extra pay stays one: recalculated, it keeps the extra-pay method and its tax type.
        if (const auto extra = ExtraPayTaxOfPay(employeeID, wageID, taxable)) {
            Database& db = App().WageDatabase;
            const QVariantList kept = db.firstRow(
                QStringLiteral("SELECT TaxTypeID, PayIntervalID FROM TaxDetails WHERE WageID = %1").arg(wageID));
            record.TaxTypeID = kept.size() > 0 && !IsNull(kept.at(0)) ? CLng(kept.at(0)) : record.TaxTypeID;
            record.PayIntervalID = kept.size() > 1 && !IsNull(kept.at(1)) ? CLng(kept.at(1)) : record.PayIntervalID;
            record.PAYE = extra->paye;
            PayTaxFigures figures = LoadPayTaxFigures(db, wageID);
            figures.givingCredit = Currency();
            figures.notLiable = extra->notLiable;
            figures.lowestRate = extra->lowestRate;
            SavePayTaxFigures(db, wageID, figures);
            db.execute(QStringLiteral("Delete FROM TaxDetails WHERE TaxDetails.WageID = %1").arg(wageID));
            AddTaxDetail(wageID, record);
            result = Format(QVariant::fromValue(record.PAYE), QStringLiteral("currency"));
            return;
        }
        // A New Zealand pay with a tax year in force: Inland Revenue's method, exactly.
        if (const auto c = IrdContextForPay(employeeID, wageID, paysPerYear)) {
            PayTaxFigures figures = LoadPayTaxFigures(App().WageDatabase, wageID);
            if (const auto finalPay = FinalPayTaxOfPay(*c, employeeID, wageID, taxable)) {
                // A final pay's holiday lines are an extra pay, whatever edit brought the pay here.
                record.PAYE = finalPay->paye();
                figures.givingCredit = finalPay->givingCredit;
                figures.lowestRate = finalPay->lowestRate;
            } else {
                // The payroll giving credit comes off the PAYE the pay takes; the payday filing reports both.
                const qint64 cents = CurrencyToCents(taxable);
                const qint64 credit = PayrollGivingCreditForPay(*c, wageID, cents);
                record.PAYE =
                    CentsToCurrency(ird::PayeCents(c->figures, c->code, cents, c->pays, c->items.tailoredRate) - credit);
                figures.givingCredit = CentsToCurrency(credit);
                figures.lowestRate = false;
            }
            SavePayTaxFigures(App().WageDatabase, wageID, figures);
            App().WageDatabase.execute(
                QStringLiteral("Delete FROM TaxDetails WHERE TaxDetails.WageID = %1").arg(wageID));
            AddTaxDetail(wageID, record);
            result = Format(QVariant::fromValue(record.PAYE), QStringLiteral("currency"));
            return;
        }
        const Currency annual =
            paysPerYear <= 0.0f ? taxable
                                : CountrySpecificEquation(taxable, paysPerYear, openingProcess, Currency());
        const Currency paye =
            StoreTaxDetails(query, annual, employeeID, wageID, paysPerYear, closingProcess, record);
        result = Format(QVariant::fromValue(paye), QStringLiteral("currency"));
    });
    return result;
}

// The ranges are inclusive and their gaps of just under a dollar stand as they are.
void ApplySpecialTaxCode(const QString& code, Currency t, float paysPerYear, qint32& closingProcess,
                         Currency& x, Currency& y) {
    auto within = [t](qint64 low, qint64 high) {
        return t >= Currency::fromLong(low) && t <= Currency::fromLong(high);
    };
    if (code == QLatin1String("ME") || code == QLatin1String("ME SL") || code == QLatin1String("MESL")) {
        if (within(24000, 44000)) {
            closingProcess = TaxProcessCredit;
            x = Currency::fromLong(520);
        } else if (within(44001, 47999)) {
            closingProcess = TaxProcessCredit;
            x = Currency::fromDouble(520.0 - (t - Currency::fromLong(44000)).toDouble() * 0.13);
        }
    } else if (code == QLatin1String("ML") || code == QLatin1String("M L")) {
        const double p = static_cast<double>(paysPerYear);
        if (within(1, 5824)) {
            y = Currency::fromDouble(t.toDouble() * 0.105 / p);
        } else if (within(5825, 6240)) {
            closingProcess = TaxProcessLowIncome;
            y = Currency::fromDouble(611.52 / p);
        } else if (within(6241, 9880)) {
            y = Currency::fromDouble((1659.84 - t.toDouble() * 0.168) / p);
        }
    }
}

qint32 GetPayIntervalID() {
    const QVariant v =
        App().WageDatabase.scalar(QStringLiteral("SELECT PayIntervalID FROM Employees WHERE EmployeeID = %1")
                                      .arg(App().CurrentEmployeeID));
    return IsNull(v) ? 0 : CLng(v);
}

bool CheckPAYEBox(PayView& form) {
    const QString before = form.PAYEText;
    const QString now = form.caption(QStringLiteral("txtPAYE"));
    if (!IsNumeric(before) || !IsNumeric(now)) return false;
    // A figure no pay's tax can reach is refused, and the box shows the accepted one again.
    const double typed = CDbl(now);
    if (!std::isfinite(typed) || std::abs(typed) > LargestLineFigure) {
        ShowEntryRefusal(TranslateText(
            QStringLiteral("The |0| typed is too large: it may be at most |1|.\r\n\r\n"
                           "The previous value has been restored"),
            QStringList{PayAsYouEarn(), Format(LargestLineFigure, QStringLiteral("Standard"))}));
        form.setCaption(QStringLiteral("txtPAYE"), before);
        return false;
    }
    if (RoundCurrency(before) == RoundCurrency(now)) return false;
    return EditPAYE(form, now);
}

bool EditPAYE(PayView& form, const QString& newPAYE) {
    const QString message =
        TranslateText(QStringLiteral("Are you sure you want to overwrite the calculated |0|?"),
                      QStringList{PayAsYouEarn()});
    const qint16 answer =
        ShowMessage(message, 4, Firm(), QStringLiteral("Please Confirm"), QString(), 9, true);
    if (answer != 6) {
        form.setCaption(QStringLiteral("txtPAYE"), form.PAYEText);
        return false;
    }
    SavePAYE(newPAYE);
    form.setCaption(QStringLiteral("lblPaye"), Format(newPAYE, QStringLiteral("currency")));
    const QString shown = form.caption(QStringLiteral("lblPaye"));
    form.setCaption(QStringLiteral("txtPAYE"), shown);
    form.PAYEText = shown;
    return true;
}

void SavePAYE(const QString& newPAYE) {
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("Select PAYE from TaxDetails where WageID = %1").arg(App().CurrentWageID),
        RecordsetType::Dynaset);
    // A typed 0 or less is only shown, never stored. The figure is kept to the cent the box shows, so
    // that the take-home pay agrees with the PAYE label. A pay with no tax line has nothing to change.
    const Currency value = RoundCurrency(newPAYE);
    if (value > Currency() && !rs->EOF_()) {
        rs->Edit();
        rs->setValue(QStringLiteral("PAYE"), QVariant::fromValue(value));
        rs->Update();
        rs->Close();
        RecordTypedPaye(App().WageDatabase, App().CurrentWageID, value);
        return;
    }
    rs->Close();
}

} // namespace ql
