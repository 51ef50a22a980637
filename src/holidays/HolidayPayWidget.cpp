#include "HolidayPayWidget.h"
#include "HolidaySetupDialog.h"
#include "PayDaysDialog.h"
#include "LeaveWorking.h"
#include "leave/LeaveScreen.h"
#include "leave/basLeave.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "runtime/VbError.h"
#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

using namespace holidays;

namespace {

const LeaveKind kKinds[] = {LeaveKind::Annual,         LeaveKind::Public,     LeaveKind::Sick, LeaveKind::Bereavement,
                            LeaveKind::FamilyViolence, LeaveKind::Alternative};
const char* const kCaptions[] = {"Annual holidays", "Public holiday", "Sick leave", "Bereavement leave",
                                 "Family violence leave", "Alternative holiday"};

} // namespace

HolidayPayWidget::HolidayPayWidget(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Holiday pay"));
    m_kind = new QComboBox(this);
    m_kind->setAccessibleName(QStringLiteral("Leave to pay"));
    for (const char* c : kCaptions)
        m_kind->addItem(QString::fromLatin1(c));
    m_from = new QDateEdit(QDate::currentDate(), this);
    m_from->setAccessibleName(QStringLiteral("First day"));
    m_from->setDisplayFormat(QStringLiteral("d/MM/yyyy"));
    m_from->setCalendarPopup(true);
    m_days = new QDoubleSpinBox(this);
    m_days->setAccessibleName(QStringLiteral("Days"));
    m_days->setRange(0.5, 366);
    m_days->setDecimals(1);
    m_days->setValue(1);
    m_workOut = new QPushButton(QStringLiteral("Work out"), this);
    m_workOut->setAccessibleName(QStringLiteral("Work out the leave's pay"));
    m_add = new QPushButton(QStringLiteral("Add leave to this pay"), this);
    m_add->setAccessibleName(QStringLiteral("Add leave to this pay"));
    m_working = new QPlainTextEdit(this);
    m_working->setAccessibleName(QStringLiteral("Rate and working"));
    m_working->setReadOnly(true);
    m_working->setMaximumHeight(120);

    // The editing boxes inside the date and number boxes carry their names too. No access keys: the
    // leave tab's own use the letters.
    for (QLineEdit* inner : m_from->findChildren<QLineEdit*>())
        inner->setAccessibleName(m_from->accessibleName());
    for (QLineEdit* inner : m_days->findChildren<QLineEdit*>())
        inner->setAccessibleName(m_days->accessibleName());

    auto* row = new QHBoxLayout;
    auto* kindLabel = new QLabel(QStringLiteral("Leave"), this);
    kindLabel->setBuddy(m_kind);
    auto* fromLabel = new QLabel(QStringLiteral("From"), this);
    fromLabel->setBuddy(m_from);
    auto* daysLabel = new QLabel(QStringLiteral("Days"), this);
    daysLabel->setBuddy(m_days);
    row->addWidget(kindLabel);
    row->addWidget(m_kind);
    row->addWidget(fromLabel);
    row->addWidget(m_from);
    row->addWidget(daysLabel);
    row->addWidget(m_days);
    row->addWidget(m_workOut);
    row->addWidget(m_add);
    row->addStretch(1);
    // What the working rests on, to set right where it is seen (the Tools menu has them with keys).
    auto* setup = new QPushButton(QStringLiteral("Set-up..."), this);
    setup->setObjectName(QStringLiteral("cmdHolidaySetup"));
    setup->setAccessibleName(QStringLiteral("Work pattern and holiday terms of this employee"));
    setup->setToolTip(QStringLiteral("Work pattern and holiday terms (Ctrl+Shift+H)"));
    auto* days = new QPushButton(QStringLiteral("Days of pay..."), this);
    days->setObjectName(QStringLiteral("cmdPayDays"));
    days->setAccessibleName(QStringLiteral("Days and hours of the shown pay"));
    days->setToolTip(QStringLiteral("Days and hours of the shown pay (Ctrl+Shift+Y)"));
    // Beside the working, so that the leave's row keeps its width on a small screen.
    auto* side = new QVBoxLayout;
    side->addWidget(setup);
    side->addWidget(days);
    side->addStretch(1);
    connect(setup, &QPushButton::clicked, this, [this] {
        if (ShowHolidaySetup(App().WageDatabase, App().CurrentEmployeeID, window())) workOut();
    });
    connect(days, &QPushButton::clicked, this, [this] {
        if (ShowPayDays(App().WageDatabase, App().CurrentWageID, window())) workOut();
    });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(row);
    auto* below = new QHBoxLayout;
    below->addWidget(m_working, 1);
    below->addLayout(side);
    layout->addLayout(below);

    connect(m_workOut, &QPushButton::clicked, this, &HolidayPayWidget::workOut);
    connect(m_add, &QPushButton::clicked, this, &HolidayPayWidget::addToPay);
}

void HolidayPayWidget::chooseLeave(int ledgerLeaveType, const QDate& from, double days) {
    if (const auto kind = LeaveKindOfLedger(ledgerLeaveType))
        for (int i = 0; i < m_kind->count(); ++i)
            if (kKinds[i] == *kind) m_kind->setCurrentIndex(i);
    if (from.isValid()) m_from->setDate(from);
    if (days > 0) m_days->setValue(days);
}

void HolidayPayWidget::followLedgerRow(const LeaveScreen& ledger, int row) {
    if (row < 0 || row >= ledger.LeaveArray.rowCount() || ledger.CurrentLeaveTypeID <= 0) return;
    const QVariant from = ledger.cellValue(row, leave::DateFrom);
    const QVariant days = ledger.cellValue(row, leave::Days);
    // In lieu counts hours, not days: the panel keeps its days for an alternative holiday.
    const double dayCount =
        ledger.CurrentLeaveTypeID == leave::InLieu || IsNull(days) || !IsNumeric(days) ? 0.0 : CDbl(days);
    chooseLeave(ledger.CurrentLeaveTypeID, !IsNull(from) && IsDate(from) ? CDate(from) : QDate(), dayCount);
    workOut();
}

void HolidayPayWidget::workOut() {
    const AppContext& a = App();
    if (a.CurrentEmployeeID <= 0) {
        m_working->setPlainText(QString());
        return;
    }
    try {
        const LeavePayResult r = ComputeLeavePay(App().WageDatabase, a.CurrentEmployeeID, kKinds[m_kind->currentIndex()],
                                                 m_from->date(), m_days->value());
        m_working->setPlainText(LeaveWorkingLines(r).join(QLatin1Char('\n')));
    } catch (const VbError& e) {
        m_working->setPlainText(e.description());
    }
}

bool HolidayPayWidget::addToPay() {
    const AppContext& a = App();
    try {
        const LeavePayResult r = ComputeLeavePay(App().WageDatabase, a.CurrentEmployeeID, kKinds[m_kind->currentIndex()],
                                                 m_from->date(), m_days->value());
        m_working->setPlainText(LeaveWorkingLines(r).join(QLatin1Char('\n')));
        AddLeaveToShownPay(r);
        return true;
    } catch (const VbError& e) {
        ShowMessage(e.description(), 0, Firm(), QStringLiteral("Add leave to this pay"), QString(), 6, true);
        return false;
    }
}

QString HolidayPayWidget::workingText() const { return m_working->toPlainText(); }

} // namespace ql
