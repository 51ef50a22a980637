#pragma once
// The one row of PayeInfo in the farm database: which accounts, tax office and payment method a
// posting uses. Every column falls back on a setting of section TAX while it is empty. Also the hook
// through which the code below the screens opens the PAYE settings dialog.
#include "Database.h"
#include <QObject>
#include <QString>
#include <QVariant>
#include <functional>

namespace ql {

// The column's value, or defaultValue when there is no row or the value is null or of length 0.
// Skips failing statements; a failure left at the end is shown (place "commoncode.payeinfo").
QVariant LoadPayeInfo(Database& db, const QString& column, const QVariant& defaultValue);

// Writes one column, adding the row when there is none. The value is converted by the column's
// type: Long, Text, Date and Yes/No; a column of any other type is not written. Skips failing
// statements; a failure left at the end is shown (place "commoncode.savepayeinfo").
void SavePayeInfo(Database& db, const QString& column, const QVariant& value);

// The PAYE settings dialog, shown modally with owner as its owner; returns the dialog's result text
// (empty after OK, "Cancelled" after Cancel). The program installs the screen; until then the
// dialog counts as cancelled.
using PayeInfoDialog = std::function<QString(QObject* owner)>;
void setPayeInfoDialog(PayeInfoDialog dialog);
QString runPayeInfoDialog(QObject* owner);

} // namespace ql
