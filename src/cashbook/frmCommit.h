#pragma once
// "Commit Pay" (or "Pay Slip" for a committed pay): the commit dialog of the wage screen. It shows a
// CommitModel standing on the screen's current pay and forwards the user's changes to it.
#include "CommitModel.h"
#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ql {

class FHDatePicker;
class PayView;

class frmCommit : public QDialog {
    Q_OBJECT
public:
    // Loads the dialog for the current pay of screen (the load writes the boxes' settings).
    frmCommit(PayView& screen, QWidget* owner = nullptr);
    CommitModel& model() { return m_model; }
    FHDatePicker* datePicker() const { return m_picker; }

    void reject() override; // Cancel, Escape and the window's close button

private:
    void commitClicked();
    void showModel();

    CommitModel m_model;
    FHDatePicker* m_picker;
    QLineEdit* m_txtPayDate;
    QLineEdit* m_reference;
    QLabel *m_lblPayDate, *m_lblReference;
    QCheckBox *m_cashbook, *m_print, *m_memo;
    QPushButton *m_commit, *m_cancel;
};

// The entry point of the wage screen's commit button: shows the dialog modally for the screen's
// current pay, owned by owner. True when the dialog ended by Commit (or OK in reprint mode), false
// when it was cancelled. The screen then shows its current row again (status, caption, lock).
bool ShowCommitDialog(QWidget* owner, PayView& screen);

} // namespace ql
