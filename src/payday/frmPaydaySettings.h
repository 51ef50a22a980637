#pragma once
// "Payday Settings": the payroll contact Inland Revenue may call, the employer's IRD number when it
// differs from the farm's, and the bank account the pays leave from. Numbers are checked on OK.
#include "data/Database.h"
#include <QDialog>

class QLineEdit;

namespace ql {

class frmPaydaySettings : public QDialog {
public:
    frmPaydaySettings(Database& wage, QWidget* parent = nullptr);
    QLineEdit* txtContactName;
    QLineEdit* txtContactPhone;
    QLineEdit* txtContactEmail;
    QLineEdit* txtEmployerIRD;
    QLineEdit* txtPayingAccount;

    // Checks and stores; on a failing number shows the system's message and keeps the dialog open.
    void accept() override;

private:
    Database& m_wage;
};

// Shows the dialog modally; true when the settings were stored.
bool ShowPaydaySettings(Database& wage, QWidget* owner);

} // namespace ql
