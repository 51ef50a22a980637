// The title menus from the suite's options, their keyboard forms, module switching and help.
#include "MenusFixture.h"
#include "data/Recordset.h"
#include "frame/Settings.h"
#include <QFile>
#include <QRegularExpression>

using namespace qltest;

TEST_F(MenusTest, TheTemplateGivesFourMenusAndTheClosingCaption) {
    const ql::TitleMenus menus = ql::BuildTitleMenus();
    EXPECT_EQ(menus.mnu_modules,
              QStringList({"Cashbook", "Address Book", "Livestock", "Quillary", "Exit Fernhold"}));
    EXPECT_EQ(menus.mnu_tools, QStringList({"Backup Data", "Restore Data", "Options"}));
    EXPECT_EQ(menus.mnu_reports, QStringList({"Wage Reports", "Leave Reports"}));
    EXPECT_EQ(menus.mnu_help, QStringList({"Quillary Help", "Fernhold Help"}));
    // The program's help file stands beside the program, as the Help entry of kind 1 names it.
    EXPECT_EQ(app.AppHelpFile, ql::ProgramPath() + QStringLiteral("quillary.html"));
    EXPECT_TRUE(errorsReported().isEmpty());
}

TEST_F(MenusTest, CaptionsLoseTrailingBlanksAndOtherGroupsAreLeftOut) {
    modules.execute(QStringLiteral("DELETE FROM MenuOptions"));
    modules.execute(QStringLiteral("INSERT INTO MenuOptions (MenuGroup, Caption, HelpFile, HelpKind) VALUES "
                                   "('Tools', 'Year End   ', '', 0), ('Extras', 'Hidden', '', 0), "
                                   "('Reports', 'Pay Reports ', '', 0)"));
    const ql::TitleMenus menus = ql::BuildTitleMenus();
    EXPECT_EQ(menus.mnu_tools, QStringList({"Year End"}));
    EXPECT_EQ(menus.mnu_reports, QStringList({"Pay Reports"}));
    EXPECT_TRUE(menus.mnu_help.isEmpty());
    // With no Modules entries the closing caption has nothing to replace.
    EXPECT_TRUE(menus.mnu_modules.isEmpty());
    EXPECT_TRUE(errorsReported().isEmpty());
}

TEST_F(MenusTest, TheLaterOfTwoHelpEntriesOfKindOneWins) {
    modules.execute(QStringLiteral("INSERT INTO MenuOptions (MenuGroup, Caption, HelpFile, HelpKind) VALUES "
                                   "('Help', 'Payroll Notes', 'notes.html  ', 1)"));
    ql::BuildTitleMenus();
    EXPECT_EQ(app.AppHelpFile, ql::ProgramPath() + QStringLiteral("notes.html"));
}

TEST_F(MenusTest, AnUnreadableListIsRaisedWithTheReadersName) {
    modules.execute(QStringLiteral("DROP TABLE MenuOptions"));
    try {
        ql::ReadMenuOptions();
        FAIL() << "no error";
    } catch (const ql::VbError& e) {
        EXPECT_TRUE(e.description().startsWith(QStringLiteral("MapFormRs - ReadmenuOptions\r\n")))
            << e.description().toStdString();
    }
    // The screen still comes up, without menus, and says why.
    const ql::TitleMenus menus = ql::BuildTitleMenus();
    EXPECT_TRUE(menus.mnu_modules.isEmpty());
    ASSERT_EQ(errorsReported().size(), 1);
    EXPECT_TRUE(errorsReported().at(0).contains(QStringLiteral("InitForm")));
}

TEST_F(MenusTest, ControlKeysRunTheTitleButtons) {
    EXPECT_TRUE(ql::FormKeyDown('M', true, form));
    EXPECT_TRUE(ql::FormKeyDown('T', true, form));
    EXPECT_TRUE(ql::FormKeyDown('H', true, form));
    EXPECT_EQ(form.popups, QList<int>({0, 1, 3}));
    EXPECT_TRUE(selections.isEmpty());
    // Ctrl+R acts at once, without a menu: the reports of this module.
    form.formTitle = QStringLiteral("Quillary - Ridge Farm");
    EXPECT_TRUE(ql::FormKeyDown('R', true, form));
    EXPECT_EQ(form.popups.size(), 3);
    ASSERT_EQ(selections.size(), 1);
    EXPECT_EQ(selections.at(0).name, QStringLiteral("Quillary - Ridge Farm"));
    EXPECT_EQ(selections.at(0).startMenu, 1);
    EXPECT_EQ(hourglass, QList<bool>({true, false}));
    // Other keys, and the letters without Ctrl, do nothing.
    EXPECT_FALSE(ql::FormKeyDown('M', false, form));
    EXPECT_FALSE(ql::FormKeyDown('X', true, form));
    ql::elsTitleBarClick(4, form);
    EXPECT_EQ(form.popups.size(), 3);
    EXPECT_EQ(selections.size(), 1);
}

TEST_F(MenusTest, MenuChoicesSetTheRequestKind) {
    ql::mnu_modules_Click(QStringLiteral("Cashbook"));
    ql::mnu_reports_Click(QStringLiteral("Wage Reports"));
    ql::mnu_tools_Click(QStringLiteral("Backup Data"));
    ASSERT_EQ(selections.size(), 3);
    EXPECT_EQ(selections.at(0).name, QStringLiteral("Cashbook"));
    EXPECT_EQ(selections.at(0).startMenu, 0);
    EXPECT_EQ(selections.at(1).startMenu, 1);
    EXPECT_EQ(selections.at(2).name, QStringLiteral("Backup Data"));
    EXPECT_EQ(selections.at(2).startMenu, 3);
    EXPECT_TRUE(connector->Quillary()->switching()); // set by the module choice, never read
    // The program keeps running and keeps its state.
    EXPECT_TRUE(errorsReported().isEmpty());
}

TEST_F(MenusTest, TheEntryThatNamesThisModuleDoesNothing) {
    app.ModuleTitle = QStringLiteral("Quillary");
    ql::mnu_modules_Click(QStringLiteral("Quillary"));
    EXPECT_TRUE(selections.isEmpty());
    ql::mnu_modules_Click(QStringLiteral("Livestock"));
    ASSERT_EQ(selections.size(), 1);
    // Started from a command line the title is empty, and no entry is blocked.
    app.ModuleTitle.clear();
    ql::mnu_modules_Click(QStringLiteral("Quillary"));
    EXPECT_EQ(selections.size(), 2);
}

TEST_F(MenusTest, MenuSelectCarriesTheHelpNumbersOfTheActiveScreen) {
    ql::BuildTitleMenus();
    ql::ScreenActivated(form, ql::MainScreenNumber);
    EXPECT_EQ(app.HelpContextID, 7000);
    EXPECT_EQ(app.HelpAltContextID, 7001);
    EXPECT_EQ(form.HelpContextID, 7000);
    EXPECT_EQ(ql::applicationHelpFile(), app.AppHelpFile);
    ql::mnu_modules_Click(QStringLiteral("Cashbook"));
    ASSERT_EQ(selections.size(), 1);
    EXPECT_EQ(selections.at(0).help, 7000);
    EXPECT_EQ(selections.at(0).alt, 7001);
    // A screen without a row has no help numbers.
    ql::ScreenActivated(form, 42);
    EXPECT_EQ(app.HelpContextID, 0);
    EXPECT_EQ(form.HelpContextID, 0);
}

TEST_F(MenusTest, WithoutAClientTheChoiceIsStillMadeAndNoObjectIsLeft) {
    connector.reset();
    ASSERT_EQ(app.ConnectorCount, 0);
    ql::mnu_reports_Click(QStringLiteral("Wage Reports"));
    EXPECT_TRUE(errorsReported().isEmpty());
    EXPECT_EQ(app.ConnectorCount, 0);
    EXPECT_EQ(ql::TheWageObject(), nullptr);
}

TEST_F(MenusTest, HelpOfKindOneShowsTheTopicOfTheScreen) {
    ql::BuildTitleMenus();
    ql::ScreenActivated(form, ql::MainScreenNumber);
    form.HelpContextID = 0;
    ql::mnu_help_Click(QStringLiteral("Quillary Help"), form);
    const QString path = ql::ProgramDirectory() + QStringLiteral("/Help/quillary.html");
    EXPECT_EQ(ql::lastHelpShown().path, path);
    EXPECT_EQ(ql::lastHelpShown().topic, 7000);
    EXPECT_EQ(ql::applicationHelpFile(), path);
    EXPECT_EQ(form.HelpContextID, 7000);
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_TRUE(dialogs.calls.isEmpty());
}

TEST_F(MenusTest, HelpOfKindTwoShowsTheContentsAndTakesTheSecondNumber) {
    ql::ScreenActivated(form, ql::MainScreenNumber);
    ql::mnu_help_Click(QStringLiteral("Fernhold Help"), form);
    EXPECT_EQ(ql::lastHelpShown().path, ql::ProgramDirectory() + QStringLiteral("/Help/fernhold.html"));
    EXPECT_EQ(ql::lastHelpShown().topic, 0);
    EXPECT_EQ(form.HelpContextID, 7001);
    EXPECT_EQ(ql::applicationHelpFile(), ql::lastHelpShown().path);
}

TEST_F(MenusTest, HelpOfAnyOtherKindShowsTheFileAlone) {
    modules.execute(QStringLiteral("INSERT INTO MenuOptions (MenuGroup, Caption, HelpFile, HelpKind) VALUES "
                                   "('Help', 'What''s New', 'fernhold.html', 0)"));
    ql::setApplicationHelpFile(QStringLiteral("before.html"));
    form.HelpContextID = 5;
    ql::mnu_help_Click(QStringLiteral("What's New"), form);
    EXPECT_EQ(ql::lastHelpShown().topic, 0);
    EXPECT_EQ(ql::applicationHelpFile(), QStringLiteral("before.html"));
    EXPECT_EQ(form.HelpContextID, 5);
}

TEST_F(MenusTest, AHelpEntryWithoutAFileSaysSo) {
    modules.execute(QStringLiteral("INSERT INTO MenuOptions (MenuGroup, Caption, HelpFile, HelpKind) VALUES "
                                   "('Help', 'About', '   ', 1)"));
    const ql::HelpRequest before = ql::lastHelpShown();
    for (const QString& name : {QStringLiteral("About"), QStringLiteral("Nowhere")}) {
        ql::mnu_help_Click(name, form);
        ASSERT_FALSE(dialogs.calls.isEmpty());
        const ql::DialogCall& c = dialogs.calls.last();
        EXPECT_EQ(c.kind, ql::DialogCall::Message);
        EXPECT_EQ(c.heading, QStringLiteral("Help File Missing"));
        EXPECT_EQ(c.message, QStringLiteral("Didn't find the helpfile name for ") + name);
        EXPECT_EQ(c.kindOrLevel, 6);
        EXPECT_EQ(c.caption, ql::Firm());
    }
    EXPECT_EQ(ql::lastHelpShown().path, before.path);
}

TEST_F(MenusTest, FOneShowsTheHelpOfTheScreen) {
    ql::BuildTitleMenus();
    ql::ScreenActivated(form, ql::MainScreenNumber);
    ql::ShowContextHelp(form);
    EXPECT_EQ(ql::lastHelpShown().path, app.AppHelpFile);
    EXPECT_EQ(ql::lastHelpShown().topic, 7000);
}

// Every help file the template names is one of the program's own pages, with a topic for each help
// number of the screens.
TEST_F(MenusTest, TheHelpPagesHaveEveryTopic) {
    const QString folder = QStringLiteral(QUILLARY_SOURCE_DIR "/resources/Help/");
    ql::MenuReader reader = ql::ReadMenuOptions();
    for (const ql::MenuOption& o : reader.options()) {
        if (ql::RTrim(o.group) != QLatin1String("Help")) continue;
        QFile page(folder + ql::RTrim(o.helpFile));
        ASSERT_TRUE(page.open(QIODevice::ReadOnly)) << page.fileName().toStdString();
        EXPECT_TRUE(QString::fromUtf8(page.readAll()).contains(QStringLiteral("id=\"7000\"")));
    }
    QFile main(folder + QStringLiteral("quillary.html"));
    ASSERT_TRUE(main.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(main.readAll());
    auto rs = modules.openRecordset(QStringLiteral("SELECT HelpContextID, HelpAltContextID FROM ScreenHelp"),
                                    ql::RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext())
        for (int i = 0; i < 2; ++i)
            EXPECT_TRUE(text.contains(QStringLiteral("id=\"%1\"").arg(rs->value(i).toInt())))
                << rs->value(i).toInt();
}
