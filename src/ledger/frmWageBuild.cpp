// The wage screen's controls and their places: title strip, employee, the three tabs with the summary,
// the pay list's navigator and the views, and the button row.
#include "WageGridWidget.h"
#include "frmWage.h"
#include "ui/AccessibleNames.h"
#include "leave/LeaveGridWidget.h"
#include "leave/LeaveTabWidget.h"
#include <QCalendarWidget>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace ql {

namespace {
const char* const kPayeFields[][3] = {{"lblpayrollCalc", "txtCalcOn", "Total taxable"},
                                      {"lblPayrollTax", "txtPAYE", "PAYE of this pay"},
                                      {"lblTaxType", "txtTaxType", "Tax type"},
                                      {"lblTaxCode", "txtTaxCode", "Tax code"},
                                      {"lblPayInterval", "txtpayInterval", "Pay interval"}};

// What each summary figure is called for a screen reader, by its caption index.
QString figureName(int index) {
    static const char* const names[] = {"End of period",
                                        "Gross",
                                        "Taxable allowances",
                                        "Total taxable",
                                        "PAYE",
                                        "Non taxable allowances",
                                        "Deductions",
                                        "Take home pay",
                                        "Status",
                                        "KiwiSaver contributions"};
    return QString::fromLatin1(names[index]);
}

// What a cmdSelect button opens, by its index.
QString viewName(int index) {
    static const char* const names[] = {"calendar",
                                        "payment lines",
                                        "taxable allowance lines",
                                        "PAYE panel",
                                        "non taxable allowance lines",
                                        "deduction lines",
                                        "payslip",
                                        "contribution lines"};
    return QString::fromLatin1(names[index]);
}
} // namespace

QLabel* frmWage::label(const QString& name, QWidget* parent, const QString& accessibleName) {
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    l->setAccessibleName(accessibleName.isEmpty() ? name : accessibleName);
    m_labelNames.insert(name, l->accessibleName());
    m_labels.insert(name, l);
    return l;
}

QPushButton* frmWage::button(const QString& name, QWidget* parent, const QString& accessibleName) {
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    b->setAccessibleName(accessibleName);
    m_buttons.insert(name, b);
    return b;
}

QWidget* frmWage::buildTitleStrip() {
    auto* strip = new QFrame(this);
    strip->setObjectName(QStringLiteral("els_TitleBar"));
    strip->setAccessibleName(QStringLiteral("Title strip"));
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(10, 6, 10, 6);
    m_title = new QLabel(strip);
    m_title->setObjectName(QStringLiteral("lblTitle"));
    m_title->setAccessibleName(QStringLiteral("Title"));
    QFont f = m_title->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.3);
    m_title->setFont(f);
    row->addWidget(m_title, 1);
    const char* const names[] = {"Modules", "Tools", "Reports", "Help"};
    const char* const keys[] = {"Ctrl+M", "Ctrl+T", "Ctrl+R", "Ctrl+H"};
    for (int i = 0; i < 4; ++i) {
        auto* b = new QToolButton(strip);
        b->setObjectName(QStringLiteral("els_TitleButton(%1)").arg(i));
        b->setText(QString::fromLatin1(names[i]));
        b->setAccessibleName(QString::fromLatin1(names[i]));
        b->setAccessibleDescription(
            QStringLiteral("Opens the %1 menu (%2)")
                .arg(QString::fromLatin1(names[i]).toLower(), QString::fromLatin1(keys[i])));
        b->setToolTip(
            QStringLiteral("%1 (%2)").arg(QString::fromLatin1(names[i]), QString::fromLatin1(keys[i])));
        b->setFocusPolicy(Qt::TabFocus);
        m_titleButtons[i] = b;
        row->addWidget(b);
    }
    return strip;
}

QWidget* frmWage::buildSummary(QWidget* parent) {
    auto* side = new QWidget(parent);
    side->setObjectName(QStringLiteral("els_FormSideBar"));
    auto* summary = new QGridLayout(side);
    summary->setContentsMargins(6, 6, 6, 6);
    summary->setVerticalSpacing(4);
    const int rows[] = {0, 1, 2, 3, 4, 5, 6, 7, 9};
    int r = 0;
    for (int index : rows) {
        const QString name = labelOfCaption(index);
        QLabel* cap = label(QStringLiteral("lblpayment(%1)").arg(index), side,
                            figureName(index) + QStringLiteral(" caption"));
        QLabel* value = label(name, side, figureName(index));
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        value->setMinimumWidth(110);
        cap->setCursor(Qt::PointingHandCursor);
        value->setCursor(Qt::PointingHandCursor);
        m_clickable.insert(cap, name);
        m_clickable.insert(value, name);
        summary->addWidget(cap, r, 0);
        summary->addWidget(value, r, 1);
        const int buttonIndex = tabOfLabel(name); // the view the figure opens
        if (index != 4) {                         // the PAYE figure shares the button of total taxable
            QPushButton* b = button(QStringLiteral("cmdSelect(%1)").arg(buttonIndex), side,
                                    QStringLiteral("Show the ") + viewName(buttonIndex));
            b->setCheckable(true);
            b->setText(QStringLiteral("&%1").arg(buttonIndex));
            b->setToolTip(QStringLiteral("Show the %1 (Alt+%2)").arg(viewName(buttonIndex)).arg(buttonIndex));
            b->setFixedWidth(38);
            summary->addWidget(b, r, 2, index == 3 ? 2 : 1, 1);
        }
        ++r;
    }
    for (const char* extra : {"lblESCT", "lblTaxCredit"}) {
        const bool esct = extra[3] == 'E';
        auto* cap = new QLabel(esct ? QStringLiteral("ESCT") : QStringLiteral("KiwiSaver Tax Credit"), side);
        cap->setObjectName(QString::fromLatin1(extra) + QStringLiteral("Caption"));
        cap->setStyleSheet(QStringLiteral("padding: 2px 6px;"));
        cap->setAccessibleName(esct ? QStringLiteral("ESCT caption")
                                    : QStringLiteral("KiwiSaver tax credit caption"));
        QLabel* value = label(QString::fromLatin1(extra), side,
                              esct ? QStringLiteral("ESCT") : QStringLiteral("KiwiSaver tax credit"));
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        summary->addWidget(cap, r, 0);
        summary->addWidget(value, r, 1);
        ++r;
    }
    summary->setRowStretch(r, 1);
    summary->setColumnStretch(0, 1);
    return side;
}

QWidget* frmWage::buildViews(QWidget* parent) {
    auto* box = new QWidget(parent);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);

    // The pay list as a navigator.
    auto* nav = new QHBoxLayout;
    const char* const moves[] = {"|<", "<", ">", ">|"};
    const char* const names[] = {"First pay", "Previous pay", "Next pay", "Last pay"};
    const char* const keys[] = {"Alt+Home", "Alt+PgUp", "Alt+PgDown", "Alt+End"};
    for (int i = 0; i < 4; ++i) {
        auto* b = new QPushButton(QString::fromLatin1(moves[i]), box);
        b->setObjectName(QStringLiteral("datPaysMove%1").arg(i));
        b->setAccessibleName(QString::fromLatin1(names[i]));
        b->setToolTip(
            QStringLiteral("%1 (%2)").arg(QString::fromLatin1(names[i]), QString::fromLatin1(keys[i])));
        b->setShortcut(QKeySequence(QString::fromLatin1(keys[i])));
        b->setFixedWidth(36);
        connect(b, &QPushButton::clicked, this, [this, i] { move(i); });
        if (i == 2) {
            QLabel* position = label(QStringLiteral("datPays"), box, QStringLiteral("Pay position"));
            position->setAlignment(Qt::AlignCenter);
            position->setMinimumWidth(70);
            nav->addWidget(position);
        }
        nav->addWidget(b);
    }
    nav->addSpacing(12);
    nav->addWidget(label(QStringLiteral("lblpayment(10)"), box, QStringLiteral("Pay interval and tax code")));
    nav->addStretch(1);
    column->addLayout(nav);

    // The view: calendar, grid or PAYE panel.
    m_stack = new QStackedWidget(box);
    m_stack->setObjectName(QStringLiteral("vseWageDisplay"));
    m_calendar = new QCalendarWidget(m_stack);
    m_calendar->setObjectName(QStringLiteral("CalWage"));
    m_calendar->setAccessibleName(QStringLiteral("Pay date calendar"));
    m_calendar->setGridVisible(true);
    NameCalendarParts(m_calendar);
    m_grid = new WageGridWidget(m_screen, m_stack);
    m_grid->setAccessibleName(QStringLiteral("Pay lines"));
    m_payePanel = new QWidget(m_stack);
    m_payePanel->setObjectName(QStringLiteral("vsePAYE"));
    m_payePanel->setAccessibleName(QStringLiteral("PAYE panel"));
    auto* paye = new QGridLayout(m_payePanel);
    for (int i = 0; i < 5; ++i) {
        QLabel* cap = label(QString::fromLatin1(kPayeFields[i][0]), m_payePanel,
                            QString::fromLatin1(kPayeFields[i][2]) + QStringLiteral(" caption"));
        paye->addWidget(cap, i, 0);
        if (i == 1) {
            m_txtPAYE = new QLineEdit(m_payePanel);
            m_txtPAYE->setObjectName(QStringLiteral("txtPAYE"));
            m_txtPAYE->setAccessibleName(QStringLiteral("PAYE of this pay"));
            m_txtPAYE->setMaximumWidth(200);
            cap->setBuddy(m_txtPAYE);
            paye->addWidget(m_txtPAYE, i, 1);
        } else {
            QLabel* v = label(QString::fromLatin1(kPayeFields[i][1]), m_payePanel,
                              QString::fromLatin1(kPayeFields[i][2]));
            v->setFrameShape(QFrame::StyledPanel);
            v->setMinimumWidth(160);
            v->setMaximumWidth(260);
            v->setAutoFillBackground(true);
            paye->addWidget(v, i, 1);
        }
    }
    paye->setColumnStretch(2, 1);
    paye->setRowStretch(5, 1);
    m_stack->addWidget(m_calendar);
    m_stack->addWidget(m_grid);
    m_stack->addWidget(m_payePanel);
    column->addWidget(m_stack, 1);

    QLabel* status = label(QStringLiteral("lblpayment(8)"), box, QStringLiteral("Status"));
    QFont f = status->font();
    f.setBold(true);
    status->setFont(f);
    column->addWidget(status);
    return box;
}

QWidget* frmWage::buildFooter() {
    auto* footer = new QWidget(this);
    footer->setObjectName(QStringLiteral("els_FooterBar"));
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(8, 4, 8, 6);
    const char* const names[][2] = {
        {"cmdAddPay", "Add pay"},    {"cmdOneOff", "One-off pay"}, {"cmdPrintPay", "Commit or pay slip"},
        {"cmdDelete", "Delete pay"}, {"cmdMemo", "Memo"},          {"cmdQuick", "Quick view"}};
    for (const auto& n : names)
        row->addWidget(button(QString::fromLatin1(n[0]), footer, QString::fromLatin1(n[1])));
    // Every due pay of the farm at once, beside the pays of one employee.
    m_cmdPayRun = new QPushButton(QStringLiteral("Pay &Run..."), footer);
    m_cmdPayRun->setObjectName(QStringLiteral("cmdPayRun"));
    m_cmdPayRun->setAccessibleName(QStringLiteral("Pay run of every due pay"));
    m_cmdPayRun->setVisible(false);
    connect(m_cmdPayRun, &QPushButton::clicked, this, [this] {
        if (m_payRun) m_payRun();
    });
    row->addWidget(m_cmdPayRun);
    row->addStretch(1);
    row->addWidget(button(QStringLiteral("cmdClose"), footer, QStringLiteral("Close")));
    return footer;
}

frmWage::frmWage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmWage"));
    setAccessibleName(QStringLiteral("Wage ledger"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    setMinimumSize(760, 520);
    resize(1000, 680);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    m_titleStrip = buildTitleStrip();
    outer->addWidget(m_titleStrip);

    auto* body = new QWidget(this);
    body->setObjectName(QStringLiteral("els_Form"));
    auto* bodyLayout = new QVBoxLayout(body);
    bodyLayout->setContentsMargins(8, 6, 8, 4);

    // The employee and who the person is.
    auto* who = new QGridLayout;
    auto* employeeCaption = new QLabel(QStringLiteral("&Employee:"), body);
    m_cboEmployee = new QComboBox(body);
    m_cboEmployee->setObjectName(QStringLiteral("cboEmployee"));
    m_cboEmployee->setAccessibleName(QStringLiteral("Employee"));
    m_cboEmployee->setMinimumWidth(220);
    employeeCaption->setBuddy(m_cboEmployee);
    who->addWidget(employeeCaption, 0, 0);
    who->addWidget(m_cboEmployee, 0, 1);
    who->addWidget(new QLabel(QStringLiteral("Address:"), body), 0, 2);
    QLabel* address = label(QStringLiteral("lblAddress"), body, QStringLiteral("Address"));
    address->setWordWrap(true);
    who->addWidget(address, 0, 3);
    who->addWidget(new QLabel(QStringLiteral("Occupation:"), body), 0, 4);
    who->addWidget(label(QStringLiteral("lblOccupation"), body, QStringLiteral("Occupation")), 0, 5);
    who->setColumnStretch(3, 1);
    who->setHorizontalSpacing(8);
    bodyLayout->addLayout(who);

    // The three tabs.
    m_tabMain = new QTabWidget(body);
    m_tabMain->setObjectName(QStringLiteral("tabMain"));
    m_tabMain->setAccessibleName(QStringLiteral("Wages, leave and address"));
    auto* wagePage = new QWidget;
    wagePage->setObjectName(QStringLiteral("vseWage(0)"));
    auto* wageRow = new QHBoxLayout(wagePage);
    wageRow->setContentsMargins(4, 4, 4, 4);
    wageRow->addWidget(buildSummary(wagePage));
    wageRow->addWidget(buildViews(wagePage), 1);
    m_leavePage = new QWidget;
    m_leavePage->setObjectName(QStringLiteral("vseWage(1)"));
    m_leaveLayout = new QVBoxLayout(m_leavePage);
    m_leavePlaceholder =
        new QLabel(QStringLiteral("The leave ledger is not part of this version yet."), m_leavePage);
    m_leavePlaceholder->setAlignment(Qt::AlignCenter);
    m_leaveLayout->addWidget(m_leavePlaceholder);
    setLeaveWidget(new LeaveTabWidget(m_screen.leave, m_leavePage));
    m_tabMain->addTab(wagePage, QStringLiteral("&Wages"));
    m_tabMain->addTab(m_leavePage, QStringLiteral("Lea&ve"));
    m_tabMain->addTab(new QWidget, QStringLiteral("Addre&ss"));
    m_tabMain->setTabToolTip(2, QStringLiteral("Opens the address book at this employee"));
    bodyLayout->addWidget(m_tabMain, 1);
    outer->addWidget(body, 1);
    outer->addWidget(buildFooter());

    connectEvents();
    setTabOrders();
    refresh();
}

void frmWage::setTabOrders() {
    QList<QWidget*> order{m_cboEmployee, m_tabMain->tabBar()};
    // The leave page's own order follows the tab bar; the wage page's controls are hidden meanwhile.
    if (auto* leave = qobject_cast<LeaveTabWidget*>(m_leave)) {
        order << leave->findChild<QWidget*>(QStringLiteral("tabLeave"))
              << leave->findChild<QWidget*>(QStringLiteral("optWhichYears(0)"))
              << leave->findChild<QWidget*>(QStringLiteral("optWhichYears(1)")) << leave->grid();
    }
    for (int i = 0; i < 8; ++i)
        order << m_buttons.value(QStringLiteral("cmdSelect(%1)").arg(i));
    for (int i = 0; i < 4; ++i)
        order << findChild<QPushButton*>(QStringLiteral("datPaysMove%1").arg(i));
    order << m_calendar << m_grid << m_txtPAYE;
    for (const char* n :
         {"cmdAddPay", "cmdOneOff", "cmdPrintPay", "cmdDelete", "cmdMemo", "cmdQuick", "cmdClose"}) {
        if (QLatin1String(n) == QLatin1String("cmdClose")) order << m_cmdPayRun;
        order << m_buttons.value(QString::fromLatin1(n));
    }
    for (QToolButton* b : m_titleButtons)
        order << b;
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

void frmWage::setPayRun(std::function<void()> run) {
    m_payRun = std::move(run);
    m_cmdPayRun->setVisible(bool(m_payRun));
}

QToolButton* frmWage::titleButton(int index) const {
    return index >= 0 && index < 4 ? m_titleButtons[index] : nullptr;
}

void frmWage::setLeaveWidget(QWidget* leave) {
    if (m_leave == leave) return;
    delete m_leave; // at once: the leave widget lets go of the model it shows
    m_leave = leave;
    m_leavePlaceholder->setVisible(!leave);
    if (leave) m_leaveLayout->addWidget(leave, 1);
}

} // namespace ql
