// What each view of the wage screen shows: the five detail grids with their headings, name lists and
// lookups, the PAYE panel, and the pay's caption.
#include "AddPay.h"
#include "AppContext.h"
#include "PayTotals.h"
#include "PayView.h"
#include "data/Database.h"
#include "data/GridArray.h"
#include "data/GridHelpers.h"
#include "data/Recordset.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "Deductions.h"

namespace ql {

namespace {

struct GridFill {
    QStringList headings;
    QString dataQuery; // up to and without its WHERE
    QString where;     // the filter, to which the WageID is appended
    QString nameTable;
    QString idField;
    QString nameField;
    QString nameQuery;
    QString payInfoQuery;
    bool withSalary = false;
};

// A new array, its headings, the query of the open table, the lines of the pay, the look, the name
// list of column 1 and the lookup of the names.
void fillGrid(PayView& form, const GridFill& fill) {
    AppContext& app = App();
    form.WageGridArray = GridArray();
    form.WageGridArray.setHeadings(fill.headings);
    app.WageGridQuery = fill.dataQuery;
    fillgridarray(app.WageDatabase, fill.dataQuery + fill.where + QString::number(app.CurrentWageID),
                  form.WageGridArray, GetPayEditable(), fill.headings.size(), 1);
    form.refreshGrid();
    FillGridNames(form.WageGridArray, fill.nameTable, fill.headings.value(1), fill.idField, fill.nameField,
                  WageFileName(), fill.nameQuery, false, 0, true, QString(), false, false);
    FillpayInfoArray(fill.payInfoQuery, fill.withSalary);
}

QString countryFilter() { return QString::number(CountryPhone()); }

// For an employee outside KiwiSaver the list leaves out the KiwiSaver name. The tail binds to the
// second test only, and the contribution list names DeductNames, which its query does not hold.
QString notEnrolledTail() {
    return IsKiwiSaverEnrolled(App().CurrentEmployeeID) ? QString()
                                                        : QStringLiteral(" AND DeductNames.TaxName <> \"kiwisaver\"");
}

QString payCaption(const PayView& form) {
    const QVariant interval = form.datPays.value(QStringLiteral("PayInterval"));
    const QVariant code = form.datPays.value(QStringLiteral("TaxCode"));
    return (IsNull(interval) ? QString() : CStr(interval)) + QStringLiteral(" (") +
           (IsNull(code) ? QString() : CStr(code)) + QStringLiteral(")");
}

} // namespace

void FillPaymentGrid(PayView& form) {
    const QString unit = App().EmployeeArray.value(App().CurrentEmployee).UnitOfPay;
    fillGrid(form, {{QStringLiteral("Wage"), QStringLiteral("Payment"), QStringLiteral("Units (") + unit + QStringLiteral(")"),
                     QStringLiteral("Rate"), QStringLiteral("Amount")},
                    QStringLiteral("SELECT WageID, PaymentNameID, DetailHours, EquivPayRate, Payment FROM PaymentDetails"),
                    QStringLiteral(" WHERE PaymentDetails.WageID = "),
                    QStringLiteral("PaymentNames"),
                    QStringLiteral("PaymentNameID"),
                    QStringLiteral("PaymentName"),
                    QStringLiteral("SELECT PaymentNameID, iif(PaymentNames.[Calculation]>0,PaymentNames.[PayUnitname] || "
                                   "' (x' || vbstr(PaymentNames.[Calculation]) || ')',PaymentNames.[PayUnitname]) AS "
                                   "[PaymentName] FROM PaymentNames "),
                    QStringLiteral("SELECT PaymentNameID, Calculation, Salary FROM PaymentNames "),
                    true});
}

void FillTaxableGrid(PayView& form) {
    fillGrid(form, {{QStringLiteral("Wage"), QStringLiteral("Allowance"), QStringLiteral("Calculated On"),
                     QStringLiteral("Rate"), QStringLiteral("Amount")},
                    QStringLiteral("SELECT WageID, TaxNameID, Amountcalcon, taxallowrate, TaxableAllow FROM TaxAllowDetails"),
                    QStringLiteral(" WHERE WageID= "),
                    QStringLiteral("TaxAllowName"),
                    QStringLiteral("TaxNameID"),
                    QStringLiteral("taxAllowancename"),
                    QStringLiteral("SELECT TaxNameID, taxAllowancename FROM TaxAllowName"),
                    QStringLiteral("SELECT TaxNameID, TaxAllowRate from TaxAllowName"),
                    false});
}

void FillNonTaxGrid(PayView& form) {
    fillGrid(form, {{QStringLiteral("Wage"), QStringLiteral("Allowance"), QStringLiteral("Calculated On"),
                     QStringLiteral("Rate"), QStringLiteral("Amount")},
                    QStringLiteral("SELECT WageID, NonTaxNameID, Amountcalcon, NonTaxRate, NonTaxAllow FROM NonTaxAllowDetails"),
                    QStringLiteral(" WHERE NonTaxAllowDetails.[WageID]="),
                    QStringLiteral("NonTaxAllowName"),
                    QStringLiteral("NonTaxNameID"),
                    QStringLiteral("NonTaxallowname"),
                    QStringLiteral("SELECT NonTaxNameID, NonTaxallowname FROM NonTaxAllowName"),
                    QStringLiteral("SELECT NonTaxNameID, NonTaxRate from NonTaxAllowName"),
                    false});
}

void FillDeductionGrid(PayView& form) {
    fillGrid(form, {{QStringLiteral("Wage"), QStringLiteral("Deductions"), QStringLiteral("Calculated On"),
                     QStringLiteral("Percentage"), QStringLiteral("Amount")},
                    QStringLiteral("SELECT WageID, DeductNameID, AmountCalcon, Percentage, Deductions FROM DeductionDetails"),
                    QStringLiteral(" WHERE WageID="),
                    QStringLiteral("DeductNames"),
                    QStringLiteral("DeductNameID"),
                    QStringLiteral("DeductionName"),
                    QStringLiteral("SELECT DeductNameID, DeductionName from DeductNames where CountryPhone = 0 or "
                                   "CountryPhone = ") +
                        countryFilter() + notEnrolledTail(),
                    QStringLiteral("SELECT DeductNameID, Percentage, LowerThreshold, UpperThreshold, MaxPercent from "
                                   "DeductNames"),
                    false});
}

void FillContributionGrid(PayView& form) {
    fillGrid(form, {{QStringLiteral("Wage"), QStringLiteral("Contributions"), QStringLiteral("Calculated On"),
                     QStringLiteral("Percentage"), QStringLiteral("ESCT"), QStringLiteral("Amount")},
                    QStringLiteral("SELECT WageID, ContributionNameID, AmountCalcon, Percentage, ESCT, Contributions "
                                   "FROM ContributionDetails"),
                    QStringLiteral(" WHERE WageID="),
                    QStringLiteral("ContributionNames"),
                    QStringLiteral("ContributionNameID"),
                    QStringLiteral("ContributionName"),
                    QStringLiteral("SELECT ContributionNameID, ContributionName from ContributionNames where "
                                   "CountryPhone = 0 or CountryPhone = ") +
                        countryFilter() + notEnrolledTail(),
                    QStringLiteral("SELECT ContributionNameID, Percentage, LowerThreshold, UpperThreshold, MaxPercent "
                                   "from ContributionNames"),
                    false});
}

void FillPAYEDisplay(PayView& form) {
    const QStringList fields{QStringLiteral("txtCalcOn"), QStringLiteral("txtPAYE"), QStringLiteral("txtTaxType"),
                             QStringLiteral("txtTaxCode"), QStringLiteral("txtpayInterval")};
    for (const QString& f : fields)
        form.setCaption(f, QString());
    // Joined through the employee's present interval and tax type: a pay taxed on others shows blanks.
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("SELECT TaxDetails.TaxableAmount, TaxDetails.PAYE, TaxTypes.Taxname, PayInterval.Intervalname, "
                       "Employees.TaxCode "
                       "FROM (Employees INNER JOIN Wages ON Employees.EmployeeID = Wages.EmployeeID) INNER JOIN "
                       "((TaxDetails INNER JOIN TaxTypes ON TaxDetails.TaxTypeID = TaxTypes.TaxTypeID) INNER JOIN "
                       "PayInterval ON TaxDetails.PayIntervalID = PayInterval.PayIntervalID) ON "
                       "(PayInterval.PayIntervalID = Employees.PayIntervalID) AND (TaxTypes.TaxTypeID = "
                       "Employees.TaxTypeID) AND (Wages.WageID = TaxDetails.WageID) "
                       "WHERE TaxDetails.WageID=%1;")
            .arg(App().CurrentWageID),
        RecordsetType::Snapshot);
    if (!rs->EOF_()) {
        auto show = [&](const QString& field, int column, bool money) {
            const QVariant v = rs->value(column);
            if (!IsNull(v))
                form.setCaption(field, money ? Format(v, QStringLiteral("currency")) : CStr(v));
        };
        show(QStringLiteral("txtCalcOn"), 0, true);
        show(QStringLiteral("txtPAYE"), 1, true);
        show(QStringLiteral("txtTaxType"), 2, false);
        show(QStringLiteral("txtpayInterval"), 3, false);
        show(QStringLiteral("txtTaxCode"), 4, false);
    }
    rs->Close();
    form.setCaption(QStringLiteral("lblPayrollTax"), PayAsYouEarn());
    form.setCaption(QStringLiteral("lblpayrollCalc"), QStringLiteral("Total Taxable"));
    form.setCaption(QStringLiteral("lblTaxType"), QStringLiteral("Tax Type"));
    form.setCaption(QStringLiteral("lblTaxCode"), QStringLiteral("Tax Code"));
    form.setCaption(QStringLiteral("lblPayInterval"), QStringLiteral("Pay Interval"));
}

void FillWageGrid(PayView& form) {
    switch (App().CurrentTab) {
    case 1: FillPaymentGrid(form); break;
    case 2: FillTaxableGrid(form); break;
    case 3: FillPAYEDisplay(form); break;
    case 4: FillNonTaxGrid(form); break;
    case 5: FillDeductionGrid(form); break;
    case 6: EnterPaySlip(form); break;
    case 7: FillContributionGrid(form); break;
    default: break;
    }
    form.setCaption(QStringLiteral("lblpayment(10)"), payCaption(form));
}

} // namespace ql
