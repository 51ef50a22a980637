#include "ReportPages.h"
#include <QFontMetricsF>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>

namespace ql {

namespace {

const QColor kRule(120, 120, 120);
const QColor kCaptionBack(225, 232, 218); // the pale green of the program's screens
const QColor kShade(246, 248, 244);

double mm(const QPaintDevice* device, double millimetres) {
    return millimetres * device->logicalDpiY() / 25.4;
}

Qt::Alignment placeAlign(const QString& place) {
    if (place == QLatin1String("right")) return Qt::AlignRight;
    if (place == QLatin1String("center")) return Qt::AlignHCenter;
    return Qt::AlignLeft;
}

// Consecutive left and right texts stand side by side; a centred text takes a band of its own.
QList<QList<PreparedText>> bands(const QList<PreparedText>& headings) {
    QList<QList<PreparedText>> out;
    bool open = false;
    for (const PreparedText& h : headings) {
        if (h.place == QLatin1String("center")) {
            out.append(QList<PreparedText>{h});
            open = false;
        } else {
            if (!open) out.append(QList<PreparedText>());
            out.last().append(h);
            open = true;
        }
    }
    return out;
}

} // namespace

QPageLayout reportPageLayout(const PreparedReport& report) {
    const QPageSize::PageSizeId id = report.pageSize == QLatin1String("A5")       ? QPageSize::A5
                                     : report.pageSize == QLatin1String("Letter") ? QPageSize::Letter
                                                                                  : QPageSize::A4;
    const double m = report.marginsMm;
    return QPageLayout(QPageSize(id), report.landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                       QMarginsF(m, m, m, m), QPageLayout::Millimeter);
}

ReportPages::ReportPages(const PreparedReport& report, QPaintDevice* device, const QRectF& area)
    : m_report(report), m_device(device), m_area(area) {
    m_pad = mm(device, 0.8);
    const double top = headingHeight() + mm(device, 3) + rowHeight({}, font(QStringLiteral("bold")));
    const double bottom =
        m_area.bottom() - textHeight(QStringLiteral("X"), font(QStringLiteral("small")), 1e9) - mm(device, 4);
    const QFont normal = font(QStringLiteral("normal"));
    Page page;
    double y = m_area.top() + top;
    auto fits = [&](double h) { return y + h <= bottom; };
    auto nextPage = [&](int row) {
        m_pages.append(page);
        page = Page{row, row, false, {}};
        y = m_area.top() + top;
    };
    for (int r = 0; r < report.rows.size(); ++r) {
        const QString style = report.rowStyles.value(r);
        const double h = rowHeight(report.rows.at(r), style.isEmpty() ? normal : font(style));
        if (!fits(h) && page.endRow > page.firstRow) nextPage(r);
        y += h;
        page.endRow = r + 1;
    }
    const int end = int(report.rows.size());
    if (!report.totals.isEmpty()) {
        const double h = rowHeight(report.totals, font(QStringLiteral("bold"))) + mm(device, 1);
        if (!fits(h) && page.endRow > page.firstRow) nextPage(end);
        y += h;
        page.totals = true;
    }
    for (int s = 0; s < report.summaries.size(); ++s) {
        const double h = summaryHeight(report.summaries.at(s));
        if (!fits(h) && (page.endRow > page.firstRow || page.totals || !page.summaries.isEmpty()))
            nextPage(end);
        y += h;
        page.summaries.append(s);
    }
    m_pages.append(page);
}

QFont ReportPages::font(const QString& style) const {
    // A font without a family crashes the print preview's recording of it: the layouts' own default.
    QFont f(m_report.fontFamily.isEmpty() ? QStringLiteral("DejaVu Sans") : m_report.fontFamily);
    double size = m_report.fontSize;
    if (style == QLatin1String("title")) {
        size *= 1.6;
        f.setBold(true);
    } else if (style == QLatin1String("bold")) {
        f.setBold(true);
    } else if (style == QLatin1String("small")) {
        size *= 0.85;
    }
    f.setPointSizeF(size);
    return f;
}

double ReportPages::textHeight(const QString& text, const QFont& font, double width) const {
    const QFontMetricsF fm(font, m_device);
    if (text.isEmpty()) return fm.height();
    return fm.boundingRect(QRectF(0, 0, width, 1e9), Qt::TextWordWrap, text).height();
}

double ReportPages::headingHeight() const {
    double height = 0;
    const double half = m_area.width() / 2;
    for (const QList<PreparedText>& band : bands(m_report.headings)) {
        double left = 0, right = 0;
        for (const PreparedText& h : band) {
            const bool full = h.place == QLatin1String("center");
            const double th = textHeight(h.text, font(h.style), full ? m_area.width() : half);
            (h.place == QLatin1String("right") ? right : left) += th;
        }
        height += qMax(left, right) + mm(m_device, 1.5);
    }
    return height;
}

QList<double> ReportPages::columnWidths() const {
    double shares = 0;
    for (const PreparedColumn& c : m_report.columns)
        shares += c.width;
    QList<double> widths;
    for (const PreparedColumn& c : m_report.columns)
        widths << m_area.width() * c.width / shares;
    return widths;
}

double ReportPages::rowHeight(const QStringList& cells, const QFont& font) const {
    const QList<double> widths = columnWidths();
    double h = textHeight(QString(), font, 1e9);
    for (int c = 0; c < widths.size(); ++c) {
        const QString text = c < cells.size()  ? cells.at(c)
                             : cells.isEmpty() ? m_report.columns.at(c).caption
                                               : QString();
        h = qMax(h, textHeight(text, font, widths.at(c) - 2 * m_pad));
    }
    return h + 2 * m_pad;
}

double ReportPages::summaryHeight(const PreparedText& s) const {
    double h = mm(m_device, 3);
    if (!s.label.isEmpty()) h += textHeight(s.label, font(QStringLiteral("bold")), m_area.width());
    return h + textHeight(s.text, font(s.style), m_area.width());
}

void ReportPages::paintHeading(QPainter& p, double& y, int page) const {
    const int pages = pageCount();
    const double half = m_area.width() / 2;
    for (const QList<PreparedText>& band : bands(m_report.headings)) {
        double left = y, right = y;
        for (const PreparedText& h : band) {
            const QFont f = font(h.style);
            p.setFont(f);
            const QString text = withPageFields(h.text, page + 1, pages);
            if (h.place == QLatin1String("center")) {
                const double th = textHeight(text, f, m_area.width());
                p.drawText(QRectF(m_area.left(), left, m_area.width(), th),
                           Qt::AlignHCenter | Qt::TextWordWrap, text);
                left += th;
                right = left;
            } else {
                const bool onRight = h.place == QLatin1String("right");
                double& at = onRight ? right : left;
                const double th = textHeight(text, f, half);
                p.drawText(QRectF(m_area.left() + (onRight ? half : 0), at, half, th),
                           (onRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::TextWordWrap, text);
                at += th;
            }
        }
        y = qMax(left, right) + mm(m_device, 1.5);
    }
}

void ReportPages::paintRow(QPainter& p, double& y, const QStringList& cells, const QFont& font,
                           bool shaded) const {
    const QList<double> widths = columnWidths();
    const double h = rowHeight(cells, font);
    if (shaded) p.fillRect(QRectF(m_area.left(), y, m_area.width(), h), kShade);
    p.setFont(font);
    double x = m_area.left();
    for (int c = 0; c < widths.size(); ++c) {
        const QRectF cell(x + m_pad, y + m_pad, widths.at(c) - 2 * m_pad, h - 2 * m_pad);
        p.drawText(cell, m_report.columns.at(c).align | Qt::AlignTop | Qt::TextWordWrap, cells.value(c));
        x += widths.at(c);
    }
    y += h;
}

void ReportPages::paintFooter(QPainter& p, int page) const {
    const QFont f = font(QStringLiteral("small"));
    const double h = textHeight(QStringLiteral("X"), f, 1e9);
    const double top = m_area.bottom() - h;
    p.setPen(QPen(kRule, mm(m_device, 0.2)));
    p.drawLine(QPointF(m_area.left(), top - mm(m_device, 1)), QPointF(m_area.right(), top - mm(m_device, 1)));
    p.setPen(Qt::black);
    p.setFont(f);
    for (const PreparedText& t : m_report.footers)
        p.drawText(QRectF(m_area.left(), top, m_area.width(), h), placeAlign(t.place) | Qt::AlignTop,
                   withPageFields(t.text, page + 1, pageCount()));
}

void ReportPages::paintPage(QPainter& p, int page) const {
    const Page& pg = m_pages.at(page);
    double y = m_area.top();
    p.setPen(Qt::black);
    paintHeading(p, y, page);
    y += mm(m_device, 3);

    QStringList captions;
    for (const PreparedColumn& c : m_report.columns)
        captions << c.caption;
    const QFont bold = font(QStringLiteral("bold"));
    const double captionTop = y;
    p.fillRect(QRectF(m_area.left(), y, m_area.width(), rowHeight(captions, bold)), kCaptionBack);
    paintRow(p, y, captions, bold, false);
    const QPen rule(kRule, mm(m_device, 0.25));
    p.setPen(rule);
    p.drawLine(QPointF(m_area.left(), captionTop), QPointF(m_area.right(), captionTop));
    p.drawLine(QPointF(m_area.left(), y), QPointF(m_area.right(), y));
    p.setPen(Qt::black);

    const QFont normal = font(QStringLiteral("normal"));
    for (int r = pg.firstRow; r < pg.endRow; ++r) {
        const QString style = m_report.rowStyles.value(r);
        paintRow(p, y, m_report.rows.at(r), style.isEmpty() ? normal : font(style), (r - pg.firstRow) % 2 == 1);
    }
    if (pg.totals) {
        y += mm(m_device, 1);
        p.setPen(rule);
        p.drawLine(QPointF(m_area.left(), y), QPointF(m_area.right(), y));
        p.setPen(Qt::black);
        paintRow(p, y, m_report.totals, bold, false);
    }
    for (int s : pg.summaries) {
        const PreparedText& t = m_report.summaries.at(s);
        y += mm(m_device, 3);
        if (!t.label.isEmpty()) {
            p.setFont(bold);
            const double lh = textHeight(t.label, bold, m_area.width());
            p.drawText(QRectF(m_area.left(), y, m_area.width(), lh), Qt::AlignLeft | Qt::TextWordWrap,
                       t.label);
            y += lh;
        }
        const QFont f = font(t.style);
        const double th = textHeight(t.text, f, m_area.width());
        p.setFont(f);
        p.drawText(QRectF(m_area.left(), y, m_area.width(), th), Qt::AlignLeft | Qt::TextWordWrap, t.text);
        y += th;
    }
    paintFooter(p, page);
}

int paintReport(const PreparedReport& report, QPagedPaintDevice& device) {
    return paintReports(QList<PreparedReport>{report}, device);
}

int paintReports(const QList<PreparedReport>& reports, QPagedPaintDevice& device) {
    if (reports.isEmpty()) return 0;
    device.setPageLayout(reportPageLayout(reports.first()));
    QPainter painter;
    if (!painter.begin(&device)) return 0;
    int painted = 0;
    for (const PreparedReport& report : reports) {
        if (painted > 0) {
            device.setPageLayout(reportPageLayout(report));
            device.newPage();
        }
        const QRect area = device.pageLayout().paintRectPixels(device.logicalDpiX());
        const ReportPages pages(report, &device, QRectF(0, 0, area.width(), area.height()));
        for (int i = 0; i < pages.pageCount(); ++i) {
            if (i > 0) device.newPage();
            pages.paintPage(painter, i);
            ++painted;
        }
    }
    painter.end();
    return painted;
}

} // namespace ql
