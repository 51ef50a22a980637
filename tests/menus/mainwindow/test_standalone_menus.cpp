// The suite's menu entries when no client holds the program's object (no suite menu listens): the
// program backs up itself, says in one line what only the suite does, and lists its own reports.
#include "MainWindowFixture.h"
#include "OwnReports.h"
#include "StandaloneMenus.h"
#include "data/Backup.h"
#include "startup/Menus.h"
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>

using namespace qltest;

class StandaloneMenusTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        connector.reset(); // nobody holds the object
    }
    void TearDown() override {
        ql::setArchiveChooser({});
        MainWindowTest::TearDown();
    }
    QAction* action(int menu, const QString& text) {
        for (QAction* a : bar->menu(menu)->actions())
            if (a->text() == text) return a;
        return nullptr;
    }
};

TEST_F(StandaloneMenusTest, BackupDataWritesTheArchiveAndAModuleSaysWhatItNeeds) {
    startWired();
    QTemporaryDir out;
    const QString file = out.filePath(QStringLiteral("farm.tar"));
    ql::setArchiveChooser([&](bool save, const QString&) { return save ? file : QString(); });
    QAction* backup = action(1, QStringLiteral("Backup Data"));
    ASSERT_NE(backup, nullptr);
    backup->trigger();
    EXPECT_TRUE(QFile::exists(file));
    const ql::DialogCall* told = last(QStringLiteral("Backup Data"));
    ASSERT_NE(told, nullptr);
    EXPECT_TRUE(told->message.startsWith(QStringLiteral("The data was backed up to "))) << told->message.toStdString();
    EXPECT_TRUE(selections.isEmpty()); // nothing went out to a suite

    QAction* cashbook = action(0, QStringLiteral("Cashbook"));
    ASSERT_NE(cashbook, nullptr);
    cashbook->trigger();
    const ql::DialogCall* module = last(QStringLiteral("Cashbook"));
    ASSERT_NE(module, nullptr);
    EXPECT_TRUE(module->message.contains(QStringLiteral("main menu, which is not running")));
    EXPECT_FALSE(module->message.contains(u'\n')); // one line

    EXPECT_NE(action(1, QStringLiteral("Ta&x Information...")), nullptr);
}

TEST_F(StandaloneMenusTest, ThePayRunSummaryTotalsThePaysOfADate) {
    startWired();
    const QDate day(2026, 3, 6);
    rows->wage.executeScript(QStringLiteral("UPDATE Wages SET Date = '2026-03-06'"));
    const ql::PreparedReport r = ql::PayRunSummary(rows->wage, day);
    const int pays = rows->wage.scalar(QStringLiteral("SELECT count(*) FROM Wages")).toInt();
    EXPECT_EQ(r.rows.size(), pays);
    ASSERT_EQ(r.totals.size(), 6);
    EXPECT_EQ(r.totals.at(0), QStringLiteral("%1 pays").arg(pays));
    EXPECT_EQ(ql::PayRunSummary(rows->wage, day.addDays(1)).rows.size(), 0);
}
