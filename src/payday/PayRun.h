#pragma once
// The pay run: for a run date, the next pay of every current employee whose interval falls due by
// then, added as the wage screen's add does and brought to its tax as leaving a view does. A pay
// that is already there (added by an earlier run, or by hand) is taken as it stands and never added
// twice; committed pays are listed and left alone.
#include "data/Database.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>

namespace ql {

struct PayRunItem {
    qint32 employeeID = 0;
    QString name;
    QDate payDate;     // the pay's Date: the end of its period
    qint32 wageID = 0; // 0 while the pay is still to be added
    QString reference; // a committed pay's reference
    QString interval;
    QDate periodStart;
    Currency gross; // total taxable
    Currency paye;
    Currency nonTaxable;
    Currency deductions;
    Currency takeHome;
    bool committed() const { return !reference.isEmpty(); }
};

// The date of an employee's next pay after lastPay at the interval: the interval's days, else its
// months (pays per year / 12, rounded as the date step does); invalid for an interval of neither.
QDate NextPayDate(const QDate& lastPay, float paysPerYear, float numberOfDays);

// What the run would hold, without changing anything. An employee without pays is due on runDate.
QList<PayRunItem> ProposePayRun(Database& wage, const QDate& runDate);

// The run's pays as they stand now (reference and figures read again), so that a pay committed by the
// run stays in its list even when its date lies before the run's and a new proposal would leave it out.
void RefreshPayRunItems(Database& wage, QList<PayRunItem>& items);

// Before the run's question: each open pay it would commit (not left out) is brought to the figures
// its commit gives it (a first pay's PAYE comes only with a save), so that the totals asked about are
// the ones committed. A pay that cannot be settled is left to the commit, which says why.
void SettlePayRunItems(const QList<PayRunItem>& items, const QSet<qint32>& leftOut);

class WageScreen;
class PayView;

// Adds one pay of a run at a time, as the wage screen adds it, so that a screen can show progress
// and stop between pays. The program's context must have the payroll database open.
class PayRunAdder {
public:
    PayRunAdder();
    ~PayRunAdder();
    PayRunAdder(const PayRunAdder&) = delete;
    PayRunAdder& operator=(const PayRunAdder&) = delete;
    // Adds the item's pay when it has none yet; false with the reason when it could not.
    bool add(const PayRunItem& item, QString& failure);
    // Stands the wage screen on the item's pay, its employee picked as the user picks one; nullptr
    // when the pay is not there.
    PayView* standOn(const PayRunItem& item);

private:
    WageScreen* m_screen;
    PayView* m_previousForm;
};

// Adds the proposal's missing pays through the wage screen (the program's context must have the
// payroll database open). Failures (a missing tax code, for example) are listed with the employee's
// name and the run goes on with the others. Returns the run as it then stands.
QList<PayRunItem> AddPayRunPays(const QDate& runDate, QStringList& failures);

// Commits the pay the screen stands on, as the commit dialog does; the empty text when it did, else
// the system's message. The main window installs the commit dialog's own steps.
using PayCommitter = std::function<QString(PayView& screen, const PayRunItem& item)>;

// The commit of one pay that the program installs at start (the commit dialog's steps); the pay run
// screen and `pay-run --commit` use it. Empty until installed.
void setPayCommitter(PayCommitter committer);
const PayCommitter& installedPayCommitter();

struct PayRunCommit {
    QStringList done;    // "Name (reference)" of each pay committed by this call
    QStringList notDone; // names of the pays still to commit, the failing one first
    QString failure;     // "Name: message" of the pay that stopped the run; empty when none did
    bool cancelled = false;
};

// Commits, in the run's order, every pay of items that is added, not committed and not left out,
// stopping at the first failure (or when progress answers false). Committed pays are never committed
// again, so running it again finishes the rest.
PayRunCommit CommitPayRun(const QList<PayRunItem>& items, const QSet<qint32>& leftOut,
                          const PayCommitter& commit,
                          const std::function<bool(int done, int total, const QString& name)>& progress = {});

// The sum of the run's take-home pays.
Currency PayRunTotal(const QList<PayRunItem>& items);

} // namespace ql
