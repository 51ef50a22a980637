#include "Backup.h"
#include "Schema.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "runtime/VbError.h"
#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>
#include <sqlite3.h>

namespace ql {

namespace {

const QString kSource = QStringLiteral("Backup");
const QString kSettingsMember = QStringLiteral("Fernhold.ini");

[[noreturn]] void fail(const QString& text) {
    raiseError(3051, kSource, text);
}

struct Member {
    QString name;
    DatabaseKind kind;
    QString path;
};

QList<Member> databases() {
    return {{QStringLiteral("Wage32.db"), DatabaseKind::Wage, WageFileName()},
            {QStringLiteral("Farm32.db"), DatabaseKind::Farm, DataFileName()},
            {QStringLiteral("Modules.db"), DatabaseKind::Modules, ModuleFileName()}};
}

// Copies one database to another file with SQLite's online backup: other connections may go on
// reading and writing meanwhile, and the copy is one consistent state.
void onlineCopy(const QString& from, const QString& to) {
    sqlite3* source = nullptr;
    sqlite3* target = nullptr;
    const auto closeBoth = [&] {
        sqlite3_close_v2(source);
        sqlite3_close_v2(target);
    };
    if (sqlite3_open_v2(from.toUtf8().constData(), &source, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
        sqlite3_open_v2(to.toUtf8().constData(), &target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                        nullptr) != SQLITE_OK) {
        const QString why = QString::fromUtf8(sqlite3_errmsg(source && target ? target : source));
        closeBoth();
        fail(QStringLiteral("The database %1 cannot be copied: %2").arg(QDir::toNativeSeparators(from), why));
    }
    sqlite3_busy_timeout(source, 5000);
    sqlite3_busy_timeout(target, 5000);
    sqlite3_backup* backup = sqlite3_backup_init(target, "main", source, "main");
    int rc = SQLITE_ERROR;
    if (backup) {
        do {
            rc = sqlite3_backup_step(backup, 256);
            if (rc == SQLITE_BUSY || rc == SQLITE_LOCKED) sqlite3_sleep(50);
        } while (rc == SQLITE_OK || rc == SQLITE_BUSY || rc == SQLITE_LOCKED);
        sqlite3_backup_finish(backup);
    }
    const QString why = QString::fromUtf8(sqlite3_errmsg(target));
    closeBoth();
    if (rc != SQLITE_DONE)
        fail(QStringLiteral("The database %1 cannot be copied: %2").arg(QDir::toNativeSeparators(from), why));
}

// The tar archive (POSIX ustar): a 512-byte header for each member, its bytes padded to 512, and two
// empty blocks at the end; any tar program reads it.
QByteArray tarHeader(const QString& name, qint64 size) {
    QByteArray h(512, '\0');
    const QByteArray n = name.toUtf8().left(99);
    std::copy(n.cbegin(), n.cend(), h.begin());
    const auto octal = [&](int offset, int width, qint64 value) {
        const QByteArray text = QByteArray::number(value, 8).rightJustified(width - 1, '0');
        std::copy(text.cbegin(), text.cend(), h.begin() + offset);
    };
    octal(100, 8, 0644);
    octal(108, 8, 0);
    octal(116, 8, 0);
    octal(124, 12, size);
    octal(136, 12, QDateTime::currentSecsSinceEpoch());
    h[156] = '0';
    const QByteArray magic("ustar\0" "00", 8);
    std::copy(magic.cbegin(), magic.cend(), h.begin() + 257);
    std::fill(h.begin() + 148, h.begin() + 156, ' ');
    unsigned sum = 0;
    for (char c : h)
        sum += static_cast<unsigned char>(c);
    const QByteArray check = QByteArray::number(sum, 8).rightJustified(6, '0');
    std::copy(check.cbegin(), check.cend(), h.begin() + 148);
    h[154] = '\0';
    return h;
}

void writeMember(QIODevice& out, const QString& name, const QByteArray& bytes) {
    out.write(tarHeader(name, bytes.size()));
    out.write(bytes);
    const qint64 pad = (512 - bytes.size() % 512) % 512;
    out.write(QByteArray(pad, '\0'));
}

QByteArray readFile(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) fail(QStringLiteral("The file %1 cannot be read.").arg(QDir::toNativeSeparators(path)));
    return f.readAll();
}

// The members of a tar archive written into folder; their names in order.
QStringList extract(const QString& archive, const QString& folder) {
    QFile in(archive);
    if (!in.open(QIODevice::ReadOnly))
        fail(QStringLiteral("The backup %1 cannot be read.").arg(QDir::toNativeSeparators(archive)));
    const QString notOne = QStringLiteral("%1 is not a Quillary backup.").arg(QDir::toNativeSeparators(archive));
    QStringList names;
    while (true) {
        const QByteArray h = in.read(512);
        if (h.size() < 512) fail(notOne);
        if (h.count('\0') == 512) break;
        if (h.mid(257, 5) != "ustar") fail(notOne);
        const QString name = QString::fromUtf8(h.left(100).constData());
        bool ok = false;
        const qint64 size = h.mid(124, 11).toLongLong(&ok, 8);
        if (!ok || size < 0 || name.isEmpty() || name.contains(u'/') || name.startsWith(u'.')) fail(notOne);
        const QByteArray bytes = in.read(size);
        if (bytes.size() != size) fail(notOne);
        in.read((512 - size % 512) % 512);
        QFile out(QDir(folder).filePath(name));
        if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != size) fail(notOne);
        names << name;
    }
    return names;
}

// Why a database of the archive may not be restored; empty when it may.
QString checkDatabase(const Member& m, const QString& path) {
    sqlite3* db = nullptr;
    QString why;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        why = QStringLiteral("%1 cannot be opened.").arg(m.name);
    } else {
        const auto single = [&](const char* sql, QString& value) {
            sqlite3_stmt* st = nullptr;
            if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) != SQLITE_OK) return false;
            const bool row = sqlite3_step(st) == SQLITE_ROW;
            if (row) value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
            sqlite3_finalize(st);
            return row;
        };
        QString integrity, version, tables;
        if (!single("PRAGMA integrity_check", integrity) || integrity != QLatin1String("ok")) {
            why = QStringLiteral("%1 fails the integrity check (%2).")
                      .arg(m.name, integrity.isEmpty() ? QStringLiteral("not a database") : integrity);
        } else if (!single("PRAGMA user_version", version) || version.toInt() < 1 ||
                   version.toInt() > schemaVersion(m.kind)) {
            why = QStringLiteral("%1 has schema version %2; this program knows versions 1 to %3.")
                      .arg(m.name, version)
                      .arg(schemaVersion(m.kind));
        } else {
            const char* table = m.kind == DatabaseKind::Wage   ? "Wages"
                                : m.kind == DatabaseKind::Farm ? "Addresses"
                                                               : "MenuOptions";
            const QByteArray sql =
                QByteArray("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = '") + table + "'";
            if (!single(sql.constData(), tables) || tables.toInt() != 1)
                why = QStringLiteral("%1 is not the %2 database.").arg(m.name, databaseKindName(m.kind));
        }
    }
    sqlite3_close_v2(db);
    return why;
}

} // namespace

QString BackupFileName() {
    return QStringLiteral("Quillary backup %1.tar").arg(QDate::currentDate().toString(Qt::ISODate));
}

QString BackupFolder() {
    return DocumentsFolder() + QStringLiteral("/Backups");
}

BackupResult BackupData(const QString& file) {
    QTemporaryDir work;
    if (!work.isValid()) fail(QStringLiteral("No room for the backup's working files."));
    BackupResult result;
    result.file = QFileInfo(file).absoluteFilePath();
    QDir().mkpath(QFileInfo(result.file).absolutePath());
    QSaveFile out(result.file);
    if (!out.open(QIODevice::WriteOnly))
        fail(QStringLiteral("The backup %1 cannot be written.").arg(QDir::toNativeSeparators(file)));
    for (const Member& m : databases()) {
        if (!QFileInfo::exists(m.path)) continue;
        const QString copy = work.filePath(m.name);
        onlineCopy(m.path, copy);
        writeMember(out, m.name, readFile(copy));
        result.entries << m.name;
    }
    if (QFileInfo::exists(FamilyFile())) {
        writeMember(out, kSettingsMember, readFile(FamilyFile()));
        result.entries << kSettingsMember;
    }
    out.write(QByteArray(1024, '\0'));
    if (result.entries.isEmpty()) {
        out.cancelWriting();
        fail(QStringLiteral("There is no data to back up."));
    }
    if (!out.commit())
        fail(QStringLiteral("The backup %1 cannot be written.").arg(QDir::toNativeSeparators(file)));
    return result;
}

RestoreResult RestoreData(const QString& file) {
    QTemporaryDir work;
    if (!work.isValid()) fail(QStringLiteral("No room for the restore's working files."));
    const QStringList names = extract(file, work.path());
    QStringList problems;
    QList<Member> present;
    for (const Member& m : databases()) {
        if (!names.contains(m.name)) continue;
        const QString why = checkDatabase(m, work.filePath(m.name));
        if (!why.isEmpty())
            problems << why;
        else
            present << m;
    }
    if (present.isEmpty() && problems.isEmpty())
        fail(QStringLiteral("%1 holds no database of Quillary.").arg(QDir::toNativeSeparators(file)));
    if (!problems.isEmpty())
        fail(QStringLiteral("%1 was not restored; nothing was changed.\n").arg(QDir::toNativeSeparators(file)) +
             problems.join(u'\n'));

    RestoreResult result;
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HHmmss"));
    result.safetyCopy = BackupFolder() + QStringLiteral("/Before restore %1.tar").arg(stamp);
    BackupData(result.safetyCopy);
    for (const Member& m : present) {
        QDir().mkpath(QFileInfo(m.path).absolutePath());
        onlineCopy(work.filePath(m.name), m.path);
        result.restored << m.name;
    }
    if (names.contains(kSettingsMember)) {
        QSaveFile ini(FamilyFile());
        if (ini.open(QIODevice::WriteOnly) && ini.write(readFile(work.filePath(kSettingsMember))) >= 0 &&
            ini.commit())
            result.restored << kSettingsMember;
    }
    return result;
}

} // namespace ql
