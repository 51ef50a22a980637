#pragma once
// The number of the run-time error a call raises; 0 when it raises none.
#include "runtime/VbError.h"
#include <functional>

namespace qltest {

inline long errorNumber(const std::function<void()>& f) {
    try {
        f();
    } catch (const ql::VbError& e) {
        return e.number();
    }
    return 0;
}

} // namespace qltest
