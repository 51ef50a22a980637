#pragma once
// Direct-credit batch files of the take-home pays of one payment date, in the import formats of four
// New Zealand banks: ANZ (CSV with a control record), ASB (CSV of direct credits), BNZ (the text
// batch file with header and control records) and Westpac (the Deskbank CSV).
#include "data/Database.h"
#include <QDate>
#include <QString>
#include <QStringList>

namespace ql {

enum class BankFormat { None, Anz, Asb, Bnz, Westpac };

// "anz", "asb", "bnz", "westpac" (any case); None otherwise.
BankFormat BankFormatByName(const QString& name);
QString BankFormatName(BankFormat format);
// The format of a paying account by its bank code: 01 and 06 ANZ, 12 ASB, 02 BNZ, 03 Westpac.
BankFormat BankFormatForAccount(const QString& account);

struct BankFile {
    QString text;
    QStringList toFix; // employees without a valid account
    QString refusal;
    int payments = 0;
    qint64 totalCents = 0;
    bool ok() const { return refusal.isEmpty(); }
};

// Text fitted to a field: commas and quotes removed, cut to length.
QString BankField(const QString& text, int length);
// The hash total of the accounts credited: branch and the last seven digits of the account base,
// summed, the rightmost eleven digits.
QString BankHashTotal(const QStringList& accounts);

// The file of every committed pay paid on paymentDate with a take-home above zero. The creation date
// is the day the file is made (today unless given).
BankFile MakeBankFile(Database& wage, const QDate& paymentDate, BankFormat format, QDate created = QDate());

} // namespace ql
