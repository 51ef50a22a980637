#pragma once
// The days and hours of a pay on the screen: each day of the pay's period with its usual hours and the
// hours worked (a day with 0 hours: not worked), or, without single days, the days and hours of the
// whole pay. They are the inputs of average daily pay, the hours test and the minimum wage check.
#include "WorkPattern.h"
#include <QDate>
#include <QDialog>

class QLabel;
class QLineEdit;
class QTableWidget;

namespace ql {

class Database;

class PayDaysDialog : public QDialog {
    Q_OBJECT
public:
    // The pay must exist (see ShowPayDays).
    PayDaysDialog(Database& wage, qint32 wageID, QWidget* parent = nullptr);
    QTableWidget* table() const { return m_table; }
    QLineEdit* daysBox() const { return m_days; }
    QLineEdit* hoursBox() const { return m_hours; }
    QDate periodStart() const { return m_start; }
    QDate periodEnd() const { return m_end; }
    // Puts each day's usual hours in its hours cell.
    void fillUsualHours();
    // Empties every day's hours cell.
    void clearDays();
    // Writes what the screen shows; false when refused (the message was shown, the focus on the cell).
    bool save();
    void accept() override;

private:
    void showTotals();

    Database& m_wage;
    qint32 m_wageID;
    qint32 m_employeeID = 0;
    QDate m_start, m_end;
    QTableWidget* m_table = nullptr;
    QLineEdit* m_days = nullptr;
    QLineEdit* m_hours = nullptr;
    QLabel* m_totals = nullptr;
    bool m_filling = false;
};

// Opens the days and hours of the pay modally; true when saved. No pay (0, or one that is gone) is
// refused with a message.
bool ShowPayDays(Database& wage, qint32 wageID, QWidget* owner);

} // namespace ql
