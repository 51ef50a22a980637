#include "MailProgressDialog.h"
#include "MailSender.h"
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace ql {

MailProgressDialog::MailProgressDialog(int count, QWidget* parent) : QDialog(parent), m_count(count) {
    setObjectName(QStringLiteral("frmMailProgress"));
    setWindowTitle(QStringLiteral("Sending Email"));
    setAccessibleName(windowTitle());
    setWindowModality(Qt::ApplicationModal);
    auto* layout = new QVBoxLayout(this);
    m_step = new QLabel(this);
    m_step->setObjectName(QStringLiteral("lblMailStep"));
    m_step->setTextFormat(Qt::PlainText);
    m_step->setWordWrap(true);
    // Room for a long name and address on two lines from the start: the window does not grow while
    // it stands.
    m_step->setMinimumHeight(2 * m_step->fontMetrics().lineSpacing() + 4);
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("prgMail"));
    m_bar->setAccessibleName(QStringLiteral("Payslips sent"));
    m_bar->setRange(0, qMax(1, count));
    m_bar->setValue(0);
    m_bar->setFormat(QStringLiteral("%v of %m"));
    layout->addWidget(m_step);
    layout->addWidget(m_bar);
    setMinimumWidth(460);
    sending(0, QString(), QString());
}

void MailProgressDialog::sending(int index, const QString& who, const QString& to) {
    if (who.isEmpty()) {
        m_step->setText(QStringLiteral("Sending..."));
        m_step->setAccessibleName(m_step->text());
        return;
    }
    const QString text = m_count > 1 ? QStringLiteral("Sending the payslip of %1 to %2 (%3 of %4)...")
                                           .arg(who, to)
                                           .arg(index + 1)
                                           .arg(m_count)
                                     : QStringLiteral("Sending the payslip of %1 to %2...").arg(who, to);
    m_step->setText(text);
    m_step->setAccessibleName(text);
    m_bar->setValue(index);
}

void MailProgressDialog::finish() {
    m_bar->setValue(m_bar->maximum());
    m_done = true;
    accept();
}

QString MailProgressDialog::stepText() const {
    return m_step->text();
}

// Escape and the close button wait for the server's answer: the send cannot be called back.
void MailProgressDialog::reject() {
    if (m_done) QDialog::reject();
}

void MailProgressDialog::closeEvent(QCloseEvent* event) {
    if (m_done)
        QDialog::closeEvent(event);
    else
        event->ignore();
}

QStringList SendPaySlipsShowingProgress(const QList<PaySlipSending>& slips, QWidget* parent) {
    QStringList failed;
    QList<const PaySlipSending*> ready;
    for (const PaySlipSending& s : slips) {
        if (s.problem.isEmpty())
            ready << &s;
    }
    MailProgressDialog window(int(ready.size()), parent ? parent : QApplication::activeWindow());
    if (!ready.isEmpty()) window.show();
    for (const PaySlipSending& s : slips) {
        if (!s.problem.isEmpty()) {
            failed << s.who + QStringLiteral(": ") + s.problem;
            continue;
        }
        window.sending(int(ready.indexOf(&s)), s.who, s.message.to);
        const QString why = SendMailAside(s.settings, s.password, s.message);
        if (!why.isEmpty()) failed << s.who + QStringLiteral(": ") + why;
    }
    window.finish();
    return failed;
}

} // namespace ql
