#pragma once
// The one-off pay dialog: date, payment type, amount, tax type and the calculated PAYE. Shows a
// OneOffForm and forwards the user's events to it. The pay is made as the dialog closes, unless Cancel
// (or Escape) closed it: closing by the title bar counts as OK.
#include "OneOff.h"
#include <QDialog>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace ql {

class FHDatePicker;
class PayView;

class frmOneOff : public QDialog {
    Q_OBJECT
public:
    // Loads the form: fills the lists and takes date when it is a valid date, else today.
    explicit frmOneOff(const QVariant& date = QVariant(), QWidget* parent = nullptr);
    ~frmOneOff() override;
    OneOffForm& form() { return m_form; }

    QLineEdit* text1(int index) const { return m_text1[index]; }
    QComboBox* cmbPayName() const { return m_cmbPayName; }
    QComboBox* cmbTaxType() const { return m_cmbTaxType; }
    QLineEdit* notLiable() const { return m_notLiable; }
    QPushButton* cmdOK() const { return m_cmdOK; }
    QPushButton* cmdCancel() const { return m_cmdCancel; }
    QWidget* picker() const;
    // The picker's date, and setting it as the user does (its change event follows).
    QDate pickerDate() const;
    void setPickerDate(const QDate& date);

public slots:
    void reject() override; // Escape presses Cancel

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showState(); // the model's state into the widgets
    void unloadAndClose(bool cancelled);
    void applyFocusRequest();

    OneOffForm m_form;
    QLineEdit* m_text1[3] = {};
    FHDatePicker* m_picker = nullptr;
    QComboBox* m_cmbPayName = nullptr;
    QComboBox* m_cmbTaxType = nullptr;
    QLineEdit* m_notLiable = nullptr; // of an extra pay: the part not liable for the ACC earners' levy
    QPushButton* m_cmdOK = nullptr;
    QPushButton* m_cmdCancel = nullptr;
    bool m_showing = false;
    bool m_closed = false;
};

// What the wage screen's one-off button (with today's date) and its calendar's one-off choice (with the
// picked date) call: shows the dialog modally over owner, then, whether or not a pay was made, moves
// the pay list of form to its last row (AfterOneOffDialog). Returns the WageID made, or 0.
qint32 OpenOneOffDialog(QWidget* owner, PayView& form, const QVariant& date);

} // namespace ql
