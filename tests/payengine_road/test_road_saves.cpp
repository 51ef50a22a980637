// The save run twice over (a grid's commit of a row can run a second save inside the first), the PAYE
// panel of an older pay after a change of pay interval, and the add pay command refusing an employee
// without a tax code.
#include "CliRunner.h"
#include "RoadFixture.h"
#include "payengine/PayTotals.h"

namespace qltest {
namespace {

QStringList rowsOf(ql::Database& db, const QString& table, qint32 wageID) {
    QStringList out;
    auto rs = db.openRecordset(QStringLiteral("SELECT * FROM %1 WHERE WageID = %2 ORDER BY rowid").arg(table).arg(wageID),
                               ql::RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        QStringList cells;
        for (int i = 0; i < rs->fieldCount(); ++i)
            cells << rs->value(i).toString();
        out << cells.join(QLatin1Char('|'));
    }
    return out;
}

TEST_F(RoadTest, SavingTheGridTwiceLeavesTheSameRows) {
    pick(FarmHand, QDate(2026, 4, 6));
    const qint32 wage = addPay();
    for (const auto& [tab, table] : {std::pair{1, QStringLiteral("PaymentDetails")}, std::pair{2, QStringLiteral("TaxAllowDetails")},
                                     std::pair{5, QStringLiteral("DeductionDetails")},
                                     std::pair{7, QStringLiteral("ContributionDetails")}}) {
        app.CurrentTab = qint16(tab);
        ql::FillWageGrid(*screen);
        const int lines = screen->WageGridArray.rowCount();
        ql::SaveWageXArray(*screen, table);
        const QStringList once = rowsOf(db(), table, wage);
        ql::SaveWageXArray(*screen, table);
        const QStringList twice = rowsOf(db(), table, wage);
        EXPECT_EQ(once.size(), lines) << table.toStdString();
        EXPECT_EQ(twice.join('\n').toStdString(), once.join('\n').toStdString()) << table.toStdString();
    }
    EXPECT_TRUE(errorsReported().isEmpty()) << errorsReported().join('\n').toStdString();
}

TEST_F(RoadTest, PayePanelIsBlankForAnOlderPayAfterAMoveToMonthlyPay) {
    pick(FarmHand, QDate(2026, 4, 6));
    const qint32 weekly = addPay();
    app.CurrentTab = 3;
    ql::FillPAYEDisplay(*screen);
    EXPECT_EQ(label("txtCalcOn"), QStringLiteral("$1,022.75"));
    EXPECT_EQ(label("txtPAYE"), QStringLiteral("$175.87"));
    EXPECT_EQ(label("txtpayInterval"), QStringLiteral("Weekly"));
    EXPECT_EQ(label("txtTaxType"), QStringLiteral("M"));
    EXPECT_EQ(label("txtTaxCode"), QStringLiteral("M"));

    db().execute(QStringLiteral("UPDATE Employees SET PayIntervalID = 4 WHERE EmployeeID = %1").arg(int(FarmHand)));
    const qint32 monthly = addPay();
    ASSERT_NE(monthly, weekly);
    ql::FillPAYEDisplay(*screen);
    EXPECT_EQ(label("txtpayInterval"), QStringLiteral("Monthly"));

    app.CurrentWageID = weekly;
    ql::FillPAYEDisplay(*screen);
    for (const char* box : {"txtCalcOn", "txtPAYE", "txtTaxType", "txtTaxCode", "txtpayInterval"})
        EXPECT_EQ(label(QString::fromLatin1(box)), QString()) << box;
    EXPECT_EQ(label("lblpayrollCalc"), QStringLiteral("Total Taxable"));
    EXPECT_EQ(label("lblPayInterval"), QStringLiteral("Pay Interval"));
    // The pay's own tax line is still there; only the panel's join misses it.
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM TaxDetails WHERE WageID = %1").arg(weekly)).toInt(), 1);
}

class RoadCliTest : public DocumentsTest {
protected:
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }
    int pays() {
        ql::Database db;
        db.open(ql::WageFileName());
        const int n = db.scalar(QStringLiteral("SELECT count(*) FROM Wages")).toInt();
        db.close();
        return n;
    }
};

TEST_F(RoadCliTest, AddPayRefusesAnEmployeeWithoutATaxCode) {
    ASSERT_EQ(cli({"init", "--demo"}).exitCode, 0);
    ASSERT_EQ(cli({"add-pay", "1", "2026-04-06"}).exitCode, 0);
    {
        ql::Database db;
        db.open(ql::WageFileName());
        db.execute(QStringLiteral("UPDATE Employees SET TaxCode = '' WHERE EmployeeID = 1"));
        db.close();
    }
    const CliResult r = cli({"add-pay", "1"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Missing Tax Code"))) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("This employee doesn't have a valid Tax Code entered."))) << r.err.toStdString();
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(pays(), 1);
}

} // namespace
} // namespace qltest
