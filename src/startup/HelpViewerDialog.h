#pragma once
// The program's own help viewer: the same HTML pages as the browser would show, for a desktop that
// has no browser to open them. Links within the pages, Back and Forward work; Escape closes it.
#include <QDialog>

class QTextBrowser;
class QPushButton;

namespace ql {

class HelpViewerDialog : public QDialog {
public:
    explicit HelpViewerDialog(QWidget* parent = nullptr);
    // Shows the page, at the topic's anchor when topic isn't 0.
    void showPage(const QString& path, qint32 topic);
    QTextBrowser* browser() const { return m_browser; }

private:
    QTextBrowser* m_browser;
    QPushButton* m_back;
    QPushButton* m_forward;
};

// The one viewer of the program, made on first use and shown without modality.
HelpViewerDialog* ShowHelpInViewer(const QString& path, qint32 topic);

// Whether the desktop has a browser to open help pages in: $BROWSER, or a program that xdg-open would
// start for a web page. QUILLARY_HELP_VIEWER=1 makes the program use its own viewer always.
bool DesktopHasBrowser();

} // namespace ql
