#pragma once
// The commands of quillary-cli. Each cmd_*.cpp registers its commands with a static CliCommand;
// main.cpp dispatches on the first argument.
//   exit 0: the answer on standard output;
//   exit 2: wrong usage, the usage text on standard error (throw CliUsageError);
//   exit 1: a failure, the system's error description on standard error (throw ql::VbError).
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>
#include <stdexcept>

namespace cli {

struct CliUsageError : std::runtime_error {
    CliUsageError() : std::runtime_error("usage") {}
};

// A failure whose text is printed as it stands (for messages the system shows a user).
struct CliFailure : std::runtime_error {
    explicit CliFailure(const QString& text) : std::runtime_error(text.toStdString()) {}
};

using Handler = std::function<int(const QStringList& args, QTextStream& out)>;

struct CliCommand {
    // needsGui: the command paints (PDF output), so it runs in a GUI application (offscreen when no
    // platform is set).
    CliCommand(const char* name, const char* usage, Handler handler, bool needsGui = false);
};

QTextStream& out();
QTextStream& err();

} // namespace cli
