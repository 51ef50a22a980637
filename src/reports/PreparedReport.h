#pragma once
// A report ready to be laid out on pages: the layout's page settings, its texts with every formula and
// lookup field put in (only {PageNumber} and {TotalPages} are left for the pages), and the rows as the
// cells will print. Qt Core only; the painter turns it into pages.
#include <QList>
#include <QString>
#include <QStringList>
#include <QtCore/qnamespace.h>

namespace ql {

struct PreparedText {
    QString place; // left, right, center
    QString style; // title, bold, normal, small
    QString text;  // line breaks stand as "\n"
    QString label; // a summary's caption
};

struct PreparedColumn {
    QString caption;
    double width = 1;
    Qt::AlignmentFlag align = Qt::AlignLeft;
};

struct PreparedReport {
    QString reportFile;
    QString name;
    QString pageSize = QStringLiteral("A4");
    bool landscape = false;
    double marginsMm = 15;
    QString fontFamily;
    double fontSize = 9;
    QString printDate; // the day it was run, as a short date

    QList<PreparedText> headings;
    QList<PreparedColumn> columns;
    QList<QStringList> rows;
    QStringList rowStyles; // per row: empty for the normal style, else bold or small
    QStringList totals;            // empty when no column has a total; else one cell per column
    QList<PreparedText> summaries; // empty texts left out
    QList<PreparedText> footers;
};

// A text with the page fields put in.
inline QString withPageFields(QString text, int page, int pages) {
    return text.replace(QStringLiteral("{PageNumber}"), QString::number(page))
        .replace(QStringLiteral("{TotalPages}"), QString::number(pages));
}

} // namespace ql
