// The pays of an employee, one pay with its lines, and adding a pay as the wage screen does.
#include "CliCommand.h"
#include "JsonRows.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "ledger/Roster.h"
#include "startup/Startup.h"
#include "ledger/WageScreen.h"
#include "PayScreen.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"

namespace {

// The names of a pay's lines as the grids show them.
const QString kPaymentName = QStringLiteral(
    "iif(PaymentNames.Calculation>0, PaymentNames.PayUnitname || ' (x' || vbstr(PaymentNames.Calculation) || ')', "
    "PaymentNames.PayUnitname) AS PaymentName");

qint32 idArgument(const QString& text) {
    bool ok = false;
    const qint32 id = text.toInt(&ok);
    if (!ok)
        throw cli::CliUsageError();
    return id;
}

using cli::Session;

QString payJson(ql::Database& db, qint32 wageID) {
    auto wage = db.openRecordset(QStringLiteral("SELECT * FROM Wages WHERE WageID = %1").arg(wageID),
                                 ql::RecordsetType::Snapshot);
    if (wage->EOF_())
        throw cli::CliFailure(QStringLiteral("There is no pay %1.").arg(wageID));
    const QString row = cli::jsonRow(*wage);
    wage->Close();
    const QString w = QString::number(wageID);
    const QList<std::pair<QString, QString>> details{
        {QStringLiteral("PaymentDetails"),
         QStringLiteral("SELECT PaymentDetails.WageID, PaymentDetails.PaymentNameID, ") + kPaymentName +
             QStringLiteral(", PaymentDetails.DetailHours, PaymentDetails.EquivPayRate, PaymentDetails.Payment "
                            "FROM PaymentDetails LEFT JOIN PaymentNames ON PaymentDetails.PaymentNameID = "
                            "PaymentNames.PaymentNameID WHERE PaymentDetails.WageID = ") +
             w + QStringLiteral(" ORDER BY PaymentDetails.rowid")},
        {QStringLiteral("TaxAllowDetails"),
         QStringLiteral("SELECT TaxAllowDetails.WageID, TaxAllowDetails.TaxNameID, TaxAllowName.taxAllowancename, "
                        "TaxAllowDetails.Amountcalcon, TaxAllowDetails.taxallowrate, TaxAllowDetails.TaxableAllow "
                        "FROM TaxAllowDetails LEFT JOIN TaxAllowName ON TaxAllowDetails.TaxNameID = "
                        "TaxAllowName.TaxNameID WHERE TaxAllowDetails.WageID = ") +
             w + QStringLiteral(" ORDER BY TaxAllowDetails.rowid")},
        {QStringLiteral("NonTaxAllowDetails"),
         QStringLiteral("SELECT NonTaxAllowDetails.WageID, NonTaxAllowDetails.NonTaxNameID, "
                        "NonTaxAllowName.NonTaxallowname, NonTaxAllowDetails.Amountcalcon, NonTaxAllowDetails.NonTaxRate, "
                        "NonTaxAllowDetails.NonTaxAllow FROM NonTaxAllowDetails LEFT JOIN NonTaxAllowName ON "
                        "NonTaxAllowDetails.NonTaxNameID = NonTaxAllowName.NonTaxNameID WHERE NonTaxAllowDetails.WageID = ") +
             w + QStringLiteral(" ORDER BY NonTaxAllowDetails.rowid")},
        {QStringLiteral("DeductionDetails"),
         QStringLiteral("SELECT DeductionDetails.WageID, DeductionDetails.DeductNameID, DeductNames.DeductionName, "
                        "DeductionDetails.AmountCalcon, DeductionDetails.Percentage, DeductionDetails.Deductions "
                        "FROM DeductionDetails LEFT JOIN DeductNames ON DeductionDetails.DeductNameID = "
                        "DeductNames.DeductNameID WHERE DeductionDetails.WageID = ") +
             w + QStringLiteral(" ORDER BY DeductionDetails.rowid")},
        {QStringLiteral("ContributionDetails"),
         QStringLiteral("SELECT ContributionDetails.WageID, ContributionDetails.ContributionNameID, "
                        "ContributionNames.ContributionName, ContributionDetails.AmountCalcon, "
                        "ContributionDetails.Percentage, ContributionDetails.ESCT, ContributionDetails.Contributions "
                        "FROM ContributionDetails LEFT JOIN ContributionNames ON ContributionDetails.ContributionNameID = "
                        "ContributionNames.ContributionNameID WHERE ContributionDetails.WageID = ") +
             w + QStringLiteral(" ORDER BY ContributionDetails.rowid")},
        {QStringLiteral("TaxDetails"),
         QStringLiteral("SELECT TaxDetails.WageID, TaxDetails.PayIntervalID, TaxDetails.TaxableAmount, "
                        "TaxDetails.TaxTypeID, TaxTypes.Taxname, TaxDetails.PAYE FROM TaxDetails LEFT JOIN TaxTypes ON "
                        "TaxDetails.TaxTypeID = TaxTypes.TaxTypeID WHERE TaxDetails.WageID = ") +
             w}};
    QStringList parts{QStringLiteral("  \"Wages\": ") + row};
    for (const auto& [name, sql] : details)
        parts << QStringLiteral("  ") + cli::jsonString(name) + QStringLiteral(": ") + cli::jsonRows(db, sql, 2);
    return QStringLiteral("{\n") + parts.join(QStringLiteral(",\n")) + QStringLiteral("\n}");
}

int pays(const QStringList& args, QTextStream& out) {
    if (args.size() != 1)
        throw cli::CliUsageError();
    const qint32 employeeID = idArgument(args.at(0));
    Session session;
    out << cli::jsonRows(session.context.WageDatabase,
                         QStringLiteral("SELECT * FROM Wages WHERE EmployeeID = %1 ORDER BY Wages.Date, Wages.WageID")
                             .arg(employeeID))
        << "\n";
    return 0;
}

int pay(const QStringList& args, QTextStream& out) {
    if (args.size() != 1)
        throw cli::CliUsageError();
    const qint32 wageID = idArgument(args.at(0));
    out << cli::payText(wageID) << "\n";
    return 0;
}

// Picks the employee on the wage screen, then adds a pay with the add pay button or, with a date, by
// the calendar's "add". An employee without pays is asked for a first pay when picked: that pay is the
// one added, on the given date or today.
int addPay(const QStringList& args, QTextStream& out) {
    if (args.isEmpty() || args.size() > 2)
        throw cli::CliUsageError();
    const qint32 employeeID = idArgument(args.at(0));
    QDate date;
    if (args.size() == 2) {
        date = QDate::fromString(args.at(1), Qt::ISODate);
        if (!date.isValid())
            throw cli::CliUsageError();
    }
    Session session;
    ql::AppContext& app = session.context;
    ql::FillEmployeeArray();
    int item = -1;
    for (int i = 1; i < app.EmployeeArray.size(); ++i)
        if (app.EmployeeArray.at(i).EmployeeID == employeeID)
            item = i - 1;
    if (item < 0)
        throw cli::CliFailure(QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));

    ql::WageScreen screen;
    app.WageForm = &screen;
    ql::InitData(screen);
    for (int i = 1; i < app.EmployeeArray.size(); ++i)
        screen.cboEmployeeItems.append({app.EmployeeArray.at(i).NameLastFirst, app.EmployeeArray.at(i).EmployeeID});

    const QVariant highest = app.WageDatabase.scalar(QStringLiteral("SELECT max(WageID) FROM Wages"));
    const qint32 before = ql::IsNull(highest) ? 0 : ql::CLng(highest);
    if (date.isValid())
        session.dialogs.queueInput(ql::Format(QVariant(date), QStringLiteral("Short date")));
    const int promptsBefore = session.dialogs.calls.size();
    screen.selectEmployeeItem(item);
    bool firstPayAsked = false;
    for (int i = promptsBefore; i < session.dialogs.calls.size(); ++i)
        firstPayAsked = firstPayAsked || session.dialogs.calls.at(i).kind == ql::DialogCall::Input;
    if (!firstPayAsked) {
        if (!screen.TaxCodeTest())
            throw cli::CliFailure(session.dialogs.calls.last().message.replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
        if (date.isValid()) {
            screen.showAddEdit = [](ql::WageScreen&) { ql::calendarChoice().AddPayChoice = true; };
            screen.CalWage_DateClick(date);
        } else {
            screen.cmdAddPay_Click();
        }
    }
    // The screen stores its pay as it closes.
    screen.datPays.UpdateRecord();
    const QVariant added = app.WageDatabase.scalar(
        QStringLiteral("SELECT min(WageID) FROM Wages WHERE EmployeeID = %1 AND WageID > %2").arg(employeeID).arg(before));
    if (ql::IsNull(added))
        throw cli::CliFailure(QStringLiteral("No pay was added."));
    out << payJson(app.WageDatabase, ql::CLng(added)) << "\n";
    return 0;
}

cli::CliCommand paysCommand("pays", "pays EMPLOYEE_ID", pays);
cli::CliCommand payCommand("pay", "pay WAGE_ID", pay);
cli::CliCommand addPayCommand("add-pay", "add-pay EMPLOYEE_ID [YYYY-MM-DD]", addPay);

} // namespace

// --- what `pay` prints: the stored pay, then its summary labels and payslip rows as the screen shows them
namespace cli {
QString payText(qint32 wageID) {
    QString stored;
    {
        Session session;
        stored = payJson(session.context.WageDatabase, wageID);
    }
    return withScreenView(stored, wageID);
}
} // namespace cli
