#pragma once
// "Email Settings": the employer's outgoing mail server for the payslips. The password is not asked
// for here: it is never kept in the settings file (scripts give QUILLARY_SMTP_PASSWORD).
#include <QDialog>

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace ql {

class frmEmailSettings : public QDialog {
public:
    explicit frmEmailSettings(QWidget* parent = nullptr);
    QLineEdit* txtHost;
    QSpinBox* spnPort;
    QComboBox* cboSecurity; // none, starttls, tls
    QLineEdit* txtUser;
    QLineEdit* txtFrom;

    // Checks the sender's address, stores the settings and closes.
    void accept() override;
};

// Shows the dialog modally; true when the settings were stored.
bool ShowEmailSettings(QWidget* owner);

} // namespace ql
