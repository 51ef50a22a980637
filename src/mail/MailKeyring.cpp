#include "MailKeyring.h"
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QEventLoop>
#include <QTimer>
#include <qt6keychain/keychain.h>
#include <memory>

namespace ql {

namespace {

const QString kService = QStringLiteral("Quillary mail server");
const QString kSecrets = QStringLiteral("org.freedesktop.secrets");
// A keyring may ask the user to unlock it; past this the send goes on without it.
constexpr int kWaitMs = 60000;

QString keyOf(const MailSettings& s) {
    return s.user + u'@' + s.host;
}

struct Outcome {
    bool done = false;
    QKeychain::Error error = QKeychain::NoError;
    QString errorText;
    QString text;
};

// Runs the job to its end (the keyring answers through the event loop) and gives what it said.
std::shared_ptr<Outcome> finish(QKeychain::Job* job) {
    auto outcome = std::make_shared<Outcome>();
    QEventLoop loop;
    QObject::connect(job, &QKeychain::Job::finished, &loop, [outcome, &loop](QKeychain::Job* j) {
        outcome->done = true;
        outcome->error = j->error();
        outcome->errorText = j->errorString();
        if (auto* read = qobject_cast<QKeychain::ReadPasswordJob*>(j)) outcome->text = read->textData();
        loop.quit();
    });
    QTimer::singleShot(kWaitMs, &loop, &QEventLoop::quit);
    job->start();
    if (!outcome->done) loop.exec();
    if (!outcome->done) {
        outcome->error = QKeychain::OtherError;
        outcome->errorText = QStringLiteral("the keyring did not answer");
    }
    return outcome;
}

} // namespace

QString KeyringProblem() {
    static const QString none =
        QStringLiteral("No keyring service is running: the password comes from QUILLARY_SMTP_PASSWORD.");
    // Without an address of the session bus nothing is asked, so no bus is started behind the user's back.
    if (qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS").isEmpty()) return none;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()) return none;
    QDBusConnectionInterface* names = bus.interface();
    if (names->isServiceRegistered(kSecrets).value()) return QString();
    const QDBusReply<QStringList> activatable = names->activatableServiceNames();
    if (activatable.isValid() && activatable.value().contains(kSecrets)) return QString();
    return none;
}

QString ReadKeyringPassword(const MailSettings& settings, QString* why) {
    if (why) why->clear();
    if (settings.host.isEmpty() || settings.user.isEmpty()) return QString();
    const QString problem = KeyringProblem();
    if (!problem.isEmpty()) {
        if (why) *why = problem;
        return QString();
    }
    auto* job = new QKeychain::ReadPasswordJob(kService);
    job->setAutoDelete(true);
    job->setKey(keyOf(settings));
    const auto outcome = finish(job);
    if (outcome->error == QKeychain::NoError) return outcome->text;
    if (outcome->error != QKeychain::EntryNotFound && why)
        *why = QStringLiteral("The keyring was not read: %1.").arg(outcome->errorText);
    return QString();
}

QString StoreKeyringPassword(const MailSettings& settings, const QString& password) {
    if (settings.host.isEmpty() || settings.user.isEmpty())
        return QStringLiteral("A password is kept for a mail server and a user: give both first.");
    const QString problem = KeyringProblem();
    if (!problem.isEmpty()) return problem;
    QKeychain::Job* job = nullptr;
    if (password.isEmpty()) {
        job = new QKeychain::DeletePasswordJob(kService);
    } else {
        auto* write = new QKeychain::WritePasswordJob(kService);
        write->setTextData(password);
        job = write;
    }
    job->setAutoDelete(true);
    job->setKey(keyOf(settings));
    const auto outcome = finish(job);
    if (outcome->error == QKeychain::NoError) return QString();
    if (password.isEmpty() && outcome->error == QKeychain::EntryNotFound) return QString();
    return QStringLiteral("The password was not kept in the keyring: %1.").arg(outcome->errorText);
}

QString MailPassword(const MailSettings& settings) {
    // Scripts give it in the environment, and that wins over the keyring.
    if (qEnvironmentVariableIsSet("QUILLARY_SMTP_PASSWORD")) return qEnvironmentVariable("QUILLARY_SMTP_PASSWORD");
    return ReadKeyringPassword(settings);
}

QString MailPasswordSource(const MailSettings& settings) {
    if (qEnvironmentVariableIsSet("QUILLARY_SMTP_PASSWORD")) return QStringLiteral("from QUILLARY_SMTP_PASSWORD");
    const QString problem = KeyringProblem();
    if (!problem.isEmpty()) return QStringLiteral("not set (%1)").arg(problem);
    if (settings.user.isEmpty() || settings.host.isEmpty()) return QStringLiteral("not needed (no user is set)");
    QString why;
    const QString kept = ReadKeyringPassword(settings, &why);
    if (!why.isEmpty()) return QStringLiteral("not read (%1)").arg(why);
    return kept.isEmpty() ? QStringLiteral("not kept in the desktop keyring")
                          : QStringLiteral("kept in the desktop keyring");
}

} // namespace ql
