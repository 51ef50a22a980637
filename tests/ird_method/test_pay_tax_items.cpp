// An employee's standing tax items and an extra pay as parts of real pays, from the command line as a
// farmer types them: payroll giving with its credit, the commissioner's and the borrower's extra student
// loan deductions, an extra pay with a part not liable for the levy. Each pay's figures are checked
// against Inland Revenue's casebook rows (read from its input file) or its method, its totals against its
// lines, and the payday filing file against both.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include "payengine/IrdMethod.h"
#include "payengine/TaxYear.h"
#include <QFile>
#include <cmath>

namespace qltest {
namespace {

qint64 cents(const QString& text) {
    return text.trimmed().isEmpty() ? 0 : std::llround(text.toDouble() * 100.0);
}

// One row of the casebook input file by scenario and IRD number; empty when there is none.
QStringList casebookRow(const QString& scenario, const QString& ird) {
    QFile file(QStringLiteral(QUILLARY_SOURCE_DIR "/tests/ird_method/casebook-input-2024-25.csv"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    for (QByteArray line : file.readAll().split('\n')) {
        if (line.startsWith("\xEF\xBB\xBF")) line = line.mid(3);
        const QStringList c = QString::fromUtf8(line).trimmed().split(QLatin1Char(','));
        if (c.size() == 29 && c[0] == scenario && c[1] == ird) return c;
    }
    return {};
}

class PayTaxItemsTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(cli({QStringLiteral("init")}).exitCode, 0);
        const CliResult r = cli({QStringLiteral("employer"), QStringLiteral("--name"), QStringLiteral("Kowhai Flats"),
                                 QStringLiteral("--ird"), QStringLiteral("49-091-850"), QStringLiteral("--contact-name"),
                                 QStringLiteral("Pat Payroll"), QStringLiteral("--contact-phone"),
                                 QStringLiteral("07 871 0000"), QStringLiteral("--contact-email"),
                                 QStringLiteral("pat@kowhai.example.nz"), QStringLiteral("--account"),
                                 QStringLiteral("01-0902-0068389-00"), QStringLiteral("--address"),
                                 QStringLiteral("12 River Road"), QStringLiteral("--city"), QStringLiteral("Te Awamutu"),
                                 QStringLiteral("--postcode"), QStringLiteral("3800")});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    }
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }

    // Adds an employee and returns the id.
    qint32 addEmployee(const QString& ird, const QString& code, const QString& interval, const QString& salary,
                       const QStringList& more) {
        QStringList args{QStringLiteral("employee"), QStringLiteral("add"), QStringLiteral("--first"),
                         QStringLiteral("Casebook"), QStringLiteral("--last"), ird, QStringLiteral("--start"),
                         QStringLiteral("2024-04-01"), QStringLiteral("--tax-code"), code,
                         QStringLiteral("--interval"), interval, QStringLiteral("--salary"), salary,
                         QStringLiteral("--ird"), ird, QStringLiteral("--address"), QStringLiteral("3 Farm Lane"),
                         QStringLiteral("--city"), QStringLiteral("Te Awamutu"), QStringLiteral("--birth"),
                         QStringLiteral("1990-02-03")};
        const CliResult r = cli(args + more);
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        return r.out.section(QStringLiteral("\"EmployeeID\": "), 1).section(u',', 0, 0).trimmed().toInt();
    }
    // Adds a pay on the date and returns its WageID.
    qint32 addPay(qint32 employee, const QString& date) {
        const CliResult r = cli({QStringLiteral("add-pay"), QString::number(employee), date});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        return r.out.section(QStringLiteral("\"WageID\": "), 1).section(u',', 0, 0).trimmed().toInt();
    }
    void commit(qint32 wageID, const QString& paymentDate) {
        const CliResult r = cli({QStringLiteral("commit"), QString::number(wageID), QStringLiteral("--date"),
                                 paymentDate, QStringLiteral("--cashbook"), QStringLiteral("off"),
                                 QStringLiteral("--print"), QStringLiteral("off")});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    }
    // The payday filing file of a payment date, by line.
    QList<QStringList> paydayFile(const QString& paymentDate) {
        const QString out = docs->path() + QStringLiteral("/ei.csv");
        const CliResult r = cli({QStringLiteral("payday-file"), paymentDate, QStringLiteral("--out"), out});
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString() << r.out.toStdString();
        QFile f(out);
        QList<QStringList> lines;
        if (!f.open(QIODevice::ReadOnly)) return lines;
        for (const QString& l : QString::fromUtf8(f.readAll()).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
            lines << l.split(u',');
        return lines;
    }
    // A figure of the payroll database in cents.
    qint64 figure(const QString& sql) {
        ql::Database db;
        db.open(ql::WageFileName());
        const QVariant v = db.scalar(sql);
        db.close();
        return std::llround(v.toDouble() * 100.0);
    }
    qint64 wages(qint32 wageID, const char* column) {
        return figure(QStringLiteral("SELECT %1 FROM Wages WHERE WageID = %2").arg(QLatin1String(column)).arg(wageID));
    }
    qint64 deduction(qint32 wageID, const char* name) {
        return figure(QStringLiteral("SELECT Total(d.Deductions) FROM DeductionDetails d JOIN DeductNames n ON "
                                     "n.DeductNameID = d.DeductNameID WHERE d.WageID = %1 AND n.DeductionName = '%2'")
                          .arg(wageID)
                          .arg(QLatin1String(name)));
    }
    // The pay's totals follow its lines.
    void expectTotalsFollowLines(qint32 wageID) {
        EXPECT_EQ(wages(wageID, "Deductions"),
                  figure(QStringLiteral("SELECT Total(Deductions) FROM DeductionDetails WHERE WageID = %1").arg(wageID)));
        EXPECT_EQ(wages(wageID, "PAYE"),
                  figure(QStringLiteral("SELECT Total(PAYE) FROM TaxDetails WHERE WageID = %1").arg(wageID)));
        EXPECT_EQ(wages(wageID, "TakeHome"), wages(wageID, "TotalTaxable") - wages(wageID, "PAYE") +
                                                 wages(wageID, "NonTaxAllow") - wages(wageID, "Deductions"));
    }
};

TEST_F(PayTaxItemsTest, PayrollGivingIsALineAndItsCreditComesOffThePaye) {
    // Casebook 1.1.1: weekly $926.28 on M, KiwiSaver 3% and 3%, child support $20.99, giving $23.81.
    const QStringList row = casebookRow(QStringLiteral("1.1.1"), QStringLiteral("048125360"));
    ASSERT_EQ(row.size(), 29);
    const qint32 id = addEmployee(row[1], row[3], QStringLiteral("weekly"), QStringLiteral("48166.56"),
                                  {QStringLiteral("--kiwisaver"), row[17], QStringLiteral("--employer-kiwisaver"),
                                   row[18], QStringLiteral("--child-support"), row[16],
                                   QStringLiteral("--payroll-giving"), row[19]});
    addPay(id, QStringLiteral("2024-07-29"));
    const qint32 pay = addPay(id, QStringLiteral("2024-08-05"));
    const qint64 gross = cents(row[10]), paye = cents(row[21]), credit = cents(row[25]), giving = cents(row[19]);
    ASSERT_GT(credit, 0);
    EXPECT_EQ(wages(pay, "TotalTaxable"), gross);
    EXPECT_EQ(wages(pay, "PAYE"), paye - credit);
    EXPECT_EQ(deduction(pay, "Payroll Giving"), giving);
    EXPECT_EQ(deduction(pay, "KiwiSaver"), cents(row[22]));
    EXPECT_EQ(deduction(pay, "Child Support"), cents(row[24]));
    EXPECT_EQ(wages(pay, "ESCTDeductions"), cents(row[27]));
    // Take-home: the gross less the PAYE, with the credit back, less KiwiSaver, child support and the gift.
    EXPECT_EQ(wages(pay, "TakeHome"), gross - paye + credit - cents(row[22]) - cents(row[24]) - giving);
    expectTotalsFollowLines(pay);

    // A larger gift typed as the line's base: a fixed line, and the credit follows it.
    ASSERT_EQ(cli({QStringLiteral("edit"), QString::number(pay), QStringLiteral("5"), QStringLiteral("2"),
                   QStringLiteral("2"), QStringLiteral("30")})
                  .exitCode,
              0);
    const qint64 newCredit = ql::ird::PayrollGivingCreditCents(3000, paye);
    EXPECT_EQ(newCredit, 999);
    EXPECT_EQ(deduction(pay, "Payroll Giving"), 3000);
    EXPECT_EQ(wages(pay, "PAYE"), paye - newCredit);
    expectTotalsFollowLines(pay);
    // An amount typed over it is worked out again from the employee's standing gift, and so is the credit.
    ASSERT_EQ(cli({QStringLiteral("edit"), QString::number(pay), QStringLiteral("5"), QStringLiteral("2"),
                   QStringLiteral("4"), QStringLiteral("50")})
                  .exitCode,
              0);
    EXPECT_EQ(deduction(pay, "Payroll Giving"), giving);
    EXPECT_EQ(wages(pay, "PAYE"), paye - credit);
    expectTotalsFollowLines(pay);

    commit(pay, QStringLiteral("2024-08-07"));
    const QList<QStringList> ei = paydayFile(QStringLiteral("2024-08-07"));
    ASSERT_EQ(ei.size(), 2);
    const QStringList& d = ei[1];
    ASSERT_EQ(d.size(), 27);
    EXPECT_EQ(d[10].toLongLong(), gross);
    EXPECT_EQ(d[14].toLongLong(), paye);   // PAYE before the credit
    EXPECT_EQ(d[24].toLongLong(), credit); // tax credits for payroll donations
    EXPECT_EQ(d[16].toLongLong(), cents(row[24]));
    EXPECT_EQ(d[21].toLongLong(), cents(row[22]));
    EXPECT_EQ(d[22].toLongLong(), cents(row[23]));
    EXPECT_EQ(d[23].toLongLong(), cents(row[27]));
    const QStringList& h = ei[0];
    EXPECT_EQ(h[13].toLongLong(), paye);
    EXPECT_EQ(h[23].toLongLong(), credit);
    // Total amounts deducted: PAYE less the credit with the other deductions.
    EXPECT_EQ(h[22].toLongLong(), paye - credit + cents(row[24]) + cents(row[22]) + cents(row[23]) + cents(row[27]));
}

TEST_F(PayTaxItemsTest, ExtraStudentLoanDeductionsAreLinesOfThePayAndTheFile) {
    // Casebook 1.9.1: monthly $3,000 on M SL, the commissioner's deductions at 5% and the borrower's $80.
    const QStringList row = casebookRow(QStringLiteral("1.9.1"), QStringLiteral("048130028"));
    ASSERT_EQ(row.size(), 29);
    ASSERT_EQ(row[13], QStringLiteral("Y"));
    const qint32 id = addEmployee(row[1], row[3], QStringLiteral("monthly"), QStringLiteral("36000"),
                                  {QStringLiteral("--kiwisaver"), QStringLiteral("no"),
                                   QStringLiteral("--sl-commissioner-rate"), QStringLiteral("5"),
                                   QStringLiteral("--sl-extra"), row[14]});
    addPay(id, QStringLiteral("2024-10-20"));
    const qint32 pay = addPay(id, QStringLiteral("2024-11-20"));
    const qint64 gross = cents(row[10]), paye = cents(row[21]), loan = cents(row[26]), borrower = cents(row[14]);
    // The monthly threshold is $24,128 / 12 cut to cents; 5% of the whole dollars above it, to the cent.
    const qint64 commissioner = std::llround((300000 - 2412800 / 12) * 0.05);
    EXPECT_EQ(commissioner, 4947);
    EXPECT_EQ(wages(pay, "PAYE"), paye);
    EXPECT_EQ(deduction(pay, "Student Loan"), loan);
    EXPECT_EQ(deduction(pay, "Student Loan SLCIR"), commissioner);
    EXPECT_EQ(deduction(pay, "Student Loan SLBOR"), borrower);
    EXPECT_EQ(wages(pay, "TakeHome"), gross - paye - loan - commissioner - borrower);
    expectTotalsFollowLines(pay);

    commit(pay, QStringLiteral("2024-11-20"));
    const QList<QStringList> ei = paydayFile(QStringLiteral("2024-11-20"));
    ASSERT_EQ(ei.size(), 2);
    const QStringList& d = ei[1];
    EXPECT_EQ(d[18].toLongLong(), loan);
    EXPECT_EQ(d[19].toLongLong(), commissioner);
    EXPECT_EQ(d[20].toLongLong(), borrower);
    const QStringList& h = ei[0];
    EXPECT_EQ(h[16].toLongLong(), loan);
    EXPECT_EQ(h[17].toLongLong(), commissioner);
    EXPECT_EQ(h[18].toLongLong(), borrower);
    EXPECT_EQ(h[22].toLongLong(), paye + loan + commissioner + borrower);

    // New standing deductions typed for the employee keep the lines the tax items stand for.
    ASSERT_EQ(cli({QStringLiteral("employee"), QStringLiteral("edit"), QString::number(id), QStringLiteral("--deduction"),
                   QStringLiteral("Board=10")})
                  .exitCode,
              0);
    const qint32 next = addPay(id, QStringLiteral("2024-12-20"));
    EXPECT_EQ(deduction(next, "Board"), 1000);
    EXPECT_EQ(deduction(next, "Student Loan SLCIR"), commissioner);
    EXPECT_EQ(deduction(next, "Student Loan SLBOR"), borrower);
}

TEST_F(PayTaxItemsTest, AnExtraPayWithARedundancyPartAndStudentLoan) {
    // Inland Revenue's example: fortnightly $1,128 on M SL; a redundancy payment of $7,500 paid on its
    // own on 28 September. Four weeks' pays $2,256 x 13 = $29,328, plus $7,500: the 17.5% band; no levy
    // on a redundancy payment; student loan 12% of the whole extra pay, no threshold apart from a pay.
    const qint32 id = addEmployee(QStringLiteral("048130046"), QStringLiteral("M SL"), QStringLiteral("fortnightly"),
                                  QStringLiteral("29328"), {QStringLiteral("--kiwisaver"), QStringLiteral("no")});
    addPay(id, QStringLiteral("2024-09-13"));
    addPay(id, QStringLiteral("2024-09-27"));
    const qint64 extraPayType = figure(QStringLiteral("SELECT TaxTypeID FROM TaxTypes WHERE Taxname = 'Extra pay'")) / 100;
    const qint64 paymentName = figure(QStringLiteral("SELECT min(PaymentNameID) FROM PaymentNames")) / 100;
    ASSERT_GT(extraPayType, 0);
    const QStringList oneOff{QStringLiteral("one-off"), QString::number(id), QStringLiteral("2024-09-28"),
                             QStringLiteral("7500"), QString::number(paymentName), QString::number(extraPayType)};
    // More not liable than the amount, or a part not liable on a flat tax type, is refused.
    const CliResult tooMuch = cli(oneOff + QStringList{QStringLiteral("--not-liable-for-levy"), QStringLiteral("7600")});
    EXPECT_EQ(tooMuch.exitCode, 1);
    EXPECT_TRUE(tooMuch.err.contains(QStringLiteral("more than the amount"))) << tooMuch.err.toStdString();
    QStringList flat = oneOff;
    flat[5] = QString::number(figure(QStringLiteral("SELECT TaxTypeID FROM TaxTypes WHERE Taxname = 'SB'")) / 100);
    const CliResult onFlat = cli(flat + QStringList{QStringLiteral("--not-liable-for-levy"), QStringLiteral("10")});
    EXPECT_EQ(onFlat.exitCode, 1);
    EXPECT_EQ(figure(QStringLiteral("SELECT count(*) FROM Wages WHERE OneOff <> 0")), 0);

    const CliResult made = cli(oneOff + QStringList{QStringLiteral("--not-liable-for-levy"), QStringLiteral("7500")});
    ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
    const qint32 pay = made.out.section(QStringLiteral("\"WageID\": "), 1).section(u',', 0, 0).trimmed().toInt();
    EXPECT_EQ(wages(pay, "PAYE"), 131250);
    EXPECT_EQ(deduction(pay, "Student Loan"), 90000);
    EXPECT_EQ(wages(pay, "TakeHome"), 750000 - 131250 - 90000);
    EXPECT_EQ(wages(pay, "Deductions"), 90000);

    // A signing bonus of $10,000 before any pay: annualised nothing, the lowest rate, with the levy.
    const qint32 newcomer = addEmployee(QStringLiteral("048130054"), QStringLiteral("M"), QStringLiteral("fortnightly"),
                                        QStringLiteral("29328"), {QStringLiteral("--kiwisaver"), QStringLiteral("no")});
    const CliResult bonus = cli({QStringLiteral("one-off"), QString::number(newcomer), QStringLiteral("2024-09-28"),
                                 QStringLiteral("10000"), QString::number(paymentName), QString::number(extraPayType)});
    ASSERT_EQ(bonus.exitCode, 0) << bonus.err.toStdString();
    const qint32 bonusPay = bonus.out.section(QStringLiteral("\"WageID\": "), 1).section(u',', 0, 0).trimmed().toInt();
    EXPECT_EQ(wages(bonusPay, "PAYE"), 121000); // 10.5% + 1.6%

    commit(pay, QStringLiteral("2024-09-28"));
    commit(bonusPay, QStringLiteral("2024-09-28"));
    const QList<QStringList> ei = paydayFile(QStringLiteral("2024-09-28"));
    ASSERT_EQ(ei.size(), 3);
    for (const QStringList& d : ei.mid(1)) {
        if (d[1] == QStringLiteral("048130046")) {
            EXPECT_EQ(d[12], QStringLiteral("750000")); // not liable for the levy
            EXPECT_EQ(d[13], QStringLiteral("0"));      // not at the lowest rate
            EXPECT_EQ(d[18], QStringLiteral("90000"));
        } else {
            EXPECT_EQ(d[12], QStringLiteral("0"));
            EXPECT_EQ(d[13], QStringLiteral("1")); // lump sum at the lowest rate
            EXPECT_EQ(d[14], QStringLiteral("121000"));
        }
    }
    EXPECT_EQ(ei[0][12], QStringLiteral("750000"));
}

} // namespace
} // namespace qltest
