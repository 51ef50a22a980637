// The wage screen by keyboard alone: access keys, the form's own keys, the leave tab's Ctrl+Tab, the
// title buttons, and a whole pay from adding it to deleting it.
#include "WageUi.h"
#include "payengine/AppContext.h"
#include <QAbstractSpinBox>
#include <QCalendarWidget>
#include <QMenu>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

using namespace qltest;

namespace {
// The letter after a single "&" of a caption, upper case; empty when there is none.
QChar accessKey(const QString& caption) {
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
} // namespace

TEST_F(WageUiTest, AWholePayByKeyboardAlone) {
    start();
    ASSERT_EQ(pays(), 1);
    child<QComboBox>(QStringLiteral("cboEmployee"))->setFocus();
    key(Qt::Key_A, Qt::AltModifier); // Add Pay
    ASSERT_EQ(pays(), 2);
    EXPECT_EQ(ql::App().CurrentTab, 6);

    key(Qt::Key_1, Qt::AltModifier); // the payment lines
    EXPECT_EQ(ql::App().CurrentTab, 1);
    ASSERT_TRUE(grid()->hasFocus());
    grid()->setCurrentIndex(grid()->model()->index(0, 1));
    key(Qt::Key_Right); // to the units
    ASSERT_EQ(grid()->currentIndex().column(), 2);
    type(QStringLiteral("40"));
    key(Qt::Key_Return);
    settle();
    EXPECT_EQ(text(QStringLiteral("lblGross")), QStringLiteral("$1,020.00")); // 40 units at 25.50

    key(Qt::Key_3, Qt::AltModifier); // the PAYE panel; leaving the grid stored its lines
    EXPECT_EQ(ql::App().CurrentTab, 3);
    EXPECT_DOUBLE_EQ(
        rows->wage
            .scalar(QStringLiteral("SELECT Gross FROM Wages WHERE WageID = %1").arg(ql::App().CurrentWageID))
            .toDouble(),
        1020.0);
    QLineEdit* paye = child<QLineEdit>(QStringLiteral("txtPAYE"));
    ASSERT_TRUE(paye->hasFocus());
    key(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("150"));
    rows->dialogs.queueAnswer(ql::msg::Yes);
    key(Qt::Key_Return);
    EXPECT_EQ(text(QStringLiteral("lblPaye")), QStringLiteral("$150.00"));
    EXPECT_EQ(ql::App().CurrentTab, 4); // the non-taxable view follows a confirmed change

    key(Qt::Key_5, Qt::AltModifier);
    EXPECT_EQ(ql::App().CurrentTab, 5);
    key(Qt::Key_Tab);
    EXPECT_EQ(ql::App().CurrentTab, 6);
    key(Qt::Key_Tab);
    EXPECT_EQ(ql::App().CurrentTab, 7);

    rows->dialogs.queueAnswer(ql::msg::Yes);
    key(Qt::Key_D, Qt::AltModifier); // Delete
    EXPECT_EQ(pays(), 1);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("1 of 1"));
}

TEST_F(WageUiTest, TheNavigatorHasKeys) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    button(QStringLiteral("cmdAddPay"))->setFocus();
    key(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("1 of 2"));
    key(Qt::Key_PageDown, Qt::AltModifier);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("2 of 2"));
    key(Qt::Key_PageUp, Qt::AltModifier);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("1 of 2"));
    key(Qt::Key_End, Qt::AltModifier);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("2 of 2"));
}

TEST_F(WageUiTest, ArrowKeysAreSwallowedOutsideListsAndBoxes) {
    start();
    QPushButton* add = button(QStringLiteral("cmdAddPay"));
    add->setFocus();
    for (Qt::Key k : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Down, Qt::Key_Up})
        key(k);
    EXPECT_TRUE(add->hasFocus());
    w->tabMain()->tabBar()->setFocus();
    key(Qt::Key_Right);
    EXPECT_EQ(w->tabMain()->currentIndex(), 0);
    // The calendar keeps them for its days.
    QTest::mouseClick(button(QStringLiteral("cmdSelect(0)")), Qt::LeftButton);
    auto* calendar = child<QCalendarWidget>(QStringLiteral("CalWage"));
    const QDate before = calendar->selectedDate();
    calendar->setFocus();
    key(Qt::Key_Right);
    EXPECT_EQ(calendar->selectedDate(), before.addDays(1));
    EXPECT_EQ(pays(), 1); // moving about the calendar picks nothing
}

TEST_F(WageUiTest, CtrlTabOnTheLeaveTabStepsThroughItsPages) {
    start();
    key(Qt::Key_V, Qt::AltModifier); // the Leave tab
    ASSERT_EQ(w->tabMain()->currentIndex(), 1);
    EXPECT_EQ(screen().leave.LeaveLoadedEmployeeID, hale);
    auto* kinds = w->leaveWidget()->findChild<QTabBar*>(QStringLiteral("tabLeave"));
    ASSERT_NE(kinds, nullptr);
    kinds->setFocus();
    for (int expected : {1, 2, 3, 4, 0}) {
        key(Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(kinds->currentIndex(), expected);
        EXPECT_EQ(screen().leave.tabLeaveIndex, expected);
        EXPECT_EQ(screen().leave.CurrentLeaveTypeID, expected + 1);
    }
    EXPECT_EQ(w->tabMain()->currentIndex(), 1);
    key(Qt::Key_W, Qt::AltModifier); // back to the wages
    EXPECT_EQ(w->tabMain()->currentIndex(), 0);
}

TEST_F(WageUiTest, TheTitleButtonsAreThereAndOpenTheirMenus) {
    start();
    const char* const names[] = {"Modules", "Tools", "Reports", "Help"};
    for (int i = 0; i < 4; ++i) {
        ASSERT_NE(w->titleButton(i), nullptr);
        EXPECT_EQ(w->titleButton(i)->accessibleName(), QString::fromLatin1(names[i]));
        EXPECT_TRUE(w->titleButton(i)->isVisible());
    }
    QList<int> clicked;
    w->titleBarClick = [&](int index) { clicked << index; };
    QMenu menu;
    menu.addAction(QStringLiteral("Cashbook"));
    w->titleButton(0)->setMenu(&menu);
    bool shown = false;
    QTimer::singleShot(50, [&] {
        shown = menu.isVisible();
        menu.close();
    });
    button(QStringLiteral("cmdAddPay"))->setFocus();
    key(Qt::Key_M, Qt::ControlModifier);
    EXPECT_TRUE(shown);
    key(Qt::Key_H, Qt::ControlModifier); // no menu yet: only the hook
    QTest::mouseClick(w->titleButton(2), Qt::LeftButton);
    EXPECT_EQ(clicked, (QList<int>{0, 3, 2}));
    w->titleButton(0)->setMenu(nullptr);
}

TEST_F(WageUiTest, EveryControlHasAnAccessibleName) {
    start();
    QStringList missing;
    for (QWidget* c : w->findChildren<QWidget*>()) {
        bool inside = false;
        for (QWidget* p = c->parentWidget(); p && p != w; p = p->parentWidget())
            inside = inside || qobject_cast<QCalendarWidget*>(p) || qobject_cast<QAbstractItemView*>(p);
        if (inside) continue;
        const bool control = qobject_cast<QAbstractButton*>(c) || qobject_cast<QComboBox*>(c) ||
                             qobject_cast<QLineEdit*>(c) || qobject_cast<QAbstractItemView*>(c) ||
                             qobject_cast<QCalendarWidget*>(c) || qobject_cast<QTabWidget*>(c) ||
                             (qobject_cast<QLabel*>(c) && !c->objectName().isEmpty());
        if (control && c->accessibleName().isEmpty())
            missing << c->metaObject()->className() + QStringLiteral(" ") + c->objectName();
    }
    EXPECT_TRUE(missing.isEmpty()) << missing.join(QStringLiteral(", ")).toStdString();
}

TEST_F(WageUiTest, ValueLabelsAndCalendarArrowsAreNamedForScreenReaders) {
    start();
    // Inside the calendar too: its month arrows, month and year.
    QStringList missing;
    for (QWidget* c : w->findChild<QCalendarWidget*>(QStringLiteral("CalWage"))->findChildren<QWidget*>())
        if ((qobject_cast<QAbstractButton*>(c) || qobject_cast<QAbstractSpinBox*>(c)) && c->accessibleName().isEmpty())
            missing << c->metaObject()->className() + QStringLiteral(" ") + c->objectName();
    EXPECT_TRUE(missing.isEmpty()) << missing.join(QStringLiteral(", ")).toStdString();
    // Each amount is heard with its caption, as it stands now.
    for (const char* n : {"lblGross", "lblPaye", "lblTakehome"}) {
        QLabel* l = w->labelControl(QString::fromLatin1(n));
        ASSERT_NE(l, nullptr) << n;
        ASSERT_FALSE(l->text().isEmpty()) << n;
        EXPECT_TRUE(l->accessibleName().endsWith(u' ' + l->text())) << l->accessibleName().toStdString();
        EXPECT_GT(l->accessibleName().size(), l->text().size() + 1) << n;
    }
    EXPECT_TRUE(w->labelControl(QStringLiteral("lblGross"))->accessibleName().startsWith(QStringLiteral("Gross ")));
}

TEST_F(WageUiTest, AccessKeysAreShownAndDistinct) {
    start();
    QStringList captions{QStringLiteral("&Employee:")};
    for (const char* n :
         {"cmdAddPay", "cmdOneOff", "cmdPrintPay", "cmdDelete", "cmdMemo", "cmdQuick", "cmdClose"})
        captions << button(QString::fromLatin1(n))->text();
    for (int i = 0; i < 8; ++i)
        captions << button(QStringLiteral("cmdSelect(%1)").arg(i))->text();
    for (int i = 0; i < 3; ++i)
        captions << w->tabMain()->tabText(i);
    QSet<QChar> keys;
    for (const QString& c : captions) {
        const QChar k = accessKey(c);
        EXPECT_FALSE(k.isNull()) << c.toStdString();
        EXPECT_FALSE(keys.contains(k)) << c.toStdString();
        keys.insert(k);
    }
    // The other caption of cmdPrintPay has a key of its own too.
    EXPECT_FALSE(keys.contains(QLatin1Char('P')));
}

TEST_F(WageUiTest, LabelsStayWholeAndButtonsInsideTheWindowAtBothSizes) {
    for (QSize size : {QSize(1280, 800), QSize(800, 600)}) {
        start(size);
        QTest::mouseClick(button(QStringLiteral("cmdSelect(5)")), Qt::LeftButton);
        settle();
        EXPECT_EQ(w->size(), size);
        const QRect inside = w->rect();
        for (QLabel* l : w->findChildren<QLabel*>()) {
            if (!l->isVisibleTo(w) || l->text().isEmpty() || l->wordWrap()) continue;
            EXPECT_GE(l->width(), l->minimumSizeHint().width())
                << l->objectName().toStdString() << " at " << size.width();
        }
        for (QPushButton* b : w->findChildren<QPushButton*>()) {
            if (!b->isVisibleTo(w) || b->window() != w) continue;
            const QRect where(b->mapTo(w, QPoint(0, 0)), b->size());
            EXPECT_TRUE(inside.contains(where)) << b->objectName().toStdString() << " at " << size.width();
            QString shown = b->text();
            shown.remove(QLatin1Char('&'));
            EXPECT_GE(b->width(), b->fontMetrics().horizontalAdvance(shown) + 8)
                << b->objectName().toStdString();
        }
        EXPECT_GE(grid()->height(), 150) << size.width();
        ql::UnloadAllForms();
    }
}
