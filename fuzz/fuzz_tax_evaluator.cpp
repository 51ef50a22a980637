// TaxEvaluator on any text: never raises, always a finite number, a known fault code.
#include "FuzzInput.h"
#include "formula/TaxEvaluator.h"
#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const qlfuzz::Input in = qlfuzz::split(data, size);
    qlfuzz::useLocale(in.flags);
    const QString text = in.text();
    ql::TaxEvaluator t;
    try {
        t.setExpression(text);
        const double r = t.Result();
        if (!std::isfinite(r)) qlfuzz::fail("Result is not finite", text);
        switch (t.Error()) {
        case 0:
        case 1:
        case 2:
        case 4:
        case 8:
        case 16:
            break;
        default:
            qlfuzz::fail("unknown fault code", text);
        }
        if (t.Assigned() != (t.Error() == 0)) qlfuzz::fail("Assigned differs from Error", text);
        if (t.Expression().contains(QLatin1Char(' ')) || t.Expression().contains(QLatin1Char('.')))
            qlfuzz::fail("Expression keeps a blank or a point", text);
        const QString e = t.Expression();
        const bool moves = e.contains(QLatin1String("RND")) || e.contains(QLatin1String("TIMER")) ||
                           e.contains(QLatin1String("SECOND")) || e.contains(QLatin1String("MINUTE")) ||
                           e.contains(QLatin1String("HOUR"));
        if (!moves && r != t.Result()) qlfuzz::fail("a second read differs", text);
    } catch (...) {
        qlfuzz::fail("an exception left TaxEvaluator", text);
    }
    return 0;
}
