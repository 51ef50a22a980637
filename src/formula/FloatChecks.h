#pragma once
// Double arithmetic that reports what the runtime would raise (overflow, division by zero, a root or
// logarithm out of range) as ArithmeticFault instead of carrying an infinity or NaN along.
#include <cmath>

namespace ql::fp {

struct ArithmeticFault {};

inline double finite(double r) {
    if (!std::isfinite(r)) throw ArithmeticFault{};
    return r;
}
inline double add(double a, double b) {
    return finite(a + b);
}
inline double sub(double a, double b) {
    return finite(a - b);
}
inline double mul(double a, double b) {
    return finite(a * b);
}
inline double div(double a, double b) {
    if (b == 0.0) throw ArithmeticFault{};
    return finite(a / b);
}
inline double sqrt(double a) {
    if (!(a >= 0.0)) throw ArithmeticFault{};
    return std::sqrt(a);
}
inline double log(double a) {
    if (!(a > 0.0)) throw ArithmeticFault{};
    return finite(std::log(a));
}
inline double exp(double a) {
    return finite(std::exp(a));
}
inline double pow(double base, double exponent) {
    if (base == 0.0 && exponent < 0.0) throw ArithmeticFault{};
    if (base < 0.0 && exponent != std::floor(exponent)) throw ArithmeticFault{};
    return finite(std::pow(base, exponent));
}

} // namespace ql::fp
