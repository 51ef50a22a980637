#include "AppContext.h"
#include "runtime/VbError.h"

namespace ql {
namespace {
AppContext* current = nullptr;
}

AppContext& App() {
    if (!current)
        raiseError(91, QStringLiteral("Quillary"), QStringLiteral("Object variable or With block variable not set"));
    return *current;
}

void setApp(AppContext* context) { current = context; }

} // namespace ql
