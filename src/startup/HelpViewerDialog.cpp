#include "HelpViewerDialog.h"
#include "ui/Skin.h"
#include <QApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace ql {

HelpViewerDialog::HelpViewerDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("HelpViewer"));
    setWindowTitle(QStringLiteral("Quillary Help"));
    setAccessibleName(QStringLiteral("Quillary Help"));
    m_browser = new QTextBrowser(this);
    m_browser->setObjectName(QStringLiteral("txtHelp"));
    m_browser->setAccessibleName(QStringLiteral("Help page"));
    m_browser->setOpenExternalLinks(false);
    m_browser->setOpenLinks(true);
    m_back = new QPushButton(QStringLiteral("&Back"), this);
    m_back->setAccessibleName(QStringLiteral("Back to the previous help page"));
    m_back->setShortcut(QKeySequence(QKeySequence::Back));
    m_forward = new QPushButton(QStringLiteral("&Forward"), this);
    m_forward->setAccessibleName(QStringLiteral("Forward to the next help page"));
    m_forward->setShortcut(QKeySequence(QKeySequence::Forward));
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setAccessibleName(QStringLiteral("Close the help"));
    for (QPushButton* b : {m_back, m_forward, close})
        b->setAutoDefault(false);
    m_back->setEnabled(false);
    m_forward->setEnabled(false);
    connect(m_back, &QPushButton::clicked, m_browser, &QTextBrowser::backward);
    connect(m_forward, &QPushButton::clicked, m_browser, &QTextBrowser::forward);
    connect(m_browser, &QTextBrowser::backwardAvailable, m_back, &QPushButton::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, m_forward, &QPushButton::setEnabled);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_back);
    buttons->addWidget(m_forward);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_browser, 1);
    layout->addLayout(buttons);
    // A readable page that stays on a small screen, placed without a window manager's help.
    QSize size(760, 600);
    if (QScreen* s = QGuiApplication::primaryScreen())
        size = size.boundedTo(s->availableGeometry().size() - QSize(40, 60));
    resize(size);
    CentreForm(this);
}

void HelpViewerDialog::showPage(const QString& path, qint32 topic) {
    QUrl url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    m_browser->setSource(url);
    if (topic != 0) m_browser->scrollToAnchor(QString::number(topic));
    m_browser->setFocus();
}

HelpViewerDialog* ShowHelpInViewer(const QString& path, qint32 topic) {
    static QPointer<HelpViewerDialog> viewer;
    if (!viewer) {
        viewer = new HelpViewerDialog(QApplication::activeWindow());
        viewer->setAttribute(Qt::WA_DeleteOnClose);
    }
    viewer->showPage(path, topic);
    viewer->show();
    viewer->raise();
    viewer->activateWindow();
    return viewer;
}

bool DesktopHasBrowser() {
    if (qEnvironmentVariable("QUILLARY_HELP_VIEWER") == QLatin1String("1")) return false;
    const QString browser = qEnvironmentVariable("BROWSER");
    if (!browser.isEmpty()) {
        const QString first = browser.split(u':').first().split(u' ').first();
        if (!QStandardPaths::findExecutable(first).isEmpty() || QFileInfo(first).isExecutable()) return true;
    }
    if (QStandardPaths::findExecutable(QStringLiteral("xdg-open")).isEmpty()) return false;
    // xdg-open says nothing when it finds no program for a page: ask which one it would start.
    const QString mime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (mime.isEmpty()) return false;
    QProcess query;
    query.start(mime, {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("text/html")});
    if (!query.waitForFinished(3000)) {
        query.kill();
        query.waitForFinished(1000);
        return false;
    }
    const QString desktopFile = QString::fromLocal8Bit(query.readAllStandardOutput()).trimmed();
    if (desktopFile.isEmpty()) return false;
    return !QStandardPaths::locate(QStandardPaths::ApplicationsLocation, desktopFile).isEmpty();
}

} // namespace ql
