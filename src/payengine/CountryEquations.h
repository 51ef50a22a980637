#pragma once
// The pay engine's one way to the equations of TaxEquations: a row of the modules database, chosen by
// process number and country, evaluated on an amount. Country 64 keeps infix formulas for
// TaxEvaluator; every other country keeps postfix texts for fhCEval. A row read is remembered only while
// the modules database keeps its file stamp, so an edited row counts at the next call.
#include "runtime/Currency.h"
#include <QString>

namespace ql {

// Process numbers of TaxEquations as the pay engine asks them.
enum TaxProcess : qint32 {
    TaxProcessAnnualise = 1, // a pay's taxable amount to a yearly figure
    TaxProcessPerPay = 2,    // yearly tax to the tax of one pay
    TaxProcessRound = 3,     // rounding of an amount
    TaxProcessCredit = 4,    // yearly tax to the tax of one pay, with a yearly credit x
    TaxProcessLowIncome = 5, // yearly tax to the tax of one pay, low-income form
};

// One row of TaxEquations for the country in force evaluated on amount; errors are trapped and
// reported under "CountrySpecificEquation", and the value as it stood is rounded and returned.
Currency CountrySpecificEquation(Currency amount, float paysPerYear, qint32 taxProcessID, Currency x);

// percentage of amount, each side rounded by process 3.
Currency CalcPercentOf(Currency amount, float percentage);

// The expression that CountrySpecificEquation evaluates for an equation text (empty when the text
// names none of the functions of country 64). Exposed for tests and the command line.
QString CountryEquationExpression(const QString& equation, qint32 country, Currency amount, float p,
                                  Currency x);

} // namespace ql
