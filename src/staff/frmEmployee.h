#pragma once
// The employee editor: every field of an employee (the table of EmployeeFields), each with its
// caption, access key and accessible name. The panel serves the editor dialog and the set-up
// assistant's last page.
#include "EmployeeDetails.h"
#include <QDialog>
#include <QHash>
#include <QWidget>

class QLabel;
class QTabWidget;

namespace ql {

class Database;
class TaxItemsWidget;

class EmployeePanel : public QWidget {
    Q_OBJECT
public:
    EmployeePanel(Database& wage, QWidget* parent = nullptr);
    void load(const EmployeeDetails& details);
    // Saves the fields as typed; false after showing what is wrong (the first bad field gets the focus).
    bool save();
    qint32 employeeID() const { return m_details.EmployeeID; }
    QWidget* field(const QString& option) const { return m_fields.value(option); }

private:
    QString typed(const QString& option) const;
    void showProblems(const QString& text, const QString& firstOption);

    Database& m_wage;
    EmployeeDetails m_details;
    QHash<QString, QWidget*> m_fields;
    QLabel* lblProblems = nullptr;
    QTabWidget* m_pages = nullptr;
    TaxItemsWidget* m_taxItems = nullptr;
};

class frmEmployee : public QDialog {
    Q_OBJECT
public:
    // employeeID 0: a new employee.
    frmEmployee(Database& wage, qint32 employeeID, QWidget* parent = nullptr);
    EmployeePanel* panel() const { return m_panel; }
    void accept() override;

private:
    EmployeePanel* m_panel;
};

// Opens the editor modally; returns the saved employee's id, or 0 when cancelled.
qint32 EditEmployee(Database& wage, qint32 employeeID, QWidget* owner);

} // namespace ql
