// The named functions of TaxEvaluator.
#include "FloatChecks.h"
#include "TaxEvaluator.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/VbError.h"
#include <cfloat>
#include <cmath>
#include <cstring>
#include <optional>

namespace ql {

namespace {

// The runtime's pseudo-random sequence: one per process, 24-bit, started at the same seed each run.
float nextRandom(double x) {
    static quint32 seed = 0x50000;
    if (std::fabs(x) > FLT_MAX) throw fp::ArithmeticFault{}; // the argument is a Single
    const float number = static_cast<float>(x);
    if (number < 0.0f) {
        quint32 bits;
        std::memcpy(&bits, &number, sizeof bits);
        seed = (bits + (bits >> 24)) & 0xFFFFFFu;
    }
    if (number != 0.0f) seed = (seed * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
    return static_cast<float>(seed) / 16777216.0f;
}

double sgn(double x) {
    return x > 0.0 ? 1.0 : x < 0.0 ? -1.0 : 0.0;
}

// nullopt for a name that is not a function.
std::optional<double> functionValue(QStringView name, double x, const TaxEvaluator& self) {
    using namespace fp;
    const double q = 2.0 * std::atan(1.0);
    auto is = [&](const char* n) { return name == QLatin1String(n); };

    if (is("ABS")) return std::fabs(x);
    if (is("ATN")) return std::atan(x);
    if (is("COS")) return std::cos(x);
    if (is("SIN")) return std::sin(x);
    if (is("TAN")) return std::tan(x);
    if (is("EXP")) return fp::exp(x);
    if (is("FIX")) return std::trunc(x);
    if (is("INT")) return std::floor(x);
    if (is("LOG")) return fp::log(x);
    if (is("RND")) return static_cast<double>(nextRandom(x));
    if (is("SGN")) return sgn(x);
    if (is("SQR")) return fp::sqrt(x);
    if (is("PAYE") || is("METAXCODE") || is("MLTAXCODE")) return self.Truncate(x, 2);
    if (is("SALARY")) return self.Truncate(x, 0);
    if (is("ROUND")) return CDbl(QVariant(Format(QVariant(x), QStringLiteral("Fixed"))));
    if (is("SEC")) return div(1.0, std::cos(x));
    if (is("COSEC")) return div(1.0, std::sin(x));
    if (is("COTAN")) return div(1.0, std::tan(x));
    if (is("ARCSIN")) return std::atan(div(x, fp::sqrt(sub(1.0, mul(x, x)))));
    if (is("ARCCOS")) return add(std::atan(div(-x, fp::sqrt(sub(1.0, mul(x, x))))), q);
    if (is("ARCSEC")) return add(std::atan(div(x, fp::sqrt(sub(mul(x, x), 1.0)))), mul(sgn(sub(x, 1.0)), q));
    if (is("ARCCOSEC")) return add(std::atan(div(x, fp::sqrt(sub(mul(x, x), 1.0)))), mul(sgn(x) - 1.0, q));
    if (is("ARCCOTAN")) return add(std::atan(x), q);
    if (is("HSIN")) return div(sub(fp::exp(x), fp::exp(-x)), 2.0);
    if (is("HCOS")) return div(add(fp::exp(x), fp::exp(-x)), 2.0);
    if (is("HTAN")) return div(sub(fp::exp(x), fp::exp(-x)), add(fp::exp(x), fp::exp(-x)));
    if (is("HSEC")) return div(2.0, add(fp::exp(x), fp::exp(-x)));
    if (is("HCOSEC")) return div(2.0, sub(fp::exp(x), fp::exp(-x)));
    if (is("HCOTAN")) return div(add(fp::exp(x), fp::exp(-x)), sub(fp::exp(x), fp::exp(-x)));
    if (is("HARCSIN")) return fp::log(add(x, fp::sqrt(add(mul(x, x), 1.0))));
    if (is("HARCCOS")) return fp::log(add(x, fp::sqrt(sub(mul(x, x), 1.0))));
    if (is("HARCTAN")) return div(fp::log(div(add(1.0, x), sub(1.0, x))), 2.0);
    if (is("HARCSEC")) return fp::log(div(add(fp::sqrt(sub(1.0, mul(x, x))), 1.0), x));
    if (is("HARCCOSEC")) return fp::log(div(add(mul(sgn(x), fp::sqrt(add(mul(x, x), 1.0))), 1.0), x));
    if (is("HARCCOTAN")) return div(fp::log(div(add(x, 1.0), sub(x, 1.0))), 2.0);
    if (is("TIMER"))
        return static_cast<double>(static_cast<float>(Now().time().msecsSinceStartOfDay() / 1000.0));
    if (is("YEAR")) return Today().year();
    if (is("MONTH")) return Today().month();
    if (is("DAY")) return Today().day();
    if (is("WEEKDAY")) return Today().dayOfWeek() % 7 + 1; // Sunday 1 .. Saturday 7
    if (is("HOUR")) return Now().time().hour();
    if (is("MINUTE")) return Now().time().minute();
    if (is("SECOND")) return Now().time().second();
    if (is("PI")) return 3.14159265358979;
    if (is("E")) return 2.71828182845905;
    if (is("ZERO")) return 0.0;
    return std::nullopt;
}

} // namespace

double TaxEvaluator::EvaluateFunction(QStringView Name, QStringView Arguments) {
    if (m_Error != NoFault) return 0.0;
    const double x = EvaluateSum(Arguments);
    try {
        const std::optional<double> value = functionValue(Name, x, *this);
        if (!value) {
            m_Error = Malformed;
            return 0.0;
        }
        return fp::finite(*value);
    } catch (const fp::ArithmeticFault&) {
    } catch (const VbError&) {
        // Overflow and the like from the runtime's conversions and formats.
    }
    m_Error = ArithmeticFailure;
    return 0.0;
}

} // namespace ql
