#include "BankFileCheck.h"
#include "BankAccount.h"
#include "PaydayText.h"
#include "RecordCheck.h"
#include <QRegularExpression>

namespace ql {

namespace {

const QString kBankWords = QStringLiteral("letters, digits, blanks and - & / ? _ .");

void text(RecordCheck& c, int position, const QString& name, int size, bool required = false) {
    c.text(position, name, size, required, IsBankCharacter, kBankWords);
}

// An account of 15 or 16 digits that passes its check; the digits, or empty.
QString account(RecordCheck& c, int position, const QString& name) {
    const QString& v = c.value(position);
    static const QRegularExpression digits(QStringLiteral("^[0-9]{15,16}$"));
    if (!digits.match(v).hasMatch()) {
        c.problem(QStringLiteral("%1 \"%2\" is not 15 or 16 digits.").arg(name, v));
        return QString();
    }
    const QString problem = BankAccountProblem(v);
    if (!problem.isEmpty()) {
        c.problem(QStringLiteral("%1 %2: %3").arg(name, v, problem));
        return QString();
    }
    return v;
}

// Cents above zero.
qint64 amount(RecordCheck& c, int position, int digits) {
    const auto a = c.number(position, QStringLiteral("Amount"), digits, true);
    if (a && *a <= 0) c.problem(QStringLiteral("Amount %1 is not above zero.").arg(*a));
    return a.value_or(0);
}

void dueNotBefore(RecordCheck& c, const QDate& due, const QDate& made) {
    if (due.isValid() && made.isValid() && due < made)
        c.problem(QStringLiteral("the due date %1 is before the day the file was made, %2.")
                      .arg(due.toString(Qt::ISODate), made.toString(Qt::ISODate)));
}

QString who(const CsvRecord& r, int namePosition) {
    const QString n = r.field(namePosition).trimmed();
    return n.isEmpty() ? QStringLiteral("no name") : n;
}

struct Sums {
    qint64 total = 0;
    int count = 0;
    QStringList accounts;
};

// The control record against the transactions.
void control(RecordCheck& c, const Sums& s, int totalAt, int totalDigits, int countAt, int countDigits, int hashAt) {
    const auto total = c.number(totalAt, QStringLiteral("Total"), totalDigits, true);
    if (total && *total != s.total)
        c.problem(QStringLiteral("Total is %1, but the transactions add up to %2.").arg(*total).arg(s.total));
    const auto count = c.number(countAt, QStringLiteral("Count"), countDigits, true);
    if (count && *count != s.count)
        c.problem(QStringLiteral("Count is %1, but the file has %2.")
                      .arg(*count)
                      .arg(Counted(s.count, QStringLiteral("transaction"), QStringLiteral("transactions"))));
    const QString hash = BankHashTotal(s.accounts);
    if (c.value(hashAt) != hash)
        c.problem(QStringLiteral("Hash total is \"%1\"; the accounts make %2.").arg(c.value(hashAt), hash));
}

// Files of a header "1", transactions "2" and a control record "3".
struct ThreeRecordLayout {
    int headerFields;
    int detailFields;
    int controlFields;
    int nameAt;
};

template <typename Header, typename Detail, typename Control>
QStringList checkThreeRecords(const QString& text, const ThreeRecordLayout& l, Header header, Detail detail,
                              Control controlRecord) {
    QStringList problems;
    const QList<CsvRecord> records = SplitCsvRecords(text, false, problems);
    if (records.isEmpty()) return problems;
    Sums sums;
    for (int i = 0; i < records.size(); ++i) {
        const CsvRecord& r = records.at(i);
        const bool first = i == 0, last = i == records.size() - 1;
        const QString type = r.field(1);
        if (first != (type == QStringLiteral("1")) || last != (type == QStringLiteral("3")) ||
            (!first && !last && type != QStringLiteral("2"))) {
            problems << QStringLiteral("Line %1: record type \"%2\" is out of place (a header 1, transactions 2, "
                                       "a control record 3).")
                            .arg(r.line)
                            .arg(type);
            continue;
        }
        if (first) {
            RecordCheck c(r, QStringLiteral("header"), problems);
            if (c.fieldCount(l.headerFields)) header(c);
        } else if (last) {
            RecordCheck c(r, QStringLiteral("control record"), problems);
            if (c.fieldCount(l.controlFields)) controlRecord(c, sums);
        } else {
            RecordCheck c(r, who(r, l.nameAt), problems);
            if (c.fieldCount(l.detailFields)) detail(c, sums);
        }
    }
    if (records.size() < 3) problems << QStringLiteral("The file has no transaction.");
    return problems;
}

QStringList checkAnz(const QString& t) {
    return checkThreeRecords(
        t, {9, 13, 4, 5},
        [](RecordCheck& c) {
            for (int p = 2; p <= 6; ++p)
                text(c, p, QStringLiteral("Header field %1").arg(p), 20);
            const QDate due = c.date(7, QStringLiteral("Batch due date"), true);
            const QDate made = c.date(8, QStringLiteral("Batch creation date"), true);
            dueNotBefore(c, due, made);
            c.empty(9, QStringLiteral("Last header field"), QStringLiteral("in this layout"));
        },
        [](RecordCheck& c, Sums& s) {
            s.accounts << account(c, 2, QStringLiteral("Account"));
            c.oneOf(3, QStringLiteral("Transaction code"), {QStringLiteral("50")}, true);
            s.total += amount(c, 4, 11);
            ++s.count;
            text(c, 5, QStringLiteral("Other party name"), 20, true);
            text(c, 6, QStringLiteral("Other party reference"), 12, true);
            text(c, 7, QStringLiteral("Other party analysis code"), 12, true);
            text(c, 8, QStringLiteral("Other party alpha reference"), 12);
            text(c, 9, QStringLiteral("Other party particulars"), 12);
            text(c, 10, QStringLiteral("Subscriber name"), 20);
            text(c, 11, QStringLiteral("Subscriber analysis code"), 12);
            text(c, 12, QStringLiteral("Subscriber reference"), 12);
            text(c, 13, QStringLiteral("Subscriber particulars"), 12);
        },
        [](RecordCheck& c, const Sums& s) { control(c, s, 2, 11, 3, 5, 4); });
}

QStringList checkAnzTransactive(const QString& t) {
    return checkThreeRecords(
        t, {16, 14, 8, 5},
        [](RecordCheck& c) {
            c.equals(2, QStringLiteral("Batch type"), QStringLiteral("C"));
            const QDate due = c.date(3, QStringLiteral("Payment date"), true);
            c.empty(4, QStringLiteral("Payment time"), QStringLiteral("for a direct credit batch"));
            const QDate made = c.date(5, QStringLiteral("Batch creation date"), true);
            dueNotBefore(c, due, made);
            account(c, 6, QStringLiteral("Funds account"));
            c.empty(7, QStringLiteral("Direct debit code"), QStringLiteral("for a direct credit batch"));
            c.oneOf(8, QStringLiteral("Reporting method"), {QStringLiteral("S"), QStringLiteral("M")}, true);
            account(c, 9, QStringLiteral("Dishonour account"));
            text(c, 10, QStringLiteral("Batch name"), 12, true);
            for (int p = 11; p <= 13; ++p)
                text(c, p, QStringLiteral("Originator field %1").arg(p), 12);
            for (int p = 14; p <= 16; ++p)
                c.empty(p, QStringLiteral("Spare field %1").arg(p), QStringLiteral("in this layout"));
        },
        [](RecordCheck& c, Sums& s) {
            s.accounts << account(c, 2, QStringLiteral("Account"));
            c.oneOf(3, QStringLiteral("Transaction code"), {QStringLiteral("50"), QStringLiteral("52")}, true);
            s.total += amount(c, 4, 11);
            ++s.count;
            text(c, 5, QStringLiteral("Other party name"), 32, true);
            for (int p = 6; p <= 11; ++p)
                text(c, p, QStringLiteral("Particulars, code or reference field %1").arg(p), 12);
            for (int p = 12; p <= 14; ++p)
                c.empty(p, QStringLiteral("Reserved field %1").arg(p), QStringLiteral("in this layout"));
        },
        [](RecordCheck& c, const Sums& s) {
            c.empty(2, QStringLiteral("Debit total"), QStringLiteral("for a direct credit batch"));
            control(c, s, 3, 11, 4, 5, 5);
            for (int p = 6; p <= 8; ++p)
                c.empty(p, QStringLiteral("Spare field %1").arg(p), QStringLiteral("in this layout"));
        });
}

QStringList checkBnz(const QString& t) {
    QString code;
    return checkThreeRecords(
        t, {9, 13, 4, 5},
        [](RecordCheck& c) {
            for (int p = 2; p <= 4; ++p)
                c.empty(p, QStringLiteral("Spare field %1").arg(p), QStringLiteral("in this layout"));
            account(c, 5, QStringLiteral("Your account"));
            c.equals(6, QStringLiteral("File type"), QStringLiteral("7"));
            const QDate due = c.date(7, QStringLiteral("Due date"), true, QStringLiteral("yyMMdd"));
            const QDate made = c.date(8, QStringLiteral("Creation date"), true, QStringLiteral("yyMMdd"));
            dueNotBefore(c, due, made);
            if (due.isValid() && made.isValid() && due > made.addYears(1))
                c.problem(QStringLiteral("the due date is more than a year after the creation date."));
            if (!c.blank(9))
                c.oneOf(9, QStringLiteral("Bulk or individual indicator"),
                        {QStringLiteral("C"), QStringLiteral("I"), QStringLiteral("O")}, false);
        },
        [&code](RecordCheck& c, Sums& s) {
            s.accounts << account(c, 2, QStringLiteral("Account"));
            c.oneOf(3, QStringLiteral("Transaction code"),
                    {QStringLiteral("50"), QStringLiteral("52"), QStringLiteral("61")}, true);
            if (code.isEmpty()) code = c.value(3);
            else if (c.value(3) != code) c.problem(QStringLiteral("the file mixes transaction codes."));
            s.total += amount(c, 4, 12);
            ++s.count;
            text(c, 5, QStringLiteral("Payee name"), 20, true);
            text(c, 6, QStringLiteral("Payee reference"), 12);
            text(c, 7, QStringLiteral("Payee code"), 12);
            c.empty(8, QStringLiteral("Alpha reference"), QStringLiteral("in this layout"));
            text(c, 9, QStringLiteral("Payee particulars"), 12);
            text(c, 10, QStringLiteral("Your name"), 20, true);
            for (int p = 11; p <= 13; ++p)
                text(c, p, QStringLiteral("Your code, reference or particulars field %1").arg(p), 12);
        },
        [](RecordCheck& c, const Sums& s) { control(c, s, 2, 12, 3, 6, 4); });
}

QStringList checkAsb(const QString& t, const QDate& made) {
    QStringList problems;
    const QList<CsvRecord> records = SplitCsvRecords(t, false, problems);
    static const QRegularExpression money(QStringLiteral("^[0-9]{1,10}\\.[0-9]{2}$"));
    for (const CsvRecord& r : records) {
        RecordCheck c(r, who(r, 12), problems);
        if (!c.fieldCount(12)) continue;
        const CsvRecord& first = records.first();
        text(c, 1, QStringLiteral("Batch name"), 20, true);
        if (c.value(1) != first.field(1) || c.value(2) != first.field(2) || c.value(3) != first.field(3))
            c.problem(QStringLiteral("batch name, date and deduction account differ from the first line's."));
        dueNotBefore(c, c.date(2, QStringLiteral("Date"), true, QStringLiteral("yyyy/MM/dd")), made);
        account(c, 3, QStringLiteral("Deduction account"));
        if (!money.match(c.value(4)).hasMatch() || c.value(4) == QStringLiteral("0.00"))
            c.problem(QStringLiteral("Amount \"%1\" is not dollars and cents above zero.").arg(c.value(4)));
        for (int p : {5, 6, 7, 9, 10, 11})
            text(c, p, QStringLiteral("Particulars, code or reference field %1").arg(p), 12);
        account(c, 8, QStringLiteral("Account"));
        text(c, 12, QStringLiteral("Payee name"), 20, true);
    }
    if (records.isEmpty() && problems.isEmpty()) problems << QStringLiteral("The file has no transaction.");
    return problems;
}

QStringList checkWestpac(const QString& t, const QDate& made) {
    QStringList problems;
    const QList<CsvRecord> records = SplitCsvRecords(t, false, problems);
    if (records.isEmpty()) return problems;
    const CsvRecord& h = records.first();
    RecordCheck hc(h, QStringLiteral("header"), problems);
    if (h.field(1) != QStringLiteral("A") || !hc.fieldCount(9)) {
        if (h.field(1) != QStringLiteral("A")) hc.problem(QStringLiteral("the file does not start with a header A."));
        return problems;
    }
    hc.equals(2, QStringLiteral("Sequence"), QStringLiteral("1"));
    hc.number(3, QStringLiteral("Bank"), 2, true);
    hc.number(4, QStringLiteral("Branch"), 4, true);
    text(hc, 5, QStringLiteral("Customer name"), 30, true);
    hc.empty(6, QStringLiteral("Field 6"), QStringLiteral("in this layout"));
    text(hc, 7, QStringLiteral("File reference"), 20);
    dueNotBefore(hc, hc.date(8, QStringLiteral("Date"), true, QStringLiteral("ddMMyy")), made);
    hc.empty(9, QStringLiteral("Field 9"), QStringLiteral("in this layout"));
    for (int i = 1; i < records.size(); ++i) {
        const CsvRecord& r = records.at(i);
        RecordCheck c(r, who(r, 10), problems);
        if (r.field(1) != QStringLiteral("D")) {
            c.problem(QStringLiteral("record type \"%1\" is not a detail D.").arg(r.field(1)));
            continue;
        }
        if (!c.fieldCount(19)) continue;
        c.equals(2, QStringLiteral("Sequence"), QString::number(i + 1));
        const QString number = c.value(3) + c.value(4) + c.value(5) + c.value(6);
        static const QRegularExpression parts(QStringLiteral("^[0-9]{2},[0-9]{4},[0-9]{7},[0-9]{3}$"));
        if (!parts.match(QStringList{c.value(3), c.value(4), c.value(5), c.value(6)}.join(u',')).hasMatch())
            c.problem(QStringLiteral("Account %1 is not bank 2, branch 4, account 7 and suffix 3 digits.").arg(number));
        else if (!IsValidBankAccount(number))
            c.problem(QStringLiteral("Account %1: %2").arg(number, BankAccountProblem(number)));
        c.equals(7, QStringLiteral("Transaction code"), QStringLiteral("52"));
        c.equals(8, QStringLiteral("Payment type"), QStringLiteral("DC"));
        amount(c, 9, 11);
        text(c, 10, QStringLiteral("Account name"), 20, true);
        for (int p = 11; p <= 13; ++p)
            text(c, p, QStringLiteral("Particulars, code or reference field %1").arg(p), 12);
        if (c.value(14) != hc.value(3) || c.value(15) != hc.value(4))
            c.problem(QStringLiteral("the paying account is not the header's bank and branch."));
        text(c, 18, QStringLiteral("Originator name"), 20, true);
        c.empty(19, QStringLiteral("Field 19"), QStringLiteral("in this layout"));
    }
    if (records.size() < 2) problems << QStringLiteral("The file has no transaction.");
    return problems;
}

} // namespace

QStringList CheckBankFile(const QString& text, BankFormat format, const QDate& made) {
    switch (format) {
    case BankFormat::Anz:
        return checkAnz(text);
    case BankFormat::AnzTransactive:
        return checkAnzTransactive(text);
    case BankFormat::Bnz:
        return checkBnz(text);
    case BankFormat::Asb:
        return checkAsb(text, made);
    case BankFormat::Westpac:
        return checkWestpac(text, made);
    case BankFormat::None:
        break;
    }
    return {QStringLiteral("The bank file has no format.")};
}

} // namespace ql
