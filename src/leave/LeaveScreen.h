#pragma once
// The leave tab without widgets: the five sub-tabs, the leave array behind tgrdLeave with the grid's
// current row, the period labels, the totals and the "Current Year"/"All Years" option. The widget
// LeaveTabWidget shows this object and forwards the user's events to it; the command line and the tests
// drive it directly. The wage screen calls the tab events (entering, leaving, employee change, unload).
#include "data/GridArray.h"
#include <QDate>
#include <QString>
#include <QVariant>
#include <QVector>
#include <functional>

namespace ql {

// The grid as the procedures see it: its current row with the cells as they stand, pending edits
// included (Columns(i).Value). Row is an array row, or the array's row count for the add-new row.
struct LeaveGrid {
    int Row = -1;
    QVector<QVariant> Columns = QVector<QVariant>(8);
    bool dirty = false; // the row differs from the array
};

class LeaveScreen {
public:
    LeaveScreen();

    // --- what the tab shows ---------------------------------------------------------------------------
    QString tabLeaveCaption; // the five captions as one text with "|"
    int tabLeaveIndex = 0;   // the open sub-tab
    int optWhichYears = 0;   // 0 "Current Year", 1 "All Years"
    bool currentYear() const { return optWhichYears == 0; }
    QString lblfDate, lbltDate, lblHired;
    bool cForwardVisible = true; // lblCForward and txtLeaveCForward
    QString txtLeaveCForward, txtLeaveAdded, txtLeaveTaken, txtLeaveAvailable;
    QString txtLeaveTotal; // stands on the screen; nothing fills it

    // --- the leave array and its grid -----------------------------------------------------------------
    GridArray LeaveArray;
    LeaveGrid tgrdLeave;

    // --- state of the loaded page ---------------------------------------------------------------------
    qint32 CurrentLeaveTypeID = 0;    // 0 when no sub-tab is loaded
    qint32 LeaveLoadedEmployeeID = 0; // whose rows the array holds
    QString LeaveSelect;              // the select list up to FROM LeaveDetails
    QString LeaveWhere;               // the filter that loaded the array; the save deletes by it

    // --- events of the wage screen --------------------------------------------------------------------
    void Form_Load();                // the captions, the first sub-tab
    void enterTab();                 // the main tab moves to leave: the option from AllLeave, the page filled
    void leaveTab();                 // the main tab leaves leave: save, then AllLeave stored
    void storeAllLeave() const;      // "N" for "Current Year", else "Y"
    void saveBeforeEmployeeChange(); // before cboEmployee changes the employee
    void employeeChanged(bool leaveTabUp); // after it: the page filled again when the tab is up
    void initPage();                       // InitLeave for the open page (address book)
    void unload(bool leaveTabUp);          // the screen closes
    void saveLeave();                      // SaveLeaveXArray, as a title button does first

    // --- events of the tab ----------------------------------------------------------------------------
    void tabLeave_Click(int index);
    void nextPage(); // Ctrl+Tab: the next sub-tab, from the last to the first
    void optWhichYears_Click(int index);
    void setOption(int index); // the option set without a fill, as the load does

    // --- the grid -------------------------------------------------------------------------------------
    int gridRowCount() const { return LeaveArray.rowCount() + 1; } // with the add-new row
    // A cell as the grid shows it; the empty text for an empty cell.
    QString cellText(int row, int column) const;
    QVariant cellValue(int row, int column) const; // Null beyond the array
    // The drop-down of the Description column: the stored value of an entry by its name or value text,
    // an invalid QVariant when the text names no entry.
    QVariant kindValue(const QString& text) const;
    // A typed cell as the grid stores it: the correction of the cell, the store, the row update and the
    // totals. False when the store was cancelled; the cell then keeps its old value.
    bool storeCell(int row, int column, const QString& text);
    // Writes the current row into the array (the grid's Update), through the row completion.
    void UpdateGrid();
    // The confirmation; true when the delete is cancelled.
    bool tgrdLeave_BeforeDelete();
    // The whole delete of an array row as the user does it; false when it was not deleted.
    bool deleteRow(int row);
    void deleteArrayRow(int row); // the delete itself, then the totals
    // True when the grid's own data error is silenced.
    static bool tgrdLeave_Error(int dataError) { return dataError == 16389; }

    // The bounds of cell correction (upper, lower) and of row completion (lower, upper).
    void fieldBounds(QDate& upper, QDate& lower) const;
    void recordBounds(QDate& lower, QDate& upper) const;

    // --- what widgets listen to -----------------------------------------------------------------------
    std::function<void()> onFieldsChanged;    // labels, totals, option or sub-tab changed
    std::function<void()> onArrayLoaded;      // the array was replaced by a fill
    std::function<void()> onFlushEditor;      // end an open cell editor, storing its text
    std::function<void(int)> onOptionChanged; // optWhichYears took a new value (the load or a click)
    void fieldsChanged() const {
        if (onFieldsChanged) onFieldsChanged();
    }

private:
    void selectRow(int row);
    bool m_flushing = false;
};

} // namespace ql
