#include "CashUpDialog.h"
#include "CashUp.h"
#include "HolidayDialogParts.h"
#include "LeavePay.h"
#include "ShownPay.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

using namespace holidays;

namespace {

const QString kHeading = QStringLiteral("Cash Up Annual Holidays");

QString cents(Currency c) { return ToCents(c).toFixed4().chopped(2); }

void tell(const QString& text) { ShowMessage(text, msg::OKOnly, Firm(), kHeading, QString(), msg::Warning, true); }

} // namespace

CashUpDialog::CashUpDialog(Database& wage, qint32 employeeID, qint32 wageID, QWidget* parent)
    : QDialog(parent), m_wage(wage), m_employeeID(employeeID), m_wageID(wageID) {
    setObjectName(QStringLiteral("frmCashUp"));
    setWindowTitle(kHeading);
    setAccessibleName(QStringLiteral("Cash up annual holidays"));
    auto* who = new QLabel(EmployeeCaption(wage, employeeID), this);
    QFont bold = who->font();
    bold.setBold(true);
    who->setFont(bold);
    m_day = new QDateEdit(QDate::currentDate(), this);
    m_day->setObjectName(QStringLiteral("dtpRequested"));
    m_day->setAccessibleName(QStringLiteral("Day of the employee's request"));
    m_day->setDisplayFormat(QStringLiteral("d/MM/yyyy"));
    m_day->setCalendarPopup(true);
    NameInnerEdit(m_day);
    m_weeks = new QDoubleSpinBox(this);
    m_weeks->setObjectName(QStringLiteral("txtWeeks"));
    m_weeks->setAccessibleName(QStringLiteral("Weeks to cash up"));
    m_weeks->setRange(0.1, 1);
    m_weeks->setDecimals(2);
    m_weeks->setSingleStep(0.2);
    m_weeks->setValue(1);
    NameInnerEdit(m_weeks);
    auto* form = new QFormLayout;
    auto* dayLabel = new QLabel(QStringLiteral("&Requested on:"), this);
    dayLabel->setBuddy(m_day);
    auto* weeksLabel = new QLabel(QStringLiteral("&Weeks (at most one a year):"), this);
    weeksLabel->setBuddy(m_weeks);
    form->addRow(dayLabel, m_day);
    form->addRow(weeksLabel, m_weeks);
    m_working = new QLabel(this);
    m_working->setObjectName(QStringLiteral("lblCashUpWorking"));
    m_working->setAccessibleName(QStringLiteral("Rate and working of the cash-up"));
    m_working->setWordWrap(true);
    m_working->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_working->setFocusPolicy(Qt::StrongFocus);
    QPushButton* work =
        NamedButton(this, QStringLiteral("W&ork Out"), QStringLiteral("cmdWorkOut"), QStringLiteral("Work the cash-up out"));
    QPushButton* add = NamedButton(this, QStringLiteral("Cash &Up on This Pay"), QStringLiteral("cmdCashUp"),
                                   QStringLiteral("Cash up on the shown pay"));
    QPushButton* close = NamedButton(this, QStringLiteral("C&lose"), QStringLiteral("cmdClose"), QStringLiteral("Close"));
    connect(work, &QPushButton::clicked, this, &CashUpDialog::workOut);
    connect(add, &QPushButton::clicked, this, &CashUpDialog::cashUp);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_day, &QDateEdit::dateChanged, this, &CashUpDialog::workOut);
    connect(m_weeks, &QDoubleSpinBox::valueChanged, this, &CashUpDialog::workOut);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(work);
    buttons->addWidget(add);
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(who);
    layout->addLayout(form);
    layout->addWidget(m_working, 1);
    layout->addLayout(buttons);
    workOut();
    resize(560, 320);
}

QString CashUpDialog::workingText() const { return m_working->text(); }

void CashUpDialog::workOut() {
    try {
        const CashUpResult r = ComputeCashUp(m_wage, m_employeeID, m_day->date(), m_weeks->value());
        QStringList lines;
        lines << QStringLiteral("Untaken annual holidays: %1 weeks; cashed up since the last anniversary: %2 weeks.")
                     .arg(QString::number(r.balanceWeeks, 'f', 4), QString::number(r.cashedUpThisYear, 'f', 2));
        lines << QStringLiteral("OWP %1, AWE %2: the %3 is used.").arg(cents(r.owp.amount), cents(r.awe.amount), r.rateUsed);
        lines << QStringLiteral("%1 weeks at %2 = %3.").arg(QString::number(r.weeks, 'f', 2), cents(r.rate), cents(r.amount));
        if (!r.refusal.isEmpty()) lines << r.refusal;
        m_working->setText(lines.join(QLatin1Char('\n')));
    } catch (const VbError& e) {
        m_working->setText(e.description());
    }
}

bool CashUpDialog::cashUp() {
    try {
        const CashUpResult r = ComputeCashUp(m_wage, m_employeeID, m_day->date(), m_weeks->value());
        ApplyCashUp(m_wage, m_wageID, r);
        RecalculateShownPay();
    } catch (const VbError& e) {
        tell(e.description());
        return false;
    }
    workOut();
    return true;
}

void ShowCashUp(Database& wage, qint32 employeeID, qint32 wageID, QWidget* owner) {
    if (!EmployeeOnPayroll(wage, employeeID) || !PayOnPayroll(wage, wageID, employeeID)) {
        tell(NoPayText());
        return;
    }
    CashUpDialog d(wage, employeeID, wageID, owner);
    ExecAndReturn(d, owner);
}

} // namespace ql
