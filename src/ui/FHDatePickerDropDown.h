#pragma once
// The drop-down of FHDatePicker: a top-level pop-up with the month header, weekday names, 42 day
// cells, the description line, OK and Today, and the month list over the title.
#include <QFrame>
#include <QVector>

class QLabel;
class QPushButton;
class QTimer;
class QToolButton;

namespace ql {

class FHDatePicker;

class FHDatePickerDropDown : public QFrame {
    Q_OBJECT
public:
    explicit FHDatePickerDropDown(FHDatePicker* picker);

    void showState(); // the picker's month, cells, highlight and texts
    void showBelow(QWidget* anchor);
    void hideAll();
    void takeFocus();
    void applyCursor(bool hand);
    void restyle();
    void showMonthList();
    bool monthListOpen() const;
    int markedRow() const { return m_marked; }
    QTimer* ticker() const { return m_ticker; }
    // The month list's handling of the held mouse, by global position, for the title's events.
    void holdAt(const QPoint& global);
    void releaseAt();
    void openMonthList();

    QLabel* title() const { return m_title; }
    QLabel* dayLabel(int cell) const { return m_days.at(cell); }
    QPushButton* okButton() const { return m_ok; }
    QPushButton* todayButton() const { return m_today; }
    QToolButton* leftButton() const { return m_left; }
    QToolButton* rightButton() const { return m_right; }
    QLabel* description() const { return m_description; }
    QFrame* monthList() const { return m_list; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    FHDatePicker* m_picker;
    QToolButton *m_left, *m_right;
    QLabel* m_title;
    QVector<QLabel*> m_dow, m_days, m_rows;
    QLabel* m_description;
    QPushButton *m_ok, *m_today;
    QFrame* m_list;
    QTimer* m_ticker;
    int m_tickStep = 0;
    int m_marked = -1;
};

} // namespace ql
