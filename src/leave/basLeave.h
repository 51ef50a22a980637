#pragma once
// The leave ledger's procedures: the employee's leave year, loading a sub-tab into the leave array,
// the totals with the balance carried forward, the corrections of a cell and of a row before the grid
// stores them, and writing the array back to LeaveDetails.
#include <QDate>
#include <QString>
#include <QStringList>

namespace ql {

class LeaveScreen;
struct LeaveGrid;
class PayView;

// Kinds of leave transaction with a fixed meaning, whatever their text in TransType.
namespace leave {
constexpr int Taken = 2;       // adds to the total taken; its To date follows from the days
constexpr int Subtracted = 3;  // subtracted from the total allocated
constexpr int Added = 4;       // added to the total allocated
constexpr int InLieu = 4;      // the one leave type that counts in hours
constexpr int ColumnCount = 8; // LeaveID, EmployeeID, LeaveTypeID, Description, Days, From, To, Comments
enum Column { LeaveID, EmployeeID, LeaveTypeID, Description, Days, DateFrom, DateTo, Comments };
} // namespace leave

// "Annual Leave|Sick Leave|Special Leave|In Lieu|Leave without Pay", as one text.
QString tabLeaveCaptions();
// The eight column headers of the leave array; column 4 is "Hours" for In Lieu, else "Days".
QStringList leaveHeaders(int leaveTypeID);

// The current employee's leave year, anniversary to anniversary of DateHired. On the anniversary
// itself the year is still the old one.
void GetCurrentYear(QDate& start, QDate& end);

// Loads the array for the current employee and sub-tab tabIndex, sets up its columns and the period
// labels, and shows the totals.
void FillLeaveData(LeaveScreen& form, int tabIndex);
// A fresh start: no type loaded, so no later save can write old rows; then FillLeaveData.
void InitLeave(LeaveScreen& form, int tabIndex);

// The balance brought into the period starting on dateText: every transaction of the address that
// ended before it, by TransType.Added; 0 when there is none.
float GetLeaveCarriedForward(const QString& dateText, qint32 leaveTypeID, qint32 addressID);

// Recomputes the totals from the array and shows them.
void RefreshLeaveTotals(LeaveScreen& form);

// Corrects the cell colIndex of the grid's current row in place before it is stored. ok is false only
// when an error was trapped; message stays empty.
void ValidateLeaveField(int colIndex, bool& ok, QString& message, LeaveScreen& form, const QDate& upper,
                        const QDate& lower);
// Completes the grid's current row before it is stored; false when it has no transaction kind.
bool ValidateLeaveRecord(LeaveGrid& grid, const QDate& lower, const QDate& upper);

// Writes the array back: deletes the rows the array was loaded from, then adds every row that has a
// transaction kind. Only for the employee whose rows the array holds.
void SaveLeaveXArray(LeaveScreen& form);

// Hides the pay side of the wage screen while the leave tab is up.
void HideWageButtons(PayView& form);

} // namespace ql
