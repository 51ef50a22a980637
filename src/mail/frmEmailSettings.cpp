#include "frmEmailSettings.h"
#include "MailKeyring.h"
#include "MailSettings.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace ql {

namespace {
const QStringList kSecurity{QStringLiteral("none"), QStringLiteral("starttls"), QStringLiteral("tls")};
}

frmEmailSettings::frmEmailSettings(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Email Settings"));
    setModal(true);
    const MailSettings s = ReadMailSettings();
    txtHost = new QLineEdit(s.host, this);
    txtHost->setObjectName(QStringLiteral("txtHost"));
    txtHost->setAccessibleName(QStringLiteral("Mail server"));
    spnPort = new QSpinBox(this);
    spnPort->setObjectName(QStringLiteral("spnPort"));
    spnPort->setAccessibleName(QStringLiteral("Mail server port"));
    spnPort->setRange(1, 65535);
    spnPort->setValue(s.effectivePort());
    cboSecurity = new QComboBox(this);
    cboSecurity->setObjectName(QStringLiteral("cboSecurity"));
    cboSecurity->setAccessibleName(QStringLiteral("Security"));
    cboSecurity->addItems({QStringLiteral("None"), QStringLiteral("STARTTLS"), QStringLiteral("TLS")});
    cboSecurity->setCurrentIndex(std::max(0, static_cast<int>(kSecurity.indexOf(s.security))));
    txtUser = new QLineEdit(s.user, this);
    txtUser->setObjectName(QStringLiteral("txtUser"));
    txtUser->setAccessibleName(QStringLiteral("User name"));
    txtFrom = new QLineEdit(s.from, this);
    txtFrom->setObjectName(QStringLiteral("txtFrom"));
    txtFrom->setAccessibleName(QStringLiteral("Sender's address"));

    txtPassword = new QLineEdit(this);
    txtPassword->setObjectName(QStringLiteral("txtPassword"));
    txtPassword->setAccessibleName(QStringLiteral("Password"));
    txtPassword->setEchoMode(QLineEdit::Password);
    lblKeyring = new QLabel(this);
    lblKeyring->setObjectName(QStringLiteral("lblKeyring"));
    const QString problem = KeyringProblem();
    if (!problem.isEmpty()) {
        txtPassword->setEnabled(false);
        lblKeyring->setText(problem);
    } else {
        QString why;
        const bool kept = !ReadKeyringPassword(s, &why).isEmpty();
        if (kept) txtPassword->setPlaceholderText(QStringLiteral("(kept in the keyring)"));
        lblKeyring->setText(!why.isEmpty() ? why
                            : kept        ? QStringLiteral("The password is kept in the desktop keyring.")
                                          : QStringLiteral("A password typed here is kept in the desktop keyring."));
    }
    lblKeyring->setAccessibleName(lblKeyring->text());

    auto* form = new QFormLayout;
    const auto row = [&](const QString& caption, QWidget* field) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        form->addRow(label, field);
    };
    row(QStringLiteral("&Server:"), txtHost);
    row(QStringLiteral("&Port:"), spnPort);
    row(QStringLiteral("S&ecurity:"), cboSecurity);
    row(QStringLiteral("&User:"), txtUser);
    row(QStringLiteral("&From:"), txtFrom);
    row(QStringLiteral("Pass&word:"), txtPassword);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("&OK"));
    buttons->button(QDialogButtonBox::Ok)->setAccessibleName(QStringLiteral("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("&Cancel"));
    buttons->button(QDialogButtonBox::Cancel)->setAccessibleName(QStringLiteral("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // A new security brings its usual port.
    connect(cboSecurity, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int i) {
        MailSettings usual;
        usual.security = kSecurity.value(i);
        spnPort->setValue(usual.effectivePort());
    });
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(lblKeyring);
    layout->addWidget(buttons);
}

void frmEmailSettings::accept() {
    MailSettings s;
    s.host = txtHost->text().trimmed();
    s.port = spnPort->value();
    s.security = kSecurity.value(cboSecurity->currentIndex());
    s.user = txtUser->text().trimmed();
    s.from = txtFrom->text().trimmed();
    if (!s.from.isEmpty() && (!s.from.contains(u'@') || s.from.contains(u' '))) {
        ShowMessage(QStringLiteral("%1 is not an email address.").arg(s.from), msg::OKOnly, Firm(),
                    QStringLiteral("Email Settings"), QString(), msg::Warning, true);
        txtFrom->setFocus();
        return;
    }
    SaveMailSettings(s);
    if (txtPassword->isEnabled() && txtPassword->isModified()) {
        const QString why = StoreKeyringPassword(s, txtPassword->text());
        if (!why.isEmpty()) {
            ShowMessage(why, msg::OKOnly, Firm(), QStringLiteral("Email Settings"), QString(), msg::Warning, true);
            txtPassword->setFocus();
            return;
        }
    }
    QDialog::accept();
}

bool ShowEmailSettings(QWidget* owner) {
    frmEmailSettings d(owner);
    return d.exec() == QDialog::Accepted;
}

} // namespace ql
