#include "BankFile.h"
#include "BankAccount.h"
#include "PaydayPays.h"
#include "PaydayTables.h"
#include "SettledFigures.h"
#include "PaydayText.h"
#include "data/FarmDetails.h"
#include "runtime/DateFns.h"

namespace ql {

namespace {

// What a line of every format carries.
struct Credit {
    NzBankAccount account;
    QString name;
    qint64 cents = 0;
    QString particulars; // on the employee's statement
    QString code;
    QString reference;
    QString payerParticulars; // on the employer's statement
    QString payerCode;
    QString payerReference;
};

struct Batch {
    NzBankAccount from;
    QString employer;
    QDate due;
    QDate created;
    QList<Credit> credits;
    qint64 total = 0;
    QString hash;
};

QString cents(qint64 c) {
    return QString::number(c);
}
QString money2(qint64 c) {
    return QStringLiteral("%1.%2").arg(c / 100).arg(c % 100, 2, 10, QChar(u'0'));
}
QString line(const QStringList& fields) {
    return fields.join(u',') + QStringLiteral("\r\n");
}

// Payroll credits use the salaries transaction code of the clearing system; ANZ's business import
// documents the standard credit only.
const QString kSalaryCode = QStringLiteral("52");
const QString kCreditCode = QStringLiteral("50");

QString ymd(const QDate& d) {
    return d.toString(QStringLiteral("yyyyMMdd"));
}

// ANZ business internet banking, "domestic extended": header 1 with the due and creation dates,
// transactions 2 of 13 fields, control 3 with total, count and hash.
QString anz(const Batch& b) {
    QString out = line({QStringLiteral("1"), QString(), QString(), QString(), QString(), QString(), ymd(b.due),
                        ymd(b.created), QString()});
    for (const Credit& c : b.credits)
        out += line({QStringLiteral("2"), c.account.sixteenDigits(), kCreditCode, cents(c.cents),
                     BankText(c.name, 20), c.reference, c.code, QString(), c.particulars,
                     BankText(b.employer, 20), c.payerCode, c.payerReference, c.payerParticulars});
    out += line({QStringLiteral("3"), cents(b.total), QString::number(b.credits.size()), b.hash});
    return out;
}

// ANZ Transactive, NZ domestic payments CSV with control record.
QString anzTransactive(const Batch& b) {
    QString out = line({QStringLiteral("1"), QStringLiteral("C"), ymd(b.due), QString(), ymd(b.created),
                        b.from.sixteenDigits(), QString(), QStringLiteral("M"), b.from.sixteenDigits(),
                        BankText(QStringLiteral("Wages"), 12), QString(), QString(), QString(), QString(),
                        QString(), QString()});
    for (const Credit& c : b.credits)
        out += line({QStringLiteral("2"), c.account.sixteenDigits(), kSalaryCode, cents(c.cents),
                     BankText(c.name, 32), c.particulars, c.code, c.reference, c.payerParticulars,
                     c.payerCode, c.payerReference, QString(), QString(), QString()});
    out += line({QStringLiteral("3"), QString(), cents(b.total), QString::number(b.credits.size()), b.hash,
                 QString(), QString(), QString()});
    return out;
}

QString bnz(const Batch& b) {
    QString out = line({QStringLiteral("1"), QString(), QString(), QString(), b.from.sixteenDigits(),
                        QStringLiteral("7"), b.due.toString(QStringLiteral("yyMMdd")),
                        b.created.toString(QStringLiteral("yyMMdd")), QString()});
    for (const Credit& c : b.credits)
        out += line({QStringLiteral("2"), c.account.sixteenDigits(), kSalaryCode, cents(c.cents),
                     BankText(c.name, 20), c.reference, c.code, QString(), c.particulars,
                     BankText(b.employer, 20), c.payerCode, c.payerReference, c.payerParticulars});
    out += line({QStringLiteral("3"), cents(b.total), QString::number(b.credits.size()), b.hash});
    return out;
}

QString asb(const Batch& b) {
    QString out;
    const QString batchName = BankText(QStringLiteral("Wages ") + ymd(b.due), 20);
    for (const Credit& c : b.credits)
        out += line({batchName, b.due.toString(QStringLiteral("yyyy/MM/dd")), b.from.sixteenDigits(),
                     money2(c.cents), c.particulars, c.code, c.reference, c.account.sixteenDigits(),
                     c.payerParticulars, c.payerCode, c.payerReference, BankText(c.name, 20)});
    return out;
}

QStringList accountParts(const NzBankAccount& a) {
    const QString d = a.sixteenDigits();
    return {d.left(2), d.mid(2, 4), d.mid(6, 7), d.mid(13, 3)};
}

QString westpac(const Batch& b) {
    const QStringList from = accountParts(b.from);
    QString out = line({QStringLiteral("A"), QStringLiteral("1"), from.at(0), from.at(1),
                        BankText(b.employer, 30), QString(), BankText(QStringLiteral("Wages"), 20),
                        b.due.toString(QStringLiteral("ddMMyy")), QString()});
    int sequence = 2;
    for (const Credit& c : b.credits) {
        QStringList f{QStringLiteral("D"), QString::number(sequence++)};
        f << accountParts(c.account);
        f << kSalaryCode << QStringLiteral("DC") << cents(c.cents) << BankText(c.name, 20) << c.particulars
          << c.code << c.reference;
        f << from;
        f << BankText(b.employer, 20) << QString();
        out += line(f);
    }
    return out;
}

} // namespace

QList<BankFormat> BankFormats() {
    return {BankFormat::Anz, BankFormat::AnzTransactive, BankFormat::Asb, BankFormat::Bnz, BankFormat::Westpac};
}

QString BankFormatCode(BankFormat format) {
    switch (format) {
    case BankFormat::Anz: return QStringLiteral("anz");
    case BankFormat::AnzTransactive: return QStringLiteral("anz-transactive");
    case BankFormat::Asb: return QStringLiteral("asb");
    case BankFormat::Bnz: return QStringLiteral("bnz");
    case BankFormat::Westpac: return QStringLiteral("westpac");
    case BankFormat::None: break;
    }
    return QString();
}

BankFormat BankFormatByName(const QString& name) {
    const QString n = name.trimmed().toLower();
    for (BankFormat f : BankFormats())
        if (n == BankFormatCode(f)) return f;
    return BankFormat::None;
}

QString BankFormatName(BankFormat format) {
    switch (format) {
    case BankFormat::Anz: return QStringLiteral("ANZ");
    case BankFormat::AnzTransactive: return QStringLiteral("ANZ Transactive");
    case BankFormat::Asb: return QStringLiteral("ASB");
    case BankFormat::Bnz: return QStringLiteral("BNZ");
    case BankFormat::Westpac: return QStringLiteral("Westpac");
    case BankFormat::None: break;
    }
    return QString();
}

BankFormat BankFormatForAccount(const QString& account) {
    NzBankAccount a;
    if (!ParseNzBankAccount(account, a)) return BankFormat::None;
    switch (a.bank) {
    case 1:
    case 4:
    case 6:
    case 11:
        return BankFormat::Anz;
    case 2:
        return BankFormat::Bnz;
    case 3:
        return BankFormat::Westpac;
    case 12:
        return BankFormat::Asb;
    default:
        return BankFormat::None;
    }
}

QString BankHashTotal(const QStringList& accounts) {
    qint64 total = 0;
    for (const QString& text : accounts) {
        NzBankAccount a;
        if (!ParseNzBankAccount(text, a)) continue;
        total += QString::number(a.branch).toLongLong() * 10000000LL + a.base % 10000000LL;
    }
    return QString::number(total).right(11).rightJustified(11, u'0');
}

BankFile MakeBankFile(Database& wage, const QDate& paymentDate, BankFormat format, QDate created, QDate due) {
    BankFile file;
    if (format == BankFormat::None) {
        file.refusal = QStringLiteral("Choose a bank file format: ANZ, ANZ Transactive, ASB, BNZ or Westpac.");
        return file;
    }
    const PaydaySettings settings = LoadPaydaySettings(wage);
    Batch b;
    if (settings.payingAccount.isEmpty() || !ParseNzBankAccount(settings.payingAccount, b.from) ||
        !IsValidBankAccount(settings.payingAccount)) {
        file.refusal = QStringLiteral("The employer's paying bank account is missing or fails its check. "
                                      "Please enter it in the payday settings first.");
        return file;
    }
    const QList<PaydayPay> pays = LoadCommittedPays(wage, paymentDate);
    if (pays.isEmpty()) {
        file.refusal =
            QStringLiteral("No committed pay was paid on %1.").arg(dateText(QVariant(paymentDate)));
        return file;
    }
    file.refusal = RefusalForUnsettledPays(wage, pays, QStringLiteral("bank file"));
    if (!file.ok()) return file;
    b.employer = GetFarmName();
    b.created = created.isValid() ? created : Today();
    b.due = due.isValid() ? due : paymentDate;
    file.due = b.due;
    if (b.due < b.created) {
        file.pastDue = true;
        file.refusal = QStringLiteral("The pay date %1 is past: a bank refuses a file whose due date is before "
                                      "the day it is made, %2. Choose today or a later day for the bank to pay.")
                           .arg(dateText(QVariant(b.due)), dateText(QVariant(b.created)));
        return file;
    }
    if (format == BankFormat::Bnz && b.due > b.created.addYears(1)) {
        file.refusal = QStringLiteral("BNZ takes a due date up to a year after the day the file is made; %1 is "
                                      "further away.")
                           .arg(dateText(QVariant(b.due)));
        return file;
    }
    QStringList accounts;
    for (const PaydayPay& p : pays) {
        const qint64 c = Cents(p.takeHome).toLongLong();
        if (c <= 0) continue;
        const QString typed = EmployeeBankAccount(wage, p.employeeID);
        Credit credit;
        if (typed.isEmpty()) {
            file.toFix << QStringLiteral("%1: no bank account").arg(p.name());
            continue;
        }
        if (!IsValidBankAccount(typed) || !ParseNzBankAccount(typed, credit.account)) {
            file.toFix << QStringLiteral("%1: bank account %2 fails its check").arg(p.name(), typed);
            continue;
        }
        credit.name = p.name();
        const QString plain = BankText(credit.name, 1000);
        if (plain != credit.name.simplified())
            file.notes << QStringLiteral("%1 is written as %2.").arg(credit.name.simplified(), plain);
        credit.cents = c;
        credit.particulars = BankText(b.employer, 12);
        credit.code = QStringLiteral("Wages");
        credit.reference = BankText(p.reference, 12);
        credit.payerParticulars = BankText(p.lastName.isEmpty() ? p.name() : p.lastName, 12);
        credit.payerReference = BankText(p.reference, 12);
        b.credits << credit;
        b.total += c;
        accounts << typed;
    }
    if (!file.toFix.isEmpty()) {
        file.refusal =
            QStringLiteral("The bank file was not written: these employees need a valid bank account "
                           "first:\n") +
            file.toFix.join(u'\n');
        return file;
    }
    if (b.credits.isEmpty()) {
        file.refusal = QStringLiteral("No pay of %1 has a take-home amount to pay.")
                           .arg(dateText(QVariant(paymentDate)));
        return file;
    }
    b.hash = BankHashTotal(accounts);
    switch (format) {
    case BankFormat::Anz:
        file.text = anz(b);
        break;
    case BankFormat::AnzTransactive:
        file.text = anzTransactive(b);
        break;
    case BankFormat::Asb:
        file.text = asb(b);
        break;
    case BankFormat::Bnz:
        file.text = bnz(b);
        break;
    case BankFormat::Westpac:
        file.text = westpac(b);
        break;
    case BankFormat::None:
        break;
    }
    file.payments = static_cast<int>(b.credits.size());
    file.totalCents = b.total;
    return file;
}

} // namespace ql
