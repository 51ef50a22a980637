#pragma once
// For tests that set up data a user could never make: the payroll file's guard of committed pays
// taken away while fn writes, and put back afterwards.
#include "data/Database.h"
#include "data/PayFreeze.h"
#include <functional>

namespace qltest {

inline void withoutPayGuard(ql::Database& wage, const std::function<void()>& fn) {
    const QVariantList triggers = wage.firstColumn(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type = 'trigger' AND name LIKE 'QuillaryFrozen%'"));
    for (const QVariant& t : triggers)
        wage.executeScript(QStringLiteral("DROP TRIGGER IF EXISTS %1").arg(t.toString()));
    fn();
    ql::EnsurePayFreeze(wage);
}

} // namespace qltest
