#include "ObjectServer.h"
#include "PHWage.h"
#include "Startup.h"
#include "payengine/AppContext.h"
#include "runtime/Trap.h"
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <map>
#include <memory>
#include <vector>

namespace ql {

namespace {
QString errorName(long number) {
    return ServiceName + QStringLiteral(".Error.E") + QString::number(number);
}

// The connectors held by the bus's clients, each released when its client leaves the bus.
class ConnectorObject : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "nz.fernhold.Quillary.qlConnector")
    Q_PROPERTY(QDBusObjectPath Quillary READ Quillary)
public:
    ConnectorObject() {
        m_watcher.setConnection(QDBusConnection::sessionBus());
        m_watcher.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
        connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this,
                [this](const QString& client) { dropClient(client); });
    }
    ~ConnectorObject() override { m_held.clear(); }
    int clients() const {
        int n = 0;
        for (const auto& entry : m_held)
            n += int(entry.second.size());
        return n;
    }
    QDBusObjectPath Quillary() const { return QDBusObjectPath(WageObjectPath); }

public slots:
    QDBusObjectPath Connect() {
        const QString client = calledFromDBus() ? message().service() : QString();
        if (!client.isEmpty() && !m_held.count(client)) m_watcher.addWatchedService(client);
        m_held[client].push_back(std::make_unique<qlConnector>());
        relayMenuSelect(TheWageObject());
        return Quillary();
    }
    void Release() {
        const QString client = calledFromDBus() ? message().service() : QString();
        auto it = m_held.find(client);
        if (it == m_held.end() || it->second.empty()) return;
        it->second.pop_back();
        if (it->second.empty()) dropClient(client);
    }

private:
    void dropClient(const QString& client) {
        m_held.erase(client);
        m_watcher.removeWatchedService(client);
    }
    QDBusServiceWatcher m_watcher;
    std::map<QString, std::vector<std::unique_ptr<qlConnector>>> m_held;
};

// PHWage's operations; a call from a client without a connector holds one for the call.
class WageObject : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "nz.fernhold.Quillary.PHWage")
    Q_PROPERTY(int StartMenu READ StartMenu)
public:
    int StartMenu() const {
        const PHWage* w = TheWageObject();
        return w ? w->StartMenu() : 0;
    }

public slots:
    void ReadySetGo(const QString& title) {
        run([&](PHWage& w) { w.ReadySetGo(title); });
    }
    QString CheckEmployees() {
        QString answer;
        run([&](PHWage& w) { answer = w.CheckEmployees(); });
        return answer;
    }
    void Finish() {
        run([](PHWage& w) { w.Finish(); });
    }
    void GotMessage(int addressID) {
        if (MainForm* form = mainForm()) skipErrors([&] { form->GotMessage(addressID); });
    }

signals:
    void MenuSelect(const QString& name, int helpContext, int helpAltContext);

private:
    template <class F> void run(F&& body) {
        std::unique_ptr<qlConnector> hold;
        if (!TheWageObject()) hold = std::make_unique<qlConnector>();
        PHWage* w = TheWageObject();
        relay(w);
        try {
            body(*w);
        } catch (const VbError& e) {
            if (calledFromDBus()) sendErrorReply(errorName(e.number()), e.description());
        }
    }

public:
    void relay(PHWage* w) {
        if (w) connect(w, &PHWage::MenuSelect, this, &WageObject::forwardMenuSelect, Qt::UniqueConnection);
    }

private slots:
    void forwardMenuSelect(const QString& name, qint32 helpContext, qint32 helpAltContext) {
        emit MenuSelect(name, helpContext, helpAltContext);
    }
};

struct Server {
    std::unique_ptr<ConnectorObject> connector;
    std::unique_ptr<WageObject> wage;
};
std::unique_ptr<Server>& server() {
    static std::unique_ptr<Server> s;
    return s;
}
} // namespace

bool startObjectServer(QString* reason) {
    if (server()) return true;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        if (reason) *reason = QStringLiteral("No session bus: ") + bus.lastError().message();
        return false;
    }
    auto s = std::make_unique<Server>();
    s->connector = std::make_unique<ConnectorObject>();
    s->wage = std::make_unique<WageObject>();
    const auto flags = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                       QDBusConnection::ExportAllProperties;
    if (!bus.registerObject(ConnectorPath, s->connector.get(), flags) ||
        !bus.registerObject(WageObjectPath, s->wage.get(), flags)) {
        if (reason) *reason = QStringLiteral("The object paths are taken on the session bus.");
        bus.unregisterObject(ConnectorPath);
        return false;
    }
    if (!bus.registerService(ServiceName)) {
        if (reason)
            *reason = QStringLiteral("The name ") + ServiceName + QStringLiteral(" is taken: ") +
                      bus.lastError().message();
        bus.unregisterObject(ConnectorPath);
        bus.unregisterObject(WageObjectPath);
        return false;
    }
    server() = std::move(s);
    return true;
}

void stopObjectServer() {
    if (!server()) return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(ServiceName);
    bus.unregisterObject(ConnectorPath);
    bus.unregisterObject(WageObjectPath);
    server().reset();
}

void relayMenuSelect(PHWage* object) {
    if (server()) server()->wage->relay(object);
}

int busClientCount() {
    return server() ? server()->connector->clients() : 0;
}

} // namespace ql

#include "ObjectServer.moc"
