#include "frmInputDialog.h"
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace ql {

frmInputDialog::frmInputDialog(const QString& prompt, const QString& title, const QString& defaultText,
                               bool masked, bool numeric, QWidget* parent)
    : QDialog(parent), m_edit(new QLineEdit(defaultText, this)) {
    setWindowTitle(title);
    setModal(true);
    auto* label = new QLabel(prompt, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    if (masked) m_edit->setEchoMode(QLineEdit::Password);
    if (numeric) {
        const QString mark = QRegularExpression::escape(QLocale().decimalPoint());
        m_edit->setValidator(new QRegularExpressionValidator(
            QRegularExpression(QStringLiteral("-?[0-9]*(") + mark + QStringLiteral("[0-9]*)?")), m_edit));
    }
    m_edit->selectAll();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_edit);
    layout->addWidget(buttons);
    setMinimumWidth(320);
}

QString frmInputDialog::text() const {
    return m_edit->text();
}

QString runInputDialog(const QString& prompt, const QString& title, const QString& defaultText, bool masked,
                       bool numeric, QWidget* parent) {
    frmInputDialog d(prompt, title, defaultText, masked, numeric,
                     parent ? parent : QApplication::activeWindow());
    return d.exec() == QDialog::Accepted ? d.text() : QString();
}

} // namespace ql
