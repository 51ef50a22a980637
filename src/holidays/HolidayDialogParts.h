#pragma once
// What the holiday screens share: Save and Cancel with their keys, an employee named as the roster names
// them, and the editing box inside a date or number box answering to the box's name.
#include <QString>

class QDialog;
class QDialogButtonBox;
class QPushButton;
class QTableWidget;
class QWidget;

namespace ql {

class Database;

// "&Save" (the dialog's accept, named saveName) and "&Cancel" (its reject).
QDialogButtonBox* SaveCancelButtons(QDialog* dialog, const QString& saveName);
// "Last, First" from the address book; "Employee N" when there is no name.
QString EmployeeCaption(Database& wage, qint32 employeeID);
void NameInnerEdit(QWidget* box);
// A list to read: no cell edited, a row chosen whole, one at a time, no row numbers, and Tab leaving it
// for the next control.
void MakeReadOnlyList(QTableWidget* table);
QPushButton* NamedButton(QWidget* parent, const QString& caption, const QString& name, const QString& accessible);
// Whether the employee is on the payroll; whether the pay is there (of the employee, when one is given).
bool EmployeeOnPayroll(Database& wage, qint32 employeeID);
bool PayOnPayroll(Database& wage, qint32 wageID, qint32 employeeID = 0);
// The refusal of a screen of a pay opened without one.
QString NoPayText();
// Runs the dialog modally and gives its owner's window the activation back, which without a window
// manager nobody else does (the owner's keys would not work); true when accepted.
bool ExecAndReturn(QDialog& dialog, QWidget* owner);

} // namespace ql
