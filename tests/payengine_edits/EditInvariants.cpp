// The rules, as the pay's figures are made:
//  - every line of the five detail tables is 0 or more (a typed correction never makes a line negative);
//  - a section's figure (Gross, TaxAllow, NonTaxAllow, Deductions, KiwiSaverContribution) is the sum of its
//    lines above 0, each as the slip shows it (two decimals, "fixed"), added exactly;
//  - TotalTaxable is Gross + TaxAllow in Single, to two decimals, and never below 0;
//  - PAYE is the pay's TaxDetails rows above 0, to the cent;
//  - TakeHome is TotalTaxable - PAYE + NonTaxAllow - Deductions, in Single, to the cent;
//  - under $100,000 a section's figure is within half a cent a line of the plain sum of its lines;
//  - the pay has at most one TaxDetails row, and only with a taxable amount above 0;
//  - each summary label shows its Wages column in the "Currency" format.
#include "EditInvariants.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/Currency.h"
#include "runtime/Format.h"
#include <cmath>

namespace edittest {

using ql::Currency;

namespace {

struct Section {
    float shownSum = 0; // the slip's Single sum of what it shows
    Currency shownExact; // the same sum to the cent
    double plainSum = 0;
    int lines = 0;
    QStringList negative;
};

Section section(ql::Database& db, const QString& table, const QString& column, qint32 wageID) {
    Section s;
    auto rs = db.openRecordset(
        QStringLiteral("SELECT [%1] FROM %2 WHERE WageID = %3").arg(column, table).arg(wageID),
        ql::RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        const QVariant v = rs->value(0);
        if (ql::IsNull(v)) continue;
        const double amount = ql::CDbl(v);
        ++s.lines;
        s.plainSum += amount;
        if (amount < 0) s.negative << QStringLiteral("%1 line of %2").arg(table).arg(amount);
        if (amount > 0) {
            s.shownSum = s.shownSum + ql::CSng(ql::Format(v, QStringLiteral("fixed")));
            s.shownExact += ql::CCur(ql::Format(v, QStringLiteral("fixed")));
        }
    }
    rs->Close();
    return s;
}

Currency cents(const QVariant& v) {
    return ql::CCur(QVariant(ql::Format(v, QStringLiteral("Fixed"))));
}

} // namespace

QStringList payInconsistencies(ql::Database& db, const ql::PayView& view, qint32 wageID, bool enrolled) {
    QStringList out;
    auto row = db.openRecordset(QStringLiteral("SELECT * FROM Wages WHERE WageID = %1").arg(wageID),
                                ql::RecordsetType::Snapshot);
    if (row->EOF_()) return {QStringLiteral("no Wages row %1").arg(wageID)};
    auto col = [&](const char* name) { return ql::CCur(row->value(QString::fromLatin1(name))); };
    const Currency gross = col("Gross"), taxAllow = col("TaxAllow"), totalTaxable = col("TotalTaxable"),
                   paye = col("PAYE"), nonTax = col("NonTaxAllow"), deductions = col("Deductions"),
                   takeHome = col("TakeHome"), kiwiSaver = col("KiwiSaverContribution");
    row->Close();

    const Section pay = section(db, QStringLiteral("PaymentDetails"), QStringLiteral("Payment"), wageID);
    const Section tax =
        section(db, QStringLiteral("TaxAllowDetails"), QStringLiteral("TaxableAllow"), wageID);
    const Section non =
        section(db, QStringLiteral("NonTaxAllowDetails"), QStringLiteral("NonTaxAllow"), wageID);
    const Section ded = section(db, QStringLiteral("DeductionDetails"), QStringLiteral("Deductions"), wageID);
    const Section con =
        section(db, QStringLiteral("ContributionDetails"), QStringLiteral("Contributions"), wageID);
    for (const Section* s : {&pay, &tax, &non, &ded, &con})
        out << s->negative;

    auto expect = [&](const char* what, Currency got, Currency want) {
        if (got != want)
            out << QStringLiteral("%1 is %2, the lines give %3")
                       .arg(QLatin1String(what), got.toFixed4(), want.toFixed4());
    };
    expect("Gross", gross, pay.shownExact);
    expect("TaxAllow", taxAllow, tax.shownExact);
    expect("NonTaxAllow", nonTax, non.shownExact);
    expect("Deductions", deductions, ded.shownExact);
    if (enrolled) expect("KiwiSaverContribution", kiwiSaver, con.shownExact);

    float running = pay.shownSum + tax.shownSum;
    expect("TotalTaxable", totalTaxable, cents(QVariant(running)));
    if (totalTaxable < Currency())
        out << QStringLiteral("TotalTaxable %1 is below zero").arg(totalTaxable.toFixed4());

    const QVariant taxRows = db.scalar(
        QStringLiteral("SELECT Sum(PAYE) FROM TaxDetails WHERE WageID = %1 AND PAYE > 0").arg(wageID));
    const Currency taxOfPay =
        ql::IsNull(taxRows) ? Currency() : cents(QVariant::fromValue(ql::CCur(taxRows)));
    expect("PAYE", paye, taxOfPay);

    running = (Currency::fromSingle(running) - taxOfPay).toSingle();
    running = running + non.shownSum;
    running = running - ded.shownSum;
    expect("TakeHome", takeHome, cents(QVariant(running)));

    for (const auto& [name, s, figure] :
         {std::tuple{"Gross", &pay, gross}, std::tuple{"TaxAllow", &tax, taxAllow},
          std::tuple{"NonTaxAllow", &non, nonTax}, std::tuple{"Deductions", &ded, deductions}}) {
        if (std::abs(s->plainSum) < 100000 &&
            std::abs(figure.toDouble() - s->plainSum) > 0.005 * s->lines + 0.0001)
            out << QStringLiteral("%1 %2 is away from its lines' sum %3")
                       .arg(QLatin1String(name), figure.toFixed4())
                       .arg(s->plainSum, 0, 'f', 4);
    }

    const int detailRows =
        db.scalar(QStringLiteral("SELECT count(*) FROM TaxDetails WHERE WageID = %1").arg(wageID)).toInt();
    const QVariant detailTaxable =
        db.scalar(QStringLiteral("SELECT min(TaxableAmount) FROM TaxDetails WHERE WageID = %1").arg(wageID));
    if (detailRows > 1) out << QStringLiteral("%1 TaxDetails rows").arg(detailRows);
    if (detailRows == 1 && ql::CCur(detailTaxable) <= Currency())
        out << QStringLiteral("a TaxDetails row with a taxable amount of %1").arg(ql::CStr(detailTaxable));

    const std::pair<const char*, Currency> labels[] = {
        {"lblGross", gross},       {"lblTaxable", taxAllow}, {"lblTotalTaxable", totalTaxable},
        {"lblPaye", paye},         {"lblNonTax", nonTax},    {"lblDeduct", deductions},
        {"lblTakehome", takeHome},
    };
    for (const auto& [label, value] : labels) {
        const QString shown = view.caption(QString::fromLatin1(label));
        const QString want = ql::Format(QVariant::fromValue(value), QStringLiteral("Currency"));
        if (shown != want)
            out << QStringLiteral("%1 shows %2, the row holds %3").arg(QLatin1String(label), shown, want);
    }
    return out;
}

} // namespace edittest
