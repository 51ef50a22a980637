// A one-off pay as the dialog makes it when OK is pressed.
#include "CliCommand.h"
#include "PayScreen.h"
#include "ledger/Roster.h"
#include "payengine/AddPay.h"
#include "payengine/ExtraPay.h"
#include "payengine/OneOff.h"
#include "data/RoundCurrency.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"

namespace {

qint32 idArgument(const QString& text) {
    bool ok = false;
    const qint32 id = text.toInt(&ok);
    if (!ok || id < 0) throw cli::CliUsageError();
    return id;
}

// The employee stands as the current one; the date, the payment type, the amount and the tax type are
// entered in the dialog's order, each box left as a user leaves it; then OK. An id of 0 leaves its list
// without a choice: no payment type makes no pay, no tax type a pay without tax.
// --not-liable-for-levy AMOUNT: of an extra pay, the part not liable for the ACC earners' levy (a
// redundancy or retiring payment), typed into the dialog's box for it before the amount.
int oneOff(QStringList args, QTextStream& out) {
    QString notLiable;
    const int option = args.indexOf(QStringLiteral("--not-liable-for-levy"));
    if (option >= 0) {
        if (option + 1 >= args.size()) throw cli::CliUsageError();
        notLiable = args.at(option + 1).trimmed();
        args.remove(option, 2);
    }
    if (args.size() != 5) throw cli::CliUsageError();
    const qint32 employeeID = idArgument(args.at(0));
    const QDate date = QDate::fromString(args.at(1), Qt::ISODate);
    if (!date.isValid()) throw cli::CliUsageError();
    const QString amount = args.at(2);
    const qint32 paymentNameID = idArgument(args.at(3));
    const qint32 taxTypeID = idArgument(args.at(4));

    qint32 made = 0;
    {
        cli::Session session;
        ql::AppContext& app = session.context;
        ql::FillEmployeeArray();
        ql::SetEmpArray(employeeID, QStringLiteral("employee"));
        if (app.CurrentEmployeeID != employeeID || employeeID == 0)
            throw cli::CliFailure(QStringLiteral("Employee %1 is not on the payroll.").arg(employeeID));

        ql::OneOffForm form;
        form.Form_Load(date);
        form.Text1_GotFocus(0);
        form.Text1[0] = ql::Format(QVariant(date), QStringLiteral("short date"));
        form.Text1_LostFocus(0);
        if (paymentNameID != 0 && !ql::OneOffForm::selectByItemData(form.cmbPayName, paymentNameID))
            throw cli::CliFailure(QStringLiteral("There is no payment name %1.").arg(paymentNameID));
        if (taxTypeID != 0) {
            if (!ql::OneOffForm::selectByItemData(form.cmbTaxType, taxTypeID))
                throw cli::CliFailure(
                    QStringLiteral("Tax type %1 is not offered: only tax types of one step (flat rates) are.")
                        .arg(taxTypeID));
            form.cmbTaxType_Click();
        }
        if (!notLiable.isEmpty()) {
            if (!ql::IsNumeric(notLiable) || ql::RoundCurrency(notLiable) < ql::Currency())
                throw cli::CliFailure(
                    QStringLiteral("The part not liable for the ACC earners' levy, \"%1\", is not an amount.").arg(notLiable));
            if (taxTypeID == 0 || !ql::IsExtraPayTaxType(app.WageDatabase, taxTypeID))
                throw cli::CliFailure(
                    QStringLiteral("Only an extra pay has a part not liable for the ACC earners' levy."));
            if (ql::IsNumeric(amount) && ql::RoundCurrency(notLiable) > ql::RoundCurrency(amount))
                throw cli::CliFailure(
                    QStringLiteral("The part not liable for the ACC earners' levy is more than the amount."));
            form.notLiableText = notLiable;
        }
        form.Text1_GotFocus(1);
        form.Text1[1] = amount;
        form.Text1_LostFocus(1);
        form.cmdOK_Click();
        made = form.madeWageID;
    }
    if (made == 0) throw cli::CliFailure(QStringLiteral("No pay was made."));
    out << cli::payText(made) << "\n";
    return 0;
}

cli::CliCommand oneOffCommand("one-off",
                              "one-off EMPLOYEE_ID YYYY-MM-DD AMOUNT PAYMENT_NAME_ID TAX_TYPE_ID "
                              "[--not-liable-for-levy AMOUNT]",
                              oneOff);

} // namespace
