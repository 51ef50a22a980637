// Runtime commands: money rounding and the named formats, as the rest of the system uses them.
#include "CliCommand.h"
#include "data/RoundCurrency.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "runtime/VbError.h"
#include <QDate>
#include <QRegularExpression>

namespace {

int roundCommand(const QStringList& args, QTextStream& out) {
    if (args.size() != 1)
        throw cli::CliUsageError();
    out << ql::RoundCurrency(args.first()).toFixed4() << '\n';
    return 0;
}

// A date in ISO form, else a number read with the locale's rules.
QVariant valueFromArgument(const QString& text) {
    static const QRegularExpression iso(QStringLiteral("^\\s*(\\d{4})-(\\d{1,2})-(\\d{1,2})\\s*$"));
    if (const auto m = iso.match(text); m.hasMatch()) {
        const QDate d(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
        if (!d.isValid())
            throw cli::CliFailure(QStringLiteral("'%1' is no valid date.").arg(text.trimmed()));
        return d;
    }
    const auto number = ql::parseNumber(text);
    if (!number)
        ql::raiseError(ql::err::TypeMismatch);
    return *number;
}

int formatCommand(const QStringList& args, QTextStream& out) {
    if (args.size() != 2)
        throw cli::CliUsageError();
    out << ql::Format(valueFromArgument(args[0]), args[1]) << '\n';
    return 0;
}

cli::CliCommand roundCmd("round", "round TEXT", roundCommand);
cli::CliCommand formatCmd("format", "format VALUE FORMAT", formatCommand);

} // namespace
