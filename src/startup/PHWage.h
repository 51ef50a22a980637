#pragma once
// The object the suite's menu drives, and the connector through which a client reaches it. Offered on
// the session bus by ObjectServer.h; usable in-process as plain objects.
#include <QObject>
#include <QString>

namespace ql {

class PHWage : public QObject {
    Q_OBJECT
public:
    explicit PHWage(QObject* parent = nullptr);

    // What kind of request the last MenuSelect is: 0 a module, 1 a module's reports, 3 a tool.
    qint32 StartMenu() const { return m_startMenu; }
    // Starts the program with the title; errors come back with "Quillary - ReadySetGo" in front.
    void ReadySetGo(const QString& title);
    // Empty when the program can start, else a message for the user.
    QString CheckEmployees();
    // Unloads every open form; failing steps are skipped.
    void Finish();

    // For this program only: set StartMenu, then SwitchModules raises MenuSelect with the help numbers
    // of the active screen. Errors come back with "Quillary - SwitchModules" in front.
    void setStartMenu(qint32 value) { m_startMenu = value; }
    void SwitchModules(const QString& name);
    void raiseMenuSelect(QString& name, qint32& helpContext, qint32& helpAltContext);
    bool switching() const { return m_switching; }
    void setSwitching(bool value) { m_switching = value; }

signals:
    void MenuSelect(const QString& name, qint32 helpContext, qint32 helpAltContext);

private:
    qint32 m_startMenu = 0;
    bool m_switching = false; // kept as part of the object; nothing reads it
};

// A client's handle: all connectors of a process share the one PHWage, which lives until the last
// connector is gone.
class qlConnector {
public:
    qlConnector();
    ~qlConnector();
    qlConnector(const qlConnector&) = delete;
    qlConnector& operator=(const qlConnector&) = delete;
    PHWage* Quillary() const;
};

// The one PHWage of the process, or nullptr.
PHWage* TheWageObject();

} // namespace ql
