#include "FHDatePicker.h"
#include "FHDatePickerDropDown.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include <QApplication>
#include <QCursor>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QStyle>
#include <QToolButton>

namespace ql {

namespace {

// Days between two moments, as the difference of two date serials.
double dayDifference(const QDateTime& a, const QDateTime& b) {
    return std::abs(a.secsTo(b)) / 86400.0;
}

// The weekday of date counted from firstDay (1 Sunday ... 7 Saturday): 1 to 7.
int weekdayFrom(const QDate& date, int firstDay) {
    const int sundayBased = date.dayOfWeek() % 7 + 1; // Sunday 1 ... Saturday 7
    return (sundayBased - firstDay + 7) % 7 + 1;
}

} // namespace

FHDatePicker::FHDatePicker(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("FHDatePicker"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("txtDate"));
    m_text->setAccessibleName(QStringLiteral("Date"));
    m_text->installEventFilter(this);
    layout->addWidget(m_text);
    m_drop = new QToolButton(this);
    m_drop->setObjectName(QStringLiteral("cmdDrop"));
    m_drop->setArrowType(Qt::DownArrow);
    m_drop->setAccessibleName(QStringLiteral("Show the calendar"));
    m_drop->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(m_drop);
    setFocusProxy(m_text);
    connect(m_drop, &QToolButton::clicked, this, [this] { toggleDropDown(); });
    connect(m_text, &QLineEdit::editingFinished, this, [this] {
        if (!m_open) confirmText();
    });
    m_popup = new FHDatePickerDropDown(this);
    m_theme = style()->name();
    m_selected = QDateTime(Today(), QTime(0, 0));
    m_highlighted = m_view = m_selected.date();
    rebuild();
    showText();
}

FHDatePicker::~FHDatePicker() {
    if (m_host) m_host->removeEventFilter(this);
    delete m_popup;
}

QString FHDatePicker::formatted(const QDateTime& value) const {
    if (m_format.isEmpty())
        return Format(value.time() == QTime(0, 0) ? QVariant(value.date()) : QVariant(value));
    return Format(value.date(), m_format);
}

void FHDatePicker::setDateSelected(const QDateTime& value) {
    QDateTime d = value;
    if (d == m_selected) return;
    if (d.date() == ZeroDate && d.time() == QTime(0, 0)) d = QDateTime(Today(), QTime(0, 0));
    if (dayDifference(d, m_selected) >= 1.0) {
        const QDateTime old = m_selected;
        m_selected = d;
        emit DateChanged(old, d);
    }
    m_highlighted = d.date();
    m_view = d.date();
    rebuild();
    showText();
    emit PropertyChanged(QStringLiteral("DateSelected"));
}

void FHDatePicker::setFirstDayOfWeek(int day) {
    int v = day;
    if (v < 1 || v > 7) {
        v %= 7;
        if (v <= 0) v += 7;
    }
    m_firstDay = v;
    rebuild();
    emit PropertyChanged(QStringLiteral("FirstDayOfWeek"));
}

void FHDatePicker::setShortDayNames(bool on) {
    m_shortNames = on;
    rebuild();
    emit PropertyChanged(QStringLiteral("ShortDayNames"));
}

void FHDatePicker::setDescriptionFormat(const QString& format) {
    m_format = format;
    showText();
    rebuild();
    emit PropertyChanged(QStringLiteral("DescriptionFormat"));
}

void FHDatePicker::setUseHandCursor(bool on) {
    m_handCursor = on;
    m_drop->setCursor(on ? Qt::PointingHandCursor : Qt::ArrowCursor);
    m_popup->applyCursor(on);
    emit PropertyChanged(QStringLiteral("UseHandCursor"));
}

void FHDatePicker::setShowNonMonthDays(bool on) {
    m_showNonMonth = on;
    rebuild();
    emit PropertyChanged(QStringLiteral("ShowNonMonthDays"));
}

QDate FHDatePicker::HighlightedDate() const {
    return m_highlighted.isValid() ? m_highlighted : Today();
}
QDate FHDatePicker::ViewDate() const {
    return m_view.isValid() ? m_view : Today();
}

void FHDatePicker::setHighlightedDate(const QDate& date) {
    if (date == m_highlighted) return;
    m_highlighted = date;
    m_view = date;
    rebuild();
}

void FHDatePicker::setViewDate(const QDate& date) {
    m_view = date;
    rebuild();
}

void FHDatePicker::rebuild() {
    const QDate view = ViewDate();
    const QDate first(view.year(), view.month(), 1);
    const int lead = weekdayFrom(first, m_firstDay) - 1;
    m_cells.clear();
    const QDate start = first.addDays(-lead);
    for (int i = 0; i < 42; ++i) {
        const QDate d = start.addDays(i);
        const bool inMonth = d.month() == first.month() && d.year() == first.year();
        if (inMonth || m_showNonMonth)
            m_cells.append(DayCell{QString::number(d.day()), d});
        else
            m_cells.append(DayCell{});
    }
    m_popup->showState();
}

int FHDatePicker::selectedCell() const {
    for (int i = 0; i < m_cells.size(); ++i)
        if (m_cells.at(i).date == HighlightedDate()) return i;
    return -1;
}

QStringList FHDatePicker::dayNames() const {
    QStringList names;
    const QLocale locale;
    for (int i = 0; i < 7; ++i) {
        const int sundayBased = (m_firstDay - 1 + i) % 7 + 1;     // 1 Sunday
        const int qtDay = sundayBased == 1 ? 7 : sundayBased - 1; // 1 Monday
        QString name = locale.dayName(qtDay, QLocale::ShortFormat);
        names << (m_shortNames ? name.left(1) : name);
    }
    return names;
}

QString FHDatePicker::titleText() const {
    return Format(ViewDate(), QStringLiteral("mmmm yyyy"));
}

QString FHDatePicker::descriptionText() const {
    return formatted(QDateTime(HighlightedDate(), QTime(0, 0)));
}

QString FHDatePicker::text() const {
    return m_text->text();
}

void FHDatePicker::showText() {
    m_text->setText(formatted(m_selected));
}

void FHDatePicker::confirmText() {
    const QString t = m_text->text();
    if (IsDate(t))
        setDateSelected(CDateTime(t));
    else
        setDateSelected(QDateTime(HighlightedDate(), QTime(0, 0)));
    showText();
}

void FHDatePicker::openDropDown() {
    if (!isEnabled() || m_open) return;
    watchHost();
    m_highlighted = m_selected.date();
    m_view = m_highlighted;
    rebuild();
    m_open = true;
    m_popup->showBelow(this);
}

void FHDatePicker::closeDropDown(bool focusText) {
    if (!m_open) return;
    m_open = false;
    m_popup->hideAll();
    if (focusText) m_text->setFocus();
}

void FHDatePicker::toggleDropDown() {
    if (!isEnabled()) return;
    if (m_open)
        closeDropDown(true);
    else
        openDropDown();
}

void FHDatePicker::pressOK() {
    setDateSelected(QDateTime(HighlightedDate(), QTime(0, 0)));
    closeDropDown(true);
}

// The value handed over is the truth of "today is the highlighted date" taken as a date: false is
// the zero date, which the setter turns into today; true is the date -1, 29 December 1899.
void FHDatePicker::pressToday() {
    const bool isToday = Today() == HighlightedDate();
    setDateSelected(QDateTime(SerialToDate(isToday ? -1.0 : 0.0), QTime(0, 0)));
    pressOK();
}

void FHDatePicker::clickDay(int cell) {
    if (cell < 0 || cell >= m_cells.size() || !m_cells.at(cell).date.isValid()) return;
    setHighlightedDate(m_cells.at(cell).date);
    rebuild();
}

void FHDatePicker::doubleClickDay(int cell) {
    if (cell < 0 || cell >= m_cells.size() || !m_cells.at(cell).date.isValid()) return;
    setHighlightedDate(m_cells.at(cell).date);
    pressOK();
}

QStringList FHDatePicker::monthListRows() const {
    QStringList rows;
    for (int i = -3; i <= 3; ++i)
        rows << Format(m_listMiddle.addMonths(i), QStringLiteral("mmmm yyyy"));
    return rows;
}

void FHDatePicker::scrollMonthList(int step) {
    m_listMiddle = m_listMiddle.addMonths(step);
    m_popup->showMonthList();
}

bool FHDatePicker::textKey(int key) {
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_open) {
            const QString t = m_text->text();
            if (IsDate(t)) {
                const QDate d = CDate(t);
                if (d == HighlightedDate())
                    pressOK();
                else
                    setHighlightedDate(d);
            } else {
                confirmText();
            }
        } else {
            confirmText();
        }
        return true;
    case Qt::Key_Up:
        if (m_open) closeDropDown(true);
        return true;
    case Qt::Key_Down:
        if (m_open)
            m_popup->takeFocus();
        else
            openDropDown();
        return true;
    default:
        return false;
    }
}

bool FHDatePicker::calendarKey(int key) {
    if (!m_open) {
        openDropDown();
        return true;
    }
    const QDate h = HighlightedDate();
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        pressOK();
        break;
    case Qt::Key_Escape:
        closeDropDown(true);
        break;
    case Qt::Key_PageUp:
        setHighlightedDate(h.addMonths(-1));
        break;
    case Qt::Key_PageDown:
        setHighlightedDate(h.addMonths(1));
        break;
    case Qt::Key_Home:
        setHighlightedDate(Today());
        pressToday();
        break;
    case Qt::Key_Left:
        setHighlightedDate(h.addDays(-1));
        break;
    case Qt::Key_Right:
        setHighlightedDate(h.addDays(1));
        break;
    case Qt::Key_Up:
        setHighlightedDate(h.addDays(-7));
        break;
    case Qt::Key_Down:
        setHighlightedDate(h.addDays(7));
        break;
    default:
        return false;
    }
    return true;
}

void FHDatePicker::watchHost() {
    QWidget* host = window();
    if (host == m_host || host == this) return;
    if (m_host) m_host->removeEventFilter(this);
    m_host = host;
    m_host->installEventFilter(this);
}

bool FHDatePicker::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_text) {
        if (event->type() == QEvent::KeyPress) {
            if (!isEnabled()) return true;
            return textKey(static_cast<QKeyEvent*>(event)->key());
        }
        if (event->type() == QEvent::FocusOut && m_open) {
            if (!m_popup->isVisible() || !m_popup->geometry().contains(QCursor::pos()))
                if (!m_popup->isAncestorOf(QApplication::focusWidget())) closeDropDown(false);
        }
        return false;
    }
    if (watched == m_host && m_open) {
        switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::MouseButtonPress:
        case QEvent::Hide:
        case QEvent::WindowDeactivate:
            if (event->type() != QEvent::WindowDeactivate || !m_popup->isActiveWindow()) closeDropDown(false);
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FHDatePicker::changeEvent(QEvent* event) {
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange) {
        m_theme = style()->name();
        m_popup->restyle();
        rebuild();
    }
    QWidget::changeEvent(event);
}

} // namespace ql
