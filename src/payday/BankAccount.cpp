#include "BankAccount.h"
#include <QRegularExpression>
#include <array>
#include <initializer_list>
#include <utility>

namespace ql {

namespace {

struct BranchRange {
    int first;
    int last;
};

struct BankRanges {
    int bank;
    std::initializer_list<BranchRange> ranges;
};

// The bank and branch table of the published check rules.
const BankRanges kBanks[] = {
    {1, {{1, 999}, {1100, 1199}, {1800, 1899}}},
    {2, {{1, 999}, {1200, 1299}}},
    {3, {{1, 999}, {1300, 1399}, {1500, 1599}, {1700, 1799}, {1900, 1999}, {7350, 7399}}},
    {4, {{2020, 2024}}},
    {6, {{1, 999}, {1400, 1499}}},
    {8, {{6500, 6599}}},
    {9, {{0, 0}}},
    {10, {{5165, 5169}}},
    {11, {{5000, 6499}, {6600, 8999}}},
    {12, {{3000, 3299}, {3400, 3499}, {3600, 3699}}},
    {13, {{4900, 4999}}},
    {14, {{4700, 4799}}},
    {15, {{3900, 3999}}},
    {16, {{4400, 4499}}},
    {17, {{3300, 3399}}},
    {18, {{3500, 3599}}},
    {19, {{4600, 4649}}},
    {20, {{4100, 4199}}},
    {21, {{4800, 4899}}},
    {22, {{4000, 4049}}},
    {23, {{3700, 3799}}},
    {24, {{4300, 4349}}},
    {25, {{2500, 2599}}},
    {26, {{2600, 2699}}},
    {27, {{3800, 3849}}},
    {28, {{2100, 2149}}},
    {29, {{2150, 2299}}},
    {30, {{2900, 2949}}},
    {31, {{2800, 2849}}},
    {33, {{6700, 6799}}},
    {35, {{2400, 2499}}},
    {38, {{9000, 9499}}},
};

const BankRanges* findBank(int bank) {
    for (const BankRanges& b : kBanks)
        if (b.bank == bank) return &b;
    return nullptr;
}

struct Algorithm {
    char letter;
    std::array<int, 18> weights; // bank 2, branch 4, base 8, suffix 4
    int modulus;
    bool addDigits; // the digits of each product are added until one digit remains
};

const Algorithm kAlgorithms[] = {
    {'A', {0, 0, 6, 3, 7, 9, 0, 0, 10, 5, 8, 4, 2, 1, 0, 0, 0, 0}, 11, false},
    {'B', {0, 0, 0, 0, 0, 0, 0, 0, 10, 5, 8, 4, 2, 1, 0, 0, 0, 0}, 11, false},
    {'C', {3, 7, 0, 0, 0, 0, 9, 1, 10, 5, 3, 4, 2, 1, 0, 0, 0, 0}, 11, false},
    {'D', {0, 0, 0, 0, 0, 0, 0, 7, 6, 5, 4, 3, 2, 1, 0, 0, 0, 0}, 11, false},
    {'E', {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5, 4, 3, 2, 0, 0, 0, 1}, 11, true},
    {'F', {0, 0, 0, 0, 0, 0, 0, 1, 7, 3, 1, 7, 3, 1, 0, 0, 0, 0}, 10, false},
    {'G', {0, 0, 0, 0, 0, 0, 0, 1, 3, 7, 1, 3, 7, 1, 0, 3, 7, 1}, 10, true},
    {'X', {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 1, false},
};

int digitRoot(int n) {
    while (n > 9) {
        int sum = 0;
        for (; n > 0; n /= 10)
            sum += n % 10;
        n = sum;
    }
    return n;
}

bool allDigits(const QString& s) {
    for (const QChar c : s)
        if (c < u'0' || c > u'9') return false;
    return !s.isEmpty();
}

} // namespace

QString NzBankAccount::eighteenDigits() const {
    return QStringLiteral("%1%2%3%4")
        .arg(bank, 2, 10, QChar(u'0'))
        .arg(branch, 4, 10, QChar(u'0'))
        .arg(base, 8, 10, QChar(u'0'))
        .arg(suffix, 4, 10, QChar(u'0'));
}

QString NzBankAccount::sixteenDigits() const {
    return QStringLiteral("%1%2%3%4")
        .arg(bank, 2, 10, QChar(u'0'))
        .arg(branch, 4, 10, QChar(u'0'))
        .arg(base, 7, 10, QChar(u'0'))
        .arg(suffix, 3, 10, QChar(u'0'));
}

QString NzBankAccount::display() const {
    return QStringLiteral("%1-%2-%3-%4")
        .arg(bank, 2, 10, QChar(u'0'))
        .arg(branch, 4, 10, QChar(u'0'))
        .arg(base, 7, 10, QChar(u'0'))
        .arg(suffix, 3, 10, QChar(u'0'));
}

bool ParseNzBankAccount(const QString& text, NzBankAccount& account) {
    const QString t = text.trimmed();
    QStringList parts = t.split(QRegularExpression(QStringLiteral("[-. ]+")), Qt::SkipEmptyParts);
    if (parts.size() == 1) {
        const QString d = parts.at(0);
        if (!allDigits(d)) return false;
        switch (d.size()) {
        case 15:
        case 16:
            parts = {d.left(2), d.mid(2, 4), d.mid(6, 7), d.mid(13)};
            break;
        case 17:
            parts = {d.left(2), d.mid(2, 4), d.mid(6, 8), d.mid(14)};
            break;
        case 18:
            parts = {d.left(2), d.mid(2, 4), d.mid(6, 8), d.mid(14)};
            break;
        default:
            return false;
        }
    }
    if (parts.size() != 4) return false;
    const int maxima[] = {2, 4, 8, 4};
    for (int i = 0; i < 4; ++i)
        if (!allDigits(parts.at(i)) || parts.at(i).size() > maxima[i]) return false;
    account.bank = parts.at(0).toInt();
    account.branch = parts.at(1).toInt();
    account.base = parts.at(2).toLongLong();
    account.suffix = parts.at(3).toInt();
    return true;
}

QString BankAccountAlgorithm(const NzBankAccount& account) {
    if (!findBank(account.bank)) return QString();
    switch (account.bank) {
    case 8:
        return QStringLiteral("D");
    case 9:
        return QStringLiteral("E");
    case 25:
    case 33:
        return QStringLiteral("F");
    case 26:
    case 28:
    case 29:
        return QStringLiteral("G");
    case 31:
        return QStringLiteral("X");
    default:
        return account.base < 990000 ? QStringLiteral("A") : QStringLiteral("B");
    }
}

bool PassesBankAlgorithm(const NzBankAccount& account, QChar algorithm) {
    const Algorithm* found = nullptr;
    for (const Algorithm& a : kAlgorithms)
        if (QChar(QLatin1Char(a.letter)) == algorithm) found = &a;
    if (!found) return false;
    const QString digits = account.eighteenDigits();
    if (digits.size() != 18) return false;
    int sum = 0;
    for (int i = 0; i < 18; ++i) {
        const int product = digits.at(i).digitValue() * found->weights[static_cast<size_t>(i)];
        sum += found->addDigits ? digitRoot(product) : product;
    }
    return sum % found->modulus == 0;
}

bool IsKnownBankBranch(int bank, int branch) {
    const BankRanges* b = findBank(bank);
    if (!b) return false;
    for (const BranchRange& r : b->ranges)
        if (branch >= r.first && branch <= r.last) return true;
    return false;
}

QString BankAccountProblem(const QString& text) {
    NzBankAccount account;
    if (!ParseNzBankAccount(text, account))
        return QStringLiteral("\"%1\" is not a bank account number. Type it as bank-branch-account-suffix, "
                              "for example 01-0902-0068389-00.")
            .arg(text.trimmed());
    if (!findBank(account.bank))
        return QStringLiteral("%1 is not a New Zealand bank number.").arg(account.bank, 2, 10, QChar(u'0'));
    if (!IsKnownBankBranch(account.bank, account.branch))
        return QStringLiteral("Branch %1 does not belong to bank %2.")
            .arg(account.branch, 4, 10, QChar(u'0'))
            .arg(account.bank, 2, 10, QChar(u'0'));
    if (!PassesBankAlgorithm(account, BankAccountAlgorithm(account).at(0)))
        return QStringLiteral("The account number %1 fails its check digit: please check it.")
            .arg(account.display());
    return QString();
}

} // namespace ql
