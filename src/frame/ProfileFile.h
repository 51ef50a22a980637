#pragma once
// The profile reader and writer behind ReadIni and WriteIni: a classic INI file of "[section]" and
// "key=value" lines. Sections and keys are found without regard to case, values come back trimmed
// and cut at 1023 characters, and a write changes only the line it has to.
#include <QLocale>
#include <QString>
#include <functional>

namespace ql {

constexpr int ProfileValueLimit = 1023;

// The path a profile function uses for a file name. A bare name (no folder) stands for the file in
// the system's own settings folder, which here is the suite's common folder.
QString profilePath(const QString& file);

// True for the name of the system's own settings file, which has no file behind it here.
bool isWinIni(const QString& file);

// The value of key in section of file; empty for anything missing. "WIN.INI" answers [INTL]
// iCountry with the telephone code of the system locale's territory.
QString profileString(const QString& file, const QString& section, const QString& key);

// Sets key in section of file, creating the file, the section or the key as needed. A file that
// can't be written is left as it is, without a word.
void writeProfileString(const QString& file, const QString& section, const QString& key,
                        const QString& value);

// The telephone calling code of a territory; 0 when not known.
int territoryPhoneCode(QLocale::Territory territory);

// Where the territory of the system locale comes from; tests replace it. An empty function
// restores QLocale::system().
void setTerritorySource(std::function<QLocale::Territory()> source);
QLocale::Territory systemTerritory();

} // namespace ql
