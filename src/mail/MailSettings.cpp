#include "MailSettings.h"
#include "frame/Settings.h"
#include <QtGlobal>

namespace ql {

namespace {
const QString kSection = QStringLiteral("EMAIL");

QString read(const QString& key) {
    // A missing key is an unset value, not an error worth logging.
    const QString file = FamilyFile();
    return IniHasKey(file, kSection, key) ? ReadIni(kSection, key, file).trimmed() : QString();
}
} // namespace

int MailSettings::effectivePort() const {
    if (port > 0) return port;
    if (security == QLatin1String("tls")) return 465;
    if (security == QLatin1String("starttls")) return 587;
    return 25;
}

bool IsMailSecurity(const QString& security) {
    return security == QLatin1String("none") || security == QLatin1String("starttls") ||
           security == QLatin1String("tls");
}

MailSettings ReadMailSettings() {
    MailSettings s;
    s.host = read(QStringLiteral("Host"));
    s.port = read(QStringLiteral("Port")).toInt();
    s.security = read(QStringLiteral("Security")).toLower();
    if (!IsMailSecurity(s.security)) s.security = QStringLiteral("starttls");
    s.user = read(QStringLiteral("User"));
    s.from = read(QStringLiteral("From"));
    return s;
}

void SaveMailSettings(const MailSettings& s) {
    WriteSetting(kSection, QStringLiteral("Host"), s.host);
    WriteSetting(kSection, QStringLiteral("Port"), s.port > 0 ? QString::number(s.port) : QString());
    WriteSetting(kSection, QStringLiteral("Security"), s.security);
    WriteSetting(kSection, QStringLiteral("User"), s.user);
    WriteSetting(kSection, QStringLiteral("From"), s.from);
}

QString MailSettingsProblem(const MailSettings& s) {
    if (s.host.isEmpty())
        return QStringLiteral("No mail server is set: give one with email-settings --host or in Email Settings.");
    if (s.from.isEmpty() || !s.from.contains(u'@'))
        return QStringLiteral("No sender's address is set: give one with email-settings --from or in Email Settings.");
    return QString();
}

} // namespace ql
