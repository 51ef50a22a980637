#pragma once
// The suite's list of menu options and the help numbers of its screens, read from the MenuOptions and
// ScreenHelp tables of the modules database. A new reader is made for each use.
#include <QList>
#include <QString>

namespace ql {

// One entry of a title menu. Captions and help files keep their trailing blanks as stored.
struct MenuOption {
    QString group; // "Modules", "Tools", "Reports" or "Help"
    QString caption;
    QString helpFile;
    qint32 helpKind =
        0; // 1 a topic of the program's help, 2 the contents of another file, else the file alone
};

class MenuReader {
public:
    // Reads every option in its order, and the caption that closes the Modules menu.
    void Load();
    const QList<MenuOption>& options() const { return m_options; }
    // Fills option with the entry of that caption (trailing blanks and case aside); false when none.
    bool Lookup(const QString& name, MenuOption& option) const;
    // The caption of the last entry of the Modules menu.
    QString closingCaption() const { return m_closing; }
    // The help numbers of a screen; 0 for a screen without a row. The main screen is 7.
    qint32 HelpContextID(qint32 screen) const;
    qint32 HelpAltContextID(qint32 screen) const;

private:
    QList<MenuOption> m_options;
    QString m_closing;
};

// The text without its trailing blanks.
QString RTrim(const QString& text);

} // namespace ql
