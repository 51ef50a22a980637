#pragma once
// The employer details screen: the farm's name, address and numbers, the payroll contact, the paying
// account, how often PAYE is filed, and the way to the Tax Information dialog for the cashbook
// accounts. The panel serves the dialog and the first pages of the set-up assistant.
#include <QDialog>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;

namespace ql {

class Database;

class EmployerPanel : public QWidget {
    Q_OBJECT
public:
    // part: 0 everything; 1 the farm and the contact; 2 the bank account, PAYE filing and accounts.
    EmployerPanel(Database& wage, int part = 0, QWidget* parent = nullptr);
    void load();
    bool save(); // false after showing what is wrong
    QLineEdit* txtName = nullptr;
    QLineEdit* txtAccount = nullptr;

private:
    Database& m_wage;
    QLineEdit *txtAddress, *txtCity, *txtPostcode, *txtIRD, *txtGST, *txtContactName, *txtContactPhone,
        *txtContactEmail;
    QComboBox* cboPayeFiling = nullptr;
    QLabel* lblProblems = nullptr;
};

class frmEmployerDetails : public QDialog {
    Q_OBJECT
public:
    explicit frmEmployerDetails(Database& wage, QWidget* parent = nullptr);
    void accept() override;

private:
    EmployerPanel* m_panel;
};

bool ShowEmployerDetails(Database& wage, QWidget* owner);

} // namespace ql
