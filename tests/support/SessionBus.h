#pragma once
// A private session bus for a test program when none is there: a dbus-daemon of its own, started once
// and ended with the program.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

namespace qltest {

class PrivateBus {
public:
    PrivateBus() {
        if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return;
        const QString daemon = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        if (daemon.isEmpty()) return;
        m_daemon.start(daemon, {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                QStringLiteral("--print-address=1")});
        if (!m_daemon.waitForStarted(5000) || !m_daemon.waitForReadyRead(5000)) return;
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_daemon.readLine().trimmed());
    }
    ~PrivateBus() {
        if (m_daemon.state() != QProcess::NotRunning) {
            m_daemon.kill();
            m_daemon.waitForFinished(2000);
        }
    }
    // A bus of this program's own even when the environment names one, so that parallel runs never
    // meet on a shared bus; the first call of the program decides.
    static PrivateBus& own() {
        static const bool unset = [] {
            qunsetenv("DBUS_SESSION_BUS_ADDRESS");
            return true;
        }();
        (void)unset;
        return instance();
    }
    static PrivateBus& instance() {
        static PrivateBus bus;
        return bus;
    }

private:
    QProcess m_daemon;
};

// Waits, with the event loop running, until what a process printed (gathered in seen) holds wanted,
// or the time is up.
inline bool waitForOutput(QProcess& p, QString& seen, const QString& wanted, int ms) {
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms) {
        QEventLoop loop;
        QTimer::singleShot(50, &loop, &QEventLoop::quit);
        loop.exec();
        seen += QString::fromUtf8(p.readAllStandardOutput());
        if (seen.contains(wanted)) return true;
    }
    return false;
}

} // namespace qltest
