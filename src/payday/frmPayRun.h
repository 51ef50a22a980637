#pragma once
// "Pay Run": pick a pay date; the screen proposes the next pay of every employee due by then, lists
// each with its period, gross, tax, deductions and take-home and the totals of each column, lets the
// user leave any out or open one in the wage ledger, and adds the missing pays with a progress bar and
// a cancel button. Running it again never adds a pay twice. The commit asks once, with the count and
// the totals; the payslips then go where the user chose for the whole run (PDF files in a folder, one
// preview, the printer, email), and the payday filing and bank files are one button away.
#include "PayRun.h"
#include "PayRunSlips.h"
#include "data/Database.h"
#include <QDialog>
#include <QSet>
#include <functional>

class QComboBox;
class QDateEdit;
class QLineEdit;
class QLabel;
class QPushButton;
class QTableWidget;

namespace ql {

class frmPayRun : public QDialog {
public:
    frmPayRun(Database& wage, QWidget* parent = nullptr);
    QDateEdit* dtpRunDate;
    QTableWidget* tgrdRun;
    QTableWidget* tgrdTotals; // one row: the totals of the pays left in
    QLabel* lblTotal;
    QPushButton* cmdPropose;
    QPushButton* cmdAddPays;
    QPushButton* cmdOpen;
    QPushButton* cmdFiles;
    QPushButton* cmdCommit;
    QComboBox* cboPayslips; // SlipDelivery by index
    QLineEdit* txtSlipFolder;
    QPushButton* cmdMailServer; // Email Settings, shown when the slips go by email

    // Sends the run's payslips by email; returns one line for each that failed. EmailRunSlips at first.
    std::function<QStringList(const QList<PayRunSlip>& slips)> emailSlips;

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
    // Asks once, with the count and the totals, then commits the added pays left in, in order, with
    // progress and cancel; the payslips go as cboPayslips says; what was done and what was not is told
    // at the end. Returns the number committed.
    int commitPays();
    // The text of the confirmation (empty when nothing is to commit).
    QString confirmationText() const;
    // Where the last run's payslips went: the PDF files written, and what failed.
    QStringList slipFiles() const { return m_slipFiles; }
    QList<PayRunItem> items() const { return m_items; }
    // The employees left out of the run (unticked rows).
    QSet<qint32> leftOut() const;

private:
    void fill();
    void fillTotals();
    QList<PayRunItem> toCommit() const;
    QString deliverSlips(const QList<PayRunSlip>& slips, QStringList& failures);
    void leaveOut(const QSet<qint32>& employees);
    Database& m_wage;
    QList<PayRunItem> m_items;
    QStringList m_slipFiles;
};

// Each slip painted as PDF and sent to its employee's address through the mail server of the settings;
// one "Name: why" for each that was not sent.
QStringList EmailRunSlips(Database& wage, const QList<PayRunSlip>& slips);

void ShowPayRun(Database& wage, QWidget* owner, std::function<void(qint32, qint32)> openInLedger = {},
                PayCommitter commitPay = {});
// The main window's pay run: shown without modality, so that a pay opened in the ledger can be changed
// there while the run stays open (Propose lists it afresh). One at a time; closed is deleted, and
// closed runs onClosed.
frmPayRun* OpenPayRun(Database& wage, QWidget* owner, std::function<void(qint32, qint32)> openInLedger,
                      std::function<void()> onClosed = {});

} // namespace ql
