// Closing the program straight after a keyboard edit: the edit is saved with the pay's totals while
// the payroll file is still open, and no error about a closed database comes up.
#include "WageUi.h"

using namespace qltest;

namespace {

TEST_F(WageUiTest, ClosingRightAfterAKeyboardEditKeepsTheEditAndItsTotals) {
    start();
    child<QComboBox>(QStringLiteral("cboEmployee"))->setFocus();
    key(Qt::Key_A, Qt::AltModifier); // Add Pay
    ASSERT_EQ(pays(), 2);
    const qint32 wageID = ql::App().CurrentWageID;
    key(Qt::Key_1, Qt::AltModifier); // the payment lines
    ASSERT_TRUE(grid()->hasFocus());
    grid()->setCurrentIndex(grid()->model()->index(0, 1));
    key(Qt::Key_Right); // to the units
    ASSERT_EQ(grid()->currentIndex().column(), 2);
    type(QStringLiteral("42"));
    key(Qt::Key_Return);
    // Straight away, without leaving the grid: Close.
    key(Qt::Key_L, Qt::AltModifier);
    settle();
    EXPECT_EQ(ql::mainForm(), nullptr);
    for (const ql::DialogCall& c : rows->dialogs.calls) {
        EXPECT_FALSE(c.message.contains(QStringLiteral("closed"))) << c.message.toStdString();
        EXPECT_NE(c.kind, ql::DialogCall::Error) << c.heading.toStdString() << ": " << c.message.toStdString();
    }
    // The line and the pay's figures agree: 42 hours at 25.50.
    EXPECT_DOUBLE_EQ(
        rows->wage.scalar(QStringLiteral("SELECT DetailHours FROM PaymentDetails WHERE WageID = %1 ORDER BY rowid LIMIT 1")
                              .arg(wageID))
            .toDouble(),
        42.0);
    EXPECT_DOUBLE_EQ(rows->wage.scalar(QStringLiteral("SELECT Gross FROM Wages WHERE WageID = %1").arg(wageID)).toDouble(),
                     1071.0);
    const double hours =
        rows->wage.scalar(QStringLiteral("SELECT sum(DetailHours) FROM PaymentDetails WHERE WageID = %1").arg(wageID))
            .toDouble();
    EXPECT_DOUBLE_EQ(rows->wage.scalar(QStringLiteral("SELECT Hours FROM Wages WHERE WageID = %1").arg(wageID)).toDouble(),
                     hours);
    const QVariantList f = rows->wage.firstRow(
        QStringLiteral("SELECT TotalTaxable, PAYE, NonTaxAllow, Deductions, TakeHome FROM Wages WHERE WageID = %1").arg(wageID));
    ASSERT_EQ(f.size(), 5);
    EXPECT_NEAR(f.at(4).toDouble(), f.at(0).toDouble() - f.at(1).toDouble() + f.at(2).toDouble() - f.at(3).toDouble(),
                0.005);
}

} // namespace
