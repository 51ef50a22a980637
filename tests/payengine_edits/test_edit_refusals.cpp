// The two faults a user met: negative units on the farm hand's ordinary time, and "(5)" as the amount
// of a new payment line of the manager. Both are refused now, the old value stays, and the stored pay
// agrees with its lines.
#include "../payengine_road/RoadFixture.h"
#include "EditInvariants.h"

namespace qltest {
namespace {

class EditRefusal : public RoadTest {
protected:
    const ql::DialogCall* lastMessage() const {
        for (auto it = dialogs.calls.crbegin(); it != dialogs.calls.crend(); ++it)
            if (it->kind == ql::DialogCall::Message) return &*it;
        return nullptr;
    }
    void expectConsistent(qint32 wage, bool enrolled) {
        const QStringList broken = edittest::payInconsistencies(db(), *screen, wage, enrolled);
        EXPECT_TRUE(broken.isEmpty()) << broken.join('\n').toStdString();
        EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
    }
};

TEST_F(EditRefusal, NegativeUnitsOnOrdinaryTime) {
    pick(FarmHand, QDate(2026, 4, 6));
    addPay();
    const qint32 wage = addPay();
    screen->cmdSelect_Click(1);
    const QVariant before = screen->WageGridArray.value(0, 2);
    EXPECT_FALSE(screen->storeCell(0, 2, QStringLiteral("-5")));
    const ql::DialogCall* m = lastMessage();
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->caption, QStringLiteral("Fernhold"));
    EXPECT_EQ(m->heading, QStringLiteral("Invalid Entry"));
    EXPECT_EQ(m->message,
              QStringLiteral("A negative figure can't be entered in Units (Hour).\r\n\r\nTo reduce this "
                             "pay, lower or remove a line instead.\r\n\r\nThe previous value has been "
                             "restored"));
    EXPECT_EQ(screen->WageGridArray.value(0, 2), before);
    leaveView();
    EXPECT_EQ(wageColumn(wage, "Gross"), cur("1022.75"));
    EXPECT_EQ(wageColumn(wage, "TotalTaxable"), cur("1022.75"));
    expectConsistent(wage, true);
}

TEST_F(EditRefusal, BracketedAmountOnANewPaymentLine) {
    pick(Manager, QDate(2026, 3, 31));
    const qint32 wage = addPay();
    screen->cmdSelect_Click(1);
    const int row = screen->WageGridArray.rowCount();
    ASSERT_FALSE(screen->tgrdwages_BeforeRowChange());
    screen->WageGridArray.insertRow(row);
    EXPECT_FALSE(screen->storeCell(row, 4, QStringLiteral("(5)")));
    ASSERT_NE(lastMessage(), nullptr);
    EXPECT_EQ(lastMessage()->message,
              QStringLiteral("A negative figure can't be entered in Amount.\r\n\r\nTo reduce "
                             "this pay, lower or remove a line instead.\r\n\r\nThe previous "
                             "value has been restored"));
    EXPECT_TRUE(ql::IsNull(screen->WageGridArray.value(row, 4)));
    leaveView();
    EXPECT_EQ(wageColumn(wage, "Gross"), cur("7083.33"));
    expectConsistent(wage, true);
}

TEST_F(EditRefusal, ARateOrAmountThatWouldMakeAnOutsizeLine) {
    pick(FarmHand, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    screen->cmdSelect_Click(1);
    // 40.11 hours at 30,000 an hour is more than a line may hold; so is a typed 1E+30.
    for (const char* text : {"30000", "1E+30", "1000000.01"}) {
        EXPECT_FALSE(screen->storeCell(0, 3, QString::fromLatin1(text))) << text;
        EXPECT_EQ(
            lastMessage()->message,
            QStringLiteral("The figures of this line would be too large: no figure of a line may be more "
                           "than 1,000,000.00.\r\n\r\nThe previous value has been restored"));
    }
    EXPECT_TRUE(screen->storeCell(0, 3, QStringLiteral("30")));
    leaveView();
    expectConsistent(wage, true);
}

TEST_F(EditRefusal, AChangeThatTakesTheTotalTaxableBelowZero) {
    pick(FarmHand, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    // A negative line stored before such entries were refused.
    db().execute(
        QStringLiteral("UPDATE PaymentDetails SET DetailHours = 1, EquivPayRate = 0, Payment = -900 WHERE "
                       "WageID = %1 AND PaymentNameID = 2")
            .arg(wage));
    screen->cmdSelect_Click(1);
    EXPECT_FALSE(screen->storeCell(0, 2, QStringLiteral("2")));
    EXPECT_EQ(lastMessage()->message, QStringLiteral("This change would take the pay's total taxable below "
                                                     "zero.\r\n\r\nThe previous value has been restored"));
    EXPECT_TRUE(screen->storeCell(0, 2, QStringLiteral("39")));
}

TEST_F(EditRefusal, ZeroAndPlainFiguresStillGoThrough) {
    pick(FarmHand, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    screen->cmdSelect_Click(1);
    EXPECT_TRUE(screen->storeCell(0, 2, QStringLiteral("0")));
    EXPECT_TRUE(screen->storeCell(1, 2, QStringLiteral("1,000")));
    leaveView();
    EXPECT_EQ(wageColumn(wage, "Gross"), cur("38250"));
    expectConsistent(wage, true);
}

} // namespace
} // namespace qltest
