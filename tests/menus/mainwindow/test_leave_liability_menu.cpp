// The leave liability from the main window: an entry at the end of the Reports menu whose key opens the
// dialog while the menu is closed.
#include "MainWindowFixture.h"
#include "WireHolidays.h"
#include "holidays/LeaveLiabilityDialog.h"
#include <QGuiApplication>
#include <QScreen>
#include <QTableWidget>
#include <QTimer>

using namespace qltest;

TEST_F(MainWindowTest, TheLeaveLiabilityOpensFromTheReportsMenuAndItsKey) {
    ql::setMainFormFactory([this] {
        auto f = std::make_unique<ql::WageMainForm>();
        bar = ql::wireMenusAndOneOff(*f->widget());
        ql::wireHolidays(*f->widget(), bar);
        return f;
    });
    ASSERT_TRUE(ql::Main(QStringLiteral("Quillary")));
    w = static_cast<ql::WageMainForm*>(ql::mainForm())->widget();
    w->resize(1000, 680);
    w->activateWindow();
    QApplication::setActiveWindow(w);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(w));
    QAction* entry = nullptr;
    for (QAction* a : bar->menu(ql::ReportsButton)->actions())
        if (a->objectName() == QLatin1String("mnuLeaveLiability")) entry = a;
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->text(), QStringLiteral("&Leave Liability..."));
    EXPECT_EQ(entry->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L));
    QString seen;
    int rows = -1;
    QSize size;
    QTimer::singleShot(0, [&] {
        if (auto* d = qobject_cast<ql::LeaveLiabilityDialog*>(QApplication::activeModalWidget())) {
            seen = d->windowTitle();
            rows = d->table()->rowCount();
            size = d->frameGeometry().size();
            d->reject();
        }
    });
    QTest::keyClick(w, Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(seen, QStringLiteral("Leave Liability"));
    EXPECT_GE(rows, 1); // at least the totals row
    // No larger than the screen (800x600 here), so its buttons are on it.
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    EXPECT_LE(size.width(), screen.width());
    EXPECT_LE(size.height(), screen.height());
}
