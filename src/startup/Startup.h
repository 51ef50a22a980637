#pragma once
// The process from its start to the shown main screen, and the shutdown.
#include "frame/OpenForms.h"
#include "ledger/MainForm.h"
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace ql {

using MainFormFactory = std::function<std::unique_ptr<MainForm>()>;
void setMainFormFactory(MainFormFactory factory);
// The shown main screen, or nullptr.
MainForm* mainForm();

// The command line as one text: the arguments joined by single blanks. No arguments, or one empty
// argument, give the empty text.
QString commandLineText(const QStringList& arguments);

// The desktop's set-up assistant of an empty payroll: shown instead of the address book when
// installed; it returns true when the payroll then has somebody to pay.
using SetupAssistant = std::function<bool()>;
void setSetupAssistant(SetupAssistant assistant);

// The process entry: refuses an empty command line, else starts. Returns false when refused.
bool Main(const QString& commandLine);
void StartQuillary(const QString& title);

void OpenWageDatabase();
void CloseWageDatabase();

// The unload of the main screen: the shutdown steps, in their order. Failing steps are skipped.
void UnloadWageForm();

} // namespace ql
