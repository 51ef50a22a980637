#pragma once
// The system's date entry control: a text box with a drop button and a month calendar that drops
// down beneath it. Keys, mouse and the Today button follow the control's own rules (see the .cpp).
// Public API: the properties below (also as Qt properties), the DateChanged signal, and a few
// actions and read-outs of the drop-down for hosts and tests.
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

class QLineEdit;
class QToolButton;

namespace ql {

class FHDatePickerDropDown;

class FHDatePicker : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QDateTime DateSelected READ DateSelected WRITE setDateSelected)
    Q_PROPERTY(int FirstDayOfWeek READ FirstDayOfWeek WRITE setFirstDayOfWeek)
    Q_PROPERTY(bool ShortDayNames READ ShortDayNames WRITE setShortDayNames)
    Q_PROPERTY(QString DescriptionFormat READ DescriptionFormat WRITE setDescriptionFormat)
    Q_PROPERTY(bool UseHandCursor READ UseHandCursor WRITE setUseHandCursor)
    Q_PROPERTY(bool ShowNonMonthDays READ ShowNonMonthDays WRITE setShowNonMonthDays)

public:
    explicit FHDatePicker(QWidget* parent = nullptr);
    ~FHDatePicker() override;

    // --- published properties ------------------------------------------------------------------
    QDateTime DateSelected() const { return m_selected; }
    QDate date() const { return m_selected.date(); }
    // The zero date becomes today; a change of at least one day raises DateChanged and is stored; a
    // change of the time of day alone is not stored but still moves the highlight.
    void setDateSelected(const QDateTime& value);
    void setDate(const QDate& value) { setDateSelected(QDateTime(value, QTime(0, 0))); }
    int FirstDayOfWeek() const { return m_firstDay; } // 1 Sunday ... 7 Saturday
    void setFirstDayOfWeek(int day);
    bool ShortDayNames() const { return m_shortNames; }
    void setShortDayNames(bool on);
    QString DescriptionFormat() const { return m_format; }
    void setDescriptionFormat(const QString& format); // empty: the general date format
    bool UseHandCursor() const { return m_handCursor; }
    void setUseHandCursor(bool on);
    bool ShowNonMonthDays() const { return m_showNonMonth; }
    void setShowNonMonthDays(bool on);
    // Enabled and Font are the widget's own: a disabled picker ignores every key and click.

    // --- the drop-down ----------------------------------------------------------------------------
    QDate HighlightedDate() const; // a zero value reads as today
    void setHighlightedDate(const QDate& date);
    QDate ViewDate() const;
    void setViewDate(const QDate& date);
    bool DropDownOpen() const { return m_open; }
    void openDropDown();
    void closeDropDown(bool focusText = true);
    void toggleDropDown(); // the drop button
    void pressOK();        // DateSelected takes the highlighted date; close
    void pressToday();
    void monthBack() { setViewDate(ViewDate().addMonths(-1)); } // imgLeft
    void monthOn() { setViewDate(ViewDate().addMonths(1)); }    // imgRight
    void clickDescription() { setViewDate(HighlightedDate()); }
    void clickDay(int cell); // 0 to 41
    void doubleClickDay(int cell);
    // Confirms the text box: a date becomes DateSelected, anything else gives way to the last date.
    void confirmText();

    // What the drop-down shows.
    struct DayCell {
        QString number; // empty for a blank cell
        QDate date;     // null for a blank cell
    };
    const QVector<DayCell>& cells() const { return m_cells; }
    int selectedCell() const;        // the cell with the selection mark, -1 when none
    QStringList dayNames() const;    // lblDOW, from FirstDayOfWeek
    QString titleText() const;       // lblDateTitle
    QString descriptionText() const; // lblDateDescription
    QString text() const;            // the text box
    QLineEdit* textBox() const { return m_text; }
    QToolButton* dropButton() const { return m_drop; }
    FHDatePickerDropDown* dropDown() const { return m_popup; }
    // The active style as the calendar's colours follow it.
    QString CurrentTheme() const { return m_theme; }

    // The month list over lblDateTitle: seven rows with the view's month in the middle.
    QStringList monthListRows() const;
    QDate monthListMiddle() const { return m_listMiddle; }
    void scrollMonthList(int step); // one tick of TimerMonthTicker: -1 back, +1 on

signals:
    void DateChanged(const QDateTime& oldDate, const QDateTime& newDate);
    // A property changed, so that the host may save it.
    void PropertyChanged(const QString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class FHDatePickerDropDown;
    void rebuild();
    void showText();
    void watchHost();
    bool textKey(int key);
    bool calendarKey(int key);
    QString formatted(const QDateTime& value) const;

    QLineEdit* m_text;
    QToolButton* m_drop;
    FHDatePickerDropDown* m_popup;
    QWidget* m_host = nullptr;
    QDateTime m_selected;
    QDate m_highlighted; // null reads as today
    QDate m_view;        // null reads as today
    int m_firstDay = 1;
    bool m_shortNames = false;
    QString m_format = QStringLiteral("d mmm yyyy");
    bool m_handCursor = false;
    bool m_showNonMonth = true;
    bool m_open = false;
    QVector<DayCell> m_cells;
    QDate m_listMiddle;
    QString m_theme;
};

} // namespace ql
