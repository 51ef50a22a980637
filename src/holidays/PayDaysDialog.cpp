#include "PayDaysDialog.h"
#include "AllOrNothing.h"
#include "HolidayDialogParts.h"
#include "PayHistory.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace ql {

using namespace holidays;

namespace {

enum Column { DayColumn, UsualColumn, HoursColumn, WorkedColumn, ColumnCount };
const QString kHeading = QStringLiteral("Days and Hours");

QString dateText(const QDate& d) { return d.toString(QStringLiteral("d/MM/yyyy")); }

// Hours or days as typed: nullopt for an empty text; ok false for a text that is no number in range.
std::optional<float> typedNumber(const QString& text, float max, bool* ok) {
    *ok = true;
    const QString t = text.trimmed();
    if (t.isEmpty()) return std::nullopt;
    const auto v = parseNumber(t);
    if (!v || *v < 0 || *v > double(max)) {
        *ok = false;
        return std::nullopt;
    }
    return float(*v);
}

QString numberText(float v) { return CStr(double(v)); }

void refuse(const QString& text) { ShowMessage(text, msg::OKOnly, Firm(), kHeading, QString(), msg::Warning, true); }

} // namespace

PayDaysDialog::PayDaysDialog(Database& wage, qint32 wageID, QWidget* parent)
    : QDialog(parent), m_wage(wage), m_wageID(wageID) {
    setObjectName(QStringLiteral("frmPayDays"));
    setWindowTitle(QStringLiteral("Days and Hours of a Pay"));
    setAccessibleName(QStringLiteral("Days and hours of a pay"));
    const QVariantList pay =
        wage.firstRow(QStringLiteral("SELECT EmployeeID, Reference FROM Wages WHERE WageID = %1").arg(wageID));
    m_employeeID = pay.isEmpty() ? 0 : CLng(pay.at(0));
    const bool committed = pay.size() > 1 && !IsNull(pay.at(1)) && !pay.at(1).toString().isEmpty();
    for (const PayRecord& p : LoadPays(wage, m_employeeID))
        if (p.wageID == wageID) {
            m_start = p.start;
            m_end = p.end;
        }
    const PayDays stored = PayDaysOf(wage, wageID);

    const QString who = EmployeeCaption(wage, m_employeeID);
    auto* heading = new QLabel(QStringLiteral("%1: the pay of %2, for %3 to %4%5")
                                   .arg(who, dateText(m_end), dateText(m_start), dateText(m_end),
                                        committed ? QStringLiteral(" (committed: its days and hours may still be "
                                                                   "recorded; its amounts stay as they are)")
                                                  : QString()),
                               this);
    heading->setObjectName(QStringLiteral("lblPay"));
    heading->setAccessibleName(QStringLiteral("Pay"));
    heading->setWordWrap(true);

    const int dayCount = m_start.isValid() && m_end.isValid() ? int(m_start.daysTo(m_end)) + 1 : 0;
    m_table = new QTableWidget(std::max(dayCount, 0), ColumnCount, this);
    m_table->setObjectName(QStringLiteral("tblPayDays"));
    m_table->setAccessibleName(QStringLiteral("Each day of the pay's period with the hours worked"));
    m_table->setAccessibleDescription(QStringLiteral("Type the hours worked on a day into its Hours worked cell; "
                                                     "0 for a day not worked; empty when not recorded."));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Day"), QStringLiteral("Usual hours"),
                                        QStringLiteral("Hours worked"), QStringLiteral("Worked")});
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false); // Tab leaves the table for the boxes and buttons
    m_table->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::DoubleClicked);
    m_table->verticalHeader()->hide();
    m_filling = true;
    for (int r = 0; r < dayCount; ++r) {
        const QDate day = m_start.addDays(r);
        const auto pattern = EffectivePattern(wage, m_employeeID, day);
        const float usual = pattern ? pattern->hoursOn(day) : 0.0f;
        auto* dayItem = new QTableWidgetItem(QLocale(QLocale::English).toString(day, QStringLiteral("ddd ")) +
                                             dateText(day));
        dayItem->setData(Qt::UserRole, day);
        auto* usualItem = new QTableWidgetItem(usual > 0 ? numberText(usual) : QStringLiteral("day off"));
        usualItem->setData(Qt::UserRole, double(usual));
        auto* hoursItem =
            new QTableWidgetItem(stored.perDay.contains(day) ? numberText(stored.perDay.value(day)) : QString());
        auto* workedItem = new QTableWidgetItem;
        for (QTableWidgetItem* i : {dayItem, usualItem, workedItem})
            i->setFlags(i->flags() & ~Qt::ItemIsEditable);
        usualItem->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        hoursItem->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_table->setItem(r, DayColumn, dayItem);
        m_table->setItem(r, UsualColumn, usualItem);
        m_table->setItem(r, HoursColumn, hoursItem);
        m_table->setItem(r, WorkedColumn, workedItem);
    }
    m_filling = false;
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setStretchLastSection(true);
    auto* tableLabel = new QLabel(QStringLiteral("&Days of the pay:"), this);
    tableLabel->setBuddy(m_table);

    m_days = new QLineEdit(this);
    m_days->setObjectName(QStringLiteral("txtDaysWorked"));
    m_days->setAccessibleName(QStringLiteral("Days worked in the pay"));
    m_hours = new QLineEdit(this);
    m_hours->setObjectName(QStringLiteral("txtHoursWorked"));
    m_hours->setAccessibleName(QStringLiteral("Hours worked in the pay"));
    if (stored.perDay.isEmpty()) {
        if (stored.days) m_days->setText(numberText(*stored.days));
        if (stored.hours) m_hours->setText(numberText(*stored.hours));
    }
    auto* whole = new QFormLayout;
    auto* daysLabel = new QLabel(QStringLiteral("Days &worked in the pay:"), this);
    daysLabel->setBuddy(m_days);
    auto* hoursLabel = new QLabel(QStringLiteral("&Hours worked in the pay:"), this);
    hoursLabel->setBuddy(m_hours);
    whole->addRow(daysLabel, m_days);
    whole->addRow(hoursLabel, m_hours);
    m_totals = new QLabel(this);
    m_totals->setObjectName(QStringLiteral("lblPayDayTotals"));
    m_totals->setAccessibleName(QStringLiteral("Days and hours of the pay"));
    m_totals->setWordWrap(true);

    auto* usual = new QPushButton(QStringLiteral("&Usual Hours"), this);
    usual->setObjectName(QStringLiteral("cmdUsualHours"));
    usual->setAccessibleName(QStringLiteral("Put each day's usual hours as worked"));
    auto* clear = new QPushButton(QStringLiteral("C&lear Days"), this);
    clear->setObjectName(QStringLiteral("cmdClearDays"));
    clear->setAccessibleName(QStringLiteral("Clear the hours of every day"));
    QDialogButtonBox* buttons = SaveCancelButtons(this, QStringLiteral("Save the days and hours"));
    connect(usual, &QPushButton::clicked, this, &PayDaysDialog::fillUsualHours);
    connect(clear, &QPushButton::clicked, this, &PayDaysDialog::clearDays);
    connect(m_table, &QTableWidget::itemChanged, this, [this] {
        if (!m_filling) showTotals();
    });

    auto* dayButtons = new QHBoxLayout;
    dayButtons->addWidget(usual);
    dayButtons->addWidget(clear);
    dayButtons->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(tableLabel);
    layout->addWidget(m_table, 1);
    layout->addLayout(dayButtons);
    layout->addLayout(whole);
    layout->addWidget(m_totals);
    layout->addWidget(buttons);
    if (m_table->rowCount() > 0) m_table->setCurrentCell(0, HoursColumn);
    showTotals();
    resize(620, 560);
}

void PayDaysDialog::fillUsualHours() {
    m_filling = true;
    for (int r = 0; r < m_table->rowCount(); ++r)
        m_table->item(r, HoursColumn)
            ->setText(numberText(float(m_table->item(r, UsualColumn)->data(Qt::UserRole).toDouble())));
    m_filling = false;
    showTotals();
}

void PayDaysDialog::clearDays() {
    m_filling = true;
    for (int r = 0; r < m_table->rowCount(); ++r)
        m_table->item(r, HoursColumn)->setText(QString());
    m_filling = false;
    showTotals();
}

void PayDaysDialog::showTotals() {
    m_filling = true;
    float days = 0, hours = 0;
    int entered = 0;
    for (int r = 0; r < m_table->rowCount(); ++r) {
        bool ok = true;
        const auto h = typedNumber(m_table->item(r, HoursColumn)->text(), 24, &ok);
        QString worked;
        if (!ok)
            worked = QStringLiteral("not a number of hours");
        else if (h) {
            ++entered;
            hours += *h;
            if (*h > 0) ++days;
            worked = *h > 0 ? QStringLiteral("worked") : QStringLiteral("not worked");
        }
        m_table->item(r, WorkedColumn)->setText(worked);
    }
    m_filling = false;
    // Hours of single days give the pay's days and hours; the boxes serve a pay without them.
    const bool single = entered > 0;
    m_days->setEnabled(!single);
    m_hours->setEnabled(!single);
    if (single)
        m_totals->setText(QStringLiteral("From the single days: %1 days worked, %2 hours.")
                              .arg(numberText(days), QString::number(double(hours), 'f', 2)));
    else
        m_totals->setText(QStringLiteral("No single days recorded: the days and hours of the whole pay are used "
                                         "where given."));
}

bool PayDaysDialog::save() {
    PayDays d;
    for (int r = 0; r < m_table->rowCount(); ++r) {
        QTableWidgetItem* cell = m_table->item(r, HoursColumn);
        bool ok = true;
        const auto h = typedNumber(cell->text(), 24, &ok);
        if (!ok) {
            refuse(QStringLiteral("%1: \"%2\" is not a number of hours from 0 to 24.")
                       .arg(m_table->item(r, DayColumn)->text(), cell->text().trimmed()));
            m_table->setCurrentCell(r, HoursColumn);
            m_table->setFocus();
            return false;
        }
        if (h) d.perDay.insert(m_table->item(r, DayColumn)->data(Qt::UserRole).toDate(), *h);
    }
    if (d.perDay.isEmpty()) {
        const struct {
            QLineEdit* box;
            float max;
            std::optional<float>* into;
        } boxes[] = {{m_days, 366, &d.days}, {m_hours, 24 * 366, &d.hours}};
        for (const auto& b : boxes) {
            bool ok = true;
            *b.into = typedNumber(b.box->text(), b.max, &ok);
            if (!ok) {
                refuse(QStringLiteral("%1: \"%2\" is not a number from 0 to %3.")
                           .arg(b.box->accessibleName(), b.box->text().trimmed())
                           .arg(double(b.max)));
                b.box->setFocus();
                b.box->selectAll();
                return false;
            }
        }
    }
    try {
        AllOrNothing(m_wage, [&] { SetPayDays(m_wage, m_wageID, d); });
    } catch (const VbError& e) {
        refuse(QStringLiteral("The days and hours were not saved: %1").arg(e.description()));
        return false;
    }
    return true;
}

void PayDaysDialog::accept() {
    if (save()) QDialog::accept();
}

bool ShowPayDays(Database& wage, qint32 wageID, QWidget* owner) {
    if (!PayOnPayroll(wage, wageID)) {
        refuse(NoPayText());
        return false;
    }
    PayDaysDialog d(wage, wageID, owner);
    return ExecAndReturn(d, owner);
}

} // namespace ql
