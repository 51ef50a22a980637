#pragma once
// One getter for each key of the family file, named after the key. Each reads the file when it is
// called and falls back to its default when the value is empty, missing or of the wrong kind; a
// failing statement is skipped and leaves the default.
#include <QDate>
#include <QString>
#include <functional>

namespace ql {

// [FERNHOLD]
QString WageFileName();     // DataRoot + "/Wage32.db"
QString DataFileName();     // DataRoot + "/Farm32.db"
QString ModuleFileName();   // CommonFolder + "/Modules.db"
QString DataRoot();         // DocumentsFolder + "/data"
QString ProgramDirectory(); // the folder of the running executable
QString ReportDirectory();  // ProgramDirectory
// [START]
QString Firm(); // "Fernhold"
// [OPTIONS]
bool CodeOrder(); // true; false only for "FALSE" in any case
// [DEBUG]
bool Debug(); // false; true when the first character is "Y" or "y"
// [WAGE]
bool AllLeave();       // true; false only for "N" in any case
qint32 PrintPaySlip(); // 1 (ticked); 0 only for "N" in any case
// [TAX]
QString TaxName();       // "GST"
QString TaxNumberName(); // TaxName()
QString IncomeTaxName(); // "PAYG Instalment" in country 61, else "Income Tax"
QString PayAsYouEarn();  // "PAYE"
qint32 PAYEAccount();    // 401002
qint32 PaymentAccount(); // 401005
qint32 WageAccount();    // 401001
qint32 AdjustAccount();  // 401008
qint32 PAYEAddressID();  // 0
qint32 PAYEFreq();       // 1
bool PAYENonCash();      // false; true only for "Y" in any case
QDate PAYEStart();       // the zero date
QString PAYEStartText(); // the value when it is a date, else the start of the financial year
// [WINDOWS]
qint32 Country(); // CountryPhone()

// [COLOURS]: three numbers separated by commas; a missing part is 0.
struct ColourSetting {
    qint32 red = 0;
    qint32 green = 0;
    qint32 blue = 0;
};
ColourSetting GridHeader();
ColourSetting GridSelectedRow();
ColourSetting GridEvenRow();
ColourSetting GridOddRow();
ColourSetting colourSetting(const QString& key);

// The start of the financial year as text, from the farm details. The data layer installs the real
// reader; until then it is the farm details' own default, 1 July 1995.
void setFinancialYearSource(std::function<QString()> source);
QString financialYearText();

} // namespace ql
