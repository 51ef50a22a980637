#pragma once
// Dates inside SQL text.
#include <QString>
#include <QVariant>

namespace ql {

// "#" + month "mm" + "/" + day "dd" + "/" + year "yyyy" + "#", month first in every locale; the value 0
// gives "#12/30/1899#", the zero date. The data layer turns the literal into the stored ISO form.
QString SQLDate(const QVariant& value);

} // namespace ql
