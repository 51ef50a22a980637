// The data files on a medium that can't be written and on a full disk: each command names the cause
// (not damage), exits 1 when its work was not done, and leaves both files whole and in step, so that a
// rerun on a writable medium with room finishes the work. The media are small file systems mounted for
// the test; where that is not allowed (not root) the tests are skipped.
#include "IntegritySupport.h"
#include "frame/Settings.h"
#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <sys/mount.h>

using namespace qltest;

namespace {

// A small file system mounted over a folder for the life of the object.
class SmallMedium {
public:
    SmallMedium(const QString& folder, int kilobytes) : m_folder(folder.toLocal8Bit()) {
        const QByteArray options = "size=" + QByteArray::number(kilobytes) + "k";
        if (::mount("tmpfs", m_folder.constData(), "tmpfs", 0, options.constData()) != 0)
            m_why = QString::fromLocal8Bit(std::strerror(errno));
        else
            m_options = options;
    }
    ~SmallMedium() {
        if (!m_options.isEmpty()) ::umount2(m_folder.constData(), MNT_DETACH);
    }
    bool mounted() const { return !m_options.isEmpty(); }
    QString why() const { return m_why; }
    bool setReadOnly(bool readOnly) {
        const unsigned long flags = MS_REMOUNT | (readOnly ? MS_RDONLY : 0);
        return ::mount("tmpfs", m_folder.constData(), "tmpfs", flags, m_options.constData()) == 0;
    }
    // Writes a file that leaves the medium leave bytes of room (none at all for 0); its path.
    QString fill(qint64 leave = 0) const {
        const QString folder = QString::fromLocal8Bit(m_folder);
        const QString path = folder + QStringLiteral("/filler");
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) return path;
        qint64 wanted = QStorageInfo(folder).bytesAvailable() - leave;
        const QByteArray block(4096, 'x');
        while (wanted > 0) {
            const qint64 n = f.write(block.constData(), std::min<qint64>(wanted, block.size()));
            if (n <= 0) break;
            wanted -= n;
        }
        // Not even a part of a page left.
        if (leave == 0)
            while (f.write("x", 1) == 1) {
            }
        return path;
    }

private:
    QByteArray m_folder;
    QByteArray m_options;
    QString m_why;
};

class Media : public ::testing::Test {
protected:
    TempDocuments docs;
    std::unique_ptr<SmallMedium> medium;
    void SetUp() override {
        medium = std::make_unique<SmallMedium>(docs.path(), 8192);
        if (!medium->mounted()) GTEST_SKIP() << "a small file system can't be mounted here: " << medium->why().toStdString();
        ASSERT_EQ(run({QStringLiteral("init"), QStringLiteral("--demo")}).exitCode, 0);
        ql::WriteSetting(QStringLiteral("WAGE"), QStringLiteral("PrintPaySlip"), QStringLiteral("N"));
    }
    void TearDown() override { medium.reset(); }
    CliResult run(const QStringList& a) { return runCli(a, docs.path()); }
    static void expectNamed(const CliResult& r, const QString& cause, const QString& command) {
        EXPECT_EQ(r.exitCode, 1) << command.toStdString() << ": " << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(cause, Qt::CaseInsensitive)) << command.toStdString() << ": " << r.err.toStdString();
        for (const char* wrong : {"corrupt", "damaged", "not a database", "entered more employees"})
            EXPECT_FALSE(r.err.contains(QLatin1String(wrong), Qt::CaseInsensitive))
                << command.toStdString() << ": " << r.err.toStdString();
    }
    // Both files whole and in step; the number of pays.
    int checkFiles() {
        ql::Database wage = openWage();
        ql::Database farm = openFarm();
        EXPECT_EQ(wage.scalar(QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
        EXPECT_EQ(farm.scalar(QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
        EXPECT_EQ(disagreements(wage, farm), QString());
        return wage.scalar(QStringLiteral("SELECT count(*) FROM Wages")).toInt();
    }
};

TEST_F(Media, AReadOnlyMediumIsNamedAndNothingIsHalfDone) {
    const int pays = checkFiles();
    ASSERT_TRUE(medium->setReadOnly(true));
    const QList<QStringList> writes{
        {QStringLiteral("add-pay"), QStringLiteral("1")},
        {QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit")},
    };
    for (const QStringList& w : writes) expectNamed(run(w), QStringLiteral("read-only"), w.join(u' '));
    // A read names the medium too when it can't be done, and otherwise does it.
    const CliResult roster = run({QStringLiteral("roster")});
    if (roster.exitCode != 0) expectNamed(roster, QStringLiteral("read-only"), QStringLiteral("roster"));
    ASSERT_TRUE(medium->setReadOnly(false));
    EXPECT_EQ(checkFiles(), pays);
    // Writable again, the run is done in full.
    const CliResult again = run({QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit")});
    EXPECT_EQ(again.exitCode, 0) << again.err.toStdString();
    EXPECT_GT(checkFiles(), pays);
}

TEST_F(Media, AFullDiskIsNamedAndARerunWithRoomFinishesTheWork) {
    const int pays = checkFiles();
    const QString filler = medium->fill();
    const QStringList runOf{QStringLiteral("pay-run"), QStringLiteral("2026-11-06"), QStringLiteral("--commit")};
    expectNamed(run(runOf), QStringLiteral("space"), runOf.join(u' '));
    const QStringList add{QStringLiteral("add-pay"), QStringLiteral("1")};
    expectNamed(run(add), QStringLiteral("space"), add.join(u' '));
    ASSERT_TRUE(QFile::remove(filler));
    EXPECT_EQ(checkFiles(), pays);
    // The disk fills up while the run writes: with a little room each run does all its work or names
    // the full disk, and the files stay whole and in step.
    QDate date(2026, 11, 13);
    for (const qint64 room : {8 * 1024, 32 * 1024, 96 * 1024, 256 * 1024}) {
        const QStringList later{QStringLiteral("pay-run"), date.toString(Qt::ISODate), QStringLiteral("--commit")};
        date = date.addDays(7);
        medium->fill(room);
        const CliResult r = run(later);
        std::cout << room << " bytes of room: exit " << r.exitCode << ", " << r.err.simplified().toStdString() << std::endl;
        if (r.exitCode != 0) expectNamed(r, QStringLiteral("space"), QStringLiteral("with %1 bytes of room").arg(room));
        ASSERT_TRUE(QFile::remove(filler));
        checkFiles();
        const CliResult again = run(later);
        EXPECT_EQ(again.exitCode, 0) << again.err.toStdString();
    }
    const CliResult again = run(runOf);
    EXPECT_EQ(again.exitCode, 0) << again.err.toStdString();
    EXPECT_GT(checkFiles(), pays);
    ql::Database wage = openWage();
    EXPECT_EQ(wage.scalar(QStringLiteral("SELECT count(*) FROM Wages WHERE [Date] = '2026-11-06' AND Reference IS NULL"))
                  .toInt(),
              0);
}

} // namespace
