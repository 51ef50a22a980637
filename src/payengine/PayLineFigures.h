#pragma once
// A pay's stored figures as its lines give them: total taxable from the payment and taxable allowance
// lines, PAYE from its tax line (calculated, or typed over on purpose), non-taxable allowances and
// deductions from theirs, and the take-home they leave. A pay is committed, posted and filed with
// these, never with figures its lines would change.
#include "data/Database.h"
#include "runtime/Currency.h"
#include <QString>

namespace ql {

struct LineFigures {
    Currency totalTaxable, paye, nonTaxAllow, deductions, takeHome;
    bool operator==(const LineFigures&) const = default;
};

// The figures of the pay's lines; false when the pay has no payment or tax line to give them (a
// one-off pay, or a pay written without lines), and then figures is left alone.
bool FiguresFromLines(Database& wage, qint32 wageID, LineFigures& figures);
// The figures as stored in the pay's row.
LineFigures StoredFigures(Database& wage, qint32 wageID);

// The stored figures with each one its lines add up to in whole cents taken from them, and the
// take-home they leave.
LineFigures FiguresInLine(const LineFigures& stored, const LineFigures& lines);

// Writes the line figures into the pay's row where they differ (an open pay only); true when it did.
bool BringFiguresInLine(Database& wage, qint32 wageID);

} // namespace ql
