#include "OwnReports.h"
#include "cashbook/PaySlipPrinter.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "ledger/frmWage.h"
#include "payday/PayRun.h"
#include "payday/PayRunSlips.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "reports/ReportPreviewDialog.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include <QDateEdit>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

namespace {

struct PayRow {
    qint32 wageID = 0;
    qint32 employeeID = 0;
    QString name;
    QString reference;
    QString interval;
    QVariant paid;
    Currency gross, paye, deductions, takeHome;
};

QList<PayRow> paysOf(Database& wage, const QDate& payDate) {
    QList<PayRow> rows;
    auto rs = wage.openRecordset(
        QStringLiteral("SELECT w.WageID, w.EmployeeID, w.Reference, w.PayInterval, w.PaymentDate, w.Date, "
                       "w.TotalTaxable, w.PAYE, w.Deductions, w.Takehome FROM Wages w ORDER BY w.EmployeeID, "
                       "w.WageID"),
        RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        const QVariant date = rs->value(QStringLiteral("Date"));
        if (IsNull(date) || CDate(date) != payDate) continue;
        PayRow r;
        r.wageID = CLng(rs->value(QStringLiteral("WageID")));
        r.employeeID = CLng(rs->value(QStringLiteral("EmployeeID")));
        const QVariant ref = rs->value(QStringLiteral("Reference"));
        r.reference = IsNull(ref) ? QString() : CStr(ref);
        const QVariant interval = rs->value(QStringLiteral("PayInterval"));
        r.interval = IsNull(interval) ? QString() : CStr(interval);
        r.paid = rs->value(QStringLiteral("PaymentDate"));
        r.gross = CCur(rs->value(QStringLiteral("TotalTaxable")));
        r.paye = CCur(rs->value(QStringLiteral("PAYE")));
        r.deductions = CCur(rs->value(QStringLiteral("Deductions")));
        r.takeHome = CCur(rs->value(QStringLiteral("Takehome")));
        for (int i = 1; i < App().EmployeeArray.size(); ++i)
            if (App().EmployeeArray.at(i).EmployeeID == r.employeeID) r.name = App().EmployeeArray.at(i).NameFirstLast;
        rows << r;
    }
    rs->Close();
    return rows;
}

QString money(Currency c) {
    return Format(QVariant::fromValue(c), QStringLiteral("Currency"));
}

} // namespace

PreparedReport PayRunSummary(Database& wage, const QDate& payDate) {
    PreparedReport report;
    report.name = QStringLiteral("Pay Run Summary %1").arg(payDate.toString(QStringLiteral("d MMM yyyy")));
    report.printDate = QDate::currentDate().toString(QStringLiteral("d/MM/yyyy"));
    report.headings << PreparedText{QStringLiteral("center"), QStringLiteral("title"), Firm(), QString()}
                    << PreparedText{QStringLiteral("center"), QStringLiteral("bold"), report.name, QString()};
    const QStringList captions{QStringLiteral("Employee"), QStringLiteral("Reference"), QStringLiteral("Gross"),
                               QStringLiteral("PAYE"),     QStringLiteral("Deductions"), QStringLiteral("Take-home")};
    for (int c = 0; c < captions.size(); ++c)
        report.columns << PreparedColumn{captions.at(c), c == 0 ? 2.2 : 1.0,
                                         c >= 2 ? Qt::AlignRight : Qt::AlignLeft};
    Currency gross, paye, deductions, takeHome;
    for (const PayRow& r : paysOf(wage, payDate)) {
        report.rows << QStringList{r.name, r.reference.isEmpty() ? QStringLiteral("(not committed)") : r.reference,
                                   money(r.gross), money(r.paye), money(r.deductions), money(r.takeHome)};
        report.rowStyles << QString();
        gross += r.gross;
        paye += r.paye;
        deductions += r.deductions;
        takeHome += r.takeHome;
    }
    report.totals = QStringList{QStringLiteral("%1 pays").arg(report.rows.size()), QString(), money(gross),
                                money(paye), money(deductions), money(takeHome)};
    report.footers << PreparedText{QStringLiteral("right"), QStringLiteral("small"),
                                   QStringLiteral("Page {PageNumber} of {TotalPages}"), QString()};
    return report;
}

QList<PreparedReport> PaySlipsOfDate(Database& wage, const QDate& payDate) {
    PayRunSlips kept;
    PayRunAdder screens;
    for (const PayRow& r : paysOf(wage, payDate)) {
        if (r.reference.isEmpty()) continue;
        PayRunItem item;
        item.employeeID = r.employeeID;
        item.wageID = r.wageID;
        PayView* view = screens.standOn(item);
        if (!view) continue;
        PaySlipRequest request;
        request.screen = view;
        request.WageID = r.wageID;
        request.Description = TranslateText(QStringLiteral("|0| up to |1|"),
                                            QStringList{r.interval, CStr(QVariant(payDate))});
        request.Reference = r.reference;
        request.PaymentDate = IsNull(r.paid) ? payDate : CDate(r.paid);
        PrintPaySlip(request);
    }
    QList<PreparedReport> reports;
    for (const PayRunSlip& s : kept.slips)
        reports << s.report;
    return reports;
}

void ShowOwnReports(frmWage& window) {
    QDialog d(&window);
    d.setObjectName(QStringLiteral("OwnReports"));
    d.setWindowTitle(QStringLiteral("Reports"));
    d.setAccessibleName(QStringLiteral("Reports"));
    auto* date = new QDateEdit(QDate::currentDate(), &d);
    date->setObjectName(QStringLiteral("dtpReportDate"));
    date->setAccessibleName(QStringLiteral("Pay date of the reports"));
    date->setCalendarPopup(true);
    date->setDisplayFormat(QStringLiteral("dd MMM yyyy"));
    // The last pay date there is, where the user most likely wants to look.
    skipErrors([&] {
        const QVariant last = App().WageDatabase.scalar(QStringLiteral("SELECT max(Date) FROM Wages"));
        if (!IsNull(last)) date->setDate(CDate(last));
    });
    auto* label = new QLabel(QStringLiteral("Pay &date:"), &d);
    label->setBuddy(date);
    auto* slips = new QPushButton(QStringLiteral("&Payslips of the pay date"), &d);
    slips->setAccessibleName(QStringLiteral("Payslips of the pay date in one preview"));
    auto* summary = new QPushButton(QStringLiteral("Pay run &summary"), &d);
    summary->setAccessibleName(QStringLiteral("Summary of the pays of the pay date"));
    auto* history = new QPushButton(QStringLiteral("Wage &history of %1").arg(window.screen().employeeName()), &d);
    history->setAccessibleName(QStringLiteral("Wage history of the shown employee"));
    auto* close = new QPushButton(QStringLiteral("&Close"), &d);
    close->setAccessibleName(QStringLiteral("Close"));
    auto* top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(date, 1);
    auto* layout = new QVBoxLayout(&d);
    layout->addLayout(top);
    for (QPushButton* b : {slips, summary, history, close})
        layout->addWidget(b);
    slips->setDefault(true);
    QObject::connect(close, &QPushButton::clicked, &d, &QDialog::reject);
    QObject::connect(slips, &QPushButton::clicked, &d, [&] {
        const QList<PreparedReport> reports = PaySlipsOfDate(App().WageDatabase, date->date());
        if (reports.isEmpty()) {
            ShowMessage(QStringLiteral("No pay of %1 has been committed.").arg(date->date().toString(QStringLiteral("d MMM yyyy"))),
                        msg::OKOnly, Firm(), QStringLiteral("Reports"), QString(), msg::Information, true);
            return;
        }
        PreviewReports(reports, QStringLiteral("Payslips of %1").arg(date->date().toString(QStringLiteral("d MMM yyyy"))),
                       &d);
    });
    QObject::connect(summary, &QPushButton::clicked, &d, [&] {
        const PreparedReport report = PayRunSummary(App().WageDatabase, date->date());
        PreviewReports(QList<PreparedReport>{report}, report.name, &d);
    });
    QObject::connect(history, &QPushButton::clicked, &d, [&] {
        d.accept();
        if (QPushButton* quick = window.commandButton(QStringLiteral("cmdQuick"))) quick->click();
    });
    d.exec();
}

} // namespace ql
