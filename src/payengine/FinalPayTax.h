#pragma once
// The tax of a New Zealand final pay. Inland Revenue treats the holiday pay a final pay adds (annual
// holidays not taken, the 8% since the last anniversary, alternative holidays and public holidays within
// the untaken holidays) as an extra pay: the pay's PAYE is the ordinary method on its other lines plus the
// extra-pay method on the holiday lines, grossed up from the earnings of the four weeks up to the pay's
// date (this pay's ordinary lines included, holiday lines of final pays left out). Student loan goes on
// the whole pay less the threshold; a final pay of holiday lines alone (paid apart from the time worked)
// bears it on the holiday pay with no threshold.
#include "IrdPay.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QStringList>
#include <optional>

namespace ql {

class Database;

// The payment names of a final pay's holiday lines: a line of one of these names on a pay is holiday pay
// paid out on finishing.
const QStringList& FinalHolidayLineNames();

// What the pay's lines of those names add up to; 0 for a pay without them.
Currency FinalHolidayAmount(Database& wage, qint32 wageID);

struct FinalPayTax {
    Currency taxable;      // the whole pay
    Currency ordinary;     // its lines other than the holiday lines
    Currency holiday;      // the holiday lines: the extra pay
    Currency ordinaryPaye; // by the ordinary method, less the payroll giving credit
    Currency givingCredit;
    Currency fourWeeks; // the regular earnings of the four weeks up to the pay's date
    int fourWeeksPays = 0;
    int multiplier = 13;      // 12 for a single monthly pay
    Currency annualised;      // fourWeeks x multiplier
    qint64 lowThreshold = -1; // a secondary code's low threshold amount (whole dollars); -1 none
    qint64 grossedUp = 0;     // whole dollars; -1 for a code that takes its own flat rate
    qint32 rate = 0;          // thousandths of a per cent, levy not included
    Currency holidayPaye;     // the extra-pay method, levy included
    bool lowestRate = false;
    Currency paye() const { return ordinaryPaye + holidayPaye; }
    QString working() const;
};

// The tax of the pay wageID of taxable earnings when it carries final holiday lines; none for any other pay.
std::optional<FinalPayTax> FinalPayTaxOfPay(const IrdPayContext& c, qint32 employeeID, qint32 wageID,
                                            Currency taxable);

// The tax of holiday pay paid on the day apart from a regular pay: the extra-pay method on the four weeks
// of regular pays up to the day; none when no tax year or code of Inland Revenue's method applies.
std::optional<FinalPayTax> FinalHolidayTaxOn(qint32 employeeID, const QDate& day, Currency holiday);

// The same for a pay as it is stored (its taxable amount and the employee's pays a year); none when the
// pay has no final holiday lines or no tax year or code of Inland Revenue's method applies.
std::optional<FinalPayTax> StoredFinalPayTax(qint32 wageID);

} // namespace ql
