#pragma once
// "Tax Information": the PAYE settings dialog. It shows a PayeInfoForm and forwards the user's
// events to it; closing it by any way (OK, Cancel, Escape, the window's close button) saves.
#include "PayeInfoForm.h"
#include <QDialog>
#include <QHash>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ql {

class frmPayeInfo : public QDialog {
    Q_OBJECT
public:
    explicit frmPayeInfo(QWidget* owner = nullptr);
    ~frmPayeInfo() override;
    PayeInfoForm& form() { return m_form; }
    // The result text after the dialog closed: empty after OK, "Cancelled" after Cancel.
    QString result() const { return m_form.result; }

    void done(int r) override;
    void reject() override; // Escape presses Cancel

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* combo(const QString& name, ComboModel& model);
    void showCombo(QComboBox* box, const ComboModel& model);
    void showForm();
    void showHelp();
    void press(int index);
    void unloadOnce();

    PayeInfoForm m_form;
    QHash<QString, QLabel*> m_labels;
    QComboBox *m_freq, *m_holding, *m_wage, *m_adjust, *m_payment, *m_taxOffice;
    QCheckBox* m_nonCash;
    QLineEdit* m_start;
    QLabel *m_info, *m_noncashHelp;
    QPushButton *m_ok, *m_cancel;
    bool m_unloaded = false;
    bool m_closing = false;
};

// Shows the dialog modally and returns its result text. Install it for the code below the screens
// with installPayeInfoDialog().
QString ShowPayeInfoDialog(QWidget* owner);
void installPayeInfoDialog();

} // namespace ql
