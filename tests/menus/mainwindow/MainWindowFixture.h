#pragma once
// The real main window, started as the suite's menu starts it and wired as main.cpp wires it, with a
// client of the program's object that records each MenuSelect with its request kind.
#include "WageUi.h"
#include "WireHolidays.h"
#include "WireMenusAndOneOff.h"
#include "startup/PHWage.h"
#include "startup/TitleMenuBarWidget.h"
#include <QMenu>

namespace qltest {

class MainWindowTest : public WageUiTest {
protected:
    void SetUp() override {
        WageUiTest::SetUp();
        // The suite's menu as a client of the object: each choice with its request kind.
        connector = std::make_unique<ql::qlConnector>();
        QObject::connect(connector->Quillary(), &ql::PHWage::MenuSelect,
                         [this](const QString& name, qint32, qint32) {
                             selections << name + QStringLiteral("/") +
                                               QString::number(connector->Quillary()->StartMenu());
                         });
    }
    void TearDown() override {
        if (bar)
            for (int i = 0; i < 4; ++i)
                bar->menu(i)->hide();
        WageUiTest::TearDown();
        connector.reset();
    }
    // Starts the program with the main window wired as main.cpp wires it (with the holiday screens'
    // entries when asked), at a size.
    void startWired(bool holidays = false, QSize size = QSize(1000, 680)) {
        ql::setMainFormFactory([this, holidays] {
            auto f = std::make_unique<ql::WageMainForm>();
            bar = ql::wireMenusAndOneOff(*f->widget());
            if (holidays) ql::wireHolidays(*f->widget(), bar);
            return f;
        });
        ASSERT_TRUE(ql::Main(QStringLiteral("Quillary")));
        w = static_cast<ql::WageMainForm*>(ql::mainForm())->widget();
        w->resize(size);
        w->activateWindow();
        QApplication::setActiveWindow(w);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(w));
        ASSERT_TRUE(QTest::qWaitForWindowActive(w));
        ASSERT_NE(bar, nullptr);
    }
    QMenu* openMenu() const {
        for (int i = 0; i < 4; ++i)
            if (bar->menu(i)->isVisible()) return bar->menu(i);
        return nullptr;
    }
    qint32 lastWageID() const {
        return rows->wage.scalar(QStringLiteral("SELECT MAX(WageID) FROM Wages")).toInt();
    }

    std::unique_ptr<ql::qlConnector> connector;
    QStringList selections;
    ql::TitleMenuBar* bar = nullptr;
};

} // namespace qltest
