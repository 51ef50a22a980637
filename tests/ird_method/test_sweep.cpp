// Sweeps of every shipped period against a second, separately written computation of Inland Revenue's
// method: the rates as decimal millionths, the tax of a band as "income times the rate less the
// constant of the band", intermediate figures held to six decimal places (rounded) as the
// specification asks, each cut where it says cut. Every cent of earnings from 0.01 to 10,000.00 for
// weekly, fortnightly, four-weekly and monthly pays with QUILLARY_FULL_SWEEP=1, else a stride of it;
// every code (M, ME, the flat codes with and without SL); ME across the credit's whole range.
#include "IrdReference.h"
#include "payengine/IrdMethod.h"
#include "payengine/TaxYear.h"
#include <gtest/gtest.h>
#include <cstdlib>
#include <iostream>

using namespace ql;

namespace {

constexpr int kPays[] = {52, 26, 13, 12};

bool fullSweep() {
    const char* v = std::getenv("QUILLARY_FULL_SWEEP");
    return v && *v && *v != '0';
}

QList<TaxYearFigures> shippedPeriods() {
    QList<TaxYearFigures> all;
    for (const QByteArray& file : ShippedTaxYearFiles()) all += ParseTaxYear(file);
    return all;
}

} // namespace

TEST(IrdSweep, EveryCodeEveryIntervalEveryShippedPeriod) {
    const qint64 stride = fullSweep() ? 1 : 131;
    QStringList codes{QStringLiteral("M"), QStringLiteral("ME"), QStringLiteral("M SL"), QStringLiteral("ME SL")};
    for (const QString& flat : FlatRateCodes()) {
        codes << flat;
        if (flat.startsWith(QLatin1Char('S'))) codes << flat + QStringLiteral(" SL");
    }
    for (const TaxYearFigures& f : shippedPeriods()) {
        qint64 checked = 0, differ = 0;
        for (const QString& text : codes) {
            const ird::TaxCode code = ird::ParseTaxCode(text);
            ASSERT_NE(code.kind, ird::CodeKind::Unknown) << text.toStdString();
            for (int pays : kPays) {
                for (qint64 c = 1; c <= 1000000; c += stride) {
                    const qint64 paye = ird::PayeCents(f, code, c, pays);
                    const qint64 sl = ird::StudentLoanCents(f, code, c, pays);
                    const qint64 wantPaye = irdref::paye(f, text, c, pays);
                    const qint64 wantSl = irdref::studentLoan(f, text, c, pays);
                    ++checked;
                    if ((paye != wantPaye || sl != wantSl) && ++differ <= 5)
                        ADD_FAILURE() << f.effective.toString(Qt::ISODate).toStdString() << " " << text.toStdString()
                                      << " " << pays << " pays, " << c << " cents: PAYE " << paye << " against "
                                      << wantPaye << ", SL " << sl << " against " << wantSl;
                }
            }
        }
        std::cout << f.taxYear.toStdString() << " from " << f.effective.toString(Qt::ISODate).toStdString() << ": "
                  << checked << " pays, " << differ << " differ" << std::endl;
        EXPECT_EQ(differ, 0);
    }
}

TEST(IrdSweep, MeAcrossTheCreditsRangeEveryDollar) {
    // Every yearly figure from below the credit's start to past its end, as a monthly pay whose yearly
    // figure is that many whole dollars (the pay is the yearly figure over 12, cents cut, plus what keeps
    // the product at the dollar).
    for (const TaxYearFigures& f : shippedPeriods()) {
        qint64 checked = 0, differ = 0;
        for (int pays : kPays) {
            for (qint64 annual = f.ietcFrom - 100; annual <= f.ietcTo + 100; ++annual) {
                const qint64 c = (annual * 100 + pays - 1) / pays; // the smallest pay with this yearly figure
                const ird::TaxCode me = ird::ParseTaxCode(QStringLiteral("ME"));
                ++checked;
                const qint64 got = ird::PayeCents(f, me, c, pays), want = irdref::paye(f, QStringLiteral("ME"), c, pays);
                if (got != want && ++differ <= 5)
                    ADD_FAILURE() << f.taxYear.toStdString() << " ME " << pays << " pays, " << c << ": " << got
                                  << " against " << want;
            }
        }
        std::cout << f.taxYear.toStdString() << " from " << f.effective.toString(Qt::ISODate).toStdString()
                  << ", ME across the credit: " << checked << " pays, " << differ << " differ" << std::endl;
        EXPECT_EQ(differ, 0);
    }
}

TEST(IrdSweep, PublishedWeeklyAndMonthlyCasesOf2026) {
    // The cases the template's figures must meet, on the 2026/27 year.
    const TaxYearFigures f = ParseTaxYear(ShippedTaxYearFiles().at(2)).first();
    EXPECT_EQ(ird::PayeCents(f, ird::ParseTaxCode(QStringLiteral("M")), 100000, 52), 17150);
    EXPECT_EQ(ird::PayeCents(f, ird::ParseTaxCode(QStringLiteral("M")), 30000, 52), 3675);
    EXPECT_EQ(ird::PayeCents(f, ird::ParseTaxCode(QStringLiteral("M")), 150000, 12), 19773);
    EXPECT_EQ(ird::StudentLoanCents(f, ird::ParseTaxCode(QStringLiteral("M SL")), 60000, 52), 1632);
    EXPECT_EQ(ird::PercentCutCents(46500, f.kiwiSaverEmployeeDefault), 1627);
}

TEST(IrdMethod, ExtraPayExamplesOfTheSpecification) {
    // 2024/25 figures: a weekly $1,000 with a $500 bonus grosses up to $52,500 (17.5% band of the extra
    // pay's bands), levy 1.60% on the bonus.
    const TaxYearFigures f = ParseTaxYear(ShippedTaxYearFiles().at(0)).last();
    const ird::TaxCode m = ird::ParseTaxCode(QStringLiteral("M"));
    EXPECT_EQ(ird::ExtraPayPayeCents(f, m, 400000 * 13, 50000, 50000), 15800); // 500 x (30% + 1.6%)
    // Annualised $195,000 is above the levy's maximum: no levy, 39%.
    EXPECT_EQ(ird::ExtraPayPayeCents(f, m, 1500000 * 13, 1500000, 1500000), 585000);
    // $70,000 redundancy (not liable) and $15,000 leave on $5,000 four weeks: 33% of $85,000 plus the
    // levy on the $15,000 liable.
    EXPECT_EQ(ird::ExtraPayPayeCents(f, m, 500000 * 13, 8500000, 1500000), 2805000 + 24000);
}

TEST(IrdMethod, ChildSupportKeepsSixtyPerCentOfTheNetPay) {
    // Net 803.96: at most 40% of it, 321.58, goes to child support.
    EXPECT_EQ(ird::ChildSupportCents(92356, 11960, 36071), 32158);
    EXPECT_EQ(ird::ChildSupportCents(92356, 11960, 20000), 20000);
    EXPECT_EQ(ird::ChildSupportCents(0, 0, 20000), 0);
}

TEST(IrdMethod, TaxCodesAsWritten) {
    EXPECT_TRUE(ird::ParseTaxCode(QStringLiteral("mesl")).studentLoan);
    EXPECT_EQ(ird::ParseTaxCode(QStringLiteral("MESL")).kind, ird::CodeKind::MainCredit);
    EXPECT_EQ(ird::ParseTaxCode(QStringLiteral("sb sl")).flat, QStringLiteral("SB"));
    EXPECT_EQ(ird::ParseTaxCode(QStringLiteral("ND SL")).kind, ird::CodeKind::Unknown);
    EXPECT_EQ(ird::ParseTaxCode(QStringLiteral("XX")).kind, ird::CodeKind::Unknown);
    EXPECT_EQ(ird::ParseTaxCode(QStringLiteral("CAE")).kind, ird::CodeKind::Flat);
}
