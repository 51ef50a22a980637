#include "MathFns.h"
#include "VbError.h"
#include <cmath>

namespace ql {

double roundHalfEven(double x) { return std::nearbyint(x); } // the default mode: ties to even

double Int(double x) { return std::floor(x); }
float Int(float x) { return std::floor(x); }
double Fix(double x) { return std::trunc(x); }
float Fix(float x) { return std::trunc(x); }

Currency Int(Currency x) {
    std::int64_t q = x.raw() / Currency::Scale;
    if (x.raw() % Currency::Scale < 0)
        --q;
    return Currency::fromRaw(q * Currency::Scale);
}

Currency Fix(Currency x) { return Currency::fromRaw(x.raw() / Currency::Scale * Currency::Scale); }

double Round(double x, int decimals) {
    if (decimals < 0)
        raiseError(err::InvalidProcedureCall);
    if (decimals == 0)
        return roundHalfEven(x);
    if (decimals > 22)
        return x;
    const double scale = std::pow(10.0, decimals);
    const double scaled = x * scale;
    if (!std::isfinite(scaled))
        return x;
    return roundHalfEven(scaled) / scale;
}

} // namespace ql
