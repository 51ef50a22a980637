#include "PayScreen.h"
#include "CliCommand.h"
#include "JsonRows.h"
#include "data/Recordset.h"
#include "frame/Messages.h"
#include "ledger/Roster.h"
#include "startup/Startup.h"
#include "payengine/PayTotals.h"
#include "runtime/Convert.h"

namespace cli {

namespace {

const QStringList kLabels{QStringLiteral("lblPayDate"),   QStringLiteral("lblGross"),    QStringLiteral("lblTaxable"),
                          QStringLiteral("lblTotalTaxable"), QStringLiteral("lblPaye"),  QStringLiteral("lblNonTax"),
                          QStringLiteral("lblDeduct"),    QStringLiteral("lblTakehome"), QStringLiteral("lblKiwiSaver"),
                          QStringLiteral("lblESCT"),      QStringLiteral("lblTaxCredit")};

} // namespace

Session::Session() {
    ql::setApp(&context);
    dialogs.setEcho([](const QString& line) { err() << line << "\n"; });
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    ql::OpenWageDatabase();
}

Session::~Session() {
    ql::CloseWageDatabase();
    ql::setDialogs(nullptr);
    ql::setApp(nullptr);
}

PayScreen::PayScreen(qint32 wage) : wageID(wage) {
    ql::setApp(&context);
    dialogs.setEcho([](const QString& line) { err() << line << "\n"; });
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    ql::OpenWageDatabase();
    const QVariant employee =
        context.WageDatabase.scalar(QStringLiteral("SELECT EmployeeID FROM Wages WHERE WageID = %1").arg(wage));
    if (ql::IsNull(employee))
        throw CliFailure(QStringLiteral("There is no pay %1.").arg(wage));
    const qint32 employeeID = ql::CLng(employee);
    ql::FillEmployeeArray();
    context.WageForm = &screen;
    ql::InitData(screen);
    int item = -1;
    for (int i = 1; i < context.EmployeeArray.size(); ++i) {
        screen.cboEmployeeItems.append({context.EmployeeArray.at(i).NameLastFirst, context.EmployeeArray.at(i).EmployeeID});
        if (context.EmployeeArray.at(i).EmployeeID == employeeID)
            item = i - 1;
    }
    if (item < 0)
        throw CliFailure(QStringLiteral("The employee of pay %1 is not on the payroll.").arg(wage));
    screen.selectEmployeeItem(item);
    screen.datPays.MoveFirst();
    while (!screen.datPays.EOF_() && ql::CLng(screen.datPays.value(QStringLiteral("WageID"))) != wage)
        screen.datPays.MoveNext();
    if (screen.datPays.EOF_())
        throw CliFailure(QStringLiteral("Pay %1 is not in its employee's list.").arg(wage));
}

PayScreen::~PayScreen() {
    context.WageForm = nullptr;
    ql::CloseWageDatabase();
    ql::setDialogs(nullptr);
    ql::setApp(nullptr);
}

QString PayScreen::lastMessageSince(int mark) const {
    for (int i = dialogs.calls.size() - 1; i >= mark; --i)
        if (dialogs.calls.at(i).kind == ql::DialogCall::Message)
            return QString(dialogs.calls.at(i).message).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return QString();
}

QString labelsText(const ql::PayView& view) {
    QString text;
    for (const QString& name : kLabels)
        text += name + QStringLiteral(": ") + view.caption(name) + QLatin1Char('\n');
    return text;
}

QString paySlipJson(ql::Database& db, int indent) {
    auto rs = db.openRecordset(QStringLiteral("SELECT Description, Number, Rate, Amount, Total FROM PaySlip"),
                               ql::RecordsetType::Snapshot);
    const QString pad(indent + 2, QLatin1Char(' '));
    QStringList rows;
    while (!rs->EOF_()) {
        QStringList cells;
        for (int i = 0; i < 5; ++i)
            cells << jsonString(rs->value(i).toString());
        rows << pad + QLatin1Char('[') + cells.join(QStringLiteral(", ")) + QLatin1Char(']');
        rs->MoveNext();
    }
    if (rows.isEmpty())
        return QStringLiteral("[]");
    return QStringLiteral("[\n") + rows.join(QStringLiteral(",\n")) + QLatin1Char('\n') + QString(indent, QLatin1Char(' ')) +
           QLatin1Char(']');
}

QString payScreenJson(qint32 wageID) {
    PayScreen open(wageID);
    QStringList labels;
    for (const QString& name : kLabels)
        labels << QStringLiteral("    ") + jsonString(name) + QStringLiteral(": ") + jsonString(open.screen.caption(name));
    // The slip is rebuilt for this pay on a view that is bound to no row, so nothing of the pay changes.
    ql::WageScreen slipView;
    ql::RefreshPaySlip(slipView);
    return QStringLiteral("  \"Labels\": {\n") + labels.join(QStringLiteral(",\n")) + QStringLiteral("\n  },\n") +
           QStringLiteral("  \"PaySlip\": ") + paySlipJson(open.context.WageDatabase, 2);
}

QString withScreenView(const QString& payJson, qint32 wageID) {
    QString text = payJson;
    const int end = text.lastIndexOf(QStringLiteral("\n}"));
    if (end < 0)
        return text;
    return text.left(end) + QStringLiteral(",\n") + payScreenJson(wageID) + QStringLiteral("\n}");
}

} // namespace cli
