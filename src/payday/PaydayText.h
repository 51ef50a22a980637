#pragma once
// Text as the payday and bank files can carry it: plain ASCII, letters with macrons and other accents
// written without them, control characters gone; and counts that say "1 pay" but "2 pays".
#include <QString>

namespace ql {

// The text in printable ASCII: "ā" gives "a", "Æ" "AE", curly quotes straight ones; tabs and line
// breaks become blanks, other control characters and characters without a plain form are dropped;
// runs of blanks become one, and the ends are trimmed.
QString PlainAscii(const QString& text);

// Only the characters every bank's import takes: letters, digits, blank and - & / ? _ . (after
// PlainAscii); anything else is dropped; cut to length and trimmed.
QString BankText(const QString& text, int length);
// True when every character is one BankText keeps.
bool IsBankCharacter(QChar c);

// Characters of a standard keyboard that Inland Revenue's name fields take: printable ASCII other than
// comma, square brackets, backslash and double quote.
bool IsKeyboardCharacter(QChar c);

// "1 pay", "2 pays", "0 pays".
QString Counted(qint64 n, const QString& one, const QString& many);

} // namespace ql
