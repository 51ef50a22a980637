#include "frmMemo.h"
#include "frame/Messages.h"
#include "payengine/PayList.h"
#include "runtime/Convert.h"
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

frmMemo::frmMemo(PayList& pays, QWidget* parent) : QDialog(parent), m_pays(pays) {
    setObjectName(QStringLiteral("frmMemo"));
    setWindowTitle(QStringLiteral("Memo"));
    setAccessibleName(QStringLiteral("Memo"));
    auto* layout = new QVBoxLayout(this);
    auto* caption = new QLabel(QStringLiteral("&Memo for this pay:"), this);
    txtMemo = new QPlainTextEdit(this);
    txtMemo->setObjectName(QStringLiteral("txtMemo"));
    txtMemo->setAccessibleName(QStringLiteral("Memo for this pay"));
    txtMemo->setTabChangesFocus(true);
    caption->setBuddy(txtMemo);
    layout->addWidget(caption);
    layout->addWidget(txtMemo, 1);
    const QVariant details = m_pays.value(QStringLiteral("Details"));
    txtMemo->setPlainText(IsNull(details) ? QString() : details.toString());

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* save = buttons->addButton(QStringLiteral("&Save"), QDialogButtonBox::AcceptRole);
    save->setObjectName(QStringLiteral("cmdSave"));
    save->setAccessibleName(QStringLiteral("Save"));
    QPushButton* cancel = buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    layout->addWidget(buttons);
    connect(save, &QPushButton::clicked, this, &frmMemo::cmdSave_Click);
    connect(cancel, &QPushButton::clicked, this, &frmMemo::cmdCancel_Click);
    resize(420, 260);
}

void frmMemo::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    txtMemo->setFocus();
}

void frmMemo::cmdSave_Click() {
    try {
        const QString text = txtMemo->toPlainText();
        m_pays.setValueNow(QStringLiteral("Details"), text.isEmpty() ? QVariant() : QVariant(text));
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("cmdSave_Click"));
    }
    accept();
}

void frmMemo::cmdCancel_Click() {
    reject();
}

} // namespace ql
