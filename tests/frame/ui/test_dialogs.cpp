// The Qt message box, input box and error dialog, offscreen.
#include "frame/Messages.h"
#include "frame/QtDialogs.h"
#include "frame/frmErrorDialog.h"
#include "frame/frmInputDialog.h"
#include "frame/frmMessageDialog.h"
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
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
        if (b->text().remove(QLatin1Char('&')) == text) return b;
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
