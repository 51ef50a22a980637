#include "QuickView.h"
#include "ReportControl.h"
#include "ReportDriver.h"
#include "ReportScreen.h"
#include "data/FarmDetails.h"
#include "data/Recordset.h"
#include "data/RowReader.h"
#include "data/SqlDate.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"

namespace ql {

namespace {
bool& dateOrderState() {
    static bool dateOrder = false;
    return dateOrder;
}
} // namespace

bool QuickViewDateOrder() {
    return dateOrderState();
}
void setQuickViewDateOrder(bool dateOrder) {
    dateOrderState() = dateOrder;
}

QString QuickViewReportFile(bool dateOrder) {
    return dateOrder ? QStringLiteral("ql_quickview.rpt") : QStringLiteral("ql_QViewUnsort.rpt");
}

const QStringList& QuickViewFormats() {
    static const QStringList formats{QStringLiteral("Short Date"), QString(),
                                     QStringLiteral("Currency"),   QStringLiteral("Currency"),
                                     QStringLiteral("Currency"),   QStringLiteral("Currency"),
                                     QStringLiteral("Currency"),   QStringLiteral("Currency"),
                                     QStringLiteral("Currency"),   QStringLiteral("Currency")};
    return formats;
}

QString GetWageDateRange() {
    auto rs = App().WageDatabase.openRecordset(
        QStringLiteral("SELECT * FROM Wages WHERE Wages.[EmployeeID] = %1 ORDER BY Wages.Date")
            .arg(App().CurrentEmployeeID),
        RecordsetType::Snapshot);
    QString text;
    if (rs->EOF_()) {
        text = QStringLiteral("No entries for this employee!");
        ShowMessage(text, 0, Firm(), QStringLiteral("Information Required"), QString(), 6, true);
    } else {
        const QString first = CStr(rs->value(QStringLiteral("Date")));
        rs->MoveLast();
        text = TranslateText(QStringLiteral("|0| to |1|"),
                             QStringList{first, CStr(rs->value(QStringLiteral("Date")))});
    }
    rs->Close();
    return text;
}

QuickView::QuickView() {
    for (int i = 0; i < 9; ++i)
        Text1 << QString();
}

void QuickView::changed() {
    if (onChanged) onChanged();
}

QString QuickView::rangeWhere(const QString& dateColumn) const {
    QString where;
    if (rangeFrom.isValid())
        where += QStringLiteral(" AND %1 >= %2").arg(dateColumn, SQLDate(QVariant(rangeFrom)));
    if (rangeTo.isValid())
        where += QStringLiteral(" AND %1 < %2").arg(dateColumn, SQLDate(QVariant(rangeTo.addDays(1))));
    return where;
}

QString QuickView::listWhere() const {
    return QStringLiteral("EmployeeID = %1").arg(App().CurrentEmployeeID) +
           rangeWhere(QStringLiteral("Date"));
}

void QuickView::AssignQVData() {
    trap(QStringLiteral("AssignQVData"), [&] {
        const QStringList headings = QuickViewArray.headings();
        QuickViewArray.load(App().WageDatabase, listWhere(), QuickViewDateOrder());
        if (!headings.isEmpty()) QuickViewArray.setHeadings(headings);
    });
    changed();
}

bool QuickView::RefreshIfChanged() {
    if (!QuickViewArray.stale() && !QuickViewArray.changedSinceLoad()) return false;
    AssignQVData();
    ShowQuickViewTotals();
    return true;
}

void QuickView::SetQuickViewButtons() {
    cmdDateOrderEnabled = !QuickViewDateOrder();
    cmdEntryOrderEnabled = QuickViewDateOrder();
    changed();
}

void QuickView::Form_Load(const QString& employeeName) {
    AssignQVData();
    SetQuickViewButtons();
    txtEmployee = employeeName;
    const AppContext& app = App();
    const QString unit = app.EmployeeArray.value(app.CurrentEmployee).UnitOfPay;
    QuickViewArray.setHeadings(
        {QStringLiteral("Date"), TranslateText(QStringLiteral("Total |0|"), QStringList{unit}),
         QStringLiteral("Gross"), QStringLiteral("Taxable Allowances"), PayAsYouEarn(), QStringLiteral("NET"),
         QStringLiteral("Non Taxable Allowances"), QStringLiteral("Deductions"), QStringLiteral("Take Home"),
         QStringLiteral("KiwiSaver Contributions")});
    changed();
}

void QuickView::Form_Activate() {
    ShowQuickViewTotals();
    focusControl = QStringLiteral("cmdOK");
    changed();
}

// The sums are exact (hours to four places, money to the cent), so the row agrees with the print; the
// list adds them up as it loads, also over the rows not yet shown.
void QuickView::ShowQuickViewTotals() {
    for (int c = 1; c < 10; ++c)
        Text1[c - 1] = Format(QVariant::fromValue(QuickViewArray.total(c)),
                              c == 1 ? QStringLiteral("fixed") : QStringLiteral("Currency"));
    changed();
}

void QuickView::cmdDateOrder_Click() {
    setQuickViewDateOrder(true);
    SetQuickViewButtons();
    AssignQVData();
    focusControl = QStringLiteral("cmdOK");
    changed();
}

void QuickView::cmdEntryOrder_Click() {
    setQuickViewDateOrder(false);
    SetQuickViewButtons();
    AssignQVData();
    focusControl = QStringLiteral("cmdOK");
    changed();
}

QString QuickView::cellText(int row, int column) const {
    try {
        return Format(QuickViewArray.value(row, column), QuickViewFormats().value(column));
    } catch (const VbError&) {
        return QString();
    }
}

bool QuickView::Committed(int row) const {
    try {
        const QVariant reference = QuickViewArray.reference(row);
        return !IsNull(reference) && !CStr(reference).trimmed().isEmpty();
    } catch (const VbError&) {
        return false;
    }
}

QString QuickView::CommitLine(int row) const {
    if (!Committed(row)) return QStringLiteral("Not committed");
    const QString reference = CStr(QuickViewArray.reference(row)).trimmed();
    const QVariant paid = QuickViewArray.paymentDate(row);
    if (IsNull(paid) || CStr(paid).isEmpty())
        return TranslateText(QStringLiteral("Committed, reference |0|"), QStringList{reference});
    return TranslateText(QStringLiteral("Committed on |0|, reference |1|"),
                         QStringList{Format(paid, QStringLiteral("Short Date")), reference});
}

QList<HistoryPoint> QuickView::ChartPoints() const {
    QList<HistoryPoint> points;
    trap(QStringLiteral("ChartPoints"), [&] {
        RowReader rows(App().WageDatabase,
                       QStringLiteral("SELECT Date, Gross, PAYE, takehome FROM Wages WHERE ") + listWhere() +
                           QStringLiteral(" ORDER BY Wages.Date, Wages.WageID"));
        const auto amount = [&](int c) { return rows.isNull(c) ? 0.0 : CDbl(rows.value(c)); };
        while (rows.next()) {
            if (rows.isNull(0)) continue;
            points.append({CDate(rows.value(0)), amount(1), amount(2), amount(3)});
        }
    });
    return points;
}

void QuickView::PrepareQView(ReportScreen& screen) {
    AppContext& app = App();
    app.CurrentReportID = 126;
    const QString reportFile = QuickViewReportFile(QuickViewDateOrder());
    const QString title = TranslateText(QStringLiteral("Wage History For |0|"), QStringList{txtEmployee});
    QString dateLine;
    if (rangeFrom.isValid() || rangeTo.isValid()) {
        // A chosen range prints the range of the pays shown.
        const QVariant first = app.WageDatabase.scalar(
            QStringLiteral("SELECT MIN(Date) FROM Wages WHERE EmployeeID = %1").arg(app.CurrentEmployeeID) +
            rangeWhere(QStringLiteral("Date")));
        const QVariant last = app.WageDatabase.scalar(
            QStringLiteral("SELECT MAX(Date) FROM Wages WHERE EmployeeID = %1").arg(app.CurrentEmployeeID) +
            rangeWhere(QStringLiteral("Date")));
        dateLine =
            IsNull(first)
                ? QStringLiteral("No entries for this employee!")
                : TranslateText(QStringLiteral("|0| to |1|"),
                                QStringList{CStr(QVariant(CDate(first))), CStr(QVariant(CDate(last)))});
    } else {
        dateLine = GetWageDateRange();
    }
    ReportControl& report = screen.cry_report;
    ClearReportControl(report);
    SetReportFile(reportFile, report);
    report.setDataFiles(0, DataFileName());
    report.setDataFiles(1, WageFileName());
    report.setDataFiles(2, WageFileName());
    report.setFormulas(0, QStringLiteral("UserName = \"") + GetFarmName() + QStringLiteral(" - ") +
                              UserLabel() + u'"');
    report.setFormulas(1, QStringLiteral("Dateline ='") + dateLine + u'\'');
    report.setFormulas(2, QStringLiteral("ReportName = '") + title + u'\'');
    report.SelectionFormula =
        QStringLiteral("{Wages.EmployeeID} = ") + QString::number(app.CurrentEmployeeID);
    if (rangeFrom.isValid())
        report.SelectionFormula +=
            QStringLiteral(" and {Wages.Date} >= '%1'").arg(rangeFrom.toString(Qt::ISODate));
    if (rangeTo.isValid())
        report.SelectionFormula +=
            QStringLiteral(" and {Wages.Date} < '%1'").arg(rangeTo.addDays(1).toString(Qt::ISODate));
    qint32 index = 3;
    SetPageFormulas(report, index);
    screen.lbl_ReportInfo = title + QStringLiteral("\r\n\r\n") + dateLine;
}

void QuickView::PrintQView() {
    trap(QStringLiteral("PrintQView"), [&] {
        ReportScreen screen;
        PrepareQView(screen);
        ShowReportScreen(screen);
    });
}

} // namespace ql
