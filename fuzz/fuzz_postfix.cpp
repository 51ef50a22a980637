// fhCEval::DoEvaluate on any postfix text: a finite number or one of the run-time errors it may raise.
#include "FuzzInput.h"
#include "formula/fhCEval.h"
#include "formula/fhCStack.h"
#include "runtime/VbError.h"
#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const qlfuzz::Input in = qlfuzz::split(data, size);
    qlfuzz::useLocale(in.flags);
    const QString text = in.text();
    try {
        const double r = ql::fhCEval().DoEvaluate(text);
        if (!std::isfinite(r)) qlfuzz::fail("DoEvaluate gave a non-finite number", text);
    } catch (const ql::VbError& e) {
        switch (e.number()) {
        case ql::err::EvalFault:
            if (e.description().isEmpty()) qlfuzz::fail("a fault without description", text);
            break;
        case ql::err::EvalBadToken:
        case ql::err::Overflow:
        case ql::err::InvalidProcedureCall:
        case ql::err::DivisionByZero:
            break;
        default:
            qlfuzz::fail("an unexpected error number", text);
        }
    } catch (...) {
        qlfuzz::fail("an exception other than the run-time error", text);
    }
    return 0;
}
