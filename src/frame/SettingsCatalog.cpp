#include "SettingsCatalog.h"
#include "SettingGetters.h"
#include "Settings.h"

namespace ql {
namespace {

QString yesNo(bool b) {
    return b ? QStringLiteral("True") : QStringLiteral("False");
}
QString colour(const ColourSetting& c) {
    return QStringLiteral("%1,%2,%3").arg(c.red).arg(c.green).arg(c.blue);
}

} // namespace

const QList<SettingEntry>& settingsCatalog() {
    static const QList<SettingEntry> entries = {
        {"FERNHOLD", "WageFileName", "DataRoot + \"/Wage32.db\"", [] { return WageFileName(); }},
        {"FERNHOLD", "DataFileName", "DataRoot + \"/Farm32.db\"", [] { return DataFileName(); }},
        {"FERNHOLD", "ModuleFileName", "CommonFolder + \"/Modules.db\"", [] { return ModuleFileName(); }},
        {"FERNHOLD", "DataRoot", "the documents folder + \"/data\"", [] { return DataRoot(); }},
        {"FERNHOLD", "ProgramDirectory", "the folder of the running program",
         [] { return ProgramDirectory(); }},
        {"FERNHOLD", "ReportDirectory", "ProgramDirectory", [] { return ReportDirectory(); }},
        {"START", "Firm", "\"Fernhold\"", [] { return Firm(); }},
        {"OPTIONS", "CodeOrder", "True (False only for \"FALSE\")", [] { return yesNo(CodeOrder()); }},
        {"DEBUG", "Debug", "False (True when it begins with \"Y\")", [] { return yesNo(Debug()); }},
        {"WAGE", "AllLeave", "True (False only for \"N\")", [] { return yesNo(AllLeave()); }},
        {"WAGE", "PrintPaySlip", "1 (0 only for \"N\")", [] { return QString::number(PrintPaySlip()); }},
        {"TAX", "TaxName", "\"GST\"", [] { return TaxName(); }},
        {"TAX", "TaxNumberName", "TaxName", [] { return TaxNumberName(); }},
        {"TAX", "IncomeTaxName", "\"PAYG Instalment\" in country 61, else \"Income Tax\"",
         [] { return IncomeTaxName(); }},
        {"TAX", "PayAsYouEarn", "\"PAYE\"", [] { return PayAsYouEarn(); }},
        {"TAX", "PAYEAccount", "401002", [] { return QString::number(PAYEAccount()); }},
        {"TAX", "PaymentAccount", "401005", [] { return QString::number(PaymentAccount()); }},
        {"TAX", "WageAccount", "401001", [] { return QString::number(WageAccount()); }},
        {"TAX", "AdjustAccount", "401008", [] { return QString::number(AdjustAccount()); }},
        {"TAX", "PAYEAddressID", "0", [] { return QString::number(PAYEAddressID()); }},
        {"TAX", "PAYEFreq", "1", [] { return QString::number(PAYEFreq()); }},
        {"TAX", "PAYENonCash", "False (True only for \"Y\")", [] { return yesNo(PAYENonCash()); }},
        {"TAX", "PAYEStart", "the zero date; as text, the start of the financial year",
         [] { return PAYEStartText(); }},
        {"WINDOWS", "Country", "the system locale's country (55, 61, 64 or 598), else 64",
         [] { return QString::number(Country()); }},
        {"COLOURS", "GridHeader", "0,0,0", [] { return colour(GridHeader()); }},
        {"COLOURS", "GridSelectedRow", "0,0,0", [] { return colour(GridSelectedRow()); }},
        {"COLOURS", "GridEvenRow", "0,0,0", [] { return colour(GridEvenRow()); }},
        {"COLOURS", "GridOddRow", "0,0,0", [] { return colour(GridOddRow()); }},
    };
    return entries;
}

std::optional<QString> settingValueText(const QString& section, const QString& key) {
    for (const SettingEntry& e : settingsCatalog())
        if (e.section.compare(section, Qt::CaseInsensitive) == 0 &&
            e.key.compare(key, Qt::CaseInsensitive) == 0)
            return e.valueText();
    return std::nullopt;
}

} // namespace ql
