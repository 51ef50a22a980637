// The leave ledger inside the wage screen: the tab loads the employee's leave, leaving it, a new
// employee, a title button and closing the window save it, the option is kept for the shutdown, and
// the grid wears the skin. With QUILLARY_SHOTS set, a picture of the leave tab is kept there.
#include "WageUi.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "leave/LeaveGridWidget.h"
#include "leave/LeaveTabWidget.h"
#include "payengine/AppContext.h"
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>

using namespace qltest;

namespace {
class WageLeaveTest : public WageUiTest {
protected:
    void SetUp() override {
        WageUiTest::SetUp();
        addLeave(hale, 4, 20, QStringLiteral("2025-04-01"), QStringLiteral("Allocation"));
        addLeave(hale, 2, 3, QStringLiteral("2025-06-02"), QStringLiteral("Holiday"));
    }
    void addLeave(qint64 employee, int kind, double days, const QString& from, const QString& comments) {
        rows->wage.execute(
            QStringLiteral("INSERT INTO LeaveDetails (EmployeeID, LeaveTypeID, TransTypeID, NumberofDays, "
                           "DateFrom, DateTo, Comments) VALUES (?, 1, ?, ?, ?, ?, ?)"),
            {employee, kind, days, from, from, comments});
    }
    ql::LeaveTabWidget* leaveTab() const { return qobject_cast<ql::LeaveTabWidget*>(w->leaveWidget()); }
    ql::LeaveGridWidget* leaveGrid() const { return leaveTab()->grid(); }
    QString total(const char* name) const {
        return leaveTab()->findChild<QLineEdit*>(QString::fromLatin1(name))->text();
    }
    int stored(const QString& where) const {
        return rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM LeaveDetails WHERE ") + where).toInt();
    }
    // Types a comment into a row of the leave grid and leaves the editor open.
    void typeComment(int row, const QString& text) {
        const QModelIndex cell = leaveGrid()->model()->index(row, 7);
        leaveGrid()->setCurrentIndex(cell);
        leaveGrid()->edit(cell);
        auto* editor = qobject_cast<QLineEdit*>(leaveGrid()->indexWidget(cell));
        ASSERT_NE(editor, nullptr);
        editor->setText(text);
    }
};
} // namespace

TEST_F(WageLeaveTest, TheLeaveTabShowsTheEmployeesLeaveAndHidesThePaySide) {
    start();
    ASSERT_NE(leaveTab(), nullptr);
    EXPECT_FALSE(child<QLabel>(QStringLiteral("vseWage(1)"))); // no placeholder
    key(Qt::Key_V, Qt::AltModifier);
    ASSERT_EQ(w->tabMain()->currentIndex(), 1);
    EXPECT_EQ(screen().leave.LeaveLoadedEmployeeID, hale);
    EXPECT_EQ(leaveGrid()->model()->rowCount(), 3); // two rows and the add-new row
    EXPECT_EQ(leaveGrid()->model()->index(1, 7).data().toString(), QStringLiteral("Holiday"));
    EXPECT_EQ(total("txtLeaveAdded"), QStringLiteral("20.0"));
    EXPECT_EQ(total("txtLeaveTaken"), QStringLiteral("3.0"));
    EXPECT_EQ(QApplication::focusWidget(), leaveGrid());
    for (const char* hidden : {"cmdAddPay", "cmdDelete", "cmdMemo", "cmdQuick"})
        EXPECT_FALSE(button(QString::fromLatin1(hidden))->isVisible()) << hidden;
    EXPECT_TRUE(button(QStringLiteral("cmdClose"))->isVisible());
    key(Qt::Key_W, Qt::AltModifier);
    for (const char* shown : {"cmdAddPay", "cmdDelete", "cmdMemo", "cmdQuick"})
        EXPECT_TRUE(button(QString::fromLatin1(shown))->isVisible()) << shown;
}

TEST_F(WageLeaveTest, LeavingTheTabSavesTheOpenCellAndStoresTheOption) {
    start();
    key(Qt::Key_V, Qt::AltModifier);
    key(Qt::Key_U, Qt::AltModifier); // "Current Year"
    EXPECT_TRUE(leaveTab()->findChild<QRadioButton*>(QStringLiteral("optWhichYears(0)"))->isChecked());
    EXPECT_TRUE(screen().control(QStringLiteral("optWhichYears(0)")).down);
    key(Qt::Key_Y, Qt::AltModifier); // "All Years" again: both rows
    EXPECT_TRUE(screen().control(QStringLiteral("optWhichYears(1)")).down);
    ASSERT_EQ(leaveGrid()->model()->rowCount(), 3);
    typeComment(0, QStringLiteral("Allocation 2025"));
    key(Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(w->tabMain()->currentIndex(), 0);
    EXPECT_EQ(stored(QStringLiteral("Comments = 'Allocation 2025'")), 1);
    EXPECT_EQ(stored(QStringLiteral("1 = 1")), 2);
    EXPECT_EQ(ql::ReadIni(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), ql::FamilyFile()),
              QStringLiteral("Y"));
}

TEST_F(WageLeaveTest, AnotherEmployeeOnTheLeaveTabSavesTheFirstAndShowsTheOther) {
    const qint64 ngata = rows->employee(rows->address(QStringLiteral("Ngata"), QStringLiteral("Rua")));
    addLeave(ngata, 4, 15, QStringLiteral("2025-05-01"), QStringLiteral("Rua's allocation"));
    start();
    key(Qt::Key_V, Qt::AltModifier);
    typeComment(1, QStringLiteral("Holiday in Nelson"));
    QComboBox* cbo = child<QComboBox>(QStringLiteral("cboEmployee"));
    cbo->setFocus();
    QTest::keyClick(cbo, Qt::Key_Down);
    ASSERT_EQ(ql::App().CurrentEmployeeID, ngata);
    EXPECT_EQ(stored(QStringLiteral("Comments = 'Holiday in Nelson'")), 1);
    EXPECT_EQ(screen().leave.LeaveLoadedEmployeeID, ngata);
    ASSERT_EQ(leaveGrid()->model()->rowCount(), 2);
    EXPECT_EQ(leaveGrid()->model()->index(0, 7).data().toString(), QStringLiteral("Rua's allocation"));
    EXPECT_EQ(total("txtLeaveAdded"), QStringLiteral("15.0"));
    EXPECT_EQ(stored(QStringLiteral("1 = 1")), 3);
}

TEST_F(WageLeaveTest, ATitleButtonSavesTheLeaveBeforeItsMenu) {
    start();
    key(Qt::Key_V, Qt::AltModifier);
    ASSERT_TRUE(screen().leave.storeCell(0, 7, QStringLiteral("Checked by the office")));
    EXPECT_EQ(stored(QStringLiteral("Comments = 'Checked by the office'")), 0);
    key(Qt::Key_T, Qt::ControlModifier); // Tools
    EXPECT_EQ(stored(QStringLiteral("Comments = 'Checked by the office'")), 1);
}

TEST_F(WageLeaveTest, ClosingOnTheLeaveTabStoresTheOptionChosenThere) {
    start();
    key(Qt::Key_V, Qt::AltModifier);
    key(Qt::Key_U, Qt::AltModifier); // "Current Year": the shutdown writes it back as "N"
    QTest::mouseClick(button(QStringLiteral("cmdClose")), Qt::LeftButton);
    EXPECT_EQ(ql::mainForm(), nullptr);
    EXPECT_EQ(ql::ReadIni(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), ql::FamilyFile()),
              QStringLiteral("N"));
    EXPECT_EQ(stored(QStringLiteral("1 = 1")), 2); // the rows of other years stay
}

TEST_F(WageLeaveTest, ClosingOnTheLeaveTabWithAllYearsSavesTheOpenCell) {
    ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), QStringLiteral("Y"));
    start();
    key(Qt::Key_V, Qt::AltModifier);
    typeComment(1, QStringLiteral("Closed with the window"));
    w->close();
    EXPECT_EQ(ql::mainForm(), nullptr);
    EXPECT_EQ(stored(QStringLiteral("Comments = 'Closed with the window'")), 1);
    EXPECT_EQ(ql::ReadIni(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), ql::FamilyFile()),
              QStringLiteral("Y"));
}

TEST_F(WageLeaveTest, TheOptionLeftInTheSettingsIsWrittenBackWhenTheTabWasNeverShown) {
    ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), QStringLiteral("N"));
    start();
    EXPECT_TRUE(screen().control(QStringLiteral("optWhichYears(0)")).down);
    QTest::mouseClick(button(QStringLiteral("cmdClose")), Qt::LeftButton);
    EXPECT_EQ(ql::ReadIni(QStringLiteral("WAGE"), QStringLiteral("AllLeave"), ql::FamilyFile()),
              QStringLiteral("N"));
    EXPECT_EQ(stored(QStringLiteral("1 = 1")), 2);
}

TEST_F(WageLeaveTest, TheLeaveGridWearsTheSkinOfTheWageGrid) {
    docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"),
                    "[WINDOWS]\r\nCountry=64\r\n[COLOURS]\r\nGridHeader=51,102,1\r\n"
                    "GridSelectedRow=255,226,128\r\nGridEvenRow=255,255,255\r\nGridOddRow=234,242,222\r\n");
    start(QSize(1280, 800));
    EXPECT_FALSE(leaveGrid()->styleSheet().isEmpty());
    EXPECT_EQ(leaveGrid()->styleSheet(), grid()->styleSheet());
    EXPECT_TRUE(leaveGrid()->alternatingRowColors());
    // The kinds' tabs keep plain colours under the paper picture (a picture brush reads as black).
    auto* kinds = leaveTab()->findChild<QTabBar*>(QStringLiteral("tabLeave"));
    EXPECT_EQ(kinds->palette().window().style(), Qt::SolidPattern);
    EXPECT_NE(kinds->palette().color(QPalette::Button), QColor(Qt::black));
    key(Qt::Key_V, Qt::AltModifier);
    QApplication::processEvents();
    const QPixmap shot = w->grab();
    EXPECT_FALSE(shot.isNull());
    if (const QString folder = qEnvironmentVariable("QUILLARY_SHOTS"); !folder.isEmpty())
        shot.save(folder + QStringLiteral("/leave-tab-1280.png"));
}
