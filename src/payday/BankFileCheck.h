#pragma once
// This program's own check of a direct-credit file against its bank's import layout: records and
// field counts, CR LF line ends, the banks' plain character set, field lengths, account numbers of 15
// or 16 digits, amounts in cents above zero, dates that exist and a due date not before the file's
// creation date, and the control record's total, count and hash total against the transactions. Each
// problem names the line of the file and the payee it concerns; none means the file passes.
#include "BankFile.h"
#include <QDate>
#include <QStringList>

namespace ql {

// made: the day the file was made, for the formats that do not carry it.
QStringList CheckBankFile(const QString& text, BankFormat format, const QDate& made);

} // namespace ql
