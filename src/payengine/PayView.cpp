#include "PayView.h"
#include "AppContext.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"

namespace ql {

namespace {
const QString kDateLabel = QStringLiteral("lblPayDate");

QString currencyText(const QVariant& v) { return Format(QVariant::fromValue(CCur(v)), QStringLiteral("Currency")); }
} // namespace

PayView::PayView() = default;
PayView::~PayView() = default;

const QHash<QString, QString>& PayView::boundLabels() {
    static const QHash<QString, QString> labels{
        {QStringLiteral("lblPayDate"), QStringLiteral("Date")},
        {QStringLiteral("lblGross"), QStringLiteral("Gross")},
        {QStringLiteral("lblTaxable"), QStringLiteral("TaxAllow")},
        {QStringLiteral("lblTotalTaxable"), QStringLiteral("TotalTaxable")},
        {QStringLiteral("lblPaye"), QStringLiteral("PAYE")},
        {QStringLiteral("lblNonTax"), QStringLiteral("NonTaxAllow")},
        {QStringLiteral("lblDeduct"), QStringLiteral("Deductions")},
        {QStringLiteral("lblTakehome"), QStringLiteral("TakeHome")},
        {QStringLiteral("lblKiwiSaver"), QStringLiteral("KiwiSaverContribution")},
        {QStringLiteral("lblESCT"), QStringLiteral("ESCTDeductions")},
        {QStringLiteral("lblTaxCredit"), QStringLiteral("TaxCreditKiwiSaver")},
    };
    return labels;
}

ControlState& PayView::control(const QString& name) { return m_controls[name]; }

const ControlState& PayView::control(const QString& name) const {
    static const ControlState none;
    auto it = m_controls.constFind(name);
    return it == m_controls.constEnd() ? none : it.value();
}

void PayView::setCaption(const QString& name, const QString& text) {
    auto bound = boundLabels().constFind(name);
    if (bound == boundLabels().constEnd()) {
        control(name).caption = text;
        return;
    }
    if (name == kDateLabel) {
        control(name).caption = IsDate(text) ? Format(CDate(text), QStringLiteral("Short Date")) : text;
        datPays.stage(bound.value(), text);
        return;
    }
    if (IsNumeric(text)) {
        const Currency amount = CCur(text);
        control(name).caption = Format(QVariant::fromValue(amount), QStringLiteral("Currency"));
        datPays.stage(bound.value(), QVariant::fromValue(amount));
    } else {
        control(name).caption = text;
        datPays.stage(bound.value(), text);
    }
}

void PayView::setLabelValue(const QString& label, const QVariant& value) {
    auto bound = boundLabels().constFind(label);
    if (label == kDateLabel) {
        control(label).caption = IsNull(value) ? QString() : Format(value, QStringLiteral("Short Date"));
    } else {
        control(label).caption = IsNull(value) ? QString() : currencyText(value);
    }
    if (bound != boundLabels().constEnd())
        datPays.stage(bound.value(), value);
}

void PayView::showBoundValues() {
    const bool empty = datPays.RecordCount() == 0 || datPays.EOF_() || datPays.BOF();
    for (auto it = boundLabels().cbegin(); it != boundLabels().cend(); ++it) {
        ControlState& c = control(it.key());
        if (it.key() == kDateLabel) {
            const QVariant v = empty ? Null() : datPays.value(it.value());
            c.caption = IsNull(v) ? QString() : Format(v, QStringLiteral("Short Date"));
            continue;
        }
        if (empty) {
            c.caption = currencyText(0);
            continue;
        }
        const QVariant v = datPays.value(it.value());
        c.caption = IsNull(v) ? QString() : currencyText(v);
    }
}

bool GetPayEditable() { return App().PayEditable; }
void SetPayEditable(bool editable) { App().PayEditable = editable; }

void SetPAYELock(ControlState& textBox, bool editable) {
    if (!editable) {
        textBox.backColor = LockedBoxColor;
        textBox.locked = true;
    } else {
        textBox.locked = false;
        textBox.backColor = WindowColor;
    }
}

} // namespace ql
