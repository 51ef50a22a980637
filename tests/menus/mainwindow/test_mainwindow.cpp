// The real main window with its menus and dialogs put on as the program does: the one-off pay from the
// button and from the calendar, the title menus by button and by Ctrl+M/T/R/H, a module choice sent
// to the suite, the program's own Rebates and payday entries, and a picture with a menu open.
#include "MainWindowFixture.h"
#include "cashbook/frmAddEdit.h"
#include "payday/frmPayRun.h"
#include "payengine/frmOneOff.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "taxsettings/frm_Rebates.h"
#include <QCalendarWidget>
#include <QDir>
#include <QMenu>
#include <QPainter>
#include <QRadioButton>
#include <QShortcut>
#include <QTabWidget>
#include <QToolButton>

using namespace qltest;

namespace {

QStringList texts(const QMenu* menu) {
    QStringList out;
    for (const QAction* a : menu->actions())
        out << a->text();
    return out;
}

// Fills the one-off dialog with a payment and an amount and presses OK.
void makeOneOff(ql::frmOneOff* d, const QString& amount) {
    d->cmbPayName()->setCurrentIndex(d->cmbPayName()->findText(QStringLiteral("Holiday Pay")));
    d->text1(1)->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    d->text1(1)->setText(amount);
    QTest::keyClick(d->text1(1), Qt::Key_Tab);
    QApplication::processEvents();
    ASSERT_TRUE(d->cmdOK()->isEnabled());
    QTest::mouseClick(d->cmdOK(), Qt::LeftButton);
}

} // namespace

TEST_F(MainWindowTest, OneOffButtonOpensTheDialogOnTodayAndThePayListStandsOnTheNewPay) {
    startWired();
    const QDate lastPay = ql::CDate(rows->wage.scalar(QStringLiteral("SELECT MAX(Date) FROM Wages")));
    QDate shown;
    onNextModal([&](QWidget* modal) {
        auto* d = qobject_cast<ql::frmOneOff*>(modal);
        ASSERT_NE(d, nullptr);
        shown = d->pickerDate();
        // A one-off pay after every regular one is the list's last row.
        if (lastPay >= ql::Today()) d->setPickerDate(lastPay.addDays(1));
        makeOneOff(d, QStringLiteral("75"));
    });
    QTest::mouseClick(button(QStringLiteral("cmdOneOff")), Qt::LeftButton);
    EXPECT_EQ(shown, ql::Today());
    ASSERT_EQ(pays(), 2);
    const qint32 made = lastWageID();
    EXPECT_EQ(ql::App().CurrentWageID, made);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("2 of 2"));
    EXPECT_EQ(text(QStringLiteral("lblGross")), QStringLiteral("$75.00"));
    EXPECT_EQ(
        ql::CCur(rows->wage.scalar(QStringLiteral("SELECT Gross FROM Wages WHERE WageID = %1").arg(made))),
        ql::CCur(QVariant(75)));
}

TEST_F(MainWindowTest, TheCalendarsOneOffChoicePassesThePickedDate) {
    startWired();
    const QDate day(2026, 2, 2);
    QDate shown;
    QString boxText;
    onNextModal([&](QWidget* modal) {
        auto* choice = qobject_cast<ql::frmAddEdit*>(modal);
        ASSERT_NE(choice, nullptr);
        // The one-off dialog follows once the choice is made.
        onNextModal([&](QWidget* next) {
            auto* d = qobject_cast<ql::frmOneOff*>(next);
            ASSERT_NE(d, nullptr);
            shown = d->pickerDate();
            boxText = d->text1(0)->text();
            makeOneOff(d, QStringLiteral("40"));
        });
        choice->findChild<QRadioButton*>(QStringLiteral("optAddOneOFf"))->setChecked(true);
        QTest::mouseClick(choice->findChild<QPushButton*>(QStringLiteral("cmdOKAY")), Qt::LeftButton);
    });
    emit child<QCalendarWidget>(QStringLiteral("CalWage"))->clicked(day);
    EXPECT_EQ(shown, day);
    EXPECT_EQ(boxText, ql::Format(QVariant(day), QStringLiteral("Short Date")));
    EXPECT_EQ(pays(), 2);
    EXPECT_EQ(
        rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM Wages WHERE Date LIKE '2026-02-02%'")).toInt(),
        1);
}

TEST_F(MainWindowTest, EachTitleButtonOpensItsMenuAndReportsAskTheSuite) {
    startWired();
    EXPECT_EQ(texts(bar->menu(0)),
              QStringList({"Cashbook", "Address Book", "Livestock", "Quillary", "Exit Fernhold"}));
    EXPECT_EQ(texts(bar->menu(3)), QStringList({"Quillary Help", "Fernhold Help"}));
    w->setGeometry(0, 0, 780, 560); // the whole window on the offscreen screen
    for (int i : {0, 1, 3}) {
        QTest::mouseClick(w->titleButton(i), Qt::LeftButton);
        EXPECT_EQ(openMenu(), bar->menu(i)) << i;
        // Just below its own button (moved left only as far as the screen's edge needs).
        const QRect button(w->titleButton(i)->mapToGlobal(QPoint(0, 0)), w->titleButton(i)->size());
        EXPECT_EQ(bar->menu(i)->pos().y(), button.bottom() + 1) << i;
        EXPECT_LE(bar->menu(i)->pos().x(), button.left()) << i;
        EXPECT_GT(bar->menu(i)->geometry().right(), button.left()) << i;
        bar->menu(i)->hide();
    }
    QTest::mouseClick(w->titleButton(2), Qt::LeftButton);
    EXPECT_EQ(openMenu(), nullptr);
    EXPECT_EQ(selections, QStringList({"Quillary/1"}));
}

TEST_F(MainWindowTest, CtrlMTRHDoTheSameWithOneBindingOnly) {
    startWired();
    // The window's key filter is the only binding: a second, as a shortcut, would make the keys ambiguous.
    for (QShortcut* s : w->findChildren<QShortcut*>())
        for (char k : {'M', 'T', 'R', 'H'})
            EXPECT_NE(s->key(), QKeySequence(Qt::CTRL | Qt::Key(k))) << k;
    button(QStringLiteral("cmdAddPay"))->setFocus();
    const Qt::Key keys[] = {Qt::Key_M, Qt::Key_T, Qt::Key_R, Qt::Key_H};
    for (int i : {0, 1, 3}) {
        key(keys[i], Qt::ControlModifier);
        EXPECT_EQ(openMenu(), bar->menu(i)) << i;
        bar->menu(i)->hide();
    }
    // From a text box too.
    QTest::mouseClick(button(QStringLiteral("cmdSelect(3)")), Qt::LeftButton);
    child<QLineEdit>(QStringLiteral("txtPAYE"))->setFocus();
    key(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(openMenu(), bar->menu(1));
    bar->menu(1)->hide();
    key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(openMenu(), nullptr);
    EXPECT_EQ(selections, QStringList({"Quillary/1"}));
}

TEST_F(MainWindowTest, TheLeaveGridIsSavedBeforeATitleAction) {
    startWired();
    key(Qt::Key_V, Qt::AltModifier); // the Leave tab
    ASSERT_EQ(w->tabMain()->currentIndex(), 1);
    QStringList order;
    // A save of the leave grid first ends the open cell edit: that marks it here.
    auto flush = screen().leave.onFlushEditor;
    screen().leave.onFlushEditor = [&order, flush] {
        order << QStringLiteral("save");
        if (flush) flush();
    };
    const QMetaObject::Connection shown =
        QObject::connect(bar->menu(1), &QMenu::aboutToShow, [&] { order << QStringLiteral("menu"); });
    key(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(order, QStringList({"save", "menu"}));
    bar->menu(1)->hide();
    QTest::mouseClick(w->titleButton(2), Qt::LeftButton);
    EXPECT_EQ(order, QStringList({"save", "menu", "save"}));
    EXPECT_EQ(selections, QStringList({"Quillary/1"}));
    // Both hooks hold this test's locals: undo them before the fixture closes the window.
    QObject::disconnect(shown);
    screen().leave.onFlushEditor = flush;
}

TEST_F(MainWindowTest, ChoosingAModuleRaisesMenuSelect) {
    startWired();
    button(QStringLiteral("cmdAddPay"))->setFocus();
    key(Qt::Key_M, Qt::ControlModifier);
    QMenu* modules = openMenu();
    ASSERT_EQ(modules, bar->menu(0));
    // Down to the first entry and Enter, as a user does.
    QTest::keyClick(modules, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(selections, QStringList({"Cashbook/0"}));
    EXPECT_EQ(ql::App().HelpContextID, 7000); // the window's activation set its help numbers
    // This module's own entry does nothing (the suite's start through the bus names the module).
    ql::App().ModuleTitle = QStringLiteral("Quillary");
    bar->menu(0)->actions().at(3)->trigger();
    ql::App().ModuleTitle.clear();
    EXPECT_EQ(selections.size(), 1);
    EXPECT_TRUE(w->isVisible());
}

TEST_F(MainWindowTest, ToolsEndsWithTheRebatesWhichOpenTheDialog) {
    startWired();
    QMenu* tools = bar->menu(1);
    const QList<QAction*> actions = tools->actions();
    ASSERT_EQ(actions.size(), 11);
    EXPECT_EQ(texts(tools).mid(0, 3), QStringList({"Backup Data", "Restore Data", "Options"}));
    EXPECT_TRUE(actions.at(3)->isSeparator());
    EXPECT_EQ(actions.at(4)->text(), QStringLiteral("&Rebates..."));
    EXPECT_EQ(actions.at(5)->text(), QStringLiteral("Ta&x Information..."));
    QString title;
    int rebateRows = -1;
    onNextModal([&](QWidget* modal) {
        auto* d = qobject_cast<ql::frm_Rebates*>(modal);
        ASSERT_NE(d, nullptr);
        title = d->windowTitle();
        rebateRows = d->findChild<QAbstractItemView*>(QStringLiteral("tgrd_data"))->model()->rowCount();
        QTest::mouseClick(d->findChild<QPushButton*>(QStringLiteral("cmd_okay")), Qt::LeftButton);
    });
    // By keyboard: Ctrl+T, then the entry's access key.
    button(QStringLiteral("cmdAddPay"))->setFocus();
    key(Qt::Key_T, Qt::ControlModifier);
    ASSERT_EQ(openMenu(), tools);
    QTest::keyClick(tools, Qt::Key_R);
    QApplication::processEvents();
    EXPECT_EQ(title, QStringLiteral("Rebates"));
    EXPECT_GE(rebateRows, 0);
    EXPECT_TRUE(selections.isEmpty()); // nothing for the suite
    EXPECT_TRUE(w->isVisible());
}

TEST_F(MainWindowTest, ToolsOffersThePaydayScreensAndThePayRunOpensAPayInTheLedger) {
    startWired();
    QMenu* tools = bar->menu(1);
    EXPECT_EQ(texts(tools).mid(7), QStringList({"&Pay Run...", "Payday &Files...", "Payday &Settings...",
                                                "Employee &Bank Accounts..."}));
    // A second pay, so that opening the first in the ledger moves the list.
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    ASSERT_EQ(pays(), 2);
    const qint32 first = rows->wage
                             .scalar(QStringLiteral("SELECT MIN(WageID) FROM Wages WHERE EmployeeID = %1")
                                         .arg(ql::App().CurrentEmployeeID))
                             .toInt();
    ASSERT_NE(ql::App().CurrentWageID, first);

    button(QStringLiteral("cmdAddPay"))->setFocus();
    key(Qt::Key_T, Qt::ControlModifier);
    ASSERT_EQ(openMenu(), tools);
    QTest::keyClick(tools, Qt::Key_P);
    QApplication::processEvents();
    auto* run = w->findChild<ql::frmPayRun*>();
    ASSERT_NE(run, nullptr);
    EXPECT_TRUE(run->isVisible());
    EXPECT_FALSE(run->isModal()); // the ledger stays usable while the run is open
    ASSERT_TRUE(bool(run->openInLedger));
    run->openInLedger(ql::App().CurrentEmployeeID, first);
    EXPECT_EQ(ql::App().CurrentWageID, first);
    EXPECT_EQ(text(QStringLiteral("datPays")), QStringLiteral("1 of 2"));
    // A second choice raises the open run instead of opening another.
    tools->actions().at(6)->trigger();
    EXPECT_EQ(w->findChildren<ql::frmPayRun*>().size(), 1);
    QPointer<ql::frmPayRun> closed(run);
    run->close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(closed.isNull());
}

TEST_F(MainWindowTest, ScreenshotsWithATitleMenuOpen) {
    startWired();
    button(QStringLiteral("cmdAddPay"))->setFocus();
    const struct {
        Qt::Key key;
        int menu;
        const char* file;
    } shots[] = {{Qt::Key_M, 0, "mainwindow-modules-menu.png"}, {Qt::Key_T, 1, "mainwindow-tools-menu.png"}};
    for (const auto& shot : shots) {
        key(shot.key, Qt::ControlModifier);
        QMenu* menu = openMenu();
        ASSERT_EQ(menu, bar->menu(shot.menu));
        QTest::qWait(50);
        // The menu is a window of its own: it is painted onto the window's picture where it stands.
        QPixmap picture = w->grab();
        {
            QPainter p(&picture);
            p.drawPixmap(w->mapFromGlobal(menu->pos()), menu->grab());
        }
        EXPECT_GT(menu->width(), 40);
        EXPECT_LT(w->mapFromGlobal(menu->pos()).y(), w->height() / 3); // under the title strip
        const QString path =
            QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(shot.file);
        EXPECT_TRUE(picture.save(path));
        menu->hide();
    }
}
