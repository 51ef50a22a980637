// The holiday pay of a final pay is an extra pay: the pay's PAYE is the ordinary method on its other lines
// and the extra-pay method on the holiday lines, for each family of tax codes, worked by hand from Inland
// Revenue's Payroll Calculations and Business Rules Specification 2025 V1.3 (5.11, 5.12) on the 2026/27
// figures: bands 15,600 / 53,500 / 78,100 / 180,000 at 10.5 / 17.5 / 30 / 33 / 39%, ACC earners' levy
// 1.75% to 156,641, student loan 12% over 24,128 (464.00 a week).
//
// Each employee is paid a weekly salary of $52,000 ($1,000.00 a week) from Saturday 26 September 2026, with
// pays on the Fridays 2 to 23 October. Finishing on Wednesday 21 October makes pay 4 (17 to 23 October) the
// final pay. Not yet entitled to annual holidays, the employee is owed 8% of the four weeks' $4,000.00: one
// holiday line of $320.00.
#include "FinalPayTaxFixture.h"

using namespace qltest;

namespace {

class FinalPayTaxCodes : public FinalPayTaxTest {
protected:
    // The employee's four pays and the finish; the final pay's WageID.
    qint32 finalPayOf(qint32 id, qint64 total = 32000) {
        for (const char* d : {"2026-10-02", "2026-10-09", "2026-10-16", "2026-10-23"})
            pays << addPay(id, QString::fromLatin1(d));
        finished = finish(id, QStringLiteral("2026-10-21"));
        const QJsonObject f = finished.value("FinalPay").toObject();
        EXPECT_EQ(finished.value("FinalPayWageID").toInt(), pays.last());
        EXPECT_EQ(cents(f.value("Total")), total);
        tax = f.value("Tax").toObject();
        return pays.last();
    }
    QList<qint32> pays;
    QJsonObject finished, tax;
};

} // namespace

TEST_F(FinalPayTaxCodes, MainCodeTaxesTheHolidayPayAsAnExtraPay) {
    const qint32 pay =
        finalPayOf(addEmployee(QStringLiteral("M"), QStringLiteral("2026-09-26"), QStringLiteral("52000")));
    EXPECT_EQ(wages(pay, "TotalTaxable"), 132000);
    // Ordinary: $52,000 a year: 1,638 + 36,400 x 17.5% = 8,008 tax + 910 levy = 8,918 / 52 = 171.50.
    EXPECT_EQ(cents(tax.value("OrdinaryPAYE")), 17150);
    // Extra: four weeks $4,000 (this pay's ordinary $1,000 and the three before) x 13 = $52,000, plus
    // $320 = $52,320 grossed up: the 17.5% band. 320 x 17.5% = 56.00, levy 320 x 1.75% = 5.60.
    EXPECT_EQ(cents(tax.value("FourWeeks")), 400000);
    EXPECT_EQ(tax.value("Multiplier").toInt(), 13);
    EXPECT_EQ(tax.value("GrossedUp").toInt(), 52320);
    EXPECT_DOUBLE_EQ(tax.value("ExtraPayRate").toDouble(), 17.5);
    EXPECT_EQ(cents(tax.value("HolidayPAYE")), 6160);
    EXPECT_EQ(tax.value("LumpSumIndicator").toInt(), 0);
    // 171.50 + 61.60; the ordinary method on the whole $1,320 would take 269.49.
    expectPaye(pay, 23310);
    EXPECT_TRUE(tax.value("Working").toString().contains(QStringLiteral("52320 grossed up, so 17.5%")))
        << tax.value("Working").toString().toStdString();
    expectTakeHomeFollows(pay);
    // The pay before the final one is an ordinary pay.
    expectPaye(pays.at(2), 17150);
}

TEST_F(FinalPayTaxCodes, StudentLoanCodeBearsTheLoanOnTheWholePayAndKiwiSaverOnTheHolidayPay) {
    const qint32 pay =
        finalPayOf(addEmployee(QStringLiteral("M SL"), QStringLiteral("2026-09-26"), QStringLiteral("52000"),
                               {QStringLiteral("--kiwisaver"), QStringLiteral("4")}));
    expectPaye(pay, 23310);
    // Paid with the ordinary pay: 12% of the pay's whole dollars 1,320 less 464 = 102.72.
    EXPECT_EQ(deduction(pay, "Student Loan"), 10272);
    // KiwiSaver 4% of the whole gross 1,320 = 52.80 (holiday pay is salary and wages).
    EXPECT_EQ(deduction(pay, "KiwiSaver"), 5280);
    expectTakeHomeFollows(pay);
}

TEST_F(FinalPayTaxCodes, HolidayLinesAloneBearTheLoanWithoutTheThreshold) {
    const qint32 id =
        addEmployee(QStringLiteral("M SL"), QStringLiteral("2026-09-26"), QStringLiteral("52000"),
                    {QStringLiteral("--kiwisaver"), QStringLiteral("4")});
    for (const char* d : {"2026-10-02", "2026-10-09", "2026-10-16", "2026-10-23"})
        pays << addPay(id, QString::fromLatin1(d));
    commit(pays.last(), QStringLiteral("2026-10-23"));
    // Pay 4 is committed and covers the last day: a pay of the holiday line alone is added on 24 October.
    const QJsonObject o = finish(id, QStringLiteral("2026-10-21"));
    ASSERT_TRUE(o.value("FinalPayAdded").toBool());
    const qint32 pay = o.value("FinalPayWageID").toInt();
    EXPECT_EQ(wages(pay, "TotalTaxable"), 32000);
    const QJsonObject t = o.value("FinalPay").toObject().value("Tax").toObject();
    // No ordinary lines: the four weeks are the four pays of $1,000: 52,000 + 320, 17.5%: 61.60.
    EXPECT_EQ(cents(t.value("OrdinaryPAYE")), 0);
    EXPECT_EQ(cents(t.value("FourWeeks")), 400000);
    expectPaye(pay, 6160);
    // Paid apart from the time worked: 12% of the whole 320 with no threshold = 38.40; KiwiSaver 4% = 12.80.
    EXPECT_EQ(deduction(pay, "Student Loan"), 3840);
    EXPECT_EQ(deduction(pay, "KiwiSaver"), 1280);
    expectTakeHomeFollows(pay);
}

TEST_F(FinalPayTaxCodes, SecondaryCodesGrossUpFromTheirLowThreshold) {
    // S: ordinary 1,000 x (17.5% + 1.75%) = 192.50. Extra: 52,000 + 15,601 (the low threshold amount,
    // the top of the 10.5% band + 1) + 320 = 67,921: the 30% band: 96.00 + 5.60 = 101.60.
    const qint32 s =
        finalPayOf(addEmployee(QStringLiteral("S"), QStringLiteral("2026-09-26"), QStringLiteral("52000")));
    EXPECT_EQ(tax.value("LowThreshold").toInt(), 15601);
    EXPECT_EQ(tax.value("GrossedUp").toInt(), 67921);
    EXPECT_EQ(cents(tax.value("OrdinaryPAYE")), 19250);
    EXPECT_EQ(cents(tax.value("HolidayPAYE")), 10160);
    expectPaye(s, 29410);
    pays.clear();
    // SH: 1,000 x 31.75% = 317.50; 52,000 + 53,501 + 320 = 105,821: 33%: 105.60 + 5.60 = 111.20.
    const qint32 sh =
        finalPayOf(addEmployee(QStringLiteral("SH"), QStringLiteral("2026-09-26"), QStringLiteral("52000")));
    EXPECT_EQ(tax.value("GrossedUp").toInt(), 105821);
    expectPaye(sh, 31750 + 11120);
    pays.clear();
    // ST: 1,000 x 34.75% = 347.50; 52,000 + 78,101 + 320 = 130,421: 33% again: 111.20.
    const qint32 st =
        finalPayOf(addEmployee(QStringLiteral("ST"), QStringLiteral("2026-09-26"), QStringLiteral("52000")));
    EXPECT_EQ(tax.value("GrossedUp").toInt(), 130421);
    expectPaye(st, 34750 + 11120);
}

TEST_F(FinalPayTaxCodes, NoNotificationTakesItsFlatRateOnTheHolidayPay) {
    // ND: 1,000 x (45% + 1.75%) = 467.50 on whole dollars; the extra pay 320 x 46.75% = 149.60.
    const qint32 pay =
        finalPayOf(addEmployee(QStringLiteral("ND"), QStringLiteral("2026-09-26"), QStringLiteral("52000")));
    EXPECT_TRUE(tax.value("GrossedUp").isNull());
    EXPECT_EQ(cents(tax.value("HolidayPAYE")), 14960);
    expectPaye(pay, 46750 + 14960);
}

TEST_F(FinalPayTaxCodes, TheLowestRateSetsTheLumpSumIndicatorOfThePaydayFiling) {
    // $10,400 a year ($200.00 a week): four weeks $800 x 13 = 10,400 + the 8% of $800, 64.00 = 10,464:
    // the 10.5% band. Ordinary 200 a week: 10,400 x 10.5% = 1,092 + 182 levy = 1,274 / 52 = 24.50.
    // Extra: 64 x (10.5% + 1.75%) = 7.84.
    const qint32 id = addEmployee(QStringLiteral("M"), QStringLiteral("2026-09-26"), QStringLiteral("10400"));
    for (const char* d : {"2026-10-02", "2026-10-09", "2026-10-16", "2026-10-23"})
        pays << addPay(id, QString::fromLatin1(d));
    const qint32 pay = pays.last();
    const QJsonObject o = finalPayOn(id, QStringLiteral("2026-10-21"), pay);
    EXPECT_EQ(cents(o.value("Total")), 6400);
    tax = o.value("Tax").toObject();
    EXPECT_EQ(tax.value("LumpSumIndicator").toInt(), 1);
    expectPaye(pay, 2450 + 784);
    commit(pay, QStringLiteral("2026-10-23"));
    const QList<QStringList> ei = paydayFile(QStringLiteral("2026-10-23"));
    ASSERT_EQ(ei.size(), 2);
    // Gross 264.00, not liable 0, lump sum indicator 1, PAYE 32.34.
    EXPECT_EQ(ei[1][10], QStringLiteral("26400"));
    EXPECT_EQ(ei[1][12], QStringLiteral("0"));
    EXPECT_EQ(ei[1][13], QStringLiteral("1"));
    EXPECT_EQ(ei[1][14], QStringLiteral("3234"));
}

// Inland Revenue's fruit packer (Payroll Calculations and Business Rules Specification 2025 V1.3, 5.5;
// github.com/InlandRevenue/File_Upload_Services-Returns-and-Information, folder "Service - Payday
// Filing"): Mike, on the NSW code, packs fruit for ten weeks at $25 an hour ($1,000 a week, the 40 hours
// the example implies); his final pay carries $800 of 8% holiday pay, taxed as an extra pay at NSW's flat
// 10.5% and the 1.60% levy: $96.80, leaving $703.20. (The example's other figure, $152.24 at "the normal
// extra pay rate rules of 17.5%", is 800 x 19.03%: it takes the 1.53% levy of 2023/24; on 2024/25's 1.60%
// it would be $152.80.)
TEST_F(FinalPayTaxCodes, InlandRevenuesFruitPackerOnTheSeasonalWorkersCode) {
    const qint32 id = addEmployee(QStringLiteral("M"), QStringLiteral("2024-04-27"), QStringLiteral("52000"));
    setTaxCodeInFile(id, QStringLiteral("NSW"));
    for (QDate d(2024, 5, 3); d <= QDate(2024, 7, 5); d = d.addDays(7))
        pays << addPay(id, d.toString(Qt::ISODate));
    ASSERT_EQ(pays.size(), 10);
    const QJsonObject o = finish(id, QStringLiteral("2024-07-05"));
    const QJsonObject f = o.value("FinalPay").toObject();
    ASSERT_EQ(o.value("FinalPayWageID").toInt(), pays.last());
    EXPECT_EQ(cents(f.value("Total")), 80000);
    const QJsonObject t = f.value("Tax").toObject();
    EXPECT_EQ(cents(t.value("HolidayPAYE")), 9680);
    EXPECT_EQ(cents(t.value("HolidayPay")) - cents(t.value("HolidayPAYE")), 70320);
    // The week's own $1,000 on NSW: 12.1% of the whole dollars.
    EXPECT_EQ(cents(t.value("OrdinaryPAYE")), 12100);
    expectPaye(pays.last(), 12100 + 9680);
}

TEST_F(FinalPayTaxCodes, AFinalPayMadeAndCommittedBeforeTheFinishIsNotMadeAgain) {
    // The final pay made on pay 4 while the employee is on the payroll, committed, and then the finish
    // saved: the holiday lines are not paid twice.
    const qint32 id = addEmployee(QStringLiteral("M"), QStringLiteral("2026-09-26"), QStringLiteral("52000"));
    for (const char* d : {"2026-10-02", "2026-10-09", "2026-10-16", "2026-10-23"})
        pays << addPay(id, QString::fromLatin1(d));
    finalPayOn(id, QStringLiteral("2026-10-21"), pays.last());
    commit(pays.last(), QStringLiteral("2026-10-23"));
    const qint64 highest = figure(QStringLiteral("SELECT max(WageID) FROM Wages"));
    const QJsonObject o = finish(id, QStringLiteral("2026-10-21"));
    EXPECT_EQ(o.value("FinalPayWageID").toInt(), pays.last());
    EXPECT_FALSE(o.value("FinalPayAdded").toBool());
    EXPECT_TRUE(o.value("FinalPay")
                    .toObject()
                    .value("Choice")
                    .toString()
                    .contains(QStringLiteral("already carries")));
    EXPECT_EQ(figure(QStringLiteral("SELECT max(WageID) FROM Wages")), highest);
    EXPECT_EQ(wages(pays.last(), "TotalTaxable"), 132000);
    expectPaye(pays.last(), 23310);
    EXPECT_EQ(cents(o.value("FinalPay").toObject().value("Tax").toObject().value("PAYE")), 23310);
}

TEST_F(FinalPayTaxCodes, WithoutAPayTheHolidayPayIsTaxedAsPaidOnTheLastDay) {
    // `final-pay` without a pay: the $320 as an extra pay paid on Wednesday 21 October apart from a pay.
    // The four weeks end that day: the pays of 2, 9 and 16 October, $3,000 x 13 = 39,000 + 320 = 39,320:
    // 17.5% and the levy, 61.60.
    const qint32 id = addEmployee(QStringLiteral("M"), QStringLiteral("2026-09-26"), QStringLiteral("52000"));
    for (const char* d : {"2026-10-02", "2026-10-09", "2026-10-16", "2026-10-23"})
        pays << addPay(id, QString::fromLatin1(d));
    const CliResult r = cli({QStringLiteral("final-pay"), QString::number(id), QStringLiteral("2026-10-21")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QJsonObject o = QJsonDocument::fromJson(r.out.toUtf8()).object();
    EXPECT_EQ(cents(o.value("Total")), 32000);
    const QJsonObject t = o.value("Tax").toObject();
    EXPECT_EQ(cents(t.value("FourWeeks")), 300000);
    EXPECT_EQ(t.value("FourWeeksPays").toInt(), 3);
    EXPECT_EQ(t.value("GrossedUp").toInt(), 39320);
    EXPECT_EQ(cents(t.value("HolidayPAYE")), 6160);
    EXPECT_EQ(cents(t.value("OrdinaryPAYE")), 0);
    EXPECT_TRUE(o.value("TaxBasis").toString().contains(QStringLiteral("apart from a regular pay")));
    // Nothing was written: pay 4 keeps its $1,000.
    EXPECT_EQ(wages(pays.last(), "TotalTaxable"), 100000);
}

TEST_F(FinalPayTaxCodes, TheEsctRateOfAFinalPayCountsItsHolidayPayOnce) {
    // KiwiSaver 4% and 4%, no ESCT rate kept and no earlier year: the rate comes from the pay's year.
    // The final pay's $1,000 over 52 weeks plus the $320 once is $52,320: 17.5% (the band to 64,200); the
    // whole $1,320 times 52 would be $68,640 and 30%. The contribution 4% of 1,320 = 52.80; ESCT 17.5% of
    // its whole dollars, 52 x 17.5% = 9.10.
    const qint32 pay =
        finalPayOf(addEmployee(QStringLiteral("M"), QStringLiteral("2026-09-26"), QStringLiteral("52000"),
                               {QStringLiteral("--kiwisaver"), QStringLiteral("4"),
                                QStringLiteral("--employer-kiwisaver"), QStringLiteral("4")}));
    EXPECT_EQ(wages(pay, "KiwiSaverContribution"), 5280);
    EXPECT_EQ(wages(pay, "ESCTDeductions"), 910);
    EXPECT_EQ(
        figure(QStringLiteral("SELECT Total(ESCT) FROM ContributionDetails WHERE WageID = %1").arg(pay)),
        910);
    // The ordinary pay before it: 4% of 1,000 = 40.00, ESCT 7.00.
    EXPECT_EQ(wages(pays.at(2), "ESCTDeductions"), 700);
}

TEST_F(FinalPayTaxCodes, OneMonthlyPayInTheFourWeeksCountsTwelveTimes) {
    // $60,000 a year paid monthly ($5,000) from 1 August 2026; finishing on 20 October makes the October pay
    // the final pay, with 8% of $15,000 = $1,200. The four weeks to 31 October hold that one monthly pay:
    // 5,000 x 12 = 60,000 + 1,200 = 61,200 grossed up, 30%: 1,200 x 31.75% = 381.00. The ordinary $5,000:
    // 60,000 a year is 1,638 + 37,900 x 17.5% + 6,500 x 30% = 10,220.50 tax + 1,050 levy = 11,270.50;
    // a week 216.74 (cut), a month 216.74 x 52 / 12 = 939.20 (cut).
    const qint32 id = addEmployee(QStringLiteral("M"), QStringLiteral("2026-08-01"), QStringLiteral("60000"),
                                  {QStringLiteral("--interval"), QStringLiteral("monthly")});
    for (const char* d : {"2026-08-31", "2026-09-30", "2026-10-31"})
        pays << addPay(id, QString::fromLatin1(d));
    const QJsonObject o = finalPayOn(id, QStringLiteral("2026-10-20"), pays.last());
    EXPECT_EQ(cents(o.value("Total")), 120000);
    const QJsonObject t = o.value("Tax").toObject();
    EXPECT_EQ(t.value("FourWeeksPays").toInt(), 1);
    EXPECT_EQ(t.value("Multiplier").toInt(), 12);
    EXPECT_EQ(t.value("GrossedUp").toInt(), 61200);
    EXPECT_EQ(cents(t.value("OrdinaryPAYE")), 93920);
    EXPECT_EQ(cents(t.value("HolidayPAYE")), 38100);
    expectPaye(pays.last(), 93920 + 38100);
}

TEST_F(FinalPayTaxCodes, CreditAndTailoredCodes) {
    // ME: $52,000 a year is within the independent earner credit's full $520: (8,918 - 520) / 52 =
    // 161.50; the holiday pay as for M, 61.60.
    const qint32 me =
        finalPayOf(addEmployee(QStringLiteral("ME"), QStringLiteral("2026-09-26"), QStringLiteral("52000")));
    EXPECT_EQ(cents(tax.value("OrdinaryPAYE")), 16150);
    expectPaye(me, 16150 + 6160);
    pays.clear();
    // STC at 20% (the levy within it): the ordinary whole dollars 1,000 x 20% = 200.00; the holiday pay at
    // the certificate's rate, 320 x 20% = 64.00 (18.25% tax and the 1.75% levy), no grossing up.
    const qint32 stc =
        finalPayOf(addEmployee(QStringLiteral("STC"), QStringLiteral("2026-09-26"), QStringLiteral("52000"),
                               {QStringLiteral("--stc-rate"), QStringLiteral("20")}));
    EXPECT_TRUE(tax.value("GrossedUp").isNull());
    expectPaye(stc, 20000 + 6400);
}

TEST_F(FinalPayTaxCodes, AFinalPayMadeOnFinishingIsCommittedAfterTheFinishDateIsCleared) {
    // A finished employee leaves the wage screen with the pay: the finish date cleared, the final pay is
    // committed with its tax, and finishing again makes nothing twice.
    const qint32 id = addEmployee(QStringLiteral("M"), QStringLiteral("2026-09-26"), QStringLiteral("52000"));
    const qint32 pay = finalPayOf(id);
    const QJsonArray notes = finished.value("FinalPay").toObject().value("Notes").toArray();
    ASSERT_FALSE(notes.isEmpty());
    EXPECT_TRUE(notes.last().toString().contains(QStringLiteral("clear the finish date")))
        << notes.last().toString().toStdString();
    const CliResult cleared = cli({QStringLiteral("employee"), QStringLiteral("edit"), QString::number(id),
                                   QStringLiteral("--finish"), QString()});
    ASSERT_EQ(cleared.exitCode, 0) << cleared.err.toStdString();
    commit(pay, QStringLiteral("2026-10-23"));
    expectPaye(pay, 23310);
    const QJsonObject again = finish(id, QStringLiteral("2026-10-21"));
    EXPECT_EQ(again.value("FinalPayWageID").toInt(), pay);
    EXPECT_FALSE(again.value("FinalPayAdded").toBool());
    EXPECT_EQ(figure(QStringLiteral("SELECT count(*) FROM Wages WHERE EmployeeID = %1").arg(id)), 400);
    const QList<QStringList> ei = paydayFile(QStringLiteral("2026-10-23"));
    ASSERT_EQ(ei.size(), 2);
    EXPECT_EQ(ei[1][10], QStringLiteral("132000"));
    EXPECT_EQ(ei[1][14], QStringLiteral("23310"));
}
