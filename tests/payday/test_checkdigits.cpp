// The IRD number and bank account rules on the examples published with them.
#include "payday/BankAccount.h"
#include "payday/IrdNumber.h"
#include <gtest/gtest.h>

using namespace ql;

TEST(IrdNumber, PublishedValidExamples) {
    EXPECT_TRUE(IsValidIrdNumber(QStringLiteral("49091850")));
    EXPECT_TRUE(IsValidIrdNumber(QStringLiteral("35901981")));
    EXPECT_TRUE(IsValidIrdNumber(QStringLiteral("49098576")));
    EXPECT_TRUE(IsValidIrdNumber(QStringLiteral("136410132")));
}

TEST(IrdNumber, PublishedInvalidExamples) {
    // A wrong check digit, and a number below the issued range.
    EXPECT_FALSE(IsValidIrdNumber(QStringLiteral("136410133")));
    EXPECT_FALSE(IsValidIrdNumber(QStringLiteral("9125568")));
}

TEST(IrdNumber, SecondWeightingWhenTheFirstGivesTen) {
    // Every base in the stretch whose first weighting gives ten takes its check digit from the second.
    int secondWeighted = 0;
    for (int base = 1000000; base < 1001000; ++base) {
        const QString b = QString::number(base).rightJustified(8, u'0');
        const int w1[] = {3, 2, 7, 6, 5, 4, 3, 2};
        const int w2[] = {7, 4, 3, 2, 5, 2, 7, 6};
        int s1 = 0, s2 = 0;
        for (int i = 0; i < 8; ++i) {
            s1 += b.at(i).digitValue() * w1[i];
            s2 += b.at(i).digitValue() * w2[i];
        }
        const int c1 = s1 % 11 == 0 ? 0 : 11 - s1 % 11;
        if (c1 != 10) continue;
        const int c2 = s2 % 11 == 0 ? 0 : 11 - s2 % 11;
        for (int d = 0; d <= 9; ++d) {
            const QString number = QString::number(base) + QString::number(d);
            EXPECT_EQ(IsValidIrdNumber(number), c2 != 10 && d == c2) << number.toStdString();
        }
        ++secondWeighted;
    }
    EXPECT_GT(secondWeighted, 0);
}

TEST(IrdNumber, RangeAndShape) {
    EXPECT_TRUE(IsValidIrdNumber(QStringLiteral("49-091-850")));
    EXPECT_TRUE(IsValidIrdNumber(QStringLiteral(" 049 091 850 ")));
    EXPECT_EQ(IrdNumberNineDigits(QStringLiteral("49-091-850")), QStringLiteral("049091850"));
    EXPECT_EQ(IrdNumberNineDigits(QStringLiteral("136410133")), QString());
    EXPECT_FALSE(IsValidIrdNumber(QString()));
    EXPECT_FALSE(IsValidIrdNumber(QStringLiteral("4909185O")));
    EXPECT_FALSE(IsValidIrdNumber(QStringLiteral("1234567890")));
    EXPECT_FALSE(IsValidIrdNumber(QStringLiteral("000000000")));
    // 150-000-001 and above lie outside the issued range, whatever their check digit.
    for (int d = 0; d <= 9; ++d)
        EXPECT_FALSE(IsValidIrdNumber(QStringLiteral("15000001") + QString::number(d)));
}

TEST(BankAccount, PublishedValidExamples) {
    // Algorithm A, D and G, as the check rules' own examples give them.
    EXPECT_EQ(BankAccountProblem(QStringLiteral("01-902-0068389-00")), QString());
    EXPECT_EQ(BankAccountProblem(QStringLiteral("08-6523-1954512-001")), QString());
    EXPECT_EQ(BankAccountProblem(QStringLiteral("26-2600-0320871-032")), QString());
    NzBankAccount a;
    ASSERT_TRUE(ParseNzBankAccount(QStringLiteral("01-902-0068389-00"), a));
    EXPECT_EQ(BankAccountAlgorithm(a), QStringLiteral("A"));
    ASSERT_TRUE(ParseNzBankAccount(QStringLiteral("08-6523-1954512-001"), a));
    EXPECT_EQ(BankAccountAlgorithm(a), QStringLiteral("D"));
    ASSERT_TRUE(ParseNzBankAccount(QStringLiteral("26-2600-0320871-032"), a));
    EXPECT_EQ(BankAccountAlgorithm(a), QStringLiteral("G"));
}

TEST(BankAccount, InvalidExamples) {
    EXPECT_FALSE(IsValidBankAccount(QStringLiteral("01-902-0068388-00")));   // check digit
    EXPECT_FALSE(IsValidBankAccount(QStringLiteral("08-6523-1954513-001"))); // check digit
    EXPECT_FALSE(IsValidBankAccount(QStringLiteral("26-2600-0320872-032"))); // check digit
    EXPECT_FALSE(IsValidBankAccount(QStringLiteral("01-9999-0068389-00")));  // branch not of the bank
    EXPECT_FALSE(IsValidBankAccount(QStringLiteral("99-0001-0068389-00")));  // no such bank
    EXPECT_FALSE(IsValidBankAccount(QStringLiteral("00-0000-0000000-00")));
    EXPECT_FALSE(IsValidBankAccount(QStringLiteral("abc")));
    EXPECT_FALSE(IsValidBankAccount(QString()));
    EXPECT_TRUE(
        BankAccountProblem(QStringLiteral("01-9999-0068389-00")).contains(QStringLiteral("Branch 9999")));
}

TEST(BankAccount, ShapesOfTyping) {
    for (const char* text : {"01-0902-0068389-00", "01 0902 0068389 000", "01.0902.0068389.00",
                             "010902006838900", "0109020068389000", "010902000683890000"}) {
        NzBankAccount a;
        ASSERT_TRUE(ParseNzBankAccount(QString::fromLatin1(text), a)) << text;
        EXPECT_EQ(a.sixteenDigits(), QStringLiteral("0109020068389000")) << text;
        EXPECT_EQ(a.eighteenDigits(), QStringLiteral("010902000683890000")) << text;
        EXPECT_EQ(a.display(), QStringLiteral("01-0902-0068389-000")) << text;
        EXPECT_TRUE(IsValidBankAccount(QString::fromLatin1(text))) << text;
    }
}

TEST(BankAccount, AlgorithmBAboveTheBaseEdge) {
    // The general rule takes B from account base 990000 on: only the base and its weights count.
    NzBankAccount a;
    a.bank = 1;
    a.branch = 902;
    a.suffix = 0;
    int found = 0;
    for (qint64 base = 990000; base < 990100; ++base) {
        a.base = base;
        EXPECT_EQ(BankAccountAlgorithm(a), QStringLiteral("B"));
        const bool b = PassesBankAlgorithm(a, u'B');
        EXPECT_EQ(IsValidBankAccount(a.display()), b);
        found += b ? 1 : 0;
    }
    EXPECT_GT(found, 0);
    a.base = 989999;
    EXPECT_EQ(BankAccountAlgorithm(a), QStringLiteral("A"));
}

TEST(BankAccount, OtherAlgorithms) {
    NzBankAccount a;
    a.bank = 31;
    a.branch = 2800;
    a.base = 1234567;
    a.suffix = 1;
    EXPECT_EQ(BankAccountAlgorithm(a), QStringLiteral("X"));
    EXPECT_TRUE(IsValidBankAccount(a.display())); // X has no check digit
    a.bank = 25;
    a.branch = 2500;
    EXPECT_EQ(BankAccountAlgorithm(a), QStringLiteral("F"));
    a.bank = 9;
    a.branch = 0;
    EXPECT_EQ(BankAccountAlgorithm(a), QStringLiteral("E"));
    // C is a weighted modulus-11 over bank, base and branch digits; no bank of the table uses it.
    a.bank = 0;
    a.branch = 0;
    a.base = 0;
    a.suffix = 0;
    EXPECT_TRUE(PassesBankAlgorithm(a, u'C'));
    a.base = 1; // weight 1 on the last base digit: sum 1, not a multiple of 11
    EXPECT_FALSE(PassesBankAlgorithm(a, u'C'));
    a.base = 11;
    EXPECT_FALSE(PassesBankAlgorithm(a, u'C')); // 2x1 + 1x1 = 3
    EXPECT_FALSE(PassesBankAlgorithm(a, u'Q'));
}

TEST(BankAccount, EveryBankOfTheTableHasItsRanges) {
    EXPECT_TRUE(IsKnownBankBranch(12, 3000));
    EXPECT_TRUE(IsKnownBankBranch(38, 9499));
    EXPECT_FALSE(IsKnownBankBranch(38, 9500));
    EXPECT_TRUE(IsKnownBankBranch(9, 0));
    EXPECT_FALSE(IsKnownBankBranch(32, 1));
}
