#pragma once
// An employee's holiday set-up on the screen: the usual work patterns with their dates (a new pattern
// from a date, the earlier ones listed) and the holiday terms. Nothing is written until Save, which
// writes patterns and terms together.
#include "WorkPattern.h"
#include <QDialog>
#include <QMap>
#include <array>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace ql {

class Database;

class HolidaySetupDialog : public QDialog {
    Q_OBJECT
public:
    HolidaySetupDialog(Database& wage, qint32 employeeID, QWidget* parent = nullptr);
    qint32 employeeID() const { return m_employeeID; }

    // The pattern boxes: the first day and the hours of Monday to Sunday.
    QDateEdit* fromBox() const { return m_from; }
    QDoubleSpinBox* hoursBox(int weekday) const { return m_hours.at(std::size_t(weekday)); }
    QTableWidget* patternTable() const { return m_table; }
    // Keeps the pattern of the boxes (replacing one from the same day); false when refused (message shown).
    bool keepPattern();
    // Takes the pattern of the table's current row away.
    void removePattern();
    // The patterns as they stand on the screen, earliest first.
    QList<holidays::WorkPattern> patterns() const;

    QComboBox* regionBox() const { return m_region; }
    QCheckBox* payAsYouGoBox() const { return m_payAsYouGo; }
    QCheckBox* continuousBox() const { return m_continuous; }
    QDoubleSpinBox* penalRateBox() const { return m_penalRate; }
    QComboBox* minimumWageBox() const { return m_minimumWage; }
    QComboBox* dailyPayBox() const { return m_dailyPay; }
    holidays::HolidayTerms terms() const;

    // Writes the patterns and terms in one transaction; false when refused or cancelled (nothing written).
    bool save();
    void accept() override;

private:
    void showPatterns();
    void showRowInBoxes(int row);
    bool boxesDiffer() const;
    holidays::WorkPattern boxesPattern() const;

    Database& m_wage;
    qint32 m_employeeID;
    QMap<QDate, holidays::WorkPattern> m_patterns;
    QList<QDate> m_stored;
    QDateEdit* m_from = nullptr;
    std::array<QDoubleSpinBox*, 7> m_hours{};
    QTableWidget* m_table = nullptr;
    QLabel* m_patternNote = nullptr;
    QPushButton* m_keep = nullptr;
    QPushButton* m_remove = nullptr;
    QComboBox* m_region = nullptr;
    QCheckBox* m_payAsYouGo = nullptr;
    QCheckBox* m_continuous = nullptr;
    QDoubleSpinBox* m_penalRate = nullptr;
    QComboBox* m_minimumWage = nullptr;
    QComboBox* m_dailyPay = nullptr;
    bool m_boxesTouched = false;
};

// Opens the set-up of an employee modally; true when saved. An employee not on the payroll is refused
// with a message.
bool ShowHolidaySetup(Database& wage, qint32 employeeID, QWidget* owner);

} // namespace ql
