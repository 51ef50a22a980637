#include "BankFile.h"
#include "BankAccount.h"
#include "PaydayPays.h"
#include "PaydayTables.h"
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

// Payroll credits use the salaries transaction code of the clearing system.
const QString kSalaryCode = QStringLiteral("52");

QString anz(const Batch& b) {
    QString out =
        line({QStringLiteral("1"), QStringLiteral("C"), b.due.toString(QStringLiteral("yyyyMMdd")), QString(),
              b.created.toString(QStringLiteral("yyyyMMdd")), b.from.sixteenDigits(), QString(),
              QStringLiteral("M"), b.from.sixteenDigits(), BankField(QStringLiteral("Wages"), 12), QString(),
              QString(), QString(), QString(), QString(), QString()});
    for (const Credit& c : b.credits)
        out += line({QStringLiteral("2"), c.account.sixteenDigits(), kSalaryCode, cents(c.cents),
                     BankField(c.name, 32), c.particulars, c.code, c.reference, c.payerParticulars,
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
                     BankField(c.name, 20), c.reference, c.code, QString(), c.particulars,
                     BankField(b.employer, 20), c.payerCode, c.payerReference, c.payerParticulars});
    out += line({QStringLiteral("3"), cents(b.total), QString::number(b.credits.size()), b.hash});
    return out;
}

QString asb(const Batch& b) {
    QString out;
    const QString batchName =
        BankField(QStringLiteral("Wages ") + b.due.toString(QStringLiteral("yyyyMMdd")), 20);
    for (const Credit& c : b.credits)
        out += line({batchName, b.due.toString(QStringLiteral("yyyy/MM/dd")), b.from.sixteenDigits(),
                     money2(c.cents), c.particulars, c.code, c.reference, c.account.sixteenDigits(),
                     c.payerParticulars, c.payerCode, c.payerReference, BankField(c.name, 32)});
    return out;
}

QStringList accountParts(const NzBankAccount& a) {
    const QString d = a.sixteenDigits();
    return {d.left(2), d.mid(2, 4), d.mid(6, 7), d.mid(13, 3)};
}

QString westpac(const Batch& b) {
    const QStringList from = accountParts(b.from);
    QString out = line({QStringLiteral("A"), QStringLiteral("1"), from.at(0), from.at(1),
                        BankField(b.employer, 30), QString(), BankField(QStringLiteral("Wages"), 20),
                        b.due.toString(QStringLiteral("ddMMyy")), QString()});
    int sequence = 2;
    for (const Credit& c : b.credits) {
        QStringList f{QStringLiteral("D"), QString::number(sequence++)};
        f << accountParts(c.account);
        f << kSalaryCode << QStringLiteral("DC") << cents(c.cents) << BankField(c.name, 20) << c.particulars
          << c.code << c.reference;
        f << from;
        f << BankField(b.employer, 20) << QString();
        out += line(f);
    }
    return out;
}

} // namespace

BankFormat BankFormatByName(const QString& name) {
    const QString n = name.trimmed().toLower();
    if (n == u"anz") return BankFormat::Anz;
    if (n == u"asb") return BankFormat::Asb;
    if (n == u"bnz") return BankFormat::Bnz;
    if (n == u"westpac") return BankFormat::Westpac;
    return BankFormat::None;
}

QString BankFormatName(BankFormat format) {
    switch (format) {
    case BankFormat::Anz:
        return QStringLiteral("ANZ");
    case BankFormat::Asb:
        return QStringLiteral("ASB");
    case BankFormat::Bnz:
        return QStringLiteral("BNZ");
    case BankFormat::Westpac:
        return QStringLiteral("Westpac");
    case BankFormat::None:
        break;
    }
    return QString();
}

BankFormat BankFormatForAccount(const QString& account) {
    NzBankAccount a;
    if (!ParseNzBankAccount(account, a)) return BankFormat::None;
    switch (a.bank) {
    case 1:
    case 6:
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

QString BankField(const QString& text, int length) {
    QString t;
    for (const QChar c : text) {
        if (c == u',' || c == u'"' || c == u'\r' || c == u'\n') continue;
        // The banks' files are plain ASCII.
        t += c.unicode() < 128 ? c : QChar(u'?');
    }
    return t.trimmed().left(length).trimmed();
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

BankFile MakeBankFile(Database& wage, const QDate& paymentDate, BankFormat format, QDate created) {
    BankFile file;
    if (format == BankFormat::None) {
        file.refusal = QStringLiteral("Choose a bank file format: ANZ, ASB, BNZ or Westpac.");
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
    b.employer = GetFarmName();
    b.due = paymentDate;
    b.created = created.isValid() ? created : Today();
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
        credit.cents = c;
        credit.particulars = BankField(b.employer, 12);
        credit.reference = BankField(p.reference, 12);
        credit.payerParticulars = BankField(p.lastName.isEmpty() ? p.name() : p.lastName, 12);
        credit.payerReference = BankField(p.reference, 12);
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
