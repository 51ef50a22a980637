// A final pay keeps its tax rule through every later edit and recalculation: its PAYE stays the ordinary
// method on its other lines plus the extra-pay method on its holiday lines, and its student loan and
// KiwiSaver follow the whole pay.
#include "FinalPayTaxFixture.h"
#include "data/Recordset.h"
#include "payengine/FinalPayTax.h"
#include "payengine/IrdMethod.h"
#include "payengine/TaxYear.h"
#include <QRandomGenerator>
#include <iostream>

using namespace qltest;
using namespace ql;

namespace {

class FinalPayTaxEdits : public FinalPayTaxTest {
protected:
    struct Line {
        int row;
        bool holiday;
        qint64 payment;
    };
    // The pay's payment lines in the order the wage screen shows them.
    QList<Line> lines(qint32 wageID) {
        ql::Database db;
        db.open(ql::WageFileName());
        QList<Line> out;
        QStringList names;
        for (const QString& n : FinalHolidayLineNames())
            names << QStringLiteral("'%1'").arg(n);
        auto rs = db.openRecordset(
            QStringLiteral("SELECT n.PayUnitname IN (%1), d.Payment FROM PaymentDetails d JOIN "
                           "PaymentNames n ON n.PaymentNameID = d.PaymentNameID WHERE d.WageID = "
                           "%2 ORDER BY d.rowid")
                .arg(names.join(QLatin1Char(',')))
                .arg(wageID),
            RecordsetType::Snapshot);
        for (int row = 0; !rs->EOF_(); rs->MoveNext(), ++row)
            out << Line{row, rs->value(0).toInt() != 0, std::llround(rs->value(1).toDouble() * 100.0)};
        rs->Close();
        db.close();
        return out;
    }
    void edit(qint32 wageID, int row, int column, const QString& text) {
        const CliResult r = cli({QStringLiteral("edit"), QString::number(wageID), QStringLiteral("1"),
                                 QString::number(row), QString::number(column), text});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    }
};

// 2026/27: bands, levy 1.75%, student loan 12% over 24,128.
TaxYearFigures year2026() {
    return ParseTaxYear(ShippedTaxYearFiles().at(2)).first();
}

} // namespace

TEST_F(FinalPayTaxEdits, InlandRevenuesExtraPayIncludedWithTheLatestPay) {
    // Inland Revenue's example of an extra pay paid with a weekly $1,000 pay (Payroll Calculations and
    // Business Rules Specification 2025 V1.3, 5.11 step 3.1; github.com/InlandRevenue/
    // File_Upload_Services-Returns-and-Information, folder "Service - Payday Filing"): four weekly pays of
    // $4,000 (the extra pay left out) x 13 = $52,000, plus the $500 extra pay = $52,500 grossed up. Here
    // the extra pay is a final pay's holiday line, typed as $500 over the computed 8% on the wage screen.
    // On the 2024/25 figures (extra pay bands 14,000 / 48,000 / 70,000 all year): 30%, levy 1.60%:
    // 500 x 31.6% = 158.00, on top of the ordinary $1,000's PAYE, which is that of the week before.
    const qint32 id = addEmployee(QStringLiteral("M"), QStringLiteral("2024-08-10"), QStringLiteral("52000"));
    QList<qint32> pays;
    for (const char* d : {"2024-08-16", "2024-08-23", "2024-08-30", "2024-09-06"})
        pays << addPay(id, QString::fromLatin1(d));
    const qint32 pay = pays.last();
    finalPayOn(id, QStringLiteral("2024-09-04"), pay);
    int holidayRow = -1;
    for (const Line& l : lines(pay))
        if (l.holiday) holidayRow = l.row;
    ASSERT_GE(holidayRow, 0);
    edit(pay, holidayRow, 4, QStringLiteral("500"));
    const qint64 ordinaryPaye = wages(pays.at(2), "PAYE");
    expectPaye(pay, ordinaryPaye + 15800);
    EXPECT_EQ(wages(pay, "TotalTaxable"), 150000);
}

TEST_F(FinalPayTaxEdits, RandomEditsKeepOrdinaryPlusExtraPay) {
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    SCOPED_TRACE(seed);
    QRandomGenerator rng(seed);
    const qint32 id =
        addEmployee(QStringLiteral("M SL"), QStringLiteral("2026-09-26"), QStringLiteral("52000"),
                    {QStringLiteral("--kiwisaver"), QStringLiteral("4")});
    QList<qint32> pays;
    for (const char* d : {"2026-10-02", "2026-10-09", "2026-10-16", "2026-10-23"})
        pays << addPay(id, QString::fromLatin1(d));
    const qint32 pay = pays.last();
    finalPayOn(id, QStringLiteral("2026-10-21"), pay);
    const TaxYearFigures f = year2026();
    const ird::TaxCode code = ird::ParseTaxCode(QStringLiteral("M SL"));

    auto check = [&](const char* after) {
        SCOPED_TRACE(after);
        qint64 holiday = 0, taxable = 0;
        for (const Line& l : lines(pay)) {
            taxable += l.payment;
            if (l.holiday) holiday += l.payment;
        }
        ASSERT_EQ(wages(pay, "TotalTaxable"), taxable);
        holiday = qBound<qint64>(0, holiday, qMax<qint64>(taxable, 0));
        const qint64 ordinary = taxable - holiday;
        // The three earlier pays of $1,000 and this pay's ordinary lines, over a year.
        const qint64 annualised = (300000 + qMax<qint64>(ordinary, 0)) * 13;
        const qint64 expected = ird::PayeCents(f, code, ordinary, 52) +
                                ird::ExtraPayPayeCents(f, code, annualised, holiday, holiday);
        expectPaye(pay, expected);
        const qint64 loan = ordinary > 0 ? ird::StudentLoanCents(f, code, taxable, 52)
                                         : ird::ExtraPayStudentLoanCents(f, code, taxable);
        EXPECT_EQ(deduction(pay, "Student Loan"), loan);
        EXPECT_EQ(deduction(pay, "KiwiSaver"), ird::PercentCutCents(taxable, 4000));
        expectTakeHomeFollows(pay);
    };
    check("the final pay");
    for (int i = 0; i < 8; ++i) {
        const QList<Line> now = lines(pay);
        ASSERT_FALSE(now.isEmpty());
        const Line l = now.at(int(rng.bounded(now.size())));
        if (l.holiday) {
            // The holiday line's amount typed over: 0.01 to 3,000.00.
            const QString amount = QString::number((1 + rng.bounded(300000)) / 100.0, 'f', 2);
            edit(pay, l.row, 4, amount);
            check(qPrintable(QStringLiteral("holiday line %1").arg(amount)));
        } else {
            // The ordinary line's units: 0 to 2 weeks in quarters.
            const QString units = QString::number(rng.bounded(9) / 4.0, 'f', 2);
            edit(pay, l.row, 2, units);
            check(qPrintable(QStringLiteral("ordinary units %1").arg(units)));
        }
    }
    // Committing settles the pay again: still the same rule.
    commit(pay, QStringLiteral("2026-10-23"));
    check("the commit");
}
