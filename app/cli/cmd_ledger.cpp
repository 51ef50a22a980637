// The roster and the start-up check, as the suite's menu and a script see them.
#include "CliCommand.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "ledger/Roster.h"
#include "startup/Startup.h"
#include "payengine/AppContext.h"
#include "runtime/DateFns.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>

namespace {

// The program's state for one command; every message and error report is told on standard error.
struct Session {
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
    Session() {
        ql::setApp(&context);
        dialogs.setEcho([](const QString& line) { cli::err() << line << "\n"; });
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
    }
    ~Session() {
        cli::err().flush();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
};

QString jsonText(const QString& s) {
    // QJsonValue escapes as JSON requires; the document wraps it in an array we strip.
    const QByteArray doc = QJsonDocument(QJsonArray{QJsonValue(s)}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(doc.mid(1, doc.size() - 2));
}

// An empty date is null; the stored zero date stays a date (1899-12-30), as the roster holds it.
QString jsonDate(const QDate& d) { return d.isValid() ? QLatin1Char('"') + d.toString(Qt::ISODate) + QLatin1Char('"') : QStringLiteral("null"); }

QString jsonRecord(const ql::EmployeeRecord& r) {
    QStringList f;
    const auto num = [&](const char* name, qint64 v) { f << QStringLiteral("\"%1\": %2").arg(QLatin1String(name)).arg(v); };
    const auto text = [&](const char* name, const QString& v) { f << QStringLiteral("\"%1\": %2").arg(QLatin1String(name), jsonText(v)); };
    const auto date = [&](const char* name, const QDate& v) { f << QStringLiteral("\"%1\": %2").arg(QLatin1String(name), jsonDate(v)); };
    const auto money = [&](const char* name, ql::Currency v) { f << QStringLiteral("\"%1\": %2").arg(QLatin1String(name), v.toFixed4()); };
    num("EmployeeID", r.EmployeeID);
    num("AddressID", r.AddressID);
    date("Birthdate", r.Birthdate);
    num("EmployeeTypeID", r.EmployeeTypeID);
    date("DateHired", r.DateHired);
    date("DateFinished", r.DateFinished);
    money("PayRate", r.PayRate);
    money("YearlyTotal", r.YearlyTotal);
    num("PayIntervalID", r.PayIntervalID);
    num("TaxTypeID", r.TaxTypeID);
    text("IRDNumber", r.IRDNumber);
    text("EmployeeType", r.EmployeeType);
    text("UnitOfPay", r.UnitOfPay);
    text("TaxName", r.TaxName);
    text("TaxCode", r.TaxCode);
    text("Address", r.Address);
    text("NameLastFirst", r.NameLastFirst);
    text("NameFirstLast", r.NameFirstLast);
    f << QStringLiteral("\"KiwiSaverEnrolled\": ") + (r.KiwiSaverEnrolled ? QStringLiteral("true") : QStringLiteral("false"));
    num("KiwiSaverEnrolID", r.KiwiSaverEnrolID);
    date("KiwiSaverStartDate", r.KiwiSaverStartDate);
    num("KiwiSaverEmployerRateID", r.KiwiSaverEmployerRateID);
    return QStringLiteral("  {") + f.join(QStringLiteral(", ")) + QLatin1Char('}');
}

int roster(const QStringList& args, QTextStream& out) {
    if (!args.isEmpty())
        throw cli::CliUsageError();
    Session session;
    ql::OpenWageDatabase();
    const int mark = int(session.dialogs.calls.size());
    const qint32 count = ql::FillEmployeeArray();
    // A roster that could not be read is no empty roster: the exit status says so.
    for (int i = mark; i < session.dialogs.calls.size(); ++i)
        if (session.dialogs.calls.at(i).kind == ql::DialogCall::Error) {
            ql::CloseWageDatabase();
            throw cli::CliFailure(QStringLiteral("The roster could not be read: %1").arg(session.dialogs.calls.at(i).message));
        }
    QStringList records;
    for (qint32 i = 1; i <= count && i < session.context.EmployeeArray.size(); ++i)
        records << jsonRecord(session.context.EmployeeArray.at(i));
    ql::CloseWageDatabase();
    out << (records.isEmpty() ? QStringLiteral("[]") : QStringLiteral("[\n") + records.join(QStringLiteral(",\n")) + QStringLiteral("\n]")) << "\n";
    return 0;
}

int checkEmployees(const QStringList& args, QTextStream& out) {
    if (!args.isEmpty())
        throw cli::CliUsageError();
    Session session;
    const QString answer = ql::CheckEmployeeTable();
    if (!answer.isEmpty())
        out << QString(answer).replace(QStringLiteral("\r\n"), QStringLiteral("\n")) << "\n";
    return 0;
}

cli::CliCommand rosterCommand("roster", "roster", roster);
cli::CliCommand checkCommand("check-employees", "check-employees", checkEmployees);

} // namespace
