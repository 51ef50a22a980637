// quillary-cli: the engine without screens, for scripts and tests.
#include "CliCommand.h"
#include "data/Schema.h"
#include "runtime/VbError.h"
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLocale>
#include <map>
#include <memory>

namespace cli {
namespace {
struct Entry {
    QString usage;
    Handler handler;
    bool needsGui = false;
};
std::map<QString, Entry>& registry() {
    static std::map<QString, Entry> r;
    return r;
}
} // namespace

CliCommand::CliCommand(const char* name, const char* usage, Handler handler, bool needsGui) {
    registry()[QString::fromUtf8(name)] = Entry{QString::fromUtf8(usage), std::move(handler), needsGui};
}

QTextStream& out() {
    static QTextStream s(stdout);
    return s;
}
QTextStream& err() {
    static QTextStream s(stderr);
    return s;
}

static void printUsage(QTextStream& s) {
    s << "usage: quillary-cli COMMAND [ARGUMENTS]\n\ncommands:\n";
    for (const auto& [name, e] : registry())
        s << "  " << e.usage << "\n";
    s.flush();
}

} // namespace cli

// Painting text needs a GUI application; the other commands keep to the core one.
static std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv) {
    if (argc > 1) {
        const auto it = cli::registry().find(QString::fromLocal8Bit(argv[1]));
        if (it != cli::registry().end() && it->second.needsGui) {
            if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
            return std::make_unique<QGuiApplication>(argc, argv);
        }
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

int main(int argc, char** argv) {
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    QCoreApplication& app = *application;
    QCoreApplication::setApplicationName(QStringLiteral("Quillary"));
    QStringList args = app.arguments().mid(1);
    if (args.isEmpty()) {
        cli::printUsage(cli::err());
        return 2;
    }
    const QString name = args.takeFirst();
    if (name == QLatin1String("help") || name == QLatin1String("--help")) {
        cli::printUsage(cli::out());
        return 0;
    }
    auto it = cli::registry().find(name);
    if (it == cli::registry().end()) {
        cli::err() << "quillary-cli: unknown command '" << name << "'\n";
        cli::printUsage(cli::err());
        return 2;
    }
    int rc = 0;
    // Only init makes the data files: any other command on a missing file says so.
    ql::setDataFilesCreated(name == QLatin1String("init"));
    try {
        rc = it->second.handler(args, cli::out());
    } catch (const cli::CliUsageError&) {
        cli::out().flush();
        cli::err() << "usage: quillary-cli " << it->second.usage << "\n";
        rc = 2;
    } catch (const cli::CliFailure& f) {
        cli::out().flush();
        cli::err() << QString::fromStdString(f.what()) << "\n";
        rc = 1;
    } catch (const ql::VbError& e) {
        cli::out().flush();
        cli::err() << e.description() << "\n";
        rc = 1;
    } catch (const std::exception& e) {
        cli::out().flush();
        cli::err() << e.what() << "\n";
        rc = 1;
    }
    cli::out().flush();
    cli::err().flush();
    return rc;
}
