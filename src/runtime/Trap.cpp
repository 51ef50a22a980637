#include "Trap.h"

namespace ql {
namespace {
ErrorReporter& reporter() {
    static ErrorReporter r;
    return r;
}
} // namespace

void setErrorReporter(ErrorReporter r) { reporter() = std::move(r); }

void reportTrapped(const VbError& e, const QString& location) {
    if (reporter())
        reporter()(e, location);
}

VbError toVbError(const std::exception& e) {
    if (auto* v = dynamic_cast<const VbError*>(&e))
        return *v;
    if (dynamic_cast<const std::bad_alloc*>(&e))
        return VbError(7, QStringLiteral("Quillary"), QStringLiteral("Out of memory"));
    return VbError(51, QStringLiteral("Quillary"), QString::fromStdString(e.what()));
}

} // namespace ql
