#pragma once
// The wage history on the desktop ("History"): the employee, the list of pays with its totals row and
// the selected pay's commit state beneath it, the two order buttons, the print, and beside the list a
// chart of gross, PAYE and take-home pay per pay. It shows a QuickView and forwards the user's presses to it.
#include "QuickView.h"
#include <QDialog>
#include <QList>

class QChartView;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace ql {

class QuickViewModel;

class frmQuickView : public QDialog {
    Q_OBJECT
public:
    explicit frmQuickView(const QString& employeeName, QWidget* parent = nullptr);
    ~frmQuickView() override;
    QuickView& view() { return m_view; }

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();
    // The list read again when the pays changed while the screen stood beside the wage screen; the
    // grid keeps its place.
    void refreshIfChanged();
    void queueRefresh();
    void refreshChart();
    void alignTotals();
    // The line beneath the list: whether the selected pay is committed, its date and reference.
    void showPayState();

    QuickView m_view;
    QuickViewModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QLineEdit* m_employee = nullptr;
    QList<QLineEdit*> m_totals;
    QPushButton* m_dateOrder = nullptr;
    QPushButton* m_entryOrder = nullptr;
    QPushButton* m_print = nullptr;
    QPushButton* m_ok = nullptr;
    QChartView* m_chart = nullptr;
    QLabel* m_state = nullptr;
    bool m_refreshQueued = false;
};

// Opens the wage history of the current employee (CurrentEmployee, CurrentEmployeeID) modally, owned
// by owner. employeeName is the text of the wage screen's employee list.
void ShowQuickView(QWidget* owner, const QString& employeeName);

} // namespace ql
