#pragma once
// Cashing up annual holidays at the employee's request, on the screen: the day of the request and the
// weeks (at most one a year), the rate and amount worked out, and "Cash Up on This Pay", which puts the
// line on the shown pay, records the leave paid out and recalculates the pay.
#include <QDialog>

class QDateEdit;
class QDoubleSpinBox;
class QLabel;

namespace ql {

class Database;

class CashUpDialog : public QDialog {
    Q_OBJECT
public:
    CashUpDialog(Database& wage, qint32 employeeID, qint32 wageID, QWidget* parent = nullptr);
    QDateEdit* dayBox() const { return m_day; }
    QDoubleSpinBox* weeksBox() const { return m_weeks; }
    QString workingText() const;
    // Works the cash-up out for the day and weeks and shows it.
    void workOut();
    // Puts it on the pay; false when refused (the message was shown).
    bool cashUp();

private:
    Database& m_wage;
    qint32 m_employeeID;
    qint32 m_wageID;
    QDateEdit* m_day = nullptr;
    QDoubleSpinBox* m_weeks = nullptr;
    QLabel* m_working = nullptr;
};

// Opens the cash-up for the shown employee and pay modally; no employee or pay is refused.
void ShowCashUp(Database& wage, qint32 employeeID, qint32 wageID, QWidget* owner);

} // namespace ql
