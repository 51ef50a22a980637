#include "LeaveLiabilityDialog.h"
#include "LeaveLiabilityReport.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "reports/ReportPreviewDialog.h"
#include "runtime/VbError.h"
#include "ui/Skin.h"
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QFileDialog>
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

LeaveLiabilityDialog::PathChooser& chooserSlot() {
    static LeaveLiabilityDialog::PathChooser chooser = [](QWidget* parent, const QString& suggested) {
        return QFileDialog::getSaveFileName(parent, QStringLiteral("Save the leave liability as CSV"), suggested,
                                            QStringLiteral("CSV files (*.csv)"));
    };
    return chooser;
}

QPushButton* button(QWidget* parent, const QString& caption, const QString& name, const QString& accessible) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAccessibleName(accessible);
    return b;
}

} // namespace

LeaveLiabilityDialog::PathChooser LeaveLiabilityDialog::setPathChooser(PathChooser chooser) {
    PathChooser previous = chooserSlot();
    chooserSlot() = std::move(chooser);
    return previous;
}

LeaveLiabilityDialog::LeaveLiabilityDialog(Database& wage, QWidget* parent) : QDialog(parent), m_wage(wage) {
    setObjectName(QStringLiteral("frmLeaveLiability"));
    setWindowTitle(QStringLiteral("Leave Liability"));
    setAccessibleName(QStringLiteral("Leave liability"));
    m_day = new QDateEdit(QDate::currentDate(), this);
    m_day->setObjectName(QStringLiteral("dtpLiabilityDay"));
    m_day->setAccessibleName(QStringLiteral("Day of the liability"));
    m_day->setDisplayFormat(QStringLiteral("d/MM/yyyy"));
    m_day->setCalendarPopup(true);
    for (QLineEdit* inner : m_day->findChildren<QLineEdit*>())
        inner->setAccessibleName(m_day->accessibleName());
    auto* dayLabel = new QLabel(QStringLiteral("Liability &on:"), this);
    dayLabel->setBuddy(m_day);
    m_table = new QTableWidget(this);
    m_table->setObjectName(QStringLiteral("tblLiability"));
    m_table->setAccessibleName(QStringLiteral("Leave liability of each employee"));
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false); // Tab leaves the table for the buttons
    m_table->verticalHeader()->hide();
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblLiabilityStatus"));
    m_status->setWordWrap(true);
    QPushButton* print = button(this, QStringLiteral("&Print..."), QStringLiteral("cmdPrint"),
                                QStringLiteral("Print the leave liability"));
    QPushButton* csv = button(this, QStringLiteral("Save &CSV..."), QStringLiteral("cmdSaveCsv"),
                              QStringLiteral("Save the leave liability as CSV"));
    QPushButton* close = button(this, QStringLiteral("C&lose"), QStringLiteral("cmdClose"), QStringLiteral("Close"));

    auto* top = new QHBoxLayout;
    top->addWidget(dayLabel);
    top->addWidget(m_day);
    top->addStretch(1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* b : {print, csv, close})
        buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_status);
    layout->addLayout(buttons);

    connect(m_day, &QDateEdit::dateChanged, this, &LeaveLiabilityDialog::showDay);
    connect(print, &QPushButton::clicked, this, &LeaveLiabilityDialog::print);
    connect(csv, &QPushButton::clicked, this, &LeaveLiabilityDialog::saveCsv);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    resize(SizeOnScreen(QSize(980, 420)));
    showDay(m_day->date());
}

void LeaveLiabilityDialog::showDay(const QDate& day) {
    if (m_day->date() != day) {
        m_day->setDate(day); // comes back here through the date's change
        return;
    }
    try {
        Liability l = LeaveLiabilityOn(m_wage, day);
        Database farm;
        farm.open(DataFileName());
        NameLiabilityRows(m_wage, farm, l);
        m_liability = l;
    } catch (const VbError& e) {
        m_liability = Liability{};
        m_liability.day = day;
        m_status->setText(QStringLiteral("The liability cannot be worked out: ") + e.description());
        m_table->clear();
        m_table->setRowCount(0);
        return;
    }
    const QStringList captions = LiabilityCaptions();
    m_table->clear();
    m_table->setColumnCount(int(captions.size()));
    m_table->setHorizontalHeaderLabels(captions);
    m_table->setRowCount(int(m_liability.rows.size()) + 1);
    auto put = [&](int row, const QStringList& cells, bool bold) {
        for (int c = 0; c < cells.size(); ++c) {
            auto* item = new QTableWidgetItem(cells.at(c));
            item->setTextAlignment(int(c == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
            if (bold) {
                QFont f = item->font();
                f.setBold(true);
                item->setFont(f);
            }
            m_table->setItem(row, c, item);
        }
    };
    for (int r = 0; r < m_liability.rows.size(); ++r)
        put(r, LiabilityCells(m_liability.rows.at(r)), false);
    put(int(m_liability.rows.size()), LiabilityTotalCells(m_liability), true);
    m_table->resizeColumnsToContents();
    m_status->setText(QStringLiteral("Annual holidays at the greater of OWP and AWE on %1; 8% of gross earnings since "
                                     "the last anniversary; sick days are shown, not valued.")
                          .arg(day.toString(QStringLiteral("d/MM/yyyy"))));
}

void LeaveLiabilityDialog::print() {
    const PreparedReport report = LeaveLiabilityReport(m_liability, Firm());
    PreviewReports(QList<PreparedReport>{report}, report.name, this);
}

bool LeaveLiabilityDialog::saveCsv() {
    const QString suggested =
        QDir(QDir::homePath()).filePath(QStringLiteral("leave-liability-%1.csv").arg(m_liability.day.toString(Qt::ISODate)));
    const QString path = chooserSlot()(this, suggested);
    if (path.isEmpty()) return false;
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(LiabilityCsv(m_liability).toUtf8()) < 0) {
        ShowMessage(QStringLiteral("The file %1 cannot be written.").arg(QDir::toNativeSeparators(path)), msg::OKOnly,
                    Firm(), QStringLiteral("Leave Liability"), QString(), msg::Warning, true);
        return false;
    }
    m_status->setText(QStringLiteral("Saved as %1.").arg(QDir::toNativeSeparators(path)));
    return true;
}

void ShowLeaveLiability(Database& wage, QWidget* owner) {
    LeaveLiabilityDialog d(wage, owner);
    d.exec();
}

} // namespace ql
