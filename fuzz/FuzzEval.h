#pragma once
// The one check of an fhCEval entry on any text: a finite number or one of the run-time errors it may
// raise, nothing else.
#include "FuzzInput.h"
#include "formula/fhCStack.h"
#include "runtime/VbError.h"
#include <cmath>

namespace qlfuzz {

template <class Eval> void checkEvaluation(const uint8_t* data, size_t size, const char* name, Eval evaluate) {
    const Input in = split(data, size);
    useLocale(in.flags);
    const QString text = in.text();
    try {
        const double r = evaluate(text);
        if (!std::isfinite(r)) fail(name, text);
    } catch (const ql::VbError& e) {
        switch (e.number()) {
        case ql::err::EvalFault:
            if (e.description().isEmpty()) fail("a fault without description", text);
            break;
        case ql::err::EvalBadToken:
        case ql::err::Overflow:
        case ql::err::InvalidProcedureCall:
        case ql::err::DivisionByZero:
            break;
        default:
            fail("an unexpected error number", text);
        }
    } catch (...) {
        fail("an exception other than the run-time error", text);
    }
}

} // namespace qlfuzz
