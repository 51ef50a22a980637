#pragma once
// A report layout file (.rpt) read into memory. The format is a list of statements, one a line: a
// keyword and options written key=value, a value in double quotes when it holds blanks ("" stands for
// one quote inside). A line ending in a backslash goes on on the next line; "#" starts a comment line.
// The README describes every keyword. Texts may hold fields in braces: {Formula}, {Table.Column} of a
// lookup table, {PageNumber}, {TotalPages} and {PrintDate}.
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QtCore/qnamespace.h>

namespace ql {

// Failures of the report engine, numbered as the report control numbers them.
namespace rpterr {
constexpr long FileNotFound = 20507;    // the layout file is not there or cannot be read
constexpr long BadFormula = 20515;      // a formula text that does not read as name=value
constexpr long BadLayout = 20520;       // a layout file that does not read
constexpr long DatabaseFailure = 20533; // a data file that does not open, a query that fails
constexpr long DatabaseBusy = 20534;    // a data file that another program holds locked
constexpr long OutputFailure = 20545;   // the output (file, printer) could not be written
} // namespace rpterr

struct LayoutFormula {
    QString name;         // as the report prints it; matched with regard to case
    QString defaultValue; // what it prints when no formula of that name is set
};

struct LayoutText {
    QString place; // heading and footer: left, right, center
    QString style; // title, bold, normal, small
    QString text;  // with {fields}
    QString label; // summary: a caption printed before the text
};

struct LayoutColumn {
    QString field;    // a column of the data, by name
    QString caption;  // may hold {fields}
    double width = 1; // a share of the page's width
    Qt::AlignmentFlag align = Qt::AlignLeft;
    QString format; // a named format for the cells; empty: as stored
    QString total;  // the format of the column's total; empty: no total
};

// Rows whose cell in field matches the pattern print in style (bold, small).
struct LayoutRowStyle {
    QString field;
    QString pattern;
    QString style;
};

struct ReportLayout {
    QString fileName; // the file it was read from
    QString name;
    QString pageSize = QStringLiteral("A4");
    bool landscape = false;
    double marginsMm = 15;
    QString fontFamily = QStringLiteral("DejaVu Sans");
    double fontSize = 9;

    QList<LayoutFormula> formulas;
    int dataSource = 0;                 // the index into DataFiles of the rows
    QString dataTable;                  // the rows: a table, or
    QString dataQuery;                  // a query
    QList<QPair<int, QString>> lookups; // one-row tables whose columns texts may name
    QStringList order;                  // the rows' order when no sort field is set
    QList<LayoutText> headings;
    QList<LayoutColumn> columns;
    QString totalsCaption; // the totals row's first cell; the row shows when a column has a total
    QList<LayoutRowStyle> rowStyles;
    QList<LayoutText> summaries;
    QList<LayoutText> footers;

    bool declares(const QString& formula) const;
    // The largest DataFiles index the layout reads.
    int lastSource() const;
};

// Reads a layout file; a missing file raises FileNotFound, a wrong statement BadLayout naming the line.
ReportLayout ReadReportLayout(const QString& path);
// Reads layout text (the file's name is for messages).
ReportLayout ParseReportLayout(const QString& text, const QString& fileName);

} // namespace ql
