#include "VbError.h"

namespace ql {

QString standardDescription(long number) {
    switch (number) {
    case err::InvalidProcedureCall: return QStringLiteral("Invalid procedure call or argument");
    case err::Overflow: return QStringLiteral("Overflow");
    case err::SubscriptOutOfRange: return QStringLiteral("Subscript out of range");
    case err::DivisionByZero: return QStringLiteral("Division by zero");
    case err::TypeMismatch: return QStringLiteral("Type mismatch");
    case err::InvalidUseOfNull: return QStringLiteral("Invalid use of Null");
    case err::NoCurrentRecord: return QStringLiteral("No current record.");
    default: return QString();
    }
}

void raiseError(long number, const QString& source, const QString& description) {
    throw VbError(number, source, description.isEmpty() ? standardDescription(number) : description);
}

} // namespace ql
