#pragma once
// The two error-trap helpers. trap() runs a procedure body that traps from its first statement: a
// run-time error ends the body, is reported through the installed reporter with the location, and the
// caller goes on. skipErrors() runs one statement of a procedure that skips failing statements.
#include "VbError.h"
#include <functional>

namespace ql {

// Called for each trapped error with the error and the procedure's location. The frame installs
// ReportError here; until then trapped errors are dropped.
using ErrorReporter = std::function<void(const VbError&, const QString& location)>;
void setErrorReporter(ErrorReporter reporter);
void reportTrapped(const VbError& e, const QString& location);

// Maps a non-VbError exception to a VbError so that nothing escapes a trap untyped.
VbError toVbError(const std::exception& e);

template <class F> bool trap(const QString& location, F&& body) {
    try {
        body();
        return true;
    } catch (const VbError& e) {
        reportTrapped(e, location);
    } catch (const std::exception& e) {
        reportTrapped(toVbError(e), location);
    }
    return false;
}

template <class F> bool skipErrors(F&& statement) {
    try {
        statement();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace ql
