#include "TaxYear.h"
#include "runtime/VbError.h"
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace ql {

namespace {

[[noreturn]] void refuse(const QString& message) {
    throw VbError(5, QStringLiteral("TaxYear"), message);
}

QDate dateOf(const QJsonObject& o, const QString& key, const QString& where) {
    const QDate d = QDate::fromString(o.value(key).toString(), Qt::ISODate);
    if (!d.isValid()) refuse(QStringLiteral("%1: \"%2\" must be a date written YYYY-MM-DD.").arg(where, key));
    return d;
}

// A per cent with at most three decimals, from 0 to 100, in thousandths.
qint32 rateOf(const QJsonValue& v, const QString& what) {
    if (!v.isDouble()) refuse(QStringLiteral("%1 must be a number (a per cent).").arg(what));
    const double percent = v.toDouble();
    const double scaled = percent * 1000.0;
    if (percent < 0 || percent > 100 || std::abs(scaled - std::round(scaled)) > 1e-6)
        refuse(QStringLiteral("%1 must be a per cent from 0 to 100 with at most three decimals.").arg(what));
    return qint32(std::llround(scaled));
}

qint64 dollarsOf(const QJsonValue& v, const QString& what) {
    const double d = v.toDouble(-1);
    if (!v.isDouble() || d < 0 || d != std::floor(d) || d > 1e12)
        refuse(QStringLiteral("%1 must be a whole number of dollars.").arg(what));
    return qint64(d);
}

QJsonObject objectOf(const QJsonObject& o, const QString& key, const QString& where) {
    if (!o.value(key).isObject()) refuse(QStringLiteral("%1: \"%2\" is missing.").arg(where, key));
    return o.value(key).toObject();
}

QList<TaxBand> bandsOf(const QJsonObject& o, const QString& key, const QString& where) {
    const QJsonArray a = o.value(key).toArray();
    if (a.isEmpty()) refuse(QStringLiteral("%1: \"%2\" needs at least one band.").arg(where, key));
    QList<TaxBand> bands;
    qint64 last = 0;
    for (qsizetype i = 0; i < a.size(); ++i) {
        const QJsonObject b = a.at(i).toObject();
        const QString what = QStringLiteral("%1: band %2 of \"%3\"").arg(where).arg(i + 1).arg(key);
        TaxBand band;
        band.rate = rateOf(b.value(QStringLiteral("rate")), what + QStringLiteral(" rate"));
        const bool open = !b.contains(QStringLiteral("upTo"));
        if (open != (i == a.size() - 1))
            refuse(QStringLiteral("%1: every band but the last needs \"upTo\", and the last has none.").arg(what));
        if (!open) {
            band.upTo = dollarsOf(b.value(QStringLiteral("upTo")), what + QStringLiteral(" upTo"));
            if (band.upTo <= last) refuse(QStringLiteral("%1: \"upTo\" must rise from band to band.").arg(what));
            last = band.upTo;
        }
        bands.append(band);
    }
    return bands;
}

TaxYearFigures figuresOf(const QJsonObject& p, const QString& where) {
    TaxYearFigures f;
    f.effective = dateOf(p, QStringLiteral("effective"), where);
    f.bands = bandsOf(p, QStringLiteral("bands"), where);
    if (p.contains(QStringLiteral("extraPayBands"))) f.extraPayBands = bandsOf(p, QStringLiteral("extraPayBands"), where);
    const QJsonObject acc = objectOf(p, QStringLiteral("accLevy"), where);
    f.accLevyRate = rateOf(acc.value(QStringLiteral("rate")), where + QStringLiteral(": the ACC levy's rate"));
    f.accMaxLiable = dollarsOf(acc.value(QStringLiteral("maxLiableEarnings")),
                               where + QStringLiteral(": the ACC levy's maximum liable earnings"));
    const QJsonObject ietc = objectOf(p, QStringLiteral("independentEarnerCredit"), where);
    const QString iw = where + QStringLiteral(": the independent earner credit's ");
    f.ietcAmount = dollarsOf(ietc.value(QStringLiteral("amount")), iw + QStringLiteral("amount"));
    f.ietcFrom = dollarsOf(ietc.value(QStringLiteral("from")), iw + QStringLiteral("\"from\""));
    f.ietcAbatesFrom = dollarsOf(ietc.value(QStringLiteral("abatesFrom")), iw + QStringLiteral("\"abatesFrom\""));
    f.ietcTo = dollarsOf(ietc.value(QStringLiteral("to")), iw + QStringLiteral("\"to\""));
    // Dollars a dollar (0.13) kept, like a rate, in thousandths of a per cent.
    f.ietcAbatement = rateOf(QJsonValue(ietc.value(QStringLiteral("abatementPerDollar")).toDouble(-1) * 100),
                             iw + QStringLiteral("\"abatementPerDollar\""));
    if (!(f.ietcFrom <= f.ietcAbatesFrom && f.ietcAbatesFrom <= f.ietcTo))
        refuse(iw + QStringLiteral("ranges must run \"from\" <= \"abatesFrom\" <= \"to\"."));
    const QJsonObject flat = objectOf(p, QStringLiteral("flatRates"), where);
    for (const QString& code : FlatRateCodes()) {
        if (!flat.contains(code)) refuse(QStringLiteral("%1: \"flatRates\" lacks the code %2.").arg(where, code));
        f.flatRates.insert(code, rateOf(flat.value(code), QStringLiteral("%1: the rate of %2").arg(where, code)));
    }
    const QJsonObject sl = objectOf(p, QStringLiteral("studentLoan"), where);
    f.studentLoanRate = rateOf(sl.value(QStringLiteral("rate")), where + QStringLiteral(": the student loan rate"));
    f.studentLoanThreshold =
        dollarsOf(sl.value(QStringLiteral("threshold")), where + QStringLiteral(": the student loan threshold"));
    f.esctBands = bandsOf(p, QStringLiteral("esctBands"), where);
    const QJsonObject ks = objectOf(p, QStringLiteral("kiwiSaver"), where);
    const QString kw = where + QStringLiteral(": KiwiSaver's ");
    f.kiwiSaverEmployeeDefault = rateOf(ks.value(QStringLiteral("employeeDefault")), kw + QStringLiteral("employee default"));
    f.kiwiSaverEmployerMinimum = rateOf(ks.value(QStringLiteral("employerMinimum")), kw + QStringLiteral("employer minimum"));
    for (const QJsonValue& r : ks.value(QStringLiteral("employeeRates")).toArray())
        f.kiwiSaverEmployeeRates.append(rateOf(r, kw + QStringLiteral("employee rates")));
    if (!f.kiwiSaverEmployeeRates.contains(f.kiwiSaverEmployeeDefault))
        refuse(kw + QStringLiteral("employee default must be one of its employee rates."));
    return f;
}

QJsonArray bandsJson(const QList<TaxBand>& bands) {
    QJsonArray a;
    for (const TaxBand& b : bands) {
        QJsonObject o;
        if (b.upTo > 0) o.insert(QStringLiteral("upTo"), double(b.upTo));
        o.insert(QStringLiteral("rate"), b.rate / 1000.0);
        a.append(o);
    }
    return a;
}

} // namespace

const QStringList& FlatRateCodes() {
    static const QStringList codes{QStringLiteral("SB"), QStringLiteral("S"),   QStringLiteral("SH"),
                                   QStringLiteral("ST"), QStringLiteral("SA"),  QStringLiteral("ND"),
                                   QStringLiteral("CAE"), QStringLiteral("EDW"), QStringLiteral("NSW")};
    return codes;
}

QList<TaxYearFigures> ParseTaxYear(const QByteArray& json) {
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        refuse(QStringLiteral("The file is not a tax year in JSON: %1.").arg(error.errorString()));
    const QJsonObject root = doc.object();
    const QString name = root.value(QStringLiteral("taxYear")).toString().trimmed();
    if (name.isEmpty()) refuse(QStringLiteral("\"taxYear\" (the year's name, such as 2026/27) is missing."));
    const QDate starts = dateOf(root, QStringLiteral("starts"), name);
    const QDate ends = dateOf(root, QStringLiteral("ends"), name);
    if (ends < starts) refuse(QStringLiteral("%1: \"ends\" comes before \"starts\".").arg(name));
    const QJsonArray periods = root.value(QStringLiteral("periods")).toArray();
    if (periods.isEmpty()) refuse(QStringLiteral("%1: \"periods\" needs at least one period.").arg(name));

    QList<TaxYearFigures> result;
    QJsonObject merged;
    for (qsizetype i = 0; i < periods.size(); ++i) {
        const QJsonObject p = periods.at(i).toObject();
        for (auto it = p.begin(); it != p.end(); ++it) merged.insert(it.key(), it.value());
        const QString where = QStringLiteral("%1, period %2").arg(name).arg(i + 1);
        TaxYearFigures f = figuresOf(merged, where);
        f.taxYear = name;
        f.starts = starts;
        f.ends = ends;
        if (i == 0 && f.effective != starts)
            refuse(QStringLiteral("%1: the first period must take effect on the year's start.").arg(where));
        if (f.effective > ends || (!result.isEmpty() && f.effective <= result.last().effective))
            refuse(QStringLiteral("%1: periods must take effect in date order within the year.").arg(where));
        result.append(f);
    }
    return result;
}

QByteArray TaxYearPeriodJson(const TaxYearFigures& f) {
    QJsonObject p;
    p.insert(QStringLiteral("effective"), f.effective.toString(Qt::ISODate));
    p.insert(QStringLiteral("bands"), bandsJson(f.bands));
    if (!f.extraPayBands.isEmpty()) p.insert(QStringLiteral("extraPayBands"), bandsJson(f.extraPayBands));
    p.insert(QStringLiteral("accLevy"), QJsonObject{{QStringLiteral("rate"), f.accLevyRate / 1000.0},
                                                    {QStringLiteral("maxLiableEarnings"), double(f.accMaxLiable)}});
    p.insert(QStringLiteral("independentEarnerCredit"),
             QJsonObject{{QStringLiteral("amount"), double(f.ietcAmount)},
                         {QStringLiteral("from"), double(f.ietcFrom)},
                         {QStringLiteral("abatesFrom"), double(f.ietcAbatesFrom)},
                         {QStringLiteral("to"), double(f.ietcTo)},
                         {QStringLiteral("abatementPerDollar"), f.ietcAbatement / 100000.0}});
    QJsonObject flat;
    for (auto it = f.flatRates.begin(); it != f.flatRates.end(); ++it) flat.insert(it.key(), it.value() / 1000.0);
    p.insert(QStringLiteral("flatRates"), flat);
    p.insert(QStringLiteral("studentLoan"), QJsonObject{{QStringLiteral("rate"), f.studentLoanRate / 1000.0},
                                                        {QStringLiteral("threshold"), double(f.studentLoanThreshold)}});
    p.insert(QStringLiteral("esctBands"), bandsJson(f.esctBands));
    QJsonArray rates;
    for (qint32 r : f.kiwiSaverEmployeeRates) rates.append(r / 1000.0);
    p.insert(QStringLiteral("kiwiSaver"), QJsonObject{{QStringLiteral("employeeDefault"), f.kiwiSaverEmployeeDefault / 1000.0},
                                                      {QStringLiteral("employeeRates"), rates},
                                                      {QStringLiteral("employerMinimum"), f.kiwiSaverEmployerMinimum / 1000.0}});
    return QJsonDocument(p).toJson(QJsonDocument::Compact);
}

QString RateText(qint32 thousandths) {
    QString s = QString::number(thousandths / 1000) + QLatin1Char('.') +
                QStringLiteral("%1").arg(thousandths % 1000, 3, 10, QLatin1Char('0'));
    while (s.endsWith(QLatin1Char('0'))) s.chop(1);
    if (s.endsWith(QLatin1Char('.'))) s.chop(1);
    return s;
}

QList<QByteArray> ShippedTaxYearFiles() {
    QList<QByteArray> files;
    for (const char* name : {"2024-25.json", "2025-26.json", "2026-27.json"}) {
        QFile f(QStringLiteral(":/taxyears/") + QLatin1String(name));
        if (f.open(QIODevice::ReadOnly)) files.append(f.readAll());
    }
    return files;
}

} // namespace ql
