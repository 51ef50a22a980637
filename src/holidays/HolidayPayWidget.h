#pragma once
// The leave tab's holiday pay panel: for a chosen leave (its kind, first day and days) the rate used
// and its working, and "Add leave to this pay", which puts the computed line on the shown pay.
#include <QWidget>

class QComboBox;
class QDateEdit;
class QDoubleSpinBox;
class QPlainTextEdit;
class QPushButton;

namespace ql {

class LeaveScreen;

class HolidayPayWidget : public QWidget {
    Q_OBJECT
public:
    explicit HolidayPayWidget(QWidget* parent = nullptr);
    // Chooses the leave kind of a ledger kind (1 to 5) and the leave of a ledger row.
    void chooseLeave(int ledgerLeaveType, const QDate& from, double days);
    // Chooses the leave of a row of the ledger's open page and works it out; a row beyond the ledger's
    // rows (the add-new row) leaves the panel as it is.
    void followLedgerRow(const LeaveScreen& ledger, int row);
    // Works the chosen leave out for the current employee and shows it.
    void workOut();
    // The "Add leave to this pay" button's work; false when refused (the message was shown).
    bool addToPay();
    QString workingText() const;

private:
    QComboBox* m_kind = nullptr;
    QDateEdit* m_from = nullptr;
    QDoubleSpinBox* m_days = nullptr;
    QPushButton* m_workOut = nullptr;
    QPushButton* m_add = nullptr;
    QPlainTextEdit* m_working = nullptr;
};

} // namespace ql
