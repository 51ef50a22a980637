#include "frmWage.h"
#include "WageGridWidget.h"
#include "frame/Messages.h"
#include "frame/OpenForms.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <QApplication>
#include <QCalendarWidget>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace ql {

namespace {
// The screen's colours are kept as the system writes them: blue, green, red from the high byte down.
QColor systemColour(quint32 c, const QPalette& palette) {
    if (c & 0x80000000u)
        return palette.color(QPalette::Base); // a system colour: the window colour
    return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF));
}

QString styleOf(const ControlState& c, const QPalette& palette) {
    QString s = QStringLiteral("padding: 2px 6px; color: %1;").arg(systemColour(c.foreColor, palette).name());
    if (!c.transparent)
        s += QStringLiteral("background: %1;").arg(systemColour(c.backColor, palette).name());
    return s;
}

const char* const kPayeFields[][2] = {{"lblpayrollCalc", "txtCalcOn"},
                                     {"lblPayrollTax", "txtPAYE"},
                                     {"lblTaxType", "txtTaxType"},
                                     {"lblTaxCode", "txtTaxCode"},
                                     {"lblPayInterval", "txtpayInterval"}};
} // namespace

template <class F> void frmWage::act(const char* location, F&& body) {
    try {
        body();
    } catch (const VbError& e) {
        ReportError(e, QString::fromLatin1(location));
    }
    refresh();
}

QLabel* frmWage::label(const QString& name, QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    m_labels.insert(name, l);
    return l;
}

QPushButton* frmWage::button(const QString& name, QWidget* parent) {
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    m_buttons.insert(name, b);
    return b;
}

frmWage::frmWage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmWage"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    resize(980, 640);
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, QColor(226, 236, 214)); // a pale tint of the skin's green
    setPalette(pal);

    auto* outer = new QVBoxLayout(this);
    // The employee list and who the person is.
    auto* top = new QHBoxLayout;
    m_cboEmployee = new QComboBox(this);
    m_cboEmployee->setObjectName(QStringLiteral("cboEmployee"));
    m_cboEmployee->setMinimumWidth(260);
    top->addWidget(m_cboEmployee);
    top->addWidget(label(QStringLiteral("lblAddress"), this), 1);
    top->addWidget(label(QStringLiteral("lblOccupation"), this));
    outer->addLayout(top);

    // The pay list's navigation.
    auto* nav = new QHBoxLayout;
    const char* const moves[] = {"|<", "<", ">", ">|"};
    for (int i = 0; i < 4; ++i) {
        auto* b = new QPushButton(QString::fromLatin1(moves[i]), this);
        b->setObjectName(QStringLiteral("datPaysMove%1").arg(i));
        b->setFixedWidth(36);
        connect(b, &QPushButton::clicked, this, [this, i] { move(i); });
        if (i == 2)
            nav->addWidget(label(QStringLiteral("datPays"), this));
        nav->addWidget(b);
    }
    nav->addSpacing(16);
    nav->addWidget(label(QStringLiteral("lblpayment(10)"), this));
    nav->addStretch(1);
    nav->addWidget(label(QStringLiteral("lblpayment(8)"), this));
    outer->addLayout(nav);

    auto* middle = new QHBoxLayout;
    // The summary: caption, value and button of each figure.
    auto* summary = new QGridLayout;
    const int rows[] = {0, 1, 2, 3, 4, 5, 6, 7, 9};
    int r = 0;
    for (int index : rows) {
        const QString name = labelOfCaption(index);
        QLabel* cap = label(QStringLiteral("lblpayment(%1)").arg(index), this);
        QLabel* value = label(name, this);
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        value->setMinimumWidth(120);
        cap->installEventFilter(this);
        value->installEventFilter(this);
        m_clickable.insert(cap, name);
        m_clickable.insert(value, name);
        summary->addWidget(cap, r, 0);
        summary->addWidget(value, r, 1);
        const int buttonIndex = index == 9 ? 7 : index;
        if (index != 4) {
            QPushButton* b = button(QStringLiteral("cmdSelect(%1)").arg(buttonIndex), this);
            b->setCheckable(true);
            b->setText(QStringLiteral("..."));
            b->setFixedWidth(36);
            connect(b, &QPushButton::clicked, this, [this, buttonIndex] {
                act("cmdSelect_Click", [&] { m_screen.cmdSelect_Click(buttonIndex); });
            });
            summary->addWidget(b, r, 2);
        }
        ++r;
    }
    for (const char* extra : {"lblESCT", "lblTaxCredit"}) {
        auto* cap = new QLabel(QString::fromLatin1(extra[3] == 'E' ? "ESCT" : "Tax Credit"), this);
        QLabel* value = label(QString::fromLatin1(extra), this);
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        summary->addWidget(cap, r, 0);
        summary->addWidget(value, r, 1);
        ++r;
    }
    summary->setRowStretch(r, 1);
    middle->addLayout(summary);

    // The view: calendar, grid or PAYE panel.
    m_stack = new QStackedWidget(this);
    m_calendar = new QCalendarWidget(m_stack);
    m_calendar->setObjectName(QStringLiteral("CalWage"));
    m_grid = new WageGridWidget(m_screen, m_stack);
    m_payePanel = new QWidget(m_stack);
    m_payePanel->setObjectName(QStringLiteral("vsePAYE"));
    auto* paye = new QGridLayout(m_payePanel);
    for (int i = 0; i < 5; ++i) {
        paye->addWidget(label(QString::fromLatin1(kPayeFields[i][0]), m_payePanel), i, 0);
        if (i == 1) {
            m_txtPAYE = new QLineEdit(m_payePanel);
            m_txtPAYE->setObjectName(QStringLiteral("txtPAYE"));
            m_txtPAYE->installEventFilter(this);
            paye->addWidget(m_txtPAYE, i, 1);
        } else {
            paye->addWidget(label(QString::fromLatin1(kPayeFields[i][1]), m_payePanel), i, 1);
        }
    }
    paye->setRowStretch(5, 1);
    m_stack->addWidget(m_calendar);
    m_stack->addWidget(m_grid);
    m_stack->addWidget(m_payePanel);
    middle->addWidget(m_stack, 1);
    outer->addLayout(middle, 1);

    // The buttons.
    auto* buttons = new QHBoxLayout;
    const char* const names[] = {"cmdAddPay", "cmdOneOff", "cmdPrintPay", "cmdDelete", "cmdMemo", "cmdQuick", "cmdClose"};
    for (const char* n : names)
        buttons->addWidget(button(QString::fromLatin1(n), this));
    buttons->addStretch(1);
    outer->addLayout(buttons);

    connect(m_buttons[QStringLiteral("cmdAddPay")], &QPushButton::clicked, this, [this] { act("cmdAddPay_Click", [&] { m_screen.cmdAddPay_Click(); }); });
    connect(m_buttons[QStringLiteral("cmdOneOff")], &QPushButton::clicked, this, [this] { act("cmdOneOff_Click", [&] { m_screen.cmdOneOff_Click(); }); });
    connect(m_buttons[QStringLiteral("cmdPrintPay")], &QPushButton::clicked, this, [this] { act("cmdPrintPay_Click", [&] { m_screen.cmdPrintPay_Click(); }); });
    connect(m_buttons[QStringLiteral("cmdDelete")], &QPushButton::clicked, this, [this] { act("cmdDelete_Click", [&] { m_screen.cmdDelete_Click(); }); });
    connect(m_buttons[QStringLiteral("cmdMemo")], &QPushButton::clicked, this, [this] { act("cmdMemo_Click", [&] { m_screen.cmdMemo_Click(); }); });
    connect(m_buttons[QStringLiteral("cmdQuick")], &QPushButton::clicked, this, [this] { act("cmdQuick_Click", [&] { m_screen.cmdQuick_Click(); }); });
    connect(m_buttons[QStringLiteral("cmdClose")], &QPushButton::clicked, this, [this] { m_screen.cmdClose_Click(); });
    connect(m_cboEmployee, qOverload<int>(&QComboBox::activated), this, [this](int index) {
        act("cboEmployee_Click", [&] { m_screen.selectEmployeeItem(index); });
    });
    connect(m_calendar, &QCalendarWidget::clicked, this, [this](QDate date) {
        act("CalWage_DateClick", [&] { m_screen.CalWage_DateClick(date); });
    });
    connect(m_txtPAYE, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_screen.control(QStringLiteral("txtPAYE")).caption = text;
    });
    connect(m_txtPAYE, &QLineEdit::returnPressed, this, [this] { act("txtPAYE_KeyDown", [&] { m_screen.txtPAYE_Accept(); }); });

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
    refresh();
}

frmWage::~frmWage() {
    m_screen.onScreenChanged = nullptr;
    m_screen.onGridChanged = nullptr;
    m_screen.onGridUpdate = nullptr;
    m_screen.onHourglass = nullptr;
}

void frmWage::move(int how) {
    act("datPays_Reposition", [&] {
        PayList& pays = m_screen.datPays;
        if (pays.RecordCount() == 0)
            return;
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

void frmWage::reloadGrid() {
    m_grid->reload();
}

void frmWage::refresh() {
    if (m_refreshing)
        return;
    m_refreshing = true;
    const QPalette pal = palette();
    for (auto it = m_labels.cbegin(); it != m_labels.cend(); ++it) {
        const ControlState& c = m_screen.control(it.key());
        it.value()->setText(c.caption);
        it.value()->setVisible(c.visible);
        if (PayView::boundLabels().contains(it.key()) || it.key().startsWith(QLatin1String("lblpayment")))
            it.value()->setStyleSheet(styleOf(c, pal));
    }
    for (auto it = m_buttons.cbegin(); it != m_buttons.cend(); ++it) {
        const ControlState& c = m_screen.control(it.key());
        if (!it.key().startsWith(QLatin1String("cmdSelect")))
            it.value()->setText(c.caption);
        it.value()->setVisible(c.visible);
        it.value()->setEnabled(c.enabled);
        if (it.value()->isCheckable())
            it.value()->setChecked(c.down);
    }
    // The memo button shows whether the pay has a memo.
    QFont memoFont = m_buttons[QStringLiteral("cmdMemo")]->font();
    memoFont.setBold(m_screen.control(QStringLiteral("cmdMemo")).down);
    m_buttons[QStringLiteral("cmdMemo")]->setFont(memoFont);

    m_cboEmployee->blockSignals(true);
    m_cboEmployee->clear();
    for (const ComboItem& item : m_screen.cboEmployeeItems)
        m_cboEmployee->addItem(item.text, item.itemData);
    m_cboEmployee->setCurrentIndex(m_screen.cboEmployeeIndex);
    m_cboEmployee->blockSignals(false);

    const ControlState& paye = m_screen.control(QStringLiteral("txtPAYE"));
    if (!m_txtPAYE->hasFocus() || m_txtPAYE->text() != paye.caption)
        m_txtPAYE->setText(paye.caption);
    m_txtPAYE->setReadOnly(paye.locked);
    m_txtPAYE->setStyleSheet(QStringLiteral("background: %1;").arg(systemColour(paye.backColor, pal).name()));

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
    m_refreshing = false;
}

bool frmWage::eventFilter(QObject* watched, QEvent* event) {
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
        else if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab) {
            act("txtPAYE_KeyDown", [&] { m_screen.txtPAYE_Accept(); });
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmWage::closeEvent(QCloseEvent* event) {
    event->accept();
    UnloadMainForm();
}

WageMainForm::WageMainForm() : m_form(new frmWage) {}

WageMainForm::~WageMainForm() {
    if (m_form) {
        m_form->hide();
        m_form->deleteLater();
    }
}

PayView& WageMainForm::view() { return m_form->screen(); }
void WageMainForm::setTitle(const QString& title) { m_form->setWindowTitle(title); }
QString WageMainForm::title() const { return m_form->windowTitle(); }

void WageMainForm::show() {
    m_form->screen().windowTitle = m_form->windowTitle();
    m_form->screen().Form_Load();
    m_form->refresh();
    m_form->show();
}

void WageMainForm::close() { m_form->close(); }

void WageMainForm::GotMessage(qint32 wParam) {
    try {
        m_form->screen().GotMessage(wParam);
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("GotMessage"));
    }
    m_form->refresh();
}

} // namespace ql
