// A committed pay that stores other figures than its lines give (as an older version could commit a
// first pay with no PAYE) is neither filed nor banked: both files are refused, naming the pay, until
// it is deleted and committed again. Pays committed as they stand, and a PAYE typed on purpose, pass.
#include "PayGuard.h"
#include "PaydayFixture.h"
#include "payday/BankFile.h"
#include "payday/PaydayFiles.h"
#include "payday/SettledFigures.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include <QFile>

namespace qltest {
namespace {

class UnsettledPayTest : public PaydayTest {
protected:
    void SetUp() override {
        PaydayTest::SetUp();
        if (HasFatalFailure()) return;
        giveBankDetails();
    }
    CliResult cli(const QStringList& args) { return runCli(args, docs->path()); }
    QString path(const QString& name) { return docs->path() + u'/' + name; }
    QList<qint32> committedPays() {
        QList<qint32> ids;
        for (const QVariant& v : wage.firstColumn(QStringLiteral("SELECT WageID FROM Wages WHERE length(Reference) > 0 "
                                                                 "AND date(PaymentDate) = '%1' ORDER BY WageID")
                                                      .arg(kPaymentDate.toString(Qt::ISODate))))
            ids << v.toInt();
        return ids;
    }
    CliResult paydayFile() {
        return cli({QStringLiteral("payday-file"), kPaymentDate.toString(Qt::ISODate), QStringLiteral("--out"),
                    path(QStringLiteral("ei.csv"))});
    }
    CliResult bankFile() {
        return cli({QStringLiteral("bank-file"), kPaymentDate.toString(Qt::ISODate), QStringLiteral("--format"),
                    QStringLiteral("anz"), QStringLiteral("--out"), path(QStringLiteral("bank.txt")),
                    QStringLiteral("--date"), QStringLiteral("today")});
    }
};

TEST_F(UnsettledPayTest, PaysThatStoreWhatTheirLinesGivePass) {
    const QList<qint32> pays = committedPays();
    ASSERT_EQ(pays.size(), 5);
    for (const qint32 id : pays)
        EXPECT_EQ(ql::UnsettledFigures(wage, id), QStringList()) << "pay " << id;
    const CliResult ei = paydayFile();
    EXPECT_EQ(ei.exitCode, 0) << ei.err.toStdString();
    const CliResult bank = bankFile();
    EXPECT_EQ(bank.exitCode, 0) << bank.err.toStdString();
}

TEST_F(UnsettledPayTest, APayCommittedWithStaleFiguresIsNeitherFiledNorBanked) {
    const QList<qint32> pays = committedPays();
    ASSERT_EQ(pays.size(), 5);
    const qint32 stale = pays.first();
    const QVariantList before =
        wage.firstRow(QStringLiteral("SELECT PAYE, TakeHome, Reference FROM Wages WHERE WageID = %1").arg(stale));
    ASSERT_GT(ql::CCur(before.at(0)), ql::Currency());
    // As an older version left a first pay: no PAYE, the gross paid as take-home.
    withoutPayGuard(wage, [&] {
        wage.execute(QStringLiteral("UPDATE Wages SET PAYE = 0, TakeHome = TakeHome + PAYE WHERE WageID = %1").arg(stale));
    });
    const QStringList found = ql::UnsettledFigures(wage, stale);
    ASSERT_EQ(found.size(), 2) << found.join(u'\n').toStdString();
    EXPECT_EQ(found.at(0), QStringLiteral("PAYE 0.00 stored, %1 by its tax line")
                               .arg(ql::Format(before.at(0), QStringLiteral("Standard"))));
    EXPECT_TRUE(found.at(1).startsWith(QStringLiteral("take-home "))) << found.at(1).toStdString();
    for (const qint32 id : pays.mid(1))
        EXPECT_EQ(ql::UnsettledFigures(wage, id), QStringList()) << "pay " << id;

    const QString reference = before.at(2).toString();
    for (const CliResult& r : {paydayFile(), bankFile()}) {
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_TRUE(r.err.contains(QStringLiteral("reference %1 (pay %2): PAYE 0.00 stored").arg(reference).arg(stale)))
            << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QStringLiteral("Delete each of these pays"))) << r.err.toStdString();
    }
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("ei.csv"))));
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("bank.txt"))));
    // The engine's own makers say the same.
    EXPECT_TRUE(ql::EmploymentInformationFile(wage, kPaymentDate).refusal.startsWith(QStringLiteral("No payday filing file was made.")));
    EXPECT_TRUE(ql::MakeBankFile(wage, kPaymentDate, ql::BankFormat::Anz, QDate(2026, 11, 20))
                    .refusal.startsWith(QStringLiteral("No bank file was made.")));

    // The way out the message gives: delete the pay, add it again, commit it; then both files are made.
    const QString date =
        ql::CDate(wage.scalar(QStringLiteral("SELECT [Date] FROM Wages WHERE WageID = %1").arg(stale))).toString(Qt::ISODate);
    const QString employee = wage.scalar(QStringLiteral("SELECT EmployeeID FROM Wages WHERE WageID = %1").arg(stale)).toString();
    const CliResult gone = cli({QStringLiteral("delete-pay"), QString::number(stale), QStringLiteral("--yes")});
    ASSERT_EQ(gone.exitCode, 0) << gone.err.toStdString();
    ASSERT_EQ(cli({QStringLiteral("add-pay"), employee, date}).exitCode, 0);
    const qint32 again = wage.scalar(QStringLiteral("SELECT max(WageID) FROM Wages")).toInt();
    const CliResult committed =
        cli({QStringLiteral("commit"), QString::number(again), QStringLiteral("--print"), QStringLiteral("off"),
             QStringLiteral("--date"), kPaymentDate.toString(Qt::ISODate)});
    ASSERT_EQ(committed.exitCode, 0) << committed.err.toStdString();
    EXPECT_EQ(ql::CCur(wage.scalar(QStringLiteral("SELECT PAYE FROM Wages WHERE WageID = %1").arg(again))),
              ql::CCur(before.at(0)));
    const CliResult ei = paydayFile();
    EXPECT_EQ(ei.exitCode, 0) << ei.err.toStdString();
    const CliResult bank = bankFile();
    EXPECT_EQ(bank.exitCode, 0) << bank.err.toStdString();
}

// A gross that an edit changed after the tax was worked: the tax line names the old taxable pay.
TEST_F(UnsettledPayTest, ATaxWorkedOnAnotherGrossIsNamed) {
    const qint32 stale = committedPays().last();
    withoutPayGuard(wage, [&] {
        wage.execute(QStringLiteral("UPDATE TaxDetails SET TaxableAmount = TaxableAmount - 50 WHERE WageID = %1").arg(stale));
    });
    const QStringList found = ql::UnsettledFigures(wage, stale);
    ASSERT_EQ(found.size(), 1) << found.join(u'\n').toStdString();
    EXPECT_TRUE(found.at(0).startsWith(QStringLiteral("its PAYE was worked on a taxable pay of "))) << found.at(0).toStdString();
    EXPECT_EQ(paydayFile().exitCode, 1);
}

// A PAYE typed over the calculated one is the pay's own: it is filed as typed.
TEST_F(UnsettledPayTest, ATypedPayeIsFiledAsTyped) {
    const CliResult added = cli({QStringLiteral("add-pay"), QStringLiteral("1")});
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    const qint32 id = wage.scalar(QStringLiteral("SELECT max(WageID) FROM Wages")).toInt();
    ASSERT_EQ(cli({QStringLiteral("set-paye"), QString::number(id), QStringLiteral("100")}).exitCode, 0);
    const CliResult committed =
        cli({QStringLiteral("commit"), QString::number(id), QStringLiteral("--print"), QStringLiteral("off"),
             QStringLiteral("--date"), QStringLiteral("2026-12-08")});
    ASSERT_EQ(committed.exitCode, 0) << committed.err.toStdString();
    ASSERT_EQ(ql::CCur(wage.scalar(QStringLiteral("SELECT PAYE FROM Wages WHERE WageID = %1").arg(id))),
              ql::Currency::fromLong(100));
    EXPECT_EQ(ql::UnsettledFigures(wage, id), QStringList());
    const CliResult r = cli({QStringLiteral("payday-file"), QStringLiteral("2026-12-08"), QStringLiteral("--out"),
                             path(QStringLiteral("typed.csv"))});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    bool found = false;
    for (const QStringList& f : csvLines(readFile(path(QStringLiteral("typed.csv")))))
        if (f.at(0) == QStringLiteral("DEI")) {
            EXPECT_EQ(f.value(14), QStringLiteral("10000")); // PAYE in cents
            found = true;
        }
    EXPECT_TRUE(found);
}

} // namespace
} // namespace qltest
