// The leave tab on the desktop, offscreen. With QUILLARY_SCREENSHOT_DIR set, a picture of each sub-tab
// is saved there (leave-1.png ... leave-5.png).
#include "LeaveFixture.h"
#include "frame/Settings.h"
#include "leave/LeaveGridWidget.h"
#include "leave/LeaveTabWidget.h"
#include <QAbstractItemModelTester>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>

using namespace qltest;

namespace {
class LeaveTabTest : public LeaveTest {
protected:
    qint64 hale = 0;
    std::unique_ptr<ql::LeaveTabWidget> tab;
    void SetUp() override {
        setToday(QDate(2025, 6, 15));
        hale = hire(QStringLiteral("2022-03-01"));
        leave(hale, 1, 4, 20, QStringLiteral("2024-03-01"), QStringLiteral("2024-03-01"),
              QStringLiteral("2024 allocation"));
        leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"),
              QStringLiteral("2025 allocation"));
        leave(hale, 1, 2, 5, QStringLiteral("2025-04-14"), QStringLiteral("2025-04-18"),
              QStringLiteral("Easter"));
        leave(hale, 1, 2, 1.5, QStringLiteral("2025-06-02"), QStringLiteral("2025-06-03"));
        leave(hale, 2, 4, 10, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"));
        leave(hale, 2, 2, 2, QStringLiteral("2025-05-12"), QStringLiteral("2025-05-13"),
              QStringLiteral("Flu"));
        leave(hale, 4, 4, 16, QStringLiteral("2025-04-26"), QStringLiteral("2025-04-26"),
              QStringLiteral("Worked ANZAC weekend"));
        leave(hale, 4, 2, 8, QStringLiteral("2025-05-30"), QStringLiteral("2025-05-30"));
        open(hale);
        ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), QStringLiteral("N"));
        tab = std::make_unique<ql::LeaveTabWidget>();
        tab->resize(820, 420);
        tab->show();
        tab->entering();
    }
    void TearDown() override {
        tab.reset();
        LeaveTest::TearDown();
    }
    template <class T> T* child(const char* name) {
        T* w = tab->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    QString text(const char* name) { return child<QLineEdit>(name)->text(); }
    // Lets events run until the condition holds, at most two seconds.
    template <class F> static void waitFor(F&& condition) {
        for (int i = 0; i < 100 && !condition(); ++i)
            QTest::qWait(20);
    }
    void key(QWidget* to, int k, Qt::KeyboardModifiers mods = Qt::NoModifier, const QString& t = QString()) {
        QKeyEvent press(QEvent::KeyPress, k, mods, t);
        QApplication::sendEvent(to, &press);
    }
};
} // namespace

TEST_F(LeaveTabTest, ShowsTheOpenPageOfTheCurrentYear) {
    auto* bar = child<QTabBar>("tabLeave");
    ASSERT_EQ(bar->count(), 5);
    QStringList captions;
    for (int i = 0; i < bar->count(); ++i)
        captions << bar->tabText(i);
    EXPECT_EQ(captions.join(QLatin1Char('|')),
              QStringLiteral("Annual Leave|Sick Leave|Special Leave|In Lieu|Leave without Pay"));
    EXPECT_TRUE(child<QRadioButton>("optWhichYears(0)")->isChecked());
    EXPECT_EQ(child<QLabel>("lblHired")->text(), QStringLiteral("From"));
    EXPECT_EQ(child<QLabel>("lblfDate")->text(), QStringLiteral("1/03/2025"));
    EXPECT_EQ(child<QLabel>("lbltDate")->text(), QStringLiteral("28/02/2026"));
    EXPECT_EQ(text("txtLeaveCForward"), QStringLiteral("20.0"));
    EXPECT_EQ(text("txtLeaveAdded"), QStringLiteral("20.0"));
    EXPECT_EQ(text("txtLeaveTaken"), QStringLiteral("6.5"));
    EXPECT_EQ(text("txtLeaveAvailable"), QStringLiteral("33.5"));
    EXPECT_EQ(text("txtLeaveTotal"), QString());
    ql::LeaveGridWidget* grid = tab->grid();
    EXPECT_EQ(grid->model()->rowCount(), 4); // three rows and the add-new row
    EXPECT_EQ(grid->model()->index(1, 3).data().toString(), QStringLiteral("Leave Taken"));
    EXPECT_EQ(grid->model()->index(1, 5).data().toString(), QStringLiteral("14/04/2025"));
    for (int c = 0; c < 3; ++c)
        EXPECT_TRUE(grid->isColumnHidden(c));
    EXPECT_EQ(grid->model()->headerData(4, Qt::Horizontal).toString(), QStringLiteral("Days"));
}

TEST_F(LeaveTabTest, EveryControlHasANameAndTheTotalsKeepOutOfTheTabOrder) {
    for (QWidget* w : tab->findChildren<QWidget*>()) {
        if (w->focusPolicy() & Qt::TabFocus)
            EXPECT_FALSE(w->accessibleName().isEmpty()) << w->objectName().toStdString();
    }
    for (const char* box :
         {"txtLeaveCForward", "txtLeaveAdded", "txtLeaveTaken", "txtLeaveAvailable", "txtLeaveTotal"}) {
        auto* b = child<QLineEdit>(box);
        EXPECT_TRUE(b->isReadOnly());
        EXPECT_FALSE(b->focusPolicy() & Qt::TabFocus);
        EXPECT_FALSE(b->accessibleName().isEmpty());
    }
    EXPECT_TRUE(child<QRadioButton>("optWhichYears(0)")->text().contains(QLatin1Char('&')));
    EXPECT_TRUE(child<QRadioButton>("optWhichYears(1)")->text().contains(QLatin1Char('&')));
}

TEST_F(LeaveTabTest, ATotalBoxPassesTheFocusToTheGrid) {
    tab->activateWindow();
    QApplication::setActiveWindow(tab.get());
    QFocusEvent in(QEvent::FocusIn, Qt::MouseFocusReason);
    QApplication::sendEvent(child<QLineEdit>("txtLeaveTaken"), &in);
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), tab->grid());
}

TEST_F(LeaveTabTest, TheGridModelBehaves) {
    QAbstractItemModelTester tester(tab->grid()->model(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal);
    ql::LeaveGridModel* model = tab->grid()->gridModel();
    EXPECT_TRUE(model->setData(model->index(3, 3), QStringLiteral("2")));
    EXPECT_EQ(model->rowCount(), 5);
    EXPECT_TRUE(model->setData(model->index(3, 4), QStringLiteral("2")));
    EXPECT_EQ(text("txtLeaveTaken"), QStringLiteral("8.5"));
    EXPECT_EQ(model->index(4, 3).data().toString(), QString()); // the new add-new row
}

TEST_F(LeaveTabTest, APrintableKeyInTheDescriptionColumnOpensItsList) {
    ql::LeaveGridWidget* grid = tab->grid();
    grid->setCurrentIndex(grid->model()->index(3, 3));
    key(grid, Qt::Key_L, Qt::NoModifier, QStringLiteral("L"));
    auto* combo = qobject_cast<QComboBox*>(grid->indexWidget(grid->currentIndex()));
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->count(), 5); // a blank entry, then kinds 2 to 5
    EXPECT_EQ(combo->itemText(1), QStringLiteral("Leave Taken"));
    combo->setCurrentIndex(3);
    emit combo->activated(3);
    QApplication::processEvents();
    EXPECT_EQ(grid->model()->index(3, 3).data().toString(), QStringLiteral("Leave Allocated"));
    EXPECT_EQ(text("txtLeaveAdded"), QStringLiteral("20.0")); // no days yet
}

TEST_F(LeaveTabTest, CtrlDeleteAsksThenDeletes) {
    ql::LeaveGridWidget* grid = tab->grid();
    grid->setCurrentIndex(grid->model()->index(2, 3));
    rows->dialogs.queueAnswer(ql::msg::No);
    key(grid, Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(grid->model()->rowCount(), 4);
    key(grid, Qt::Key_Delete, Qt::ControlModifier); // the default answer: Yes
    EXPECT_EQ(grid->model()->rowCount(), 3);
    EXPECT_EQ(messages(QStringLiteral("Delete Entry?")), 2);
    EXPECT_EQ(text("txtLeaveTaken"), QStringLiteral("5.0"));
}

TEST_F(LeaveTabTest, AnOpenEditorIsStoredBeforeThePageChanges) {
    ql::LeaveGridWidget* grid = tab->grid();
    const QModelIndex comments = grid->model()->index(2, 7);
    grid->setCurrentIndex(comments);
    grid->edit(comments);
    auto* editor = qobject_cast<QLineEdit*>(grid->indexWidget(comments));
    ASSERT_NE(editor, nullptr);
    editor->setText(QStringLiteral("Queen's Birthday"));
    tab->nextPage();
    EXPECT_EQ(child<QTabBar>("tabLeave")->currentIndex(), 1);
    EXPECT_EQ(count(QStringLiteral("Comments = 'Queen''s Birthday'")), 1);
    EXPECT_EQ(text("txtLeaveAdded"), QStringLiteral("10.0"));
}

TEST_F(LeaveTabTest, TheOptionShowsAllYearsWithoutTheCarriedForward) {
    child<QRadioButton>("optWhichYears(1)")->click();
    EXPECT_EQ(child<QLabel>("lblHired")->text(), QStringLiteral("Hired"));
    EXPECT_TRUE(child<QLineEdit>("txtLeaveCForward")->isHidden());
    EXPECT_TRUE(child<QLabel>("lblCForward")->isHidden());
    EXPECT_EQ(text("txtLeaveAvailable"), QStringLiteral("33.5"));
    tab->leaving();
    EXPECT_EQ(ql::ReadIni(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), ql::FamilyFile()),
              QStringLiteral("Y"));
}

TEST_F(LeaveTabTest, EachSubTabForThePictures) {
    const QString dir = QString::fromLocal8Bit(qgetenv("QUILLARY_SCREENSHOT_DIR"));
    auto* bar = child<QTabBar>("tabLeave");
    for (int i = 0; i < 5; ++i) {
        bar->setCurrentIndex(i);
        EXPECT_EQ(tab->screen().CurrentLeaveTypeID, i + 1);
        EXPECT_EQ(tab->grid()->model()->headerData(4, Qt::Horizontal).toString(),
                  i == 3 ? QStringLiteral("Hours") : QStringLiteral("Days"));
        const QImage shot = tab->grab().toImage();
        EXPECT_FALSE(shot.isNull());
        if (!dir.isEmpty()) shot.save(dir + QStringLiteral("/leave-%1.png").arg(i + 1));
    }
    if (!dir.isEmpty()) {
        child<QRadioButton>("optWhichYears(1)")->click();
        bar->setCurrentIndex(0);
        tab->grab().save(dir + QStringLiteral("/leave-all-years.png"));
    }
}

TEST_F(LeaveTabTest, KeyboardCtrlTabAndAccessKeys) {
    QApplication::setActiveWindow(tab.get());
    tab->grid()->setFocus();
    QApplication::processEvents();
    auto* bar = child<QTabBar>("tabLeave");
    for (int i = 1; i <= 5; ++i) {
        QTest::keyClick(tab->grid(), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(bar->currentIndex(), i % 5);
        EXPECT_EQ(tab->screen().CurrentLeaveTypeID, i % 5 + 1);
    }
    // An access key presses the button and lets it go a moment later, which is the click.
    QTest::keyClick(tab->grid(), Qt::Key_Y, Qt::AltModifier);
    waitFor([&] { return tab->screen().optWhichYears == 1; });
    EXPECT_EQ(tab->screen().optWhichYears, 1);
    EXPECT_TRUE(child<QRadioButton>("optWhichYears(1)")->isChecked());
    EXPECT_EQ(tab->screen().optWhichYears, 1);
    QTest::keyClick(tab->grid(), Qt::Key_U, Qt::AltModifier);
    waitFor([&] { return tab->screen().optWhichYears == 0; });
    EXPECT_EQ(tab->screen().optWhichYears, 0);
    EXPECT_TRUE(child<QRadioButton>("optWhichYears(0)")->isChecked());
}
