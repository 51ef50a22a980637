// The message box, the input box, the error report and the trap's way to it.
#include "FrameTest.h"
#include "frame/Messages.h"
#include "runtime/Trap.h"

using namespace ql;
using qltest::FrameTest;

class MessagesTest : public FrameTest {};

TEST_F(MessagesTest, SubHeadingAloneHasItsAmpersandsDoubled) {
    ShowMessage("R&D costs", 0, "Fernhold", "Information", "R&D", 6, true);
    ASSERT_EQ(scripted.calls.size(), 1);
    const DialogCall& c = scripted.calls[0];
    EXPECT_EQ(c.kind, DialogCall::Message);
    EXPECT_EQ(c.message, QString("R&D costs"));
    EXPECT_EQ(c.subHeading, QString("R&&D"));
    EXPECT_EQ(c.heading, QString("Information"));
    EXPECT_EQ(c.caption, QString("Fernhold"));
    EXPECT_EQ(c.buttons, 0);
    EXPECT_EQ(c.kindOrLevel, 6);
    EXPECT_TRUE(c.flag);
}

TEST_F(MessagesTest, DefaultAnswerIsTheFirstButtonOfTheSet) {
    EXPECT_EQ(ShowMessage("m", msg::OKOnly, "F", "h", "", msg::Information, true), msg::OK);
    EXPECT_EQ(ShowMessage("m", msg::OKCancel, "F", "h", "", msg::Question, true), msg::OK);
    EXPECT_EQ(ShowMessage("m", msg::YesNo, "F", "h", "", msg::Question, true), msg::Yes);
    EXPECT_EQ(ShowMessage("m", msg::YesNo | msg::DefaultButton2, "F", "h", "", msg::Question, true), msg::No);
    EXPECT_EQ(ShowMessage("m", msg::YesNoCancel | msg::DefaultButton3, "F", "h", "", msg::Question, true),
              msg::Cancel);
}

TEST_F(MessagesTest, QueuedAnswersComeFirst) {
    scripted.queueAnswer(msg::No);
    scripted.queueAnswer(msg::Cancel);
    EXPECT_EQ(ShowMessage("m", msg::YesNo, "F", "Please Confirm", "", msg::Question, true), msg::No);
    EXPECT_EQ(ShowMessage("m", msg::OKCancel, "F", "Please Confirm", "", msg::Question, true), msg::Cancel);
    EXPECT_EQ(ShowMessage("m", msg::YesNo, "F", "Please Confirm", "", msg::Question, true), msg::Yes);
    EXPECT_EQ(scripted.calls[0].answer, QString("7"));
}

TEST_F(MessagesTest, InputBoxAnswersItsDefaultOrTheQueue) {
    EXPECT_EQ(InputBx("Date of first pay", "Quillary", "1/04/2024"), QString("1/04/2024"));
    scripted.queueInput("");
    EXPECT_EQ(InputBx("Date of first pay", "Quillary", "1/04/2024"), QString());
    scripted.queueInput("7/04/2024");
    EXPECT_EQ(InputBx("Date of first pay", "Quillary"), QString("7/04/2024"));
    ASSERT_EQ(scripted.calls.size(), 3);
    EXPECT_EQ(scripted.calls[0].kind, DialogCall::Input);
    EXPECT_EQ(scripted.calls[0].message, QString("Date of first pay"));
    EXPECT_EQ(scripted.calls[0].caption, QString("Quillary"));
    EXPECT_FALSE(scripted.calls[0].masked);
    EXPECT_FALSE(scripted.calls[0].numeric);
}

TEST_F(MessagesTest, ReportErrorPassesTheContract) {
    setErrNumber(3078);
    ReportError("The table is missing", "DAO", "FillEmployeeArray", "", 0, false);
    ASSERT_EQ(scripted.calls.size(), 1);
    const DialogCall& c = scripted.calls[0];
    EXPECT_EQ(c.kind, DialogCall::Error);
    EXPECT_EQ(c.message, QString("The table is missing"));
    EXPECT_EQ(c.number, 3078);
    EXPECT_EQ(c.heading, QString("DAO FillEmployeeArray"));
    EXPECT_EQ(c.caption, QString());
    EXPECT_EQ(c.text, QString("Quillary"));
    EXPECT_EQ(c.kindOrLevel, 3);
    EXPECT_FALSE(c.flag);
}

TEST_F(MessagesTest, LocationKeepsItsBlanks) {
    ReportError("x", "Quillary", " datpays_reposition got memo", "", 0, true);
    EXPECT_EQ(scripted.calls[0].heading, QString("Quillary  datpays_reposition got memo"));
}

TEST_F(MessagesTest, TrappedErrorsGoToReportError) {
    installErrorReporter();
    bool after = false;
    const bool ok = trap("CalcPAYE", [&] {
        raiseError(11, "Quillary", "Division by zero");
        after = true;
    });
    EXPECT_FALSE(ok);
    EXPECT_FALSE(after);
    ASSERT_EQ(scripted.calls.size(), 1);
    const DialogCall& c = scripted.calls[0];
    EXPECT_EQ(c.kind, DialogCall::Error);
    EXPECT_EQ(c.number, 11);
    EXPECT_EQ(c.message, QString("Division by zero"));
    EXPECT_EQ(c.heading, QString("Quillary CalcPAYE"));
    EXPECT_EQ(c.caption, QString());
    EXPECT_EQ(c.kindOrLevel, 3);
    EXPECT_TRUE(c.flag);
    EXPECT_EQ(ErrNumber(), 11);
}

TEST_F(MessagesTest, WithoutInstalledDialogsTheBuiltInScriptedOnesAnswer) {
    setDialogs(nullptr);
    EXPECT_EQ(ShowMessage("m", msg::YesNo, "F", "h", "", msg::Question, true), msg::Yes);
    EXPECT_EQ(InputBx("p", "t", "d"), QString("d"));
    EXPECT_TRUE(scripted.calls.isEmpty());
}

TEST_F(MessagesTest, EchoTellsEachCall) {
    QStringList told;
    scripted.setEcho([&](const QString& line) { told << line; });
    ShowMessage("Body", msg::OKOnly, "F", "Heading", "Sub", msg::Information, true);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0], QString("Heading - Sub: Body [OK]"));
}
