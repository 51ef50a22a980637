#include "PayChecksDialog.h"
#include "HolidayDialogParts.h"
#include "LeavePay.h"
#include "MinimumWage.h"
#include "PayAsYouGo.h"
#include "ShownPay.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

using namespace holidays;

namespace {

const QString kHeading = QStringLiteral("Minimum Wage and 8%");

QString cents(Currency c) { return ToCents(c).toFixed4().chopped(2); }
QString dateText(const QDate& d) { return d.toString(QStringLiteral("d/MM/yyyy")); }

void tell(const QString& text) { ShowMessage(text, msg::OKOnly, Firm(), kHeading, QString(), msg::Warning, true); }

QLabel* figures(QWidget* parent, const QString& name, const QString& accessible) {
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    l->setAccessibleName(accessible);
    l->setWordWrap(true);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    l->setFocusPolicy(Qt::StrongFocus); // read by Tab like a field
    return l;
}

} // namespace

PayChecksDialog::PayChecksDialog(Database& wage, qint32 wageID, QWidget* parent)
    : QDialog(parent), m_wage(wage), m_wageID(wageID) {
    setObjectName(QStringLiteral("frmPayChecks"));
    setWindowTitle(QStringLiteral("Minimum Wage and 8% of This Pay"));
    setAccessibleName(QStringLiteral("Minimum wage and 8% of this pay"));
    auto* minimumBox = new QGroupBox(QStringLiteral("Minimum wage (each pay alone)"), this);
    m_minimum = figures(minimumBox, QStringLiteral("lblMinimumWage"), QStringLiteral("Minimum wage check"));
    m_addTopUp = NamedButton(minimumBox, QStringLiteral("Add &Top-up"), QStringLiteral("cmdAddTopUp"),
                             QStringLiteral("Put the minimum wage top-up on the pay"));
    auto* m = new QVBoxLayout(minimumBox);
    m->addWidget(m_minimum);
    m->addWidget(m_addTopUp, 0, Qt::AlignRight);
    auto* paygBox = new QGroupBox(QStringLiteral("Holiday pay as you go"), this);
    m_payg = figures(paygBox, QStringLiteral("lblPayAsYouGo"), QStringLiteral("Holiday pay as you go"));
    m_addPayg = NamedButton(paygBox, QStringLiteral("Add &8%"), QStringLiteral("cmdAddPayAsYouGo"),
                            QStringLiteral("Put the 8% on the pay"));
    auto* p = new QVBoxLayout(paygBox);
    p->addWidget(m_payg);
    p->addWidget(m_addPayg, 0, Qt::AlignRight);
    QPushButton* close = NamedButton(this, QStringLiteral("C&lose"), QStringLiteral("cmdClose"), QStringLiteral("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_addTopUp, &QPushButton::clicked, this, &PayChecksDialog::addTopUp);
    connect(m_addPayg, &QPushButton::clicked, this, &PayChecksDialog::addPayAsYouGo);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(minimumBox);
    layout->addWidget(paygBox);
    layout->addStretch(1);
    layout->addWidget(close, 0, Qt::AlignRight);
    showChecks();
    resize(560, 380);
}

QString PayChecksDialog::minimumWageText() const { return m_minimum->text(); }
QString PayChecksDialog::payAsYouGoText() const { return m_payg->text(); }

void PayChecksDialog::showChecks() {
    try {
        const MinimumWageCheck c = CheckMinimumWage(m_wage, m_wageID);
        QStringList lines;
        lines << QStringLiteral("Pay period %1 to %2: %3 hours (%4).")
                     .arg(dateText(c.periodStart), dateText(c.periodEnd), QString::number(double(c.hours), 'f', 2),
                          c.hoursSource);
        for (const MinimumWagePart& part : c.parts)
            lines << QStringLiteral("%1 to %2: %3 hours at %4 = %5")
                         .arg(dateText(part.from), dateText(part.to), QString::number(part.hours, 'f', 2),
                              cents(part.hourlyMinimum), cents(part.minimum));
        lines << QStringLiteral("Pay that counts: %1; minimum: %2 (%3 rate).")
                     .arg(cents(c.payThatCounts), cents(c.minimum), c.rateKind);
        lines << (c.topUp > Currency() ? QStringLiteral("Top-up due: %1.").arg(cents(c.topUp))
                                       : QStringLiteral("No top-up is due."));
        if (c.existingTopUp > Currency()) lines << QStringLiteral("On the pay already: %1.").arg(cents(c.existingTopUp));
        m_minimum->setText(lines.join(QLatin1Char('\n')));
        m_addTopUp->setEnabled(!c.committed && c.topUp != c.existingTopUp);
    } catch (const VbError& e) {
        m_minimum->setText(e.description());
        m_addTopUp->setEnabled(false);
    }
    try {
        const PayAsYouGoResult r = PayAsYouGoOf(m_wage, m_wageID);
        m_payg->setText(r.allowed ? QStringLiteral("The employee's terms say pay as you go.\nGross earnings %1; 8%: %2; "
                                                   "on the pay: %3.")
                                        .arg(cents(r.grossEarnings), cents(r.holidayPay), cents(r.onPay))
                                  : QStringLiteral("The employee's terms do not say pay as you go (Tools, Holiday "
                                                   "Set-up): annual holidays are kept instead."));
        m_addPayg->setEnabled(r.allowed && r.onPay != r.holidayPay);
    } catch (const VbError& e) {
        m_payg->setText(e.description());
        m_addPayg->setEnabled(false);
    }
}

template <class F> bool PayChecksDialog::putOnPay(F&& put) {
    try {
        put();
        RecalculateShownPay();
    } catch (const VbError& e) {
        tell(e.description());
        return false;
    }
    showChecks();
    return true;
}

bool PayChecksDialog::addTopUp() {
    return putOnPay([this] { ApplyMinimumWageTopUp(m_wage, CheckMinimumWage(m_wage, m_wageID)); });
}

bool PayChecksDialog::addPayAsYouGo() {
    return putOnPay([this] { ApplyPayAsYouGo(m_wage, PayAsYouGoOf(m_wage, m_wageID)); });
}

void ShowPayChecks(Database& wage, qint32 wageID, QWidget* owner) {
    if (!PayOnPayroll(wage, wageID)) {
        tell(NoPayText());
        return;
    }
    PayChecksDialog d(wage, wageID, owner);
    ExecAndReturn(d, owner);
}

} // namespace ql
