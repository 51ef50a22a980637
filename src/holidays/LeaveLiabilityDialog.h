#pragma once
// The leave liability on the screen: for a day, every employee's balances and what they are worth, with
// the report to print (or save as PDF) and the rows to save as CSV.
#include "LeaveLiability.h"
#include <QDialog>
#include <functional>

class QDateEdit;
class QLabel;
class QTableWidget;

namespace ql {

class Database;

class LeaveLiabilityDialog : public QDialog {
    Q_OBJECT
public:
    LeaveLiabilityDialog(Database& wage, QWidget* parent = nullptr);
    // Works the liability out for the day and shows it.
    void showDay(const QDate& day);
    const holidays::Liability& liability() const { return m_liability; }
    QTableWidget* table() const { return m_table; }
    void print();
    // Writes the CSV to the path the chooser gives; false when cancelled or not written (the reason shown).
    bool saveCsv();

    // Asks for the CSV file's path; the empty text cancels. Tests replace it.
    using PathChooser = std::function<QString(QWidget* parent, const QString& suggested)>;
    static PathChooser setPathChooser(PathChooser chooser);

private:
    Database& m_wage;
    holidays::Liability m_liability;
    QDateEdit* m_day = nullptr;
    QTableWidget* m_table = nullptr;
    QLabel* m_status = nullptr;
};

// Opens the dialog modally on today.
void ShowLeaveLiability(Database& wage, QWidget* owner);

} // namespace ql
