// Editing a pay as a user does on the wage screen: a cell of a detail view, a removed line, the PAYE
// box, and the payslip lines (or, with --pdf, the printed payslip).
#include "CliCommand.h"
#include "PayScreen.h"
#include "PaySlipEmail.h"
#include "ReportCommands.h"
#include "data/GridArray.h"
#include "payengine/PayTotals.h"

namespace {

int intArgument(const QString& text) {
    bool ok = false;
    const int v = text.toInt(&ok);
    if (!ok)
        throw cli::CliUsageError();
    return v;
}

// The detail views that hold lines.
int detailTab(const QString& text) {
    const int tab = intArgument(text);
    if (tab != 1 && tab != 2 && tab != 4 && tab != 5 && tab != 7)
        throw cli::CliUsageError();
    return tab;
}

// What `pay` prints, by running it on the stored result.
int printPay(qint32 wageID, QTextStream& out) {
    out << cli::payText(wageID) << "\n";
    return 0;
}

// Leaving the view is the save; the list then stores the labels' figures in the pay's row.
void leaveView(cli::PayScreen& open) {
    open.screen.tgrdwages_LostFocus();
    open.screen.datPays.UpdateRecord();
}

int edit(const QStringList& args, QTextStream& out) {
    if (args.size() != 5)
        throw cli::CliUsageError();
    const qint32 wageID = intArgument(args.at(0));
    const int tab = detailTab(args.at(1));
    const int row = intArgument(args.at(2));
    const int column = intArgument(args.at(3));
    {
        cli::PayScreen open(wageID);
        ql::WageScreen& screen = open.screen;
        screen.cmdSelect_Click(tab);
        ql::GridArray& grid = screen.WageGridArray;
        if (row < 0 || row > grid.rowCount() || column < 1 || column >= grid.columnCount())
            throw cli::CliFailure(QStringLiteral("There is no cell %1, %2 in that view.").arg(row).arg(column));
        const int mark = open.dialogs.calls.size();
        if (row == grid.rowCount()) {
            // A new line: refused on a committed pay like any other change.
            if (screen.tgrdwages_BeforeRowChange())
                throw cli::CliFailure(open.lastMessageSince(mark));
            grid.insertRow(row);
        }
        if (screen.tgrdwages_BeforeColEdit(column) || !screen.storeCell(row, column, args.at(4)))
            throw cli::CliFailure(open.lastMessageSince(mark));
        leaveView(open);
    }
    return printPay(wageID, out);
}

int deleteLine(const QStringList& args, QTextStream& out) {
    if (args.size() != 3)
        throw cli::CliUsageError();
    const qint32 wageID = intArgument(args.at(0));
    const int tab = detailTab(args.at(1));
    const int row = intArgument(args.at(2));
    {
        cli::PayScreen open(wageID);
        ql::WageScreen& screen = open.screen;
        screen.cmdSelect_Click(tab);
        if (row < 0 || row >= screen.WageGridArray.rowCount())
            throw cli::CliFailure(QStringLiteral("There is no line %1 in that view.").arg(row));
        const int mark = open.dialogs.calls.size();
        if (screen.tgrdwages_BeforeRowChange())
            throw cli::CliFailure(open.lastMessageSince(mark));
        screen.WageGridArray.deleteRow(row);
        screen.tgrdwages_AfterRowChange();
        leaveView(open);
    }
    return printPay(wageID, out);
}

int setPaye(const QStringList& args, QTextStream& out) {
    if (args.size() != 2)
        throw cli::CliUsageError();
    const qint32 wageID = intArgument(args.at(0));
    {
        cli::PayScreen open(wageID);
        ql::WageScreen& screen = open.screen;
        screen.cmdSelect_Click(3);
        if (screen.control(QStringLiteral("txtPAYE")).locked)
            throw cli::CliFailure(QStringLiteral("This pay has already been committed (recorded as paid).\n\n"
                                                 "You therefore cannot alter any details relating to this pay."));
        screen.txtPAYE_GotFocus();
        screen.setCaption(QStringLiteral("txtPAYE"), args.at(1));
        open.dialogs.queueAnswer(6); // the overwrite is confirmed
        screen.txtPAYE_LostFocus();
        screen.datPays.UpdateRecord();
    }
    return printPay(wageID, out);
}

int paySlip(const QStringList& args, QTextStream& out) {
    if (args.size() == 2 && args.at(1) == QLatin1String("--email")) {
        const QString failed = cli::emailPaySlip(intArgument(args.at(0)));
        if (!failed.isEmpty()) throw cli::CliFailure(QStringLiteral("The payslip was not sent: ") + failed);
        out << "sent: " << args.at(0) << "\n";
        return 0;
    }
    if (args.size() == 3 && args.at(1) == QLatin1String("--pdf")) {
        cli::writePaySlipPdf(intArgument(args.at(0)), args.at(2));
        out << args.at(2) << "\n";
        return 0;
    }
    if (args.size() != 1)
        throw cli::CliUsageError();
    cli::PayScreen open(intArgument(args.at(0)));
    open.screen.cmdSelect_Click(6);
    out << cli::paySlipJson(open.context.WageDatabase, 0) << "\n";
    return 0;
}

const cli::CliCommand editCommand("edit", "edit WAGE_ID TAB ROW COLUMN TEXT", edit);
const cli::CliCommand deleteLineCommand("delete-line", "delete-line WAGE_ID TAB ROW", deleteLine);
const cli::CliCommand setPayeCommand("set-paye", "set-paye WAGE_ID VALUE", setPaye);
// The payslip paints only with --pdf, but the command is one: it runs in a GUI application.
const cli::CliCommand paySlipCommand("payslip", "payslip WAGE_ID [--pdf FILE | --email]", paySlip, true);

} // namespace
