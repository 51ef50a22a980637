#include "ErrorLog.h"
#include "Settings.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include <QDir>
#include <QFile>

namespace ql {
namespace {
// Set by the first call and never cleared within a run: the file it names is closed after that
// one line, so every later line of the run is lost, and that is how the log keeps one per run.
bool& logUsed() {
    static bool used = false;
    return used;
}
} // namespace

QString ErrorLogPath() {
    return CommonFolder() + QStringLiteral("/FHErrors.log");
}

void LogError(const QString& text) {
    if (logUsed()) return;
    logUsed() = true;
    skipErrors([&] {
        const QDateTime now = Now();
        const QString line = Format(now.date(), QStringLiteral("short date")) + QLatin1Char(' ') +
                             now.time().toString(QStringLiteral("hh:mm:ss")) + QLatin1Char('\t') + text +
                             QStringLiteral("\r\n");
        QDir().mkpath(CommonFolder());
        QFile f(ErrorLogPath());
        if (f.open(QIODevice::WriteOnly | QIODevice::Append)) f.write(line.toUtf8());
    });
}

void resetErrorLogForTesting() {
    logUsed() = false;
}

} // namespace ql
