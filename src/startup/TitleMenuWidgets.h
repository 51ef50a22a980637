#pragma once
// The title menus on the desktop: a QMenu for each of the main screen's four title buttons (Modules,
// Tools, Reports, Help), their keyboard forms Ctrl+M, Ctrl+T, Ctrl+R and Ctrl+H, F1 for the screen's
// help, and the screen's help numbers on activation. The logic is in Menus.h.
#include "Menus.h"
#include <QObject>
#include <array>

class QMenu;
class QPushButton;
class QWidget;

namespace ql {

class TitleMenuBar : public QObject, public MenuHost {
    Q_OBJECT
public:
    // buttons: Modules, Tools, Reports, Help. The menus are read from the options now.
    TitleMenuBar(QWidget* form, const std::array<QPushButton*, 4>& buttons, qint32 screen = MainScreenNumber);
    QString title() const override;
    void popupTitleMenu(int button) override;
    // The menu of a title button; the Reports button has none of its own (it asks for the reports).
    QMenu* menu(int button) const { return m_menus.at(button); }
    const TitleMenus& entries() const { return m_entries; }
    // Runs before each title button's action: the main screen saves its leave grid here.
    std::function<void()> beforeTitleClick;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void titleClick(int index);
    QWidget* m_form;
    std::array<QPushButton*, 4> m_buttons;
    std::array<QMenu*, 4> m_menus{};
    TitleMenus m_entries;
    qint32 m_screen;
};

// A QMenu with the entries of one title button; a choice runs that menu's click.
QMenu* buildTitleMenu(int button, const TitleMenus& entries, MenuHost& host, QWidget* parent);

// Builds and attaches the menus to the four title buttons of form (Modules, Tools, Reports, Help) and
// installs the desktop's help viewer and hourglass. The bar is a child of form.
TitleMenuBar* attachTitleMenus(QWidget* form, QPushButton* const buttons[4]);

// Help pages open in the desktop's browser; the hourglass is the wait cursor.
void installDesktopMenuServices();

} // namespace ql
