// What makes an employee's details unfit to save, each problem naming its field.
#include "EmployeeStore.h"
#include "StaffLookups.h"
#include "payday/BankAccount.h"
#include "payday/IrdNumber.h"
#include "payday/PaydayTables.h"
#include <QRegularExpression>

namespace ql {

namespace {

void add(QList<FieldProblem>& list, const char* option, const QString& message) {
    list << FieldProblem{QString::fromLatin1(option), message};
}

void checkLength(QList<FieldProblem>& list, const char* option, const QString& label, const QString& value,
                 int most) {
    if (value.size() > most)
        add(list, option, QStringLiteral("%1: at most %2 characters (%3 given).").arg(label).arg(most).arg(value.size()));
}

// Contributions by a name of the table or a new one; a pay carries them only for a KiwiSaver member.
void checkContributions(Database& wage, const EmployeeDetails& d, QList<FieldProblem>& p) {
    if (d.Contributions.isEmpty()) return;
    if (!d.kiwiSaverEnrolled())
        add(p, "contribution", QStringLiteral("Employer contribution: the pays carry the employer's contributions "
                                              "only for an employee enrolled in KiwiSaver."));
    QStringList seen;
    for (const StandingDeduction& s : d.Contributions) {
        if (s.name.compare(QStringLiteral("KiwiSaver"), Qt::CaseInsensitive) == 0 ||
            (ContributionIdByName(wage, s.name) != 0 && !StandingContributionNames(wage).contains(s.name, Qt::CaseInsensitive)))
            add(p, "contribution", QStringLiteral("Employer contribution: %1 follows from the KiwiSaver choice "
                                                  "(--employer-kiwisaver).")
                                       .arg(s.name));
        else if (seen.contains(s.name.toLower()))
            add(p, "contribution", QStringLiteral("Employer contribution: %1 is given twice.").arg(s.name));
        checkLength(p, "contribution", QStringLiteral("Employer contribution"), s.name, 50);
        seen << s.name.toLower();
    }
}

} // namespace

QList<FieldProblem> EmployeeProblems(Database& wage, const EmployeeDetails& d) {
    QList<FieldProblem> p;
    if (d.FirstName.trimmed().isEmpty()) add(p, "first", QStringLiteral("First name: required."));
    if (d.LastName.trimmed().isEmpty()) add(p, "last", QStringLiteral("Last name: required."));
    checkLength(p, "first", QStringLiteral("First name"), d.FirstName, 50);
    checkLength(p, "last", QStringLiteral("Last name"), d.LastName, 50);
    checkLength(p, "address", QStringLiteral("Address"), d.Address, 100);
    checkLength(p, "city", QStringLiteral("City"), d.City, 50);
    checkLength(p, "occupation", QStringLiteral("Occupation"), d.Occupation, 50);
    static const QRegularExpression email(QStringLiteral("^[^@\\s]+@[^@\\s]+\\.[^@\\s]+$"));
    if (!d.Email.isEmpty() && !email.match(d.Email).hasMatch())
        add(p, "email", QStringLiteral("Email: \"%1\" is not an email address.").arg(d.Email));
    checkLength(p, "email", QStringLiteral("Email"), d.Email, 100);

    if (!d.DateHired.isValid()) add(p, "start", QStringLiteral("Start date: required."));
    if (d.Birthdate.isValid() && d.DateHired.isValid() && d.Birthdate >= d.DateHired)
        add(p, "birth", QStringLiteral("Date of birth: %1 is not before the start date %2.")
                            .arg(d.Birthdate.toString(Qt::ISODate), d.DateHired.toString(Qt::ISODate)));
    if (d.DateFinished.isValid() && d.DateHired.isValid() && d.DateFinished < d.DateHired)
        add(p, "finish", QStringLiteral("Finish date: %1 is before the start date %2.")
                             .arg(d.DateFinished.toString(Qt::ISODate), d.DateHired.toString(Qt::ISODate)));

    const QString code = NormalTaxCode(d.TaxCode);
    if (code.isEmpty())
        add(p, "tax-code", QStringLiteral("Tax code: required."));
    else if (!KnownTaxCodes(wage).contains(code))
        add(p, "tax-code", QStringLiteral("Tax code: \"%1\" is not a tax code. The codes are %2.")
                               .arg(d.TaxCode, KnownTaxCodes(wage).join(QStringLiteral(", "))));
    else if (IsSpecialTaxCode(code) && d.STCRate <= 0)
        add(p, "stc-rate", QStringLiteral("Special tax code rate: required with tax code %1 (the rate on the "
                                          "certificate, the levy included).")
                               .arg(code));
    if (d.IRDNumber.trimmed().isEmpty()) {
        if (code != QLatin1String("ND"))
            add(p, "ird", QStringLiteral("IRD number: required; only an employee on tax code ND may have none."));
    } else if (!IsValidIrdNumber(d.IRDNumber)) {
        add(p, "ird", QStringLiteral("IRD number: %1 fails Inland Revenue's check. Please check it.")
                          .arg(d.IRDNumber.trimmed()));
    }

    const PayIntervalChoice interval = FindPayInterval(wage, d.Interval);
    if (interval.id == 0) {
        QStringList names;
        for (const PayIntervalChoice& c : PayIntervalChoices(wage)) names << c.option;
        add(p, "interval", d.Interval.isEmpty()
                               ? QStringLiteral("Pay interval: required (%1).").arg(names.join(QStringLiteral(", ")))
                               : QStringLiteral("Pay interval: \"%1\" is not one of %2.")
                                     .arg(d.Interval, names.join(QStringLiteral(", "))));
    }
    const bool hourly = d.PayRate > Currency();
    const bool salaried = d.YearlyTotal > Currency();
    if (hourly == salaried)
        add(p, "rate", hourly ? QStringLiteral("Hourly rate and yearly salary: give one of them, not both.")
                              : QStringLiteral("Hourly rate or yearly salary: give one of them."));
    if (!d.Occupation.trimmed().isEmpty() && hourly != salaried) {
        const OccupationChoice o = FindOccupation(wage, d.Occupation);
        if (o.id != 0 && salaried && !o.salaried)
            add(p, "occupation", QStringLiteral("Occupation: %1 is paid by the hour; give an hourly rate, or choose "
                                                "an occupation paid a salary.")
                                     .arg(o.name));
        if (o.id != 0 && hourly && !o.hourly)
            add(p, "occupation", QStringLiteral("Occupation: %1 is paid a salary; give a yearly salary, or choose "
                                                "an occupation paid by the hour.")
                                     .arg(o.name));
    }
    if (d.UsualHours < 0 || d.UsualHours > 744)
        add(p, "hours", QStringLiteral("Usual hours a pay: between 0 and 744."));

    if (d.kiwiSaverEnrolled() && !KiwiSaverEmployeeRates().contains(d.KiwiSaverRate))
        add(p, "kiwisaver", QStringLiteral("KiwiSaver: the employee's rate is 3, 3.5, 4, 6, 8 or 10."));
    if (!d.KiwiSaverStatusCode.isEmpty() && !KiwiSaverStatuses().contains(d.KiwiSaverStatusCode))
        add(p, "kiwisaver-status", QStringLiteral("KiwiSaver status: \"%1\" is not one of AE (auto-enrolled), AK "
                                                  "(already a member), OK (opting in), NK (not eligible), CT "
                                                  "(casual or temporary).")
                                       .arg(d.KiwiSaverStatusCode));
    if (d.EmployerKiwiSaverRate < 0 || d.EmployerKiwiSaverRate > 100)
        add(p, "employer-kiwisaver", QStringLiteral("Employer KiwiSaver rate: between 0 and 100 (0 for the default)."));
    if (d.KiwiSaverStartDate.isValid() && d.Birthdate.isValid() && d.KiwiSaverStartDate < d.Birthdate)
        add(p, "kiwisaver-start", QStringLiteral("KiwiSaver start date: before the date of birth."));

    if (!d.Account.trimmed().isEmpty()) {
        const QString problem = BankAccountProblem(d.Account);
        if (!problem.isEmpty()) add(p, "account", QStringLiteral("Bank account: ") + problem);
    }
    if (d.AnnualLeaveDays < 0 || d.AnnualLeaveDays > 366)
        add(p, "annual-leave", QStringLiteral("Annual leave (days a year): between 0 and 366."));
    if (d.LeaveBroughtForward < -366 || d.LeaveBroughtForward > 366)
        add(p, "leave-brought-forward", QStringLiteral("Leave brought forward (days): between -366 and 366."));

    const QStringList standing = StandingDeductionNames(wage);
    QStringList seen;
    for (const StandingDeduction& s : d.Deductions) {
        bool known = false;
        for (const QString& n : standing) known = known || n.compare(s.name, Qt::CaseInsensitive) == 0;
        if (!known)
            add(p, "deduction", QStringLiteral("Deduction: \"%1\" is not one of %2.")
                                    .arg(s.name, standing.join(QStringLiteral(", "))));
        else if (seen.contains(s.name.toLower()))
            add(p, "deduction", QStringLiteral("Deduction: %1 is given twice.").arg(s.name));
        seen << s.name.toLower();
    }
    checkContributions(wage, d, p);
    return p;
}

QString ProblemText(const QList<FieldProblem>& problems) {
    QStringList lines;
    for (const FieldProblem& f : problems) lines << f.message;
    return lines.join(u'\n');
}

} // namespace ql
