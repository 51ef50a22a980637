// The tax years of the payroll: import a year from its JSON file, list the stored periods, show the
// figures in force on a date.
#include "CliCommand.h"
#include "PayScreen.h"
#include "payengine/AppContext.h"
#include "payengine/TaxYearStore.h"
#include <QFile>

namespace {

QString dollars(qint64 d) {
    return QLocale(QLocale::English, QLocale::NewZealand).toString(d);
}

QString bandsText(const QList<ql::TaxBand>& bands) {
    QStringList parts;
    for (const ql::TaxBand& b : bands)
        parts << (b.upTo > 0 ? QStringLiteral("%1% to $%2").arg(ql::RateText(b.rate), dollars(b.upTo))
                             : QStringLiteral("%1% above").arg(ql::RateText(b.rate)));
    return parts.join(QStringLiteral("; "));
}

int importYear(const QStringList& args, QTextStream& out) {
    if (args.size() != 1) throw cli::CliUsageError();
    QFile file(args.at(0));
    if (!file.open(QIODevice::ReadOnly))
        throw cli::CliFailure(QStringLiteral("The file %1 cannot be read.").arg(args.at(0)));
    const QByteArray json = file.readAll();
    cli::Session session;
    const QList<ql::TaxYearFigures> periods = ql::ImportTaxYear(session.context.WageDatabase, json);
    QStringList dates;
    for (const ql::TaxYearFigures& f : periods) dates << f.effective.toString(Qt::ISODate);
    out << QStringLiteral("Imported tax year %1 (%2 to %3), in force from %4.")
               .arg(periods.first().taxYear, periods.first().starts.toString(Qt::ISODate),
                    periods.first().ends.toString(Qt::ISODate), dates.join(QStringLiteral(", ")))
        << "\n";
    return 0;
}

int listYears(const QStringList& args, QTextStream& out) {
    if (!args.isEmpty()) throw cli::CliUsageError();
    cli::Session session;
    for (const ql::TaxYearFigures& f : ql::StoredTaxYears(session.context.WageDatabase))
        out << f.taxYear << "\t" << f.effective.toString(Qt::ISODate) << "\t" << f.ends.toString(Qt::ISODate) << "\n";
    return 0;
}

int showYear(const QStringList& args, QTextStream& out) {
    if (args.size() != 1) throw cli::CliUsageError();
    const QDate date = QDate::fromString(args.at(0), Qt::ISODate);
    if (!date.isValid()) throw cli::CliUsageError();
    cli::Session session;
    const auto found = ql::TaxYearInForce(session.context.WageDatabase, date);
    if (!found)
        throw cli::CliFailure(QStringLiteral("No tax year in force on %1: import one with tax-year import FILE.json.")
                                  .arg(args.at(0)));
    const ql::TaxYearFigures& f = *found;
    QStringList flat;
    for (const QString& code : ql::FlatRateCodes()) flat << code + QLatin1Char(' ') + ql::RateText(f.flatRates.value(code)) + QLatin1Char('%');
    QStringList ks;
    for (qint32 r : f.kiwiSaverEmployeeRates) ks << ql::RateText(r) + QLatin1Char('%');
    out << "Tax year: " << f.taxYear << " (" << f.starts.toString(Qt::ISODate) << " to "
        << f.ends.toString(Qt::ISODate) << ")\n"
        << "In force from: " << f.effective.toString(Qt::ISODate) << "\n"
        << "Income tax bands: " << bandsText(f.bands) << "\n"
        << "Extra pay bands: " << bandsText(f.extraPayBands.isEmpty() ? f.bands : f.extraPayBands) << "\n"
        << "ACC earners' levy: " << ql::RateText(f.accLevyRate) << "% up to $" << dollars(f.accMaxLiable) << "\n"
        << "Independent earner credit: $" << dollars(f.ietcAmount) << " from $" << dollars(f.ietcFrom)
        << ", abating from $" << dollars(f.ietcAbatesFrom) << " by " << ql::RateText(f.ietcAbatement)
        << " cents a dollar to nothing at $" << dollars(f.ietcTo) << "\n"
        << "Flat rates (before the levy): " << flat.join(QStringLiteral(", ")) << "\n"
        << "Student loan: " << ql::RateText(f.studentLoanRate) << "% above $" << dollars(f.studentLoanThreshold)
        << " a year\n"
        << "ESCT bands: " << bandsText(f.esctBands) << "\n"
        << "KiwiSaver: employee default " << ql::RateText(f.kiwiSaverEmployeeDefault) << "% (rates "
        << ks.join(QStringLiteral(", ")) << "), employer minimum " << ql::RateText(f.kiwiSaverEmployerMinimum)
        << "%\n";
    return 0;
}

int taxYear(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const QString sub = args.first();
    const QStringList rest = args.mid(1);
    if (sub == QLatin1String("import")) return importYear(rest, out);
    if (sub == QLatin1String("list")) return listYears(rest, out);
    if (sub == QLatin1String("show")) return showYear(rest, out);
    throw cli::CliUsageError();
}

cli::CliCommand taxYearCommand("tax-year", "tax-year import FILE.json | tax-year list | tax-year show YYYY-MM-DD",
                               taxYear);

} // namespace
