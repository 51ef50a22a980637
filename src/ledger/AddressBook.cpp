#include "AddressBook.h"
#include "frame/Settings.h"
#include "payengine/AppContext.h"
#include <QFileInfo>
#include <QProcess>
#include <csignal>
#include <sys/types.h>

namespace ql {

namespace {
bool processAlive(qint64 pid) {
    return pid > 0 && ::kill(pid_t(pid), 0) == 0;
}
} // namespace

QString addressBookPath() {
    return ProgramPath() + QStringLiteral("FHAddressBook");
}

bool addressBookRunning() {
    return processAlive(App().AddressBookProcess);
}

void LaunchAddressBook(qint32 a, qint32 b, bool c, bool d) {
    AppContext& app = App();
    const QFileInfo program(addressBookPath());
    if (!program.exists() || !program.isExecutable()) return;
    if (app.AddressBookWindow != 0) {
        // Our address book's "window" is its process: when it still runs it is brought forward by the
        // desktop itself; a closed one is started again.
        if (processAlive(app.AddressBookProcess) && app.AddressBookProcess == app.AddressBookWindow) return;
    }
    const QString argument = QString::number(a) + QLatin1Char(',') + QString::number(b) + QLatin1Char(',') +
                             (c ? QStringLiteral("True") : QStringLiteral("False")) + QLatin1Char(',') +
                             (d ? QStringLiteral("True") : QStringLiteral("False"));
    qint64 pid = 0;
    if (!QProcess::startDetached(program.absoluteFilePath(), {argument}, QString(), &pid)) return;
    app.AddressBookProcess = pid;
    app.AddressBookWindow = processAlive(pid) ? pid : 0;
}

void CloseAddressBook() {
    AppContext& app = App();
    if (processAlive(app.AddressBookProcess)) ::kill(pid_t(app.AddressBookProcess), SIGTERM);
    app.AddressBookWindow = 0;
    app.AddressBookProcess = 0;
}

} // namespace ql
