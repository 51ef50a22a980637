// employer [--name T] [--address T] [--city T] [--postcode T] [--ird N] [--gst N] [--contact-name T]
// [--contact-phone T] [--contact-email T] [--account A]: the employer's details, changed by the options
// given and printed as JSON. A refusal writes nothing.
#include "CliCommand.h"
#include "JsonRows.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include "staff/EmployerDetails.h"
#include <QHash>

namespace {

struct Option {
    const char* name;
    QString ql::EmployerDetails::*member;
};

const Option kOptions[] = {
    {"name", &ql::EmployerDetails::name},
    {"address", &ql::EmployerDetails::address},
    {"city", &ql::EmployerDetails::city},
    {"postcode", &ql::EmployerDetails::postcode},
    {"ird", &ql::EmployerDetails::ird},
    {"gst", &ql::EmployerDetails::gst},
    {"contact-name", &ql::EmployerDetails::contactName},
    {"contact-phone", &ql::EmployerDetails::contactPhone},
    {"contact-email", &ql::EmployerDetails::contactEmail},
    {"account", &ql::EmployerDetails::account},
};

QString json(const ql::EmployerDetails& d) {
    return QStringLiteral("{\n  \"Name\": %1,\n  \"Address\": %2,\n  \"City\": %3,\n  \"Postcode\": %4,\n"
                          "  \"IRDNumber\": %5,\n  \"GSTNumber\": %6,\n  \"ContactName\": %7,\n"
                          "  \"ContactPhone\": %8,\n  \"ContactEmail\": %9,\n")
               .arg(cli::jsonString(d.name), cli::jsonString(d.address), cli::jsonString(d.city),
                    cli::jsonString(d.postcode), cli::jsonString(d.ird), cli::jsonString(d.gst),
                    cli::jsonString(d.contactName), cli::jsonString(d.contactPhone),
                    cli::jsonString(d.contactEmail)) +
           QStringLiteral("  \"Account\": %1,\n  \"PAYEFilingMonths\": %2\n}\n")
               .arg(cli::jsonString(d.account))
               .arg(d.payeMonths);
}

int employer(const QStringList& args, QTextStream& out) {
    QHash<QString, QString> given;
    for (int i = 0; i < args.size(); i += 2) {
        const QString key = args.at(i).startsWith(QStringLiteral("--")) ? args.at(i).mid(2) : QString();
        bool known = false;
        for (const Option& o : kOptions) known = known || key == QLatin1String(o.name);
        if (!known || i + 1 >= args.size() || given.contains(key)) throw cli::CliUsageError();
        given.insert(key, args.at(i + 1));
    }
    ql::Database wage, farm;
    wage.open(ql::WageFileName());
    farm.open(ql::DataFileName());
    ql::EmployerDetails d = ql::LoadEmployerDetails(wage, farm);
    if (!given.isEmpty()) {
        for (const Option& o : kOptions)
            if (given.contains(QLatin1String(o.name))) d.*(o.member) = given.value(QLatin1String(o.name)).trimmed();
        ql::SaveEmployerDetails(wage, farm, d);
        d = ql::LoadEmployerDetails(wage, farm);
    }
    out << json(d);
    return 0;
}

const cli::CliCommand employerCommand(
    "employer",
    "employer [--name T] [--address T] [--city T] [--postcode T] [--ird N] [--gst N] [--contact-name T] "
    "[--contact-phone T] [--contact-email T] [--account A]",
    employer);

} // namespace
