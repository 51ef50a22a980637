// The printed reports: a payslip as PDF, and an employee's wage history as JSON or PDF.
#include "CliCommand.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include "JsonRows.h"
#include "PayScreen.h"
#include "ReportCommands.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/Texts.h"
#include "ledger/Roster.h"
#include "payengine/AppContext.h"
#include "reports/PrintPaySlip.h"
#include "reports/QuickView.h"
#include "reports/ReportScreen.h"
#include "reports/paint/ReportPdf.h"
#include "runtime/Convert.h"
#include "startup/Startup.h"
#include <QDate>

namespace cli {

namespace {

// What the user was told last, with plain line breaks.
QString lastTold(const ql::ScriptedDialogs& dialogs, int mark) {
    for (int i = dialogs.calls.size() - 1; i >= mark; --i) {
        const ql::DialogCall& c = dialogs.calls.at(i);
        if (c.kind != ql::DialogCall::Input)
            return QString(c.message).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    }
    return QStringLiteral("The report was not written.");
}

} // namespace

void printToPdf(const QString& file, ql::ScriptedDialogs& dialogs, const std::function<void()>& print) {
    ql::installPdfOutput();
    const int mark = dialogs.calls.size();
    bool written = false;
    // Written beside the file under a passing name, then renamed: a file under its own name is whole.
    const QFileInfo target(file);
    const QString partial = target.absoluteDir().filePath(
        QStringLiteral(".%1.%2.partial.pdf").arg(target.completeBaseName()).arg(QCoreApplication::applicationPid()));
    const ql::ReportScreenShow previous = ql::setReportScreenShow([&](ql::ReportScreen& screen) {
        screen.cry_report.Destination = ql::crpt::ToFile;
        screen.cry_report.PrintFileName = partial;
        screen.PrintIt();
        written = screen.cry_report.runs() > 0;
    });
    try {
        print();
    } catch (...) {
        ql::setReportScreenShow(previous);
        QFile::remove(partial);
        throw;
    }
    ql::setReportScreenShow(previous);
    if (!written || !QFileInfo(partial).isFile()) {
        QFile::remove(partial);
        throw CliFailure(written ? QStringLiteral("The file %1 was not written.").arg(file) : lastTold(dialogs, mark));
    }
    if (std::rename(QFile::encodeName(partial).constData(), QFile::encodeName(target.absoluteFilePath()).constData()) != 0) {
        QFile::remove(partial);
        throw CliFailure(QStringLiteral("The file %1 can't be written.").arg(file));
    }
}

void writePaySlipPdf(qint32 wageID, const QString& file) {
    PayScreen open(wageID);
    ql::WageScreen& screen = open.screen;
    const QVariant reference = screen.datPays.value(QStringLiteral("Reference"));
    if (ql::IsNull(reference))
        throw CliFailure(
            QStringLiteral("Pay %1 has not been committed: its payslip is printed when it is committed.")
                .arg(wageID));
    screen.cmdSelect_Click(6); // the slip's lines rebuilt for this pay
    const QString dateLine =
        ql::TranslateText(QStringLiteral("|0| up to |1|"),
                          QStringList{screen.datPays.value(QStringLiteral("PayInterval")).toString(),
                                      ql::CStr(screen.datPays.value(QStringLiteral("Date")))});
    const QVariant paid = screen.datPays.value(QStringLiteral("PaymentDate"));
    printToPdf(file, open.dialogs,
               [&] { ql::PrintPaySlip(screen, dateLine, reference.toString(), paid, true); });
}

namespace {

// The state of one command: the context, the dialogs that answer with their default and tell each
// call on standard error, the payroll database and the roster.
class Session {
public:
    Session() {
        ql::setApp(&context);
        dialogs.setEcho([](const QString& line) { err() << line << "\n"; });
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
        ql::OpenWageDatabase();
        ql::FillEmployeeArray();
    }
    ~Session() {
        ql::CloseWageDatabase();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

QDate dateArgument(const QString& text) {
    const QDate d = QDate::fromString(text, Qt::ISODate);
    if (!d.isValid()) throw CliUsageError();
    return d;
}

QString jsonNumber(const QVariant& v) {
    if (ql::IsNull(v)) return QStringLiteral("null");
    if (v.typeId() == QMetaType::QDate || v.typeId() == QMetaType::QDateTime)
        return jsonString(v.toDate().toString(Qt::ISODate));
    if (v.userType() == qMetaTypeId<ql::Currency>()) return v.value<ql::Currency>().toFixed4();
    return ql::CCur(v).toFixed4();
}

const QStringList kColumns{QStringLiteral("Date"),        QStringLiteral("Hours"),
                           QStringLiteral("Gross"),       QStringLiteral("TaxAllow"),
                           QStringLiteral("PAYE"),        QStringLiteral("Net"),
                           QStringLiteral("NonTaxAllow"), QStringLiteral("Deductions"),
                           QStringLiteral("takehome"),    QStringLiteral("KiwiSaverContribution")};

QString historyJson(const ql::QuickView& view) {
    QStringList rows;
    QList<ql::Currency> sums(10);
    for (int r = 0; r < view.QuickViewArray.rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < 10; ++c) {
            const QVariant v = view.QuickViewArray.value(r, c);
            cells << jsonString(kColumns.at(c)) + QStringLiteral(": ") + jsonNumber(v);
            if (c > 0 && !ql::IsNull(v)) sums[c] += ql::CCur(v);
        }
        rows << QStringLiteral("    {") + cells.join(QStringLiteral(", ")) + u'}';
    }
    QStringList totals{jsonString(kColumns.at(0)) + QStringLiteral(": null")};
    QStringList shown{jsonString(kColumns.at(0)) + QStringLiteral(": \"\"")};
    for (int c = 1; c < 10; ++c) {
        totals << jsonString(kColumns.at(c)) + QStringLiteral(": ") + sums.at(c).toFixed4();
        shown << jsonString(kColumns.at(c)) + QStringLiteral(": ") + jsonString(view.Text1.at(c - 1));
    }
    QStringList captions;
    for (const QString& h : view.QuickViewArray.headings())
        captions << jsonString(h);
    return QStringLiteral("{\n  \"Employee\": ") + jsonString(view.txtEmployee) +
           QStringLiteral(",\n  \"Order\": ") +
           jsonString(ql::QuickViewDateOrder() ? QStringLiteral("date") : QStringLiteral("entry")) +
           QStringLiteral(",\n  \"Captions\": [") + captions.join(QStringLiteral(", ")) +
           QStringLiteral("],\n  \"Rows\": ") +
           (rows.isEmpty()
                ? QStringLiteral("[]")
                : QStringLiteral("[\n") + rows.join(QStringLiteral(",\n")) + QStringLiteral("\n  ]")) +
           QStringLiteral(",\n  \"Totals\": {") + totals.join(QStringLiteral(", ")) +
           QStringLiteral("},\n  \"TotalsShown\": {") + shown.join(QStringLiteral(", ")) +
           QStringLiteral("}\n}");
}

int history(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw CliUsageError();
    bool ok = false;
    const qint32 employeeID = args.at(0).toInt(&ok);
    if (!ok) throw CliUsageError();
    bool entryOrder = false;
    QDate from, to;
    QString pdf;
    for (int i = 1; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == QLatin1String("--entry-order")) {
            entryOrder = true;
        } else if ((a == QLatin1String("--from") || a == QLatin1String("--to") ||
                    a == QLatin1String("--pdf")) &&
                   i + 1 < args.size()) {
            const QString& value = args.at(++i);
            if (a == QLatin1String("--from"))
                from = dateArgument(value);
            else if (a == QLatin1String("--to"))
                to = dateArgument(value);
            else
                pdf = value;
        } else {
            throw CliUsageError();
        }
    }
    Session session;
    ql::AppContext& app = session.context;
    int index = -1;
    for (int i = 1; i < app.EmployeeArray.size(); ++i)
        if (app.EmployeeArray.at(i).EmployeeID == employeeID) index = i;
    if (index < 0)
        throw CliFailure(QStringLiteral("There is no employee %1 on the payroll.").arg(employeeID));
    app.CurrentEmployee = index;
    app.CurrentEmployeeID = employeeID;
    app.CurrentAddressID = app.EmployeeArray.at(index).AddressID;

    ql::setQuickViewDateOrder(!entryOrder);
    ql::QuickView view;
    view.rangeFrom = from;
    view.rangeTo = to;
    view.Form_Load(app.EmployeeArray.at(index).NameLastFirst);
    view.Form_Activate();
    if (pdf.isEmpty()) {
        out << historyJson(view) << "\n";
        return 0;
    }
    printToPdf(pdf, session.dialogs, [&] { view.PrintQView(); });
    out << pdf << "\n";
    return 0;
}

const CliCommand
    historyCommand("history",
                   "history EMPLOYEE_ID [--entry-order] [--from YYYY-MM-DD] [--to YYYY-MM-DD] [--pdf FILE]",
                   history, true);

} // namespace
} // namespace cli
