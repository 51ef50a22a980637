#pragma once
// Text or a number to money at two decimals, an exact half going to the even cent.
#include "runtime/Currency.h"
#include <QVariant>

namespace ql {

// The value is read as text first, so it may carry the currency sign and grouping marks; text that is
// no number raises Type mismatch (13), Null raises Invalid use of Null (94).
Currency RoundCurrency(const QVariant& value);

} // namespace ql
