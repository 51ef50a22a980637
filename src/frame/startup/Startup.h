#pragma once
// The process from its start to the shown main screen, and the shutdown.
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace ql {

class PayView;

// The main screen as start-up and shutdown see it: the desktop's frmWage, or a headless stand-in.
class MainForm {
public:
    virtual ~MainForm() = default;
    virtual PayView& view() = 0;
    virtual void setTitle(const QString& title) = 0;
    virtual QString title() const = 0;
    virtual void show() = 0; // shown without modality; the form's load runs here
    virtual void close() = 0; // the user closes the window; the unload follows
    // The address book's report: the AddressID of the person last edited there.
    virtual void GotMessage(qint32 wParam) = 0;
};
using MainFormFactory = std::function<std::unique_ptr<MainForm>()>;
void setMainFormFactory(MainFormFactory factory);
// The shown main screen, or nullptr.
MainForm* mainForm();

// The command line as one text: the arguments joined by single blanks. No arguments, or one empty
// argument, give the empty text.
QString commandLineText(const QStringList& arguments);

// The process entry: refuses an empty command line, else starts. Returns false when refused.
bool Main(const QString& commandLine);
void StartQuillary(const QString& title);

void OpenWageDatabase();
void CloseWageDatabase();

// The unload of the main screen: the shutdown steps, in their order. Failing steps are skipped.
void UnloadWageForm();
// Unloads every open form, in the order they were opened (cmdClose, Finish).
void UnloadAllForms();
// Forms other than the main screen register an unload here while they are open.
void registerOpenForm(void* key, std::function<void()> unload);
void unregisterOpenForm(void* key);

} // namespace ql
