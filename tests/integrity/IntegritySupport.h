#pragma once
// Several quillary-cli processes on one documents folder at once, and what both files must hold
// afterwards: no pay added or posted twice, every committed pay's reference equal in both files.
#include "../cli_commit/CliCommitSupport.h"
#include "runtime/Convert.h"
#include <QProcess>
#include <QProcessEnvironment>
#include <QThread>
#include <memory>

namespace qltest {

inline QProcessEnvironment cliEnvironment(const QString& documents) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("FERNHOLD_DOCUMENTS"), documents);
    env.insert(QStringLiteral("LANG"), QStringLiteral("en_NZ.UTF-8"));
    env.insert(QStringLiteral("LC_ALL"), QStringLiteral("en_NZ.UTF-8"));
    env.insert(QStringLiteral("TZ"), QStringLiteral("Pacific/Auckland"));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return env;
}

inline std::unique_ptr<QProcess> startCli(const QString& documents, const QStringList& arguments,
                                          const QProcessEnvironment* env = nullptr) {
    auto p = std::make_unique<QProcess>();
    p->setProcessEnvironment(env ? *env : cliEnvironment(documents));
    p->start(QStringLiteral(QUILLARY_CLI_PATH), arguments);
    p->waitForStarted();
    return p;
}

// Two runs of the same command started delayMs apart; their exit codes.
inline std::pair<int, int> runPair(const QString& documents, const QStringList& arguments, int delayMs) {
    auto a = startCli(documents, arguments);
    if (delayMs > 0) QThread::msleep(delayMs);
    auto b = startCli(documents, arguments);
    a->waitForFinished(120000);
    b->waitForFinished(120000);
    return {a->exitCode(), b->exitCode()};
}

// A text naming every way the files disagree: a regular pay twice on one date, a pay posted more
// than once, a posted pay whose reference differs or that is gone, a committed posted pay without
// its withdrawal. Empty when they agree.
inline QString disagreements(ql::Database& wage, ql::Database& farm) {
    QStringList found;
    auto twice = wage.firstColumn(QStringLiteral(
        "SELECT EmployeeID || ' on ' || [Date] FROM Wages WHERE OneOff = 0 GROUP BY EmployeeID, [Date] "
        "HAVING count(*) > 1"));
    for (const QVariant& t : twice)
        found << QStringLiteral("two pays of employee %1").arg(t.toString());
    if (!farm.hasTable(QStringLiteral("QuillaryPostedPays"))) return found.join(u'\n');
    auto rs = farm.openRecordset(QStringLiteral("SELECT WageID, Reference, TransactionsID FROM QuillaryPostedPays"),
                                 ql::RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        const qint32 id = ql::CLng(rs->value(QStringLiteral("WageID")));
        const QString posted = rs->value(QStringLiteral("Reference")).toString();
        const QVariantList pay =
            wage.firstRow(QStringLiteral("SELECT Reference, TakeHome FROM Wages WHERE WageID = %1").arg(id));
        if (pay.isEmpty()) {
            const bool reversed =
                farm.hasTable(QStringLiteral("QuillaryReversedPays")) &&
                !ql::IsNull(farm.scalar(
                    QStringLiteral("SELECT ReversalID FROM QuillaryReversedPays WHERE WageID = %1").arg(id)));
            if (!reversed) found << QStringLiteral("pay %1 posted but gone, its withdrawal standing").arg(id);
            continue;
        }
        if (!ql::IsNull(pay.at(0)) && pay.at(0).toString() != posted)
            found << QStringLiteral("pay %1: reference %2 in the payroll, %3 in the cashbook")
                         .arg(id)
                         .arg(pay.at(0).toString(), posted);
        const QVariant amount = farm.scalar(
            QStringLiteral("SELECT Amount FROM Transactions WHERE TransactionsID = %1")
                .arg(ql::CLng(rs->value(QStringLiteral("TransactionsID")))));
        if (ql::IsNull(amount) || ql::CCur(amount) != -ql::CCur(pay.at(1)))
            found << QStringLiteral("pay %1: withdrawal %2 against take-home %3")
                         .arg(id)
                         .arg(amount.toString(), pay.at(1).toString());
    }
    // Every withdrawal of the cashbook belongs to one posting.
    const QString reversals = farm.hasTable(QStringLiteral("QuillaryReversedPays"))
                                  ? QStringLiteral(" UNION SELECT ReversalID FROM QuillaryReversedPays UNION "
                                                   "SELECT TaxReversalID FROM QuillaryReversedPays")
                                  : QString();
    const int stray = farm.scalar(QStringLiteral(
                                      "SELECT count(*) FROM Transactions WHERE TransactionsID NOT IN (SELECT "
                                      "TransactionsID FROM QuillaryPostedPays UNION SELECT TaxTransactionsID "
                                      "FROM QuillaryPostedPays%1)")
                                      .arg(reversals))
                          .toInt();
    if (stray) found << QStringLiteral("%1 withdrawals of no posting").arg(stray);
    return found.join(u'\n');
}

} // namespace qltest
