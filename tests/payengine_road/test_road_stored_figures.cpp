// What a pay's row stores agrees with its lines: section figures to the cent of the lines, the tax and
// take-home written together with a gross that an edit writes at once, and each contribution row's
// ESCT adding up to the pay's.
#include "RoadFixture.h"
#include "data/RoundCurrency.h"
#include "runtime/VbError.h"

using namespace qltest;

namespace {

// Two non-taxable lines of 283.33 and 608.72 make 892.0499 when added as Singles; the pay stores the
// 892.05 its lines and its label show.
TEST_F(RoadTest, AFigureIsStoredAsItsLinesAddUpNotAsASingleNearMiss) {
    pick(Manager, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    db().execute(QStringLiteral("DELETE FROM NonTaxAllowDetails WHERE WageID = %1").arg(wage));
    db().execute(QStringLiteral("INSERT INTO NonTaxAllowDetails (WageID, NonTaxNameID, Amountcalcon, NonTaxRate, "
                                "NonTaxAllow) VALUES (%1, 1, 1, 283.33, 283.33), (%1, 3, 1, 608.72, 608.72)")
                     .arg(wage));
    screen->cmdSelect_Click(4);
    leaveView();
    EXPECT_EQ(label("lblNonTax"), QStringLiteral("$892.05"));
    EXPECT_EQ(wageColumn(wage, "NonTaxAllow"), cur("892.05"));
    EXPECT_EQ(wageColumn(wage, "TakeHome"), wageColumn(wage, "TotalTaxable") - wageColumn(wage, "PAYE") +
                                                  cur("892.05") - wageColumn(wage, "Deductions"));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

// Hours typed on a payment line write the new gross at once; the PAYE and take-home that go with it
// are written with it, before the user leaves the line or the view.
TEST_F(RoadTest, AnEditedGrossIsStoredWithItsTaxAndTakeHomeAtOnce) {
    pick(FarmHand, QDate(2026, 4, 6));
    addPay();
    const qint32 wage = addPay(); // a second pay: its figures are the lines' from the start
    const ql::Currency payeBefore = wageColumn(wage, "PAYE");
    screen->cmdSelect_Click(1);
    ASSERT_TRUE(screen->storeCell(0, 2, QStringLiteral("50")));
    // Nothing has been saved by leaving: the row holds the gross of 50 hours and the tax of that gross.
    EXPECT_EQ(wageColumn(wage, "Gross"), cur("1275"));
    EXPECT_GT(wageColumn(wage, "PAYE"), payeBefore);
    EXPECT_EQ(ql::Format(QVariant::fromValue(wageColumn(wage, "PAYE")), QStringLiteral("Currency")), label("lblPaye"));
    EXPECT_EQ(ql::Format(QVariant::fromValue(wageColumn(wage, "TakeHome")), QStringLiteral("Currency")),
              label("lblTakehome"));
    EXPECT_EQ(wageColumn(wage, "TakeHome"),
              wageColumn(wage, "TotalTaxable") - wageColumn(wage, "PAYE") + wageColumn(wage, "NonTaxAllow") -
                  wageColumn(wage, "Deductions"));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

// A contribution typed at another rate, then the save that works it again at the employee's rate:
// the row's ESCT follows the contribution it stands beside, and the pay's ESCT is the grid's.
TEST_F(RoadTest, TheContributionGridsEsctAddsUpToThePaysAfterASave) {
    pick(FarmHand, QDate(2026, 4, 6));
    addPay();
    const qint32 wage = addPay();
    screen->cmdSelect_Click(7);
    ASSERT_GE(screen->WageGridArray.rowCount(), 1);
    ASSERT_TRUE(screen->storeCell(0, 3, QStringLiteral("10")));
    leaveView();
    const QList<ql::Currency> contributions = amounts("ContributionDetails", "Contributions", wage);
    const QList<ql::Currency> esct = amounts("ContributionDetails", "ESCT", wage);
    ASSERT_EQ(contributions.size(), 1);
    // 3.5% of 1022.75 = 35.79; ESCT on 35 whole dollars at 17.5% = 6.125, cut to 6.12.
    EXPECT_EQ(contributions.at(0), cur("35.79"));
    EXPECT_EQ(esct.at(0), cur("6.12"));
    EXPECT_EQ(wageColumn(wage, "ESCTDeductions"), cur("6.12"));
    // The grid, read again, shows the same.
    screen->cmdSelect_Click(7);
    EXPECT_EQ(ql::RoundCurrency(screen->WageGridArray.value(0, 4).toString()), cur("6.12"));
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

} // namespace


namespace {

// Another program holds the payroll's write lock while a first pay is added: the add reports the lock,
// and the screen does not go on to speak of entering more employees.
TEST_F(RoadTest, AFirstPayKeptOutByALockIsNotCalledAShortageOfEmployees) {
    ql::Database holder;
    holder.open(ql::WageFileName());
    holder.executeScript(QStringLiteral("BEGIN IMMEDIATE; UPDATE Employees SET EmployeeID = EmployeeID WHERE 0;"));
    dialogs.queueInput(ql::Format(QVariant(QDate(2026, 4, 6)), QStringLiteral("Short date")));
    for (int i = 0; i < screen->cboEmployeeItems.size(); ++i)
        if (screen->cboEmployeeItems.at(i).itemData == FarmHand) screen->selectEmployeeItem(i);
    holder.executeScript(QStringLiteral("COMMIT"));
    holder.close();
    QStringList told;
    for (const auto& c : dialogs.calls)
        told << c.message;
    const QString all = told.join(u'\n');
    EXPECT_TRUE(all.contains(QStringLiteral("locked"))) << all.toStdString();
    EXPECT_FALSE(all.contains(QStringLiteral("more employees"))) << all.toStdString();
}

} // namespace
