#include "LeaveTabWidget.h"
#include "LeaveGridWidget.h"
#include "LeaveScreen.h"
#include "frame/Messages.h"
#include <QEvent>
#include "holidays/HolidayPayWidget.h"
#include <QItemSelectionModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QShortcut>
#include <QTabBar>
#include <QVBoxLayout>

namespace ql {

LeaveTabWidget::LeaveTabWidget(QWidget* parent)
    : QWidget(parent), m_own(std::make_unique<LeaveScreen>()), m_screen(m_own.get()) {
    build();
}

LeaveTabWidget::LeaveTabWidget(LeaveScreen& model, QWidget* parent) : QWidget(parent), m_screen(&model) {
    build();
}

LeaveTabWidget::~LeaveTabWidget() {
    m_screen->onFieldsChanged = nullptr;
    m_screen->onArrayLoaded = nullptr;
    m_screen->onFlushEditor = nullptr;
    // The grid reads the model to its end, and an own model goes before the children would.
    delete m_grid;
    m_grid = nullptr;
}

// A user's action: an error that no procedure trapped is reported, and the screen goes on.
template <class F> void LeaveTabWidget::act(const char* location, F&& body) {
    try {
        body();
    } catch (const VbError& e) {
        ReportError(e, QString::fromLatin1(location));
    }
    refresh();
}

QLineEdit* LeaveTabWidget::totalBox(const QString& name, const QString& accessibleName) {
    auto* box = new QLineEdit(this);
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setReadOnly(true);
    box->setAlignment(Qt::AlignRight);
    box->setMaximumWidth(90);
    // Out of the Tab order; a click passes the focus on to the grid.
    box->setFocusPolicy(Qt::ClickFocus);
    box->installEventFilter(this);
    return box;
}

void LeaveTabWidget::build() {
    setObjectName(QStringLiteral("LeaveTab"));
    setAccessibleName(QStringLiteral("Leave"));

    m_tabLeave = new QTabBar(this);
    m_tabLeave->setObjectName(QStringLiteral("tabLeave"));
    m_tabLeave->setAccessibleName(QStringLiteral("Kind of leave"));
    m_tabLeave->setExpanding(false);
    m_tabLeave->setFocusPolicy(Qt::StrongFocus);
    for (const QString& caption : m_screen->tabLeaveCaption.split(QLatin1Char('|')))
        m_tabLeave->addTab(caption);

    m_opt[0] = new QRadioButton(QStringLiteral("C&urrent Year"), this);
    m_opt[0]->setObjectName(QStringLiteral("optWhichYears(0)"));
    m_opt[0]->setAccessibleName(QStringLiteral("Current Year"));
    m_opt[1] = new QRadioButton(QStringLiteral("All &Years"), this);
    m_opt[1]->setObjectName(QStringLiteral("optWhichYears(1)"));
    m_opt[1]->setAccessibleName(QStringLiteral("All Years"));

    m_lblHired = new QLabel(this);
    m_lblHired->setObjectName(QStringLiteral("lblHired"));
    m_lblHired->setAccessibleName(QStringLiteral("Period starts"));
    m_lblHired->setMinimumWidth(m_lblHired->fontMetrics().horizontalAdvance(QStringLiteral("Hired")) + 8);
    m_lblHired->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_lblfDate = new QLabel(this);
    m_lblfDate->setObjectName(QStringLiteral("lblfDate"));
    m_lblfDate->setAccessibleName(QStringLiteral("Period from"));
    auto* to = new QLabel(QStringLiteral("to"), this);
    m_lbltDate = new QLabel(this);
    m_lbltDate->setObjectName(QStringLiteral("lbltDate"));
    m_lbltDate->setAccessibleName(QStringLiteral("Period to"));
    for (QLabel* l : {m_lblfDate, m_lbltDate}) {
        l->setFrameShape(QFrame::Panel);
        l->setFrameShadow(QFrame::Sunken);
        l->setMinimumWidth(90);
        l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }

    m_grid = new LeaveGridWidget(*m_screen, this);

    m_lblCForward = new QLabel(QStringLiteral("Carried Forward"), this);
    m_lblCForward->setObjectName(QStringLiteral("lblCForward"));
    m_lblCForward->setAccessibleName(QStringLiteral("Carried Forward"));
    m_txtLeaveCForward = totalBox(QStringLiteral("txtLeaveCForward"), QStringLiteral("Carried Forward"));
    m_txtLeaveAdded = totalBox(QStringLiteral("txtLeaveAdded"), QStringLiteral("Allocated"));
    m_txtLeaveTaken = totalBox(QStringLiteral("txtLeaveTaken"), QStringLiteral("Taken"));
    m_txtLeaveAvailable = totalBox(QStringLiteral("txtLeaveAvailable"), QStringLiteral("Available"));
    m_txtLeaveTotal = totalBox(QStringLiteral("txtLeaveTotal"), QStringLiteral("Total"));
    m_lblCForward->setBuddy(m_txtLeaveCForward);

    auto* top = new QHBoxLayout;
    top->addWidget(m_opt[0]);
    top->addWidget(m_opt[1]);
    top->addSpacing(24);
    top->addWidget(m_lblHired);
    top->addWidget(m_lblfDate);
    top->addWidget(to);
    top->addWidget(m_lbltDate);
    top->addStretch(1);

    auto* totals = new QGridLayout;
    const QList<std::pair<QWidget*, QLineEdit*>> boxes{
        {m_lblCForward, m_txtLeaveCForward},
        {new QLabel(QStringLiteral("Allocated"), this), m_txtLeaveAdded},
        {new QLabel(QStringLiteral("Taken"), this), m_txtLeaveTaken},
        {new QLabel(QStringLiteral("Available"), this), m_txtLeaveAvailable},
        {new QLabel(QStringLiteral("Total"), this), m_txtLeaveTotal}};
    for (int i = 0; i < boxes.size(); ++i) {
        totals->addWidget(boxes[i].first, 0, i * 2, Qt::AlignRight);
        totals->addWidget(boxes[i].second, 0, i * 2 + 1);
    }
    totals->setColumnStretch(boxes.size() * 2, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabLeave);
    layout->addLayout(top);
    layout->addWidget(m_grid, 1);
    layout->addLayout(totals);
    m_holidayPay = new HolidayPayWidget(this);
    layout->addWidget(m_holidayPay);
    // The holiday pay panel follows the ledger row the user stands on: its kind, first day and days.
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { m_holidayPay->followLedgerRow(*m_screen, current.row()); });

    setTabOrder(m_tabLeave, m_opt[0]);
    setTabOrder(m_opt[0], m_opt[1]);
    setTabOrder(m_opt[1], m_grid);

    connect(m_tabLeave, &QTabBar::currentChanged, this, [this](int index) {
        if (m_refreshing) return;
        act("tabLeave_Click", [&] { m_screen->tabLeave_Click(index); });
    });
    for (int i = 0; i < 2; ++i)
        connect(m_opt[i], &QRadioButton::clicked, this, [this, i] {
            act("optWhichYears_Click", [&] { m_screen->optWhichYears_Click(i); });
            m_grid->setFocus();
        });
    auto* ctrlTab = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), this);
    ctrlTab->setContext(Qt::WidgetWithChildrenShortcut);
    connect(ctrlTab, &QShortcut::activated, this, [this] { nextPage(); });

    m_screen->onFieldsChanged = [this] {
        if (!m_refreshing) refresh();
    };
    m_screen->onArrayLoaded = [this] { m_grid->reload(); };
    m_screen->onFlushEditor = [this] { m_grid->flushEditor(); };
    refresh();
}

void LeaveTabWidget::refresh() {
    m_refreshing = true;
    const LeaveScreen& s = *m_screen;
    if (m_tabLeave->currentIndex() != s.tabLeaveIndex) m_tabLeave->setCurrentIndex(s.tabLeaveIndex);
    m_opt[s.optWhichYears == 0 ? 0 : 1]->setChecked(true);
    m_lblHired->setText(s.lblHired);
    m_lblfDate->setText(s.lblfDate);
    m_lbltDate->setText(s.lbltDate);
    m_lblCForward->setVisible(s.cForwardVisible);
    m_txtLeaveCForward->setVisible(s.cForwardVisible);
    m_txtLeaveCForward->setText(s.txtLeaveCForward);
    m_txtLeaveAdded->setText(s.txtLeaveAdded);
    m_txtLeaveTaken->setText(s.txtLeaveTaken);
    m_txtLeaveAvailable->setText(s.txtLeaveAvailable);
    m_txtLeaveTotal->setText(s.txtLeaveTotal);
    m_grid->viewport()->update();
    m_refreshing = false;
}

void LeaveTabWidget::entering() {
    act("tabMain_Click", [&] { m_screen->enterTab(); });
    m_grid->setFocus();
}

void LeaveTabWidget::leaving() {
    act("tabMain_Click", [&] { m_screen->leaveTab(); });
}

void LeaveTabWidget::saveBeforeEmployeeChange() {
    act("cboEmployee_Click", [&] { m_screen->saveBeforeEmployeeChange(); });
}

void LeaveTabWidget::loadEmployee() {
    act("cboEmployee_Click", [&] { m_screen->employeeChanged(true); });
}

void LeaveTabWidget::initLeave() {
    act("InitLeave", [&] { m_screen->initPage(); });
}

void LeaveTabWidget::save() {
    act("SaveLeaveXArray", [&] { m_screen->saveLeave(); });
}

void LeaveTabWidget::unload(bool leaveTabUp) {
    m_grid->flushEditor();
    m_screen->unload(leaveTabUp);
}

void LeaveTabWidget::nextPage() {
    act("tabLeave_Click", [&] { m_screen->nextPage(); });
    m_grid->setFocus();
}

bool LeaveTabWidget::eventFilter(QObject* watched, QEvent* event) {
    // The read-only totals pass the focus on to the grid at once.
    if (event->type() == QEvent::FocusIn && qobject_cast<QLineEdit*>(watched)) {
        m_grid->setFocus();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace ql
