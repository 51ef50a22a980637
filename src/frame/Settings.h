#pragma once
// The settings store: the suite's family file and the reads and writes of its keys. Nothing is
// cached; every call looks at the file as it is now.
#include <QString>

namespace ql {

// The folder of documents common to all users: FERNHOLD_DOCUMENTS, else $XDG_DATA_HOME, else
// ~/.local/share; empty when none can be found.
QString DocumentsFolder();
// DocumentsFolder() + "/Fernhold/Common".
QString CommonFolder();
// CommonFolder() + "/Fernhold.ini" when that file exists, else the bare name "Fernhold.ini".
QString FamilyFile();

// The one reader: the value of key in section (looked up in capitals) of file, at most 1023
// characters, empty when missing. A missing section or key leaves a line in the error log.
QString ReadIni(const QString& section, const QString& key, const QString& file);
// Writes the value as it is given; no check, no log.
void WriteIni(const QString& section, const QString& key, const QString& value, const QString& file);
// WriteIni on the family file.
void WriteSetting(const QString& section, const QString& key, const QString& value);

// Text tests on the file itself: an exact "[section]" line; a "key..." line with "=" below it,
// before the next section line. A key matches any longer key that begins with it.
bool IniHasSection(const QString& file, const QString& section);
bool IniHasKey(const QString& file, const QString& section, const QString& key);

// Field number position (from 1) of text; an empty delimiter stands for blank, CR, LF and tab as
// one four-character text.
QString GetToken(const QString& text, const QString& delimiter, qint16 position);

// The country as its telephone code: Country in [WINDOWS] when numeric, else the system's
// country when it is one of 55, 61, 64, 598, else 64.
qint32 CountryPhone();

// The setting ProgramDirectory with a "/" at its end.
QString ProgramPath();

} // namespace ql
