#pragma once
// The choices an employee's details are made from, read from the tax and name tables of the payroll
// database: tax codes, pay intervals, occupations and standing deductions.
#include "data/Database.h"
#include <QList>
#include <QString>
#include <QStringList>

namespace ql {

// Every tax code the tax data knows: each tax type's name, ME beside M, and the student loan form
// (" SL") of the main and secondary codes. In the tax types' order; a New Zealand payroll adds the
// special tax code STC (and STC SL), whose rate each employee's certificate gives.
QStringList KnownTaxCodes(Database& wage);
// The code as stored: upper case, one blank before SL ("msl" gives "M SL"); the text itself when it
// has no such form.
QString NormalTaxCode(const QString& code);
// The tax type of a known code (ME and the SL forms go with their base code); 0 for an unknown code.
qint32 TaxTypeOfCode(Database& wage, const QString& code);
inline bool HasStudentLoan(const QString& code) {
    return NormalTaxCode(code).endsWith(QStringLiteral(" SL"));
}
// STC or STC SL: a code that needs the employee's own rate.
inline bool IsSpecialTaxCode(const QString& code) {
    const QString c = NormalTaxCode(code);
    return c == QLatin1String("STC") || c == QLatin1String("STC SL");
}

struct PayIntervalChoice {
    qint32 id = 0;
    QString name;     // as the table has it: "Weekly"
    QString option;   // as typed: "weekly", "four-weekly"
    float paysPerYear = 0;
};
// The intervals an employee can be paid at (the one-off row left out), in the table's order.
QList<PayIntervalChoice> PayIntervalChoices(Database& wage);
// The interval named (by option or table name, without regard to case); id 0 when none.
PayIntervalChoice FindPayInterval(Database& wage, const QString& text);
QString PayIntervalOption(Database& wage, qint32 payIntervalID);

struct OccupationChoice {
    qint32 id = 0;
    QString name;
    bool salaried = false; // its default lines hold a salary line
    bool hourly = false;   // its default lines hold a line paid by the rate
};
QList<OccupationChoice> OccupationChoices(Database& wage);
// By name without regard to case; id 0 when none.
OccupationChoice FindOccupation(Database& wage, const QString& name);

// The deductions a person may have as standing lines: every DeductNames row of this country except
// KiwiSaver and student loan, which follow from the KiwiSaver choice and the tax code.
QStringList StandingDeductionNames(Database& wage);
qint32 DeductionIdByName(Database& wage, const QString& name); // 0 when none
qint32 DeductionIdByTaxName(Database& wage, const QString& taxName);
qint32 ContributionIdByTaxName(Database& wage, const QString& taxName);
// The employer's contributions a person may have as standing lines: every ContributionNames row of
// this country except KiwiSaver, which follows from the KiwiSaver choice.
QStringList StandingContributionNames(Database& wage);
qint32 ContributionIdByName(Database& wage, const QString& name); // 0 when none

} // namespace ql
