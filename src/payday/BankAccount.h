#pragma once
// New Zealand bank account numbers: bank (2 digits), branch (4), account base (up to 8) and suffix
// (up to 4), checked by the bank's branch ranges and its check-digit algorithm (A, B, C, D, E, F, G
// or X, with their weights and moduli).
#include <QString>

namespace ql {

struct NzBankAccount {
    int bank = 0;
    int branch = 0;
    qint64 base = 0; // account base number, up to eight digits
    int suffix = 0;  // up to four digits

    // The eighteen digits the check runs on: 2 + 4 + 8 + 4.
    QString eighteenDigits() const;
    // The sixteen digits most import files take: 2 + 4 + 7 + 3 (a base above seven digits keeps eight).
    QString sixteenDigits() const;
    // "01-0902-0068389-000", as a person writes it.
    QString display() const;
};

// Splits a typed number: four groups divided by dashes, blanks or dots, or 15 to 18 digits in one run
// (2 + 4 + 7 + 2 or 3, or 2 + 4 + 8 + 4). False when the text has no such shape.
bool ParseNzBankAccount(const QString& text, NzBankAccount& account);

// The algorithm letter for an account: by the bank, and for the banks of the general rule A below an
// account base of 990000, else B. An empty letter for a bank the table does not know.
QString BankAccountAlgorithm(const NzBankAccount& account);
// True when the eighteen digits pass the named algorithm's weighted check.
bool PassesBankAlgorithm(const NzBankAccount& account, QChar algorithm);
// True when the branch lies in one of the bank's published branch ranges.
bool IsKnownBankBranch(int bank, int branch);

// Empty when text is a valid account number; otherwise what is wrong, in the system's words.
QString BankAccountProblem(const QString& text);
inline bool IsValidBankAccount(const QString& text) {
    return BankAccountProblem(text).isEmpty();
}

} // namespace ql
