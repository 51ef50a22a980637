// equation PROCESS AMOUNT PAYSPERYEAR [X]: one row of TaxEquations for the country in force, evaluated
// on an amount as the pay engine does it, on the installed modules database.
#include "CliCommand.h"
#include "frame/Settings.h"
#include "payengine/CountryEquations.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"

namespace {

// A number argument by the runtime's rules in the machine's locale; anything else is refused plainly.
QVariant numberArgument(const QString& name, const QString& text) {
    if (!ql::IsNumeric(text))
        throw cli::CliFailure(QStringLiteral("%1 must be a number: \"%2\"").arg(name, text));
    return QVariant(text);
}

int equation(const QStringList& args, QTextStream& out) {
    if (args.size() < 3 || args.size() > 4) throw cli::CliUsageError();
    const qint32 process = ql::CLng(numberArgument(QStringLiteral("PROCESS"), args[0]));
    const ql::Currency amount = ql::CCur(numberArgument(QStringLiteral("AMOUNT"), args[1]));
    const float pays = ql::CSng(numberArgument(QStringLiteral("PAYSPERYEAR"), args[2]));
    const ql::Currency x =
        args.size() == 4 ? ql::CCur(numberArgument(QStringLiteral("X"), args[3])) : ql::Currency();

    // The gate reports what it traps and goes on; here a report is a line on standard error.
    ql::setErrorReporter([](const ql::VbError& e, const QString& location) {
        cli::err() << location << ": " << e.description() << '\n';
        cli::err().flush();
    });
    const ql::Currency result = ql::CountrySpecificEquation(amount, pays, process, x);
    ql::setErrorReporter(nullptr);
    out << result.toFixed4() << '\n';
    return 0;
}

const cli::CliCommand equationCommand("equation", "equation PROCESS AMOUNT PAYSPERYEAR [X]", equation);

} // namespace
