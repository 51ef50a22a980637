// The child support code of the payday filing file: "P" when the protected net earnings held the
// deduction below the amount the employee's standing items ask.
#include "PayGuard.h"
#include "PaydayFixture.h"
#include "payday/PaydayFiles.h"
#include "payengine/EmployeeTaxItems.h"

namespace qltest {
namespace {

QString childSupportCode(const QString& text) {
    for (const QStringList& d : csvLines(text))
        if (d.value(0) == QLatin1String("DEI") && d.value(16) == QLatin1String("2500")) return d.value(17);
    return QStringLiteral("(no line)");
}

TEST_F(PaydayTest, ChildSupportHeldDownIsCodedP) {
    fixIrdNumbers();
    const qint32 driverPay = scalar(QStringLiteral("SELECT max(WageID) FROM Wages WHERE EmployeeID = 4")).toInt();
    withoutPayGuard(wage, [&] {
        wage.execute(QStringLiteral("INSERT INTO DeductionDetails (WageID, DeductNameID, AmountCalcon, Percentage, "
                                    "Deductions) VALUES (%1, 5, 25, 100, 25)")
                         .arg(driverPay));
        // Stored as a commit would store it.
        wage.execute(QStringLiteral("UPDATE Wages SET Deductions = Deductions + 25, TakeHome = TakeHome - 25 WHERE "
                                    "WageID = %1")
                         .arg(driverPay));
    });
    // Asked 25 and took 25: no code.
    ql::EmployeeTaxItems items = ql::LoadEmployeeTaxItems(wage, 4);
    items.childSupport = ql::Currency::fromLong(25);
    ql::SaveEmployeeTaxItems(wage, items);
    ql::PaydayFile file = ql::EmploymentInformationFile(wage, kPaymentDate);
    ASSERT_TRUE(file.ok()) << file.refusal.toStdString();
    EXPECT_EQ(childSupportCode(file.text), QString());
    // Asked 40 and took 25: held down.
    items.childSupport = ql::Currency::fromLong(40);
    ql::SaveEmployeeTaxItems(wage, items);
    file = ql::EmploymentInformationFile(wage, kPaymentDate);
    ASSERT_TRUE(file.ok()) << file.refusal.toStdString();
    EXPECT_EQ(childSupportCode(file.text), QStringLiteral("P"));
}

} // namespace
} // namespace qltest
