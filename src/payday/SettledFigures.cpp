#include "SettledFigures.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"

namespace ql {

namespace {

// A section of the payslip as the commit adds it: the lines above 0, each at the cents it shows, summed
// exactly and in the Single the slip's running total keeps.
struct Section {
    Currency exact;
    float shown = 0.0f;
};

Section section(Database& wage, const QString& sql) {
    Section s;
    auto rs = wage.openRecordset(sql, RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        const QVariant amount = rs->value(0);
        if (IsNull(amount) || !IsNumeric(amount) || CDbl(amount) <= 0.0) continue;
        const QString text = Format(amount, QStringLiteral("fixed"));
        s.shown = s.shown + CSng(text);
        s.exact += CCur(text);
    }
    rs->Close();
    return s;
}

QString lines(const char* amount, const char* details, const char* names, const char* key, const char* detailKey,
              qint32 wageID) {
    return QStringLiteral("SELECT %2.[%1] FROM %3 INNER JOIN %2 ON %3.[%4] = %2.[%5] WHERE %2.[WageID] = %6")
        .arg(QLatin1String(amount), QLatin1String(details), QLatin1String(names), QLatin1String(key),
             QLatin1String(detailKey))
        .arg(wageID);
}

Currency stored(const QVariantList& row, int i) {
    return i < row.size() && !IsNull(row.at(i)) ? CCur(row.at(i)) : Currency();
}

// A label's text as the pay stores it.
Currency asStored(const QString& caption) {
    return IsNumeric(caption) ? CCur(caption) : Currency();
}

QString amount(Currency c) {
    return Format(QVariant::fromValue(c), QStringLiteral("Standard"));
}

} // namespace

QStringList UnsettledFigures(Database& wage, qint32 wageID) {
    QStringList found;
    const QVariantList row = wage.firstRow(
        QStringLiteral("SELECT Gross, TaxAllow, TotalTaxable, PAYE, NonTaxAllow, Deductions, TakeHome FROM Wages "
                       "WHERE WageID = %1 AND coalesce(OneOff, 0) = 0 AND EXISTS (SELECT 1 FROM PaymentDetails "
                       "WHERE WageID = %1)")
            .arg(wageID));
    if (row.isEmpty()) return found;
    const Section gross = section(
        wage, lines("Payment", "PaymentDetails", "PaymentNames", "PaymentNameID", "PaymentnameID", wageID));
    const Section taxable =
        section(wage, lines("TaxableAllow", "TaxAllowDetails", "TaxAllowName", "TaxNameID", "TaxNameID", wageID));
    const Section nonTaxable = section(
        wage, lines("NonTaxAllow", "NonTaxAllowDetails", "NonTaxAllowName", "NonTaxNameID", "NonTaxNameID", wageID));
    const Section deductions = section(
        wage, lines("Deductions", "DeductionDetails", "DeductNames", "DeductNameID", "DeductNameID", wageID));
    const QVariant taxSum = wage.scalar(
        QStringLiteral("SELECT sum(PAYE) FROM TaxDetails WHERE WageID = %1 AND PAYE > 0").arg(wageID));
    const Currency paye = IsNull(taxSum) ? Currency() : CCur(taxSum);

    // The slip's running total, as its labels give the stored figures.
    float running = gross.shown + taxable.shown;
    const Currency totalTaxable = asStored(Format(QVariant(running), QStringLiteral("Fixed")));
    running = (Currency::fromSingle(running) - paye).toSingle();
    running = running + nonTaxable.shown;
    running = running - deductions.shown;
    const Currency takeHome = asStored(Format(QVariant(running), QStringLiteral("Currency")));

    const auto compare = [&](const QString& name, int column, Currency byLines, const char* source) {
        const Currency kept = stored(row, column);
        if (Cents(kept) != Cents(byLines))
            found << QStringLiteral("%1 %2 stored, %3 by its %4").arg(name, amount(kept), amount(byLines),
                                                                       QLatin1String(source));
    };
    compare(QStringLiteral("gross"), 0, gross.exact, "payment lines");
    compare(QStringLiteral("taxable allowances"), 1, taxable.exact, "allowance lines");
    compare(QStringLiteral("total taxable"), 2, totalTaxable, "lines");
    compare(QStringLiteral("PAYE"), 3, paye, "tax line");
    compare(QStringLiteral("non-taxable allowances"), 4, nonTaxable.exact, "allowance lines");
    compare(QStringLiteral("deductions"), 5, deductions.exact, "deduction lines");
    compare(QStringLiteral("take-home"), 6, takeHome, "lines");

    // The commit works the tax again when its line was worked on another taxable amount.
    const Currency taxableNow = gross.exact + taxable.exact;
    const QVariantList line =
        wage.firstRow(QStringLiteral("SELECT TaxableAmount FROM TaxDetails WHERE WageID = %1").arg(wageID));
    if (line.isEmpty() || IsNull(line.at(0))) {
        if (taxableNow > Currency())
            found << QStringLiteral("no PAYE was worked on its taxable pay of %1").arg(amount(taxableNow));
    } else if (CCur(line.at(0)) != taxableNow) {
        found << QStringLiteral("its PAYE was worked on a taxable pay of %1, its lines give %2")
                     .arg(amount(CCur(line.at(0))), amount(taxableNow));
    }
    return found;
}

QString RefusalForUnsettledPays(Database& wage, const QList<PaydayPay>& pays, const QString& what) {
    QStringList named;
    for (const PaydayPay& p : pays) {
        const QStringList differences = UnsettledFigures(wage, p.wageID);
        if (!differences.isEmpty())
            named << QStringLiteral("%1, reference %2 (pay %3): %4")
                         .arg(p.name(), p.reference)
                         .arg(p.wageID)
                         .arg(differences.join(QStringLiteral("; ")));
    }
    if (named.isEmpty()) return QString();
    return QStringLiteral("No %1 was made. These committed pays store figures that their lines do not give, so the "
                          "file would not show what their payslips show:\n%2\nDelete each of these pays (its "
                          "cashbook withdrawal is reversed), add it again and commit it; then make the file.")
        .arg(what, named.join(u'\n'));
}

} // namespace ql
