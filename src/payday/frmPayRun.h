#pragma once
// "Pay Run": pick a pay date; the screen proposes the next pay of every employee due by then, lists
// each with its period, gross, tax, deductions and take-home and the run's total, lets the user leave
// any out or open one in the wage ledger, and adds the missing pays with a progress bar and a cancel
// button. Running it again never adds a pay twice.
#include "PayRun.h"
#include "data/Database.h"
#include <QDialog>
#include <QSet>
#include <functional>

class QDateEdit;
class QLabel;
class QPushButton;
class QTableWidget;

namespace ql {

class frmPayRun : public QDialog {
public:
    frmPayRun(Database& wage, QWidget* parent = nullptr);
    QDateEdit* dtpRunDate;
    QTableWidget* tgrdRun;
    QLabel* lblTotal;
    QPushButton* cmdPropose;
    QPushButton* cmdAddPays;
    QPushButton* cmdOpen;
    QPushButton* cmdFiles;
    QPushButton* cmdCommit;

    // The main window opens an employee's pay in the wage ledger through this (employee, pay or 0).
    std::function<void(qint32 employeeID, qint32 wageID)> openInLedger;

    // The commit of one pay: the installed one, else the commit dialog's steps with the payslip printed
    // as the print setting says. Without one the commit button stays disabled.
    PayCommitter commitPay;

    // Lists the run for the date without changing anything.
    void propose();
    // Adds the missing pays of the rows left in; the failures, one a line, are told at the end.
    // Returns the number of pays added.
    int addPays();
    // Commits the added pays left in, in order, with progress and cancel; what was done and what was
    // not is told at the end. Returns the number committed.
    int commitPays();
    QList<PayRunItem> items() const { return m_items; }
    // The employees left out of the run (unticked rows).
    QSet<qint32> leftOut() const;

private:
    void fill();
    void leaveOut(const QSet<qint32>& employees);
    Database& m_wage;
    QList<PayRunItem> m_items;
};

void ShowPayRun(Database& wage, QWidget* owner, std::function<void(qint32, qint32)> openInLedger = {},
                PayCommitter commitPay = {});
// The main window's pay run: shown without modality, so that a pay opened in the ledger can be changed
// there while the run stays open (Propose lists it afresh). One at a time; closed is deleted, and
// closed runs onClosed.
frmPayRun* OpenPayRun(Database& wage, QWidget* owner, std::function<void(qint32, qint32)> openInLedger,
                      std::function<void()> onClosed = {});

} // namespace ql
