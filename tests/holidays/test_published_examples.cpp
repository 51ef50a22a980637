// Worked examples published by the government's employment service and others, each reproduced through
// the holiday rules with its source address. Where the published figure is rounded or wrong, the test
// says so.
#include "HolidayFixture.h"
#include "holidays/FinalPay.h"
#include "holidays/LeavePay.h"

using namespace qltest;
using namespace ql::holidays;
using ql::Currency;

namespace {

qint64 cents(Currency c) {
    return std::llround(c.toDouble() * 100.0);
}

class PublishedExamples : public HolidayTest {
protected:
    void addLedger(int employee, int leaveType, int trans, double days, const QDate& from, const QDate& to) {
        wage.execute(
            QStringLiteral("INSERT INTO LeaveDetails (EmployeeID, LeaveTypeID, TransTypeID, NumberofDays, "
                           "DateFrom, DateTo) VALUES (?, ?, ?, ?, ?, ?)"),
            {employee, leaveType, trans, days, from.toString(Qt::ISODate), to.toString(Qt::ISODate)});
    }
};

const FinalPayLine* line(const FinalPayResult& r, const char* component) {
    for (const FinalPayLine& l : r.lines)
        if (l.component == QLatin1String(component)) return &l;
    return nullptr;
}

} // namespace

// The Department of Labour's Employment Relations Service (now Employment New Zealand), "Working on a
// public holiday", http://www.ers.dol.govt.nz/holidays_act_2003/working.html: an employee paid $25 a bin
// of apples picks 10 bins on a public holiday: $250 for the day, half that again $125, $375 in all. The
// bins are the units of the piece rate: the day's pattern is 10 of them at $25, so relevant daily pay is
// the day's $250; the day is an otherwise working day, so an alternative holiday is earned as well.
TEST_F(PublishedExamples, PieceRatePickerWorkingAPublicHoliday) {
    addEmployee(1, QDate(2024, 9, 2), 25.0);
    setPattern(1, QDate(2024, 9, 2), {10, 10, 10, 10, 10, 0, 0});
    // Labour Day, Monday 27 October 2025.
    const LeavePayResult r = ComputeLeavePay(wage, 1, LeaveKind::Public, QDate(2025, 10, 27), 1, 10.0f);
    EXPECT_TRUE(r.rdp.available);
    EXPECT_EQ(cents(r.rdp.amount), 25000);
    EXPECT_EQ(cents(r.timeAndAHalf), 37500);
    EXPECT_EQ(cents(r.workedPay), 37500);
    EXPECT_TRUE(r.alternativeEarned);
}

// Employment New Zealand, "Payment for leave and holidays in final pay",
// https://www.employment.govt.nz/leave-and-holidays/calculating-payments-for-leave-and-holidays/calculating-payment-for-leave-and-holidays-in-final-pay/:
// Cory has worked for his employer for 2 years, works Monday to Friday, finishes work 4 days before a
// public holiday and has more than 4 days of his annual holiday entitlement left. By the page's steps
// (the remaining holidays taken as if straight after the last day; a public holiday on an otherwise
// working day within them is paid and lengthens them by a day) the public holiday is paid. Here: hired
// 1 October 2024, 8 weeks by 1 October 2026, 7 taken, so 5 days left; last day Thursday 22 October 2026,
// 4 days before Labour Day (Monday 26 October). The 5 days: Friday 23, then Labour Day paid, then
// 27 to 30 October.
TEST_F(PublishedExamples, CorysPublicHolidayAfterHisLastDay) {
    addEmployee(1, QDate(2024, 10, 1), 25.0);
    setPattern(1, QDate(2024, 10, 1), {8, 8, 8, 8, 8, 0, 0});
    addLedger(1, 1, 2, 35, QDate(2025, 12, 1), QDate(2026, 1, 16));
    for (QDate end(2026, 10, 23); end > QDate(2025, 10, 23); end = end.addDays(-7))
        addPay(1, end, {{kOrdinary, 40, 25}});
    const FinalPayResult r = ComputeFinalPay(wage, 1, QDate(2026, 10, 22));
    EXPECT_DOUBLE_EQ(r.entitledWeeksUntaken, 1.0);
    ASSERT_EQ(r.publicHolidays.size(), 1);
    EXPECT_EQ(r.publicHolidays.at(0), QDate(2026, 10, 26));
    const FinalPayLine* p = line(r, "public-holidays");
    ASSERT_NE(p, nullptr);
    // Relevant daily pay: 8 hours at $25.
    EXPECT_EQ(cents(p->amount), 20000);
    // Had he had only 1 day left, the holiday would not fall within it.
    addLedger(1, 1, 2, 4, QDate(2026, 2, 2), QDate(2026, 2, 5));
    EXPECT_TRUE(ComputeFinalPay(wage, 1, QDate(2026, 10, 22)).publicHolidays.isEmpty());
}

// The Employers and Manufacturers Association, "What happens when Employees resign just before
// Christmas?" (1 December 2013),
// http://employers.co.nz/when-employees-resign-just-before-christmas-newsitem.aspx: John's last day is Friday
// 20 December (2013) and he has 3 weeks of annual holidays: counted forward from his last day, Christmas Day,
// Boxing Day, New Year's Day and 2 January fall within them and, being otherwise working days, are paid as
// public holidays, not as part of his annual holidays. Here: hired 2 December 2012, 4 weeks at 2 December
// 2013, one taken; Monday to Friday 8 hours at $25.
TEST_F(PublishedExamples, JohnResignsJustBeforeChristmas) {
    addEmployee(1, QDate(2012, 12, 2), 25.0);
    setPattern(1, QDate(2012, 12, 2), {8, 8, 8, 8, 8, 0, 0});
    addLedger(1, 1, 2, 5, QDate(2013, 6, 3), QDate(2013, 6, 7));
    for (QDate end(2013, 12, 20); end > QDate(2012, 12, 2); end = end.addDays(-7))
        addPay(1, end, {{kOrdinary, 40, 25}});
    const FinalPayResult r = ComputeFinalPay(wage, 1, QDate(2013, 12, 20));
    EXPECT_DOUBLE_EQ(r.entitledWeeksUntaken, 3.0);
    const QList<QDate> expected{QDate(2013, 12, 25), QDate(2013, 12, 26), QDate(2014, 1, 1),
                                QDate(2014, 1, 2)};
    EXPECT_EQ(r.publicHolidays, expected);
    const FinalPayLine* p = line(r, "public-holidays");
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(cents(p->amount), 4 * 20000);
    // With no annual holidays left, no public holiday after the last day is paid.
    addLedger(1, 1, 2, 15, QDate(2013, 9, 2), QDate(2013, 9, 20));
    EXPECT_TRUE(ComputeFinalPay(wage, 1, QDate(2013, 12, 20)).publicHolidays.isEmpty());
}
