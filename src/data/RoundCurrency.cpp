#include "RoundCurrency.h"
#include "runtime/Convert.h"
#include <cmath>

namespace ql {

Currency RoundCurrency(const QVariant& value) {
    const QString text = CStr(value).trimmed();
    const double v = CDbl(QVariant(text));
    const double h = v * 100.0;
    const double s = v > 0 ? 1.0 : (v < 0 ? -1.0 : 0.0);
    double f = std::trunc(h + s * 0.5);
    // Only an exact half is moved back, and only when it went to an odd cent.
    if (h - std::floor(h) == 0.5 && std::trunc(f / 2) != f / 2)
        f -= s;
    return Currency::fromDouble(f / 100.0);
}

} // namespace ql
