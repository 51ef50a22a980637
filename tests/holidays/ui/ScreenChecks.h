#pragma once
// What every holiday screen owes a keyboard and a screen reader: each control that takes the focus has
// an accessible name, each button and check box an access key, no two shown access keys alike; and
// the window fits a screen of 800 by 600.
#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QMap>
#include <QWidget>
#include <gtest/gtest.h>

namespace qltest {

// The letter after a single "&" of a caption, upper case; null when there is none.
inline QChar AccessKeyOf(const QString& caption) {
    for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
        if (caption.at(i) != QLatin1Char('&')) continue;
        if (caption.at(i + 1) == QLatin1Char('&')) {
            ++i;
            continue;
        }
        return caption.at(i + 1).toUpper();
    }
    return {};
}

// No two access keys shown in the window alike.
inline void ExpectKeysUnique(QWidget* window) {
    QMap<QChar, QString> keys;
    auto keyOf = [&](const QString& caption) {
        const QChar k = AccessKeyOf(caption);
        if (k.isNull()) return;
        EXPECT_FALSE(keys.contains(k)) << "the key " << QString(k).toStdString() << " of \"" << caption.toStdString()
                                       << "\" is also \"" << keys.value(k).toStdString() << "\"";
        keys.insert(k, caption);
    };
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(window)) continue;
        if (auto* b = qobject_cast<QAbstractButton*>(w)) {
            keyOf(b->text());
        } else if (auto* l = qobject_cast<QLabel*>(w)) {
            if (l->buddy()) keyOf(l->text());
        } else if (auto* g = qobject_cast<QGroupBox*>(w)) {
            keyOf(g->title());
        }
    }
}

inline void ExpectNamedAndKeyed(QWidget* window) {
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(window)) continue;
        if (w->focusPolicy() != Qt::NoFocus)
            EXPECT_FALSE(w->accessibleName().isEmpty())
                << w->metaObject()->className() << " " << w->objectName().toStdString();
        if (w->inherits("QPushButton") || w->inherits("QCheckBox"))
            EXPECT_TRUE(qobject_cast<QAbstractButton*>(w)->text().contains(QLatin1Char('&')))
                << qobject_cast<QAbstractButton*>(w)->text().toStdString();
    }
    ExpectKeysUnique(window);
}

// The window as it opens, and at its smallest, fits a screen of 800 by 600.
inline void ExpectFitsSmallScreen(QWidget* window) {
    const QSize size = window->size();
    EXPECT_LE(size.width(), 800);
    EXPECT_LE(size.height(), 600);
    EXPECT_LE(window->minimumSizeHint().width(), 800);
    EXPECT_LE(window->minimumSizeHint().height(), 600);
}

} // namespace qltest
