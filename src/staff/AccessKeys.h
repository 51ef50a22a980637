#pragma once
#include <QString>

namespace ql {

// A caption with an access key and a colon: its first letter not yet in taken; when it has none left,
// a free digit or letter shown after it ("City (1):"). taken gets the key.
QString WithAccessKey(const QString& caption, QString& taken);

} // namespace ql
