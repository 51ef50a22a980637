// The wage screen's events on the desktop: each is handed to the WageScreen model, and the screen then
// shows what the model holds.
#include "frmWage.h"
#include "ui/AccessibleNames.h"
#include "WageGridWidget.h"
#include "cashbook/frmAddEdit.h"
#include "cashbook/frmCommit.h"
#include "cashbook/frmMemo.h"
#include "frame/Messages.h"
#include "frame/OpenForms.h"
#include "leave/LeaveGridWidget.h"
#include "leave/LeaveTabWidget.h"
#include "payengine/AppContext.h"
#include "reports/frmQuickView.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "ui/Skin.h"
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCalendarWidget>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>
#include <QToolButton>

namespace ql {

namespace {
// The screen's colours are kept as the system writes them: blue, green, red from the high byte down.
QColor systemColour(quint32 c, const QPalette& palette) {
    if (c & 0x80000000u) return palette.color(QPalette::Base); // a system colour: the window colour
    return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF));
}

QString styleOf(const ControlState& c, const QPalette& palette) {
    QString s = QStringLiteral("padding: 2px 6px; color: %1;").arg(systemColour(c.foreColor, palette).name());
    if (!c.transparent) s += QStringLiteral("background: %1;").arg(systemColour(c.backColor, palette).name());
    return s;
}

// Widgets that use the arrow keys for their own content keep them.
bool ownsArrows(QObject* o) {
    return qobject_cast<QAbstractItemView*>(o) || qobject_cast<QLineEdit*>(o) ||
           qobject_cast<QComboBox*>(o) || qobject_cast<QAbstractSpinBox*>(o) ||
           qobject_cast<QPlainTextEdit*>(o) || qobject_cast<QTextEdit*>(o);
}
} // namespace

template <class F> void frmWage::act(const char* location, F&& body) {
    try {
        body();
    } catch (const VbError& e) {
        ReportError(e, QString::fromLatin1(location));
    }
    refresh();
}

void frmWage::connectEvents() {
    auto click = [this](const char* name, const char* location, void (WageScreen::*handler)()) {
        connect(m_buttons[QString::fromLatin1(name)], &QPushButton::clicked, this,
                [this, location, handler] { act(location, [&] { (m_screen.*handler)(); }); });
    };
    click("cmdAddPay", "cmdAddPay_Click", &WageScreen::cmdAddPay_Click);
    click("cmdOneOff", "cmdOneOff_Click", &WageScreen::cmdOneOff_Click);
    click("cmdPrintPay", "cmdPrintPay_Click", &WageScreen::cmdPrintPay_Click);
    click("cmdDelete", "cmdDelete_Click", &WageScreen::cmdDelete_Click);
    click("cmdMemo", "cmdMemo_Click", &WageScreen::cmdMemo_Click);
    click("cmdQuick", "cmdQuick_Click", &WageScreen::cmdQuick_Click);
    connect(m_buttons[QStringLiteral("cmdClose")], &QPushButton::clicked, this,
            [this] { m_screen.cmdClose_Click(); });
    for (int i = 0; i < 8; ++i)
        connect(m_buttons[QStringLiteral("cmdSelect(%1)").arg(i)], &QPushButton::clicked, this,
                [this, i] { act("cmdSelect_Click", [&] { m_screen.cmdSelect_Click(i); }); });
    for (int i = 0; i < 4; ++i)
        connect(m_titleButtons[i], &QToolButton::clicked, this, [this, i] { showTitleMenu(i); });
    connect(m_cboEmployee, qOverload<int>(&QComboBox::activated), this,
            [this](int index) { act("cboEmployee_Click", [&] { m_screen.selectEmployeeItem(index); }); });
    // A date picked with the mouse, or with Enter after moving there by keyboard.
    auto dateClick = [this](QDate date) {
        act("CalWage_DateClick", [&] { m_screen.CalWage_DateClick(date); });
    };
    connect(m_calendar, &QCalendarWidget::clicked, this, dateClick);
    connect(m_calendar, &QCalendarWidget::activated, this, dateClick);
    connect(m_txtPAYE, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_screen.control(QStringLiteral("txtPAYE")).caption = text; });
    connect(m_txtPAYE, &QLineEdit::returnPressed, this,
            [this] { act("txtPAYE_KeyDown", [&] { m_screen.txtPAYE_Accept(); }); });
    connect(m_tabMain, &QTabWidget::currentChanged, this, [this](int index) { tabMainChanged(index); });

    m_screen.onScreenChanged = [this] { refresh(); };
    m_screen.onGridChanged = [this] { reloadGrid(); };
    m_screen.onGridUpdate = [this] {
        if (QWidget* editor = QApplication::focusWidget(); editor && m_grid->isAncestorOf(editor))
            m_grid->setFocus();
    };
    m_screen.onHourglass = [](bool on) {
        if (on)
            QApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QApplication::restoreOverrideCursor();
    };
    m_screen.unloadAll = [] { UnloadAllForms(); };
    m_screen.showMemo = [this](WageScreen&) { showMemo(); };
    m_screen.showAddEdit = [this](WageScreen&) { showAddEdit(); };
    m_screen.showCommit = [this](WageScreen&) { showCommit(); };
    m_screen.showQuickView = [this](WageScreen&) { showQuickView(); };
    // All keys pass the form first.
    qApp->installEventFilter(this);
}

frmWage::~frmWage() {
    qApp->removeEventFilter(this);
    // The leave widget lets go of the screen's leave model while that still stands.
    delete m_leave;
    m_leave = nullptr;
    m_screen.onScreenChanged = nullptr;
    m_screen.onGridChanged = nullptr;
    m_screen.onGridUpdate = nullptr;
    m_screen.onHourglass = nullptr;
    m_screen.showMemo = nullptr;
    m_screen.showAddEdit = nullptr;
    m_screen.showCommit = nullptr;
    m_screen.showQuickView = nullptr;
}

void frmWage::applyLook() {
    SkinForm(this);
    if (const QPixmap icon = skinPicture(QStringLiteral("quillary.png")); !icon.isNull()) setWindowIcon(icon);
    SkinGrid(m_grid, true);
    if (auto* leave = qobject_cast<LeaveTabWidget*>(m_leave)) {
        SkinGrid(leave->grid(), true);
        // The kinds' tabs are drawn from plain colours: the paper picture under them would paint black.
        if (auto* kinds = leave->findChild<QTabBar*>(QStringLiteral("tabLeave"))) {
            QPalette plain = kinds->palette();
            plain.setBrush(QPalette::Window, QApplication::palette().window());
            plain.setBrush(QPalette::Button, QApplication::palette().button());
            kinds->setPalette(plain);
        }
    }
    if (QScreen* s = QWidget::screen()) {
        const QSize room = s->availableGeometry().size();
        resize(qMin(width(), room.width()), qMin(height(), room.height()));
    }
    CentreForm(this);
}

void frmWage::showMemo() {
    frmMemo memo(m_screen.datPays, this);
    CentreForm(&memo);
    memo.exec();
    m_screen.control(QStringLiteral("cmdMemo")).down =
        !IsNull(m_screen.datPays.value(QStringLiteral("Details")));
}

void frmWage::showAddEdit() {
    frmAddEdit choice(this);
    CentreForm(&choice);
    choice.exec();
}

void frmWage::showCommit() {
    ShowCommitDialog(this, m_screen);
    // Committed or not, the pay is shown again: its status, the button's caption and the lock.
    m_screen.datPays_Reposition();
}

void frmWage::showQuickView() {
    // One history at a time, of the employee shown now; the screen stays usable beside it.
    if (m_history) m_history->close();
    auto* history = new frmQuickView(m_screen.employeeName(), this);
    history->setAttribute(Qt::WA_DeleteOnClose);
    history->setModal(false);
    m_history = history;
    history->show();
}

void frmWage::move(int how) {
    act("datPays_Reposition", [&] {
        // Lines typed into the grid are stored before the list leaves the pay.
        if (QWidget* f = QApplication::focusWidget(); f && (f == m_grid || m_grid->isAncestorOf(f)))
            m_screen.tgrdwages_LostFocus();
        PayList& pays = m_screen.datPays;
        if (pays.RecordCount() == 0) return;
        const int at = pays.AbsolutePosition();
        if (how == 0)
            pays.MoveFirst();
        else if (how == 1 && at > 0)
            pays.MovePrevious();
        else if (how == 2 && at >= 0 && at < pays.RecordCount() - 1)
            pays.MoveNext();
        else if (how == 3)
            pays.MoveLast();
    });
}

void frmWage::tabMainChanged(int index) {
    if (m_switching) return;
    const int old = m_shownTab;
    bool cancel = false;
    act("tabMain_Switch", [&] { m_screen.tabMain_Switch(old, index, cancel); });
    if (cancel) {
        // The address tab launches the address book and never stays selected.
        m_switching = true;
        m_tabMain->setCurrentIndex(old);
        m_switching = false;
        return;
    }
    m_shownTab = index;
    if (auto* leave = qobject_cast<LeaveTabWidget*>(m_leave); leave && index == 1) leave->grid()->setFocus();
}

void frmWage::showTitleMenu(int index) {
    act("els_TitleBar_Click", [&] {
        if (m_screen.tabMainIndex == 1) m_screen.leave.saveLeave();
        if (titleBarClick) titleBarClick(index);
    });
    if (QToolButton* b = titleButton(index); b && b->menu()) b->showMenu();
}

void frmWage::nextLeavePage() {
    if (!m_leave) return;
    if (auto* leave = qobject_cast<LeaveTabWidget*>(m_leave)) {
        leave->nextPage();
        return;
    }
    QWidget* strip = m_leave->objectName() == QLatin1String("tabLeave")
                         ? m_leave
                         : m_leave->findChild<QWidget*>(QStringLiteral("tabLeave"));
    if (auto* tabs = qobject_cast<QTabWidget*>(strip); tabs && tabs->count() > 0)
        tabs->setCurrentIndex((tabs->currentIndex() + 1) % tabs->count());
    else if (auto* bar = qobject_cast<QTabBar*>(strip); bar && bar->count() > 0)
        bar->setCurrentIndex((bar->currentIndex() + 1) % bar->count());
}

// The form's look at a key before its controls: Ctrl+Tab on the leave tab, the arrow keys, and the
// title buttons' keys. True when the key is used up here.
bool frmWage::formKey(QObject* watched, QKeyEvent* key) {
    const Qt::KeyboardModifiers mods =
        key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
    if (key->key() == Qt::Key_Tab && mods == Qt::ControlModifier && m_tabMain->currentIndex() == 1) {
        nextLeavePage();
        return true;
    }
    switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (mods & Qt::AltModifier) return false; // Alt+Up and Alt+Down do nothing here
        // Swallowed, so that they neither move the focus among buttons nor switch tabs; lists, grids
        // and text boxes keep them for their own content.
        return !ownsArrows(watched) && !(m_leave && m_leave->isAncestorOf(qobject_cast<QWidget*>(watched)));
    default:
        break;
    }
    // A key code beyond a letter (Ctrl itself, 0x01000021) is no character: it is never made one.
    if (mods == Qt::ControlModifier && key->key() >= Qt::Key_A && key->key() <= Qt::Key_Z) {
        const int index = QStringLiteral("MTRH").indexOf(QChar(key->key()));
        if (index >= 0) {
            showTitleMenu(index);
            return true;
        }
    }
    return false;
}

void frmWage::reloadGrid() {
    m_grid->reload();
}

void frmWage::refreshCombo() {
    bool same = m_cboEmployee->count() == m_screen.cboEmployeeItems.size();
    for (int i = 0; same && i < m_cboEmployee->count(); ++i)
        same = m_cboEmployee->itemText(i) == m_screen.cboEmployeeItems.at(i).text &&
               m_cboEmployee->itemData(i).toInt() == m_screen.cboEmployeeItems.at(i).itemData;
    m_cboEmployee->blockSignals(true);
    if (!same) {
        m_cboEmployee->clear();
        for (const ComboItem& item : m_screen.cboEmployeeItems)
            m_cboEmployee->addItem(item.text, item.itemData);
    }
    m_cboEmployee->setCurrentIndex(m_screen.cboEmployeeIndex);
    m_cboEmployee->blockSignals(false);
}

// Coming to the front again, the screen shows what another program changed meanwhile.
void frmWage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow()) return;
    const int tab = App().CurrentTab;
    // A lines view may hold the user's unsaved lines: there only a change of the shown pay reads again.
    const bool linesView = tab == 1 || tab == 2 || tab == 4 || tab == 5 || tab == 7;
    if (m_screen.followOtherWriters(!linesView)) {
        refresh();
        reloadGrid();
    }
}

void frmWage::refresh() {
    if (m_refreshing) return;
    m_refreshing = true;
    m_title->setText(windowTitle());
    const QPalette pal = palette();
    for (auto it = m_labels.cbegin(); it != m_labels.cend(); ++it) {
        const ControlState& c = m_screen.control(it.key());
        it.value()->setText(c.caption);
        it.value()->setVisible(c.visible);
        if (PayView::boundLabels().contains(it.key()) || it.key().startsWith(QLatin1String("lblpayment")))
            it.value()->setStyleSheet(styleOf(c, pal));
        // A screen reader hears the amount with its caption ("Gross 1,022.75").
        if (PayView::boundLabels().contains(it.key()) || it.key() == QLatin1String("lblTaxCredit") ||
            it.key() == QLatin1String("lblESCT"))
            NameValueLabel(it.value(), m_labelNames.value(it.key()));
    }
    for (auto it = m_buttons.cbegin(); it != m_buttons.cend(); ++it) {
        const ControlState& c = m_screen.control(it.key());
        if (!it.key().startsWith(QLatin1String("cmdSelect"))) it.value()->setText(c.caption);
        it.value()->setVisible(c.visible);
        it.value()->setEnabled(c.enabled);
        if (it.value()->isCheckable()) it.value()->setChecked(c.down);
    }
    // The memo button's marked state: a pay with a memo can be told at a glance.
    QPushButton* memo = m_buttons[QStringLiteral("cmdMemo")];
    const bool marked = m_screen.control(QStringLiteral("cmdMemo")).down;
    memo->setText(marked ? QStringLiteral("&Memo *") : m_screen.caption(QStringLiteral("cmdMemo")));
    memo->setAccessibleName(marked ? QStringLiteral("Memo, this pay has a memo") : QStringLiteral("Memo"));
    QFont memoFont = memo->font();
    memoFont.setBold(marked);
    memo->setFont(memoFont);

    refreshCombo();

    const ControlState& paye = m_screen.control(QStringLiteral("txtPAYE"));
    if (!m_txtPAYE->hasFocus() || m_txtPAYE->text() != paye.caption) m_txtPAYE->setText(paye.caption);
    m_txtPAYE->setReadOnly(paye.locked);
    const QColor payeBack = systemColour(paye.backColor, pal);
    m_txtPAYE->setStyleSheet(
        QStringLiteral("background: %1; color: %2;").arg(payeBack.name(), readableOn(payeBack).name()));

    const QVariant day = m_screen.control(QStringLiteral("CalWage")).tag;
    if (IsDate(day)) {
        m_calendar->blockSignals(true);
        m_calendar->setSelectedDate(CDate(day));
        m_calendar->blockSignals(false);
    }
    if (m_screen.frontControl == QLatin1String("tgrdwages"))
        m_stack->setCurrentWidget(m_grid);
    else if (m_screen.frontControl == QLatin1String("vsePAYE"))
        m_stack->setCurrentWidget(m_payePanel);
    else if (m_screen.frontControl == QLatin1String("CalWage"))
        m_stack->setCurrentWidget(m_calendar);
    if (m_screen.focusControl == QLatin1String("tgrdwages") && m_stack->currentWidget() == m_grid &&
        isVisible())
        m_grid->setFocus();
    else if (m_screen.focusControl == QLatin1String("txtPAYE") && m_stack->currentWidget() == m_payePanel &&
             isVisible())
        m_txtPAYE->setFocus();
    m_screen.focusControl.clear();
    m_refreshing = false;
}

bool frmWage::eventFilter(QObject* watched, QEvent* event) {
    // The application's filter: every event of this window's controls passes here once.
    if (event->type() == QEvent::KeyPress && watched->isWidgetType()) {
        auto* w = static_cast<QWidget*>(watched);
        if (w->window() == this && formKey(watched, static_cast<QKeyEvent*>(event))) return true;
    }
    if (event->type() == QEvent::MouseButtonRelease && m_clickable.contains(watched)) {
        const QString name = m_clickable.value(watched);
        act("lbl_Click", [&] { m_screen.labelClick(name); });
        return true;
    }
    if (watched == m_txtPAYE) {
        if (event->type() == QEvent::FocusIn)
            m_screen.txtPAYE_GotFocus();
        else if (event->type() == QEvent::FocusOut)
            act("txtPAYE_LostFocus", [&] { m_screen.txtPAYE_LostFocus(); });
        else if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab &&
                 !(static_cast<QKeyEvent*>(event)->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            // A confirmed change opens the non-taxable view; otherwise Tab moves on as usual.
            act("txtPAYE_KeyDown", [&] { m_screen.txtPAYE_Accept(); });
            return m_stack->currentWidget() != m_payePanel;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmWage::closeEvent(QCloseEvent* event) {
    event->accept();
    // The leave grid open on its tab goes with the window (an open cell first), and the option is
    // stored; the rest of the shutdown follows.
    const bool leaveTabUp = m_screen.tabMainIndex == 1;
    try {
        if (auto* leave = qobject_cast<LeaveTabWidget*>(m_leave))
            leave->unload(leaveTabUp);
        else
            m_screen.leave.unload(leaveTabUp);
    } catch (const VbError&) {
        // An unload runs to its end.
    }
    UnloadMainForm();
}

WageMainForm::WageMainForm() : m_form(new frmWage) {}

WageMainForm::~WageMainForm() {
    if (m_form) {
        m_form->hide();
        m_form->deleteLater();
    }
}

PayView& WageMainForm::view() {
    return m_form->screen();
}
void WageMainForm::setTitle(const QString& title) {
    m_form->setWindowTitle(title);
}
QString WageMainForm::title() const {
    return m_form->windowTitle();
}

void WageMainForm::show() {
    m_form->screen().windowTitle = m_form->windowTitle();
    m_form->screen().Form_Load();
    m_form->applyLook();
    m_form->refresh();
    m_form->show();
}

void WageMainForm::close() {
    m_form->close();
}

void WageMainForm::GotMessage(qint32 wParam) {
    try {
        m_form->screen().GotMessage(wParam);
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("GotMessage"));
    }
    m_form->refresh();
}

} // namespace ql
