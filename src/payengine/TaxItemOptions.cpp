#include "TaxItemOptions.h"
#include "data/RoundCurrency.h"

namespace ql {

namespace {

qint32 EmployeeTaxItems::*rateMember(const QString& option) {
    if (option == QLatin1String("esct-rate")) return &EmployeeTaxItems::esctRate;
    if (option == QLatin1String("sl-special-rate")) return &EmployeeTaxItems::slSpecialRate;
    if (option == QLatin1String("sl-commissioner-rate")) return &EmployeeTaxItems::slCommissionerRate;
    return nullptr;
}

Currency EmployeeTaxItems::*amountMember(const QString& option) {
    if (option == QLatin1String("child-support")) return &EmployeeTaxItems::childSupport;
    if (option == QLatin1String("payroll-giving")) return &EmployeeTaxItems::payrollGiving;
    if (option == QLatin1String("sl-extra")) return &EmployeeTaxItems::slExtra;
    return nullptr;
}

} // namespace

const QList<TaxItemOption>& TaxItemOptions() {
    static const QList<TaxItemOption> options{
        {QStringLiteral("esct-rate"), QStringLiteral("ESCT rate"), true},
        {QStringLiteral("child-support"), QStringLiteral("Child support"), false},
        {QStringLiteral("payroll-giving"), QStringLiteral("Payroll giving"), false},
        {QStringLiteral("sl-special-rate"), QStringLiteral("Student loan special rate"), true},
        {QStringLiteral("sl-commissioner-rate"), QStringLiteral("Student loan commissioner's rate"), true},
        {QStringLiteral("sl-extra"), QStringLiteral("Student loan extra deductions"), false}};
    return options;
}

const TaxItemOption* FindTaxItemOption(const QString& option) {
    for (const TaxItemOption& o : TaxItemOptions())
        if (o.option == option) return &o;
    return nullptr;
}

QString ApplyTaxItemValues(EmployeeTaxItems& items, qint32& esctRate, const QList<QPair<QString, QString>>& values) {
    esctRate = -1;
    for (const auto& [option, typed] : values) {
        const TaxItemOption* o = FindTaxItemOption(option);
        if (!o) return QStringLiteral("\"%1\" is not a tax item of an employee.").arg(option);
        const QString text = typed.trimmed();
        if (o->rate) {
            // An empty box is no rate of the employee's own.
            qint32 rate = 0;
            if (!text.isEmpty() && !ParseRatePercent(text, rate))
                return QStringLiteral("%1: \"%2\" is not a rate from 0 to 100 per cent.").arg(o->label, text);
            if (option == QLatin1String("esct-rate"))
                esctRate = rate;
            else
                items.*rateMember(option) = rate;
        } else {
            bool ok = text.isEmpty();
            if (!ok) text.toDouble(&ok);
            if (!ok) return QStringLiteral("%1: \"%2\" is not an amount.").arg(o->label, text);
            items.*amountMember(option) = text.isEmpty() ? Currency() : RoundCurrency(text);
        }
    }
    EmployeeTaxItems checked = items;
    if (esctRate >= 0) checked.esctRate = esctRate;
    return EmployeeTaxItemsProblem(checked);
}

QString TaxItemText(const EmployeeTaxItems& items, const QString& option) {
    if (const auto rate = rateMember(option)) return items.*rate > 0 ? RateText(items.*rate) : QString();
    if (const auto amount = amountMember(option)) {
        const Currency c = items.*amount;
        return c > Currency() ? QString::number(c.toDouble(), 'f', 2) : QString();
    }
    return QString();
}

} // namespace ql
