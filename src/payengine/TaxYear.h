#pragma once
// The figures of a New Zealand tax year as data: each period of a year holds every figure in force from
// its effective date. Rates are kept in thousandths of a per cent and money in whole dollars, so that
// Inland Revenue's arithmetic on them is exact in integers.
#include <QDate>
#include <QList>
#include <QMap>
#include <QString>

namespace ql {

// A band: earnings up to upTo whole dollars (inclusive) at rate; upTo 0 marks the open last band.
struct TaxBand {
    qint64 upTo = 0;
    qint32 rate = 0; // thousandths of a per cent: 10.5% is 10500
};

struct TaxYearFigures {
    QString taxYear; // "2026/27"
    QDate starts, ends, effective;
    QList<TaxBand> bands;
    QList<TaxBand> extraPayBands; // the bands whose rate an extra pay takes; empty: those of bands
    qint32 accLevyRate = 0;
    qint64 accMaxLiable = 0;
    qint64 ietcAmount = 0, ietcFrom = 0, ietcAbatesFrom = 0, ietcTo = 0; // whole dollars
    qint32 ietcAbatement = 0;                                             // thousandths of a cent a dollar
    QMap<QString, qint32> flatRates;                                      // code -> rate before the levy
    qint32 studentLoanRate = 0;
    qint64 studentLoanThreshold = 0;
    QList<TaxBand> esctBands;
    qint32 kiwiSaverEmployeeDefault = 0, kiwiSaverEmployerMinimum = 0;
    QList<qint32> kiwiSaverEmployeeRates;
};

// The codes with a flat rate that every year must give.
const QStringList& FlatRateCodes();

// A tax year file: its periods, each with the full figures (a later period repeats only what changes,
// the rest carries over). Throws VbError 5 with a message naming the figure at fault.
QList<TaxYearFigures> ParseTaxYear(const QByteArray& json);

// The figures of one period as the JSON of one full period (as a file's first period is written).
QByteArray TaxYearPeriodJson(const TaxYearFigures& f);

// A rate in thousandths of a per cent as text: 10500 -> "10.5".
QString RateText(qint32 thousandths);

// The tax year files shipped with the program, in date order.
QList<QByteArray> ShippedTaxYearFiles();

} // namespace ql
