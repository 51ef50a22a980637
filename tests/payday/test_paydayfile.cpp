// The Employment Information and Employee Details files against their layouts, field by field, from
// the demo farm's committed pays.
#include "PaydayFixture.h"
#include "PayGuard.h"
#include "data/Recordset.h"
#include "payday/PaydayFiles.h"
#include "payday/PaydayPays.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"

namespace qltest {
namespace {

QString cents(const QVariant& v) {
    return ql::Cents(v.isValid() ? ql::CCur(v) : ql::Currency());
}

TEST(PaydayCents, HalfToEvenAtTheCent) {
    EXPECT_EQ(ql::Cents(ql::Currency::fromRaw(12345600)), QStringLiteral("123456"));
    EXPECT_EQ(ql::Cents(ql::Currency::fromRaw(1250)), QStringLiteral("12"));   // 0.125 -> 0.12
    EXPECT_EQ(ql::Cents(ql::Currency::fromRaw(1350)), QStringLiteral("14"));   // 0.135 -> 0.14
    EXPECT_EQ(ql::Cents(ql::Currency::fromRaw(61250)), QStringLiteral("612")); // the demo's ESCT 6.125
    EXPECT_EQ(ql::Cents(ql::Currency::fromRaw(-500)), QStringLiteral("-5"));
    EXPECT_EQ(ql::Cents(ql::Currency::fromRaw(-1350)), QStringLiteral("-14"));
}

TEST(PaydayPeriods, StartOfEachInterval) {
    const QDate end(2026, 11, 6);
    EXPECT_EQ(ql::PayPeriodStart(end, 52, 7), QDate(2026, 10, 31));
    EXPECT_EQ(ql::PayPeriodStart(end, 26, 14), QDate(2026, 10, 24));
    EXPECT_EQ(ql::PayPeriodStart(end, 13, 28), QDate(2026, 10, 10));
    EXPECT_EQ(ql::PayPeriodStart(end, 12, 0), QDate(2026, 10, 7));
    EXPECT_EQ(ql::PayPeriodStart(end, 0, 0), end);
    EXPECT_EQ(ql::PayCycleCode(52), QStringLiteral("WK"));
    EXPECT_EQ(ql::PayCycleCode(26), QStringLiteral("FT"));
    EXPECT_EQ(ql::PayCycleCode(13), QStringLiteral("4W"));
    EXPECT_EQ(ql::EiTaxCode(QStringLiteral("M SL")), QStringLiteral("MSL"));
    EXPECT_EQ(ql::EiTaxCode(QStringLiteral("me sl")), QStringLiteral("MESL"));
}

TEST_F(PaydayTest, RefusedWhileAnyIrdNumberFailsWithTheEmployeesToFix) {
    // The demo's employees have valid numbers; the farm's own number fails, and so does one typed wrong.
    wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = '111-111-112' WHERE EmployeeID = 2"));
    const ql::PaydayFile file = ql::EmploymentInformationFile(wage, kPaymentDate);
    EXPECT_FALSE(file.ok());
    EXPECT_TRUE(file.text.isEmpty());
    EXPECT_EQ(file.toFix,
              (QStringList{
                  QStringLiteral("The employer: IRD number 123-456-789 fails Inland Revenue's check"),
                  QStringLiteral("Barry Sampleton: IRD number 111-111-112 fails Inland Revenue's check")}));
    EXPECT_FALSE(file.refusal.contains(QStringLiteral("Aroha")));
    EXPECT_TRUE(file.refusal.startsWith(QStringLiteral("The payday filing file was not written")));
    // The employer's number in the payday settings stands in for the farm's.
    ql::PaydaySettings s;
    s.employerIrd = validIrd(0);
    s.contactName = QStringLiteral("Pat Payroll");
    s.contactPhone = QStringLiteral("03 555 0101");
    s.contactEmail = QStringLiteral("pay@example.nz");
    ql::SavePaydaySettings(wage, s);
    EXPECT_EQ(
        ql::EmploymentInformationFile(wage, kPaymentDate).toFix,
        QStringList{QStringLiteral("Barry Sampleton: IRD number 111-111-112 fails Inland Revenue's check")});
    wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = '' WHERE EmployeeID = 2"));
    EXPECT_EQ(ql::EmploymentInformationFile(wage, kPaymentDate).toFix,
              QStringList{QStringLiteral("Barry Sampleton: no IRD number")});
    wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = '111-111-122' WHERE EmployeeID = 2"));
    EXPECT_TRUE(ql::EmploymentInformationFile(wage, kPaymentDate).ok());
}

TEST_F(PaydayTest, NoCommittedPayOnTheDay) {
    fixIrdNumbers();
    const ql::PaydayFile file = ql::EmploymentInformationFile(wage, kPaymentDate.addDays(1));
    EXPECT_EQ(file.refusal, QStringLiteral("No committed pay was paid on 2/12/2026."));
    // A pay with an empty reference is not committed, whatever its payment date.
    qltest::withoutPayGuard(wage, [&] { wage.execute(QStringLiteral("UPDATE Wages SET Reference = '' WHERE EmployeeID = 1")); });
    EXPECT_EQ(ql::EmploymentInformationFile(wage, kPaymentDate).lines, 4);
}

TEST_F(PaydayTest, EmploymentInformationFieldByField) {
    fixIrdNumbers();
    // A child support line on the tractor driver's pay.
    const qint32 driverPay =
        scalar(QStringLiteral("SELECT max(WageID) FROM Wages WHERE EmployeeID = 4")).toInt();
    qltest::withoutPayGuard(wage, [&] {
        wage.execute(
            QStringLiteral("INSERT INTO DeductionDetails (WageID, DeductNameID, AmountCalcon, Percentage, "
                           "Deductions) VALUES (%1, 5, 25, 100, 25)")
                .arg(driverPay));
        // Stored as a commit would store it.
        wage.execute(QStringLiteral("UPDATE Wages SET Deductions = Deductions + 25, TakeHome = TakeHome - 25 WHERE "
                                    "WageID = %1")
                         .arg(driverPay));
    });
    const ql::PaydayFile file = ql::EmploymentInformationFile(wage, kPaymentDate);
    ASSERT_TRUE(file.ok()) << file.refusal.toStdString();
    const QList<QStringList> lines = csvLines(file.text);
    ASSERT_EQ(lines.size(), 6);
    const QStringList& h = lines.at(0);
    ASSERT_EQ(h.size(), 28);
    EXPECT_EQ(h[0], QStringLiteral("HEI2"));
    EXPECT_EQ(h[1], QStringLiteral("0") + validIrd(0));
    EXPECT_EQ(h[2], QStringLiteral("20261201"));
    EXPECT_EQ(h[3], QStringLiteral("N"));
    EXPECT_EQ(h[4], QStringLiteral("N"));
    EXPECT_EQ(h[5], QString());
    EXPECT_EQ(h[6], QStringLiteral("Pat Payroll"));
    EXPECT_EQ(h[7], QStringLiteral("03 555 0101"));
    EXPECT_EQ(h[8], QStringLiteral("pay@example.nz"));
    EXPECT_EQ(h[9], QStringLiteral("5"));
    EXPECT_EQ(h[26], ql::PayrollPackageName());
    EXPECT_EQ(h[27], QStringLiteral("0001"));

    // Lines by family name: Fictional (4), Madeup (5), Placeholder (3), Sampleton (2), Testington (1).
    const int order[] = {4, 5, 3, 2, 1};
    const char* names[] = {"Dana Fictional", "Eli Madeup", "Casey Placeholder", "Barry Sampleton",
                           "Aroha Testington"};
    const char* cycles[] = {"WK", "4W", "FT", "MT", "WK"};
    qint64 sums[28] = {};
    for (int i = 0; i < 5; ++i) {
        const QStringList& d = lines.at(i + 1);
        ASSERT_EQ(d.size(), 27);
        const int id = order[i];
        const QString w =
            scalar(QStringLiteral("SELECT max(WageID) FROM Wages WHERE EmployeeID = %1").arg(id)).toString();
        const auto col = [&](const char* c) {
            return scalar(QStringLiteral("SELECT %1 FROM Wages WHERE WageID = %2").arg(QLatin1String(c), w));
        };
        const auto deductions = [&](const QString& where) {
            return scalar(
                QStringLiteral("SELECT sum(Deductions) FROM DeductionDetails d JOIN DeductNames n ON "
                               "d.DeductNameID = n.DeductNameID WHERE d.WageID = %1 AND %2")
                    .arg(w, where));
        };
        EXPECT_EQ(d[0], QStringLiteral("DEI"));
        EXPECT_EQ(d[1], validIrd(id).rightJustified(9, u'0'));
        EXPECT_EQ(d[2], QString::fromLatin1(names[i]));
        EXPECT_EQ(d[3], ql::EiTaxCode(col("TaxCode").toString()));
        EXPECT_EQ(d[4], QString()) << "no employee started within the period";
        EXPECT_EQ(d[5], QString());
        const QDate payDate = ql::CDate(col("Date"));
        EXPECT_EQ(d[7], payDate.toString(QStringLiteral("yyyyMMdd")));
        EXPECT_EQ(QDate::fromString(d[6], QStringLiteral("yyyyMMdd")) <= payDate, true);
        EXPECT_EQ(d[8], QString::fromLatin1(cycles[i]));
        // Hours paid: the units of the lines paid by the hour (a salary line's are none).
        const double hours =
            scalar(QStringLiteral("SELECT coalesce(sum(DetailHours), 0) FROM PaymentDetails p JOIN PaymentNames n "
                                  "ON p.PaymentNameID = n.PaymentNameID WHERE p.WageID = %1 AND "
                                  "coalesce(n.Salary, 0) = 0")
                       .arg(w))
                .toDouble();
        EXPECT_EQ(d[9], QString::number(std::llround(hours * 100)));
        EXPECT_EQ(d[10], cents(col("TotalTaxable")));
        EXPECT_EQ(d[11], QStringLiteral("0"));
        EXPECT_EQ(d[12], QStringLiteral("0"));
        EXPECT_EQ(d[13], QStringLiteral("0"));
        EXPECT_EQ(d[14], cents(col("PAYE")));
        EXPECT_EQ(d[15], QStringLiteral("0"));
        EXPECT_EQ(d[16], cents(deductions(QStringLiteral("n.DeductionName = 'Child Support'"))));
        EXPECT_EQ(d[17], QString());
        EXPECT_EQ(d[18], cents(deductions(QStringLiteral("n.TaxName = 'studentloan'"))));
        EXPECT_EQ(d[19], QStringLiteral("0"));
        EXPECT_EQ(d[20], QStringLiteral("0"));
        EXPECT_EQ(d[21], cents(deductions(QStringLiteral("n.TaxName = 'kiwisaver'"))));
        const ql::Currency employer = ql::CCur(scalar(
            QStringLiteral("SELECT total(Contributions) FROM ContributionDetails WHERE WageID = %1").arg(w)));
        const ql::Currency esct =
            employer == ql::Currency() ? ql::Currency() : ql::CCur(col("ESCTDeductions"));
        EXPECT_EQ(d[22].toLongLong(), ql::Cents(employer).toLongLong() - ql::Cents(esct).toLongLong());
        EXPECT_EQ(d[23], ql::Cents(esct));
        for (int f = 24; f < 27; ++f)
            EXPECT_EQ(d[f], QStringLiteral("0"));
        for (int f = 9; f < 27; ++f)
            sums[f] += d[f].toLongLong();
    }
    EXPECT_EQ(lines.at(4)[3], QStringLiteral("MSL")); // the manager's "M SL"
    // The pays carry the demo's own figures: tax, a student loan, KiwiSaver both sides, child support.
    EXPECT_GT(sums[14], 0);
    EXPECT_GT(sums[16], 0);
    EXPECT_GT(sums[18], 0);
    EXPECT_GT(sums[21], 0);
    EXPECT_GT(sums[22], 0);
    EXPECT_GT(sums[23], 0);
    // Header totals are the sums of the lines' fields.
    EXPECT_EQ(h[10].toLongLong(), sums[10]);
    EXPECT_EQ(h[11].toLongLong(), sums[11]);
    EXPECT_EQ(h[12].toLongLong(), sums[13]);
    EXPECT_EQ(h[13].toLongLong(), sums[14]);
    EXPECT_EQ(h[14].toLongLong(), sums[15]);
    EXPECT_EQ(h[15].toLongLong(), sums[16]);
    EXPECT_EQ(h[16].toLongLong(), sums[18]);
    EXPECT_EQ(h[17].toLongLong(), sums[19]);
    EXPECT_EQ(h[18].toLongLong(), sums[20]);
    EXPECT_EQ(h[19].toLongLong(), sums[21]);
    EXPECT_EQ(h[20].toLongLong(), sums[22]);
    EXPECT_EQ(h[21].toLongLong(), sums[23]);
    EXPECT_EQ(h[22].toLongLong(), sums[14] + sums[16] + sums[18] + sums[19] + sums[20] + sums[21] + sums[22] +
                                      sums[23] - sums[24] - sums[25]);
    EXPECT_EQ(h[23].toLongLong(), sums[24]);
    EXPECT_EQ(h[24].toLongLong(), sums[25]);
    EXPECT_EQ(h[25].toLongLong(), sums[26]);
}

TEST_F(PaydayTest, StartAndFinishDatesWithinThePeriod) {
    fixIrdNumbers();
    wage.execute(QStringLiteral("UPDATE Employees SET DateHired = '2026-11-03' WHERE EmployeeID = 4"));
    wage.execute(QStringLiteral("UPDATE Employees SET DateFinished = '2026-11-05' WHERE EmployeeID = 1"));
    const QList<QStringList> lines = csvLines(ql::EmploymentInformationFile(wage, kPaymentDate).text);
    ASSERT_EQ(lines.size(), 6);
    EXPECT_EQ(lines.at(1)[4], QStringLiteral("20261103")); // Fictional, weekly up to 6/11
    EXPECT_EQ(lines.at(5)[5], QStringLiteral("20261105")); // Testington
}

TEST_F(PaydayTest, EmployeeDetailsOfStartersAndLeavers) {
    fixIrdNumbers();
    const ql::PaydayFile file = ql::EmployeeDetailsFile(wage, QDate(2025, 10, 1));
    ASSERT_TRUE(file.ok()) << file.refusal.toStdString();
    const QList<QStringList> lines = csvLines(file.text);
    // Dana Fictional started 6/10/2025; Fran Finished left 19/12/2025.
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.at(0), (QStringList{QStringLiteral("HED2"), QStringLiteral("0") + validIrd(0),
                                        ql::PayrollPackageName(), QStringLiteral("2")}));
    const QStringList& starter = lines.at(1);
    ASSERT_EQ(starter.size(), 41);
    EXPECT_EQ(starter[0], QStringLiteral("DED"));
    EXPECT_EQ(starter[1], validIrd(4).rightJustified(9, u'0'));
    EXPECT_EQ(starter[2], QStringLiteral("Dana Fictional"));
    EXPECT_EQ(starter[3], QString());
    EXPECT_EQ(starter[4], QStringLiteral("Dana"));
    EXPECT_EQ(starter[5], QString());
    EXPECT_EQ(starter[6], QStringLiteral("Fictional"));
    EXPECT_EQ(starter[7], QStringLiteral("20010130"));
    EXPECT_EQ(starter[8], QStringLiteral("20251006"));
    EXPECT_EQ(starter[9], QString());
    EXPECT_EQ(starter[10], QStringLiteral("NE"));
    EXPECT_EQ(starter[11], scalar(QStringLiteral("SELECT KiwiSaverEnrolled FROM Employees WHERE EmployeeID = 4")).toBool()
                               ? QStringLiteral("AK")
                               : QStringLiteral("NK"));
    EXPECT_EQ(starter[20], QStringLiteral("NZL"));
    EXPECT_EQ(starter[26], QStringLiteral("4 Fiction Crescent"));
    EXPECT_EQ(starter[28], QStringLiteral("Fauxton"));
    EXPECT_EQ(lines.at(2), (QStringList{QStringLiteral("TED"), QStringLiteral("ME")}));
    const QStringList& leaver = lines.at(3);
    EXPECT_EQ(leaver[2], QStringLiteral("Fran Finished"));
    EXPECT_EQ(leaver[8], QStringLiteral("20200106"));
    EXPECT_EQ(leaver[9], QStringLiteral("20251219"));
    EXPECT_EQ(leaver[10], QString());
    EXPECT_EQ(lines.at(4), (QStringList{QStringLiteral("TED"), QStringLiteral("M")}));

    EXPECT_EQ(ql::EmployeeDetailsFile(wage, QDate(2026, 1, 1)).refusal,
              QStringLiteral("No employee started or finished on or after 1/01/2026."));
}

TEST_F(PaydayTest, EmployeeDetailsRefusedForAFailingNumber) {
    fixIrdNumbers();
    wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = '136410133' WHERE EmployeeID = 6"));
    const ql::PaydayFile file = ql::EmployeeDetailsFile(wage, QDate(2025, 10, 1));
    EXPECT_FALSE(file.ok());
    EXPECT_TRUE(file.text.isEmpty());
    EXPECT_EQ(file.toFix, QStringList{QStringLiteral(
                              "Fran Finished: IRD number 136410133 fails Inland Revenue's check")});
}

} // namespace
} // namespace qltest

namespace qltest {
namespace {

TEST_F(PaydayTest, TheDemoFarmsEmployeesHaveValidIrdNumbers) {
    auto rs =
        wage.openRecordset(QStringLiteral("SELECT IRDNumber FROM Employees"), ql::RecordsetType::Snapshot);
    int count = 0;
    for (; !rs->EOF_(); rs->MoveNext(), ++count)
        EXPECT_TRUE(ql::IsValidIrdNumber(rs->value(0).toString())) << rs->value(0).toString().toStdString();
    EXPECT_EQ(count, 7);
}

} // namespace
} // namespace qltest
