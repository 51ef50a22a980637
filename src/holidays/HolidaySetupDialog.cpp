#include "HolidaySetupDialog.h"
#include "AllOrNothing.h"
#include "HolidayDialogParts.h"
#include "PublicHolidays.h"
#include "WorkPatternHistory.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace ql {

using namespace holidays;

namespace {

const char* const kDayShort[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
const char* const kDayLong[] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
const QString kHeading = QStringLiteral("Holiday Set-up");

QString hoursText(float h) { return h > 0 ? QString::number(double(h), 'f', 2) : QStringLiteral("-"); }

QString dateText(const QDate& d) { return d.toString(QStringLiteral("d/MM/yyyy")); }

void warn(const QString& text) {
    ShowMessage(text, msg::OKOnly, Firm(), kHeading, QString(), msg::Warning, true);
}

} // namespace

HolidaySetupDialog::HolidaySetupDialog(Database& wage, qint32 employeeID, QWidget* parent)
    : QDialog(parent), m_wage(wage), m_employeeID(employeeID) {
    setObjectName(QStringLiteral("frmHolidaySetup"));
    setWindowTitle(kHeading);
    setAccessibleName(QStringLiteral("Holiday set-up"));
    for (const WorkPattern& p : WorkPatternsOf(wage, employeeID)) {
        m_patterns.insert(p.from, p);
        m_stored << p.from;
    }
    const HolidayTerms stored = TermsOf(wage, employeeID);

    auto* who = new QLabel(EmployeeCaption(wage, employeeID), this);
    who->setObjectName(QStringLiteral("lblEmployee"));
    who->setAccessibleName(QStringLiteral("Employee"));
    QFont bold = who->font();
    bold.setBold(true);
    who->setFont(bold);

    // The usual week.
    auto* week = new QGroupBox(QStringLiteral("Usual work pattern: the hours of each otherwise working day"), this);
    m_table = new QTableWidget(0, 10, week);
    m_table->setObjectName(QStringLiteral("tblWorkPatterns"));
    m_table->setAccessibleName(QStringLiteral("Work patterns kept, each from its date"));
    QStringList heads{QStringLiteral("From")};
    for (const char* d : kDayShort)
        heads << QString::fromLatin1(d);
    heads << QStringLiteral("Days") << QStringLiteral("Hours a week");
    m_table->setHorizontalHeaderLabels(heads);
    MakeReadOnlyList(m_table);
    m_table->setMinimumHeight(110);
    auto* tableLabel = new QLabel(QStringLiteral("Pa&tterns kept:"), week);
    tableLabel->setBuddy(m_table);
    m_patternNote = new QLabel(week);
    m_patternNote->setObjectName(QStringLiteral("lblPatternNote"));
    m_patternNote->setAccessibleName(QStringLiteral("Which pattern holds"));
    m_patternNote->setWordWrap(true);

    m_from = new QDateEdit(QDate::currentDate(), week);
    m_from->setObjectName(QStringLiteral("dtpPatternFrom"));
    m_from->setAccessibleName(QStringLiteral("Pattern holds from"));
    m_from->setDisplayFormat(QStringLiteral("d/MM/yyyy"));
    m_from->setCalendarPopup(true);
    NameInnerEdit(m_from);
    auto* fromLabel = new QLabel(QStringLiteral("&From:"), week);
    fromLabel->setBuddy(m_from);
    auto* days = new QGridLayout;
    days->addWidget(fromLabel, 1, 0);
    days->addWidget(m_from, 1, 1);
    for (int i = 0; i < 7; ++i) {
        auto* box = new QDoubleSpinBox(week);
        box->setObjectName(QStringLiteral("txtHours%1").arg(QString::fromLatin1(kDayShort[i])));
        box->setAccessibleName(QStringLiteral("%1 hours").arg(QString::fromLatin1(kDayLong[i])));
        box->setToolTip(QStringLiteral("Hours on %1; 0: not a working day").arg(QString::fromLatin1(kDayLong[i])));
        box->setRange(0, 24);
        box->setDecimals(2);
        box->setSingleStep(0.5);
        NameInnerEdit(box);
        auto* head = new QLabel(QString::fromLatin1(kDayShort[i]), week);
        head->setBuddy(box);
        head->setAlignment(Qt::AlignCenter);
        days->addWidget(head, 0, i + 2);
        days->addWidget(box, 1, i + 2);
        m_hours.at(std::size_t(i)) = box;
        connect(box, &QDoubleSpinBox::valueChanged, this, [this] { m_boxesTouched = true; });
    }
    connect(m_from, &QDateEdit::dateChanged, this, [this] { m_boxesTouched = true; });
    m_keep = new QPushButton(QStringLiteral("&Keep Pattern"), week);
    m_keep->setObjectName(QStringLiteral("cmdKeepPattern"));
    m_keep->setAccessibleName(QStringLiteral("Keep this pattern from its date"));
    m_remove = new QPushButton(QStringLiteral("&Delete Pattern"), week);
    m_remove->setObjectName(QStringLiteral("cmdDeletePattern"));
    m_remove->setAccessibleName(QStringLiteral("Delete the chosen pattern"));
    auto* patternButtons = new QHBoxLayout;
    patternButtons->addStretch(1);
    patternButtons->addWidget(m_keep);
    patternButtons->addWidget(m_remove);
    auto* weekLayout = new QVBoxLayout(week);
    weekLayout->addWidget(tableLabel);
    weekLayout->addWidget(m_table, 1);
    weekLayout->addWidget(m_patternNote);
    weekLayout->addLayout(days);
    weekLayout->addLayout(patternButtons);

    // The terms.
    auto* termsBox = new QGroupBox(QStringLiteral("Holiday terms"), this);
    m_region = new QComboBox(termsBox);
    m_region->setObjectName(QStringLiteral("cboRegion"));
    m_region->setAccessibleName(QStringLiteral("Region of the anniversary day"));
    m_region->addItem(QStringLiteral("None: national holidays only"), QString());
    for (const QString& r : HolidayRegions())
        m_region->addItem(r, r);
    m_region->setCurrentIndex(std::max(0, m_region->findData(stored.region)));
    m_payAsYouGo = new QCheckBox(QStringLiteral("&Paid as you go: 8% with each pay (fixed term under 12 months or "
                                                "irregular work, as the agreement says)"),
                                 termsBox);
    m_payAsYouGo->setObjectName(QStringLiteral("chkPayAsYouGo"));
    m_payAsYouGo->setAccessibleName(QStringLiteral("Holiday pay paid as you go"));
    m_payAsYouGo->setChecked(stored.payAsYouGo);
    m_continuous = new QCheckBox(QStringLiteral("C&ontinuous employment (casual or intermittent work: clear it)"),
                                 termsBox);
    m_continuous->setObjectName(QStringLiteral("chkContinuous"));
    m_continuous->setAccessibleName(QStringLiteral("Continuous employment"));
    m_continuous->setChecked(stored.continuous);
    m_penalRate = new QDoubleSpinBox(termsBox);
    m_penalRate->setObjectName(QStringLiteral("txtPenalRate"));
    m_penalRate->setAccessibleName(QStringLiteral("Penal rate for a public holiday worked, times the hourly rate"));
    m_penalRate->setRange(0, 5);
    m_penalRate->setDecimals(2);
    m_penalRate->setSingleStep(0.25);
    m_penalRate->setSpecialValueText(QStringLiteral("none"));
    m_penalRate->setSuffix(QStringLiteral(" x hourly rate"));
    m_penalRate->setValue(double(stored.penalRate));
    NameInnerEdit(m_penalRate);
    m_minimumWage = new QComboBox(termsBox);
    m_minimumWage->setObjectName(QStringLiteral("cboMinimumWage"));
    m_minimumWage->setAccessibleName(QStringLiteral("Minimum wage rate"));
    m_minimumWage->addItem(QStringLiteral("Adult"), MinimumWageRateCode(MinimumWageRate::Adult));
    m_minimumWage->addItem(QStringLiteral("Starting-out"), MinimumWageRateCode(MinimumWageRate::StartingOut));
    m_minimumWage->addItem(QStringLiteral("Training"), MinimumWageRateCode(MinimumWageRate::Training));
    m_minimumWage->setCurrentIndex(std::max(0, m_minimumWage->findData(MinimumWageRateCode(stored.minimumWage))));
    m_dailyPay = new QComboBox(termsBox);
    m_dailyPay->setObjectName(QStringLiteral("cboDailyPay"));
    m_dailyPay->setAccessibleName(QStringLiteral("Daily pay for public holidays and sick leave"));
    m_dailyPay->addItem(QStringLiteral("Relevant daily pay, else average daily pay"),
                        DailyPayCode(DailyPayChoice::Automatic));
    m_dailyPay->addItem(QStringLiteral("Relevant daily pay"), DailyPayCode(DailyPayChoice::Relevant));
    m_dailyPay->addItem(QStringLiteral("Average daily pay (the agreement says so)"),
                        DailyPayCode(DailyPayChoice::Average));
    m_dailyPay->setCurrentIndex(std::max(0, m_dailyPay->findData(DailyPayCode(stored.dailyPay))));
    auto* form = new QFormLayout(termsBox);
    auto addRow = [&](const QString& caption, QWidget* w) {
        auto* l = new QLabel(caption, termsBox);
        l->setBuddy(w);
        form->addRow(l, w);
    };
    addRow(QStringLiteral("Anniversary day &region:"), m_region);
    form->addRow(m_payAsYouGo);
    form->addRow(m_continuous);
    addRow(QStringLiteral("Pe&nal rate, public holiday worked:"), m_penalRate);
    addRow(QStringLiteral("&Minimum wage rate:"), m_minimumWage);
    addRow(QStringLiteral("Dail&y pay:"), m_dailyPay);

    QDialogButtonBox* buttons = SaveCancelButtons(this, QStringLiteral("Save the set-up"));
    connect(m_keep, &QPushButton::clicked, this, &HolidaySetupDialog::keepPattern);
    connect(m_remove, &QPushButton::clicked, this, &HolidaySetupDialog::removePattern);
    connect(m_table, &QTableWidget::currentCellChanged, this, [this](int row) { showRowInBoxes(row); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(who);
    layout->addWidget(week, 1);
    layout->addWidget(termsBox);
    layout->addWidget(buttons);

    showPatterns();
    // The boxes start on the pattern that holds today, else the latest, else the assumed week.
    const auto today = PatternOn(wage, employeeID, QDate::currentDate());
    if (today) {
        for (int r = 0; r < m_table->rowCount(); ++r)
            if (m_table->item(r, 0)->data(Qt::UserRole).toDate() == today->from) m_table->setCurrentCell(r, 0);
    } else if (m_table->rowCount() > 0) {
        m_table->setCurrentCell(m_table->rowCount() - 1, 0);
    } else {
        bool assumed = false;
        if (const auto p = EffectivePattern(wage, employeeID, QDate::currentDate(), &assumed))
            for (int i = 0; i < 7; ++i)
                m_hours.at(std::size_t(i))->setValue(double(p->hours.at(std::size_t(i))));
    }
    m_boxesTouched = false;
    resize(780, 560);
}

QList<WorkPattern> HolidaySetupDialog::patterns() const { return m_patterns.values(); }

WorkPattern HolidaySetupDialog::boxesPattern() const {
    WorkPattern p;
    p.from = m_from->date();
    for (int i = 0; i < 7; ++i)
        p.hours.at(std::size_t(i)) = float(m_hours.at(std::size_t(i))->value());
    return p;
}

bool HolidaySetupDialog::boxesDiffer() const {
    if (!m_boxesTouched) return false;
    const WorkPattern p = boxesPattern();
    const auto kept = m_patterns.constFind(p.from);
    return kept == m_patterns.constEnd() || kept->hours != p.hours;
}

void HolidaySetupDialog::showPatterns() {
    const auto holds = [this](const QDate& day) {
        QDate best;
        for (const QDate& d : m_patterns.keys())
            if (d <= day) best = d;
        return best;
    };
    const QDate today = holds(QDate::currentDate());
    m_table->setRowCount(int(m_patterns.size()));
    int r = 0;
    for (const WorkPattern& p : m_patterns) {
        QStringList cells{dateText(p.from)};
        for (float h : p.hours)
            cells << hoursText(h);
        cells << QString::number(p.daysPerWeek()) << QString::number(double(p.hoursPerWeek()), 'f', 2);
        for (int c = 0; c < cells.size(); ++c) {
            auto* item = new QTableWidgetItem(cells.at(c));
            item->setTextAlignment((c == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
            QFont f = item->font();
            f.setBold(p.from == today);
            item->setFont(f);
            if (c == 0) item->setData(Qt::UserRole, p.from);
            m_table->setItem(r, c, item);
        }
        ++r;
    }
    m_table->resizeColumnsToContents();
    m_remove->setEnabled(!m_patterns.isEmpty());
    if (today.isValid()) {
        m_patternNote->setText(QStringLiteral("The pattern from %1 holds today (shown in bold). A new pattern from a "
                                              "later date holds from that date; the earlier ones stay for the past.")
                                   .arg(dateText(today)));
        return;
    }
    bool assumed = false;
    const auto p = EffectivePattern(m_wage, m_employeeID, QDate::currentDate(), &assumed);
    if (!m_patterns.isEmpty())
        m_patternNote->setText(QStringLiteral("No pattern holds today: the first one kept starts on %1.")
                                   .arg(dateText(m_patterns.firstKey())));
    else if (p && assumed)
        m_patternNote->setText(QStringLiteral("No pattern is kept: Monday to Friday with %1 hours a day (the "
                                              "occupation's standard hours) is assumed. Keep a pattern to say which "
                                              "days are otherwise working days.")
                                   .arg(double(p->hours.at(0)), 0, 'f', 2));
    else
        m_patternNote->setText(QStringLiteral("No pattern is kept, and the occupation has no standard hours to assume "
                                              "one from. Keep a pattern to say which days are otherwise working days."));
}

void HolidaySetupDialog::showRowInBoxes(int row) {
    if (row < 0 || row >= m_table->rowCount()) return;
    const QDate from = m_table->item(row, 0)->data(Qt::UserRole).toDate();
    const WorkPattern p = m_patterns.value(from);
    m_from->setDate(p.from);
    for (int i = 0; i < 7; ++i)
        m_hours.at(std::size_t(i))->setValue(double(p.hours.at(std::size_t(i))));
    m_boxesTouched = false;
}

bool HolidaySetupDialog::keepPattern() {
    const WorkPattern p = boxesPattern();
    if (!p.from.isValid()) {
        warn(QStringLiteral("A work pattern needs the date from which it holds."));
        m_from->setFocus();
        return false;
    }
    if (p.daysPerWeek() == 0) {
        warn(QStringLiteral("A work pattern needs at least one working day: give the hours of each day the employee "
                            "otherwise works (0 for a day off)."));
        m_hours.front()->setFocus();
        return false;
    }
    m_patterns.insert(p.from, p);
    showPatterns();
    for (int r = 0; r < m_table->rowCount(); ++r)
        if (m_table->item(r, 0)->data(Qt::UserRole).toDate() == p.from) m_table->setCurrentCell(r, 0);
    m_boxesTouched = false;
    return true;
}

void HolidaySetupDialog::removePattern() {
    const int row = m_table->currentRow();
    if (row < 0) return;
    const QDate from = m_table->item(row, 0)->data(Qt::UserRole).toDate();
    if (ShowMessage(QStringLiteral("Delete the work pattern from %1?").arg(dateText(from)), msg::YesNo, Firm(),
                    QStringLiteral("Please Confirm"), kHeading, msg::Question, true) != msg::Yes)
        return;
    m_patterns.remove(from);
    showPatterns();
    if (m_table->rowCount() > 0) m_table->setCurrentCell(std::min(row, m_table->rowCount() - 1), 0);
}

HolidayTerms HolidaySetupDialog::terms() const {
    HolidayTerms t;
    t.region = m_region->currentData().toString();
    t.payAsYouGo = m_payAsYouGo->isChecked();
    t.continuous = m_continuous->isChecked();
    t.penalRate = float(m_penalRate->value());
    for (MinimumWageRate r : {MinimumWageRate::Adult, MinimumWageRate::StartingOut, MinimumWageRate::Training})
        if (m_minimumWage->currentData().toString() == MinimumWageRateCode(r)) t.minimumWage = r;
    for (DailyPayChoice c : {DailyPayChoice::Automatic, DailyPayChoice::Relevant, DailyPayChoice::Average})
        if (m_dailyPay->currentData().toString() == DailyPayCode(c)) t.dailyPay = c;
    return t;
}

bool HolidaySetupDialog::save() {
    // Hours typed into the boxes but not kept would be lost without a word.
    if (boxesDiffer()) {
        const qint16 answer = ShowMessage(
            QStringLiteral("The work pattern from %1 in the boxes has not been kept. Keep it before saving?")
                .arg(dateText(m_from->date())),
            msg::YesNoCancel, Firm(), QStringLiteral("Please Confirm"), kHeading, msg::Question, true);
        if (answer == msg::Cancel) return false;
        if (answer == msg::Yes && !keepPattern()) return false;
    }
    const HolidayTerms t = terms();
    try {
        AllOrNothing(m_wage, [&] {
            for (const QDate& d : m_stored)
                if (!m_patterns.contains(d)) RemoveWorkPattern(m_wage, m_employeeID, d);
            for (const WorkPattern& p : m_patterns)
                SetWorkPattern(m_wage, m_employeeID, p);
            SetTerms(m_wage, m_employeeID, t);
        });
    } catch (const VbError& e) {
        warn(QStringLiteral("The holiday set-up was not saved: %1").arg(e.description()));
        return false;
    }
    m_stored = m_patterns.keys();
    return true;
}

void HolidaySetupDialog::accept() {
    if (save()) QDialog::accept();
}

bool ShowHolidaySetup(Database& wage, qint32 employeeID, QWidget* owner) {
    if (!EmployeeOnPayroll(wage, employeeID)) {
        warn(QStringLiteral("Choose an employee first: the holiday set-up belongs to an employee on the payroll."));
        return false;
    }
    HolidaySetupDialog d(wage, employeeID, owner);
    return ExecAndReturn(d, owner);
}

} // namespace ql
