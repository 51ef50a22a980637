#pragma once
// The list of employees (finished ones shown as finished), with the ways to add, edit, import and
// export them. Every change goes through the employee editor or the CSV import.
#include <QDialog>

class QTableWidget;

namespace ql {

class Database;

class frmEmployees : public QDialog {
    Q_OBJECT
public:
    explicit frmEmployees(Database& wage, QWidget* parent = nullptr);
    void refill(qint32 select = 0);
    QTableWidget* grid() const { return grdEmployees; }
    bool changed() const { return m_changed; }

private:
    void editSelected();
    void add();
    void importFile();
    void exportFile();

    Database& m_wage;
    QTableWidget* grdEmployees;
    bool m_changed = false;
};

// Shows the list modally, on the employee `shown` when given; true when an employee was added or changed.
bool ShowEmployees(Database& wage, QWidget* owner, qint32 shown = 0);

} // namespace ql
