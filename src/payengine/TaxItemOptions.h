#pragma once
// The employee's tax items as typed: the command line's options and the employee editor's boxes take
// the same texts, with the same checks and the same messages.
#include "EmployeeTaxItems.h"
#include <QList>
#include <QPair>
#include <QString>

namespace ql {

struct TaxItemOption {
    QString option; // "esct-rate", as the command line takes it
    QString label;  // "ESCT rate", as messages and the editor name it
    bool rate;      // a per cent; else an amount
};

// The items in the order the editor shows them.
const QList<TaxItemOption>& TaxItemOptions();
const TaxItemOption* FindTaxItemOption(const QString& option);

// Applies typed values to items; returns the first problem in the system's words (empty when none),
// and then items may be half changed: the caller writes nothing. An ESCT rate typed is left in esctRate
// (thousandths of a per cent) for SetEsctRate; -1 when none was typed.
QString ApplyTaxItemValues(EmployeeTaxItems& items, qint32& esctRate, const QList<QPair<QString, QString>>& values);

// An item as it would be typed: "17.5", "20.99"; empty when it is 0 (none).
QString TaxItemText(const EmployeeTaxItems& items, const QString& option);

} // namespace ql
