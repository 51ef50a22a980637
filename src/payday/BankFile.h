#pragma once
// Direct-credit batch files of the take-home pays of one payment date, in the import formats of New
// Zealand banks: ANZ's business internet banking import ("domestic extended": header, transactions,
// control record), ANZ Transactive's NZ domestic payments CSV with control record, ASB's direct-credit
// CSV, BNZ's Internet Banking for Business file (header, transactions, control) and Westpac's Deskbank
// CSV. Text is written in the banks' plain character set, and the due date is never before the day
// the file is made.
#include "data/Database.h"
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace ql {

enum class BankFormat { None, Anz, AnzTransactive, Asb, Bnz, Westpac };

// Every format, in the order the screens offer them.
QList<BankFormat> BankFormats();
// "anz", "anz-transactive", "asb", "bnz", "westpac" (any case); None otherwise.
BankFormat BankFormatByName(const QString& name);
// The name typed on the command line ("anz-transactive").
QString BankFormatCode(BankFormat format);
// The name shown ("ANZ Transactive").
QString BankFormatName(BankFormat format);
// The format a small employer with this paying account most likely imports: 01, 04, 06 and 11 ANZ
// (its business internet banking), 02 BNZ, 03 Westpac, 12 ASB; None for other banks.
BankFormat BankFormatForAccount(const QString& account);

struct BankFile {
    QString text;
    QStringList toFix; // employees without a valid account
    QString refusal;
    QStringList notes; // names written otherwise than stored (letters without macrons, and the like)
    bool pastDue = false; // refused because the due date is before the day the file is made
    QDate due;
    int payments = 0;
    qint64 totalCents = 0;
    bool ok() const { return refusal.isEmpty(); }
};

// The hash total of the accounts credited: branch and the last seven digits of the account base,
// summed, the rightmost eleven digits.
QString BankHashTotal(const QStringList& accounts);

// The file of every committed pay paid on paymentDate with a take-home above zero. The creation date
// is the day the file is made (today unless given); the due date, the day the bank pays, is the
// payment date unless given, and may not be before the creation date.
BankFile MakeBankFile(Database& wage, const QDate& paymentDate, BankFormat format, QDate created = QDate(),
                      QDate due = QDate());

} // namespace ql
