// The two small dialogs of the wage screen: "Add or Edit" and its three flags.
#include "TestEnv.h"
#include "cashbook/AddEditChoice.h"
#include "cashbook/frmAddEdit.h"
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

TEST(AddEdit, OkLeavesOnlyTheChosenFlag) {
    ql::calendarChoice() = {true, true, true};
    ql::frmAddEdit dialog;
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Add or Edit"));
    EXPECT_EQ(dialog.optAdd->text(), QStringLiteral("Add a &Regular payment"));
    EXPECT_EQ(dialog.optAddOneOFf->text(), QStringLiteral("Add '&One Off' payment"));
    EXPECT_EQ(dialog.optEdit->text(), QStringLiteral("&Edit payment date"));
    dialog.optEdit->setChecked(true);
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOKAY")), Qt::LeftButton);
    EXPECT_FALSE(ql::calendarChoice().AddPayChoice);
    EXPECT_TRUE(ql::calendarChoice().EditDateChoice);
    EXPECT_FALSE(ql::calendarChoice().OneOffChoice);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(AddEdit, CancelLeavesTheFlagsAsTheyWere) {
    ql::calendarChoice() = {false, false, true};
    ql::frmAddEdit dialog;
    dialog.optAdd->setChecked(true);
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel")), Qt::LeftButton);
    EXPECT_FALSE(ql::calendarChoice().AddPayChoice);
    EXPECT_TRUE(ql::calendarChoice().OneOffChoice);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    ql::calendarChoice() = {};
}
