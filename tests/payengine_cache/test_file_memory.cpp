// The settings file and the equations are remembered between uses only while their files keep their
// stamps: an edit made by another process between two calls counts at the second call, whether it
// comes at once (within the clock's resolution) or after the file has settled, and whether or not the
// file's size changes.
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Schema.h"
#include "frame/FileStamp.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "payengine/CountryEquations.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"
#include <QDir>
#include <QFileInfo>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using ql::Currency;

// Runs body in a child process and waits for it; the child does only plain system and SQLite calls.
template <class F> void inAnotherProcess(F body) {
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        const int rc = body();
        _exit(rc);
    }
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    ASSERT_TRUE(WIFEXITED(status));
    ASSERT_EQ(WEXITSTATUS(status), 0);
}

// Rewrites a file in place (same inode), as an editor that saves over the file does.
void rewriteElsewhere(const QString& path, const QByteArray& contents) {
    const QByteArray file = QFile::encodeName(path);
    inAnotherProcess([&] {
        const int fd = ::open(file.constData(), O_WRONLY | O_TRUNC);
        if (fd < 0) return 1;
        const bool ok = ::write(fd, contents.constData(), size_t(contents.size())) == contents.size();
        ::close(fd);
        return ok ? 0 : 2;
    });
}

void settle() {
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
}

class FileMemory : public qltest::DocumentsTest {
protected:
    QString ini;
    void SetUp() override {
        ini = docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"), "[WINDOWS]\nCountry=64\n");
    }
};

TEST_F(FileMemory, ASettingEditedAtOnceBySomeoneElseCounts) {
    EXPECT_EQ(ql::CountryPhone(), 64);
    rewriteElsewhere(ini, "[WINDOWS]\nCountry=61\n"); // same size, same inode, same clock tick maybe
    EXPECT_EQ(ql::CountryPhone(), 61);
    rewriteElsewhere(ini, "[WINDOWS]\nCountry=55\n");
    EXPECT_EQ(ql::CountryPhone(), 55);
}

TEST_F(FileMemory, ASettingEditedAfterTheFileSettledCounts) {
    settle();
    EXPECT_EQ(ql::CountryPhone(), 64);
    EXPECT_EQ(ql::CountryPhone(), 64); // from memory now
    rewriteElsewhere(ini, "[WINDOWS]\nCountry=61\n");
    EXPECT_EQ(ql::CountryPhone(), 61);
    settle();
    EXPECT_EQ(ql::CountryPhone(), 61);
    rewriteElsewhere(ini, "[WINDOWS]\nCountry=598\n[START]\nFirm=Elsewhere\n");
    EXPECT_EQ(ql::CountryPhone(), 598);
    EXPECT_EQ(ql::Firm(), QStringLiteral("Elsewhere"));
}

TEST_F(FileMemory, ARemovedOrNewSettingsFileCounts) {
    settle();
    EXPECT_EQ(ql::Firm(), QStringLiteral("Fernhold"));
    const QByteArray file = QFile::encodeName(ini);
    inAnotherProcess([&] { return ::unlink(file.constData()); });
    EXPECT_EQ(ql::CountryPhone(), 64);
    inAnotherProcess([&] {
        const int fd = ::open(file.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const char text[] = "[START]\nFirm=Newfarm\n";
        const bool ok = fd >= 0 && ::write(fd, text, sizeof text - 1) == ssize_t(sizeof text - 1);
        if (fd >= 0) ::close(fd);
        return ok ? 0 : 1;
    });
    EXPECT_EQ(ql::Firm(), QStringLiteral("Newfarm"));
}

TEST_F(FileMemory, AStampTakenRightAfterAChangeIsNotTrusted) {
    const ql::FileStamp fresh = ql::FileStamp::of(ini);
    EXPECT_TRUE(fresh.exists);
    EXPECT_FALSE(fresh.sameAs(ql::FileStamp::of(ini)));
    settle();
    const ql::FileStamp settled = ql::FileStamp::of(ini);
    EXPECT_TRUE(settled.sameAs(ql::FileStamp::of(ini)));
    const ql::FileStamp none = ql::FileStamp::of(ini + QStringLiteral(".none"));
    EXPECT_FALSE(none.exists);
    EXPECT_TRUE(none.sameAs(ql::FileStamp::of(ini + QStringLiteral(".none"))));
}

class EquationMemory : public FileMemory {
protected:
    QString modules;
    void SetUp() override {
        FileMemory::SetUp();
        modules = ql::ModuleFileName();
        QDir().mkpath(QFileInfo(modules).absolutePath());
        ql::Database db = ql::openOrCreate(ql::DatabaseKind::Modules, modules);
    }
    void setRoundingElsewhere(const char* equation) {
        const QByteArray file = QFile::encodeName(modules);
        const QByteArray sql = QByteArray("UPDATE TaxEquations SET Equation = '") + equation +
                               "' WHERE TaxProcessID = 3 AND CountryPhone = 64";
        inAnotherProcess([&] {
            sqlite3* db = nullptr;
            if (sqlite3_open(file.constData(), &db) != SQLITE_OK) return 1;
            const int rc = sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr);
            sqlite3_close(db);
            return rc == SQLITE_OK ? 0 : 2;
        });
    }
    static Currency round(const char* amount) {
        return ql::CountrySpecificEquation(ql::CCur(QVariant(QString::fromLatin1(amount))), 0, 3, Currency());
    }
};

TEST_F(EquationMemory, AnEquationEditedBySomeoneElseCountsAtTheNextCall) {
    settle();
    EXPECT_EQ(round("12.3456"), Currency::fromRaw(123400)); // the template cuts to cents
    EXPECT_EQ(round("12.3456"), Currency::fromRaw(123400));
    setRoundingElsewhere("ROUND(x*2)");
    EXPECT_EQ(round("12.3456"), Currency::fromRaw(246900));
    setRoundingElsewhere("ROUND(x*3)"); // at once, the same size
    EXPECT_EQ(round("12.3456"), Currency::fromRaw(370400));
    settle();
    EXPECT_EQ(round("1"), Currency::fromRaw(30000));
    setRoundingElsewhere("ROUND(x*4)");
    EXPECT_EQ(round("1"), Currency::fromRaw(40000));
}

TEST_F(EquationMemory, ADifferentModulesDatabaseCounts) {
    settle();
    EXPECT_EQ(round("2.5"), Currency::fromRaw(25000));
    // The setting now names a file with no such table: the failure is reported as before, and the
    // amount comes back rounded as it stood.
    const QString other = docs->writeFile(QStringLiteral("other.db"), QByteArray());
    rewriteElsewhere(ini, QByteArray("[WINDOWS]\nCountry=64\n[FERNHOLD]\nModuleFileName=") + other.toUtf8() +
                              "\n");
    int reported = 0;
    ql::setErrorReporter([&](const ql::VbError&, const QString& location) {
        EXPECT_EQ(location, QStringLiteral("CountrySpecificEquation"));
        ++reported;
    });
    EXPECT_EQ(round("2.5"), Currency::fromRaw(25000));
    ql::setErrorReporter({});
    EXPECT_EQ(reported, 1);
}

} // namespace
