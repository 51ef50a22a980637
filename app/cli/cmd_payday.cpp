// The payday filing files for Inland Revenue, the bank's direct-credit file, and the program's own
// payday details (payroll contact, paying account, employees' bank accounts).
#include "CliCommand.h"
#include "JsonRows.h"
#include "PaySlipEmail.h"
#include "ReportCommands.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "payday/BankAccount.h"
#include "payday/BankFile.h"
#include "payday/BankFileCheck.h"
#include "payday/PayRun.h"
#include "payday/PayRunCommitter.h"
#include "payday/PayRunRecord.h"
#include "payday/PaydayFileCheck.h"
#include "payday/PaydayFiles.h"
#include "payday/PaydayTables.h"
#include "payday/PaydayText.h"
#include "payengine/AppContext.h"
#include "runtime/DateFns.h"
#include "runtime/VbError.h"
#include "startup/Startup.h"
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

class Session {
public:
    Session() {
        ql::setApp(&context);
        dialogs.setEcho([](const QString& line) { cli::err() << line << "\n"; });
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
        ql::OpenWageDatabase();
    }
    ~Session() {
        ql::CloseWageDatabase();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    ql::Database& wage() { return context.WageDatabase; }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

QDate dateArgument(const QString& text) {
    const QDate d = QDate::fromString(text, Qt::ISODate);
    if (!d.isValid() || text.size() != 10) throw cli::CliUsageError();
    return d;
}

// Options of the form --name VALUE, each at most once; anything else is wrong usage.
QHash<QString, QString> options(const QStringList& args, int from, const QStringList& allowed) {
    QHash<QString, QString> o;
    for (int i = from; i < args.size(); i += 2) {
        const QString key = args.at(i);
        if (!key.startsWith(QStringLiteral("--")) || !allowed.contains(key.mid(2)) || i + 1 >= args.size() ||
            o.contains(key.mid(2)))
            throw cli::CliUsageError();
        o.insert(key.mid(2), args.at(i + 1));
    }
    return o;
}

void write(const QString& path, const QString& text, const QString& what, const ql::FileCheck& check) {
    try {
        ql::WritePaydayFile(path, text, what, check);
    } catch (const ql::VbError& e) {
        throw cli::CliFailure(e.description());
    }
}

// Names written otherwise than stored, on standard error so that the result line stays one line.
void tellNotes(const QStringList& notes) {
    for (const QString& n : notes)
        cli::err() << n << "\n";
}

int paydayFile(const QStringList& args, QTextStream& out) {
    if (args.size() != 3) throw cli::CliUsageError();
    const QDate date = dateArgument(args.at(0));
    const auto o = options(args, 1, {QStringLiteral("out")});
    if (!o.contains(QStringLiteral("out"))) throw cli::CliUsageError();
    Session session;
    const ql::PaydayFile file = ql::EmploymentInformationFile(session.wage(), date);
    if (!file.ok()) throw cli::CliFailure(file.refusal);
    write(o.value(QStringLiteral("out")), file.text, QStringLiteral("payday filing file"),
          ql::CheckEmploymentInformationFile);
    tellNotes(file.notes);
    out << QStringLiteral("%1: %2\n")
               .arg(o.value(QStringLiteral("out")),
                    ql::Counted(file.lines, QStringLiteral("employee line"), QStringLiteral("employee lines")));
    return 0;
}

int employeeDetailsFile(const QStringList& args, QTextStream& out) {
    const auto o = options(args, 0, {QStringLiteral("since"), QStringLiteral("out")});
    if (!o.contains(QStringLiteral("since")) || !o.contains(QStringLiteral("out")))
        throw cli::CliUsageError();
    const QDate since = dateArgument(o.value(QStringLiteral("since")));
    Session session;
    const ql::PaydayFile file = ql::EmployeeDetailsFile(session.wage(), since);
    if (!file.ok()) throw cli::CliFailure(file.refusal);
    write(o.value(QStringLiteral("out")), file.text, QStringLiteral("employee details file"),
          ql::CheckEmployeeDetailsFile);
    tellNotes(file.notes);
    out << QStringLiteral("%1: %2\n")
               .arg(o.value(QStringLiteral("out")),
                    ql::Counted(file.lines, QStringLiteral("employee"), QStringLiteral("employees")));
    return 0;
}

int bankFile(const QStringList& args, QTextStream& out) {
    if (args.size() != 5 && args.size() != 7) throw cli::CliUsageError();
    const QDate date = dateArgument(args.at(0));
    const auto o = options(args, 1, {QStringLiteral("format"), QStringLiteral("out"), QStringLiteral("date")});
    if (!o.contains(QStringLiteral("format")) || !o.contains(QStringLiteral("out"))) throw cli::CliUsageError();
    const QString typed = o.value(QStringLiteral("format"));
    ql::BankFormat format = ql::BankFormatByName(typed);
    // A format of no name is wrong usage, whatever the files hold.
    if (format == ql::BankFormat::None && typed.compare(QStringLiteral("auto"), Qt::CaseInsensitive) != 0)
        throw cli::CliUsageError();
    // The day the bank pays: the pay date unless --date names today or another day.
    QDate due;
    if (o.contains(QStringLiteral("date")))
        due = o.value(QStringLiteral("date")).compare(QStringLiteral("today"), Qt::CaseInsensitive) == 0
                  ? ql::Today()
                  : dateArgument(o.value(QStringLiteral("date")));
    Session session;
    if (typed.compare(QStringLiteral("auto"), Qt::CaseInsensitive) == 0) {
        format = ql::BankFormatForAccount(ql::LoadPaydaySettings(session.wage()).payingAccount);
        if (format == ql::BankFormat::None)
            throw cli::CliFailure(QStringLiteral("The paying account's bank has no bank file format here: choose "
                                                 "anz, anz-transactive, asb, bnz or westpac, whichever your "
                                                 "bank's import takes."));
    }
    if (format == ql::BankFormat::None) throw cli::CliUsageError();
    const QDate made = ql::Today();
    const ql::BankFile file = ql::MakeBankFile(session.wage(), date, format, made, due);
    if (file.pastDue)
        throw cli::CliFailure(file.refusal + QStringLiteral(" Run again with --date today to have the bank pay "
                                                           "today, or --date YYYY-MM-DD for a later day."));
    if (!file.ok()) throw cli::CliFailure(file.refusal);
    write(o.value(QStringLiteral("out")), file.text, QStringLiteral("bank file"),
          [format, made](const QString& text) { return ql::CheckBankFile(text, format, made); });
    tellNotes(file.notes);
    out << QStringLiteral("%1: %2, %3.%4 in total, %5 format, due %6\n")
               .arg(o.value(QStringLiteral("out")),
                    ql::Counted(file.payments, QStringLiteral("payment"), QStringLiteral("payments")))
               .arg(file.totalCents / 100)
               .arg(file.totalCents % 100, 2, 10, QChar(u'0'))
               .arg(ql::BankFormatName(format), file.due.toString(Qt::ISODate));
    return 0;
}

QString settingsJson(const ql::PaydaySettings& s) {
    return QStringLiteral(
               "{\"ContactName\": %1, \"ContactPhone\": %2, \"ContactEmail\": %3, \"EmployerIRD\": %4, "
               "\"PayingAccount\": %5, \"LastDetailsFile\": %6}\n")
        .arg(cli::jsonString(s.contactName), cli::jsonString(s.contactPhone), cli::jsonString(s.contactEmail),
             cli::jsonString(s.employerIrd), cli::jsonString(s.payingAccount),
             s.lastDetailsFile.isValid() ? cli::jsonString(s.lastDetailsFile.toString(Qt::ISODate))
                                         : QStringLiteral("null"));
}

int paydaySettings(const QStringList& args, QTextStream& out) {
    const auto o = options(args, 0,
                           {QStringLiteral("name"), QStringLiteral("phone"), QStringLiteral("email"),
                            QStringLiteral("ird"), QStringLiteral("account")});
    Session session;
    ql::PaydaySettings s = ql::LoadPaydaySettings(session.wage());
    if (!o.isEmpty()) {
        s.contactName = o.value(QStringLiteral("name"), s.contactName);
        s.contactPhone = o.value(QStringLiteral("phone"), s.contactPhone);
        s.contactEmail = o.value(QStringLiteral("email"), s.contactEmail);
        s.employerIrd = o.value(QStringLiteral("ird"), s.employerIrd);
        s.payingAccount = o.value(QStringLiteral("account"), s.payingAccount);
        const QString problem = ql::PaydaySettingsProblem(s);
        if (!problem.isEmpty()) throw cli::CliFailure(problem);
        ql::SavePaydaySettings(session.wage(), s);
    }
    out << settingsJson(s);
    return 0;
}

int bankAccount(const QStringList& args, QTextStream& out) {
    if (args.isEmpty() || args.size() > 2) throw cli::CliUsageError();
    bool ok = false;
    const qint32 employeeID = args.at(0).toInt(&ok);
    if (!ok) throw cli::CliUsageError();
    Session session;
    if (args.size() == 2) {
        try {
            ql::SetEmployeeBankAccount(session.wage(), employeeID, args.at(1));
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
    }
    out << cli::jsonString(ql::EmployeeBankAccount(session.wage(), employeeID)) << "\n";
    return 0;
}

int kiwiSaverStatus(const QStringList& args, QTextStream& out) {
    if (args.isEmpty() || args.size() > 2) throw cli::CliUsageError();
    bool ok = false;
    const qint32 employeeID = args.at(0).toInt(&ok);
    if (!ok) throw cli::CliUsageError();
    Session session;
    if (args.size() == 2) {
        try {
            ql::SetEmployeeKiwiSaverStatus(session.wage(), employeeID, args.at(1));
        } catch (const ql::VbError& e) {
            throw cli::CliFailure(e.description());
        }
    }
    out << cli::jsonString(ql::EmployeeKiwiSaverStatus(session.wage(), employeeID)) << "\n";
    return 0;
}

QString dateJson(const QDate& d) {
    return d.isValid() ? cli::jsonString(d.toString(Qt::ISODate)) : QStringLiteral("null");
}

QString payRunJson(const QDate& runDate, const QList<ql::PayRunItem>& items, const QStringList& failures) {
    QStringList pays;
    for (const ql::PayRunItem& i : items)
        pays << QStringLiteral("    {\"EmployeeID\": %1, \"Name\": %2, \"WageID\": %3, \"Date\": %4, "
                               "\"PeriodStart\": %5, "
                               "\"Interval\": %6, \"Reference\": %7, \"Gross\": %8, \"PAYE\": %9, "
                               "\"NonTaxAllow\": %10, \"Deductions\": %11, \"TakeHome\": %12}")
                    .arg(QString::number(i.employeeID), cli::jsonString(i.name),
                         i.wageID ? QString::number(i.wageID) : QStringLiteral("null"), dateJson(i.payDate),
                         dateJson(i.periodStart), cli::jsonString(i.interval),
                         i.committed() ? cli::jsonString(i.reference) : QStringLiteral("null"),
                         i.gross.toFixed4(), i.paye.toFixed4())
                    .arg(i.nonTaxable.toFixed4(), i.deductions.toFixed4(), i.takeHome.toFixed4());
    QStringList problems;
    for (const QString& f : failures)
        problems << QStringLiteral("    ") + cli::jsonString(f);
    return QStringLiteral("{\n  \"RunDate\": %1,\n  \"Pays\": [\n%2\n  ],\n  \"TakeHomeTotal\": %3,\n  "
                          "\"Failures\": [%4]\n}\n")
        .arg(dateJson(runDate), pays.join(QStringLiteral(",\n")), ql::PayRunTotal(items).toFixed4(),
             problems.isEmpty()
                 ? QString()
                 : QStringLiteral("\n") + problems.join(QStringLiteral(",\n")) + QStringLiteral("\n  "));
}

int payRun(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const QDate runDate = dateArgument(args.at(0));
    bool commit = false;
    QString pdfFolder;
    bool email = false;
    for (int i = 1; i < args.size(); ++i) {
        if (args.at(i) == QStringLiteral("--commit") && !commit)
            commit = true;
        else if (args.at(i) == QStringLiteral("--email") && !email)
            email = true;
        else if (args.at(i) == QStringLiteral("--pdf-folder") && pdfFolder.isEmpty() && i + 1 < args.size())
            pdfFolder = args.at(++i);
        else
            throw cli::CliUsageError();
    }
    if ((!pdfFolder.isEmpty() || email) && !commit) throw cli::CliUsageError();
    // A folder named for the slips is made, as a save dialog would; one that can't be made is refused.
    if (!pdfFolder.isEmpty() && !QDir().mkpath(pdfFolder))
        throw cli::CliFailure(QStringLiteral("The folder %1 can't be created.").arg(pdfFolder));
    QStringList failures;
    QList<ql::PayRunItem> items, slips;
    {
        Session session;
        items = ql::AddPayRunPays(runDate, failures);
        ql::RecordPayRunPays(session.wage(), runDate, items);
        if (commit && failures.isEmpty()) {
            // Without a screen there is no payslip to look at: the pays are committed and posted, and
            // their payslips written as PDF files when a folder is given.
            const ql::PayCommitter committer =
                ql::installedPayCommitter() ? ql::installedPayCommitter() : ql::CommitAsTheDialogDoes(false);
            const ql::PayRunCommit result = ql::CommitPayRun(items, {}, committer);
            if (!result.failure.isEmpty()) failures << result.failure;
            ql::RefreshPayRunItems(session.wage(), items);
        }
        if (!pdfFolder.isEmpty()) slips = ql::RecordedCommittedPays(session.wage(), runDate);
    }
    // Slips half-written by a run that was stopped (its process gone) are thrown away.
    if (!pdfFolder.isEmpty()) {
        const QDir dir(pdfFolder);
        for (const QString& partial :
             dir.entryList({QStringLiteral(".*.partial.pdf")}, QDir::Files | QDir::Hidden)) {
            const QString pid = partial.section(u'.', -3, -3);
            if (!pid.isEmpty() && !QFileInfo::exists(QStringLiteral("/proc/") + pid)) QFile::remove(dir.filePath(partial));
        }
    }
    // Each payslip opens the pay on a wage screen of its own, so they come after the run's session.
    // Every committed pay of the run has its slip, written again only when missing (a slip under its
    // own name is whole); one that fails does not stop the others.
    for (const ql::PayRunItem& item : slips) {
        const QString file = QDir(pdfFolder).filePath(ql::PaySlipFileName(item));
        if (QFileInfo::exists(file)) continue;
        try {
            cli::writePaySlipPdf(item.wageID, file);
        } catch (const std::exception& e) {
            const QString why = dynamic_cast<const ql::VbError*>(&e)
                                    ? static_cast<const ql::VbError&>(e).description()
                                    : QString::fromStdString(e.what());
            failures << QStringLiteral("%1: the payslip %2 was not written: %3")
                            .arg(item.name, QFileInfo(file).fileName(), why.simplified());
        }
    }
    // A slip that can't be sent leaves its pay committed; the run says why.
    if (email)
        for (const ql::PayRunItem& item : items)
            if (item.committed()) {
                const QString failed = cli::emailPaySlip(item.wageID);
                if (!failed.isEmpty()) failures << QStringLiteral("The payslip was not sent: ") + failed;
            }
    out << payRunJson(runDate, items, failures);
    if (!failures.isEmpty()) {
        out.flush();
        throw cli::CliFailure(QStringLiteral("The pay run did not finish:\n") + failures.join(u'\n'));
    }
    return 0;
}

const cli::CliCommand paydayFileCommand("payday-file", "payday-file YYYY-MM-DD --out FILE", paydayFile);
const cli::CliCommand employeeDetailsCommand("employee-details-file",
                                             "employee-details-file --since YYYY-MM-DD --out FILE",
                                             employeeDetailsFile);
const cli::CliCommand bankFileCommand(
    "bank-file",
    "bank-file YYYY-MM-DD --format anz|anz-transactive|asb|bnz|westpac|auto --out FILE [--date today|YYYY-MM-DD]",
    bankFile);
const cli::CliCommand
    paydaySettingsCommand("payday-settings",
                          "payday-settings [--name T] [--phone T] [--email T] [--ird T] [--account T]",
                          paydaySettings);
// The payslips paint only with --pdf-folder, but the command is one: it runs in a GUI application.
const cli::CliCommand payRunCommand("pay-run", "pay-run YYYY-MM-DD [--commit] [--pdf-folder DIR] [--email]", payRun,
                                    true);
const cli::CliCommand bankAccountCommand("bank-account", "bank-account EMPLOYEE_ID [ACCOUNT]", bankAccount);
const cli::CliCommand kiwiSaverStatusCommand("kiwisaver-status", "kiwisaver-status EMPLOYEE_ID [AE|AK|OK|NK|CT]",
                                             kiwiSaverStatus);

} // namespace
