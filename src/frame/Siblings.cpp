#include "Siblings.h"
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QVariantMap>

namespace ql {

namespace {
QString compact(const QString& name) {
    QString out = name;
    out.remove(QLatin1Char(' '));
    return out;
}
} // namespace

QString siblingService(const QString& name) {
    return QStringLiteral("nz.fernhold.") + compact(name);
}

QString siblingPath(const QString& name) {
    return QStringLiteral("/nz/fernhold/") + compact(name);
}

bool ActivateApp(const QString& name, qint64 window) {
    if (window == 0) return false;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()) return false;
    const QString service = siblingService(name);
    if (!bus.interface()->isServiceRegistered(service).value()) return false;
    QDBusMessage call = QDBusMessage::createMethodCall(service, siblingPath(name),
                                                       QStringLiteral("org.freedesktop.Application"),
                                                       QStringLiteral("Activate"));
    call << QVariantMap();
    call.setAutoStartService(false);
    return bus.send(call);
}

} // namespace ql
