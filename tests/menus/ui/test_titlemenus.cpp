// The title menus on a screen, offscreen: built from the options, opened by the buttons and by Ctrl
// with M, T, R or H, a choice sent on as MenuSelect, F1 and the screen's help numbers.
#include "../MenusFixture.h"
#include "startup/TitleMenuBarWidget.h"
#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using namespace qltest;

namespace {

// A stand-in for the main screen: four title buttons and a text box that has the focus.
struct Screen {
    QWidget window;
    QPushButton* buttons[4];
    QLineEdit* edit;
    Screen() {
        auto* layout = new QHBoxLayout(&window);
        const char* captions[] = {"Modules", "Tools", "Reports", "Help"};
        for (int i = 0; i < 4; ++i) {
            buttons[i] = new QPushButton(QString::fromLatin1(captions[i]), &window);
            layout->addWidget(buttons[i]);
        }
        edit = new QLineEdit(&window);
        layout->addWidget(edit);
        window.setWindowTitle(QStringLiteral("Quillary"));
    }
    void show() {
        window.show();
        QApplication::setActiveWindow(&window);
        edit->setFocus();
        QApplication::processEvents();
    }
};

QStringList texts(const QMenu* menu) {
    QStringList out;
    for (const QAction* a : menu->actions())
        out << a->text();
    return out;
}

} // namespace

class TitleMenusTest : public MenusTest {
protected:
    void SetUp() override {
        MenusTest::SetUp();
        bar = ql::attachTitleMenus(&screen.window, screen.buttons);
        ql::setHelpViewer([this](const QString& path, qint32 topic) {
            shown << path + QStringLiteral("#") + QString::number(topic);
        });
        ql::setHourglass({});
    }
    void TearDown() override {
        for (int i = 0; i < 4; ++i)
            bar->menu(i)->hide();
        MenusTest::TearDown();
    }
    Screen screen;
    ql::TitleMenuBar* bar = nullptr;
    QStringList shown;
};

TEST_F(TitleMenusTest, EachButtonHasItsMenuFromTheOptions) {
    EXPECT_EQ(texts(bar->menu(0)),
              QStringList({"Cashbook", "Address Book", "Livestock", "Quillary", "Exit Fernhold"}));
    EXPECT_EQ(texts(bar->menu(1)), QStringList({"Backup Data", "Restore Data", "Options"}));
    EXPECT_EQ(texts(bar->menu(3)), QStringList({"Quillary Help", "Fernhold Help"}));
    for (int i = 0; i < 4; ++i) {
        EXPECT_FALSE(screen.buttons[i]->accessibleName().isEmpty());
        EXPECT_FALSE(bar->menu(i)->accessibleName().isEmpty());
    }
}

TEST_F(TitleMenusTest, CtrlMShowsTheModulesMenuAndAChoiceGoesToTheSuite) {
    screen.show();
    QTest::keyClick(screen.edit, Qt::Key_M, Qt::ControlModifier);
    QApplication::processEvents();
    ASSERT_TRUE(bar->menu(0)->isVisible());
    EXPECT_TRUE(selections.isEmpty());
    // Down to the second entry and Enter, as a user does.
    QTest::keyClick(bar->menu(0), Qt::Key_Down);
    QTest::keyClick(bar->menu(0), Qt::Key_Return);
    QApplication::processEvents();
    ASSERT_EQ(selections.size(), 1);
    EXPECT_EQ(selections.at(0).name, QStringLiteral("Address Book"));
    EXPECT_EQ(selections.at(0).startMenu, 0);
    EXPECT_EQ(selections.at(0).help, 7000); // the screen was activated
}

TEST_F(TitleMenusTest, CtrlRAsksForTheReportsAtOnce) {
    screen.show();
    QTest::keyClick(screen.edit, Qt::Key_R, Qt::ControlModifier);
    QApplication::processEvents();
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(bar->menu(i)->isVisible());
    ASSERT_EQ(selections.size(), 1);
    EXPECT_EQ(selections.at(0).name, QStringLiteral("Quillary"));
    EXPECT_EQ(selections.at(0).startMenu, 1);
}

TEST_F(TitleMenusTest, ButtonsAndTheOtherKeys) {
    screen.show();
    int saved = 0;
    bar->beforeTitleClick = [&] { ++saved; };
    screen.buttons[1]->click();
    EXPECT_TRUE(bar->menu(1)->isVisible());
    bar->menu(1)->hide();
    QTest::keyClick(screen.edit, Qt::Key_T, Qt::ControlModifier);
    EXPECT_TRUE(bar->menu(1)->isVisible());
    bar->menu(1)->hide();
    QTest::keyClick(screen.edit, Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(bar->menu(3)->isVisible());
    bar->menu(3)->hide();
    EXPECT_EQ(saved, 3);
    screen.buttons[2]->click();
    EXPECT_EQ(selections.size(), 1);
}

TEST_F(TitleMenusTest, HelpFromTheMenuAndFromF1) {
    screen.show();
    bar->menu(3)->actions().at(0)->trigger();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown.at(0), ql::ProgramDirectory() + QStringLiteral("/Help/quillary.html#7000"));
    QTest::keyClick(screen.edit, Qt::Key_F1);
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown.at(1), ql::ProgramDirectory() + QStringLiteral("/Help/quillary.html#7000"));
}
