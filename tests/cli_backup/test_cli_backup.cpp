// quillary-cli backup FILE and restore FILE: one archive of the three databases and the settings,
// checked before anything is replaced, with a safety copy of what a restore replaces.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include <QDir>
#include <QFile>
#include <QProcess>
#include <sqlite3.h>

namespace {

class BackupTest : public qltest::DocumentsTest {
protected:
    void SetUp() override {
        qltest::DocumentsTest::SetUp();
        ASSERT_EQ(run({"init", "--demo"}).exitCode, 0);
    }
    qltest::CliResult run(const QStringList& args) { return qltest::runCli(args, docs->path()); }
    QString wage() const { return docs->path() + "/data/Wage32.db"; }
    int employees() {
        ql::Database db;
        db.open(wage());
        const int n = db.scalar(QStringLiteral("SELECT count(*) FROM Employees")).toInt();
        db.close();
        return n;
    }
    void execute(const QString& sql) {
        ql::Database db;
        db.open(wage());
        db.executeScript(sql);
        db.close();
    }
};

QStringList tarMembers(const QString& file) {
    QProcess tar;
    tar.start(QStringLiteral("tar"), {QStringLiteral("tf"), file});
    if (!tar.waitForFinished(30000) || tar.exitCode() != 0) return {QStringLiteral("<tar failed>")};
    return QString::fromUtf8(tar.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

TEST_F(BackupTest, BackupThenRestoreBringsTheDataBackWithASafetyCopy) {
    const QString archive = docs->path() + "/out/week.tar";
    const auto b = run({"backup", archive});
    ASSERT_EQ(b.exitCode, 0) << b.err.toStdString();
    EXPECT_EQ(b.out, "backup: " + archive + "\n  Wage32.db\n  Farm32.db\n  Modules.db\n  Fernhold.ini\n");
    // Any tar program reads it.
    EXPECT_EQ(tarMembers(archive), (QStringList{"Wage32.db", "Farm32.db", "Modules.db", "Fernhold.ini"}));

    const int before = employees();
    ASSERT_GT(before, 0);
    execute(QStringLiteral("DELETE FROM Employees"));
    ASSERT_EQ(employees(), 0);

    const auto r = run({"restore", archive});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.startsWith("restored: " + archive + "\n  Wage32.db\n  Farm32.db\n  Modules.db\n  Fernhold.ini\n"))
        << r.out.toStdString();
    EXPECT_EQ(employees(), before);
    // The data as it stood before the restore is kept, and is itself a backup that restores.
    const QString prefix = QStringLiteral("safety copy: ");
    const int at = r.out.indexOf(prefix);
    ASSERT_GE(at, 0);
    const QString safety = r.out.mid(at + prefix.size()).trimmed();
    ASSERT_TRUE(QFile::exists(safety)) << safety.toStdString();
    EXPECT_TRUE(safety.startsWith(docs->path() + "/Backups/Before restore "));
    ASSERT_EQ(run({"restore", safety}).exitCode, 0);
    EXPECT_EQ(employees(), 0);
}

TEST_F(BackupTest, AFolderGetsADatedArchive) {
    const auto b = run({"backup", docs->path()});
    ASSERT_EQ(b.exitCode, 0) << b.err.toStdString();
    const QString expected =
        docs->path() + "/Quillary backup " + QDate::currentDate().toString(Qt::ISODate) + ".tar";
    EXPECT_TRUE(b.out.startsWith("backup: " + expected + "\n")) << b.out.toStdString();
    EXPECT_TRUE(QFile::exists(expected));
}

TEST_F(BackupTest, ADamagedOrForeignArchiveChangesNothing) {
    const QString junk = docs->path() + "/junk.tar";
    QFile f(junk);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("not an archive at all");
    f.close();
    const int before = employees();
    const auto r = run({"restore", junk});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("is not a Quillary backup")) << r.err.toStdString();
    EXPECT_EQ(employees(), before);
    EXPECT_FALSE(QDir(docs->path() + "/Backups").exists()); // nothing replaced, so no safety copy

    // A payroll database of a later schema version than this program knows.
    const QString archive = docs->path() + "/later.tar";
    ASSERT_EQ(run({"backup", archive}).exitCode, 0);
    QDir work(docs->path() + "/unpacked");
    ASSERT_TRUE(work.mkpath("."));
    QProcess tar;
    tar.setWorkingDirectory(work.path());
    tar.start("tar", {"xf", archive});
    ASSERT_TRUE(tar.waitForFinished(30000));
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(work.filePath("Wage32.db").toUtf8().constData(), &db), SQLITE_OK);
    sqlite3_exec(db, "PRAGMA user_version = 99", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    QProcess pack;
    pack.setWorkingDirectory(work.path());
    pack.start("tar", {"--format=ustar", "-cf", archive, "Wage32.db", "Farm32.db", "Modules.db"});
    ASSERT_TRUE(pack.waitForFinished(30000));
    ASSERT_EQ(pack.exitCode(), 0);
    execute(QStringLiteral("DELETE FROM Employees WHERE EmployeeID = 1"));
    const int now = employees();
    const auto later = run({"restore", archive});
    EXPECT_EQ(later.exitCode, 1);
    EXPECT_TRUE(later.err.contains("nothing was changed")) << later.err.toStdString();
    EXPECT_TRUE(later.err.contains("Wage32.db has schema version 99")) << later.err.toStdString();
    EXPECT_EQ(employees(), now);

    // A database that fails the integrity check.
    QFile wageCopy(work.filePath("Wage32.db"));
    ASSERT_TRUE(wageCopy.open(QIODevice::ReadWrite));
    QByteArray bytes = wageCopy.readAll();
    for (qsizetype i = 4096 * 3; i < bytes.size() && i < 4096 * 6; ++i)
        bytes[i] = char(0x5a);
    wageCopy.seek(0);
    wageCopy.write(bytes);
    wageCopy.close();
    QProcess pack2;
    pack2.setWorkingDirectory(work.path());
    pack2.start("tar", {"--format=ustar", "-cf", archive, "Wage32.db"});
    ASSERT_TRUE(pack2.waitForFinished(30000));
    const auto broken = run({"restore", archive});
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_TRUE(broken.err.contains("Wage32.db")) << broken.err.toStdString();
    EXPECT_EQ(employees(), now);
}

TEST_F(BackupTest, UsageWithoutAFile) {
    EXPECT_EQ(run({"backup"}).exitCode, 2);
    EXPECT_EQ(run({"restore"}).exitCode, 2);
}

} // namespace
