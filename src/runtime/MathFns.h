#pragma once
// Int floors, Fix truncates (both keep the type), Round is half to even on x * 10^n in double.
#include "Currency.h"
#include <type_traits>

namespace ql {

double Int(double x);
float Int(float x);
Currency Int(Currency x);
double Fix(double x);
float Fix(float x);
Currency Fix(Currency x);
// A whole number is its own Int and Fix.
template <class T>
    requires std::is_integral_v<T>
T Int(T x) {
    return x;
}
template <class T>
    requires std::is_integral_v<T>
T Fix(T x) {
    return x;
}
double Round(double x, int decimals = 0);
// Half-to-even whole number of a double, as CLng/CInt and the month count of DateAdd round.
double roundHalfEven(double x);

} // namespace ql
