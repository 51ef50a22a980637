#pragma once
// Posting a pay to the farm's cashbook: one withdrawal from the employee's bank split into account
// lines and, when tax is paid electronically, a second withdrawal for the tax. All of it is one
// transaction on the farm database, which also records the pay as posted, so a pay is never posted
// twice even when a commit was cut off between the posting and the saving of its reference.
#include "data/Database.h"
#include <QDate>
#include <QString>
#include <optional>

namespace ql {

class PayList;

// Posts the current row of pays. Empty on success, otherwise the description of the failure; after
// the transaction began, a failure leaves no row of the posting behind. A pay already posted is
// refused with a message of its own.
QString PostPayToCashbook(PayList& pays, const QString& Reference, const QString& Description,
                          const QDate& Date);
// The same on the pay list of the shown wage screen.
QString PostPayToCashbook(const QString& Reference, const QString& Description, const QDate& Date);

// The record of a posted pay, kept in the farm database.
struct PostedPay {
    qint32 WageID = 0;
    QString Reference;
    QDate PostedDate;
    qint32 TransactionsID = 0;
    qint32 TaxTransactionsID = 0; // 0 when the tax stayed on the pay's transaction
};
// The name of that table, and the table made when it is missing.
QString postedPaysTable();
void ensurePostedPaysTable(Database& farm);
// The record of the pay, when it was posted.
std::optional<PostedPay> findPostedPay(Database& farm, qint32 wageID);
// The same on the farm database the settings name (opened and closed here).
std::optional<PostedPay> findPostedPay(qint32 wageID);
// The refusal of a second posting.
QString alreadyPostedMessage(const PostedPay& posted);

} // namespace ql
