// delete-pay WAGE_ID [--yes]: the wage screen's Delete on the pay. Without --yes the question is
// answered No: the command tells what it would ask and deletes nothing.
#include "CliCommand.h"
#include "JsonRows.h"
#include "PayScreen.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"

namespace {

int deletePay(const QStringList& args, QTextStream& out) {
    if (args.isEmpty() || args.size() > 2) throw cli::CliUsageError();
    bool ok = false;
    const qint32 wageID = args.at(0).toInt(&ok);
    if (!ok) throw cli::CliUsageError();
    const bool yes = args.size() == 2;
    if (yes && args.at(1) != QLatin1String("--yes")) throw cli::CliUsageError();
    cli::PayScreen open(wageID);
    if (!yes) open.dialogs.queueAnswer(7); // No
    const int mark = open.dialogs.calls.size();
    open.screen.cmdDelete_Click();
    ql::Database& wage = open.context.WageDatabase;
    const bool gone =
        ql::IsNull(wage.scalar(QStringLiteral("SELECT WageID FROM Wages WHERE WageID = %1").arg(wageID)));
    if (!gone) {
        const QString said = open.lastMessageSince(mark);
        throw cli::CliFailure(yes ? said : QStringLiteral("Pay %1 was not deleted: give --yes to delete it.").arg(wageID));
    }
    auto record = wage.openRecordset(
        QStringLiteral("SELECT * FROM QuillaryDeletedPays WHERE WageID = %1").arg(wageID), ql::RecordsetType::Snapshot);
    out << "{\n  \"Deleted\": " << cli::jsonRow(*record) << "\n}\n";
    return 0;
}

const cli::CliCommand deletePayCommand("delete-pay", "delete-pay WAGE_ID [--yes]", deletePay);

} // namespace
