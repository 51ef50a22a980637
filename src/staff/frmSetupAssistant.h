#pragma once
// The set-up assistant of an empty payroll: the employer, then the bank account and cashbook
// accounts, then the first employee. Each page is saved as it is left with Next, so the assistant can
// be left at any page with Later and opens at the first page not yet done on the next start.
#include <QDialog>

class QLabel;
class QPushButton;
class QStackedWidget;

namespace ql {

class Database;
class EmployeePanel;
class EmployerPanel;

class frmSetupAssistant : public QDialog {
    Q_OBJECT
public:
    explicit frmSetupAssistant(Database& wage, QWidget* parent = nullptr);
    int page() const;
    void showPage(int page);
    QPushButton* nextButton() const { return cmdNext; }

    // The first page not yet done: 0 the employer, 1 the bank account, 2 the first employee; 3 when
    // everything is.
    static int FirstPageToDo(Database& wage);

private:
    void next();
    void back();

    Database& m_wage;
    QStackedWidget* m_pages;
    EmployerPanel* m_farm;
    EmployerPanel* m_bank;
    EmployeePanel* m_employee;
    QLabel* lblStep;
    QPushButton *cmdBack, *cmdNext, *cmdLater;
};

// Runs the assistant on an empty payroll; true when it ended with an employee on the roster.
bool RunSetupAssistant(Database& wage, QWidget* owner = nullptr);

} // namespace ql
