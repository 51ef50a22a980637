// One leave sub-tab of an employee as the wage screen shows it, edited as a user types into the grid,
// and saved as leaving the sub-tab saves it.
#include "CliCommand.h"
#include "JsonRows.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "leave/LeaveScreen.h"
#include "leave/basLeave.h"
#include "ledger/Roster.h"
#include "payengine/AppContext.h"
#include "runtime/DateFns.h"
#include "startup/Startup.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

struct Options {
    qint32 employeeID = 0;
    int type = 0;
    bool allYears = false;
    QDate today;
    QJsonArray edits;
    bool save = false;
};

int wholeNumber(const QString& text) {
    bool ok = false;
    const int v = text.toInt(&ok);
    if (!ok) throw cli::CliUsageError();
    return v;
}

Options parse(const QStringList& args) {
    Options o;
    QStringList plain;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == QLatin1String("--all-years")) {
            o.allYears = true;
        } else if (a == QLatin1String("--save")) {
            o.save = true;
        } else if (a == QLatin1String("--today") || a == QLatin1String("--edits")) {
            if (i + 1 >= args.size()) throw cli::CliUsageError();
            const QString value = args.at(++i);
            if (a == QLatin1String("--today")) {
                o.today = QDate::fromString(value, Qt::ISODate);
                if (!o.today.isValid()) throw cli::CliUsageError();
            } else {
                QJsonParseError error{};
                const QJsonDocument doc = QJsonDocument::fromJson(value.toUtf8(), &error);
                if (error.error != QJsonParseError::NoError || !doc.isArray())
                    throw cli::CliFailure(QStringLiteral("The edits are no JSON list: ") +
                                          error.errorString());
                o.edits = doc.array();
            }
        } else if (a.startsWith(QLatin1String("--"))) {
            throw cli::CliUsageError();
        } else {
            plain << a;
        }
    }
    if (plain.size() != 2) throw cli::CliUsageError();
    o.employeeID = wholeNumber(plain.at(0));
    o.type = wholeNumber(plain.at(1));
    if (o.type < 1 || o.type > 5) throw cli::CliUsageError();
    return o;
}

QString json(const QString& text) {
    return cli::jsonString(text);
}

QString jsonOrNull(const QString& text, bool shown = true) {
    return shown ? json(text) : QStringLiteral("null");
}

// A row of the edits: an array row, "last", or "new" for the add-new row.
int editRow(const QJsonValue& v, const ql::LeaveScreen& screen, bool addNewAllowed) {
    const int rows = screen.LeaveArray.rowCount();
    if (v.isString() && v.toString() == QLatin1String("last")) return rows - 1;
    if (v.isString() && v.toString() == QLatin1String("new")) {
        if (!addNewAllowed) throw cli::CliFailure(QStringLiteral("The add-new row cannot be deleted."));
        return rows;
    }
    if (!v.isDouble() || v.toDouble() != double(v.toInt()))
        throw cli::CliFailure(QStringLiteral("An edit's row is an array row, \"last\" or \"new\"."));
    const int row = v.toInt();
    if (row < 0 || row >= rows)
        throw cli::CliFailure(QStringLiteral("There is no row %1 in the grid.").arg(row));
    return row;
}

void applyEdit(const QJsonObject& e, ql::LeaveScreen& screen, ql::ScriptedDialogs& dialogs) {
    const QString op = e.value(QStringLiteral("op")).toString();
    if (op == QLatin1String("edit")) {
        const int row = editRow(e.value(QStringLiteral("row")), screen, true);
        const QJsonValue col = e.value(QStringLiteral("col"));
        if (!col.isDouble() || col.toInt() < 0 || col.toInt() >= ql::leave::ColumnCount)
            throw cli::CliFailure(QStringLiteral("An edit's col is a column of the grid, 0 to 7."));
        const int column = col.toInt();
        if (!screen.LeaveArray.column(column).visible)
            throw cli::CliFailure(QStringLiteral("Column %1 is not shown in the grid.").arg(column));
        const QString text = e.value(QStringLiteral("text")).toVariant().toString();
        if (column == ql::leave::Description && !text.isEmpty() && !screen.kindValue(text).isValid())
            throw cli::CliFailure(
                QStringLiteral("\"%1\" is not in the list of the Description column.").arg(text));
        screen.storeCell(row, column, text);
    } else if (op == QLatin1String("delete")) {
        const int row = editRow(e.value(QStringLiteral("row")), screen, false);
        const QString answer = e.value(QStringLiteral("answer")).toString();
        if (answer != QLatin1String("yes") && answer != QLatin1String("no"))
            throw cli::CliFailure(QStringLiteral("A delete's answer is \"yes\" or \"no\"."));
        dialogs.queueAnswer(answer == QLatin1String("yes") ? ql::msg::Yes : ql::msg::No);
        screen.deleteRow(row);
    } else {
        throw cli::CliFailure(QStringLiteral("An edit's op is \"edit\" or \"delete\"."));
    }
}

QString rowsJson(const ql::LeaveScreen& screen) {
    QStringList rows;
    for (int r = 0; r < screen.LeaveArray.rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < ql::leave::ColumnCount; ++c) {
            const QString text = screen.cellText(r, c);
            cells << (text.isEmpty() ? QStringLiteral("null") : json(text));
        }
        rows << QStringLiteral("    [") + cells.join(QStringLiteral(", ")) + QLatin1Char(']');
    }
    return rows.isEmpty()
               ? QStringLiteral("[]")
               : QStringLiteral("[\n") + rows.join(QStringLiteral(",\n")) + QStringLiteral("\n  ]");
}

QString messagesJson(const ql::ScriptedDialogs& dialogs) {
    QStringList out;
    for (const ql::DialogCall& c : dialogs.calls) {
        if (c.kind == ql::DialogCall::Message)
            out << QStringLiteral("    {\"heading\": %1, \"text\": %2}")
                       .arg(json(c.heading), json(c.message));
        else if (c.kind == ql::DialogCall::Error)
            out << QStringLiteral("    {\"heading\": %1, \"text\": %2}")
                       .arg(json(c.heading.trimmed()), json(c.message));
    }
    return out.isEmpty() ? QStringLiteral("[]")
                         : QStringLiteral("[\n") + out.join(QStringLiteral(",\n")) + QStringLiteral("\n  ]");
}

int leaveCommand(const QStringList& args, QTextStream& out) {
    const Options o = parse(args);
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
    ql::setApp(&context);
    dialogs.setEcho([](const QString& line) { cli::err() << line << "\n"; });
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    if (o.today.isValid()) {
        const QDate today = o.today;
        ql::setClockForTesting([today] { return QDateTime(today, QTime(12, 0)); });
    }
    struct Restore {
        ~Restore() {
            ql::setClockForTesting({});
            ql::CloseWageDatabase();
            ql::setDialogs(nullptr);
            ql::setApp(nullptr);
        }
    } restore;

    ql::OpenWageDatabase();
    ql::FillEmployeeArray();
    for (int i = 1; i < context.EmployeeArray.size(); ++i)
        if (context.EmployeeArray.at(i).EmployeeID == o.employeeID) {
            context.CurrentEmployee = i;
            context.CurrentEmployeeID = o.employeeID;
            context.CurrentAddressID = context.EmployeeArray.at(i).AddressID;
        }
    if (context.CurrentEmployeeID == 0)
        throw cli::CliFailure(QStringLiteral("Employee %1 is not on the payroll.").arg(o.employeeID));

    ql::LeaveScreen screen;
    screen.optWhichYears = o.allYears ? 1 : 0;
    screen.tabLeaveIndex = o.type - 1;
    ql::FillLeaveData(screen, screen.tabLeaveIndex);
    for (const QJsonValue& e : o.edits) {
        if (!e.isObject()) throw cli::CliFailure(QStringLiteral("Each edit is a JSON object."));
        applyEdit(e.toObject(), screen, dialogs);
    }
    if (o.save) ql::SaveLeaveXArray(screen);

    out << "{\n";
    out << "  \"rows\": " << rowsJson(screen) << ",\n";
    out << "  \"lblfDate\": " << json(screen.lblfDate) << ",\n";
    out << "  \"lbltDate\": " << json(screen.lbltDate) << ",\n";
    out << "  \"lblHired\": " << json(screen.lblHired) << ",\n";
    out << "  \"txtLeaveCForward\": " << jsonOrNull(screen.txtLeaveCForward, screen.cForwardVisible) << ",\n";
    out << "  \"txtLeaveAdded\": " << json(screen.txtLeaveAdded) << ",\n";
    out << "  \"txtLeaveTaken\": " << json(screen.txtLeaveTaken) << ",\n";
    out << "  \"txtLeaveAvailable\": " << json(screen.txtLeaveAvailable) << ",\n";
    out << "  \"messages\": " << messagesJson(dialogs);
    if (o.save)
        out << ",\n  \"table\": "
            << cli::jsonRows(
                   context.WageDatabase,
                   QStringLiteral("SELECT * FROM LeaveDetails WHERE EmployeeID = %1 ORDER BY LeaveTypeID, "
                                  "DateFrom, LeaveID")
                       .arg(o.employeeID),
                   2);
    out << "\n}\n";
    return 0;
}

const cli::CliCommand
    leaveCmd("leave", "leave EMPLOYEE_ID TYPE [--all-years] [--today YYYY-MM-DD] [--edits JSON] [--save]",
             leaveCommand);

} // namespace
