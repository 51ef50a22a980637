#pragma once
// tgrdLeave: a table model over the leave array of a LeaveScreen (its rows and an add-new row below
// them), and the view that forwards typing, the drop-down of the Description column and deleting to
// the screen.
#include <QAbstractTableModel>
#include <QTableView>

namespace ql {

class LeaveScreen;

class LeaveGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit LeaveGridModel(LeaveScreen& screen, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    // The array was replaced by a fill.
    void reload();
    // Asks, then deletes an array row; false when it stays.
    bool deleteLeaveRow(int row);
    bool committing() const { return m_committing; }

private:
    void follow(); // rows added or removed by the screen since the last look
    LeaveScreen& m_screen;
    int m_rows = 0;
    bool m_committing = false;
};

class LeaveGridWidget : public QTableView {
    Q_OBJECT
public:
    explicit LeaveGridWidget(LeaveScreen& screen, QWidget* parent = nullptr);
    LeaveGridModel* gridModel() const { return m_model; }
    void reload();
    // Stores the text of an open cell editor, as the grid's update does.
    void flushEditor();
    // Opens the drop-down list of the Description cell of the current row.
    bool openDropDown();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void deleteCurrentRow();
    LeaveScreen& m_screen;
    LeaveGridModel* m_model;
};

} // namespace ql
