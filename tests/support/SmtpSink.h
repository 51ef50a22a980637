#pragma once
// A real SMTP server on 127.0.0.1 (python3-aiosmtpd) for the tests of payslips by email: every
// message it receives is kept in a folder, with its recipients, subject and attachments beside it.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QThread>

namespace qltest {

// The sink script beside this header, bounded to a minute whatever the test does.
class SmtpSink {
public:
    // With a login ("user:password") the server demands it and keeps each accepted one in "logins".
    explicit SmtpSink(const QString& folder, const QString& login = QString()) : m_folder(folder) {
        if (!login.isEmpty()) {
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            env.insert(QStringLiteral("SMTP_SINK_LOGIN"), login);
            m_process.setProcessEnvironment(env);
        }
        // Debian's own interpreter holds python3-aiosmtpd, whatever python3 comes first on the path.
        const QString python = QFile::exists(QStringLiteral("/usr/bin/python3")) ? QStringLiteral("/usr/bin/python3")
                                                                                 : QStringLiteral("python3");
        m_process.start(python,
                        {QStringLiteral(QUILLARY_SOURCE_DIR "/tests/support/smtp_sink.py"), folder,
                         QStringLiteral("60")});
        if (m_process.waitForStarted(10000) && m_process.waitForReadyRead(20000))
            port = QString::fromUtf8(m_process.readLine()).trimmed().toInt();
    }
    ~SmtpSink() {
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished(10000)) m_process.kill(), m_process.waitForFinished(5000);
    }
    // The messages received so far, waiting up to 10 s for at least n of them.
    int received(int n) const {
        for (int i = 0; i < 100; ++i) {
            const int count = QDir(m_folder).entryList({QStringLiteral("*.eml")}, QDir::Files).size();
            if (count >= n) return count;
            QThread::msleep(100);
        }
        return QDir(m_folder).entryList({QStringLiteral("*.eml")}, QDir::Files).size();
    }
    QString text(const QString& name) const {
        QFile f(m_folder + u'/' + name);
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }
    QStringList attachments(int n) const {
        QStringList files;
        for (const QString& f : QDir(m_folder).entryList({QStringLiteral("%1-*").arg(n)}, QDir::Files))
            files << m_folder + u'/' + f;
        return files;
    }
    int port = 0;

private:
    QString m_folder;
    mutable QProcess m_process;
};

} // namespace qltest
