#include "ReportPreviewDialog.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "reports/paint/ReportPages.h"
#include "reports/paint/ReportPdf.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMainWindow>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QScreen>
#include <QTimer>
#include <QToolBar>

namespace ql {

namespace {

PdfPathChooser& chooser() {
    static PdfPathChooser c;
    return c;
}

std::function<void(QDialog*)>& shownHook() {
    static std::function<void(QDialog*)> h;
    return h;
}

ReportActionsFor& screenActions() {
    static ReportActionsFor a;
    return a;
}

QString askPath(QWidget* parent, const QString& suggested) {
    QFileDialog dialog(parent, QStringLiteral("Save PDF"), suggested,
                       QStringLiteral("PDF files (*.pdf)"));
    dialog.setObjectName(QStringLiteral("SavePdfDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    // The same dialog with or without a desktop behind it, drivable by keys.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.selectFile(suggested);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return QString();
    return dialog.selectedFiles().first();
}

} // namespace

PdfPathChooser setPdfPathChooser(PdfPathChooser c) {
    PdfPathChooser previous = chooser();
    chooser() = std::move(c);
    return previous;
}

void setReportScreenActions(ReportActionsFor actions) {
    screenActions() = std::move(actions);
}

QList<PreviewAction> reportScreenActions(const PreparedReport& report) {
    return screenActions() ? screenActions()(report) : QList<PreviewAction>{};
}

void setPreviewShownHook(std::function<void(QDialog*)> hook) {
    shownHook() = std::move(hook);
}

QString SaveReportsAsPdf(const QList<PreparedReport>& reports, const QString& suggested, QWidget* parent) {
    QString start = suggested;
    if (QDir::isRelativePath(start)) start = QDir::homePath() + u'/' + start;
    const QString path = chooser() ? chooser()(parent, start) : askPath(parent, start);
    if (path.isEmpty()) return QString();
    try {
        WriteReportsPdf(reports, path);
    } catch (const std::exception& e) {
        ShowMessage(toVbError(e).description(), msg::OKOnly, Firm(), QStringLiteral("Save PDF"), QString(),
                    msg::Stop, true);
        return QString();
    }
    return path;
}

void PreviewReports(const QList<PreparedReport>& reports, const QString& title, QWidget* parent,
                    const QList<PreviewAction>& extra) {
    if (reports.isEmpty()) return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(reportPageLayout(reports.first()));
    printer.setDocName(title);
    QPrintPreviewDialog dialog(&printer, parent ? parent : QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("ReportPreview"));
    dialog.setWindowTitle(title);
    dialog.setAccessibleName(title);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&reports](QPrinter* p) { paintReports(reports, *p); });

    QList<PreviewAction> actions;
    actions << PreviewAction{QStringLiteral("&Save PDF..."), QStringLiteral("Save PDF"),
                             QStringLiteral("Ctrl+S"), [&reports, title](QWidget* owner) {
                                 SaveReportsAsPdf(reports, title + QStringLiteral(".pdf"), owner);
                             }};
    actions << extra;
    // The program's own actions get a row of their own, so that none hides behind the tool bar's
    // overflow on a small screen.
    QToolBar* bar = dialog.findChild<QToolBar*>();
    if (auto* frame = dialog.findChild<QMainWindow*>()) {
        auto* own = new QToolBar(QStringLiteral("Output"), frame);
        own->setObjectName(QStringLiteral("OutputBar"));
        own->setAccessibleName(QStringLiteral("Output"));
        own->setMovable(false);
        own->setFloatable(false);
        own->setToolButtonStyle(Qt::ToolButtonTextOnly);
        frame->addToolBarBreak(Qt::TopToolBarArea);
        frame->addToolBar(Qt::TopToolBarArea, own);
        bar = own;
    } else if (bar) {
        bar->addSeparator();
    }
    for (const PreviewAction& a : actions) {
        auto* action = new QAction(a.caption, &dialog);
        action->setObjectName(a.name);
        action->setToolTip(a.name);
        if (!a.shortcut.isEmpty()) action->setShortcut(QKeySequence(a.shortcut));
        action->setShortcutContext(Qt::WindowShortcut);
        QObject::connect(action, &QAction::triggered, &dialog, [run = a.run, d = &dialog] { run(d); });
        dialog.addAction(action);
        if (bar) {
            bar->addAction(action);
            if (QWidget* w = bar->widgetForAction(action)) w->setAccessibleName(a.name);
        }
    }

    // Without a window manager a maximised state is never applied: the window is given the screen's
    // room itself, and the page its width.
    QScreen* screen = dialog.screen() ? dialog.screen() : QGuiApplication::primaryScreen();
    if (screen) dialog.setGeometry(screen->availableGeometry());
    dialog.setWindowState(dialog.windowState() | Qt::WindowMaximized);
    QTimer::singleShot(0, &dialog, [&dialog] {
        if (auto* view = dialog.findChild<QPrintPreviewWidget*>()) {
            view->fitToWidth();
            view->setFocus();
        }
        if (shownHook()) shownHook()(&dialog);
    });
    dialog.exec();
}

} // namespace ql
