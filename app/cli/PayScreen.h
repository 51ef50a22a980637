#pragma once
// The wage screen opened on one pay, for the commands that show or edit a pay as a user does.
#include "data/Database.h"
#include "frame/ScriptedDialogs.h"
#include "ledger/WageScreen.h"
#include "payengine/AppContext.h"
#include <QString>
#include <QTextStream>

namespace cli {

// The program's state for one command: the context, the dialogs that answer every prompt with its
// default and tell it on standard error, and the payroll database.
class Session {
public:
    Session();
    ~Session();
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

// The program's state for one command, and the wage screen standing on the pay wageID of its
// employee. Dialogs answer with their default (Yes, OK) unless answers are queued, and tell each call
// on standard error.
class PayScreen {
public:
    explicit PayScreen(qint32 wageID);
    ~PayScreen();
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
    ql::WageScreen screen;
    qint32 wageID = 0;
    // The text of the last message box since mark, with plain line breaks; empty when none came.
    QString lastMessageSince(int mark) const;
};

// The summary labels as the screen shows them, one "name: caption" a line.
QString labelsText(const ql::PayView& view);
// The PaySlip rows, in order, as JSON arrays of their five texts.
QString paySlipJson(ql::Database& db, int indent);
// The labels (as JSON members) and the PaySlip rows of the pay, the slip rebuilt for it.
QString payScreenJson(qint32 wageID);

// The JSON object of a stored pay (a text ending in "\n}") with the labels and PaySlip rows added.
QString withScreenView(const QString& payJson, qint32 wageID);
// What `pay WAGE_ID` prints.
QString payText(qint32 wageID);

} // namespace cli
