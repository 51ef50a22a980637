#include "PaySlipLines.h"
#include "data/Database.h"
#include "data/GridArray.h"
#include "data/GridHelpers.h"
#include "data/Recordset.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "payengine/Contributions.h"
#include "payengine/Deductions.h"
#include "payengine/PayTaxFigures.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include <QLocale>
#include <QPair>

namespace ql {

namespace {

const QString kFixed = QStringLiteral("fixed");
const QString kIndent = QStringLiteral("    ");

QString fixed(const QVariant& v) { return IsNull(v) ? QString() : Format(v, kFixed); }
QString fixed(float f) { return Format(QVariant(f), kFixed); }

// The amount of a line is "above 0" only when it is a number above 0; Null is not.
bool above0(const QVariant& v) { return !IsNull(v) && IsNumeric(v) && CDbl(v) > 0.0; }

void blankLine(PaySlipRows& rs) { AddPaySlipRec(rs, {}, {}, {}, {}, {}); }

// A Single less a Currency is a Currency, kept in the running Single.
float lessCurrency(float running, Currency c) { return (Currency::fromSingle(running) - c).toSingle(); }

QString taxableAllowancesSQL(qint32 wageID) {
    return QStringLiteral("SELECT TaxAllowName.[taxAllowancename], TaxAllowDetails.[Amountcalcon], "
                          "TaxAllowDetails.[taxallowrate], TaxAllowDetails.[TaxableAllow] "
                          "FROM TaxAllowName INNER JOIN TaxAllowDetails ON TaxAllowName.[TaxNameID] = "
                          "TaxAllowDetails.[TaxNameID] WHERE TaxAllowDetails.[WageID]= %1")
        .arg(wageID);
}

QString nonTaxableAllowancesSQL(qint32 wageID) {
    return QStringLiteral("SELECT NonTaxAllowName.[NonTaxallowname], NonTaxAllowDetails.[Amountcalcon], "
                          "NonTaxAllowDetails.[NonTaxRate], NonTaxAllowDetails.[NonTaxAllow] "
                          "FROM NonTaxAllowName INNER JOIN NonTaxAllowDetails ON NonTaxAllowName.[NonTaxNameID] = "
                          "NonTaxAllowDetails.[NonTaxNameID] WHERE NonTaxAllowDetails.[WageID]= %1")
        .arg(wageID);
}

QString deductionsSQL(qint32 wageID) {
    return QStringLiteral("SELECT DeductNames.[Deductionname], DeductionDetails.[AmountCalcon], "
                          "DeductionDetails.[Percentage], DeductionDetails.[Deductions] "
                          "FROM DeductNames INNER JOIN DeductionDetails ON DeductNames.[DeductNameID] = "
                          "DeductionDetails.[DeductNameID] WHERE DeductionDetails.[WageID]= %1")
        .arg(wageID);
}

QString contributionsSQL(qint32 wageID) {
    return QStringLiteral("SELECT ContributionNames.[Contributionname], ContributionDetails.[AmountCalcon], "
                          "ContributionDetails.[Percentage], ContributionDetails.[Contributions] "
                          "FROM ContributionNames INNER JOIN ContributionDetails ON "
                          "ContributionNames.[ContributionNameID] = ContributionDetails.[ContributionNameID] "
                          "WHERE ContributionDetails.[WageID]= %1")
        .arg(wageID);
}

// The tax of the pay: its TaxDetails rows above 0.
Currency taxOfPay(qint32 wageID) {
    const QVariant v = App().WageDatabase.scalar(
        QStringLiteral("SELECT Sum(TaxDetails.PAYE) FROM TaxDetails WHERE TaxDetails.WageID = %1 AND TaxDetails.PAYE > 0")
            .arg(wageID));
    return IsNull(v) ? Currency() : CCur(v);
}

} // namespace

void AddPaySlipRec(PaySlipRows& paySlip, const QString& description, const QString& number, const QString& rate,
                   const QString& amount, const QString& total) {
    paySlip.append({description, number, rate, amount, total});
}

float FillPaySlip(const QString& heading, const QString& sql, PaySlipRows& paySlip, bool sumWhenPositive,
                  bool alwaysTotal, bool negateTotal, Currency* exactSum) {
    AddPaySlipRec(paySlip, heading, {}, {}, {}, {});
    float sum = 0.0f;
    Currency exact;
    auto rs = App().WageDatabase.openRecordset(sql, RecordsetType::Snapshot);
    while (!rs->EOF_()) {
        const QVariant amount = rs->value(3);
        if (above0(amount)) {
            const QString shown = fixed(amount);
            AddPaySlipRec(paySlip, kIndent + CStr(rs->value(0)), fixed(rs->value(1)), fixed(rs->value(2)), shown,
                          {});
            // The sum is of what the slip shows, so the grid adds up to what is printed.
            sum = sum + CSng(shown);
            exact += CCur(shown);
        }
        rs->MoveNext();
    }
    rs->Close();
    if (sumWhenPositive) {
        if (sum > 0.0f) {
            AddPaySlipRec(paySlip, {}, {}, {}, {}, fixed(negateTotal ? -sum : sum));
        } else {
            paySlip.last().amount = fixed(sum);
        }
    }
    if (alwaysTotal)
        AddPaySlipRec(paySlip, {}, {}, {}, {}, fixed(sum));
    if (exactSum) *exactSum = exact;
    return sum;
}

QString GetPaymentLinesSQL(qint32 wageID, bool withKeys) {
    QString sql = QStringLiteral("SELECT iif(PaymentNames.[Calculation]>0,PaymentNames.[PayUnitname] || ' (x' || "
                                 "vbstr(PaymentNames.[Calculation]) || ')',PaymentNames.[PayUnitname]) AS [PaymentName], ");
    if (withKeys)
        sql += QStringLiteral("PaymentNames.[PaymentNameID], ");
    sql += QStringLiteral("PaymentDetails.[DetailHours], PaymentDetails.[EquivPayRate], ");
    if (withKeys)
        sql += QStringLiteral("PaymentNames.[Salary], ");
    sql += QStringLiteral("PaymentDetails.[Payment] FROM PaymentNames INNER JOIN PaymentDetails ON "
                          "PaymentNames.[PaymentNameID] = PaymentDetails.[PaymentnameID] "
                          "WHERE PaymentDetails.[WageID] = %1;")
               .arg(wageID);
    return sql;
}

namespace {

// All rows in one statement: one write instead of one per row.
void writePaySlip(Database& db, const PaySlipRows& rows) {
    if (rows.isEmpty()) return;
    QString sql = QStringLiteral("INSERT INTO PaySlip (Description, Number, Rate, Amount, Total) VALUES ");
    QVariantList params;
    params.reserve(rows.size() * 5);
    for (int i = 0; i < rows.size(); ++i) {
        const PaySlipLine& r = rows.at(i);
        sql += i == 0 ? QStringLiteral("(?,?,?,?,?)") : QStringLiteral(",(?,?,?,?,?)");
        params << r.description << r.number << r.rate << r.amount << r.total;
    }
    db.execute(sql, params);
}

// The summary labels a slip sets, in order, so that they can be set again without rebuilding it.
struct SlipCaptions {
    PayView& form;
    QVector<QPair<QString, QString>> shown;
    void show(const QString& label, const QString& text) {
        form.setCaption(label, text);
        shown.append({label, text});
    }
};

// What the last slip was made from, and the labels it set. The database mark is taken after the slip
// was written, inside the transaction that wrote it.
struct SlipMemo {
    Database::ChangeMark mark;
    const PayView* form = nullptr;
    qint32 wageID = 0;
    qint32 employeeID = 0;
    QString payDate;
    QString payeName;
    QLocale locale;
    QVector<QPair<QString, QString>> captions;

    bool sameInputs(const SlipMemo& o) const {
        return mark == o.mark && form == o.form && wageID == o.wageID && employeeID == o.employeeID &&
               payDate == o.payDate && payeName == o.payeName && locale == o.locale;
    }
};

SlipMemo& lastSlip() {
    static SlipMemo memo;
    return memo;
}

SlipMemo slipInputs(const PayView& form, const Database& db) {
    SlipMemo inputs;
    inputs.mark = db.changeMark();
    inputs.form = &form;
    inputs.wageID = App().CurrentWageID;
    inputs.employeeID = App().CurrentEmployeeID;
    inputs.payDate = form.caption(QStringLiteral("lblPayDate"));
    inputs.payeName = PayAsYouEarn();
    return inputs;
}

void fillPaySlip(PayView& form, const QString& payeName, PaySlipRows& rs, SlipCaptions& captions) {
    const qint32 wageID = App().CurrentWageID;
    // Labels without a format take the Single's own text and format themselves.
    // A figure the pay stores is the sum of its lines to the cent, never a Single's near miss of it
    // (283.33 and 608.72 make 892.0499 as a Single).
    Currency exact;
    const float gross =
        FillPaySlip(QStringLiteral("Gross"), GetPaymentLinesSQL(wageID, false), rs, false, true, false, &exact);
    float running = gross;
    captions.show(QStringLiteral("lblGross"), CStr(exact));

    const float taxable = FillPaySlip(QStringLiteral("Taxable Allowances"), taxableAllowancesSQL(wageID), rs, true,
                                      false, false, &exact);
    running = running + taxable;
    captions.show(QStringLiteral("lblTaxable"), CStr(exact));

    blankLine(rs);
    AddPaySlipRec(rs, QStringLiteral("Total Taxable"), {}, {}, {}, Format(QVariant(running), QStringLiteral("Fixed")));
    captions.show(QStringLiteral("lblTotalTaxable"), Format(QVariant(running), QStringLiteral("Fixed")));

    const Currency paye = taxOfPay(wageID);
    // The pay's PAYE is already less the payroll giving credit: the slip shows the tax before it and
    // the credit, so the employee sees what the donations gave back.
    const Currency credit = paye > Currency() ? LoadPayTaxFigures(App().WageDatabase, wageID).givingCredit : Currency();
    if (credit > Currency()) {
        AddPaySlipRec(rs, payeName, {}, {}, {}, Format(QVariant::fromValue(-(paye + credit)), kFixed));
        AddPaySlipRec(rs, QStringLiteral("Payroll Giving Credit"), {}, {}, {}, Format(QVariant::fromValue(credit), kFixed));
    } else {
        AddPaySlipRec(rs, payeName, {}, {}, {}, Format(QVariant::fromValue(-paye), kFixed));
    }
    running = lessCurrency(running, paye);
    captions.show(QStringLiteral("lblPaye"), Format(QVariant::fromValue(paye), QStringLiteral("currency")));

    AddPaySlipRec(rs, QStringLiteral("Net"), {}, {}, {}, fixed(running));
    blankLine(rs);

    const float nonTax = FillPaySlip(QStringLiteral("Non Taxable Allowances"), nonTaxableAllowancesSQL(wageID), rs,
                                     true, false, false, &exact);
    running = running + nonTax;
    captions.show(QStringLiteral("lblNonTax"), CStr(exact));

    blankLine(rs);
    const float deductions =
        FillPaySlip(QStringLiteral("Deductions"), deductionsSQL(wageID), rs, true, false, true, &exact);
    running = running - deductions;
    captions.show(QStringLiteral("lblDeduct"), CStr(exact));

    blankLine(rs);
    AddPaySlipRec(rs, QStringLiteral("Take Home Pay"), {}, {}, {}, fixed(running));
    captions.show(QStringLiteral("lblTakehome"), Format(QVariant(running), QStringLiteral("Currency")));

    // Employer contributions are shown to the employee but are no part of the take-home pay.
    if (IsKiwiSaverEnrolled(App().CurrentEmployeeID)) {
        blankLine(rs);
        const float kiwiSaver = FillPaySlip(QStringLiteral("Employer Contributions"), contributionsSQL(wageID), rs,
                                            false, false, false, &exact);
        captions.show(QStringLiteral("lblKiwiSaver"), CStr(exact));
        const Currency credit = GetKiwiSaverCredit(form.caption(QStringLiteral("lblPayDate")));
        const bool creditSmaller = credit.toDouble() < static_cast<double>(kiwiSaver);
        captions.show(QStringLiteral("lblTaxCredit"), creditSmaller ? CStr(credit) : CStr(kiwiSaver));
    }
}

} // namespace

void RefreshPaySlip(PayView& form) {
    trap(QStringLiteral("RefreshPaySlip"), [&] {
        Database& db = App().WageDatabase;
        SlipMemo inputs = slipInputs(form, db);
        SlipMemo& last = lastSlip();
        // One action refreshes the slip several times; while nothing it is made of has changed, the rows
        // written stand and only the labels are set again.
        if (inputs.sameInputs(last)) {
            for (const auto& caption : last.captions)
                form.setCaption(caption.first, caption.second);
            return;
        }
        last = SlipMemo();
        db.execute(QStringLiteral("DELETE FROM PaySlip;"));
        PaySlipRows rows;
        SlipCaptions captions{form, {}};
        // A slip cut short by an error keeps the rows made before it, as when each was written at once.
        try {
            fillPaySlip(form, inputs.payeName, rows, captions);
        } catch (...) {
            writePaySlip(db, rows);
            throw;
        }
        writePaySlip(db, rows);
        inputs.mark = db.changeMark();
        inputs.captions = captions.shown;
        last = inputs;
    });
}

void EnterPaySlip(PayView& form) {
    RefreshPaySlip(form);
    form.WageGridArray = GridArray();
    form.WageGridArray.setHeadings({QStringLiteral("Description"), QStringLiteral("Number"), QStringLiteral("Rate"),
                                    QStringLiteral("Amount"), QStringLiteral("Total")});
    fillgridarray(App().WageDatabase, QStringLiteral("SELECT Description, number, rate, Amount, Total FROM PaySlip;"),
                  form.WageGridArray, false, 5, 0);
    form.refreshGrid();
}

} // namespace ql
