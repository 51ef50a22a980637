#include "PublicHolidaysDialog.h"
#include "HolidayDialogParts.h"
#include "PublicHolidays.h"
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace ql {

using namespace holidays;

namespace {

QString dayText(const QDate& d) {
    return QLocale(QLocale::English).toString(d, QStringLiteral("ddd ")) + d.toString(QStringLiteral("d/MM/yyyy"));
}

} // namespace

PublicHolidaysDialog::PublicHolidaysDialog(const QString& region, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmPublicHolidays"));
    setWindowTitle(QStringLiteral("Public Holidays"));
    setAccessibleName(QStringLiteral("Public holidays"));
    m_year = new QSpinBox(this);
    m_year->setObjectName(QStringLiteral("txtYear"));
    m_year->setAccessibleName(QStringLiteral("Year"));
    m_year->setRange(1990, 2100);
    m_year->setValue(QDate::currentDate().year());
    NameInnerEdit(m_year);
    m_region = new QComboBox(this);
    m_region->setObjectName(QStringLiteral("cboRegion"));
    m_region->setAccessibleName(QStringLiteral("Region of the anniversary day"));
    m_region->addItem(QStringLiteral("None: national holidays only"), QString());
    for (const QString& r : HolidayRegions())
        m_region->addItem(r, r);
    m_region->setCurrentIndex(std::max(0, m_region->findData(CanonicalRegion(region))));
    auto* yearLabel = new QLabel(QStringLiteral("&Year:"), this);
    yearLabel->setBuddy(m_year);
    auto* regionLabel = new QLabel(QStringLiteral("&Region:"), this);
    regionLabel->setBuddy(m_region);
    m_table = new QTableWidget(0, 3, this);
    m_table->setObjectName(QStringLiteral("tblPublicHolidays"));
    m_table->setAccessibleName(QStringLiteral("Public holidays of the year"));
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Holiday"), QStringLiteral("Date"), QStringLiteral("Observed on a weekday")});
    MakeReadOnlyList(m_table);
    m_table->horizontalHeader()->setStretchLastSection(true);
    auto* tableLabel = new QLabel(QStringLiteral("&Holidays:"), this);
    tableLabel->setBuddy(m_table);
    QPushButton* close = NamedButton(this, QStringLiteral("C&lose"), QStringLiteral("cmdClose"), QStringLiteral("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_year, &QSpinBox::valueChanged, this, &PublicHolidaysDialog::showYear);
    connect(m_region, &QComboBox::currentIndexChanged, this, &PublicHolidaysDialog::showYear);
    auto* top = new QHBoxLayout;
    top->addWidget(yearLabel);
    top->addWidget(m_year);
    top->addWidget(regionLabel);
    top->addWidget(m_region, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(tableLabel);
    layout->addWidget(m_table, 1);
    layout->addWidget(close, 0, Qt::AlignRight);
    showYear();
    resize(620, 480);
}

void PublicHolidaysDialog::showYear() {
    const QList<PublicHoliday> list = PublicHolidaysOf(m_year->value(), m_region->currentData().toString());
    m_table->setRowCount(int(list.size()));
    for (int r = 0; r < list.size(); ++r) {
        const PublicHoliday& h = list.at(r);
        m_table->setItem(r, 0, new QTableWidgetItem(h.name));
        m_table->setItem(r, 1, new QTableWidgetItem(dayText(h.date)));
        m_table->setItem(r, 2, new QTableWidgetItem(h.moves() ? dayText(h.observed) : QString()));
    }
    m_table->resizeColumnsToContents();
}

void ShowPublicHolidays(const QString& region, QWidget* owner) {
    PublicHolidaysDialog d(region, owner);
    ExecAndReturn(d, owner);
}

} // namespace ql
