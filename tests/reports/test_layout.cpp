// Reading report layout files: the three the program ships, and what a broken one gives.
#include "TestEnv.h"
#include "reports/ReportLayout.h"
#include "runtime/VbError.h"

using namespace ql;

namespace {

QString shipped(const char* name) {
    return QStringLiteral(QUILLARY_SOURCE_DIR "/reports/") + QLatin1String(name);
}

QStringList formulaNames(const ReportLayout& l) {
    QStringList names;
    for (const LayoutFormula& f : l.formulas)
        names << f.name;
    return names;
}

long errorOf(const QString& text, QString* description = nullptr) {
    try {
        ParseReportLayout(text, QStringLiteral("/x/broken.rpt"));
    } catch (const VbError& e) {
        if (description) *description = e.description();
        return e.number();
    }
    return 0;
}

const QString kMinimal = QStringLiteral("data source=0 table=PaySlip\ncolumn field=Description\n");

} // namespace

TEST(ReportLayout, PayslipDeclaresEveryFormulaThePrintSets) {
    const ReportLayout l = ReadReportLayout(shipped("ql_payslip.rpt"));
    const QStringList names = formulaNames(l);
    for (const char* n :
         {"UserName", "DateLine", "ReportName", "Reference", "PayDate", "Address1", "PayNumber", "IRDNumber",
          "EIRDNum", "Employee", "Employer", "Address2", "Address3", "Memo", "page", "of"})
        EXPECT_TRUE(names.contains(QLatin1String(n))) << n;
    EXPECT_EQ(l.dataSource, 0);
    EXPECT_EQ(l.dataTable, "PaySlip");
    ASSERT_EQ(l.columns.size(), 5);
    EXPECT_EQ(l.columns.at(0).field, "Description");
    EXPECT_EQ(l.columns.at(4).field, "Total");
    EXPECT_FALSE(l.landscape);
}

TEST(ReportLayout, HistoryFilesDifferOnlyInOrderAndNameTheirDateLineAsTheirOwn) {
    const ReportLayout dated = ReadReportLayout(shipped("ql_quickview.rpt"));
    const ReportLayout entered = ReadReportLayout(shipped("ql_QViewUnsort.rpt"));
    EXPECT_EQ(dated.order, QStringList{"Wages.Date"});
    EXPECT_EQ(entered.order, QStringList{"Wages.WageID"});
    for (const ReportLayout* l : {&dated, &entered}) {
        EXPECT_TRUE(l->declares("Dateline"));
        EXPECT_FALSE(l->declares("DateLine")) << "the names are matched with regard to case";
        EXPECT_EQ(l->columns.size(), 10);
        EXPECT_EQ(l->dataSource, 1);
        EXPECT_EQ(l->lookups.value(0).first, 0);
        EXPECT_TRUE(l->landscape);
    }
    EXPECT_FALSE(ReadReportLayout(shipped("ql_payslip.rpt")).declares("Dateline"));
}

TEST(ReportLayout, AMissingFileIsItsOwnError) {
    try {
        ReadReportLayout(QStringLiteral("/nowhere/ql_payslip.rpt"));
        FAIL() << "no error";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), rpterr::FileNotFound);
        EXPECT_EQ(e.description(), "The report file /nowhere/ql_payslip.rpt cannot be found.");
    }
}

TEST(ReportLayout, QuotedValuesContinuedLinesAndComments) {
    const ReportLayout l = ParseReportLayout(
        QStringLiteral(
            "# a comment\n\nreport name=\"A \"\"quoted\"\" name\"\n"
            "data source=2 query=\"SELECT a, \\\n   b FROM t\"\n"
            "column field=a caption=\"First column\" width=3 align=right format=Currency total=Currency\n"
            "totals caption=Totals\n"),
        QStringLiteral("x.rpt"));
    EXPECT_EQ(l.name, "A \"quoted\" name");
    EXPECT_EQ(l.dataSource, 2);
    EXPECT_EQ(l.dataQuery.simplified(), "SELECT a, b FROM t");
    EXPECT_EQ(l.columns.at(0).caption, "First column");
    EXPECT_EQ(l.columns.at(0).align, Qt::AlignRight);
    EXPECT_EQ(l.columns.at(0).total, "Currency");
    EXPECT_EQ(l.totalsCaption, "Totals");
    EXPECT_EQ(l.lastSource(), 2);
}

TEST(ReportLayout, BrokenStatementsNameTheirLine) {
    QString d;
    EXPECT_EQ(errorOf(kMinimal + "colum field=x\n", &d), rpterr::BadLayout);
    EXPECT_EQ(d, "The report file broken.rpt cannot be read: line 3: unknown statement \"colum\".");
    EXPECT_EQ(errorOf(kMinimal + "heading text=\"not closed\n", &d), rpterr::BadLayout);
    EXPECT_TRUE(d.contains("line 3: the quote after text= is not closed")) << d.toStdString();
    EXPECT_EQ(errorOf(kMinimal + "column field=x widht=3\n", &d), rpterr::BadLayout);
    EXPECT_TRUE(d.contains("column knows no widht=")) << d.toStdString();
    EXPECT_EQ(errorOf(kMinimal + "column field=x width=-1\n"), rpterr::BadLayout);
    EXPECT_EQ(errorOf(kMinimal + "heading place=middle text=x\n"), rpterr::BadLayout);
    EXPECT_EQ(errorOf(kMinimal + "formula name=a\nformula name=a\n"), rpterr::BadLayout);
    EXPECT_EQ(errorOf(kMinimal + "data source=0 table=Other\n"), rpterr::BadLayout);
    EXPECT_EQ(errorOf(QStringLiteral("column field=x\n"), &d), rpterr::BadLayout);
    EXPECT_TRUE(d.contains("no data statement"));
    EXPECT_EQ(errorOf(QStringLiteral("data source=0 table=PaySlip\n"), &d), rpterr::BadLayout);
    EXPECT_TRUE(d.contains("no columns"));
    EXPECT_EQ(errorOf(kMinimal + "footer text=x \\"), rpterr::BadLayout);
    EXPECT_EQ(errorOf(QString()), rpterr::BadLayout);
    EXPECT_EQ(errorOf(kMinimal), 0);
}

TEST(ReportLayout, RowStylesNeedAValidPattern) {
    const ReportLayout l = ParseReportLayout(
        kMinimal + "rowstyle field=Description match=\"^\\S\" style=bold\n", QStringLiteral("x.rpt"));
    ASSERT_EQ(l.rowStyles.size(), 1);
    EXPECT_EQ(l.rowStyles.at(0).pattern, "^\\S");
    EXPECT_EQ(errorOf(kMinimal + "rowstyle field=Description match=\"(\"\n"), rpterr::BadLayout);
    EXPECT_EQ(errorOf(kMinimal + "rowstyle field=Description match=x style=italic\n"), rpterr::BadLayout);
    EXPECT_EQ(ReadReportLayout(shipped("ql_payslip.rpt")).rowStyles.size(), 1);
}
