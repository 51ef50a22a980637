// The public holidays of a year on the screen: 2026 with Canterbury's anniversary day, Anzac Day observed
// on Monday 27 April; another year and region follow the boxes; the same list as quillary-cli's.
#include "DemoScreenFixture.h"
#include "ScreenChecks.h"
#include "holidays/PublicHolidaysDialog.h"
#include <QComboBox>
#include <QJsonArray>
#include <QSpinBox>
#include <QTableWidget>
#include <gtest/gtest.h>

namespace qltest {
namespace {

class PublicHolidaysDialogTest : public DemoScreenTest {};

TEST_F(PublicHolidaysDialogTest, AYearAndARegionAsTheCommandLineListsThem) {
    ql::PublicHolidaysDialog d(QStringLiteral("canterbury"));
    ExpectNamedAndKeyed(&d);
    ExpectFitsSmallScreen(&d);
    EXPECT_EQ(d.regionBox()->currentText(), QStringLiteral("Canterbury"));
    d.yearBox()->setValue(2026);
    const QJsonArray list = cli({"public-holidays", "2026", "--region", "canterbury"}).value("holidays").toArray();
    ASSERT_EQ(d.table()->rowCount(), list.size());
    ASSERT_EQ(list.size(), 12);
    for (int r = 0; r < list.size(); ++r) {
        const QJsonObject h = list.at(r).toObject();
        EXPECT_EQ(d.table()->item(r, 0)->text(), h.value("name").toString());
        EXPECT_TRUE(d.table()->item(r, 1)->text().endsWith(
            QDate::fromString(h.value("date").toString(), Qt::ISODate).toString(QStringLiteral("d/MM/yyyy"))));
    }
    EXPECT_EQ(d.table()->item(5, 0)->text(), QStringLiteral("Anzac Day"));
    EXPECT_EQ(d.table()->item(5, 1)->text(), QStringLiteral("Sat 25/04/2026"));
    EXPECT_EQ(d.table()->item(5, 2)->text(), QStringLiteral("Mon 27/04/2026"));
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    d.show();
    if (!dir.isEmpty()) d.grab().save(dir + QStringLiteral("/public_holidays.png"));
    d.regionBox()->setCurrentIndex(0);
    EXPECT_EQ(d.table()->rowCount(), 11);
    d.yearBox()->setValue(2027);
    EXPECT_EQ(d.table()->rowCount(), cli({"public-holidays", "2027"}).value("holidays").toArray().size());
}

} // namespace
} // namespace qltest
