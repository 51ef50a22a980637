#pragma once
// The preview of printed output: the pages fitted to the window's width in a window that covers the
// screen, whether or not a window manager places it, with "Save PDF" (Ctrl+S) and what else the
// caller offers (an email of the slips, for one).
#include "PreparedReport.h"
#include <QList>
#include <QString>
#include <functional>

class QDialog;
class QWidget;

namespace ql {

struct PreviewAction {
    QString caption; // with its "&" key
    QString name;    // object and accessible name
    QString shortcut;
    std::function<void(QWidget* preview)> run;
};

// Shows the reports, one after another, in one modal preview; returns when it is closed.
void PreviewReports(const QList<PreparedReport>& reports, const QString& title, QWidget* parent,
                    const QList<PreviewAction>& extra = {});

// Asks where to save (the file dialog unless replaced) and writes the reports there as one PDF file.
// Returns the path written, or the empty text when cancelled or when it failed (the failure told).
QString SaveReportsAsPdf(const QList<PreparedReport>& reports, const QString& suggested, QWidget* parent);

// Asks for the path of a PDF file to write; the empty text cancels. Tests replace it.
using PdfPathChooser = std::function<QString(QWidget* parent, const QString& suggested)>;
PdfPathChooser setPdfPathChooser(PdfPathChooser chooser);

// More actions for the preview the report screen opens, chosen by the report shown (the payslip's
// Email, for one). Empty at first.
using ReportActionsFor = std::function<QList<PreviewAction>(const PreparedReport& report)>;
void setReportScreenActions(ReportActionsFor actions);
QList<PreviewAction> reportScreenActions(const PreparedReport& report);

// Runs on each preview once it is on the screen and fitted (tests look at it, and close it).
void setPreviewShownHook(std::function<void(QDialog* preview)> hook);

} // namespace ql
