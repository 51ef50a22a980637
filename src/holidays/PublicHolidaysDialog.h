#pragma once
// The public holidays of a year on the screen: the national ones and a region's anniversary day, each
// with the weekday it is observed on when it falls on a weekend day.
#include <QDialog>

class QComboBox;
class QSpinBox;
class QTableWidget;

namespace ql {

class PublicHolidaysDialog : public QDialog {
    Q_OBJECT
public:
    explicit PublicHolidaysDialog(const QString& region = QString(), QWidget* parent = nullptr);
    QSpinBox* yearBox() const { return m_year; }
    QComboBox* regionBox() const { return m_region; }
    QTableWidget* table() const { return m_table; }

private:
    void showYear();

    QSpinBox* m_year = nullptr;
    QComboBox* m_region = nullptr;
    QTableWidget* m_table = nullptr;
};

// Opens the list modally on this year, with the region of the shown employee's terms.
void ShowPublicHolidays(const QString& region, QWidget* owner);

} // namespace ql
