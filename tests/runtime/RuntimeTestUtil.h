#pragma once
// The run-time error number a call raises, 0 when it raises none.
#include "runtime/VbError.h"
#include <functional>

namespace rttest {

inline long errorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const ql::VbError& e) {
        return e.number();
    }
    return 0;
}

} // namespace rttest
