#include "TitleMenuBarWidget.h"
#include "HelpViewerDialog.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "runtime/Trap.h"
#include <QApplication>
#include <QDesktopServices>
#include <QEvent>
#include <QFileInfo>
#include <QKeySequence>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QUrl>

namespace ql {

namespace {

// Help pages stand in the Help folder of the program; a page asked for beside the program is found
// there too, and an installed program finds them with its shared files.
void openHelpPage(const QString& path, qint32 topic) {
    QFileInfo file(path);
    const QString name = file.fileName();
    const QStringList elsewhere{file.absolutePath() + QStringLiteral("/Help/") + name,
                                QCoreApplication::applicationDirPath() +
                                    QStringLiteral("/../share/quillary/Help/") + name};
    for (const QString& candidate : elsewhere)
        if (!file.exists()) file = QFileInfo(candidate);
    if (!file.exists()) {
        ShowMessage(TranslateText(QStringLiteral("The help file |0| was not found."), QStringList{path}),
                    msg::OKOnly, Firm(), QStringLiteral("Help File Missing"), QString(), msg::Information,
                    true);
        return;
    }
    QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
    if (topic != 0) url.setFragment(QString::number(topic));
    if (DesktopHasBrowser() && QDesktopServices::openUrl(url)) return;
    ShowHelpInViewer(file.absoluteFilePath(), topic);
}

const char* const kButtonNames[] = {"Modules", "Tools", "Reports", "Help"};

} // namespace

void installDesktopMenuServices() {
    setHelpViewer(openHelpPage);
    setHourglass([](bool on) {
        if (on)
            QApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QApplication::restoreOverrideCursor();
    });
}

QMenu* buildTitleMenu(int button, const TitleMenus& entries, MenuHost& host, QWidget* parent) {
    auto* menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("mnu_") + QString::fromLatin1(kButtonNames[button]).toLower() +
                        QStringLiteral("main"));
    menu->setAccessibleName(QString::fromLatin1(kButtonNames[button]));
    for (const QString& caption : entries.entries(button)) {
        QAction* action = menu->addAction(caption);
        QObject::connect(action, &QAction::triggered, menu,
                         [button, caption, &host] { titleMenuClick(button, caption, host); });
    }
    return menu;
}

TitleMenuBar::TitleMenuBar(QWidget* form, const std::array<QAbstractButton*, 4>& buttons, TitleInput input,
                           qint32 screen)
    : QObject(form), m_form(form), m_buttons(buttons), m_screen(screen) {
    m_entries = BuildTitleMenus();
    for (int i = 0; i < 4; ++i) {
        m_menus[i] = buildTitleMenu(i, m_entries, *this, form);
        if (QAbstractButton* b = m_buttons[i]) {
            if (b->accessibleName().isEmpty()) b->setAccessibleName(QString::fromLatin1(kButtonNames[i]));
            if (input == TitleInput::Bar)
                connect(b, &QAbstractButton::clicked, this, [this, i] { titleClick(i); });
        }
    }
    // The form's own binding of Ctrl+M/T/R/H must stay the only one: a second would make the keys
    // ambiguous, and neither would fire.
    if (input == TitleInput::Bar) {
        for (char k : {'M', 'T', 'R', 'H'}) {
            auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(k)), form);
            shortcut->setContext(Qt::WindowShortcut);
            connect(shortcut, &QShortcut::activated, this, [this, k] {
                if (beforeTitleClick) skipErrors(beforeTitleClick);
                FormKeyDown(k, true, *this);
            });
        }
    }
    auto* f1 = new QShortcut(QKeySequence(Qt::Key_F1), form);
    f1->setContext(Qt::WindowShortcut);
    connect(f1, &QShortcut::activated, this, [this] { ShowContextHelp(*this); });
    form->installEventFilter(this);
}

QString TitleMenuBar::title() const {
    return m_form->window()->windowTitle();
}

void TitleMenuBar::popupTitleMenu(int button) {
    QMenu* menu = m_menus.at(button);
    QAbstractButton* b = m_buttons.at(button);
    const QPoint below = b ? b->mapToGlobal(QPoint(0, b->height())) : m_form->mapToGlobal(QPoint(0, 0));
    menu->popup(below);
    if (!menu->actions().isEmpty()) menu->setActiveAction(menu->actions().first());
}

void TitleMenuBar::titleClick(int index) {
    if (beforeTitleClick) skipErrors(beforeTitleClick);
    elsTitleBarClick(index, *this);
}

bool TitleMenuBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_form && event->type() == QEvent::WindowActivate) {
        try {
            ScreenActivated(*this, m_screen);
        } catch (const VbError& e) {
            ReportError(e, QStringLiteral("Form_Activate"));
        }
    }
    return QObject::eventFilter(watched, event);
}

TitleMenuBar* attachTitleMenus(QWidget* form, QPushButton* const buttons[4]) {
    installDesktopMenuServices();
    return new TitleMenuBar(form, {buttons[0], buttons[1], buttons[2], buttons[3]});
}

TitleMenuBar* attachTitleMenus(QWidget* form, const std::array<QAbstractButton*, 4>& buttons,
                               TitleInput input) {
    installDesktopMenuServices();
    return new TitleMenuBar(form, buttons, input);
}

} // namespace ql
