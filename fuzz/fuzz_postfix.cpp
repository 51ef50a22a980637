// fhCEval::DoEvaluate on any postfix text: a finite number or one of the run-time errors it may raise.
#include "FuzzEval.h"
#include "formula/fhCEval.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    qlfuzz::checkEvaluation(data, size, "DoEvaluate gave a non-finite number",
                            [](const QString& text) { return ql::fhCEval().DoEvaluate(text); });
    return 0;
}
