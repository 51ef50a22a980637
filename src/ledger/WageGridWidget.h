#pragma once
// The detail grid of the wage screen: a table model over the screen's WageGridArray, and the view that
// forwards the grid's events (edit start, stored cell, row change, focus loss, Tab) to the screen.
#include <QAbstractTableModel>
#include <QStyledItemDelegate>
#include <QTableView>

namespace ql {

class WageScreen;

class WageGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit WageGridModel(WageScreen& screen, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    // The array was replaced or changed as a whole.
    void reload();
    bool rowEdited = false; // a cell of the current row was stored since the row was entered

private:
    WageScreen& m_screen;
    bool m_storing = false;        // a cell's store is running
    int m_rows = 0, m_columns = 0; // the shape the view was last reset to
};

class WageGridWidget : public QTableView {
    Q_OBJECT
public:
    explicit WageGridWidget(WageScreen& screen, QWidget* parent = nullptr);
    WageGridModel* gridModel() const { return m_model; }
    void reload();
    // A new line at the end (Insert), its name chosen first; and the removal of the current line
    // (Ctrl+Delete). Both are refused on a committed pay and only offered in the line views.
    void insertLine();
    void deleteLine();

protected:
    void focusOutEvent(QFocusEvent* event) override;
    // An editor closed because the focus went elsewhere is a departure from the grid too.
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool lineView() const;
    int firstShownColumn() const;
    void dropUntouchedNewLine();
    WageScreen& m_screen;
    WageGridModel* m_model;
    int m_newLine = -1; // the line Insert added, until it has a name
};

} // namespace ql
