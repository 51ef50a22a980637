#pragma once
// The named formats the system uses, matched without regard to case: "currency", "fixed",
// "standard", "short date", "general date", "0.0", ".00", "0.00", "0", "d mmm yyyy", "dd mmm yyyy",
// "mmmm yyyy", "mm", "dd", "yyyy". Digits are rounded half away from zero on the value's decimal text.
#include <QString>
#include <QVariant>

namespace ql {

// An empty format gives the general form (CStr for numbers, the short date for dates).
QString Format(const QVariant& value, const QString& format = QString());

} // namespace ql
