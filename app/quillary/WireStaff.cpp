#include "WireStaff.h"
#include "KeyedMenuEntry.h"
#include "frame/Messages.h"
#include "ledger/frmWage.h"
#include "payengine/AppContext.h"
#include "runtime/VbError.h"
#include "staff/FirstStart.h"
#include "staff/frmEmployee.h"
#include "staff/frmEmployees.h"
#include "staff/frmEmployerDetails.h"
#include "staff/frmSetupAssistant.h"
#include "startup/Startup.h"
#include "startup/TitleMenuBarWidget.h"
#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>

namespace ql {

namespace {

// The roster is read again as after the address book's report, so the ledger shows the change.
void rosterChanged(qint32 employeeID) {
    const QVariant address = App().WageDatabase.scalar(
        QStringLiteral("SELECT AddressID FROM Employees WHERE EmployeeID = %1").arg(employeeID));
    if (MainForm* form = mainForm()) form->GotMessage(address.isValid() ? address.toInt() : 0);
}

void editShownEmployee(QWidget* window) {
    const qint32 id = App().CurrentEmployeeID;
    if (id <= 0) return;
    try {
        if (EditEmployee(App().WageDatabase, id, window)) rosterChanged(id);
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("EditEmployee"));
    }
}

// F2 or the context menu on the employee's name opens the editor for that employee.
class NameOpensEditor : public QObject {
public:
    NameOpensEditor(QComboBox* combo, QWidget* window) : QObject(combo), m_window(window) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F2) {
            editShownEmployee(m_window);
            return true;
        }
        if (event->type() == QEvent::ContextMenu) {
            QMenu menu;
            QAction* edit = menu.addAction(QStringLiteral("&Edit Employee..."));
            if (menu.exec(static_cast<QContextMenuEvent*>(event)->globalPos()) == edit) editShownEmployee(m_window);
            return true;
        }
        return false;
    }

private:
    QWidget* m_window;
};

// A double-click on who the person is (the Employee caption, the address, the occupation) opens the
// editor too; the combo keeps its clicks for choosing an employee.
class DoubleClickOpensEditor : public QObject {
public:
    DoubleClickOpensEditor(QObject* parent, QWidget* window) : QObject(parent), m_window(window) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::MouseButtonDblClick) return false;
        editShownEmployee(m_window);
        return true;
    }

private:
    QWidget* m_window;
};

} // namespace

void wireStaff(frmWage& w, TitleMenuBar* bar) {
    frmWage* window = &w;
    QMenu* tools = bar->menu(ToolsButton);
    tools->addSeparator();
    AddKeyedEntry(tools, window, QStringLiteral("&Employees..."), QStringLiteral("mnuEmployees"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E), [window] {
                      // The list opens on the employee the ledger shows.
                      if (ShowEmployees(App().WageDatabase, window, App().CurrentEmployeeID))
                          rosterChanged(App().CurrentEmployeeID);
                  });
    // F2 on the name does the same; the menu says so.
    QAction* editShown = tools->addAction(QStringLiteral("Edit &This Employee...\tF2"));
    editShown->setObjectName(QStringLiteral("mnuEditThisEmployee"));
    QObject::connect(editShown, &QAction::triggered, window, [window] { editShownEmployee(window); });
    AddKeyedEntry(tools, window, QStringLiteral("Employer &Details..."), QStringLiteral("mnuEmployerDetails"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D),
                  [window] { ShowEmployerDetails(App().WageDatabase, window); });
    if (auto* combo = window->findChild<QComboBox*>(QStringLiteral("cboEmployee"))) {
        combo->installEventFilter(new NameOpensEditor(combo, window));
        combo->setToolTip(QStringLiteral("F2: edit this employee's details"));
        auto* opens = new DoubleClickOpensEditor(combo, window);
        const QString tip = QStringLiteral("Double-click: edit this employee's details");
        for (QLabel* l : window->findChildren<QLabel*>()) {
            if (l->buddy() != combo && l->objectName() != QLatin1String("lblAddress") &&
                l->objectName() != QLatin1String("lblOccupation"))
                continue;
            l->installEventFilter(opens);
            if (l->toolTip().isEmpty()) l->setToolTip(tip);
        }
    }
}

void prepareFirstStart() {
    PrepareNewInstallation();
    setSetupAssistant([] { return RunSetupAssistant(App().WageDatabase); });
}

} // namespace ql
