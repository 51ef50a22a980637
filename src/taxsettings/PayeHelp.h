#pragma once
// The help texts of the PAYE settings dialog, rebuilt as its choices change.
#include <QString>

namespace ql {

// An account's name as the help shows it: trimmed, and from a ":" found from the third character from
// the end on, cut to the characters before the one in front of that colon ("Wages:X" gives "Wage").
QString AccountNameOnly(const QString& text);

// The closing lines on paying the tax: a heading, then how to pay it. paymentAccount is the account
// name a manual payment is debited to; a party name gives the heading "PAYMENTS to" that party.
QString GetPayePaymentsHelp(const QString& payeLabel, const QString& paymentAccount, bool electronic,
                            const QString& partyName);

struct PayeHelpTexts {
    QString taxationInfo; // lbltaxationInfo
    QString payeNoncash;  // lblPayeNoncash
};

// The two texts, with the account names as the combos show them (AccountNameOnly is applied here).
PayeHelpTexts BuildPayeHelp(const QString& payeLabel, const QString& wageAccount,
                            const QString& holdingAccount, const QString& paymentAccount, bool electronic);

} // namespace ql
