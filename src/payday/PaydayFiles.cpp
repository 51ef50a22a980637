#include "PaydayFiles.h"
#include "IrdNumber.h"
#include "PaydayFileCheck.h"
#include "PaydayPays.h"
#include "PaydayTables.h"
#include "SettledFigures.h"
#include "PaydayText.h"
#include "data/Recordset.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"
#include <QCoreApplication>
#include <QHash>
#include <QFileInfo>
#include <QTemporaryFile>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <cmath>

namespace ql {

namespace {

// Fields are separated by commas and carry only keyboard characters without quotes, brackets or
// backslashes: letters with macrons are written without them, line breaks and tabs as blanks.
QString field(const QString& value) {
    QString v;
    for (const QChar c : PlainAscii(value))
        if (IsKeyboardCharacter(c)) v += c;
    return v.simplified();
}

// A note when a name is written otherwise than stored (beyond blanks).
void noteName(PaydayFile& file, const QString& name) {
    const QString written = field(name);
    if (written != name.simplified()) file.notes << QStringLiteral("%1 is written as %2.").arg(name.simplified(), written);
}

QString ymd(const QDate& d) {
    return d.isValid() ? d.toString(QStringLiteral("yyyyMMdd")) : QString();
}

QString record(const QStringList& fields) {
    return fields.join(u',') + QStringLiteral("\r\n");
}

QString shownDate(const QDate& d) {
    return dateText(QVariant(d));
}

QString text(const QVariant& v) {
    return IsNull(v) ? QString() : CStr(v).trimmed();
}

QDate storedDate(const QVariant& v) {
    if (IsNull(v) || !IsDate(v)) return QDate();
    const QDate d = CDate(v);
    return d == QDate(1899, 12, 30) ? QDate() : d;
}

QString irdProblem(const QString& who, const QString& number) {
    if (number.trimmed().isEmpty()) return QStringLiteral("%1: no IRD number").arg(who);
    return QStringLiteral("%1: IRD number %2 fails Inland Revenue's check").arg(who, number.trimmed());
}

void refuseForIrdNumbers(PaydayFile& file, const QString& what) {
    file.text.clear();
    file.refusal = QStringLiteral("The %1 was not written: these IRD numbers fail Inland Revenue's check. "
                                  "Please correct them first:\n")
                       .arg(what) +
                   file.toFix.join(u'\n');
}

bool within(const QDate& d, const QDate& from, const QDate& to) {
    return d.isValid() && d >= from && d <= to;
}

} // namespace

QString EiTaxCode(const QString& taxCode) {
    QString code = taxCode.toUpper();
    code.remove(u' ');
    // A tailored code is filed as STC, student loan or not: the certificate sets both rates.
    if (code == QLatin1String("STCSL")) code = QStringLiteral("STC");
    return field(code);
}

QString TedTaxCode(const QString& taxCode) {
    const QString compact = EiTaxCode(taxCode);
    for (const QString& code : IrTaxCodes())
        if (QString(code).remove(u' ') == compact) return code;
    return field(taxCode.toUpper());
}

QString PayrollPackageName() {
    return QStringLiteral("Quillary %1").arg(QStringLiteral(QUILLARY_PAYDAY_VERSION));
}

QString PayCycleCode(float paysPerYear, float numberOfDays, bool oneOff) {
    if (oneOff) return QStringLiteral("AH");
    if (std::lround(numberOfDays) == 1 || paysPerYear >= 250.0f) return QStringLiteral("DA");
    switch (std::lround(paysPerYear)) {
    case 52:
        return QStringLiteral("WK");
    case 26:
        return QStringLiteral("FT");
    case 24:
        return QStringLiteral("HM");
    case 13:
        return QStringLiteral("4W");
    case 12:
        return QStringLiteral("MT");
    case 0:
        return QStringLiteral("AH");
    default:
        return QString();
    }
}

PaydayFile EmploymentInformationFile(Database& wage, const QDate& paymentDate) {
    PaydayFile file;
    const QList<PaydayPay> pays = LoadCommittedPays(wage, paymentDate);
    if (pays.isEmpty()) {
        file.refusal = QStringLiteral("No committed pay was paid on %1.").arg(shownDate(paymentDate));
        return file;
    }
    file.refusal = RefusalForUnsettledPays(wage, pays, QStringLiteral("payday filing file"));
    if (!file.ok()) return file;
    const PaydaySettings settings = LoadPaydaySettings(wage);
    const QString employerIrd = EmployerIrdNumber(wage);
    if (!IsValidIrdNumber(employerIrd)) file.toFix << irdProblem(QStringLiteral("The employer"), employerIrd);

    // The header totals are the sums of the lines as written, cent for cent.
    qint64 gross = 0, notLiable = 0, paye = 0, childSupport = 0, studentLoan = 0, slcir = 0, slbor = 0, kiwiSaver = 0,
           employerNet = 0, esct = 0, credits = 0;
    QString lines;
    for (const PaydayPay& p : pays) {
        if (!IsValidIrdNumber(p.irdNumber)) {
            file.toFix << irdProblem(p.name(), p.irdNumber);
            continue;
        }
        const QString cycle = PayCycleCode(p.paysPerYear, p.numberOfDays, p.oneOff);
        if (cycle.isEmpty()) {
            file.refusal =
                QStringLiteral("The pay interval \"%1\" of %2 has no pay cycle in the payday filing "
                               "layout.")
                    .arg(p.intervalName, p.name());
            return file;
        }
        noteName(file, p.name());
        const qint64 g = Cents(p.gross).toLongLong(), nl = Cents(p.notLiable).toLongLong(),
                     t = Cents(p.payeBeforeCredit()).toLongLong(), cs = Cents(p.childSupport).toLongLong(),
                     sl = Cents(p.studentLoan).toLongLong(), ci = Cents(p.slcir).toLongLong(),
                     bo = Cents(p.slbor).toLongLong(), ks = Cents(p.kiwiSaver).toLongLong(),
                     es = Cents(p.esct).toLongLong(), cr = Cents(p.givingCredit).toLongLong();
        // Net and ESCT add up to the contribution as the payslip shows it.
        const qint64 en = Cents(p.employerKiwiSaver).toLongLong() - es;
        lines += record({
            QStringLiteral("DEI"),
            IrdNumberNineDigits(p.irdNumber),
            field(p.name()),
            EiTaxCode(p.taxCode),
            ymd(within(p.dateHired, p.periodStart, p.payDate) ? p.dateHired : QDate()),
            ymd(within(p.dateFinished, p.periodStart, p.payDate) ? p.dateFinished : QDate()),
            ymd(p.periodStart),
            ymd(p.payDate),
            cycle,
            QString::number(std::llround(p.hours * 100.0)),
            QString::number(g),
            QStringLiteral("0"), // prior period gross adjustment
            QString::number(nl),
            p.lumpSumIndicator ? QStringLiteral("1") : QStringLiteral("0"),
            QString::number(t),
            QStringLiteral("0"), // prior period PAYE adjustment
            QString::number(cs),
            p.childSupportCode,
            QString::number(sl),
            QString::number(ci),
            QString::number(bo),
            QString::number(ks),
            QString::number(en),
            QString::number(es),
            QString::number(cr),
            QStringLiteral("0"), // family tax credits
            QStringLiteral("0"), // share scheme
        });
        ++file.lines;
        gross += g;
        notLiable += nl;
        paye += t;
        childSupport += cs;
        studentLoan += sl;
        slcir += ci;
        slbor += bo;
        credits += cr;
        kiwiSaver += ks;
        employerNet += en;
        esct += es;
    }
    if (!file.toFix.isEmpty()) {
        refuseForIrdNumbers(file, QStringLiteral("payday filing file"));
        return file;
    }
    const QString contact = PayrollContactProblem(settings.contactName, settings.contactPhone, settings.contactEmail);
    if (!contact.isEmpty() || settings.contactName.trimmed().isEmpty() || settings.contactPhone.trimmed().isEmpty() ||
        settings.contactEmail.trimmed().isEmpty()) {
        file.refusal = QStringLiteral("The payday filing file was not written: %1 Please correct the payroll "
                                      "contact in the payday settings.")
                           .arg(contact.isEmpty() ? QStringLiteral("Inland Revenue needs the payroll contact's "
                                                                   "name, phone and email.")
                                                  : contact);
        return file;
    }

    // The payroll giving credits come off the PAYE paid to Inland Revenue.
    const qint64 deducted = paye - credits + childSupport + studentLoan + slcir + slbor + kiwiSaver + employerNet + esct;
    file.text = record({
                    QStringLiteral("HEI2"),
                    IrdNumberNineDigits(employerIrd),
                    ymd(paymentDate),
                    QStringLiteral("N"), // final return
                    QStringLiteral("N"), // nil return
                    QString(),           // PAYE intermediary
                    field(settings.contactName),
                    field(settings.contactPhone),
                    field(settings.contactEmail),
                    QString::number(file.lines),
                    QString::number(gross),
                    QStringLiteral("0"), // prior period gross adjustments
                    QString::number(notLiable),
                    QString::number(paye),
                    QStringLiteral("0"), // prior period PAYE adjustments
                    QString::number(childSupport),
                    QString::number(studentLoan),
                    QString::number(slcir),
                    QString::number(slbor),
                    QString::number(kiwiSaver),
                    QString::number(employerNet),
                    QString::number(esct),
                    QString::number(deducted),
                    QString::number(credits),
                    QStringLiteral("0"), // family tax credits
                    QStringLiteral("0"),
                    field(PayrollPackageName()),
                    QStringLiteral("0001"),
                }) +
                lines;
    return file;
}

PaydayFile EmployeeDetailsFile(Database& wage, const QDate& since) {
    PaydayFile file;
    const QString from = since.toString(Qt::ISODate);
    auto rs = wage.openRecordset(
        QStringLiteral("SELECT EmployeeID, AddressID, Birthdate, DateHired, DateFinished, IRDNumber, TaxCode "
                       "FROM Employees WHERE (DateHired >= '%1' AND DateHired > '1899-12-30') "
                       "OR (DateFinished >= '%1' AND DateFinished > '1899-12-30') ORDER BY EmployeeID")
            .arg(from),
        RecordsetType::Snapshot);
    struct Row {
        qint32 employeeID;
        qint32 addressID;
        QDate birth, hired, finished;
        QString ird, taxCode;
    };
    QList<Row> rows;
    for (; !rs->EOF_(); rs->MoveNext()) {
        const QVariant address = rs->value(QStringLiteral("AddressID"));
        rows << Row{CLng(rs->value(QStringLiteral("EmployeeID"))), IsNull(address) ? 0 : CLng(address),
                    storedDate(rs->value(QStringLiteral("Birthdate"))),
                    storedDate(rs->value(QStringLiteral("DateHired"))),
                    storedDate(rs->value(QStringLiteral("DateFinished"))),
                    text(rs->value(QStringLiteral("IRDNumber"))),
                    text(rs->value(QStringLiteral("TaxCode")))};
    }
    rs->Close();
    if (rows.isEmpty()) {
        file.refusal =
            QStringLiteral("No employee started or finished on or after %1.").arg(shownDate(since));
        return file;
    }
    struct Person {
        QString first, last, street, city, email;
    };
    QHash<qint32, Person> people;
    {
        Database farm;
        farm.open(DataFileName());
        // The employee's email, where the employee editor has kept one.
        const bool hasEmail =
            !farm.firstColumn(QStringLiteral("SELECT name FROM pragma_table_info('Addresses') WHERE "
                                             "lower(name) = 'emailaddress'"))
                 .isEmpty();
        auto a =
            farm.openRecordset(QStringLiteral("SELECT AddressID, ContactFirstName, ContactLastName, BusName, "
                                              "BusAddress1, BusCity, %1 AS Email FROM Addresses")
                                   .arg(hasEmail ? QStringLiteral("EmailAddress") : QStringLiteral("NULL")),
                               RecordsetType::Snapshot);
        for (; !a->EOF_(); a->MoveNext()) {
            Person p{text(a->value(QStringLiteral("ContactFirstName"))),
                     text(a->value(QStringLiteral("ContactLastName"))),
                     text(a->value(QStringLiteral("BusAddress1"))),
                     text(a->value(QStringLiteral("BusCity"))), text(a->value(QStringLiteral("Email")))};
            if (p.first.isEmpty() && p.last.isEmpty()) p.last = text(a->value(QStringLiteral("BusName")));
            people.insert(CLng(a->value(QStringLiteral("AddressID"))), p);
        }
        a->Close();
        farm.close();
    }
    const QString employerIrd = EmployerIrdNumber(wage);
    if (!IsValidIrdNumber(employerIrd)) file.toFix << irdProblem(QStringLiteral("The employer"), employerIrd);
    QString lines;
    QStringList noStatus;
    for (const Row& r : rows) {
        const Person p = people.value(r.addressID);
        const QString name = (p.first + u' ' + p.last).trimmed();
        if (!IsValidIrdNumber(r.ird)) {
            file.toFix << irdProblem(name, r.ird);
            continue;
        }
        const bool starting = r.hired.isValid() && r.hired >= since;
        QStringList ded(41);
        ded[0] = QStringLiteral("DED");
        ded[1] = IrdNumberNineDigits(r.ird);
        ded[2] = field(name);
        ded[4] = field(p.first);
        ded[6] = field(p.last);
        ded[7] = ymd(r.birth);
        ded[8] = ymd(r.hired);
        ded[9] = ymd(r.finished.isValid() && r.finished >= since ? r.finished : QDate());
        ded[10] = starting ? QStringLiteral("NE") : QString();
        if (starting) {
            ded[11] = EmployeeKiwiSaverStatus(wage, r.employeeID);
            if (ded[11].isEmpty()) {
                noStatus << QStringLiteral("%1: no KiwiSaver status").arg(name);
                continue;
            }
        }
        noteName(file, name);
        // Only an address Inland Revenue takes; another leaves the field blank, as for one not known.
        if (!p.email.isEmpty() && PayrollContactEmailProblem(p.email).isEmpty()) ded[13] = p.email;
        if (!p.street.isEmpty() || !p.city.isEmpty()) {
            ded[20] = QStringLiteral("NZL");
            ded[26] = field(p.street);
            ded[28] = field(p.city);
        }
        lines += record(ded) + record({QStringLiteral("TED"), TedTaxCode(r.taxCode)});
        ++file.lines;
    }
    if (!file.toFix.isEmpty()) {
        refuseForIrdNumbers(file, QStringLiteral("employee details file"));
        return file;
    }
    if (!noStatus.isEmpty()) {
        file.toFix = noStatus;
        file.refusal = QStringLiteral("The employee details file was not written: a new employee's line needs "
                                      "the KiwiSaver status the employee gave (AE auto-enrolled, AK already a "
                                      "member, OK opting in, NK not eligible, CT casual or temporary). Please "
                                      "enter it for:\n") +
                       noStatus.join(u'\n');
        return file;
    }
    file.text = record({QStringLiteral("HED2"), IrdNumberNineDigits(employerIrd), field(PayrollPackageName()),
                        QString::number(file.lines)}) +
                lines;
    return file;
}

void WritePaydayFile(const QString& path, const QString& text, const QString& what, const FileCheck& check) {
    // Written beside its final name, read back and checked: only a file that passes takes the name, so
    // a file for Inland Revenue or the bank is never left half done or breaking a rule.
    const QString folder = QFileInfo(path).absolutePath();
    QTemporaryFile out(folder + QStringLiteral("/.quillary-XXXXXX.part"));
    const QByteArray bytes = text.toUtf8();
    if (!out.open() || out.write(bytes) != bytes.size() || !out.flush() || !out.seek(0))
        throw VbError(75, QStringLiteral("Payday"),
                      QStringLiteral("The file %1 could not be written: %2").arg(path, out.errorString()));
    const QStringList problems = check ? check(QString::fromUtf8(out.readAll())) : QStringList();
    if (!problems.isEmpty())
        throw VbError(5, QStringLiteral("Payday"),
                      QStringLiteral("The %1 was not written: it breaks %2 of its layout:\n")
                              .arg(what, problems.size() == 1 ? QStringLiteral("a rule") : QStringLiteral("rules")) +
                          problems.join(u'\n'));
    out.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup |
                       QFileDevice::ReadOther);
    out.close();
    if (std::rename(QFile::encodeName(out.fileName()).constData(), QFile::encodeName(path).constData()) != 0)
        throw VbError(75, QStringLiteral("Payday"),
                      QStringLiteral("The file %1 could not be written: %2").arg(path, QString::fromLocal8Bit(std::strerror(errno))));
    out.setAutoRemove(false);
}

} // namespace ql
