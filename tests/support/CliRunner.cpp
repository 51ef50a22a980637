#include "CliRunner.h"
#include <QProcess>
#include <QProcessEnvironment>

namespace qltest {

CliResult runCli(const QStringList& args, const QString& documentsFolder, const QByteArray& locale) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("FERNHOLD_DOCUMENTS"), documentsFolder);
    env.insert(QStringLiteral("LANG"), QString::fromLatin1(locale));
    env.insert(QStringLiteral("LC_ALL"), QString::fromLatin1(locale));
    env.insert(QStringLiteral("TZ"), QStringLiteral("Pacific/Auckland"));
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(QUILLARY_CLI_PATH), args);
    CliResult r;
    if (!p.waitForFinished(60000)) {
        p.kill();
        p.waitForFinished();
        r.err = QStringLiteral("quillary-cli did not finish");
        return r;
    }
    r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

} // namespace qltest
