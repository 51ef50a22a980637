#pragma once
// The tax withheld from a pay: the taxable amount of one pay to a yearly figure, through the steps of
// the employee's tax type and the special codes of country 64, back to the tax of one pay, kept in the
// pay's one TaxDetails row. The user may type over the result until the next recalculation.
#include "runtime/Currency.h"
#include <QString>

namespace ql {

class PayView;

// The tax line in memory.
struct TaxDetailRecord {
    qint32 TaxTypeID = 0;
    qint32 PayIntervalID = 0;
    Currency TaxableAmount; // of one pay, never the yearly figure
    Currency PAYE;          // of one pay
};

// The PAYE of one pay as text in "currency" format; stores the pay's TaxDetails row. Errors are
// trapped and reported under "CalcPAYE".
QString CalcPAYE(qint32 employeeID, qint32 wageID, Currency taxable, float paysPerYear);

// Runs the steps, replaces the pay's TaxDetails row and returns the PAYE rounded to what the
// "currency" format shows.
Currency StoreTaxDetails(const QString& query, Currency annual, qint32 employeeID, qint32 wageID,
                         float paysPerYear, qint32& closingProcess, TaxDetailRecord& record);

// The tax of the steps of query (upper limit, rate, ...) on a yearly figure, turned into the tax of
// one pay by closingProcess (which the special codes may change); sets record.PAYE and paye.
void CalcTaxSteps(const QString& query, Currency annual, float paysPerYear, TaxDetailRecord& record,
                  Currency& paye, qint32& closingProcess);

// The special codes of country 64 on the yearly figure annual: may change closingProcess, and give the
// yearly credit x that goes into the equation and the rebate y of one pay that comes off behind it.
// code is compared exactly, in capitals. Other codes leave all three alone.
void ApplySpecialTaxCode(const QString& code, Currency annual, float paysPerYear, qint32& closingProcess,
                         Currency& x, Currency& y);

// Adds the pay's TaxDetails row, only for a taxable amount above 0.
void AddTaxDetail(qint32 wageID, const TaxDetailRecord& record);

// PayIntervalID of CurrentEmployeeID; 0 when there is no such employee.
qint32 GetPayIntervalID();

// The check of the PAYE box: when PAYEText and txtPAYE are both numeric and round to different
// amounts, EditPAYE with the box's text. True when the user confirmed a change.
bool CheckPAYEBox(PayView& form);
// Asks to overwrite the calculated tax; on yes stores it (SavePAYE) and shows it in lblPaye, txtPAYE and
// PAYEText; on no puts PAYEText back in txtPAYE. True when the user confirmed.
bool EditPAYE(PayView& form, const QString& newPAYE);
// Stores a typed PAYE above 0 in the pay's TaxDetails row (CurrentWageID).
void SavePAYE(const QString& newPAYE);

} // namespace ql
