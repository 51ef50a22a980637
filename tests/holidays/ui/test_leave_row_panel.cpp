// The leave tab's holiday pay panel follows the ledger row the user stands on: its kind, first day and
// days, and the working of that leave.
#include "LeaveFixture.h"
#include "frame/Settings.h"
#include "holidays/HolidayPayWidget.h"
#include "leave/LeaveGridWidget.h"
#include "leave/LeaveTabWidget.h"
#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QTabBar>

using namespace qltest;

namespace {

class LeaveRowPanelTest : public LeaveTest {
protected:
    void SetUp() override {
        setToday(QDate(2025, 6, 15));
        const qint64 hale = hire(QStringLiteral("2022-03-01"));
        leave(hale, 1, 4, 20, QStringLiteral("2025-03-01"), QStringLiteral("2025-03-01"), QStringLiteral("allocation"));
        leave(hale, 1, 2, 5, QStringLiteral("2025-04-14"), QStringLiteral("2025-04-18"), QStringLiteral("Easter"));
        leave(hale, 2, 2, 2, QStringLiteral("2025-05-12"), QStringLiteral("2025-05-13"), QStringLiteral("Flu"));
        open(hale);
        ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), QStringLiteral("N"));
        tab = std::make_unique<ql::LeaveTabWidget>();
        tab->resize(820, 520);
        tab->show();
        tab->entering();
    }
    void TearDown() override {
        tab.reset();
        LeaveTest::TearDown();
    }
    template <class T> T* panelChild(const char* accessibleName) {
        for (T* w : tab->holidayPay()->findChildren<T*>())
            if (w->accessibleName() == QLatin1String(accessibleName)) return w;
        ADD_FAILURE() << accessibleName;
        return nullptr;
    }
    void standOn(int row) {
        ql::LeaveGridWidget* g = tab->grid();
        g->setCurrentIndex(g->model()->index(row, ql::leave::Comments));
    }
    std::unique_ptr<ql::LeaveTabWidget> tab;
};

} // namespace

TEST_F(LeaveRowPanelTest, TheSelectedRowFillsThePanel) {
    auto* kind = panelChild<QComboBox>("Leave to pay");
    auto* from = panelChild<QDateEdit>("First day");
    auto* days = panelChild<QDoubleSpinBox>("Days");
    ASSERT_TRUE(kind && from && days);
    standOn(1); // Easter: five days of annual leave
    EXPECT_EQ(kind->currentText(), QStringLiteral("Annual holidays"));
    EXPECT_EQ(from->date(), QDate(2025, 4, 14));
    EXPECT_DOUBLE_EQ(days->value(), 5.0);
    // Worked out at once for that leave.
    EXPECT_TRUE(tab->holidayPay()->workingText().contains(QStringLiteral("Rate used:")))
        << tab->holidayPay()->workingText().toStdString();

    tab->findChild<QTabBar*>(QStringLiteral("tabLeave"))->setCurrentIndex(1); // Sick Leave
    standOn(0);
    EXPECT_EQ(kind->currentText(), QStringLiteral("Sick leave"));
    EXPECT_EQ(from->date(), QDate(2025, 5, 12));
    EXPECT_DOUBLE_EQ(days->value(), 2.0);

    // The add-new row below the rows leaves the panel as it was.
    standOn(tab->grid()->model()->rowCount() - 1);
    EXPECT_EQ(from->date(), QDate(2025, 5, 12));
}
