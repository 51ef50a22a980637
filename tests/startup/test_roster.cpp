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
