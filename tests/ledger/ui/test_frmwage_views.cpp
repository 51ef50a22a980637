// The summary labels, the views they open and the detail grid's events, as the desktop screen shows them.
#include "WageUi.h"
#include "payengine/AppContext.h"
#include <QHeaderView>

using namespace qltest;

namespace {
QStringList headings(ql::WageGridWidget* g) {
    QStringList shown;
    for (int c = 0; c < g->model()->columnCount(); ++c)
        if (!g->isColumnHidden(c)) shown << g->model()->headerData(c, Qt::Horizontal).toString();
    return shown;
}
} // namespace

TEST_F(WageUiTest, AClickOnALabelOpensItsViewAndTheOldLabelStaysReadable) {
    start();
    QLabel* gross = child<QLabel>(QStringLiteral("lblGross"));
    QTest::mouseClick(gross, Qt::LeftButton);
    EXPECT_EQ(ql::App().CurrentTab, 1);
    EXPECT_EQ(shownView(), grid());
    EXPECT_TRUE(button(QStringLiteral("cmdSelect(1)"))->isChecked());
    EXPECT_FALSE(button(QStringLiteral("cmdSelect(6)"))->isChecked());
    EXPECT_TRUE(gross->styleSheet().contains(QStringLiteral("background: #008080")));
    EXPECT_TRUE(gross->styleSheet().contains(QStringLiteral("color: #ffffff")));
    // The take-home label was selected after the first pay; now it is back on the form's background
    // in black, not in the selection's white.
    const QString old = child<QLabel>(QStringLiteral("lblTakehome"))->styleSheet();
    EXPECT_TRUE(old.contains(QStringLiteral("color: #000000"))) << old.toStdString();
    EXPECT_FALSE(old.contains(QStringLiteral("background")));
}

TEST_F(WageUiTest, ACaptionClickOpensTheSameView) {
    start();
    QTest::mouseClick(child<QLabel>(QStringLiteral("lblpayment(6)")), Qt::LeftButton);
    EXPECT_EQ(ql::App().CurrentTab, 5);
    EXPECT_EQ(headings(grid()), (QStringList{QStringLiteral("Deductions"), QStringLiteral("Calculated On"),
                                             QStringLiteral("Percentage"), QStringLiteral("Amount")}));
}

TEST_F(WageUiTest, EachViewShowsItsGridWithItsCaptions) {
    start();
    struct View {
        int button;
        QStringList captions;
    };
    const QString unit = QStringLiteral("Units (") +
                         ql::App().EmployeeArray.value(ql::App().CurrentEmployee).UnitOfPay +
                         QLatin1Char(')');
    const QList<View> views{
        {1, {QStringLiteral("Payment"), unit, QStringLiteral("Rate"), QStringLiteral("Amount")}},
        {2,
         {QStringLiteral("Allowance"), QStringLiteral("Calculated On"), QStringLiteral("Rate"),
          QStringLiteral("Amount")}},
        {4,
         {QStringLiteral("Allowance"), QStringLiteral("Calculated On"), QStringLiteral("Rate"),
          QStringLiteral("Amount")}},
        {5,
         {QStringLiteral("Deductions"), QStringLiteral("Calculated On"), QStringLiteral("Percentage"),
          QStringLiteral("Amount")}},
        {7,
         {QStringLiteral("Contributions"), QStringLiteral("Calculated On"), QStringLiteral("Percentage"),
          QStringLiteral("ESCT"), QStringLiteral("Amount")}}};
    for (const View& v : views) {
        QTest::mouseClick(button(QStringLiteral("cmdSelect(%1)").arg(v.button)), Qt::LeftButton);
        EXPECT_EQ(ql::App().CurrentTab, v.button);
        EXPECT_EQ(shownView(), grid());
        EXPECT_EQ(headings(grid()), v.captions) << v.button;
    }
    QTest::mouseClick(button(QStringLiteral("cmdSelect(6)")), Qt::LeftButton);
    EXPECT_EQ(ql::App().CurrentTab, 6);
    EXPECT_EQ(shownView(), grid());
    EXPECT_GE(grid()->model()->rowCount(), 1); // the payslip lines
    QTest::mouseClick(button(QStringLiteral("cmdSelect(0)")), Qt::LeftButton);
    EXPECT_EQ(ql::App().CurrentTab, 0);
    EXPECT_EQ(shownView(), child<QWidget>(QStringLiteral("CalWage")));
}

TEST_F(WageUiTest, ThePayeViewShowsThePanelAndTakesTheFocus) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton); // a second pay has its tax line
    QTest::mouseClick(child<QLabel>(QStringLiteral("lblPaye")), Qt::LeftButton);
    EXPECT_EQ(ql::App().CurrentTab, 3);
    EXPECT_EQ(shownView(), child<QWidget>(QStringLiteral("vsePAYE")));
    QLineEdit* paye = child<QLineEdit>(QStringLiteral("txtPAYE"));
    EXPECT_TRUE(paye->hasFocus());
    EXPECT_FALSE(paye->isReadOnly());
    EXPECT_EQ(text(QStringLiteral("lblpayrollCalc")), QStringLiteral("Total Taxable"));
    EXPECT_EQ(text(QStringLiteral("lblTaxCode")), QStringLiteral("Tax Code"));
    EXPECT_EQ(text(QStringLiteral("txtTaxCode")), QStringLiteral("M"));
}

TEST_F(WageUiTest, ChangingPayeAsksAndThenOpensTheNonTaxableView) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdAddPay")), Qt::LeftButton);
    QTest::mouseClick(button(QStringLiteral("cmdSelect(3)")), Qt::LeftButton);
    QLineEdit* paye = child<QLineEdit>(QStringLiteral("txtPAYE"));
    ASSERT_TRUE(paye->hasFocus());
    paye->selectAll();
    QTest::keyClicks(paye, QStringLiteral("123.45"));
    rows->dialogs.queueAnswer(ql::msg::Yes);
    QTest::keyClick(paye, Qt::Key_Return);
    const ql::DialogCall* q = last(QStringLiteral("Please Confirm"));
    ASSERT_NE(q, nullptr);
    EXPECT_EQ(q->message, QStringLiteral("Are you sure you want to overwrite the calculated PAYE?"));
    EXPECT_EQ(text(QStringLiteral("lblPaye")), QStringLiteral("$123.45"));
    EXPECT_EQ(ql::App().CurrentTab, 4);
    EXPECT_DOUBLE_EQ(
        rows->wage
            .scalar(
                QStringLiteral("SELECT PAYE FROM TaxDetails WHERE WageID = %1").arg(ql::App().CurrentWageID))
            .toDouble(),
        123.45);
}

TEST_F(WageUiTest, TextInAGridCellIsRefusedWithTheInvalidEntryMessage) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    ASSERT_GE(grid()->model()->rowCount(), 1);
    const QModelIndex units = grid()->model()->index(0, 2);
    const QString before = units.data().toString();
    grid()->setCurrentIndex(units);
    grid()->edit(units);
    auto* editor = qobject_cast<QLineEdit*>(grid()->indexWidget(units));
    ASSERT_NE(editor, nullptr);
    editor->setText(QStringLiteral("abc"));
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    const ql::DialogCall* m = last(QStringLiteral("Invalid Entry"));
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->kindOrLevel, 3);
    EXPECT_EQ(m->message,
              QStringLiteral("Invalid entry in column 3\r\n\r\nThe previous value has been restored"));
    EXPECT_EQ(grid()->model()->index(0, 2).data().toString(), before);
}

TEST_F(WageUiTest, AStoredCellRecalculatesTheLineAndTheLabels) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    const QModelIndex units = grid()->model()->index(0, 2);
    grid()->setCurrentIndex(units);
    grid()->edit(units);
    auto* editor = qobject_cast<QLineEdit*>(grid()->indexWidget(units));
    ASSERT_NE(editor, nullptr);
    editor->setText(QStringLiteral("10"));
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    // 10 units at the employee's rate of 25.50.
    EXPECT_EQ(grid()->model()->index(0, 4).data().toString(), QStringLiteral("$255.00"));
    EXPECT_EQ(text(QStringLiteral("lblGross")), QStringLiteral("$255.00"));
    // Leaving the grid stores the lines.
    QTest::mouseClick(button(QStringLiteral("cmdSelect(6)")), Qt::LeftButton);
    EXPECT_DOUBLE_EQ(rows->wage.scalar(QStringLiteral("SELECT Gross FROM Wages")).toDouble(), 255.0);
    EXPECT_DOUBLE_EQ(rows->wage.scalar(QStringLiteral("SELECT SUM(Payment) FROM PaymentDetails")).toDouble(),
                     255.0);
}

TEST_F(WageUiTest, TheNameColumnIsADropDownOfNames) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    const QModelIndex name = grid()->model()->index(0, 1);
    grid()->setCurrentIndex(name);
    grid()->edit(name);
    auto* names = qobject_cast<QComboBox*>(grid()->indexWidget(name));
    ASSERT_NE(names, nullptr);
    EXPECT_GE(names->count(), 2);
    EXPECT_EQ(names->currentText(), name.data().toString());
}

TEST_F(WageUiTest, ACommittedPayIsLocked) {
    start();
    commitShownPay(QStringLiteral("R7"));
    EXPECT_EQ(text(QStringLiteral("lblpayment(8)")), QStringLiteral("Committed, reference: R7"));
    EXPECT_EQ(button(QStringLiteral("cmdPrintPay"))->text(), QStringLiteral("&Pay Slip"));
    QTest::mouseClick(button(QStringLiteral("cmdSelect(3)")), Qt::LeftButton);
    QLineEdit* paye = child<QLineEdit>(QStringLiteral("txtPAYE"));
    EXPECT_TRUE(paye->isReadOnly());
    EXPECT_TRUE(paye->styleSheet().contains(QStringLiteral("background: #ffffe0")));
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    const QModelIndex units = grid()->model()->index(0, 2);
    const QString before = units.data().toString();
    grid()->setCurrentIndex(units);
    grid()->edit(units);
    EXPECT_EQ(grid()->indexWidget(units), nullptr); // no editor opens
    const ql::DialogCall* m = last(QStringLiteral("Already Committed"));
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->kindOrLevel, 6);
    EXPECT_EQ(m->message, QStringLiteral("This pay has already been committed (recorded as paid).\r\n\r\n"
                                         "You therefore cannot alter any details relating to this pay."));
    EXPECT_EQ(grid()->model()->index(0, 2).data().toString(), before);
}

TEST_F(WageUiTest, AnUncommittedPayHasAnOpenPayeBoxInTheWindowColour) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdSelect(3)")), Qt::LeftButton);
    QLineEdit* paye = child<QLineEdit>(QStringLiteral("txtPAYE"));
    EXPECT_FALSE(paye->isReadOnly());
    EXPECT_FALSE(paye->styleSheet().contains(QStringLiteral("#ffffe0")));
    EXPECT_EQ(text(QStringLiteral("lblpayment(8)")), QStringLiteral("Uncommitted"));
    EXPECT_EQ(button(QStringLiteral("cmdPrintPay"))->text(), QStringLiteral("&Commit"));
}

TEST_F(WageUiTest, TabInTheGridGoesThroughTheViewsInOrder) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    ASSERT_TRUE(grid()->hasFocus());
    key(Qt::Key_Tab);
    EXPECT_EQ(ql::App().CurrentTab, 2);
    key(Qt::Key_Tab);
    EXPECT_EQ(ql::App().CurrentTab, 3);
    EXPECT_TRUE(child<QLineEdit>(QStringLiteral("txtPAYE"))->hasFocus());
    QTest::mouseClick(button(QStringLiteral("cmdSelect(4)")), Qt::LeftButton);
    const int expected[] = {5, 6, 7, 7};
    for (int tab : expected) {
        grid()->setFocus();
        key(Qt::Key_Tab);
        EXPECT_EQ(ql::App().CurrentTab, tab);
    }
}

TEST_F(WageUiTest, ShiftTabLeavesTheGrid) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    ASSERT_TRUE(grid()->hasFocus());
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_FALSE(grid()->hasFocus());
    EXPECT_EQ(ql::App().CurrentTab, 1);
}

TEST_F(WageUiTest, InsertAddsALineByItsNameAndCtrlDeleteRemovesIt) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    const int before = grid()->model()->rowCount();
    const auto lines = [&] {
        return rows->wage
            .scalar(QStringLiteral("SELECT COUNT(*) FROM PaymentDetails WHERE WageID = %1")
                        .arg(ql::App().CurrentWageID))
            .toInt();
    };
    ASSERT_EQ(lines(), before);
    key(Qt::Key_Insert);
    ASSERT_EQ(grid()->model()->rowCount(), before + 1);
    const QModelIndex name = grid()->model()->index(before, 1);
    auto* names = qobject_cast<QComboBox*>(grid()->indexWidget(name));
    ASSERT_NE(names, nullptr);
    // A name the pay has no line of yet.
    QStringList used;
    for (int r = 0; r < before; ++r)
        used << grid()->model()->index(r, 1).data(Qt::EditRole).toString();
    int pick = -1;
    for (int i = 0; i < names->count() && pick < 0; ++i)
        if (!names->itemData(i).toString().isEmpty() && !used.contains(names->itemData(i).toString()))
            pick = i;
    ASSERT_GE(pick, 0);
    names->setCurrentIndex(pick);
    QTest::keyClick(names, Qt::Key_Return);
    settle();
    EXPECT_EQ(grid()->model()->index(before, 1).data().toString(), names->itemText(pick));
    QTest::mouseClick(button(QStringLiteral("cmdSelect(6)")), Qt::LeftButton); // stores the lines
    EXPECT_EQ(lines(), before + 1);

    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    grid()->setCurrentIndex(grid()->model()->index(before, 2));
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(grid()->model()->rowCount(), before);
    EXPECT_EQ(lines(), before);
}

TEST_F(WageUiTest, ANewLineLeftWithoutANameIsNotStored) {
    start();
    QTest::mouseClick(button(QStringLiteral("cmdSelect(2)")), Qt::LeftButton);
    const int before = grid()->model()->rowCount();
    key(Qt::Key_Insert);
    EXPECT_EQ(grid()->model()->rowCount(), before + 1);
    QTest::mouseClick(button(QStringLiteral("cmdSelect(6)")), Qt::LeftButton);
    EXPECT_EQ(rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM TaxAllowDetails")).toInt(), before);
}

TEST_F(WageUiTest, ACommittedPayGetsNoNewLineAndKeepsItsLines) {
    start();
    commitShownPay(QStringLiteral("R5"));
    QTest::mouseClick(button(QStringLiteral("cmdSelect(1)")), Qt::LeftButton);
    const int before = grid()->model()->rowCount();
    grid()->setFocus();
    key(Qt::Key_Insert);
    EXPECT_EQ(grid()->model()->rowCount(), before);
    grid()->setCurrentIndex(grid()->model()->index(0, 2));
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(grid()->model()->rowCount(), before);
    EXPECT_EQ(messages(QStringLiteral("Already Committed")), 2);
}
