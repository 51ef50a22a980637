// Every row of Inland Revenue's 2024/25 casebook input, on the shipped tax years, to the cent: PAYE with
// the levy (an extra pay not liable for the levy taken with its regular pay by the extra-pay method),
// student loan with the commissioner's extra deductions, KiwiSaver, the employer's
// contribution gross and net, ESCT, child support and the payroll giving credit. The extra student loan
// deduction (SLCIR) is compared with the casebook's upload file, the rest with its input file.
#include "payengine/IrdMethod.h"
#include "payengine/TaxYear.h"
#include <QFile>
#include <QStringList>
#include <gtest/gtest.h>
#include <cmath>
#include <iostream>
#include <map>

using namespace ql;

namespace {

// Rows left out, with the reason (the README lists them too).
const std::map<QString, const char*> kLeftOut = {};

// The commissioner's extra deductions of the casebook are at 5% (its section on SLCIR and SLBOR).
constexpr qint32 kCommissionerRate = 5000;

qint64 cents(const QString& text) {
    return text.trimmed().isEmpty() ? 0 : std::llround(text.toDouble() * 100.0);
}
qint32 thousandths(const QString& percent) {
    return qint32(std::llround(percent.toDouble() * 1000.0));
}

int paysOf(const QString& frequency) {
    if (frequency == QLatin1String("Weekly")) return 52;
    if (frequency == QLatin1String("Fortnightly")) return 26;
    if (frequency == QLatin1String("Four-weekly")) return 13;
    if (frequency == QLatin1String("Monthly")) return 12;
    return 0;
}

QList<TaxYearFigures> shippedPeriods() {
    QList<TaxYearFigures> all;
    for (const QByteArray& file : ShippedTaxYearFiles()) all += ParseTaxYear(file);
    return all;
}

// The period in force on a date. A few of the casebook's pay dates lie years past the tax year its last
// column names (typing slips of the year): those rows take the last period of the named year.
const TaxYearFigures* periodFor(const QList<TaxYearFigures>& all, QDate date, const QString& yearColumn) {
    const int endYear = yearColumn.toInt();
    const TaxYearFigures* found = nullptr;
    for (const TaxYearFigures& f : all) {
        if (f.ends.year() != endYear) continue;
        if (f.effective <= date || !found) found = &f;
    }
    return found;
}

struct ExtraLoan {
    qint64 commissioner = 0, borrower = 0;
};

// The SLCIR and SLBOR fields of the upload file's employee lines that have either, by IRD number.
std::map<QString, ExtraLoan> uploadedExtraLoans() {
    std::map<QString, ExtraLoan> found;
    QFile file(QStringLiteral(QUILLARY_SOURCE_DIR "/tests/ird_method/casebook-upload-2024-25.csv"));
    if (!file.open(QIODevice::ReadOnly)) return found;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QStringList d = QString::fromUtf8(line).trimmed().split(QLatin1Char(','));
        if (d.size() < 21 || d[0] != QLatin1String("DEI")) continue;
        const ExtraLoan e{d[19].toLongLong(), d[20].toLongLong()};
        if (e.commissioner != 0 || e.borrower != 0) found[d[1]] = e;
    }
    return found;
}

} // namespace

TEST(Casebook, EveryRowToTheCent) {
    QFile file(QStringLiteral(QUILLARY_SOURCE_DIR "/tests/ird_method/casebook-input-2024-25.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<TaxYearFigures> periods = shippedPeriods();
    ASSERT_EQ(periods.size(), 4);
    const std::map<QString, ExtraLoan> uploaded = uploadedExtraLoans();
    ASSERT_EQ(uploaded.size(), 4u);

    int rows = 0, compared = 0, leftOut = 0, figures = 0;
    for (QByteArray line : file.readAll().split('\n')) {
        if (line.startsWith("\xEF\xBB\xBF")) line = line.mid(3);
        const QStringList c = QString::fromUtf8(line).trimmed().split(QLatin1Char(','));
        if (c.size() != 29) continue;
        ++rows;
        const QString key = c[0] + QLatin1Char('/') + c[1];
        if (kLeftOut.count(key)) {
            ++leftOut;
            continue;
        }
        const QDate payDate = QDate::fromString(c[6], QStringLiteral("d/MM/yyyy"));
        ASSERT_TRUE(payDate.isValid()) << key.toStdString();
        const TaxYearFigures* f = periodFor(periods, payDate, c[28]);
        ASSERT_NE(f, nullptr) << key.toStdString();
        const ird::TaxCode code = ird::ParseTaxCode(c[3]);
        ASSERT_NE(code.kind, ird::CodeKind::Unknown) << c[3].toStdString();
        const int pays = paysOf(c[7]);
        ASSERT_GT(pays, 0) << c[7].toStdString();

        const qint64 gross = cents(c[10]);
        // Earnings not liable for the levy, other than a share scheme's, are an extra pay (a redundancy
        // payment) made with the regular pay: the regular part by the pay's own method, the extra pay by
        // the extra-pay method on the regular pays of four weeks, without the levy.
        const qint64 notLiable = cents(c[15]) == 0 ? cents(c[11]) : 0;
        const qint64 regular = gross - notLiable;
        const qint64 paye = ird::PayeCents(*f, code, regular, pays) +
                            ird::ExtraPayPayeCents(*f, code, regular * pays, notLiable, 0);
        const qint64 taxElement = ird::TaxElementCents(*f, code, gross, pays);
        const qint64 employer = ird::PercentCutCents(gross, thousandths(c[18]));
        const qint64 esct = ird::EsctCents(employer, thousandths(c[20]));
        // The upload file's line of the same employee, for the rows that ask for extra deductions.
        const bool extraLoans = c[13] == QLatin1String("Y") || cents(c[14]) != 0;
        const ExtraLoan want = extraLoans && uploaded.count(c[1]) ? uploaded.at(c[1]) : ExtraLoan{};
        const struct {
            const char* what;
            qint64 got, want;
        } checks[] = {
            {"PAYE", paye, cents(c[21])},
            {"student loan", ird::StudentLoanCents(*f, code, gross, pays), cents(c[26])},
            {"SLCIR", ird::StudentLoanCommissionerCents(*f, code, gross, pays,
                                                        c[13] == QLatin1String("Y") ? kCommissionerRate : 0),
             want.commissioner},
            {"KiwiSaver", ird::PercentCutCents(gross, thousandths(c[17])), cents(c[22])},
            {"employer contribution net of ESCT", employer - esct, cents(c[23])},
            {"ESCT", esct, cents(c[27])},
            {"child support", ird::ChildSupportCents(gross, taxElement, cents(c[16])), cents(c[24])},
            {"payroll giving credit", ird::PayrollGivingCreditCents(cents(c[19]), taxElement), cents(c[25])},
        };
        for (const auto& k : checks) {
            ++figures;
            EXPECT_EQ(k.got, k.want) << "scenario " << key.toStdString() << " " << c[3].toStdString() << " "
                                     << c[7].toStdString() << " " << c[10].toStdString() << ": " << k.what;
        }
        ++compared;
    }
    std::cout << rows << " rows, " << compared << " compared (" << figures << " figures), " << leftOut
              << " left out" << std::endl;
    EXPECT_EQ(rows, 308);
    EXPECT_EQ(compared + leftOut, rows);
}
