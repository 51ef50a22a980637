#pragma once
// An employee's alternative holidays on the screen: each one earned, and when it was taken or paid out;
// one earned, taken or paid out on a day is recorded at once.
#include <QDialog>

class QDateEdit;
class QLabel;
class QLineEdit;
class QTableWidget;

namespace ql {

class Database;

class AlternativeHolidaysDialog : public QDialog {
    Q_OBJECT
public:
    AlternativeHolidaysDialog(Database& wage, qint32 employeeID, QWidget* parent = nullptr);
    QTableWidget* table() const { return m_table; }
    QDateEdit* dayBox() const { return m_day; }
    QLineEdit* commentsBox() const { return m_comments; }
    // Records one earned on the day with the comments.
    void earned();
    // Marks the oldest open one taken or paid out on the day; false when none is open (message shown).
    bool closeOne(bool paidOut);

private:
    void showList();

    Database& m_wage;
    qint32 m_employeeID;
    QString m_name;
    QTableWidget* m_table = nullptr;
    QDateEdit* m_day = nullptr;
    QLineEdit* m_comments = nullptr;
    QLabel* m_open = nullptr;
};

// Opens the alternative holidays of an employee modally; an employee not on the payroll is refused.
void ShowAlternativeHolidays(Database& wage, qint32 employeeID, QWidget* owner);

} // namespace ql
