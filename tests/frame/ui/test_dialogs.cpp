// The Qt message box, input box and error dialog, offscreen.
#include "frame/Messages.h"
#include "frame/QtDialogs.h"
#include "frame/frmErrorDialog.h"
#include "frame/frmInputDialog.h"
#include "frame/frmMessageDialog.h"
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QKeySequence>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QTimer>
#include <QValidator>
#include <gtest/gtest.h>

using namespace ql;

namespace {

QStringList labelTexts(const QWidget& w) {
    QStringList texts;
    for (auto* l : w.findChildren<QLabel*>())
        if (!l->text().isEmpty()) texts << l->text();
    return texts;
}

QPushButton* button(const QWidget& w, const QString& text) {
    for (auto* b : w.findChildren<QPushButton*>())
        if (frmMessageDialog::shownAccessKeyText(b->text()) == text) return b;
    return nullptr;
}

// Presses a button of the next modal dialog once it is up.
void pressLater(const QString& text) {
    QTimer::singleShot(0, [text] {
        if (QWidget* w = QApplication::activeModalWidget())
            if (QPushButton* b = button(*w, text)) b->click();
    });
}

} // namespace

TEST(MessageDialog, ShowsCaptionHeadingSubHeadingAndBody) {
    frmMessageDialog d("R&D body", msg::YesNo, "Fernhold", "Please Confirm", "R&&D", msg::Question);
    EXPECT_EQ(d.windowTitle(), QString("Fernhold"));
    const QStringList texts = labelTexts(d);
    EXPECT_TRUE(texts.contains("Please Confirm"));
    EXPECT_TRUE(texts.contains("R&D")); // the doubled sub-heading shows as typed
    EXPECT_TRUE(texts.contains("R&D body"));
    auto* head = d.findChildren<QLabel*>().at(1);
    EXPECT_TRUE(head->font().bold());
    EXPECT_TRUE(d.isModal());
    ASSERT_NE(button(d, "Yes"), nullptr);
    ASSERT_NE(button(d, "No"), nullptr);
    EXPECT_EQ(button(d, "OK"), nullptr);
    EXPECT_TRUE(button(d, "Yes")->isDefault());
}

TEST(MessageDialog, ButtonsAnswerTheirCodes) {
    frmMessageDialog d("m", msg::YesNo, "F", "h", "", msg::Question);
    button(d, "No")->click();
    EXPECT_EQ(d.answer(), msg::No);
    frmMessageDialog c("m", msg::OKCancel, "F", "h", "", msg::Question);
    EXPECT_EQ(c.answer(), msg::Cancel); // closing the window cancels
    button(c, "OK")->click();
    EXPECT_EQ(c.answer(), msg::OK);
}

namespace {

const QList<qint32> kButtonSets{msg::OKOnly, msg::OKCancel, msg::AbortRetryIgnore,
                                 msg::YesNoCancel, msg::YesNo, msg::RetryCancel};

// Shows the box as the active window, so that its access keys reach it as a user's keys would.
void showActive(QDialog& d) {
    d.show();
    QApplication::setActiveWindow(&d);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&d));
}

// Waits until the box has gone (an access key clicks its button after the button's short animation).
bool closes(QDialog& d) {
    for (int i = 0; i < 100 && d.isVisible(); ++i)
        QTest::qWait(20);
    return !d.isVisible();
}

} // namespace

TEST(MessageDialog, EveryAnswerSetHasDistinctAccessKeysAndPlainNames) {
    for (qint32 set : kButtonSets) {
        frmMessageDialog d("m", set, "F", "h", "", msg::Question);
        const QList<QPushButton*> buttons = d.findChildren<QPushButton*>();
        ASSERT_EQ(buttons.size(), buttonAnswers(set).size()) << "set " << set;
        QSet<QString> keys;
        for (QPushButton* b : buttons) {
            const QString key = QKeySequence::mnemonic(b->text()).toString();
            EXPECT_FALSE(key.isEmpty()) << b->text().toStdString();
            keys.insert(key);
            // A screen reader hears the plain word, which is the word shown.
            EXPECT_EQ(b->accessibleName(), frmMessageDialog::shownAccessKeyText(b->text()));
        }
        EXPECT_EQ(keys.size(), buttons.size()) << "set " << set;
    }
    frmMessageDialog yes("m", msg::YesNo, "F", "h", "", msg::Question);
    EXPECT_EQ(button(yes, "Yes")->text(), QString("&Yes"));
    frmMessageDialog ok("m", msg::OKOnly, "F", "h", "", msg::Information);
    EXPECT_EQ(button(ok, "OK")->text(), QString("&OK"));
}

TEST(MessageDialog, EachAccessKeyAnswersTheBox) {
    for (qint32 set : kButtonSets) {
        for (qint16 answer : buttonAnswers(set)) {
            frmMessageDialog d("m", set, "F", "h", "", msg::Question);
            showActive(d);
            const QString letter = answerName(answer).left(1);
            QTest::keyClick(&d, char(letter.at(0).toLower().toLatin1()), Qt::AltModifier);
            ASSERT_TRUE(closes(d)) << "Alt+" << letter.toStdString() << " in set " << set;
            EXPECT_EQ(d.answer(), answer) << "Alt+" << letter.toStdString() << " in set " << set;
        }
    }
}

TEST(MessageDialog, EscapeGivesTheCloseAnswerAndEnterTheDefault) {
    const QList<std::pair<qint32, qint16>> closeAnswers{
        {msg::OKOnly, msg::OK}, {msg::OKCancel, msg::Cancel}, {msg::AbortRetryIgnore, msg::Ignore},
        {msg::YesNoCancel, msg::Cancel}, {msg::YesNo, msg::No}, {msg::RetryCancel, msg::Cancel}};
    for (const auto& [set, expected] : closeAnswers) {
        frmMessageDialog d("m", set, "F", "h", "", msg::Question);
        showActive(d);
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &d, Qt::Key_Escape);
        ASSERT_TRUE(closes(d)) << "set " << set;
        EXPECT_EQ(d.answer(), expected) << "set " << set;
    }
    frmMessageDialog d("m", msg::YesNo | msg::DefaultButton2, "F", "h", "", msg::Question);
    showActive(d);
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &d, Qt::Key_Return);
    ASSERT_TRUE(closes(d));
    EXPECT_EQ(d.answer(), msg::No);
}

TEST(MessageDialog, AccessKeyTextShowsAsALabelWould) {
    EXPECT_EQ(frmMessageDialog::shownAccessKeyText("R&&D"), QString("R&D"));
    EXPECT_EQ(frmMessageDialog::shownAccessKeyText("&Save"), QString("Save"));
    EXPECT_EQ(frmMessageDialog::shownAccessKeyText("a&&&&b"), QString("a&&b"));
}

TEST(QtDialogs, ShowMessageRunsModallyAndReturnsThePressedButton) {
    QtDialogs qt;
    setDialogs(&qt);
    pressLater("No");
    EXPECT_EQ(
        ShowMessage("Delete this pay?", msg::YesNo, "Fernhold", "Please Confirm", "", msg::Question, true),
        msg::No);
    setDialogs(nullptr);
}

TEST(QtDialogs, InputBoxReturnsTextOrEmptyOnCancel) {
    QtDialogs qt;
    pressLater("OK");
    EXPECT_EQ(qt.inputBox("Date of first pay", "Quillary", "1/04/2024", false, false), QString("1/04/2024"));
    pressLater("Cancel");
    EXPECT_EQ(qt.inputBox("Date of first pay", "Quillary", "1/04/2024", false, false), QString());
}

TEST(InputDialog, MaskedAndNumericModes) {
    frmInputDialog masked("Password", "T", "", true, false);
    EXPECT_EQ(masked.findChild<QLineEdit*>()->echoMode(), QLineEdit::Password);
    frmInputDialog numeric("Amount", "T", "", false, true);
    auto* edit = numeric.findChild<QLineEdit*>();
    ASSERT_NE(edit->validator(), nullptr);
    QString text = "12.5";
    int pos = 0;
    EXPECT_EQ(edit->validator()->validate(text, pos), QValidator::Acceptable);
    text = "12a";
    EXPECT_EQ(edit->validator()->validate(text, pos), QValidator::Invalid);
}

TEST(ErrorDialog, ShowsDescriptionNumberAndLocation) {
    frmErrorDialog d("Division by zero", 11, "Quillary CalcPAYE", "", "Quillary", 3);
    EXPECT_EQ(d.windowTitle(), QString("Quillary Error"));
    const QStringList texts = labelTexts(d);
    EXPECT_TRUE(texts.contains("Division by zero"));
    EXPECT_TRUE(texts.contains("11"));
    EXPECT_TRUE(texts.contains("Quillary CalcPAYE"));
    EXPECT_TRUE(texts.contains("An Error has Occurred"));
    EXPECT_TRUE(d.isModal());
}
