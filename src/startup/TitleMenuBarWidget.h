#pragma once
// The title menus on the desktop: a QMenu for each of the main screen's four title buttons (Modules,
// Tools, Reports, Help), their keyboard forms Ctrl+M, Ctrl+T, Ctrl+R and Ctrl+H, F1 for the screen's
// help, and the screen's help numbers on activation. The logic is in Menus.h.
#include "Menus.h"
#include <QObject>
#include <array>

class QAbstractButton;
class QMenu;
class QPushButton;
class QWidget;

namespace ql {

// Who takes the title buttons' clicks and Ctrl+M, Ctrl+T, Ctrl+R, Ctrl+H: the bar itself, or the form,
// which already binds them and calls titleClick (the main window does).
enum class TitleInput { Bar, Form };

class TitleMenuBar : public QObject, public MenuHost {
    Q_OBJECT
public:
    // buttons: Modules, Tools, Reports, Help. The menus are read from the options now.
    TitleMenuBar(QWidget* form, const std::array<QAbstractButton*, 4>& buttons,
                 TitleInput input = TitleInput::Bar, qint32 screen = MainScreenNumber);
    QString title() const override;
    void popupTitleMenu(int button) override;
    // The menu of a title button; the Reports button has none of its own (it asks for the reports).
    QMenu* menu(int button) const { return m_menus.at(button); }
    const TitleMenus& entries() const { return m_entries; }
    // Runs before each title button's action: the main screen saves its leave grid here.
    std::function<void()> beforeTitleClick;
    // A title button's action (beforeTitleClick first): its menu below it, or the reports at once.
    void titleClick(int index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_form;
    std::array<QAbstractButton*, 4> m_buttons;
    std::array<QMenu*, 4> m_menus{};
    TitleMenus m_entries;
    qint32 m_screen;
};

// A QMenu with the entries of one title button; a choice runs that menu's click.
QMenu* buildTitleMenu(int button, const TitleMenus& entries, MenuHost& host, QWidget* parent);

// Builds and attaches the menus to the four title buttons of form (Modules, Tools, Reports, Help) and
// installs the desktop's help viewer and hourglass. The bar is a child of form.
TitleMenuBar* attachTitleMenus(QWidget* form, QPushButton* const buttons[4]);
// The same for a form that takes the buttons' clicks and keys itself and calls titleClick.
TitleMenuBar* attachTitleMenus(QWidget* form, const std::array<QAbstractButton*, 4>& buttons,
                               TitleInput input);

// Help pages open in the desktop's browser; the hourglass is the wait cursor.
void installDesktopMenuServices();

} // namespace ql
