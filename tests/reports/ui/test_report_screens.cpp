// The two report screens on the desktop: the report screen with its buttons and the maximised
// preview, and the wage history with its totals row and chart. QUILLARY_SCREENSHOT names a folder
// to keep pictures of them in.
#include "ReportsFixture.h"
#include "reports/PrintPaySlip.h"
#include "reports/QuickView.h"
#include "reports/frmQuickView.h"
#include <QGuiApplication>
#include <QScreen>
#include "reports/frm_crystal.h"
#include <QAccessible>
#include <QAccessibleInterface>
#include <QApplication>
#include <QChartView>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QLineSeries>
#include <QPrintPreviewDialog>
#include <QPushButton>
#include <QScrollBar>
#include <QHeaderView>
#include <QTableView>
#include <QPointer>
#include <QTest>
#include <QFont>
#include <QTimer>
#include <memory>

using namespace ql;
using namespace qltest;

namespace {

void keepPicture(QWidget* w, const QString& name) {
    const QString folder = qEnvironmentVariable("QUILLARY_SCREENSHOT");
    if (!folder.isEmpty()) w->grab().save(folder + u'/' + name + QStringLiteral(".png"));
}

class ScreensTest : public ReportsTest {
protected:
    void SetUp() override {
        ReportsTest::SetUp();
        setQuickViewDateOrder(false);
        farmDetails("Kea Flats Station", "1 Pretend Lane", "RD 2", "Demoville 9999", "123-456-789");
        e = employee("Wiremu", "Tāwhiri", "111-222-333");
        selectEmployee(e);
    }
    void TearDown() override {
        setQuickViewDateOrder(false);
        ReportsTest::TearDown();
    }
    qint64 e = 0;
};

} // namespace

TEST_F(ScreensTest, ReportScreenShowsWhatIsAboutToBePrintedAndItsButtons) {
    rows->context.CurrentWageID = qint32(pay(e, QDate(2026, 3, 5), 1000, 150, 20, "W1", "Tom's & Co"));
    slipLine("Gross");
    slipLine("    Ordinary Time (x1)", "40.00", "25.00", "1000.00");
    SlipView view;
    view.control("datPays").caption = "1 of 1";
    ReportScreen screen;
    PreparePaySlip(screen, view, "Weekly up to 5/03/2026", "W1", QDate(2026, 3, 6), true);
    screen.wait = nullptr;
    frm_crystal form(screen);
    form.show();
    EXPECT_EQ(form.windowTitle(), "Reports");
    auto* info = form.findChild<QLabel*>("lbl_ReportInfo");
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->text(),
              "Payslip For Wiremu Tāwhiri\nWeekly up to 5/03/2026\nReference: W1\nPaid on: 6/03/2026");
    auto* toScreen = form.findChild<QPushButton*>("cmdCry(0)");
    auto* toPrinter = form.findChild<QPushButton*>("cmdCry(1)");
    auto* back = form.findChild<QPushButton*>("cmd_goback");
    ASSERT_TRUE(toScreen && toPrinter && back);
    EXPECT_EQ(toScreen->text(), "&Screen");
    EXPECT_EQ(toPrinter->text(), "&Printer");
    EXPECT_FALSE(toScreen->accessibleName().isEmpty());
    EXPECT_FALSE(form.findChild<QCheckBox*>("chkMemo")->isVisible()) << "no caller of this program shows it";
    keepPicture(&form, "frm_crystal");

    // The screen button previews in a maximised window.
    installReportScreens();
    bool maximised = false;
    bool seen = false;
    toScreen->click();
    EXPECT_TRUE(screen.cry_timer.isActive());
    // The preview is modal: look for it from inside its own loop, then close it.
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* preview = qobject_cast<QPrintPreviewDialog*>(w);
                preview && preview->isVisible() && !seen) {
                seen = true;
                maximised = preview->windowState() & Qt::WindowMaximized;
                keepPicture(preview, "preview");
                preview->reject();
            }
    });
    poll.start(50);
    screen.cry_timer_Timer();
    poll.stop();
    EXPECT_TRUE(seen);
    EXPECT_TRUE(maximised);
    EXPECT_EQ(screen.cry_report.runs(), 1);
    back->click();
    EXPECT_FALSE(form.isVisible());
}

TEST_F(ScreensTest, HistoryShowsPaysTotalsAndChart) {
    QDate date(2025, 7, 7);
    for (int i = 0; i < 26; ++i, date = date.addDays(7))
        pay(e, date, 1000 + 10 * (i % 5), 150 + (i % 5), 35, QStringLiteral("W%1").arg(i + 1));
    frmQuickView form("Tāwhiri, Wiremu");
    form.show();
    QApplication::processEvents();
    EXPECT_EQ(form.windowTitle(), "History");
    EXPECT_EQ(form.findChild<QLineEdit*>("txtEmployee")->text(), "Tāwhiri, Wiremu");
    auto* grid = form.findChild<QTableView*>("tgrdQuickV");
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->model()->rowCount(), 26);
    EXPECT_EQ(grid->model()->columnCount(), 10);
    EXPECT_EQ(grid->model()->headerData(8, Qt::Horizontal).toString(), "Take Home");
    EXPECT_EQ(form.findChild<QLineEdit*>("Text1(1)")->text(), "$26,500.00");
    EXPECT_FALSE(form.findChild<QPushButton*>("cmdEntryOrder")->isEnabled());
    EXPECT_TRUE(form.findChild<QPushButton*>("cmdDateOrder")->isEnabled());
    auto* chart = form.findChild<QChartView*>("chtPays");
    ASSERT_NE(chart, nullptr);
    ASSERT_EQ(chart->chart()->series().size(), 3);
    EXPECT_EQ(static_cast<QLineSeries*>(chart->chart()->series().at(0))->count(), 26);
    for (QWidget* w : form.findChildren<QWidget*>())
        if (w->focusPolicy() != Qt::NoFocus && (qobject_cast<QPushButton*>(w) || qobject_cast<QLineEdit*>(w)))
            EXPECT_FALSE(w->accessibleName().isEmpty()) << w->objectName().toStdString();
    keepPicture(&form, "frmQuickView");
    // The totals and the name never keep the focus: they pass it to the grid.
    QApplication::setActiveWindow(&form);
    form.findChild<QLineEdit*>("Text1(3)")->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), grid);
    form.findChild<QPushButton*>("cmdDateOrder")->click();
    EXPECT_TRUE(QuickViewDateOrder());
    EXPECT_FALSE(form.findChild<QPushButton*>("cmdDateOrder")->isEnabled());

    // The print offers the report screen with the history's file.
    form.findChild<QPushButton*>("cmdPrint")->click();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.at(0).reportFile.endsWith("/ql_quickview.rpt"));
    EXPECT_EQ(rows->context.CurrentReportID, 126);
}

// The list keeps its ten columns; the selected pay's state stands in a line beneath it, and a pay not
// yet committed is set apart in the list in a way a screen reader also hears.
TEST_F(ScreensTest, HistoryTellsTheSelectedPaysCommitStateBeneathTheList) {
    pay(e, QDate(2026, 3, 5), 1000, 150, 35, "W1");
    pay(e, QDate(2026, 3, 12), 1010, 151, 35, "W2");
    pay(e, QDate(2026, 3, 19), 1020, 152, 35);
    frmQuickView form("Tāwhiri, Wiremu");
    form.show();
    QApplication::setActiveWindow(&form);
    QApplication::processEvents();
    auto* grid = form.findChild<QTableView*>("tgrdQuickV");
    auto* state = form.findChild<QLabel*>("lblPayState");
    ASSERT_NE(grid, nullptr);
    ASSERT_NE(state, nullptr);
    EXPECT_EQ(grid->model()->columnCount(), 10);
    EXPECT_EQ(grid->currentIndex().row(), 0) << "the first pay is selected at the start";
    EXPECT_EQ(state->text(), "Selected pay: Committed on 6/03/2026, reference W1");
    EXPECT_EQ(state->accessibleName(), state->text());
    // The selection moved by keys: the line follows it.
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(state->text(), "Selected pay: Committed on 13/03/2026, reference W2");
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(state->text(), "Selected pay: Not committed");
    EXPECT_EQ(state->accessibleName(), "Selected pay: Not committed");
    // The pay not yet committed stands in italics, the others do not.
    QAbstractItemModel* model = grid->model();
    EXPECT_TRUE(model->data(model->index(2, 3), Qt::FontRole).value<QFont>().italic());
    EXPECT_FALSE(model->data(model->index(0, 3), Qt::FontRole).value<QFont>().italic());
    // Each cell of the list tells a screen reader its pay's state.
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(grid);
    ASSERT_NE(table, nullptr);
    ASSERT_NE(table->tableInterface(), nullptr);
    QAccessibleInterface* cell = table->tableInterface()->cellAt(2, 2);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->text(QAccessible::Description), "Not committed");
    cell = table->tableInterface()->cellAt(1, 0);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->text(QAccessible::Description), "Committed on 13/03/2026, reference W2");
    // The line stands inside the window, beneath the list, and is not cut.
    const QRect at(state->mapTo(&form, QPoint(0, 0)), state->size());
    EXPECT_TRUE(form.rect().contains(at));
    EXPECT_GE(at.top(), grid->mapTo(&form, QPoint(0, grid->height())).y());
    EXPECT_GE(state->width(), state->fontMetrics().horizontalAdvance(state->text()));
    // A reload keeps the selected pay.
    form.findChild<QPushButton*>("cmdDateOrder")->click();
    EXPECT_EQ(grid->currentIndex().row(), 2);
    EXPECT_EQ(state->text(), "Selected pay: Not committed");
    keepPicture(&form, "frmQuickViewCommitState");
}

// A history of several pages shows its last pay when the grid is scrolled to the end, and the chart
// has every pay.
TEST_F(ScreensTest, HistoryFitsTheScreenWithItsButtonsAndEveryChartPointInside) {
    QDate date(2025, 7, 7);
    for (int i = 0; i < 8; ++i, date = date.addDays(7))
        pay(e, date, 1000 + 10 * i, 150, 35, QStringLiteral("W%1").arg(i + 1));
    frmQuickView form("Tāwhiri, Wiremu");
    form.show();
    QApplication::processEvents();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_LE(form.width(), screen.width());
    EXPECT_LE(form.height(), screen.height());
    for (const char* b : {"cmdOK", "cmdPrint", "cmdDateOrder", "cmdEntryOrder"}) {
        auto* button = form.findChild<QPushButton*>(QString::fromLatin1(b));
        ASSERT_NE(button, nullptr) << b;
        const QRect at(button->mapTo(&form, QPoint(0, 0)), button->size());
        EXPECT_TRUE(form.rect().contains(at)) << b;
    }
    auto* chart = form.findChild<QChartView*>("chtPays");
    ASSERT_NE(chart, nullptr);
    EXPECT_GT(chart->height(), 100);
    const auto* series = static_cast<QLineSeries*>(chart->chart()->series().at(0));
    const QRectF plot = chart->chart()->plotArea();
    for (const QPointF& p : series->points()) {
        const QPointF on = chart->chart()->mapToPosition(p, chart->chart()->series().at(0));
        // Inside with room for the point's marker.
        EXPECT_GT(on.x(), plot.left() + 2);
        EXPECT_LT(on.x(), plot.right() - 2);
        EXPECT_GT(on.y(), plot.top() + 2);
        EXPECT_LT(on.y(), plot.bottom() - 2);
    }
    keepPicture(&form, "frmQuickViewSmallScreen");
}

TEST_F(ScreensTest, ALongHistoryShowsItsLastPageAndTheWholeChart) {
    QDate date(2023, 7, 3);
    const int pays = 3 * QuickViewRows::PageSize + 5;
    for (int i = 0; i < pays; ++i, date = date.addDays(7))
        pay(e, date, 1000 + 10 * (i % 7), 150 + (i % 7), 35, QStringLiteral("W%1").arg(i + 1));
    frmQuickView form("Tāwhiri, Wiremu");
    form.show();
    QApplication::processEvents();
    form.findChild<QPushButton*>("cmdDateOrder")->click();
    auto* grid = form.findChild<QTableView*>("tgrdQuickV");
    ASSERT_EQ(grid->model()->rowCount(), pays);
    grid->scrollToBottom();
    QApplication::processEvents();
    const QModelIndex last = grid->model()->index(pays - 1, 0);
    EXPECT_EQ(grid->model()->data(last).toString(), QDate(2023, 7, 3).addDays(7 * (pays - 1)).toString("d/MM/yyyy"));
    EXPECT_TRUE(grid->viewport()->rect().intersects(grid->visualRect(last)));
    auto* chart = form.findChild<QChartView*>("chtPays");
    EXPECT_EQ(static_cast<QLineSeries*>(chart->chart()->series().at(0))->count(), pays);
    EXPECT_EQ(form.findChild<QLineEdit*>("Text1(6)")->text(), "$6,895.00") << "35 of deductions on every pay";
    keepPicture(&form, "frmQuickViewLong");
}

// Pays changed while the history stands beside the wage screen are shown, with their totals, when
// the history comes to the front again or paints rows read after the change; the grid keeps its place.
TEST_F(ScreensTest, TheHistoryFollowsPaysChangedBesideIt) {
    QDate date(2024, 7, 1);
    for (int i = 0; i < 100; ++i, date = date.addDays(7))
        pay(e, date, 1000, 150, 35);
    frmQuickView form("Tāwhiri, Wiremu");
    form.show();
    QApplication::setActiveWindow(&form);
    QApplication::processEvents();
    auto* total = form.findChild<QLineEdit*>("Text1(1)");
    EXPECT_EQ(total->text(), "$100,000.00");
    auto* grid = form.findChild<QTableView*>("tgrdQuickV");
    grid->scrollToBottom();
    QApplication::processEvents();
    const int bottom = grid->verticalScrollBar()->value();
    EXPECT_GT(bottom, 0);

    QWidget other;
    other.show();
    QApplication::setActiveWindow(&other);
    QApplication::processEvents();
    rows->context.WageDatabase.execute(QStringLiteral("UPDATE Wages SET Gross = 1001 WHERE EmployeeID = %1").arg(e));
    QApplication::setActiveWindow(&form);
    QApplication::processEvents();
    EXPECT_EQ(total->text(), "$100,100.00");
    EXPECT_EQ(grid->verticalScrollBar()->value(), bottom);

    // Rows painted after another change, without the screen coming to the front.
    QApplication::setActiveWindow(&other);
    QApplication::processEvents();
    pay(e, date, 500, 50, 5);
    grid->scrollToTop();
    grid->viewport()->repaint();
    QApplication::processEvents();
    EXPECT_EQ(grid->model()->rowCount(), 101);
    EXPECT_EQ(total->text(), "$100,600.00");
}

// Closing the history window destroys its grid and totals together: the header's and scroll bar's
// signals, which lay out the totals, must not reach totals already gone (a use after free that the
// sanitizer build catches). The window goes by its OK button, and also while still shown, as when
// the window that owns it closes.
TEST_F(ScreensTest, ClosingTheHistoryWindowLeavesNothingBehind) {
    QDate date(2025, 7, 7);
    for (int i = 0; i < 40; ++i, date = date.addDays(7))
        pay(e, date, 1000 + i, 150, 35);
    for (int round = 0; round < 4; ++round) {
        auto owner = std::make_unique<QWidget>();
        owner->show();
        auto* form = new frmQuickView("Tāwhiri, Wiremu", owner.get());
        form->setAttribute(Qt::WA_DeleteOnClose);
        form->show();
        QApplication::processEvents();
        auto* grid = form->findChild<QTableView*>("tgrdQuickV");
        ASSERT_NE(grid, nullptr);
        // A scrolled grid with resized columns, as a user leaves it.
        grid->horizontalHeader()->resizeSection(2, 140);
        grid->horizontalScrollBar()->setValue(grid->horizontalScrollBar()->maximum());
        QApplication::processEvents();
        if (round % 2 == 0) {
            form->findChild<QPushButton*>("cmdOK")->click();
            QApplication::processEvents();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_TRUE(owner->findChildren<frmQuickView*>().isEmpty()) << round;
        } else {
            QPointer<frmQuickView> watch(form);
            owner.reset(); // the owner closes with the history still shown
            EXPECT_TRUE(watch.isNull()) << round;
        }
    }
}
