#include "SettingGetters.h"
#include "Settings.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include <QCoreApplication>
#include <QFileInfo>

namespace ql {
namespace {

QString read(const char* section, const char* key) {
    QString value;
    skipErrors(
        [&] { value = ReadIni(QString::fromLatin1(section), QString::fromLatin1(key), FamilyFile()); });
    return value;
}

// The value read, or the default when it is empty; the default is only worked out when needed.
template <class F> QString textOr(const char* section, const char* key, F fallback) {
    QString value = read(section, key);
    if (value.isEmpty()) skipErrors([&] { value = fallback(); });
    return value;
}

qint32 numberOr(const char* section, const char* key, qint32 fallback) {
    qint32 result = fallback;
    const QString value = read(section, key);
    skipErrors([&] {
        if (IsNumeric(value)) result = CLng(value);
    });
    return result;
}

bool upperIs(const char* section, const char* key, const char* text) {
    return read(section, key).toUpper() == QLatin1String(text);
}

std::function<QString()>& financialYearSource() {
    static std::function<QString()> s;
    return s;
}

QString executableFolder() {
    if (QCoreApplication::instance()) return QCoreApplication::applicationDirPath();
    return QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).absolutePath();
}

} // namespace

QString DataRoot() {
    return textOr("FERNHOLD", "DataRoot", [] { return DocumentsFolder() + QStringLiteral("/data"); });
}
QString WageFileName() {
    return textOr("FERNHOLD", "WageFileName", [] { return DataRoot() + QStringLiteral("/Wage32.db"); });
}
QString DataFileName() {
    return textOr("FERNHOLD", "DataFileName", [] { return DataRoot() + QStringLiteral("/Farm32.db"); });
}
QString ModuleFileName() {
    return textOr("FERNHOLD", "ModuleFileName",
                  [] { return CommonFolder() + QStringLiteral("/Modules.db"); });
}
QString ProgramDirectory() {
    return textOr("FERNHOLD", "ProgramDirectory", executableFolder);
}
QString ReportDirectory() {
    return textOr("FERNHOLD", "ReportDirectory", ProgramDirectory);
}

QString Firm() {
    return textOr("START", "Firm", [] { return QStringLiteral("Fernhold"); });
}

bool CodeOrder() {
    return !upperIs("OPTIONS", "CodeOrder", "FALSE");
}
bool Debug() {
    return read("DEBUG", "Debug").left(1).toUpper() == QLatin1String("Y");
}
bool AllLeave() {
    return !upperIs("WAGE", "AllLeave", "N");
}
qint32 PrintPaySlip() {
    return upperIs("WAGE", "PrintPaySlip", "N") ? 0 : 1;
}

QString TaxName() {
    return textOr("TAX", "TaxName", [] { return QStringLiteral("GST"); });
}
QString TaxNumberName() {
    return textOr("TAX", "TaxNumberName", TaxName);
}
QString IncomeTaxName() {
    return textOr("TAX", "IncomeTaxName", [] {
        return CountryPhone() == 61 ? QStringLiteral("PAYG Instalment") : QStringLiteral("Income Tax");
    });
}
QString PayAsYouEarn() {
    return textOr("TAX", "PayAsYouEarn", [] { return QStringLiteral("PAYE"); });
}
qint32 PAYEAccount() {
    return numberOr("TAX", "PAYEAccount", 401002);
}
qint32 PaymentAccount() {
    return numberOr("TAX", "PaymentAccount", 401005);
}
qint32 WageAccount() {
    return numberOr("TAX", "WageAccount", 401001);
}
qint32 AdjustAccount() {
    return numberOr("TAX", "AdjustAccount", 401008);
}
qint32 PAYEAddressID() {
    return numberOr("TAX", "PAYEAddressID", 0);
}
qint32 PAYEFreq() {
    return numberOr("TAX", "PAYEFreq", 1);
}
bool PAYENonCash() {
    return upperIs("TAX", "PAYENonCash", "Y");
}

QDate PAYEStart() {
    QDate result = ZeroDate;
    const QString value = read("TAX", "PAYEStart");
    skipErrors([&] {
        if (IsDate(value)) result = CDate(value);
    });
    return result;
}

QString PAYEStartText() {
    QString result;
    const QString value = read("TAX", "PAYEStart");
    skipErrors([&] { result = IsDate(value) ? value : financialYearText(); });
    return result;
}

qint32 Country() {
    return CountryPhone();
}

ColourSetting colourSetting(const QString& key) {
    ColourSetting c;
    QString value;
    skipErrors([&] { value = ReadIni(QStringLiteral("COLOURS"), key, FamilyFile()); });
    qint32* parts[] = {&c.red, &c.green, &c.blue};
    for (qint16 i = 0; i < 3; ++i)
        skipErrors([&] {
            const QString field = GetToken(value, QStringLiteral(","), qint16(i + 1));
            if (IsNumeric(field)) *parts[i] = CLng(field);
        });
    return c;
}
ColourSetting GridHeader() {
    return colourSetting(QStringLiteral("GridHeader"));
}
ColourSetting GridSelectedRow() {
    return colourSetting(QStringLiteral("GridSelectedRow"));
}
ColourSetting GridEvenRow() {
    return colourSetting(QStringLiteral("GridEvenRow"));
}
ColourSetting GridOddRow() {
    return colourSetting(QStringLiteral("GridOddRow"));
}

void setFinancialYearSource(std::function<QString()> source) {
    financialYearSource() = std::move(source);
}

QString financialYearText() {
    // Farm details that cannot be read (no farm database yet) give their own default, as when no
    // reader is installed: the answer must not hang on which parts a program links.
    QString text;
    if (financialYearSource() && skipErrors([&] { text = financialYearSource()(); })) return text;
    return Format(QDate(1995, 7, 1), QStringLiteral("short date"));
}

} // namespace ql
