#include "Settings.h"
#include "ErrorLog.h"
#include "FileStamp.h"
#include "ProfileFile.h"
#include "SettingGetters.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"
#include <QDir>
#include <QFile>
#include <QHash>
#include <QMutex>
#include <QTextStream>
#include <optional>

namespace ql {
namespace {

QString envFolder(const char* name) {
    const QString v = qEnvironmentVariable(name);
    return v.isEmpty() ? QString() : v;
}

// The lines of a file as the text tests see them; nullopt when there is no such file.
std::optional<QStringList> textLines(const QString& file) {
    QFile f(profilePath(file));
    if (!f.exists() || !f.open(QIODevice::ReadOnly)) return std::nullopt;
    QStringList lines;
    QTextStream in(&f);
    while (!in.atEnd())
        lines.append(in.readLine());
    return lines;
}

} // namespace

QString DocumentsFolder() {
    QString folder = envFolder("FERNHOLD_DOCUMENTS");
    if (folder.isEmpty()) folder = envFolder("XDG_DATA_HOME");
    if (folder.isEmpty()) {
        const QString home = envFolder("HOME");
        if (!home.isEmpty()) folder = home + QStringLiteral("/.local/share");
    }
    while (folder.size() > 1 && folder.endsWith(QLatin1Char('/')))
        folder.chop(1);
    return folder;
}

QString CommonFolder() {
    return DocumentsFolder() + QStringLiteral("/Fernhold/Common");
}

QString FamilyFile() {
    const QString path = CommonFolder() + QStringLiteral("/Fernhold.ini");
    if (QFile::exists(path)) return path;
    return QStringLiteral("Fernhold.ini");
}

namespace {

// What ReadIni found in a file, remembered for as long as the file keeps its stamp: the value and the
// log line of each section and key asked for.
struct IniReading {
    QString value;
    QString logLine;
};
struct IniMemo {
    FileStamp stamp;
    QHash<QString, IniReading> readings; // section in capitals + "\n" + key
};
QMutex& iniMemoLock() {
    static QMutex m;
    return m;
}
QHash<QString, IniMemo>& iniMemos() {
    static QHash<QString, IniMemo> m;
    return m;
}

IniReading readIniFromFile(const QString& section, const QString& key, const QString& file) {
    IniReading r;
    const QString trace = QStringLiteral("Section=") + section + QStringLiteral(", Key=") + key;
    const QString upper = section.toUpper();
    r.value = profileString(file, upper, key);
    if (IniHasSection(file, upper)) {
        if (IniHasKey(file, upper, key))
            r.value = profileString(file, upper, key);
        else if (!trace.endsWith(QStringLiteral("Key=Invalid Index")))
            r.logLine = QStringLiteral("A key from ") + file + QStringLiteral(" is missing.") + trace;
    } else if (file != QStringLiteral("WIN.INI")) {
        r.logLine = QStringLiteral("A section from ") + file + QStringLiteral(" is missing.") + trace;
    }
    return r;
}

} // namespace

// A file's readings are remembered while its stamp (size, times to the nanosecond, inode) stays the
// same, so an edit of the file, by this program or any other, counts at the next read.
QString ReadIni(const QString& section, const QString& key, const QString& file) {
    if (isWinIni(file)) {
        const IniReading r = readIniFromFile(section, key, file);
        if (!r.logLine.isEmpty()) LogError(r.logLine);
        return r.value;
    }
    const QString path = profilePath(file);
    const FileStamp stamp = FileStamp::of(path);
    const QString memoKey = section.toUpper() + QLatin1Char('\n') + key;
    {
        QMutexLocker lock(&iniMemoLock());
        IniMemo& memo = iniMemos()[path + QLatin1Char('\n') + file];
        if (!memo.stamp.sameAs(stamp)) {
            memo.readings.clear();
            memo.stamp = stamp;
        } else if (auto it = memo.readings.constFind(memoKey); it != memo.readings.constEnd()) {
            const IniReading r = *it;
            lock.unlock();
            if (!r.logLine.isEmpty()) LogError(r.logLine);
            return r.value;
        }
    }
    const IniReading r = readIniFromFile(section, key, file);
    {
        QMutexLocker lock(&iniMemoLock());
        IniMemo& memo = iniMemos()[path + QLatin1Char('\n') + file];
        if (memo.stamp.sameAs(stamp)) memo.readings.insert(memoKey, r);
    }
    if (!r.logLine.isEmpty()) LogError(r.logLine);
    return r.value;
}
void WriteIni(const QString& section, const QString& key, const QString& value, const QString& file) {
    writeProfileString(file, section, key, value);
}

void WriteSetting(const QString& section, const QString& key, const QString& value) {
    WriteIni(section, key, value, FamilyFile());
}

bool IniHasSection(const QString& file, const QString& section) {
    const auto lines = textLines(file);
    if (!lines) return false;
    const QString wanted = QLatin1Char('[') + section + QLatin1Char(']');
    for (const QString& line : *lines)
        if (line == wanted) return true;
    return false;
}

bool IniHasKey(const QString& file, const QString& section, const QString& key) {
    if (!IniHasSection(file, section)) return false;
    const auto lines = textLines(file);
    if (!lines) return false;
    const QString wanted = QLatin1Char('[') + section + QLatin1Char(']');
    bool passed = false;
    for (const QString& line : *lines) {
        if (!passed) {
            passed = line == wanted;
            continue;
        }
        const bool hasEquals = line.contains(QLatin1Char('='));
        if (hasEquals && line.startsWith(key)) return true;
        if (!hasEquals && line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) return false;
    }
    return false;
}

QString GetToken(const QString& text, const QString& delimiter, qint16 position) {
    const QString delim = delimiter.isEmpty() ? QStringLiteral(" \r\n\t") : delimiter;
    if (position < 1) return QString();
    const QStringList fields = text.split(delim, Qt::KeepEmptyParts);
    if (position > fields.size()) return QString();
    return fields.at(position - 1);
}

qint32 CountryPhone() {
    std::optional<qint32> country;
    skipErrors([&] {
        const QString value = ReadIni(QStringLiteral("WINDOWS"), QStringLiteral("Country"), FamilyFile());
        if (IsNumeric(value)) country = CLng(value);
    });
    if (country) return *country;
    qint32 code = 64;
    skipErrors([&] {
        const QString value =
            ReadIni(QStringLiteral("INTL"), QStringLiteral("iCountry"), QStringLiteral("WIN.INI"));
        if (!IsNumeric(value)) return;
        const qint32 n = CLng(value);
        if (n == 55 || n == 61 || n == 64 || n == 598) code = n;
    });
    return code;
}

QString ProgramPath() {
    QString path = ProgramDirectory();
    if (!path.endsWith(QLatin1Char('/'))) path += QLatin1Char('/');
    return path;
}

} // namespace ql
