#include "WageGridWidget.h"
#include "WageScreen.h"
#include "frame/Messages.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"
#include "ui/Skin.h"
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>

namespace ql {

namespace {
// Asks the screen before an edit begins; a committed pay gets no editor.
class GuardedDelegate : public QStyledItemDelegate {
public:
    GuardedDelegate(WageScreen& screen, QObject* parent) : QStyledItemDelegate(parent), m_screen(screen) {}
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        bool cancel = false;
        try {
            cancel = m_screen.tgrdwages_BeforeColEdit(index.column());
        } catch (const VbError& e) {
            ReportError(e, QStringLiteral("tgrdwages_BeforeColEdit"));
            cancel = true;
        }
        if (cancel) return nullptr;
        const GridColumn& column = m_screen.WageGridArray.column(index.column());
        if (column.valueItems.isEmpty()) return QStyledItemDelegate::createEditor(parent, option, index);
        // The column's names as a drop-down; the grid stores the id behind the chosen name.
        auto* names = new QComboBox(parent);
        names->setAccessibleName(column.caption);
        for (const GridValueItem& item : column.valueItems)
            names->addItem(item.name, item.value);
        return names;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* names = qobject_cast<QComboBox*>(editor)) {
            const QString stored = index.data(Qt::EditRole).toString();
            for (int i = 0; i < names->count(); ++i)
                if (names->itemData(i).toString() == stored) names->setCurrentIndex(i);
            return;
        }
        QStyledItemDelegate::setEditorData(editor, index);
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        if (auto* names = qobject_cast<QComboBox*>(editor)) {
            const QString chosen = names->currentData().toString();
            if (chosen != index.data(Qt::EditRole).toString()) model->setData(index, chosen, Qt::EditRole);
            return;
        }
        QStyledItemDelegate::setModelData(editor, model, index);
    }

private:
    WageScreen& m_screen;
};
} // namespace

WageGridModel::WageGridModel(WageScreen& screen, QObject* parent)
    : QAbstractTableModel(parent), m_screen(screen) {}

int WageGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_screen.WageGridArray.rowCount();
}

int WageGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_screen.WageGridArray.columnCount();
}

QVariant WageGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const GridArray& grid = m_screen.WageGridArray;
    const QVariant v = grid.value(index.row(), index.column());
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) // the tip shows a name cut short
        return IsNull(v) ? QString() : grid.column(index.column()).displayText(v);
    if (role == Qt::EditRole) return IsNull(v) ? QVariant(QString()) : QVariant(CStr(v));
    if (role == Qt::TextAlignmentRole && grid.column(index.column()).rightAligned)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

bool WageGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) return false;
    bool stored = false;
    m_storing = true;
    try {
        stored = m_screen.storeCell(index.row(), index.column(), value.toString());
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("tgrdwages_AfterColUpdate"));
    }
    m_storing = false;
    if (stored) rowEdited = true;
    emit dataChanged(this->index(index.row(), 0), this->index(index.row(), columnCount() - 1));
    return stored;
}

Qt::ItemFlags WageGridModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    // The line views let an edit begin even on a committed pay, so that the grid's own check can say
    // why it is refused; the payslip view is never edited.
    const int tab = App().CurrentTab;
    const bool lineView = tab == 1 || tab == 2 || tab == 4 || tab == 5 || tab == 7;
    if (index.column() >= 1 && (m_screen.WageGridArray.editable() || lineView)) f |= Qt::ItemIsEditable;
    return f;
}

QVariant WageGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return m_screen.WageGridArray.column(section).caption;
}

void WageGridModel::reload() {
    if (m_storing && m_rows == rowCount() && m_columns == columnCount()) {
        // Inside a cell's store the open editor must live on: show the new values without a reset.
        if (m_rows > 0 && m_columns > 0) emit dataChanged(index(0, 0), index(m_rows - 1, m_columns - 1));
        return;
    }
    m_rows = rowCount();
    m_columns = columnCount();
    beginResetModel();
    rowEdited = false;
    endResetModel();
}

WageGridWidget::WageGridWidget(WageScreen& screen, QWidget* parent)
    : QTableView(parent), m_screen(screen), m_model(new WageGridModel(screen, this)) {
    setModel(m_model);
    setItemDelegate(new GuardedDelegate(screen, this));
    setObjectName(QStringLiteral("tgrdwages"));
    setAlternatingRowColors(true);
    horizontalHeader()->setStretchLastSection(false);
    horizontalHeader()->setMinimumSectionSize(70);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    setWordWrap(false);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& now, const QModelIndex&) {
                m_screen.gridRow = now.row();
                if (!m_model->rowEdited) return;
                m_model->rowEdited = false;
                try {
                    m_screen.tgrdwages_AfterRowChange();
                } catch (const VbError& e) {
                    ReportError(e, QStringLiteral("tgrdwages_AfterUpdate"));
                }
            });
}

void WageGridWidget::reload() {
    m_model->reload();
    SkinGrid(this, true);
    int names = -1;
    for (int c = 0; c < m_model->columnCount(); ++c) {
        const bool shown = m_screen.WageGridArray.column(c).visible;
        setColumnHidden(c, !shown);
        if (shown && names < 0) names = c;
    }
    // Figures as wide as they need; the names take the rest of the width.
    QHeaderView* header = horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Interactive);
    resizeColumnsToContents();
    if (names >= 0) header->setSectionResizeMode(names, QHeaderView::Stretch);
}

bool WageGridWidget::lineView() const {
    const int tab = App().CurrentTab;
    return tab == 1 || tab == 2 || tab == 4 || tab == 5 || tab == 7;
}

int WageGridWidget::firstShownColumn() const {
    for (int c = 0; c < m_model->columnCount(); ++c)
        if (!isColumnHidden(c)) return c;
    return -1;
}

void WageGridWidget::insertLine() {
    if (!lineView()) return;
    try {
        if (m_screen.tgrdwages_BeforeRowChange()) return;
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("tgrdwages_BeforeInsert"));
        return;
    }
    dropUntouchedNewLine();
    const int row = m_screen.WageGridArray.rowCount();
    m_screen.WageGridArray.insertRow(row);
    m_newLine = row;
    reload();
    const QModelIndex name = m_model->index(row, firstShownColumn());
    setCurrentIndex(name);
    edit(name);
}

void WageGridWidget::deleteLine() {
    const QModelIndex at = currentIndex();
    if (!lineView() || !at.isValid()) return;
    try {
        if (m_screen.tgrdwages_BeforeRowChange()) return;
        m_screen.WageGridArray.deleteRow(at.row());
        m_newLine = -1;
        reload();
        m_screen.tgrdwages_AfterRowChange();
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("tgrdwages_AfterDelete"));
    }
    reload();
}

void WageGridWidget::dropUntouchedNewLine() {
    GridArray& lines = m_screen.WageGridArray;
    const int row = m_newLine;
    m_newLine = -1;
    // A new line left without a name was never entered: it goes rather than being stored blank.
    if (row >= 0 && row < lines.rowCount() && lines.columnCount() > 1 &&
        (IsNull(lines.value(row, 1)) || lines.value(row, 1).toString().isEmpty())) {
        lines.deleteRow(row);
        reload();
    }
}

void WageGridWidget::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTableView::closeEditor(editor, hint);
    // The name refused or never chosen: a new line without one goes when the focus has left.
    QWidget* next = QApplication::focusWidget();
    if (next && (next == this || isAncestorOf(next))) return;
    dropUntouchedNewLine();
}

void WageGridWidget::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    // An open cell editor is part of the grid; only a real departure counts.
    QWidget* next = QApplication::focusWidget();
    if (next && isAncestorOf(next)) return;
    dropUntouchedNewLine();
    try {
        m_model->rowEdited = false;
        m_screen.tgrdwages_LostFocus();
    } catch (const VbError& e) {
        ReportError(e, QStringLiteral("tgrdwages_LostFocus"));
    }
}

void WageGridWidget::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Tab && state() != QAbstractItemView::EditingState) {
        try {
            m_screen.tgrdwages_TabKey();
        } catch (const VbError& e) {
            ReportError(e, QStringLiteral("tgrdwages_KeyPress"));
        }
        return;
    }
    if (state() != QAbstractItemView::EditingState) {
        const Qt::KeyboardModifiers mods =
            event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
        if (event->key() == Qt::Key_Insert && (mods == Qt::NoModifier || mods == Qt::ControlModifier)) {
            insertLine();
            return;
        }
        if (event->key() == Qt::Key_Delete && mods == Qt::ControlModifier) {
            deleteLine();
            return;
        }
    }
    if (event->key() == Qt::Key_Backtab && state() != QAbstractItemView::EditingState) {
        // Shift+Tab leaves the grid for the control before it.
        event->ignore();
        return;
    }
    QTableView::keyPressEvent(event);
}

} // namespace ql
