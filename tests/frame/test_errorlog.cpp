// FHErrors.log: one line per run.
#include "FrameTest.h"
#include "frame/ErrorLog.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "runtime/DateFns.h"

using namespace ql;
using qltest::FrameTest;

class ErrorLogTest : public FrameTest {
protected:
    void SetUp() override {
        FrameTest::SetUp();
        setClockForTesting([] { return QDateTime(QDate(2007, 6, 21), QTime(14, 3, 11)); });
    }
    void TearDown() override {
        setClockForTesting({});
        FrameTest::TearDown();
    }
};

TEST_F(ErrorLogTest, LineIsDateTimeTabTextCrLf) {
    LogError("Something is missing.");
    EXPECT_EQ(readAll(logPath()), QByteArray("21/06/2007 14:03:11\tSomething is missing.\r\n"));
}

TEST_F(ErrorLogTest, OnlyTheFirstCallOfARunWrites) {
    LogError("first");
    LogError("second");
    EXPECT_EQ(logLines(), QStringList{"21/06/2007 14:03:11\tfirst"});
}

TEST_F(ErrorLogTest, TwoMissingKeysLeaveOneLineAndANewRunAddsASecond) {
    const QString f = writeIni("[TAX]\nTaxName=GST\n");
    EXPECT_EQ(PAYEFreq(), 1);
    EXPECT_EQ(PAYEAccount(), 401002);
    EXPECT_EQ(logLines(),
              QStringList{"21/06/2007 14:03:11\tA key from " + f + " is missing.Section=TAX, Key=PAYEFreq"});
    resetErrorLogForTesting();
    setClockForTesting([] { return QDateTime(QDate(2007, 6, 22), QTime(8, 0, 5)); });
    EXPECT_EQ(PAYEAccount(), 401002);
    EXPECT_EQ(
        logLines(),
        (QStringList{"21/06/2007 14:03:11\tA key from " + f + " is missing.Section=TAX, Key=PAYEFreq",
                     "22/06/2007 08:00:05\tA key from " + f + " is missing.Section=TAX, Key=PAYEAccount"}));
}

TEST_F(ErrorLogTest, ExistingLogIsAppendedTo) {
    docs->writeFile("Fernhold/Common/FHErrors.log", "old line\r\n");
    LogError("new");
    EXPECT_EQ(readAll(logPath()), QByteArray("old line\r\n21/06/2007 14:03:11\tnew\r\n"));
}

TEST_F(ErrorLogTest, ShortDateFollowsTheLocale) {
    qltest::LocaleGuard german(qltest::germanLocale());
    LogError("x");
    EXPECT_EQ(readAll(logPath()), QByteArray("21.06.2007 14:03:11\tx\r\n"));
}

TEST_F(ErrorLogTest, UnwritableLogMeansNoLineAndNothingElse) {
    QDir().mkpath(logPath()); // a folder where the file should be
    LogError("lost");
    LogError("also lost");
    EXPECT_TRUE(QFileInfo(logPath()).isDir());
}

TEST_F(ErrorLogTest, LogLivesInTheCommonFolder) {
    EXPECT_EQ(ErrorLogPath(), docs->path() + "/Fernhold/Common/FHErrors.log");
}
