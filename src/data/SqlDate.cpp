#include "SqlDate.h"
#include "runtime/Format.h"

namespace ql {

QString SQLDate(const QVariant& value) {
    return QStringLiteral("#") + Format(value, QStringLiteral("mm")) + u'/' +
           Format(value, QStringLiteral("dd")) + u'/' + Format(value, QStringLiteral("yyyy")) + u'#';
}

} // namespace ql
