// employee add|edit|show|finish|import|export: the employees of the payroll, set up from the command
// line with the rules of the employee editor. The options are the fields of staff/EmployeeFields.h;
// a refusal prints its message, exits 1 and writes nothing.
#include "CliCommand.h"
#include "HolidaySession.h"
#include "JsonRows.h"
#include "data/Database.h"
#include "data/RoundCurrency.h"
#include "payengine/EmployeeTaxItems.h"
#include "payengine/TaxItemOptions.h"
#include "payengine/TaxYear.h"
#include "frame/SettingGetters.h"
#include "holidays/FinalPayOnFinish.h"
#include "staff/EmployeeCsv.h"
#include "staff/EmployeeStore.h"
#include "staff/StaffLookups.h"
#include "runtime/VbError.h"
#include <QJsonDocument>
#include <QJsonObject>
#include <optional>

namespace {

struct Databases {
    Databases() {
        wage.open(ql::WageFileName());
        farm.open(ql::DataFileName());
    }
    ql::Database wage, farm;
};

// --option VALUE pairs from index `from`, each option of the employee fields; only a repeatable one may
// come twice.
QList<QPair<QString, QString>> fieldOptions(const QStringList& args, int from) {
    QList<QPair<QString, QString>> values;
    QStringList seen;
    for (int i = from; i < args.size(); i += 2) {
        const QString key = args.at(i).startsWith(QStringLiteral("--")) ? args.at(i).mid(2) : QString();
        const ql::EmployeeField* f = ql::FindEmployeeField(key);
        if (!f || i + 1 >= args.size() || (seen.contains(key) && !f->repeatable)) throw cli::CliUsageError();
        seen << key;
        values << qMakePair(key, args.at(i + 1));
    }
    return values;
}

// The employee's tax items (ESCT rate, child support, payroll giving, student loan special rate and
// extra deductions) are options of their own; they are taken out before the editor's fields are read.
struct TaxOptions {
    QList<QPair<QString, QString>> values;
    bool any() const { return !values.isEmpty(); }
};

QStringList takeTaxOptions(const QStringList& args, TaxOptions& taken) {
    QStringList rest;
    for (int i = 0; i < args.size(); ++i) {
        const QString key = args.at(i).startsWith(QStringLiteral("--")) ? args.at(i).mid(2) : QString();
        if (ql::FindTaxItemOption(key)) {
            if (i + 1 >= args.size()) throw cli::CliUsageError();
            for (const auto& v : taken.values)
                if (v.first == key) throw cli::CliUsageError();
            taken.values << qMakePair(key, args.at(++i));
        } else {
            rest << args.at(i);
        }
    }
    return rest;
}

// The items with the options applied; refused (nothing written) when one is wrong. The ESCT rate is
// set for the tax year in force today, as the employee editor sets it.
ql::EmployeeTaxItems applyTaxOptions(ql::Database& wage, ql::EmployeeTaxItems items, const TaxOptions& o) {
    qint32 esct = -1;
    const QString problem = ql::ApplyTaxItemValues(items, esct, o.values);
    if (!problem.isEmpty()) throw cli::CliFailure(problem);
    if (esct >= 0) ql::SetEsctRate(wage, items, esct, QDate::currentDate());
    return items;
}

QString rateJson(qint32 thousandths) {
    return thousandths > 0 ? ql::RateText(thousandths) : QStringLiteral("null");
}

qint32 employeeId(const QString& text) {
    bool ok = false;
    const qint32 id = text.toInt(&ok);
    if (!ok || id <= 0) throw cli::CliUsageError();
    return id;
}

QString number(double v) {
    return QString::number(v, 'g', 12);
}

QString date(const QDate& d) {
    return d.isValid() ? cli::jsonString(d.toString(Qt::ISODate)) : QStringLiteral("null");
}

QString json(ql::Database& wage, const ql::EmployeeDetails& d) {
    const ql::EmployeeTaxItems items = ql::LoadEmployeeTaxItems(wage, d.EmployeeID);
    QString interval;
    for (const ql::PayIntervalChoice& c : ql::PayIntervalChoices(wage))
        if (c.option == d.Interval) interval = c.name;
    auto standing = [](const QList<ql::StandingDeduction>& list) {
        QStringList out;
        for (const ql::StandingDeduction& s : list)
            out << QStringLiteral("{\"Name\": %1, \"Amount\": %2, \"Rate\": %3}")
                       .arg(cli::jsonString(s.name), s.percent ? QStringLiteral("null") : number(s.amount.toDouble()),
                            s.percent ? number(s.rate) : QStringLiteral("null"));
        return out.join(QStringLiteral(", "));
    };
    const QString kiwiSaver = d.KiwiSaver == ql::KiwiSaverStatus::Enrolled   ? QStringLiteral("enrolled")
                              : d.KiwiSaver == ql::KiwiSaverStatus::OptedOut ? QStringLiteral("opted-out")
                                                                              : QStringLiteral("no");
    QStringList lines{
        QStringLiteral("\"EmployeeID\": %1").arg(d.EmployeeID),
        QStringLiteral("\"AddressID\": %1").arg(d.AddressID),
        QStringLiteral("\"FirstName\": %1").arg(cli::jsonString(d.FirstName)),
        QStringLiteral("\"LastName\": %1").arg(cli::jsonString(d.LastName)),
        QStringLiteral("\"Address\": %1").arg(cli::jsonString(d.Address)),
        QStringLiteral("\"City\": %1").arg(cli::jsonString(d.City)),
        QStringLiteral("\"Email\": %1").arg(cli::jsonString(d.Email)),
        QStringLiteral("\"Birthdate\": %1").arg(date(d.Birthdate)),
        QStringLiteral("\"Occupation\": %1").arg(cli::jsonString(d.Occupation)),
        QStringLiteral("\"IRDNumber\": %1")
            .arg(d.IRDNumber.isEmpty() ? QStringLiteral("null") : cli::jsonString(d.IRDNumber)),
        QStringLiteral("\"TaxCode\": %1").arg(cli::jsonString(d.TaxCode)),
        QStringLiteral("\"STCRate\": %1").arg(rateJson(d.STCRate)),
        QStringLiteral("\"StudentLoan\": %1").arg(ql::HasStudentLoan(d.TaxCode) ? "true" : "false"),
        QStringLiteral("\"PayInterval\": %1").arg(cli::jsonString(interval)),
        QStringLiteral("\"PayRate\": %1").arg(d.PayRate.toFixed4()),
        QStringLiteral("\"YearlyTotal\": %1").arg(d.YearlyTotal.toFixed4()),
        QStringLiteral("\"UsualHours\": %1").arg(number(d.UsualHours)),
        QStringLiteral("\"DateHired\": %1").arg(date(d.DateHired)),
        QStringLiteral("\"DateFinished\": %1").arg(date(d.DateFinished)),
        QStringLiteral("\"KiwiSaverEnrolled\": %1").arg(d.kiwiSaverEnrolled() ? "true" : "false"),
        QStringLiteral("\"KiwiSaverStatus\": %1").arg(cli::jsonString(kiwiSaver)),
        QStringLiteral("\"KiwiSaverStatusCode\": %1")
            .arg(d.KiwiSaverStatusCode.isEmpty() ? QStringLiteral("null") : cli::jsonString(d.KiwiSaverStatusCode)),
        QStringLiteral("\"KiwiSaverRate\": %1").arg(d.kiwiSaverEnrolled() ? number(d.KiwiSaverRate) : QStringLiteral("null")),
        QStringLiteral("\"KiwiSaverStartDate\": %1").arg(date(d.kiwiSaverEnrolled() ? d.KiwiSaverStartDate : QDate())),
        QStringLiteral("\"EmployerKiwiSaverRate\": %1")
            .arg(d.kiwiSaverEnrolled() && d.EmployerKiwiSaverRate > 0 ? number(d.EmployerKiwiSaverRate)
                                                                       : QStringLiteral("null")),
        QStringLiteral("\"Account\": %1").arg(d.Account.isEmpty() ? QStringLiteral("null") : cli::jsonString(d.Account)),
        QStringLiteral("\"AnnualLeaveDays\": %1").arg(number(d.AnnualLeaveDays)),
        QStringLiteral("\"LeaveBroughtForward\": %1").arg(number(d.LeaveBroughtForward)),
        QStringLiteral("\"Deductions\": [%1]").arg(standing(d.Deductions)),
        QStringLiteral("\"Contributions\": [%1]").arg(standing(d.Contributions)),
        QStringLiteral("\"ESCTRate\": %1").arg(rateJson(items.esctRate)),
        QStringLiteral("\"ChildSupport\": %1").arg(number(items.childSupport.toDouble())),
        QStringLiteral("\"PayrollGiving\": %1").arg(number(items.payrollGiving.toDouble())),
        QStringLiteral("\"SLSpecialRate\": %1").arg(rateJson(items.slSpecialRate)),
        QStringLiteral("\"SLExtra\": %1").arg(number(items.slExtra.toDouble())),
        QStringLiteral("\"SLCommissionerRate\": %1").arg(rateJson(items.slCommissionerRate)),
    };
    return QStringLiteral("{\n  ") + lines.join(QStringLiteral(",\n  ")) + QStringLiteral("\n}\n");
}

// Applies the options to the details and saves them; every problem is the refusal's message.
qint32 applyAndSave(Databases& db, ql::EmployeeDetails& d, const QList<QPair<QString, QString>>& values) {
    const QList<ql::FieldProblem> problems = ql::ApplyEmployeeValues(d, values);
    if (!problems.isEmpty()) throw cli::CliFailure(ql::ProblemText(problems));
    return ql::SaveEmployee(db.wage, db.farm, d);
}

int add(const QStringList& args, QTextStream& out) {
    TaxOptions tax;
    const auto values = fieldOptions(takeTaxOptions(args, tax), 1);
    Databases db;
    ql::EmployeeDetails d;
    // Checked before the employee is saved, so a wrong item writes nothing.
    ql::EmployeeTaxItems items;
    if (tax.any()) items = applyTaxOptions(db.wage, items, tax);
    const qint32 id = applyAndSave(db, d, values);
    if (tax.any()) {
        items.employeeID = id;
        items.tailoredRate = ql::LoadEmployeeTaxItems(db.wage, id).tailoredRate; // saved with the employee
        ql::SaveEmployeeTaxItems(db.wage, items);
    }
    out << json(db.wage, ql::LoadEmployee(db.wage, db.farm, id));
    return 0;
}

int edit(const QStringList& args, QTextStream& out) {
    if (args.size() < 2) throw cli::CliUsageError();
    const qint32 id = employeeId(args.at(1));
    TaxOptions tax;
    const auto values = fieldOptions(takeTaxOptions(args, tax), 2);
    Databases db;
    ql::EmployeeDetails d = ql::LoadEmployee(db.wage, db.farm, id);
    ql::EmployeeTaxItems items =
        tax.any() ? applyTaxOptions(db.wage, ql::LoadEmployeeTaxItems(db.wage, id), tax) : ql::EmployeeTaxItems{};
    applyAndSave(db, d, values);
    if (tax.any()) {
        items.tailoredRate = ql::LoadEmployeeTaxItems(db.wage, id).tailoredRate; // saved with the employee
        ql::SaveEmployeeTaxItems(db.wage, items);
    } else {
        // New standing deductions keep the lines the employee's tax items stand for.
        ql::SyncStandingTaxItemLines(db.wage, ql::LoadEmployeeTaxItems(db.wage, id));
    }
    out << json(db.wage, ql::LoadEmployee(db.wage, db.farm, id));
    return 0;
}

int show(const QStringList& args, QTextStream& out) {
    if (args.size() != 2) throw cli::CliUsageError();
    const qint32 id = employeeId(args.at(1));
    Databases db;
    out << json(db.wage, ql::LoadEmployee(db.wage, db.farm, id));
    return 0;
}

int finish(const QStringList& args, QTextStream& out) {
    if (args.size() != 3) throw cli::CliUsageError();
    const qint32 id = employeeId(args.at(1));
    const QDate when = QDate::fromString(args.at(2), Qt::ISODate);
    if (!when.isValid() || args.at(2).size() != 10) throw cli::CliUsageError();
    Databases db;
    const ql::EmployeeDetails before = ql::LoadEmployee(db.wage, db.farm, id);
    // The final pay is made while the employee is still on the roster; a date the finish refuses
    // makes none, and a refused final pay finishes nobody.
    std::optional<ql::holidays::FinishedPay> made;
    if (!before.DateFinished.isValid() && before.DateHired.isValid() && when >= before.DateHired) {
        cli::HolidaySession session;
        try {
            made = ql::holidays::MakeFinalPay(id, when);
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
    }
    ql::FinishEmployee(db.wage, db.farm, id, when);
    QString text = json(db.wage, ql::LoadEmployee(db.wage, db.farm, id));
    if (made) {
        QJsonObject f = cli::finalPayJson(made->result);
        f.insert(QStringLiteral("Choice"), made->choice);
        if (made->tax) f.insert(QStringLiteral("Tax"), cli::finalPayTaxJson(*made->tax));
        const QString pay = QString::fromUtf8(QJsonDocument(f).toJson(QJsonDocument::Indented)).trimmed();
        text.chop(3); // "\n}\n"
        text += QStringLiteral(",\n  \"FinalPayWageID\": %1,\n  \"FinalPayAdded\": %2,\n  \"FinalPay\": %3\n}\n")
                    .arg(made->wageID > 0 ? QString::number(made->wageID) : QStringLiteral("null"),
                         made->added ? QStringLiteral("true") : QStringLiteral("false"),
                         QString(pay).replace(QLatin1Char('\n'), QStringLiteral("\n  ")));
    }
    out << text;
    return 0;
}

int importFile(const QStringList& args, QTextStream& out) {
    if (args.size() != 2) throw cli::CliUsageError();
    Databases db;
    const QList<qint32> ids = ql::ImportEmployees(db.wage, db.farm, args.at(1));
    QStringList list;
    for (const qint32 id : ids) list << QString::number(id);
    out << QStringLiteral("{\n  \"Imported\": %1,\n  \"EmployeeIDs\": [%2]\n}\n")
               .arg(ids.size())
               .arg(list.join(QStringLiteral(", ")));
    return 0;
}

int exportFile(const QStringList& args, QTextStream& out) {
    if (args.size() != 2) throw cli::CliUsageError();
    Databases db;
    const int n = ql::ExportEmployees(db.wage, db.farm, args.at(1));
    out << QStringLiteral("{\n  \"Exported\": %1,\n  \"File\": %2\n}\n").arg(n).arg(cli::jsonString(args.at(1)));
    return 0;
}

int employee(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const QString sub = args.first();
    if (sub == QLatin1String("add")) return add(args, out);
    if (sub == QLatin1String("edit")) return edit(args, out);
    if (sub == QLatin1String("show")) return show(args, out);
    if (sub == QLatin1String("finish")) return finish(args, out);
    if (sub == QLatin1String("import")) return importFile(args, out);
    if (sub == QLatin1String("export")) return exportFile(args, out);
    throw cli::CliUsageError();
}

const cli::CliCommand employeeCommand(
    "employee",
    "employee add --first T --last T --start YYYY-MM-DD --tax-code CODE [--stc-rate PERCENT] "
    "--interval weekly|fortnightly|four-weekly|monthly (--rate R | --salary S) [--ird N] [--birth YYYY-MM-DD] "
    "[--address T] [--city T] [--email T] [--occupation T] [--hours H] [--kiwisaver no|3|3.5|4|6|8|10] "
    ""
    "[--kiwisaver-status AE|AK|OK|NK|CT] [--kiwisaver-start YYYY-MM-DD] [--employer-kiwisaver R] [--account A] [--annual-leave DAYS] "
    "[--leave-brought-forward DAYS] [--deduction NAME=AMOUNT|NAME=RATE%]... [--contribution NAME=AMOUNT|NAME=RATE%]... [--esct-rate PERCENT] [--child-support AMOUNT] "
    "[--payroll-giving AMOUNT] [--sl-special-rate PERCENT] [--sl-extra AMOUNT] [--sl-commissioner-rate PERCENT]\n"
    "       employee edit EMPLOYEE_ID [any option of add]\n"
    "       employee show EMPLOYEE_ID\n"
    "       employee finish EMPLOYEE_ID YYYY-MM-DD\n"
    "       employee import FILE.csv\n"
    "       employee export FILE.csv",
    employee);

} // namespace
