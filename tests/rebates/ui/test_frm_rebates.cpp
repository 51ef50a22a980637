// The rebates dialog offscreen: the grid, a refused name keeping the cell open, Quantity's tick box,
// Add and Delete, saving by OK and by the title bar, and a picture.
#include "../RebatesFixture.h"
#include "taxsettings/frm_Rebates.h"
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <iostream>

using namespace qltest;

namespace {
void settle() {
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
}
} // namespace

class RebatesDialogTest : public RebatesTest {
protected:
    std::unique_ptr<ql::frm_Rebates> open() {
        auto d = std::make_unique<ql::frm_Rebates>(ql::FarmRebatesQuery(), ql::DataFileName(),
                                                   QStringLiteral("RebateID"));
        d->show();
        QApplication::setActiveWindow(d.get());
        settle();
        return d;
    }
};

TEST_F(RebatesDialogTest, ShowsTheRowsWithNamesForEveryControl) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    auto d = open();
    EXPECT_EQ(d->windowTitle(), QStringLiteral("Rebates"));
    for (QWidget* w : {static_cast<QWidget*>(d->grid()), static_cast<QWidget*>(d->cmd_Add()),
                       static_cast<QWidget*>(d->cmd_Delete()), static_cast<QWidget*>(d->cmd_okay())})
        EXPECT_FALSE(w->accessibleName().isEmpty());
    auto* m = d->gridModel();
    EXPECT_EQ(m->rowCount(), 1);
    EXPECT_TRUE(d->grid()->isColumnHidden(ql::RebateIDColumn));
    EXPECT_TRUE(d->grid()->isColumnHidden(ql::CountryColumn));
    EXPECT_EQ(m->data(m->index(0, ql::RebateColumn)).toString(), QStringLiteral("Dog Tax"));
    EXPECT_EQ(m->data(m->index(0, ql::HeadingColumn)).toString(), QStringLiteral("201001  Animal Health:E"));
    EXPECT_EQ(m->data(m->index(0, ql::QuantityColumn), Qt::CheckStateRole).toInt(), int(Qt::Checked));
    d->form().Form_Unload();
}

TEST_F(RebatesDialogTest, AnEmptyNameKeepsTheGridInTheCell) {
    auto d = open();
    d->cmd_Add()->click();
    auto* m = d->gridModel();
    ASSERT_EQ(m->rowCount(), 1);
    EXPECT_FALSE(m->setData(m->index(0, ql::RebateColumn), QString()));
    settle();
    EXPECT_EQ(d->grid()->currentIndex(), m->index(0, ql::RebateColumn));
    EXPECT_NE(qobject_cast<QLineEdit*>(QApplication::focusWidget()),
              nullptr); // the cell's editor is open again
    EXPECT_TRUE(m->setData(m->index(0, ql::RebateColumn), QStringLiteral("Wool Levy")));
    d->cmd_okay()->click();
    EXPECT_EQ(table(), QStringList({"Wool Levy|0|0|no|64"}));
}

TEST_F(RebatesDialogTest, TheTickBoxAddAndDeleteAndTheTitleBarCloseSaves) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    addRebate(QStringLiteral("Fuel Excise"), 201005, 0.25, false);
    auto d = open();
    auto* m = d->gridModel();
    EXPECT_TRUE(m->setData(m->index(1, ql::QuantityColumn), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(m->data(m->index(1, ql::QuantityColumn), Qt::CheckStateRole).toInt(), int(Qt::Checked));
    d->grid()->setCurrentIndex(m->index(0, ql::RebateColumn));
    dialogs.queueAnswer(ql::msg::Yes);
    d->cmd_Delete()->click();
    EXPECT_EQ(m->rowCount(), 1);
    d->cmd_Add()->click();
    EXPECT_EQ(d->grid()->currentIndex().row(), 1);
    m->setData(m->index(1, ql::RebateColumn), QStringLiteral("Wool Levy"));
    m->setData(m->index(1, ql::HeadingColumn), QStringLiteral("201003"));
    m->setData(m->index(1, ql::RateColumn), QStringLiteral("1.5"));
    d->close();
    EXPECT_EQ(table(), QStringList({"Fuel Excise|201005|0.25|yes|64", "Wool Levy|201003|1.5|no|64"}));
}

TEST_F(RebatesDialogTest, Screenshot) {
    addRebate(QStringLiteral("Dog Tax"), 201001, 12.5, true);
    addRebate(QStringLiteral("Fuel Excise"), 201005, 0.25, false);
    addRebate(QStringLiteral("Wool Levy"), 201003, 1.5, false);
    auto d = open();
    const QString file = QDir::current().absoluteFilePath(QStringLiteral("frm_Rebates.png"));
    EXPECT_TRUE(d->grab().save(file));
    std::cout << "screenshot: " << file.toStdString() << std::endl;
    d->form().Form_Unload();
}
