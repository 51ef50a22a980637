#pragma once
// What the holiday commands share: the payroll database opened as the program opens it, and the
// conversions of their arguments and answers.
#include "CliCommand.h"
#include "data/Database.h"
#include "frame/ScriptedDialogs.h"
#include "holidays/FinalPay.h"
#include "payengine/FinalPayTax.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QHash>
#include <QJsonValue>

namespace cli {

class HolidaySession {
public:
    HolidaySession();
    ~HolidaySession();
    HolidaySession(const HolidaySession&) = delete;
    HolidaySession& operator=(const HolidaySession&) = delete;
    ql::Database& wage() { return context.WageDatabase; }
    // The employee's name as the roster shows it (last, first); empty when not on it.
    QString employeeName(qint32 employeeID);

    ql::AppContext context;

private:
    ql::ScriptedDialogs dialogs;
    bool m_rosterFilled = false;
};

// Opens the pay as the wage screen does and leaves its payment view: the lines are saved and the pay's
// totals, tax and payslip recalculated, as after an edit of its payment lines. No session may be open.
void RecalculatePay(qint32 wageID);

// A YYYY-MM-DD argument; wrong usage otherwise.
QDate isoDateArgument(const QString& text);
// A whole number argument; wrong usage otherwise.
int wholeArgument(const QString& text);
// Options --name VALUE among the arguments from index `from`, each once and among the allowed ones.
QHash<QString, QString> holidayOptions(const QStringList& args, int from, const QStringList& allowed);
// Money as a JSON number with its exact decimals.
QJsonValue money(ql::Currency c);
QString isoDate(const QDate& d);
// Every figure of a final pay: OWP, AWE, the inputs, each line with its working, the total.
QJsonObject finalPayJson(const ql::holidays::FinalPayResult& r);
// The tax of a final pay: the ordinary part, the holiday pay as an extra pay, and the working.
QJsonObject finalPayTaxJson(const ql::FinalPayTax& t);
// Prints the object as indented JSON.
void printJson(QTextStream& out, const class QJsonObject& o);

} // namespace cli
