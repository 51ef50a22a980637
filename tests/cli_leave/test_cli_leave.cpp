// `quillary-cli leave` on the demo farm, as a script would use it.
#include "CliRunner.h"
#include "TestEnv.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace qltest;

namespace {
class CliLeaveTest : public DocumentsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(runCli({QStringLiteral("init"), QStringLiteral("--demo")}, docs->path()).exitCode, 0);
    }
    // Aroha Testington (employee 1) was hired on 1/08/2023.
    QJsonObject leave(QStringList args, int expectedExit = 0) {
        args.prepend(QStringLiteral("leave"));
        args << QStringLiteral("--today") << QStringLiteral("2025-11-01");
        const CliResult r = runCli(args, docs->path());
        EXPECT_EQ(r.exitCode, expectedExit) << r.err.toStdString();
        last = r;
        return QJsonDocument::fromJson(r.out.toUtf8()).object();
    }
    static QJsonArray cells(const QJsonObject& o, int row) {
        return o.value(QStringLiteral("rows")).toArray().at(row).toArray();
    }
    static QStringList shown(const QJsonObject& o, int row) {
        QStringList out;
        const QJsonArray c = cells(o, row);
        for (int i = 3; i < 8; ++i)
            out << (c.at(i).isNull() ? QStringLiteral("null") : c.at(i).toString());
        return out;
    }
    CliResult last;
};
} // namespace

TEST_F(CliLeaveTest, TheCurrentYearOfAnnualLeave) {
    const QJsonObject o = leave({QStringLiteral("1"), QStringLiteral("1")});
    EXPECT_EQ(o.value(QStringLiteral("lblfDate")).toString(), QStringLiteral("1/08/2025"));
    EXPECT_EQ(o.value(QStringLiteral("lbltDate")).toString(), QStringLiteral("31/07/2026"));
    EXPECT_EQ(o.value(QStringLiteral("lblHired")).toString(), QStringLiteral("From"));
    EXPECT_EQ(o.value(QStringLiteral("txtLeaveCForward")).toString(), QStringLiteral("15.0"));
    EXPECT_EQ(o.value(QStringLiteral("txtLeaveAdded")).toString(), QStringLiteral("20.0"));
    EXPECT_EQ(o.value(QStringLiteral("txtLeaveTaken")).toString(), QStringLiteral("3.0"));
    EXPECT_EQ(o.value(QStringLiteral("txtLeaveAvailable")).toString(), QStringLiteral("32.0"));
    ASSERT_EQ(o.value(QStringLiteral("rows")).toArray().size(), 2);
    EXPECT_EQ(shown(o, 1),
              (QStringList{"Leave Taken", "3.00", "20/10/2025", "22/10/2025", "Labour weekend"}));
    EXPECT_EQ(cells(o, 1).at(1).toString(), QStringLiteral("1"));
    EXPECT_EQ(cells(o, 1).at(2).toString(), QStringLiteral("1"));
    EXPECT_TRUE(o.value(QStringLiteral("messages")).toArray().isEmpty());
    EXPECT_FALSE(o.contains(QStringLiteral("table")));
}

TEST_F(CliLeaveTest, AllYearsHasNoCarriedForward) {
    const QJsonObject o = leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--all-years")});
    EXPECT_TRUE(o.value(QStringLiteral("txtLeaveCForward")).isNull());
    EXPECT_EQ(o.value(QStringLiteral("lblHired")).toString(), QStringLiteral("Hired"));
    EXPECT_EQ(o.value(QStringLiteral("lblfDate")).toString(), QStringLiteral("1/08/2023"));
    EXPECT_EQ(o.value(QStringLiteral("lbltDate")).toString(), QStringLiteral("1/11/2025"));
    EXPECT_EQ(o.value(QStringLiteral("rows")).toArray().size(), 4);
    EXPECT_EQ(o.value(QStringLiteral("txtLeaveAvailable")).toString(), QStringLiteral("32.0"));
}

TEST_F(CliLeaveTest, ANewTakenRowIsSavedAndOtherYearsStay) {
    const QString edits = QStringLiteral(R"([{"op": "edit", "row": "new", "col": 3, "text": "Leave Taken"},
        {"op": "edit", "row": "last", "col": 4, "text": "2"},
        {"op": "edit", "row": "last", "col": 5, "text": "3/11/2025"},
        {"op": "edit", "row": "last", "col": 7, "text": "Show day"}])");
    const QJsonObject o = leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--edits"), edits,
                                 QStringLiteral("--save")});
    EXPECT_EQ(shown(o, 2), (QStringList{"Leave Taken", "2.00", "3/11/2025", "4/11/2025", "Show day"}));
    EXPECT_EQ(o.value(QStringLiteral("txtLeaveTaken")).toString(), QStringLiteral("5.0"));
    const QJsonArray table = o.value(QStringLiteral("table")).toArray();
    int annual = 0;
    bool found = false;
    for (const QJsonValue& v : table) {
        const QJsonObject r = v.toObject();
        annual += r.value(QStringLiteral("LeaveTypeID")).toInt() == 1;
        found = found || (r.value(QStringLiteral("Comments")).toString() == QStringLiteral("Show day") &&
                          r.value(QStringLiteral("DateFrom")).toString() == QStringLiteral("2025-11-03") &&
                          r.value(QStringLiteral("DateTo")).toString() == QStringLiteral("2025-11-04") &&
                          r.value(QStringLiteral("TransTypeID")).toInt() == 2);
    }
    EXPECT_EQ(annual, 5); // two of last year, two of this year and the new one
    EXPECT_TRUE(found) << last.out.toStdString();
    const QJsonObject again = leave({QStringLiteral("1"), QStringLiteral("1")});
    EXPECT_EQ(again.value(QStringLiteral("rows")).toArray().size(), 3);
}

TEST_F(CliLeaveTest, DeletingAsksAndNoKeepsTheRow) {
    const QJsonObject no =
        leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--edits"),
               QStringLiteral(R"([{"op": "delete", "row": 1, "answer": "no"}])"), QStringLiteral("--save")});
    EXPECT_EQ(no.value(QStringLiteral("rows")).toArray().size(), 2);
    const QJsonObject box = no.value(QStringLiteral("messages")).toArray().at(0).toObject();
    EXPECT_EQ(box.value(QStringLiteral("heading")).toString(), QStringLiteral("Delete Entry?"));
    EXPECT_EQ(box.value(QStringLiteral("text")).toString(),
              QStringLiteral("Are you sure you want to delete this entry?"));
    const QJsonObject yes = leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--edits"),
                                   QStringLiteral(R"([{"op": "delete", "row": "last", "answer": "yes"}])"),
                                   QStringLiteral("--save")});
    EXPECT_EQ(yes.value(QStringLiteral("rows")).toArray().size(), 1);
    EXPECT_EQ(yes.value(QStringLiteral("txtLeaveTaken")).toString(), QStringLiteral("0.0"));
    EXPECT_EQ(yes.value(QStringLiteral("table")).toArray().size(), 6);
}

TEST_F(CliLeaveTest, TypedCellsAreCorrectedAsOnTheScreen) {
    const QJsonObject o = leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--edits"),
                                 QStringLiteral(R"([{"op": "edit", "row": 1, "col": 4, "text": "abc"},
                                                    {"op": "edit", "row": 0, "col": 5, "text": "1/01/2020"}])")});
    EXPECT_EQ(cells(o, 1).at(4).toString(), QStringLiteral("0"));
    EXPECT_EQ(cells(o, 0).at(5).toString(), QStringLiteral("1/08/2025")); // pulled to the year's start
    EXPECT_EQ(o.value(QStringLiteral("txtLeaveTaken")).toString(), QStringLiteral("0.0"));
}

TEST_F(CliLeaveTest, ARowWithoutAKindIsInvalidAndTheSaveDropsIt) {
    const QJsonObject o = leave({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("--edits"),
                                 QStringLiteral(R"([{"op": "edit", "row": "new", "col": 4, "text": "1"}])"),
                                 QStringLiteral("--save")});
    const QJsonArray messages = o.value(QStringLiteral("messages")).toArray();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages.at(0).toObject().value(QStringLiteral("heading")).toString(),
              QStringLiteral("Invalid Data"));
    EXPECT_EQ(messages.at(0).toObject().value(QStringLiteral("text")).toString(),
              QStringLiteral("This record entry is invalid. The From Date, Leave Type and Days fields must "
                             "all contain data."));
    EXPECT_EQ(o.value(QStringLiteral("rows")).toArray().size(), 3);
    EXPECT_TRUE(cells(o, 2).at(3).isNull());
    int sick = 0;
    for (const QJsonValue& v : o.value(QStringLiteral("table")).toArray())
        sick += v.toObject().value(QStringLiteral("LeaveTypeID")).toInt() == 2;
    EXPECT_EQ(sick, 2);
}

TEST_F(CliLeaveTest, WrongUsageAndBadInput) {
    EXPECT_EQ(runCli({QStringLiteral("leave"), QStringLiteral("1")}, docs->path()).exitCode, 2);
    EXPECT_EQ(
        runCli({QStringLiteral("leave"), QStringLiteral("1"), QStringLiteral("6")}, docs->path()).exitCode,
        2);
    EXPECT_EQ(runCli({QStringLiteral("leave"), QStringLiteral("1"), QStringLiteral("1"),
                      QStringLiteral("--today"), QStringLiteral("1/11/2025")},
                     docs->path())
                  .exitCode,
              2);
    EXPECT_EQ(
        runCli({QStringLiteral("leave"), QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--what")},
               docs->path())
            .exitCode,
        2);
    leave({QStringLiteral("6"), QStringLiteral("1")}, 1); // finished: off the payroll
    EXPECT_TRUE(last.err.contains(QStringLiteral("Employee 6 is not on the payroll.")));
    leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--edits"),
           QStringLiteral(R"([{"op": "edit", "row": 0, "col": 0, "text": "9"}])")},
          1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("Column 0 is not shown in the grid.")));
    leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--edits"),
           QStringLiteral(R"([{"op": "edit", "row": 0, "col": 3, "text": "Holiday"}])"),
           QStringLiteral("--save")},
          1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("\"Holiday\" is not in the list")));
    leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--edits"), QStringLiteral("not json")},
          1);
    leave({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--edits"),
           QStringLiteral(R"([{"op": "delete", "row": 9, "answer": "yes"}])")},
          1);
    EXPECT_TRUE(last.err.contains(QStringLiteral("There is no row 9 in the grid.")));
    const QJsonObject unchanged = leave({QStringLiteral("1"), QStringLiteral("1")});
    EXPECT_EQ(unchanged.value(QStringLiteral("rows")).toArray().size(), 2);
}
