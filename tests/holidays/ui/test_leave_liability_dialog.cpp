// The leave liability dialog offscreen: the rows of a day as the CSV has them, a new day worked out
// afresh, the report printed through the preview (saved as PDF), the CSV saved, and every control named.
#include "DemoScreenFixture.h"
#include "holidays/LeaveLiabilityDialog.h"
#include "reports/ReportPreviewDialog.h"
#include <QAction>
#include <QDateEdit>
#include <QDialog>
#include <QFile>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace qltest {
namespace {

class LeaveLiabilityDialogTest : public DemoScreenTest {
protected:
    QList<QStringList> preparation() const override { return {{"add-pay", "1", "2026-10-30"}}; }
};

TEST_F(LeaveLiabilityDialogTest, TheRowsOfADayPrintedAndSaved) {
    ql::LeaveLiabilityDialog d(context.WageDatabase);
    d.showDay(QDate(2026, 11, 20));
    d.show();
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    if (!dir.isEmpty()) d.grab().save(dir + QStringLiteral("/leave_liability.png"));
    QTableWidget* t = d.table();
    // Five employees and the totals.
    ASSERT_EQ(t->rowCount(), 6);
    EXPECT_EQ(t->item(0, 0)->text(), QStringLiteral("Testington, Aroha"));
    EXPECT_EQ(t->item(0, 1)->text(), QStringLiteral("10.4000"));
    EXPECT_EQ(t->item(5, 0)->text(), QStringLiteral("5 employees"));
    const QString csv = ql::holidays::LiabilityCsv(d.liability());
    EXPECT_TRUE(csv.endsWith(QStringLiteral(",Total,,,,,,,,,,%1\r\n").arg(t->item(5, 9)->text()))) << csv.toStdString();

    // A day before Dana Fictional's fourth anniversary or after: the table follows the date box.
    d.findChild<QDateEdit*>(QStringLiteral("dtpLiabilityDay"))->setDate(QDate(2021, 7, 1));
    EXPECT_EQ(d.liability().day, QDate(2021, 7, 1));
    EXPECT_LT(t->rowCount(), 6);

    d.showDay(QDate(2026, 11, 20));
    QTemporaryDir out;
    ql::setPdfPathChooser([&](QWidget*, const QString&) { return out.filePath(QStringLiteral("liability.pdf")); });
    int previews = 0;
    ql::setPreviewShownHook([&](QDialog* preview) {
        ++previews;
        for (QAction* a : preview->actions())
            if (a->objectName() == QLatin1String("Save PDF")) a->trigger();
        preview->reject();
    });
    d.findChild<QPushButton*>(QStringLiteral("cmdPrint"))->click();
    ql::setPreviewShownHook({});
    ql::setPdfPathChooser({});
    EXPECT_EQ(previews, 1);
    EXPECT_GT(QFile(out.filePath(QStringLiteral("liability.pdf"))).size(), 1000);

    const auto previous = ql::LeaveLiabilityDialog::setPathChooser(
        [&](QWidget*, const QString& suggested) {
            EXPECT_TRUE(suggested.endsWith(QStringLiteral("leave-liability-2026-11-20.csv")));
            return out.filePath(QStringLiteral("liability.csv"));
        });
    EXPECT_TRUE(d.saveCsv());
    ql::LeaveLiabilityDialog::setPathChooser(previous);
    QFile f(out.filePath(QStringLiteral("liability.csv")));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(f.readAll()), ql::holidays::LiabilityCsv(d.liability()));
}

TEST_F(LeaveLiabilityDialogTest, EveryControlHasANameAndTheButtonsKeys) {
    ql::LeaveLiabilityDialog d(context.WageDatabase);
    for (QWidget* w : d.findChildren<QWidget*>())
        if (w->focusPolicy() != Qt::NoFocus && w->isVisibleTo(&d))
            EXPECT_FALSE(w->accessibleName().isEmpty()) << w->metaObject()->className() << " "
                                                         << w->objectName().toStdString();
    for (QPushButton* b : d.findChildren<QPushButton*>())
        EXPECT_TRUE(b->text().contains(QLatin1Char('&'))) << b->text().toStdString();
}

} // namespace
} // namespace qltest
