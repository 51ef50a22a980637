#include "LeaveGridWidget.h"
#include "LeaveScreen.h"
#include "basLeave.h"
#include "frame/Messages.h"
#include "runtime/Convert.h"
#include <QAbstractItemView>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QStyledItemDelegate>

namespace ql {

namespace {

// The Description column edits through a list of the transaction kinds; a blank entry clears it.
class LeaveDelegate : public QStyledItemDelegate {
public:
    LeaveDelegate(LeaveScreen& screen, QObject* parent) : QStyledItemDelegate(parent), m_screen(screen) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        if (index.column() != leave::Description)
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto* combo = new QComboBox(parent);
        combo->setAccessibleName(QStringLiteral("Description"));
        combo->addItem(QString(), QString());
        for (const GridValueItem& item : m_screen.LeaveArray.column(leave::Description).valueItems)
            if (!IsNull(item.value) && !item.value.toString().isEmpty())
                combo->addItem(item.name, item.value.toString());
        auto* self = const_cast<LeaveDelegate*>(this);
        connect(combo, &QComboBox::activated, combo, [self, combo] {
            emit self->commitData(combo);
            emit self->closeEditor(combo, QAbstractItemDelegate::NoHint);
        });
        return combo;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* combo = qobject_cast<QComboBox*>(editor)) {
            const int at = combo->findData(index.data(Qt::EditRole).toString());
            combo->setCurrentIndex(at < 0 ? 0 : at);
            return;
        }
        QStyledItemDelegate::setEditorData(editor, index);
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        if (auto* combo = qobject_cast<QComboBox*>(editor)) {
            model->setData(index, combo->currentData().toString(), Qt::EditRole);
            return;
        }
        QStyledItemDelegate::setModelData(editor, model, index);
    }

private:
    LeaveScreen& m_screen;
};

bool isPrintable(const QKeyEvent* event) {
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    const QString text = event->text();
    return text.size() == 1 && text.at(0).unicode() >= 33 && text.at(0).unicode() <= 126;
}

} // namespace

LeaveGridModel::LeaveGridModel(LeaveScreen& screen, QObject* parent)
    : QAbstractTableModel(parent), m_screen(screen), m_rows(screen.gridRowCount()) {}

int LeaveGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int LeaveGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : leave::ColumnCount;
}

QVariant LeaveGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return m_screen.cellText(index.row(), index.column());
    if (role == Qt::EditRole) {
        const QVariant v = m_screen.cellValue(index.row(), index.column());
        if (index.column() == leave::Description) return IsNull(v) ? QString() : v.toString();
        return m_screen.cellText(index.row(), index.column());
    }
    if (role == Qt::TextAlignmentRole && index.column() == leave::Days)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

bool LeaveGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) return false;
    if (value.toString() == data(index, Qt::EditRole).toString()) return false; // nothing changed
    bool stored = false;
    m_committing = true;
    try {
        stored = m_screen.storeCell(index.row(), index.column(), value.toString());
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("tgrdLeave_AfterColUpdate"));
    }
    m_committing = false;
    follow();
    emit dataChanged(this->index(0, 0), this->index(m_rows - 1, leave::ColumnCount - 1));
    return stored;
}

Qt::ItemFlags LeaveGridModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.isValid() && m_screen.LeaveArray.editable() &&
        m_screen.LeaveArray.column(index.column()).visible)
        f |= Qt::ItemIsEditable;
    return f;
}

QVariant LeaveGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Vertical) return section == m_rows - 1 ? QStringLiteral("*") : QString();
    return m_screen.LeaveArray.column(section).caption;
}

void LeaveGridModel::reload() {
    beginResetModel();
    m_rows = m_screen.gridRowCount();
    endResetModel();
}

void LeaveGridModel::follow() {
    const int now = m_screen.gridRowCount();
    if (now > m_rows) {
        beginInsertRows(QModelIndex(), m_rows, now - 1);
        m_rows = now;
        endInsertRows();
    } else if (now < m_rows) {
        beginRemoveRows(QModelIndex(), now, m_rows - 1);
        m_rows = now;
        endRemoveRows();
    }
}

bool LeaveGridModel::deleteLeaveRow(int row) {
    if (row < 0 || row >= m_screen.LeaveArray.rowCount() || !m_screen.LeaveArray.editable()) return false;
    if (m_screen.tgrdLeave_BeforeDelete()) return false;
    beginRemoveRows(QModelIndex(), row, row);
    m_screen.deleteArrayRow(row);
    m_rows = m_screen.gridRowCount();
    endRemoveRows();
    return true;
}

LeaveGridWidget::LeaveGridWidget(LeaveScreen& screen, QWidget* parent)
    : QTableView(parent), m_screen(screen), m_model(new LeaveGridModel(screen, this)) {
    setModel(m_model);
    setItemDelegate(new LeaveDelegate(screen, this));
    setObjectName(QStringLiteral("tgrdLeave"));
    setAccessibleName(QStringLiteral("Leave transactions"));
    setAccessibleDescription(QStringLiteral("Type into a cell to change it; Ctrl+Delete deletes the entry."));
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    reload();
}

void LeaveGridWidget::reload() {
    m_model->reload();
    for (int c = 0; c < leave::ColumnCount; ++c)
        setColumnHidden(c, !m_screen.LeaveArray.column(c).visible || c < leave::Description);
    setColumnWidth(leave::Description, 170);
    setColumnWidth(leave::Days, 70);
    setColumnWidth(leave::DateFrom, 100);
    setColumnWidth(leave::DateTo, 100);
    if (!currentIndex().isValid() && m_model->rowCount() > 0)
        setCurrentIndex(m_model->index(0, leave::Description));
}

void LeaveGridWidget::flushEditor() {
    if (state() != QAbstractItemView::EditingState || m_model->committing()) return;
    if (QWidget* editor = indexWidget(currentIndex())) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

bool LeaveGridWidget::openDropDown() {
    const QModelIndex at = m_model->index(std::max(currentIndex().row(), 0), leave::Description);
    setCurrentIndex(at);
    if (state() != QAbstractItemView::EditingState && !edit(at, QAbstractItemView::EditKeyPressed, nullptr))
        return false;
    auto* combo = qobject_cast<QComboBox*>(indexWidget(at));
    if (!combo) return false;
    combo->showPopup();
    return true;
}

void LeaveGridWidget::keyPressEvent(QKeyEvent* event) {
    // A printable key in the Description column opens its list, and the key picks an entry there.
    if (state() != QAbstractItemView::EditingState && currentIndex().column() == leave::Description &&
        isPrintable(event)) {
        if (openDropDown()) {
            if (auto* combo = qobject_cast<QComboBox*>(indexWidget(currentIndex())))
                combo->view()->keyboardSearch(event->text());
            return;
        }
    }
    if (state() != QAbstractItemView::EditingState && event->key() == Qt::Key_Delete &&
        (event->modifiers() & Qt::ControlModifier)) {
        deleteCurrentRow();
        return;
    }
    QTableView::keyPressEvent(event);
}

void LeaveGridWidget::contextMenuEvent(QContextMenuEvent* event) {
    const QModelIndex at = indexAt(event->pos());
    if (!at.isValid() || at.row() >= m_screen.LeaveArray.rowCount()) return;
    setCurrentIndex(at);
    QMenu menu(this);
    menu.addAction(QStringLiteral("&Delete Entry"), this, [this] { deleteCurrentRow(); });
    menu.exec(event->globalPos());
}

void LeaveGridWidget::deleteCurrentRow() {
    const int row = currentIndex().row();
    try {
        m_model->deleteLeaveRow(row);
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("tgrdLeave_AfterDelete"));
    }
}

} // namespace ql
