#include "PayrollRows.h"
#include "ledger/Roster.h"
#include "runtime/DateFns.h"
#include "TestEnv.h"

using namespace qltest;

class Roster : public DocumentsTest {
protected:
    PayrollRows rows;
    qint32 fill() {
        ql::App().WageDatabase = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
        return ql::FillEmployeeArray();
    }
};

TEST_F(Roster, FinishedEmployeeIsOffEvenWithAFutureDate) {
    rows.employee(rows.address(QStringLiteral("Hale"), QStringLiteral("Mere")), QStringLiteral("2024-04-01"),
                  QStringLiteral("2099-01-01"));
    const qint64 stays = rows.address(QStringLiteral("Ngata"), QStringLiteral("Rua"));
    rows.employee(stays);
    ASSERT_EQ(fill(), 1);
    EXPECT_EQ(ql::App().EmployeeArray.size(), 2);
    EXPECT_EQ(ql::App().EmployeeArray.at(1).AddressID, stays);
}

TEST_F(Roster, AddressWithoutEmployeeAddsNothingAndTwoRowsGiveTwoRecords) {
    rows.address(QStringLiteral("Empty"), QStringLiteral("Nobody"));
    const qint64 twice = rows.address(QStringLiteral("Twice"), QStringLiteral("Tama"));
    rows.employee(twice);
    rows.employee(twice);
    ASSERT_EQ(fill(), 2);
    EXPECT_EQ(ql::App().EmployeeArray.at(1).AddressID, twice);
    EXPECT_EQ(ql::App().EmployeeArray.at(2).AddressID, twice);
    EXPECT_NE(ql::App().EmployeeArray.at(1).EmployeeID, ql::App().EmployeeArray.at(2).EmployeeID);
}

TEST_F(Roster, FollowsTheOrderOfTheAddresses) {
    const qint64 first = rows.address(QStringLiteral("Aroha"), QStringLiteral("Ana"));
    const qint64 second = rows.address(QStringLiteral("Brown"), QStringLiteral("Ben"));
    rows.employee(second);
    rows.employee(first);
    ASSERT_EQ(fill(), 2);
    EXPECT_EQ(ql::App().EmployeeArray.at(1).AddressID, first);
    EXPECT_EQ(ql::App().EmployeeArray.at(2).AddressID, second);
}

TEST_F(Roster, EmptyOrZeroHiredDateIsOff) {
    rows.employee(rows.address(QStringLiteral("Null"), QStringLiteral("Hired")), QVariant());
    rows.employee(rows.address(QStringLiteral("Zero"), QStringLiteral("Hired")), QStringLiteral("1899-12-30"));
    EXPECT_EQ(fill(), 0);
    EXPECT_EQ(ql::CheckEmployeeTable(), QStringLiteral("No employees who have been hired and are still working\r\n"
                                                       "Tick the 'Show in Quillary' box and enter at least the hired date"));
}

// The filter's "= NULL" never matches, as in the engine it was written for: only the zero date
// marks a person who has not finished.
TEST_F(Roster, NullFinishedDateDoesNotMatchTheNullTest) {
    rows.employee(rows.address(QStringLiteral("Null"), QStringLiteral("Finished")), QStringLiteral("2024-04-01"), QVariant());
    EXPECT_EQ(fill(), 0);
}

TEST_F(Roster, ZeroFinishedDateStaysOnAndIsKeptAsWritten) {
    rows.employee(rows.address(QStringLiteral("Zero"), QStringLiteral("Finished")), QStringLiteral("2024-04-01"),
                  QStringLiteral("1899-12-30"));
    ASSERT_EQ(fill(), 1);
    const ql::EmployeeRecord& r = ql::App().EmployeeArray.at(1);
    EXPECT_EQ(r.DateFinished, ql::ZeroDate);
    EXPECT_EQ(r.DateHired, QDate(2024, 4, 1));
    EXPECT_FALSE(r.Birthdate.isValid()); // a null column leaves the field empty
    EXPECT_FALSE(r.KiwiSaverEnrolled);
    EXPECT_EQ(r.PayRate, ql::Currency::fromRaw(255000));
}

TEST_F(Roster, NamesAndAddressJoinOnlyTheirPresentParts) {
    rows.employee(rows.address(QStringLiteral("Lastonly"), QVariant(), true, QVariant(), QStringLiteral("Taupo")));
    rows.employee(rows.address(QVariant(), QStringLiteral("Firstonly"), true, QStringLiteral("3 Bay Rd"), QVariant()));
    ASSERT_EQ(fill(), 2);
    const ql::EmployeeRecord& a = ql::App().EmployeeArray.at(1);
    const ql::EmployeeRecord& b = ql::App().EmployeeArray.at(2);
    EXPECT_EQ(a.NameLastFirst, QStringLiteral("Lastonly, "));
    EXPECT_EQ(a.NameFirstLast, QStringLiteral(" Lastonly"));
    EXPECT_EQ(a.Address, QStringLiteral("Taupo"));
    EXPECT_EQ(b.NameLastFirst, QStringLiteral(", Firstonly"));
    EXPECT_EQ(b.NameFirstLast, QStringLiteral("Firstonly "));
    EXPECT_EQ(b.Address, QStringLiteral("3 Bay Rd, "));
}

TEST_F(Roster, ExclusionFlagReplacesTheTaxName) {
    const qint64 id = rows.employee(rows.address(QStringLiteral("Flag"), QStringLiteral("Fern")));
    rows.employee(rows.address(QStringLiteral("Plain"), QStringLiteral("Pat")));
    rows.wage.execute(QStringLiteral("UPDATE Employees SET ExcludeIR348 = 'Y' WHERE EmployeeID = %1").arg(id));
    ASSERT_EQ(fill(), 2);
    EXPECT_EQ(ql::App().EmployeeArray.at(1).TaxName, QStringLiteral("Y"));
    EXPECT_FALSE(ql::App().EmployeeArray.at(2).TaxName.isEmpty());
    EXPECT_NE(ql::App().EmployeeArray.at(2).TaxName, QStringLiteral("Y"));
}

TEST_F(Roster, CheckSaysWhenNobodyIsTickedForThePayroll) {
    rows.employee(rows.address(QStringLiteral("Unticked"), QStringLiteral("Ula"), false));
    EXPECT_EQ(ql::CheckEmployeeTable(), QStringLiteral("There are no current employees in the Address Book\r\n"
                                                       "Tick the 'Show in Quillary' box and enter at least the hired date"));
    rows.employee(rows.address(QStringLiteral("Ticked"), QStringLiteral("Tia")));
    EXPECT_EQ(ql::CheckEmployeeTable(), QString());
}

// An employee row that cannot be read stops the roster where its record would stand: the records of
// the addresses before it are kept, and the failure is reported under the procedure's name.
TEST_F(Roster, AnUnreadableRowKeepsTheRecordsBuiltBeforeIt) {
    const qint64 first = rows.address(QStringLiteral("Aroha"), QStringLiteral("Ana"));
    const qint64 second = rows.address(QStringLiteral("Brown"), QStringLiteral("Ben"));
    const qint64 third = rows.address(QStringLiteral("Carr"), QStringLiteral("Cam"));
    rows.employee(third);
    const qint64 broken = rows.employee(second);
    rows.employee(first);
    rows.wage.execute(
        QStringLiteral("UPDATE Employees SET Birthdate = 'no date at all' WHERE EmployeeID = %1").arg(broken));
    EXPECT_EQ(fill(), 1);
    ASSERT_EQ(ql::App().EmployeeArray.size(), 2);
    EXPECT_EQ(ql::App().EmployeeArray.at(1).AddressID, first);
    ASSERT_EQ(rows.dialogs.calls.size(), 1);
    EXPECT_EQ(rows.dialogs.calls.at(0).kind, ql::DialogCall::Error);
    EXPECT_EQ(rows.dialogs.calls.at(0).heading, QStringLiteral("Quillary FillEmployeeArray"));
}

// A long roster keeps every field of every record, read once per row.
TEST_F(Roster, ALongRosterHasEveryRecordInTheOrderOfTheAddresses) {
    QList<qint64> addresses;
    for (int i = 0; i < 150; ++i)
        addresses << rows.address(QStringLiteral("Last%1").arg(i, 3, 10, QLatin1Char('0')), QStringLiteral("First%1").arg(i));
    // Entered in the reverse order, so the employees' order is not the roster's.
    for (int i = 149; i >= 0; --i)
        rows.employee(addresses.at(i), QStringLiteral("2024-04-%1").arg(1 + i % 28, 2, 10, QLatin1Char('0')));
    ASSERT_EQ(fill(), 150);
    for (int i = 0; i < 150; ++i) {
        const ql::EmployeeRecord& r = ql::App().EmployeeArray.at(i + 1);
        EXPECT_EQ(r.AddressID, addresses.at(i));
        EXPECT_EQ(r.NameLastFirst, QStringLiteral("Last%1, First%2").arg(i, 3, 10, QLatin1Char('0')).arg(i));
        EXPECT_EQ(r.DateHired, QDate(2024, 4, 1 + i % 28));
        EXPECT_EQ(r.PayRate, ql::Currency::fromRaw(255000));
        EXPECT_EQ(r.TaxCode, QStringLiteral("M"));
        EXPECT_EQ(r.Address, QStringLiteral("12 Ridge Road, Te Awamutu"));
    }
}
