#include "HolidaySession.h"
#include "PayScreen.h"
#include "frame/Messages.h"
#include "ledger/Roster.h"
#include "startup/Startup.h"
#include <QJsonDocument>
#include <QJsonObject>

namespace cli {

HolidaySession::HolidaySession() {
    ql::setApp(&context);
    dialogs.setEcho([](const QString& line) { err() << line << "\n"; });
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    ql::OpenWageDatabase();
}

HolidaySession::~HolidaySession() {
    ql::CloseWageDatabase();
    ql::setDialogs(nullptr);
    ql::setApp(nullptr);
}

QString HolidaySession::employeeName(qint32 employeeID) {
    if (!m_rosterFilled) {
        ql::FillEmployeeArray();
        m_rosterFilled = true;
    }
    for (int i = 1; i < context.EmployeeArray.size(); ++i)
        if (context.EmployeeArray.at(i).EmployeeID == employeeID) return context.EmployeeArray.at(i).NameLastFirst;
    return QString();
}

void RecalculatePay(qint32 wageID) {
    PayScreen open(wageID);
    open.screen.cmdSelect_Click(1);
    open.screen.tgrdwages_LostFocus();
    open.screen.datPays.UpdateRecord();
}

QDate isoDateArgument(const QString& text) {
    const QDate d = QDate::fromString(text, Qt::ISODate);
    if (!d.isValid() || text.size() != 10) throw CliUsageError();
    return d;
}

int wholeArgument(const QString& text) {
    bool ok = false;
    const int v = text.toInt(&ok);
    if (!ok) throw CliUsageError();
    return v;
}

QHash<QString, QString> holidayOptions(const QStringList& args, int from, const QStringList& allowed) {
    QHash<QString, QString> o;
    for (int i = from; i < args.size(); i += 2) {
        const QString key = args.at(i);
        if (!key.startsWith(QStringLiteral("--")) || !allowed.contains(key.mid(2)) || i + 1 >= args.size() ||
            o.contains(key.mid(2)))
            throw CliUsageError();
        o.insert(key.mid(2), args.at(i + 1));
    }
    return o;
}

QJsonValue money(ql::Currency c) { return QJsonValue(c.toString().toDouble()); }

QString isoDate(const QDate& d) { return d.isValid() ? d.toString(Qt::ISODate) : QString(); }

void printJson(QTextStream& out, const QJsonObject& o) {
    out << QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Indented));
}

} // namespace cli
