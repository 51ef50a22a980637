#pragma once
// The window that stands while payslips go to the mail server: which one of how many, and to whom.
// Each send runs on a thread of its own, so the window is painted and the program answers meanwhile;
// it is modal and cannot be closed until the last send has its answer.
#include "PaySlipEmail.h"
#include <QDialog>
#include <QList>
#include <QStringList>

class QLabel;
class QProgressBar;

namespace ql {

class MailProgressDialog : public QDialog {
    Q_OBJECT
public:
    MailProgressDialog(int count, QWidget* parent = nullptr);
    // Slip `index` (from 0) is on its way.
    void sending(int index, const QString& who, const QString& to);
    // Every slip has its answer: the window may go.
    void finish();
    QString stepText() const;

protected:
    void reject() override;
    void closeEvent(QCloseEvent* event) override;

private:
    QLabel* m_step = nullptr;
    QProgressBar* m_bar = nullptr;
    int m_count = 0;
    bool m_done = false;
};

// Sends each slip in turn with the window over parent (the active window when none is given); a slip
// with a problem is not sent. Returns "Name: why" for each that did not go, in their order.
QStringList SendPaySlipsShowingProgress(const QList<PaySlipSending>& slips, QWidget* parent = nullptr);

} // namespace ql
