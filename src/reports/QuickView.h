#pragma once
// The wage history ("History") without widgets: every pay of the current employee, one line each, with
// a totals row, in date order or in the order of entry, and its print. The widget frmQuickView shows
// this object; the command line drives it directly.
#include "QuickViewRows.h"
#include <QDate>
#include <QString>
#include <QList>
#include <QStringList>
#include <functional>

namespace ql {

class ReportScreen;

// Date order (true) or the order of entry; false at the start of a run, kept between openings.
bool QuickViewDateOrder();
void setQuickViewDateOrder(bool dateOrder);

// The report of the history: ql_quickview.rpt in date order, ql_QViewUnsort.rpt in entry order.
QString QuickViewReportFile(bool dateOrder);

// The named format of each of the ten columns.
const QStringList& QuickViewFormats();

// The text of the print's date line: "|0| to |1|" with the first and last pay date; with no pay the
// message "No entries for this employee!" is shown and its text returned.
QString GetWageDateRange();

// One pay of the history's chart.
struct HistoryPoint {
    QDate date;
    double gross = 0;
    double paye = 0;
    double takeHome = 0;
};

class QuickView {
public:
    QuickView();

    QString caption = QStringLiteral("History");
    QString txtEmployee;
    QuickViewRows QuickViewArray; // ten columns; cells as the query gives them, read as they are shown
    QStringList Text1;        // the totals row, Text1(0) to Text1(8)
    bool cmdDateOrderEnabled = true;
    bool cmdEntryOrderEnabled = true;
    QString focusControl;

    // Beyond the screen: only the pays from..to (an invalid date leaves that end open).
    QDate rangeFrom;
    QDate rangeTo;

    // The load: the list, the buttons, the name and the column captions.
    void Form_Load(const QString& employeeName);
    // Coming to the front: the totals, and the focus to cmdOK.
    void Form_Activate();
    void AssignQVData();
    // Loads the list and the totals again when the pays may have changed since the list was loaded
    // (the screen stays open beside the wage screen); true when it did.
    bool RefreshIfChanged();
    void SetQuickViewButtons();
    void ShowQuickViewTotals();
    void cmdDateOrder_Click();
    void cmdEntryOrder_Click();
    void PrintQView();
    // The report screen of the print, prepared as PrintQView prepares it.
    void PrepareQView(ReportScreen& screen);

    // The cell as the grid shows it; empty when it cannot be read.
    QString cellText(int row, int column) const;
    // Whether the pay of a row is committed (it has a reference); a row that cannot be read is not.
    bool Committed(int row) const;
    // The state of a row's pay in words: "Committed on 13/11/2026, reference 12", or "Not committed".
    QString CommitLine(int row) const;
    // Gross, PAYE and take-home of the pays the list holds, by date.
    QList<HistoryPoint> ChartPoints() const;

    std::function<void()> onChanged; // the list, the totals or the buttons changed

private:
    QString rangeWhere(const QString& dateColumn) const;
    QString listWhere() const;
    void changed();
};

} // namespace ql
