#include "TaxItemsWidget.h"
#include "AccessKeys.h"
#include "payengine/EmployeeTaxItems.h"
#include "payengine/TaxItemOptions.h"
#include "payengine/TaxYearStore.h"
#include <QDate>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace ql {

namespace {

const char* hint(const TaxItemOption& o) {
    if (o.option == QLatin1String("esct-rate")) return "by the rule";
    return o.rate ? "none" : "0.00";
}

} // namespace

TaxItemsWidget::TaxItemsWidget(QString& takenKeys, QWidget* parent) : QGroupBox(QStringLiteral("Tax items"), parent) {
    setObjectName(QStringLiteral("grpTaxItems"));
    setAccessibleName(QStringLiteral("Tax items"));
    auto* form = new QFormLayout(this);
    QLineEdit* previous = nullptr;
    for (const TaxItemOption& o : TaxItemOptions()) {
        auto* e = new QLineEdit(this);
        e->setObjectName(QStringLiteral("txt_") + QString(o.option).remove(u'-'));
        e->setAccessibleName(o.label);
        e->setPlaceholderText(QString::fromLatin1(hint(o)));
        auto* label = new QLabel(WithAccessKey(o.label + (o.rate ? QStringLiteral(" (%)") : QString()), takenKeys), this);
        label->setBuddy(e);
        form->addRow(label, e);
        if (previous) setTabOrder(previous, e);
        previous = e;
        m_boxes.insert(o.option, e);
    }
}

QWidget* TaxItemsWidget::firstField() const {
    return m_boxes.value(TaxItemOptions().first().option);
}

QWidget* TaxItemsWidget::lastField() const {
    return m_boxes.value(TaxItemOptions().last().option);
}

void TaxItemsWidget::load(Database& wage, qint32 employeeID) {
    const EmployeeTaxItems items = employeeID > 0 ? LoadEmployeeTaxItems(wage, employeeID) : EmployeeTaxItems{};
    for (const TaxItemOption& o : TaxItemOptions()) m_boxes.value(o.option)->setText(TaxItemText(items, o.option));
    // A rate kept for another tax year is worked out again by the rule: it is not this year's.
    const auto year = TaxYearInForce(wage, QDate::currentDate());
    if (!year || items.esctRateYear != year->taxYear) m_boxes.value(QStringLiteral("esct-rate"))->clear();
    m_esctShown = m_boxes.value(QStringLiteral("esct-rate"))->text();
}

QList<QPair<QString, QString>> TaxItemsWidget::typedValues() const {
    QList<QPair<QString, QString>> values;
    for (const TaxItemOption& o : TaxItemOptions()) {
        const QString t = m_boxes.value(o.option)->text();
        if (o.option == QLatin1String("esct-rate") && t.trimmed() == m_esctShown.trimmed()) continue;
        values << qMakePair(o.option, t);
    }
    return values;
}

QString TaxItemsWidget::problem(QString& option) const {
    // One value at a time, so the problem names its box.
    EmployeeTaxItems items;
    for (const auto& value : typedValues()) {
        qint32 esct = -1;
        const QString p = ApplyTaxItemValues(items, esct, {value});
        if (!p.isEmpty()) {
            option = value.first;
            return p;
        }
    }
    option.clear();
    return QString();
}

void TaxItemsWidget::save(Database& wage, qint32 employeeID) const {
    EmployeeTaxItems items = LoadEmployeeTaxItems(wage, employeeID);
    items.employeeID = employeeID;
    qint32 esct = -1;
    if (!ApplyTaxItemValues(items, esct, typedValues()).isEmpty()) return;
    // A rate typed is the employer's choice for the tax year in force today, as on the command line.
    if (esct >= 0) SetEsctRate(wage, items, esct, QDate::currentDate());
    SaveEmployeeTaxItems(wage, items);
    // The standing deductions were just written from the editor's list: the items' lines go back in.
    SyncStandingTaxItemLines(wage, LoadEmployeeTaxItems(wage, employeeID));
}

} // namespace ql
