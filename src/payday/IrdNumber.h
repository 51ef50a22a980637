#pragma once
// Inland Revenue numbers: eight or nine digits whose last digit is a modulus-11 check digit over the
// base padded to eight digits (weights 3,2,7,6,5,4,3,2, or 7,4,3,2,5,2,7,6 when the first gives 10),
// within the issued range 10-000-000 to 150-000-000.
#include <QString>

namespace ql {

// The digits of text with blanks and dashes left out; any other character keeps the text as it is,
// so that it fails the check.
QString IrdDigits(const QString& text);
// True when text is a valid IRD number (dashes and blanks allowed).
bool IsValidIrdNumber(const QString& text);
// The nine-digit form, padded with a leading zero ("49091850" gives "049091850"); empty when invalid.
QString IrdNumberNineDigits(const QString& text);

} // namespace ql
