#include "frmCommit.h"
#include "runtime/Trap.h"
#include "ui/FHDatePicker.h"
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

namespace {
// The caption with an access key on its first letter, unless it has one.
QString withKey(const QString& caption) {
    return caption.contains(QLatin1Char('&')) ? caption : QLatin1Char('&') + caption;
}
} // namespace

frmCommit::frmCommit(PayView& screen, QWidget* owner) : QDialog(owner), m_model(screen, owner) {
    setObjectName(QStringLiteral("frmCommit"));
    m_model.onHide = [this] { hide(); };
    m_model.dialogOwner = this;
    m_model.Form_Load();

    auto* outer = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    outer->addLayout(grid);
    m_lblPayDate = new QLabel(QStringLiteral("Payment &Date"), this);
    m_lblPayDate->setObjectName(QStringLiteral("lblPayDate"));
    m_picker = new FHDatePicker(this);
    m_picker->setObjectName(QStringLiteral("FHDatePicker_PayDate"));
    m_picker->setAccessibleName(QStringLiteral("Payment Date"));
    m_picker->textBox()->setAccessibleName(QStringLiteral("Payment Date"));
    m_picker->setDescriptionFormat(QStringLiteral("dd mmm yyyy"));
    m_lblPayDate->setBuddy(m_picker->textBox());
    m_txtPayDate = new QLineEdit(this);
    m_txtPayDate->setObjectName(QStringLiteral("TxtPayDate"));
    m_txtPayDate->setAccessibleName(QStringLiteral("Payment date as text"));
    m_txtPayDate->setReadOnly(true);
    m_txtPayDate->setFocusPolicy(Qt::NoFocus);
    m_txtPayDate->setMaximumWidth(110);
    grid->addWidget(m_lblPayDate, 0, 0);
    grid->addWidget(m_picker, 0, 1);
    grid->addWidget(m_txtPayDate, 0, 2);
    m_lblReference = new QLabel(QStringLiteral("&Reference"), this);
    m_lblReference->setObjectName(QStringLiteral("lblReference"));
    m_reference = new QLineEdit(this);
    m_reference->setObjectName(QStringLiteral("txtReference"));
    m_reference->setAccessibleName(QStringLiteral("Reference"));
    m_reference->setMaxLength(20);
    m_lblReference->setBuddy(m_reference);
    grid->addWidget(m_lblReference, 1, 0);
    grid->addWidget(m_reference, 1, 1, 1, 2);
    m_cashbook = new QCheckBox(QStringLiteral("&Update Cashbook"), this);
    m_cashbook->setObjectName(QStringLiteral("chkCashbook"));
    m_cashbook->setAccessibleName(QStringLiteral("Update Cashbook"));
    m_print = new QCheckBox(QStringLiteral("&Generate  pay slip"), this);
    m_print->setObjectName(QStringLiteral("chk_Print"));
    m_print->setAccessibleName(QStringLiteral("Generate  pay slip"));
    m_memo = new QCheckBox(QStringLiteral("Show &Memo"), this);
    m_memo->setObjectName(QStringLiteral("chkMemo"));
    m_memo->setAccessibleName(QStringLiteral("Show Memo"));
    grid->addWidget(m_cashbook, 2, 1, 1, 2);
    grid->addWidget(m_print, 3, 1, 1, 2);
    grid->addWidget(m_memo, 4, 1, 1, 2);
    // A typed PAYE is committed as typed: the dialog says so before the commit.
    if (!m_model.typedPaye.isEmpty()) {
        auto* typed = new QLabel(m_model.typedPayeCaption(), this);
        typed->setObjectName(QStringLiteral("lblTypedPaye"));
        typed->setAccessibleName(m_model.typedPayeCaption());
        grid->addWidget(typed, 5, 0, 1, 3);
    }

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_commit = new QPushButton(this);
    m_commit->setObjectName(QStringLiteral("cmd_Commit(0)"));
    m_commit->setDefault(true);
    m_cancel = new QPushButton(QStringLiteral("Cancel"), this);
    m_cancel->setObjectName(QStringLiteral("cmd_Commit(1)"));
    m_cancel->setAccessibleName(QStringLiteral("Cancel"));
    buttons->addWidget(m_commit);
    buttons->addWidget(m_cancel);
    outer->addLayout(buttons);

    setTabOrder(m_picker->textBox(), m_reference);
    setTabOrder(m_reference, m_cashbook);
    setTabOrder(m_cashbook, m_print);
    setTabOrder(m_print, m_memo);
    setTabOrder(m_memo, m_commit);
    setTabOrder(m_commit, m_cancel);

    showModel();
    connect(m_picker, &FHDatePicker::DateChanged, this, [this](const QDateTime&, const QDateTime& d) {
        m_model.setPayDate(d.date());
        m_txtPayDate->setText(m_model.TxtPayDate);
    });
    connect(m_reference, &QLineEdit::textEdited, this,
            [this](const QString& t) { m_model.txtReference = t; });
    connect(m_cashbook, &QCheckBox::toggled, this, [this](bool on) { m_model.setCashbook(on); });
    connect(m_print, &QCheckBox::toggled, this, [this](bool on) { m_model.setPrint(on); });
    connect(m_memo, &QCheckBox::toggled, this, [this](bool on) { m_model.setMemo(on); });
    connect(m_commit, &QPushButton::clicked, this, [this] { commitClicked(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { reject(); });
    m_reference->setFocus();
    m_reference->selectAll();
}

void frmCommit::showModel() {
    setWindowTitle(m_model.title);
    setAccessibleName(m_model.title);
    m_picker->setDate(m_model.payDate);
    m_txtPayDate->setText(m_model.TxtPayDate);
    m_reference->setText(m_model.txtReference);
    const QSignalBlocker b1(m_cashbook), b2(m_print), b3(m_memo);
    m_cashbook->setChecked(m_model.chkCashbook);
    m_print->setChecked(m_model.chkPrint);
    m_memo->setChecked(m_model.chkMemo);
    m_memo->setVisible(m_model.memoVisible);
    m_picker->setEnabled(m_model.dateEnabled);
    m_txtPayDate->setEnabled(m_model.dateEnabled);
    m_lblPayDate->setEnabled(m_model.dateEnabled);
    m_reference->setEnabled(m_model.referenceEnabled);
    m_lblReference->setEnabled(m_model.referenceEnabled);
    m_print->setEnabled(m_model.printEnabled);
    m_cashbook->setEnabled(m_model.cashbookEnabled);
    m_commit->setText(withKey(m_model.commitCaption));
    m_commit->setAccessibleName(QString(m_model.commitCaption).remove(QLatin1Char('&')));
}

void frmCommit::commitClicked() {
    m_model.txtReference = m_reference->text();
    bool done = false;
    // A failure the commit does not trap itself ends at the button, reported; the dialog stays.
    trap(QStringLiteral("cmd_Commit_Click"), [&] { done = m_model.cmd_Commit_Click(0); });
    if (done) {
        accept();
        return;
    }
    showModel();
    if (m_model.focusControl == QLatin1String("txtReference")) m_reference->setFocus();
}

void frmCommit::reject() {
    m_model.cmd_Commit_Click(1);
    QDialog::reject();
}

bool ShowCommitDialog(QWidget* owner, PayView& screen) {
    frmCommit dialog(screen, owner);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace ql
