#pragma once
// A prepared report laid out on pages and painted with Qt: the heading block and the column captions
// at the top of every page, the rows as far as they fit, the totals row and the summaries after the
// last row, and the footer with its page counter at the bottom. One painter serves the preview, the
// printer and the PDF file.
#include "reports/PreparedReport.h"
#include <QFont>
#include <QList>
#include <QPageLayout>
#include <QRectF>

class QPagedPaintDevice;
class QPaintDevice;
class QPainter;

namespace ql {

// The page size, orientation and margins the report asks for.
QPageLayout reportPageLayout(const PreparedReport& report);

class ReportPages {
public:
    // Lays the report out for device, whose page layout must already be the report's.
    ReportPages(const PreparedReport& report, QPaintDevice* device, const QRectF& area);

    int pageCount() const { return int(m_pages.size()); }
    // Rows [firstRow, endRow) stand on page (from 0).
    int firstRow(int page) const { return m_pages.at(page).firstRow; }
    int endRow(int page) const { return m_pages.at(page).endRow; }
    void paintPage(QPainter& painter, int page) const;

private:
    struct Page {
        int firstRow = 0;
        int endRow = 0;
        bool totals = false;
        QList<int> summaries;
    };
    QFont font(const QString& style) const;
    double textHeight(const QString& text, const QFont& font, double width) const;
    double headingHeight() const;
    double rowHeight(const QStringList& cells, const QFont& font) const;
    double summaryHeight(const PreparedText& s) const;
    QList<double> columnWidths() const;
    void paintHeading(QPainter& p, double& y, int page) const;
    void paintRow(QPainter& p, double& y, const QStringList& cells, const QFont& font, bool shaded) const;
    void paintFooter(QPainter& p, int page) const;

    const PreparedReport& m_report;
    QPaintDevice* m_device;
    QRectF m_area;
    double m_pad = 0; // the space between a cell's text and its border
    QList<Page> m_pages;
};

// Paints the whole report on a printer or PDF writer, page by page; returns the number of pages.
int paintReport(const PreparedReport& report, QPagedPaintDevice& device);
// Paints the reports one after another on one device, each from a new page; returns the pages.
int paintReports(const QList<PreparedReport>& reports, QPagedPaintDevice& device);

} // namespace ql
