#pragma once
// An entry of the program's own in a title menu, with a key that works while the menu is closed; a
// failure is reported under the entry's name and the window stays.
#include "frame/Messages.h"
#include "runtime/VbError.h"
#include <QAction>
#include <QMenu>
#include <functional>

namespace ql {

inline QAction* AddKeyedEntry(QMenu* menu, QWidget* window, const QString& caption, const QString& name,
                              const QKeySequence& key, std::function<void()> run) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WindowShortcut);
    window->addAction(action);
    QObject::connect(action, &QAction::triggered, window, [name, run = std::move(run)] {
        try {
            run();
        } catch (const VbError& e) {
            ReportError(e, name + QStringLiteral("_Click"));
        }
    });
    return action;
}

} // namespace ql
