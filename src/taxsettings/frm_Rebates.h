#pragma once
// The rebates dialog: a grid of the rebates of this installation's country over a table given at run
// time, with Add, Delete and OK. Shows a RebatesForm; the rows are saved as the dialog closes, by OK or
// by the title bar.
#include "Rebates.h"
#include <QAbstractTableModel>
#include <QDialog>

class QLabel;
class QPushButton;
class QTableView;

namespace ql {

// tgrd_data: the grid's array as a table model. Quantity shows as a tick box that a click toggles;
// Heading shows the account's name and is chosen from the accounts.
class RebatesGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit RebatesGridModel(RebatesForm& form, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    void reload();

signals:
    // A typed cell was refused: the grid stays in it.
    void cellRefused(const QModelIndex& index);

private:
    RebatesForm& m_form;
};

class frm_Rebates : public QDialog {
    Q_OBJECT
public:
    frm_Rebates(const QString& query, const QString& databasePath, const QString& keyColumn,
                QWidget* parent = nullptr);
    ~frm_Rebates() override;
    RebatesForm& form() { return m_form; }
    QTableView* grid() const { return m_grid; }
    RebatesGridModel* gridModel() const { return m_model; }
    QPushButton* cmd_Add() const { return m_add; }
    QPushButton* cmd_Delete() const { return m_delete; }
    QPushButton* cmd_okay() const { return m_okay; }

public slots:
    void reject() override; // Escape closes as OK does: the grid is saved

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addRow();
    void unload();
    RebatesForm m_form;
    RebatesGridModel* m_model = nullptr;
    QLabel* m_label = nullptr;
    QTableView* m_grid = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_delete = nullptr;
    QPushButton* m_okay = nullptr;
    bool m_closed = false;
};

// Opens the dialog modally over the rebates of query in the database at databasePath, keyed by
// keyColumn.
void OpenRebatesDialog(QWidget* parent, const QString& query, const QString& databasePath,
                       const QString& keyColumn);
// The farm's rebates of this installation's country (the table is made when the farm has none yet).
void OpenFarmRebates(QWidget* parent);

} // namespace ql
