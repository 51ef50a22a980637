// "Currency" of a Currency amount agrees, at random, with the same amount through the general
// digit-text rounding of "Standard", with the locale's symbol and a leading minus.
#include "runtime/Currency.h"
#include "runtime/Format.h"
#include "TestEnv.h"
#include <QRandomGenerator>
#include <gtest/gtest.h>
#include <iostream>

namespace {

TEST(CurrencyText, AgreesWithTheGeneralRoundingAtRandom) {
    qltest::LocaleGuard nz(qltest::nzLocale());
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    QRandomGenerator random(seed);
    for (int i = 0; i < 100000; ++i) {
        const qint64 raw = i % 3 == 0 ? qint64(random.bounded(-2000000, 2000000))
                           : i % 3 == 1 ? (qint64(random.bounded(-100000, 100000)) * 100 + 50)
                                        : qint64(random.generate64() >> 2) * (i % 2 ? 1 : -1);
        const ql::Currency c = ql::Currency::fromRaw(raw);
        const ql::Currency magnitude = ql::Currency::fromRaw(raw < 0 ? -raw : raw);
        const QString standard = ql::Format(QVariant::fromValue(magnitude), QStringLiteral("Standard"));
        const QString expected = (raw < 0 ? QStringLiteral("-$") : QStringLiteral("$")) + standard;
        ASSERT_EQ(ql::Format(QVariant::fromValue(c), QStringLiteral("Currency")), expected)
            << raw << " seed " << seed;
        ASSERT_EQ(ql::Format(QVariant::fromValue(c), QStringLiteral(" currency ")), expected) << raw;
    }
}

TEST(CurrencyText, HalfACentGoesAwayFromZero) {
    qltest::LocaleGuard nz(qltest::nzLocale());
    EXPECT_EQ(ql::Format(QVariant::fromValue(ql::Currency::fromRaw(12345)), QStringLiteral("Currency")),
              QStringLiteral("$1.23"));
    EXPECT_EQ(ql::Format(QVariant::fromValue(ql::Currency::fromRaw(12350)), QStringLiteral("Currency")),
              QStringLiteral("$1.24"));
    EXPECT_EQ(ql::Format(QVariant::fromValue(ql::Currency::fromRaw(-12350)), QStringLiteral("Currency")),
              QStringLiteral("-$1.24"));
    EXPECT_EQ(ql::Format(QVariant::fromValue(ql::Currency::fromRaw(-49)), QStringLiteral("Currency")),
              QStringLiteral("-$0.00"));
    EXPECT_EQ(ql::Format(QVariant::fromValue(ql::Currency::fromRaw(99999950)), QStringLiteral("Currency")),
              QStringLiteral("$10,000.00"));
}

} // namespace
