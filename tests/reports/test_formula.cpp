// Formula texts as the report reads them, the escape that keeps a value inside its quotes, and the
// record selection.
#include "TestEnv.h"
#include "frame/Texts.h"
#include "reports/ReportControl.h"
#include "reports/ReportLayout.h"
#include "runtime/VbError.h"
#include <QRandomGenerator>

using namespace ql;

namespace {
long formulaError(const QString& text) {
    try {
        ParseFormula(text);
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}
} // namespace

TEST(ReportFormula, TheFormsTheProgramWrites) {
    EXPECT_EQ(ParseFormula("DateLine = 'Weekly up to 5/03/2026'").value, "Weekly up to 5/03/2026");
    EXPECT_EQ(ParseFormula("DateLine = 'x'").name, "DateLine");
    EXPECT_EQ(ParseFormula("UserName = \"Kea Flats - mere\"").value, "Kea Flats - mere");
    EXPECT_EQ(ParseFormula("PayDate='6/03/2026'").name, "PayDate");
    EXPECT_EQ(ParseFormula("Memo=''").value, "");
    EXPECT_EQ(ParseFormula("page = 'Page '").value, "Page ");
    EXPECT_EQ(ParseFormula("of = ' of '").value, " of ");
    EXPECT_EQ(ParseFormula("memo=1").value, "1");
    EXPECT_EQ(ParseFormula("  ").name, "") << "an empty slot";
}

TEST(ReportFormula, EscapedTextComesBackAsTyped) {
    const QString memo = QStringLiteral("Tom's & Co\r\nLtd");
    const QString escaped = EscapeReportText(memo);
    EXPECT_EQ(escaped, "Tom''s  Co' + chr(13) + chr(10) + 'Ltd");
    EXPECT_EQ(ParseFormula("Memo='" + escaped + "'").value, "Tom's  Co\nLtd") << "the ampersand is dropped";
    EXPECT_EQ(ParseFormula("Memo='say \"hi\"'").value, "say \"hi\"");
}

TEST(ReportFormula, AnyTextSurvivesItsEscape) {
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    QRandomGenerator random(seed);
    const QString alphabet = QStringLiteral("ab '&\"\n\r+=chr()ā1");
    for (int round = 0; round < 300; ++round) {
        QString text;
        const int length = random.bounded(12);
        for (int i = 0; i < length; ++i)
            text += alphabet.at(random.bounded(alphabet.size()));
        QString expected = text;
        expected.remove(u'&');
        expected.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
        EXPECT_EQ(ParseFormula("x='" + EscapeReportText(text) + "'").value, expected) << "seed " << seed;
    }
}

TEST(ReportFormula, AnUnescapedApostropheBreaksTheFormula) {
    EXPECT_EQ(formulaError("Heading='Owner's copy'"), rpterr::BadFormula);
    EXPECT_EQ(formulaError("Heading='open"), rpterr::BadFormula);
    EXPECT_EQ(formulaError("='x'"), rpterr::BadFormula);
    EXPECT_EQ(formulaError("two words='x'"), rpterr::BadFormula);
    EXPECT_EQ(formulaError("x="), rpterr::BadFormula);
    EXPECT_EQ(formulaError("x='a' 'b'"), rpterr::BadFormula);
    EXPECT_EQ(formulaError("x=chr(oops)"), rpterr::BadFormula);
    EXPECT_EQ(formulaError("x=Wages.Gross"), rpterr::BadFormula);
}

TEST(ReportSelection, FieldsBecomeColumnsAndNothingElsePasses) {
    EXPECT_EQ(SelectionToSql("{Wages.EmployeeID} = 12"), "[Wages].[EmployeeID] = 12");
    EXPECT_EQ(SelectionToSql("{Wages.EmployeeID} = 3 and {Wages.Date} >= '2025-04-01'"),
              "[Wages].[EmployeeID] = 3 AND [Wages].[Date] >= '2025-04-01'");
    EXPECT_EQ(SelectionToSql("{T.Name} = \"O'Neil\""), "[T].[Name] = 'O''Neil'");
    for (const char* bad : {"{Wages.EmployeeID} = 3; DROP TABLE Wages", "{Wages} = 1",
                            "{Wages.EmployeeID} = 3 --", "1 = 1 union select 1", "{Wages.Employee]ID} = 1"}) {
        try {
            SelectionToSql(QString::fromUtf8(bad));
            ADD_FAILURE() << bad;
        } catch (const VbError& e) {
            EXPECT_EQ(e.number(), rpterr::BadFormula) << bad;
        }
    }
}
