// The kept work patterns listed earliest first and one taken back; the names with their kinds in the
// order the kinds screen lists them, with captions for every kind.
#include "HolidayFixture.h"
#include "holidays/NamedKinds.h"
#include "holidays/WorkPatternHistory.h"

using namespace qltest;
using namespace ql::holidays;

TEST_F(HolidayTest, PatternsAreListedEarliestFirstAndOneIsRemoved) {
    addEmployee(1, QDate(2024, 4, 1), 25);
    addEmployee(2, QDate(2024, 4, 1), 25);
    WorkPattern late{QDate(2026, 3, 2), {10, 10, 10, 10, 0, 0, 0}};
    WorkPattern early{QDate(2024, 4, 1), {8, 8, 8, 8, 8, 0, 0}};
    WorkPattern other{QDate(2025, 1, 6), {6, 6, 6, 6, 6, 6, 0}};
    SetWorkPattern(wage, 1, late);
    SetWorkPattern(wage, 1, early);
    SetWorkPattern(wage, 2, other);
    QList<WorkPattern> kept = WorkPatternsOf(wage, 1);
    ASSERT_EQ(kept.size(), 2);
    EXPECT_EQ(kept.at(0).from, early.from);
    EXPECT_EQ(kept.at(1).from, late.from);
    EXPECT_FLOAT_EQ(kept.at(1).hoursPerWeek(), 40.0f);
    EXPECT_EQ(kept.at(1).daysPerWeek(), 4);

    RemoveWorkPattern(wage, 1, late.from);
    kept = WorkPatternsOf(wage, 1);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(kept.at(0).from, early.from);
    // The earlier pattern holds again after the later one's date; the other employee keeps theirs.
    EXPECT_EQ(PatternOn(wage, 1, QDate(2026, 6, 1))->from, early.from);
    EXPECT_EQ(WorkPatternsOf(wage, 2).size(), 1);
    RemoveWorkPattern(wage, 1, QDate(2000, 1, 1)); // none kept from that day: nothing happens
    EXPECT_EQ(WorkPatternsOf(wage, 1).size(), 1);
}

TEST_F(HolidayTest, NamesAreListedByTableWithTheirKinds) {
    const QList<NamedKind> names = NamedKinds(wage);
    ASSERT_FALSE(names.isEmpty());
    // Payments first, then taxable, then non-taxable allowances, each by id.
    const QStringList order = NameTables();
    for (int i = 1; i < names.size(); ++i) {
        const qsizetype a = order.indexOf(names.at(i - 1).table), b = order.indexOf(names.at(i).table);
        ASSERT_GE(a, 0);
        EXPECT_TRUE(a < b || (a == b && names.at(i - 1).id < names.at(i).id)) << i;
    }
    for (const NamedKind& n : names) {
        EXPECT_EQ(n.kind, NameKind(wage, n.table, n.id));
        EXPECT_EQ(n.code, KindCode(n.kind));
    }
    // The template's Ordinary Time, and a change through SetNameKind seen in the list.
    const auto ordinary = std::find_if(names.begin(), names.end(), [](const NamedKind& n) {
        return n.table == QLatin1String("payment") && n.id == kOrdinary;
    });
    ASSERT_NE(ordinary, names.end());
    EXPECT_EQ(ordinary->kind, EarningKind::OrdinaryTime);
    SetNameKind(wage, QStringLiteral("payment"), kOvertime, QStringLiteral("overtime-regular"));
    for (const NamedKind& n : NamedKinds(wage))
        if (n.table == QLatin1String("payment") && n.id == kOvertime) EXPECT_EQ(n.kind, EarningKind::RegularOvertime);
    // Every kind has a caption of its own.
    QStringList captions;
    for (const QString& code : KindCodes()) {
        const QString c = KindCaption(KindFromCode(code));
        EXPECT_FALSE(c.isEmpty()) << code.toStdString();
        EXPECT_FALSE(captions.contains(c)) << c.toStdString();
        captions << c;
    }
    EXPECT_EQ(NameTableCaption(QStringLiteral("nontaxable")), QStringLiteral("Non-taxable allowance"));
}
