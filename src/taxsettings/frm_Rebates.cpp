#include "frm_Rebates.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/OpenForms.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace ql {

namespace {

// Heading is chosen from the accounts: the list shows names, the cell keeps the account's number.
class AccountDelegate : public QStyledItemDelegate {
public:
    AccountDelegate(RebatesForm& form, QObject* parent) : QStyledItemDelegate(parent), m_form(form) {}
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        if (index.column() != HeadingColumn) return QStyledItemDelegate::createEditor(parent, option, index);
        auto* box = new QComboBox(parent);
        box->setAccessibleName(QStringLiteral("Heading"));
        for (const GridValueItem& item : m_form.tgrd_data.column(HeadingColumn).valueItems)
            box->addItem(item.value.toString() + QStringLiteral("  ") + item.name, item.value);
        return box;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* box = qobject_cast<QComboBox*>(editor))
            box->setCurrentIndex(box->findData(index.data(Qt::EditRole).toString().toLongLong()));
        else
            QStyledItemDelegate::setEditorData(editor, index);
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        if (auto* box = qobject_cast<QComboBox*>(editor)) {
            if (box->currentIndex() >= 0) model->setData(index, box->currentData().toString(), Qt::EditRole);
        } else {
            QStyledItemDelegate::setModelData(editor, model, index);
        }
    }

private:
    RebatesForm& m_form;
};

QString cell(const GridArray& grid, int row, int column) {
    const QVariant v = grid.value(row, column);
    return IsNull(v) ? QString() : CStr(v);
}

} // namespace

RebatesGridModel::RebatesGridModel(RebatesForm& form, QObject* parent)
    : QAbstractTableModel(parent), m_form(form) {}

int RebatesGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_form.tgrd_data.rowCount();
}

int RebatesGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_form.tgrd_data.columnCount();
}

QVariant RebatesGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const GridArray& grid = m_form.tgrd_data;
    const QString text = cell(grid, index.row(), index.column());
    if (index.column() == QuantityColumn) {
        if (role == Qt::CheckStateRole)
            return text.trimmed().compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 ? Qt::Checked
                                                                                           : Qt::Unchecked;
        if (role == Qt::AccessibleTextRole || role == Qt::ToolTipRole) return text;
        return {};
    }
    if (role == Qt::DisplayRole) {
        if (index.column() == HeadingColumn && !text.isEmpty())
            return text + QStringLiteral("  ") +
                   grid.column(HeadingColumn).displayText(grid.value(index.row(), index.column()));
        return text;
    }
    if (role == Qt::EditRole) return text;
    if (role == Qt::TextAlignmentRole && index.column() == RateColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

bool RebatesGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid()) return false;
    bool stored = false;
    try {
        if (index.column() == QuantityColumn && role == Qt::CheckStateRole) {
            m_form.quantityClick(index.row());
            stored = true;
        } else if (role == Qt::EditRole) {
            stored = m_form.storeCell(index.row(), index.column(), value.toString());
            if (!stored) emit cellRefused(index);
        }
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("tgrd_data_BeforeColUpdate"));
    }
    if (stored) emit dataChanged(index, index);
    return stored;
}

Qt::ItemFlags RebatesGridModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.column() == QuantityColumn) return f | Qt::ItemIsUserCheckable;
    if (index.column() == RebateColumn || index.column() == HeadingColumn || index.column() == RateColumn)
        f |= Qt::ItemIsEditable;
    return f;
}

QVariant RebatesGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return m_form.tgrd_data.column(section).caption;
}

void RebatesGridModel::reload() {
    beginResetModel();
    endResetModel();
}

frm_Rebates::frm_Rebates(const QString& query, const QString& databasePath, const QString& keyColumn,
                         QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frm_Rebates"));
    setWindowTitle(QStringLiteral("Rebates"));
    setAccessibleName(QStringLiteral("Rebates"));
    setModal(true);
    m_label = new QLabel(m_form.labelText, this);
    m_label->setObjectName(QStringLiteral("lblTitle"));
    QFont bold = m_label->font();
    bold.setBold(true);
    m_label->setFont(bold);
    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("tgrd_data"));
    m_grid->setAccessibleName(QStringLiteral("Rebates"));
    m_label->setBuddy(m_grid);
    m_add = new QPushButton(QStringLiteral("&Add"), this);
    m_add->setObjectName(QStringLiteral("cmd_Add"));
    m_delete = new QPushButton(QStringLiteral("&Delete"), this);
    m_delete->setObjectName(QStringLiteral("cmd_Delete"));
    m_okay = new QPushButton(QStringLiteral("&OK"), this);
    m_okay->setObjectName(QStringLiteral("cmd_okay"));
    for (QPushButton* b : {m_add, m_delete, m_okay}) {
        b->setAccessibleName(b->text().remove(QLatin1Char('&')));
        b->setAutoDefault(false);
    }

    try {
        m_form.Form_Load(query, databasePath, keyColumn);
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("Form_Load"));
    }
    m_model = new RebatesGridModel(m_form, this);
    m_grid->setModel(m_model);
    m_grid->setItemDelegate(new AccountDelegate(m_form, this));
    m_grid->setAlternatingRowColors(true);
    m_grid->verticalHeader()->hide();
    m_grid->setSelectionBehavior(QAbstractItemView::SelectItems);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    for (int c = 0; c < m_model->columnCount(); ++c)
        m_grid->setColumnHidden(c, !m_form.tgrd_data.column(c).visible);
    m_grid->setColumnWidth(RebateColumn, 200);
    if (m_model->columnCount() > HeadingColumn)
        m_grid->horizontalHeader()->setSectionResizeMode(HeadingColumn, QHeaderView::Stretch);
    m_grid->installEventFilter(this);
    connect(m_model, &RebatesGridModel::cellRefused, this, [this](const QModelIndex& index) {
        QTimer::singleShot(0, m_grid, [this, index] {
            m_grid->setCurrentIndex(index);
            m_grid->edit(index);
        });
    });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_add);
    buttons->addWidget(m_delete);
    buttons->addStretch(1);
    buttons->addWidget(m_okay);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_label);
    layout->addWidget(m_grid, 1);
    layout->addLayout(buttons);
    resize(640, 360);
    setTabOrder(m_grid, m_add);
    setTabOrder(m_add, m_delete);
    setTabOrder(m_delete, m_okay);

    connect(m_add, &QPushButton::clicked, this, [this] { addRow(); });
    connect(m_delete, &QPushButton::clicked, this, [this] {
        try {
            if (m_form.cmd_Delete(m_grid->currentIndex().isValid() ? m_grid->currentIndex().row() : -1))
                m_model->reload();
        } catch (const VbError& e) {
            ReportError(e, QStringLiteral("cmd_Delete_Click"));
        }
        m_grid->setFocus();
    });
    connect(m_okay, &QPushButton::clicked, this, [this] { unload(); });
    registerOpenForm(this, [this] { close(); });
    m_grid->setFocus();
}

frm_Rebates::~frm_Rebates() {
    unregisterOpenForm(this);
}

void frm_Rebates::addRow() {
    const int current = m_grid->currentIndex().isValid() ? m_grid->currentIndex().row() : -1;
    const int row = m_form.cmd_Add(current);
    m_model->reload();
    m_grid->setFocus();
    m_grid->setCurrentIndex(m_model->index(row, RebateColumn));
}

bool frm_Rebates::eventFilter(QObject* watched, QEvent* event) {
    // Down from the last row adds a row, as the grid's change of row does.
    if (watched == m_grid && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down && m_grid->currentIndex().isValid() &&
        m_grid->currentIndex().row() == m_model->rowCount() - 1) {
        addRow();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frm_Rebates::unload() {
    if (m_closed) return;
    m_closed = true;
    // The grid's pending edit is stored first.
    skipErrors([&] {
        QWidget* focus = QApplication::focusWidget();
        if (focus && focus != m_grid && m_grid->isAncestorOf(focus))
            m_okay->setFocus(); // the cell editor stores its text as it loses the focus
    });
    m_form.Form_Unload();
    done(QDialog::Accepted);
}

void frm_Rebates::reject() {
    unload();
}

void frm_Rebates::closeEvent(QCloseEvent* event) {
    unload();
    event->accept();
}

void OpenRebatesDialog(QWidget* parent, const QString& query, const QString& databasePath,
                       const QString& keyColumn) {
    frm_Rebates dialog(query, databasePath, keyColumn, parent);
    dialog.exec();
}

void OpenFarmRebates(QWidget* parent) {
    try {
        Database farm = openOrCreate(DatabaseKind::Farm, DataFileName());
        EnsureRebatesTable(farm);
        farm.close();
    } catch (const VbError& e) {
        ShowSettingsError(e, QStringLiteral("frm_rebates.SaveData"));
        return;
    }
    OpenRebatesDialog(parent, FarmRebatesQuery(), DataFileName(), QStringLiteral("RebateID"));
}

} // namespace ql
