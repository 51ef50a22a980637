// Formula commands: evaluate a tax formula, an infix text or a postfix text as the pay engine would.
#include "CliCommand.h"
#include "formula/TaxEvaluator.h"
#include "formula/fhCEval.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"

namespace {

// The runtime's number text (15 significant digits) with "." whatever the locale, for scripts.
QString plainNumber(double value) {
    return ql::Str(value).trimmed();
}

// The evaluators' numbers are 32-bit values with the top bit set; show them as such.
QString errorText(const ql::VbError& e) {
    return QStringLiteral("error 0x%1: %2")
        .arg(static_cast<quint32>(e.number()), 8, 16, QLatin1Char('0'))
        .arg(e.description());
}

int evalTax(const QStringList& args, QTextStream& out) {
    if (args.size() != 1) throw cli::CliUsageError();
    ql::TaxEvaluator evaluator;
    evaluator.setExpression(args.first());
    const double result = evaluator.Result();
    out << plainNumber(result) << ' ' << evaluator.Error() << '\n';
    return 0;
}

int evalCEval(const QStringList& args, QTextStream& out, bool postfix) {
    if (args.size() != 1) throw cli::CliUsageError();
    ql::fhCEval evaluator;
    try {
        const double result = postfix ? evaluator.DoEvaluate(args.first()) : evaluator.Evaluate(args.first());
        out << plainNumber(result) << '\n';
    } catch (const ql::VbError& e) {
        throw cli::CliFailure(errorText(e));
    }
    return 0;
}

const cli::CliCommand evalTaxCommand("eval-tax", "eval-tax TEXT", evalTax);
const cli::CliCommand evalInfixCommand("eval-infix", "eval-infix TEXT",
                                       [](const QStringList& a, QTextStream& o) {
                                           return evalCEval(a, o, false);
                                       });
const cli::CliCommand evalPostfixCommand("eval-postfix", "eval-postfix TEXT",
                                         [](const QStringList& a, QTextStream& o) {
                                             return evalCEval(a, o, true);
                                         });

} // namespace
