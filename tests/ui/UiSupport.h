#pragma once
// Keys and clicks sent straight to a widget, a check that every control has a name a screen reader
// can say, and screenshots when QUILLARY_SCREENSHOT_DIR names a folder.
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWidget>
#include <gtest/gtest.h>

namespace qltest {

inline void key(QWidget* w, int k, Qt::KeyboardModifiers m = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, k, m);
    QApplication::sendEvent(w, &press);
    QKeyEvent release(QEvent::KeyRelease, k, m);
    QApplication::sendEvent(w, &release);
}

inline void mouse(QWidget* w, QEvent::Type type, QPoint at = QPoint(-1, -1)) {
    if (at.x() < 0) at = w->rect().center();
    QMouseEvent e(type, at, w->mapToGlobal(at), Qt::LeftButton,
                  type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

// Every input control and button under root has an accessible name or a text of its own.
inline void expectNamedControls(QWidget* root) {
    for (QWidget* w : root->findChildren<QWidget*>()) {
        const bool control =
            qobject_cast<QLineEdit*>(w) || qobject_cast<QComboBox*>(w) || qobject_cast<QAbstractButton*>(w);
        if (!control) continue;
        const auto* button = qobject_cast<QAbstractButton*>(w);
        const bool named = !w->accessibleName().isEmpty() || (button && !button->text().isEmpty());
        EXPECT_TRUE(named) << w->objectName().toStdString();
    }
}

inline void screenshot(QWidget* w, const QString& name) {
    const QByteArray dir = qgetenv("QUILLARY_SCREENSHOT_DIR");
    if (!dir.isEmpty())
        w->grab().save(QString::fromLocal8Bit(dir) + QLatin1Char('/') + name + QStringLiteral(".png"));
}

} // namespace qltest
