#include "MenuReader.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"

namespace ql {

namespace {

// The modules database, made with its template rows when a new installation has none yet.
Database openModules() {
    return openOrCreate(DatabaseKind::Modules, ModuleFileName());
}

QString text(const Recordset& rs, const char* column) {
    const QVariant v = rs.value(QString::fromLatin1(column));
    return IsNull(v) ? QString() : CStr(v);
}

qint32 screenNumber(qint32 screen, const char* column) {
    Database db = openModules();
    const QVariant v = db.scalar(QStringLiteral("SELECT %1 FROM ScreenHelp WHERE ScreenNumber = %2")
                                     .arg(QString::fromLatin1(column))
                                     .arg(screen));
    db.close();
    return IsNull(v) ? 0 : CLng(v);
}

} // namespace

QString RTrim(const QString& text) {
    qsizetype n = text.size();
    while (n > 0 && text.at(n - 1) == QLatin1Char(' '))
        --n;
    return text.left(n);
}

void MenuReader::Load() {
    m_options.clear();
    m_closing.clear();
    Database db = openModules();
    auto rs = db.openRecordset(
        QStringLiteral(
            "SELECT MenuGroup, Caption, HelpFile, HelpKind FROM MenuOptions ORDER BY MenuOptionID"),
        RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        MenuOption option;
        option.group = text(*rs, "MenuGroup");
        option.caption = text(*rs, "Caption");
        option.helpFile = text(*rs, "HelpFile");
        const QVariant kind = rs->value(QStringLiteral("HelpKind"));
        option.helpKind = IsNull(kind) ? 0 : CLng(kind);
        if (RTrim(option.group).compare(QLatin1String("Closing"), Qt::CaseInsensitive) == 0)
            m_closing = RTrim(option.caption);
        else
            m_options.append(option);
    }
    rs->Close();
    db.close();
}

bool MenuReader::Lookup(const QString& name, MenuOption& option) const {
    for (const MenuOption& o : m_options)
        if (RTrim(o.caption).compare(RTrim(name), Qt::CaseInsensitive) == 0) {
            option = o;
            return true;
        }
    return false;
}

qint32 MenuReader::HelpContextID(qint32 screen) const {
    return screenNumber(screen, "HelpContextID");
}
qint32 MenuReader::HelpAltContextID(qint32 screen) const {
    return screenNumber(screen, "HelpAltContextID");
}

} // namespace ql
