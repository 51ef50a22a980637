#include "EarningKindsDialog.h"
#include "AllOrNothing.h"
#include "HolidayDialogParts.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace ql {

using namespace holidays;

namespace {

enum Column { NameColumn, UsedAsColumn, KindColumn, GrossColumn, OwpColumn, ColumnCount };

QString yesNo(bool b) { return b ? QStringLiteral("Yes") : QStringLiteral("No"); }

QList<EarningKind> allKinds() {
    QList<EarningKind> out;
    for (const QString& code : KindCodes())
        out << KindFromCode(code);
    return out;
}

} // namespace

EarningKindsDialog::EarningKindsDialog(Database& wage, QWidget* parent) : QDialog(parent), m_wage(wage) {
    setObjectName(QStringLiteral("frmEarningKinds"));
    setWindowTitle(QStringLiteral("Kinds of Earnings"));
    setAccessibleName(QStringLiteral("Kinds of earnings"));
    m_names = NamedKinds(wage);
    for (const NamedKind& n : m_names)
        m_chosen << n.kind;

    auto* intro = new QLabel(QStringLiteral("Each payment, allowance and one-off name has a kind, which says whether "
                                            "it counts in gross earnings (average weekly earnings, average daily pay, "
                                            "the 8%) and in ordinary weekly pay."),
                             this);
    intro->setWordWrap(true);
    m_table = new QTableWidget(int(m_names.size()), ColumnCount, this);
    m_table->setObjectName(QStringLiteral("tblEarningKinds"));
    m_table->setAccessibleName(QStringLiteral("Names and their kinds of earnings"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Used as"),
                                        QStringLiteral("Kind of earnings"), QStringLiteral("Gross earnings"),
                                        QStringLiteral("Ordinary weekly pay")});
    MakeReadOnlyList(m_table);
    for (int r = 0; r < m_names.size(); ++r) {
        for (int c = 0; c < ColumnCount; ++c)
            m_table->setItem(r, c, new QTableWidgetItem);
        m_table->item(r, NameColumn)->setText(m_names.at(r).name);
        m_table->item(r, UsedAsColumn)->setText(NameTableCaption(m_names.at(r).table));
        showRow(r);
    }
    m_table->resizeColumnsToContents();
    auto* listLabel = new QLabel(QStringLiteral("&Names:"), this);
    listLabel->setBuddy(m_table);

    m_kind = new QComboBox(this);
    m_kind->setObjectName(QStringLiteral("cboEarningKind"));
    m_kind->setAccessibleName(QStringLiteral("Kind of earnings of the chosen name"));
    for (EarningKind k : allKinds())
        m_kind->addItem(KindCaption(k), KindCode(k));
    auto* kindLabel = new QLabel(QStringLiteral("&Kind of earnings:"), this);
    kindLabel->setBuddy(m_kind);
    m_counts = new QLabel(this);
    m_counts->setObjectName(QStringLiteral("lblKindCounts"));
    m_counts->setAccessibleName(QStringLiteral("What the kind counts in"));
    m_counts->setWordWrap(true);

    QDialogButtonBox* buttons = SaveCancelButtons(this, QStringLiteral("Save the kinds"));

    auto* kindRow = new QHBoxLayout;
    kindRow->addWidget(kindLabel);
    kindRow->addWidget(m_kind, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(listLabel);
    layout->addWidget(m_table, 1);
    layout->addLayout(kindRow);
    layout->addWidget(m_counts);
    layout->addWidget(buttons);

    connect(m_table, &QTableWidget::currentCellChanged, this, [this] { showChoice(); });
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this](int index) {
        const int row = m_table->currentRow();
        if (m_showing || row < 0 || index < 0) return;
        m_chosen[row] = KindFromCode(m_kind->itemData(index).toString());
        showRow(row);
        showChoice();
    });
    if (!m_names.isEmpty()) m_table->setCurrentCell(0, NameColumn);
    showChoice();
    resize(760, 520);
}

int EarningKindsDialog::rowOf(const QString& table, qint32 id) const {
    for (int r = 0; r < m_names.size(); ++r)
        if (m_names.at(r).table == table && m_names.at(r).id == id) return r;
    return -1;
}

int EarningKindsDialog::changedCount() const {
    int n = 0;
    for (int r = 0; r < m_names.size(); ++r)
        if (m_chosen.at(r) != m_names.at(r).kind) ++n;
    return n;
}

void EarningKindsDialog::showRow(int row) {
    const EarningKind k = m_chosen.at(row);
    const bool changed = k != m_names.at(row).kind;
    m_table->item(row, KindColumn)->setText(KindCaption(k) + (changed ? QStringLiteral(" (changed)") : QString()));
    m_table->item(row, GrossColumn)->setText(yesNo(InGrossEarnings(k)));
    m_table->item(row, OwpColumn)->setText(yesNo(InOrdinaryWeeklyPay(k)));
    for (int c = 0; c < ColumnCount; ++c) {
        QFont f = m_table->item(row, c)->font();
        f.setBold(changed);
        m_table->item(row, c)->setFont(f);
    }
}

void EarningKindsDialog::showChoice() {
    const int row = m_table->currentRow();
    m_kind->setEnabled(row >= 0);
    if (row < 0) {
        m_counts->setText(QStringLiteral("There are no payment or allowance names."));
        return;
    }
    const EarningKind k = m_chosen.at(row);
    m_showing = true;
    m_kind->setCurrentIndex(m_kind->findData(KindCode(k)));
    m_showing = false;
    m_counts->setText(QStringLiteral("%1 (%2): counts in gross earnings: %3; in ordinary weekly pay: %4; as pay for "
                                     "time worked in the minimum wage check: %5.")
                          .arg(m_names.at(row).name, NameTableCaption(m_names.at(row).table).toLower(),
                               yesNo(InGrossEarnings(k)).toLower(), yesNo(InOrdinaryWeeklyPay(k)).toLower(),
                               yesNo(CountsForMinimumWage(k)).toLower()));
}

bool EarningKindsDialog::save() {
    try {
        AllOrNothing(m_wage, [&] {
            for (int r = 0; r < m_names.size(); ++r)
                if (m_chosen.at(r) != m_names.at(r).kind)
                    SetNameKind(m_wage, m_names.at(r).table, m_names.at(r).id, KindCode(m_chosen.at(r)));
        });
    } catch (const VbError& e) {
        ShowMessage(QStringLiteral("The kinds were not saved: %1").arg(e.description()), msg::OKOnly, Firm(),
                    QStringLiteral("Kinds of Earnings"), QString(), msg::Warning, true);
        return false;
    }
    for (int r = 0; r < m_names.size(); ++r) {
        m_names[r].kind = m_chosen.at(r);
        m_names[r].code = KindCode(m_chosen.at(r));
        showRow(r);
    }
    return true;
}

void EarningKindsDialog::accept() {
    if (save()) QDialog::accept();
}

bool ShowEarningKinds(Database& wage, QWidget* owner) {
    EarningKindsDialog d(wage, owner);
    return ExecAndReturn(d, owner);
}

} // namespace ql
