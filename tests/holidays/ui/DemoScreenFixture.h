#pragma once
// The demo farm made by quillary-cli, then the payroll opened as the program opens it, with the
// screens' messages recorded: what the holiday screens are tested on. A test's own commands (adding
// pays) run before the payroll is opened; cli() runs one afterwards and reads its JSON.
#include "CliRunner.h"
#include "TestEnv.h"
#include "frame/ScriptedDialogs.h"
#include "payengine/AppContext.h"
#include "startup/Startup.h"
#include <QJsonDocument>
#include <QJsonObject>
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace qltest {

class DemoScreenTest : public DocumentsTest {
protected:
    // Commands run on the demo farm before the payroll is opened.
    virtual QList<QStringList> preparation() const { return {}; }
    // Aroha Testington's (employee 1) five weekly pays from 30 October 2026, WageIDs 1 to 5.
    static QList<QStringList> fiveWeeklyPays() {
        QList<QStringList> pays{{"add-pay", "1", "2026-10-30"}};
        for (int i = 0; i < 4; ++i)
            pays << QStringList{"add-pay", "1"};
        return pays;
    }

    void SetUp() override {
        ASSERT_EQ(runCli({"init", "--demo"}, docs->path()).exitCode, 0);
        for (const QStringList& args : preparation())
            ASSERT_EQ(runCli(args, docs->path()).exitCode, 0) << args.join(u' ').toStdString();
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        ql::OpenWageDatabase();
    }
    void TearDown() override {
        ql::CloseWageDatabase();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    QJsonObject cli(const QStringList& args) {
        const CliResult r = runCli(args, docs->path());
        EXPECT_EQ(r.exitCode, 0) << args.join(u' ').toStdString() << ": " << r.err.toStdString();
        return QJsonDocument::fromJson(r.out.toUtf8()).object();
    }

    // Presses a key on whatever has the focus, as a keyboard does; an access key presses its button
    // after the button's short animation.
    static void key(Qt::Key k, Qt::KeyboardModifiers mods = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), k, mods);
        if (mods & Qt::AltModifier) QTest::qWait(250);
        QApplication::processEvents(); // what the key set going (a closed cell editor) is done
    }
    // Types each character into whatever has the focus at that moment.
    static void type(const QString& text) {
        for (QChar c : text)
            QTest::keyClicks(QApplication::focusWidget(), QString(c));
    }
    // Shows the window and makes it the active one, as a window manager would (access keys need it).
    static void showActive(QWidget* window) {
        window->show();
        window->activateWindow();
        QApplication::setActiveWindow(window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }

    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

} // namespace qltest
