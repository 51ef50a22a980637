#include "FHDatePickerDropDown.h"
#include "FHDatePicker.h"
#include <QApplication>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace ql {

FHDatePickerDropDown::FHDatePickerDropDown(FHDatePicker* picker)
    : QFrame(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), m_picker(picker) {
    setObjectName(QStringLiteral("FHDatePickerDropDown"));
    setAccessibleName(QStringLiteral("Calendar"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFrameShape(QFrame::Box);
    setFocusPolicy(Qt::StrongFocus);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(4, 4, 4, 4);
    auto* header = new QHBoxLayout;
    m_left = new QToolButton(this);
    m_left->setObjectName(QStringLiteral("imgLeft"));
    m_left->setArrowType(Qt::LeftArrow);
    m_left->setAccessibleName(QStringLiteral("Previous month"));
    m_left->setFocusPolicy(Qt::NoFocus);
    m_right = new QToolButton(this);
    m_right->setObjectName(QStringLiteral("imgRight"));
    m_right->setArrowType(Qt::RightArrow);
    m_right->setAccessibleName(QStringLiteral("Next month"));
    m_right->setFocusPolicy(Qt::NoFocus);
    m_title = new QLabel(this);
    m_title->setObjectName(QStringLiteral("lblDateTitle"));
    m_title->setAccessibleName(QStringLiteral("Month shown"));
    m_title->setAlignment(Qt::AlignCenter);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_title->installEventFilter(this);
    header->addWidget(m_left);
    header->addWidget(m_title, 1);
    header->addWidget(m_right);
    outer->addLayout(header);

    auto* grid = new QGridLayout;
    grid->setSpacing(1);
    for (int c = 0; c < 7; ++c) {
        auto* l = new QLabel(this);
        l->setObjectName(QStringLiteral("lblDOW(%1)").arg(c));
        l->setAlignment(Qt::AlignCenter);
        m_dow << l;
        grid->addWidget(l, 0, c);
    }
    for (int i = 0; i < 42; ++i) {
        auto* l = new QLabel(this);
        l->setObjectName(QStringLiteral("lblDay(%1)").arg(i));
        l->setAlignment(Qt::AlignCenter);
        l->setMinimumSize(28, 22);
        l->installEventFilter(this);
        m_days << l;
        grid->addWidget(l, 1 + i / 7, i % 7);
    }
    outer->addLayout(grid);
    m_description = new QLabel(this);
    m_description->setObjectName(QStringLiteral("lblDateDescription"));
    m_description->setAlignment(Qt::AlignCenter);
    m_description->setToolTip(
        QStringLiteral("The currently highlighted date. Press OK to select this date."));
    m_description->setAccessibleName(QStringLiteral("Highlighted date"));
    m_description->installEventFilter(this);
    outer->addWidget(m_description);
    auto* buttons = new QHBoxLayout;
    m_ok = new QPushButton(QStringLiteral("OK"), this);
    m_ok->setObjectName(QStringLiteral("btnOK"));
    m_ok->setToolTip(QStringLiteral("Confirm your selection"));
    m_ok->setAccessibleName(QStringLiteral("OK"));
    m_ok->setFocusPolicy(Qt::NoFocus);
    m_today = new QPushButton(QStringLiteral("Today"), this);
    m_today->setObjectName(QStringLiteral("btnToday"));
    m_today->setToolTip(QStringLiteral("Show today"));
    m_today->setAccessibleName(QStringLiteral("Today"));
    m_today->setFocusPolicy(Qt::NoFocus);
    buttons->addWidget(m_ok);
    buttons->addWidget(m_today);
    outer->addLayout(buttons);

    m_list = new QFrame(this);
    m_list->setObjectName(QStringLiteral("picListBox"));
    m_list->setFrameShape(QFrame::Box);
    m_list->setAutoFillBackground(true);
    auto* rows = new QVBoxLayout(m_list);
    rows->setContentsMargins(2, 2, 2, 2);
    rows->setSpacing(0);
    for (int i = 0; i < 7; ++i) {
        auto* l = new QLabel(m_list);
        l->setObjectName(QStringLiteral("lblSelDate(%1)").arg(i));
        l->setAlignment(Qt::AlignCenter);
        l->setAutoFillBackground(true);
        m_rows << l;
        rows->addWidget(l);
    }
    m_list->hide();
    m_ticker = new QTimer(this);
    m_ticker->setObjectName(QStringLiteral("TimerMonthTicker"));
    m_ticker->setInterval(400);
    connect(m_ticker, &QTimer::timeout, this, [this] { m_picker->scrollMonthList(m_tickStep); });

    connect(m_left, &QToolButton::clicked, this, [this] { m_picker->monthBack(); });
    connect(m_right, &QToolButton::clicked, this, [this] { m_picker->monthOn(); });
    connect(m_ok, &QPushButton::clicked, this, [this] { m_picker->pressOK(); });
    connect(m_today, &QPushButton::clicked, this, [this] { m_picker->pressToday(); });
}

void FHDatePickerDropDown::showState() {
    m_title->setText(m_picker->titleText());
    const QStringList names = m_picker->dayNames();
    for (int c = 0; c < 7; ++c)
        m_dow.at(c)->setText(names.value(c));
    const auto& cells = m_picker->cells();
    const int selected = m_picker->selectedCell();
    const int month = m_picker->ViewDate().month();
    const QPalette pal = m_picker->palette();
    for (int i = 0; i < m_days.size() && i < cells.size(); ++i) {
        QLabel* l = m_days.at(i);
        l->setText(cells.at(i).number);
        l->setAccessibleName(cells.at(i).date.isValid() ? cells.at(i).date.toString(Qt::ISODate) : QString());
        QString css;
        if (i == selected)
            css =
                QStringLiteral("background:%1;color:%2;border-radius:3px;")
                    .arg(pal.color(QPalette::Highlight).name(), pal.color(QPalette::HighlightedText).name());
        else if (cells.at(i).date.isValid() && cells.at(i).date.month() != month)
            css = QStringLiteral("color:%1;").arg(pal.color(QPalette::Disabled, QPalette::Text).name());
        l->setStyleSheet(css);
    }
    m_description->setText(m_picker->descriptionText());
}

void FHDatePickerDropDown::showBelow(QWidget* anchor) {
    adjustSize();
    QPoint at = anchor->mapToGlobal(QPoint(0, anchor->height()));
    if (const QScreen* screen = anchor->screen()) {
        const QRect area = screen->availableGeometry();
        if (at.y() + height() > area.bottom()) at.setY(anchor->mapToGlobal(QPoint(0, 0)).y() - height());
        at.setX(qBound(area.left(), at.x(), qMax(area.left(), area.right() - width())));
    }
    move(at);
    show();
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) raise();
}

void FHDatePickerDropDown::hideAll() {
    m_ticker->stop();
    m_list->hide();
    hide();
}

void FHDatePickerDropDown::takeFocus() {
    activateWindow();
    setFocus();
}

void FHDatePickerDropDown::applyCursor(bool hand) {
    const Qt::CursorShape shape = hand ? Qt::PointingHandCursor : Qt::ArrowCursor;
    for (QWidget* w : std::initializer_list<QWidget*>{m_left, m_right, m_title, m_description, m_ok, m_today})
        w->setCursor(shape);
    for (QLabel* l : m_days)
        l->setCursor(shape);
}

void FHDatePickerDropDown::restyle() {
    setPalette(m_picker->palette());
}

void FHDatePickerDropDown::openMonthList() {
    m_picker->m_listMiddle = m_picker->ViewDate();
    m_marked = -1;
    showMonthList();
    m_list->setGeometry(m_title->geometry().adjusted(0, -3 * m_title->height(), 0, 3 * m_title->height()));
    m_list->show();
    m_list->raise();
}

bool FHDatePickerDropDown::monthListOpen() const {
    return m_list->isVisible();
}

void FHDatePickerDropDown::showMonthList() {
    const QStringList rows = m_picker->monthListRows();
    for (int i = 0; i < m_rows.size(); ++i) {
        m_rows.at(i)->setText(rows.value(i));
        m_rows.at(i)->setBackgroundRole(i == m_marked ? QPalette::Highlight : QPalette::Base);
        m_rows.at(i)->setForegroundRole(i == m_marked ? QPalette::HighlightedText : QPalette::Text);
    }
}

void FHDatePickerDropDown::holdAt(const QPoint& global) {
    const QPoint p = m_list->mapFromGlobal(global);
    const QRect r = m_list->rect();
    if (r.contains(p)) {
        m_ticker->stop();
        for (int i = 0; i < m_rows.size(); ++i)
            if (m_rows.at(i)->geometry().contains(p)) m_marked = i;
        showMonthList();
    } else if (p.x() < r.left() || p.x() > r.right()) {
        m_ticker->stop();
    } else {
        m_marked = -1;
        m_tickStep = p.y() < r.top() ? -1 : 1;
        if (!m_ticker->isActive()) m_ticker->start();
        showMonthList();
    }
}

void FHDatePickerDropDown::releaseAt() {
    m_ticker->stop();
    if (m_marked >= 0) m_picker->setViewDate(m_picker->m_listMiddle.addMonths(m_marked - 3));
    m_marked = -1;
    m_list->hide();
}

bool FHDatePickerDropDown::eventFilter(QObject* watched, QEvent* event) {
    if (!m_picker->isEnabled()) return QFrame::eventFilter(watched, event);
    if (watched == m_title) {
        if (event->type() == QEvent::MouseButtonPress) {
            openMonthList();
            return true;
        }
        if (event->type() == QEvent::MouseMove && monthListOpen()) {
            holdAt(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
            return true;
        }
        if (event->type() == QEvent::MouseButtonRelease && monthListOpen()) {
            releaseAt();
            return true;
        }
    } else if (watched == m_description && event->type() == QEvent::MouseButtonPress) {
        m_picker->clickDescription();
        return true;
    } else if (const int cell = m_days.indexOf(qobject_cast<QLabel*>(watched)); cell >= 0) {
        if (event->type() == QEvent::MouseButtonPress) {
            m_picker->clickDay(cell);
            return true;
        }
        if (event->type() == QEvent::MouseButtonDblClick) {
            m_picker->doubleClickDay(cell);
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}

void FHDatePickerDropDown::keyPressEvent(QKeyEvent* event) {
    if (m_picker->isEnabled() && m_picker->calendarKey(event->key())) return;
    QFrame::keyPressEvent(event);
}

} // namespace ql
