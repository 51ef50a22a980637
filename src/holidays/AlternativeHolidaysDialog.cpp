#include "AlternativeHolidaysDialog.h"
#include "Entitlements.h"
#include "HolidayDialogParts.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include <QDateEdit>
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

const QString kHeading = QStringLiteral("Alternative Holidays");

QString dateText(const QDate& d) { return d.isValid() ? d.toString(QStringLiteral("d/MM/yyyy")) : QString(); }

void tell(const QString& text) { ShowMessage(text, msg::OKOnly, Firm(), kHeading, QString(), msg::Warning, true); }

} // namespace

AlternativeHolidaysDialog::AlternativeHolidaysDialog(Database& wage, qint32 employeeID, QWidget* parent)
    : QDialog(parent), m_wage(wage), m_employeeID(employeeID), m_name(EmployeeCaption(wage, employeeID)) {
    setObjectName(QStringLiteral("frmAlternativeHolidays"));
    setWindowTitle(kHeading);
    setAccessibleName(QStringLiteral("Alternative holidays"));
    auto* who = new QLabel(m_name, this);
    who->setObjectName(QStringLiteral("lblEmployee"));
    QFont bold = who->font();
    bold.setBold(true);
    who->setFont(bold);
    m_table = new QTableWidget(0, 4, this);
    m_table->setObjectName(QStringLiteral("tblAlternativeHolidays"));
    m_table->setAccessibleName(QStringLiteral("Alternative holidays earned, taken and paid out"));
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Earned on"), QStringLiteral("Taken on"), QStringLiteral("Paid out"), QStringLiteral("Comments")});
    MakeReadOnlyList(m_table);
    m_table->horizontalHeader()->setStretchLastSection(true);
    auto* tableLabel = new QLabel(QStringLiteral("&Holidays:"), this);
    tableLabel->setBuddy(m_table);
    m_open = new QLabel(this);
    m_open->setObjectName(QStringLiteral("lblOpen"));
    m_open->setAccessibleName(QStringLiteral("Alternative holidays open"));

    m_day = new QDateEdit(QDate::currentDate(), this);
    m_day->setObjectName(QStringLiteral("dtpDay"));
    m_day->setAccessibleName(QStringLiteral("Day"));
    m_day->setDisplayFormat(QStringLiteral("d/MM/yyyy"));
    m_day->setCalendarPopup(true);
    NameInnerEdit(m_day);
    m_comments = new QLineEdit(this);
    m_comments->setObjectName(QStringLiteral("txtComments"));
    m_comments->setAccessibleName(QStringLiteral("Comments on one earned"));
    m_comments->setPlaceholderText(QStringLiteral("Labour Day worked"));
    auto* form = new QFormLayout;
    auto* dayLabel = new QLabel(QStringLiteral("&Day:"), this);
    dayLabel->setBuddy(m_day);
    auto* commentsLabel = new QLabel(QStringLiteral("Co&mments:"), this);
    commentsLabel->setBuddy(m_comments);
    form->addRow(dayLabel, m_day);
    form->addRow(commentsLabel, m_comments);

    QPushButton* earn = NamedButton(this, QStringLiteral("&Earned"), QStringLiteral("cmdEarned"),
                               QStringLiteral("One earned on the day"));
    QPushButton* take = NamedButton(this, QStringLiteral("&Taken"), QStringLiteral("cmdTaken"),
                               QStringLiteral("The oldest open one taken on the day"));
    QPushButton* pay = NamedButton(this, QStringLiteral("&Paid Out"), QStringLiteral("cmdPaidOut"),
                              QStringLiteral("The oldest open one paid out on the day"));
    QPushButton* done = NamedButton(this, QStringLiteral("C&lose"), QStringLiteral("cmdClose"), QStringLiteral("Close"));
    connect(earn, &QPushButton::clicked, this, &AlternativeHolidaysDialog::earned);
    connect(take, &QPushButton::clicked, this, [this] { closeOne(false); });
    connect(pay, &QPushButton::clicked, this, [this] { closeOne(true); });
    connect(done, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {earn, take, pay})
        buttons->addWidget(b);
    buttons->addStretch(1);
    buttons->addWidget(done);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(who);
    layout->addWidget(tableLabel);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_open);
    layout->addLayout(form);
    layout->addLayout(buttons);
    showList();
    resize(600, 420);
}

void AlternativeHolidaysDialog::showList() {
    const QList<AlternativeHoliday> list = AlternativeHolidays(m_wage, m_employeeID);
    m_table->setRowCount(int(list.size()));
    for (int r = 0; r < list.size(); ++r) {
        const AlternativeHoliday& a = list.at(r);
        const QStringList cells{dateText(a.earnedOn), dateText(a.takenOn), dateText(a.paidOut), a.comments};
        for (int c = 0; c < cells.size(); ++c)
            m_table->setItem(r, c, new QTableWidgetItem(cells.at(c)));
    }
    m_table->resizeColumnsToContents();
    m_open->setText(QStringLiteral("Open (not yet taken or paid out): %1")
                        .arg(OpenAlternativeHolidays(m_wage, m_employeeID, QDate(9999, 12, 31))));
}

void AlternativeHolidaysDialog::earned() {
    try {
        EarnAlternativeHoliday(m_wage, m_employeeID, m_day->date(), m_comments->text().trimmed());
    } catch (const VbError& e) {
        tell(e.description());
        return;
    }
    m_comments->clear();
    showList();
}

bool AlternativeHolidaysDialog::closeOne(bool paidOut) {
    bool closed = false;
    try {
        closed = CloseAlternativeHoliday(m_wage, m_employeeID, m_day->date(), paidOut);
    } catch (const VbError& e) {
        tell(e.description());
        return false;
    }
    if (!closed) {
        tell(QStringLiteral("%1 has no alternative holiday open on %2.").arg(m_name, dateText(m_day->date())));
        return false;
    }
    showList();
    return true;
}

void ShowAlternativeHolidays(Database& wage, qint32 employeeID, QWidget* owner) {
    if (!EmployeeOnPayroll(wage, employeeID)) {
        tell(QStringLiteral("Choose an employee first: alternative holidays belong to an employee on the payroll."));
        return;
    }
    AlternativeHolidaysDialog d(wage, employeeID, owner);
    ExecAndReturn(d, owner);
}

} // namespace ql
