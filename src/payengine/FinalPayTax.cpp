#include "FinalPayTax.h"
#include "AppContext.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <cmath>

namespace ql {

namespace {

QString money2(Currency c) {
    return QString::number(c.toDouble(), 'f', 2);
}

QString rateText(qint32 thousandths) {
    QString t = QString::number(thousandths / 1000.0, 'f', 3);
    while (t.endsWith(QLatin1Char('0')))
        t.chop(1);
    if (t.endsWith(QLatin1Char('.'))) t.chop(1);
    return t + QLatin1Char('%');
}

QString namesList() {
    QStringList quoted;
    for (const QString& n : FinalHolidayLineNames())
        quoted << QStringLiteral("'%1'").arg(QString(n).replace(QLatin1Char('\''), QStringLiteral("''")));
    return quoted.join(QLatin1Char(','));
}

// The holiday pay's part: the four weeks up to and including the day (the employee's regular pays other
// than wageID, less their own final holiday lines, and ordinaryCents of the pay itself), over a year (one
// monthly pay a twelfth, all else a thirteenth), and the extra-pay method on t.holiday.
void extraPart(const IrdPayContext& c, qint32 employeeID, qint32 wageID, const QDate& day,
               qint64 ordinaryCents, FinalPayTax& t) {
    Database& db = App().WageDatabase;
    const qint64 holidayCents = CurrencyToCents(t.holiday);
    qint64 fourWeeks = ordinaryCents > 0 ? ordinaryCents : 0;
    int count = ordinaryCents > 0 ? 1 : 0;
    QList<QPair<qint32, Currency>> others;
    {
        auto rs =
            db.openRecordset(QStringLiteral("SELECT WageID, TotalTaxable FROM Wages WHERE EmployeeID = %1 "
                                            "AND coalesce(OneOff, 0) = 0 AND "
                                            "WageID <> %2 AND date([Date]) > '%3' AND date([Date]) <= '%4'")
                                 .arg(employeeID)
                                 .arg(wageID)
                                 .arg(day.addDays(-28).toString(Qt::ISODate), day.toString(Qt::ISODate)),
                             RecordsetType::Snapshot);
        for (; !rs->EOF_(); rs->MoveNext())
            others << qMakePair(CLng(rs->value(0)), IsNull(rs->value(1)) ? Currency() : CCur(rs->value(1)));
        rs->Close();
    }
    for (const auto& [otherID, total] : others) {
        const qint64 regular = CurrencyToCents(total - FinalHolidayAmount(db, otherID));
        if (regular <= 0) continue;
        fourWeeks += regular;
        ++count;
    }
    t.fourWeeks = CentsToCurrency(fourWeeks);
    t.fourWeeksPays = count;
    t.multiplier = count == 1 && c.pays == 12 ? 12 : 13;
    const qint64 annualised = fourWeeks * t.multiplier;
    t.annualised = CentsToCurrency(annualised);

    t.rate = ird::ExtraPayRate(c.figures, c.code, annualised, holidayCents, c.items.tailoredRate);
    t.lowThreshold = ird::LowThresholdDollars(c.figures, c.code);
    const bool grossed =
        c.code.kind == ird::CodeKind::Main || c.code.kind == ird::CodeKind::MainCredit || t.lowThreshold >= 0;
    t.grossedUp = grossed ? (annualised + holidayCents) / 100 + qMax<qint64>(t.lowThreshold, 0) : -1;
    // Holiday pay is earnings liable for the levy.
    t.holidayPaye = CentsToCurrency(ird::ExtraPayPayeCents(c.figures, c.code, annualised, holidayCents,
                                                           holidayCents, c.items.tailoredRate));
    t.lowestRate = ird::ExtraPayAtLowestRate(c.figures, c.code, annualised, holidayCents);
}

} // namespace

const QStringList& FinalHolidayLineNames() {
    static const QStringList names{QStringLiteral("Annual holidays not taken"),
                                   QStringLiteral("Holiday pay 8% since the last anniversary"),
                                   QStringLiteral("Alternative holidays not taken"),
                                   QStringLiteral("Public holidays within the untaken holidays")};
    return names;
}

Currency FinalHolidayAmount(Database& wage, qint32 wageID) {
    const QVariant v =
        wage.scalar(QStringLiteral("SELECT Total(d.Payment) FROM PaymentDetails d JOIN PaymentNames n ON "
                                   "n.PaymentNameID = d.PaymentNameID WHERE d.WageID = %1 AND "
                                   "n.PayUnitname IN (%2)")
                        .arg(wageID)
                        .arg(namesList()));
    return IsNull(v) ? Currency() : CCur(v);
}

std::optional<FinalPayTax> FinalPayTaxOfPay(const IrdPayContext& c, qint32 employeeID, qint32 wageID,
                                            Currency taxable) {
    Database& db = App().WageDatabase;
    const Currency lines = FinalHolidayAmount(db, wageID);
    if (lines <= Currency()) return std::nullopt;
    const QVariant date = db.scalar(QStringLiteral("SELECT [Date] FROM Wages WHERE WageID = %1").arg(wageID));
    if (!date.isValid() || IsNull(date) || !IsDate(date)) return std::nullopt;
    const QDate day = CDate(date);

    FinalPayTax t;
    t.taxable = taxable;
    t.holiday = qBound(Currency(), lines, qMax(taxable, Currency()));
    t.ordinary = taxable - t.holiday;
    const qint64 ordinaryCents = CurrencyToCents(t.ordinary);
    const qint64 holidayCents = CurrencyToCents(t.holiday);

    const qint64 credit = PayrollGivingCreditForPay(c, wageID, ordinaryCents);
    t.givingCredit = CentsToCurrency(credit);
    t.ordinaryPaye = CentsToCurrency(
        ird::PayeCents(c.figures, c.code, ordinaryCents, c.pays, c.items.tailoredRate) - credit);

    extraPart(c, employeeID, wageID, day, ordinaryCents, t);
    return t;
}

std::optional<FinalPayTax> FinalHolidayTaxOn(qint32 employeeID, const QDate& day, Currency holiday) {
    if (holiday <= Currency() || !day.isValid()) return std::nullopt;
    Database& db = App().WageDatabase;
    const QVariant pays =
        db.scalar(QStringLiteral("SELECT p.PaysPerYear FROM Employees e JOIN PayInterval p ON "
                                 "p.PayIntervalID = e.PayIntervalID WHERE e.EmployeeID = %1")
                      .arg(employeeID));
    const auto c = IrdContextOn(employeeID, day, IsNull(pays) ? 0 : int(std::lround(CDbl(pays))));
    if (!c) return std::nullopt;
    FinalPayTax t;
    t.taxable = holiday;
    t.holiday = holiday;
    extraPart(*c, employeeID, 0, day, 0, t);
    return t;
}

std::optional<FinalPayTax> StoredFinalPayTax(qint32 wageID) {
    Database& db = App().WageDatabase;
    const QVariantList row =
        db.firstRow(QStringLiteral("SELECT w.EmployeeID, t.TaxableAmount, p.PaysPerYear FROM Wages w JOIN "
                                   "TaxDetails t ON t.WageID = "
                                   "w.WageID JOIN Employees e ON e.EmployeeID = w.EmployeeID JOIN "
                                   "PayInterval p ON p.PayIntervalID = "
                                   "e.PayIntervalID WHERE w.WageID = %1")
                        .arg(wageID));
    if (row.size() < 3 || IsNull(row.at(0)) || IsNull(row.at(1)) || IsNull(row.at(2))) return std::nullopt;
    const qint32 employeeID = CLng(row.at(0));
    const auto c = IrdContextForPay(employeeID, wageID, CSng(row.at(2)));
    if (!c) return std::nullopt;
    return FinalPayTaxOfPay(*c, employeeID, wageID, CCur(row.at(1)));
}

QString FinalPayTax::working() const {
    QStringList parts;
    parts << QStringLiteral("PAYE %1 = %2 on the ordinary lines of %3 by the pay's method")
                 .arg(money2(paye()), money2(ordinaryPaye), money2(ordinary));
    if (givingCredit > Currency())
        parts.last() += QStringLiteral(" (less the payroll giving credit %1)").arg(money2(givingCredit));
    QString extra = QStringLiteral("+ %1 on the holiday pay of %2 as an extra pay: ")
                        .arg(money2(holidayPaye), money2(holiday));
    if (grossedUp >= 0) {
        extra += QStringLiteral("four weeks' earnings %1 (%2 pays) x %3 = %4")
                     .arg(money2(fourWeeks))
                     .arg(fourWeeksPays)
                     .arg(multiplier)
                     .arg(money2(annualised));
        if (lowThreshold >= 0) extra += QStringLiteral(", + the low threshold amount %1").arg(lowThreshold);
        extra += QStringLiteral(", + the holiday pay = %1 grossed up, so %2 and the ACC earners' levy")
                     .arg(grossedUp)
                     .arg(rateText(rate));
        if (lowestRate) extra += QStringLiteral(" (the lowest rate: lump sum indicator 1)");
    } else {
        extra += QStringLiteral("the code's own rate %1 and the ACC earners' levy").arg(rateText(rate));
    }
    parts << extra;
    return parts.join(QLatin1Char(' '));
}

} // namespace ql
