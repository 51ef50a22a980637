#pragma once
// "Email Settings": the employer's outgoing mail server for the payslips. The password goes to the
// desktop keyring, never to the settings file; without a keyring the screen says so in one line
// (scripts give QUILLARY_SMTP_PASSWORD).
#include <QDialog>

class QComboBox;
class QLabel;
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
    QLineEdit* txtPassword; // left empty: only a typed password is kept (an erased one is removed)
    QLabel* lblKeyring;     // where the password is kept, or that no keyring runs

    // Checks the sender's address, stores the settings and the typed password, and closes.
    void accept() override;
};

// Shows the dialog modally; true when the settings were stored.
bool ShowEmailSettings(QWidget* owner);

} // namespace ql
