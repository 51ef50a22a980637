#pragma once
// The payslip lines: the PaySlip table rebuilt from the detail rows of the open pay, which is at once
// the payslip view of the wage screen, what the printed slip shows, and the source of the summary
// labels.
#include "payengine/PayTotals.h" // RefreshPaySlip, EnterPaySlip
#include "runtime/Currency.h"
#include <QString>
#include <QVector>

namespace ql {

// One PaySlip row as it is written.
struct PaySlipLine {
    QString description, number, rate, amount, total;
};
using PaySlipRows = QVector<PaySlipLine>;

// Adds one section (a heading and the lines of sql above 0) to the slip and returns the sum of the
// lines as shown.
float FillPaySlip(const QString& heading, const QString& sql, PaySlipRows& paySlip, bool sumWhenPositive,
                  bool alwaysTotal, bool negateTotal, Currency* exactSum = nullptr);

// Adds one row to the slip.
void AddPaySlipRec(PaySlipRows& paySlip, const QString& description, const QString& number,
                   const QString& rate, const QString& amount, const QString& total);

// The payment lines of a pay: name, units, rate, amount; with keys also PaymentNameID and Salary.
QString GetPaymentLinesSQL(qint32 wageID, bool withKeys);

} // namespace ql
