#pragma once
// The three modal dialogs every message goes through. Desktop screens install the Qt ones; tests and
// the command line use ScriptedDialogs.
#include <QList>
#include <QString>

namespace ql {

// Button sets and answers of the message box.
namespace msg {
constexpr qint32 OKOnly = 0;
constexpr qint32 OKCancel = 1;
constexpr qint32 AbortRetryIgnore = 2;
constexpr qint32 YesNoCancel = 3;
constexpr qint32 YesNo = 4;
constexpr qint32 RetryCancel = 5;
constexpr qint32 DefaultButton2 = 256;
constexpr qint32 DefaultButton3 = 512;

constexpr qint16 OK = 1;
constexpr qint16 Cancel = 2;
constexpr qint16 Abort = 3;
constexpr qint16 Retry = 4;
constexpr qint16 Ignore = 5;
constexpr qint16 Yes = 6;
constexpr qint16 No = 7;

// Message kinds, shown as the dialog's icon.
constexpr qint32 Stop = 2;
constexpr qint32 Warning = 3;
constexpr qint32 Information = 6;
constexpr qint32 Question = 9;
} // namespace msg

// The answers of a button set in the order the buttons stand.
inline QList<qint16> buttonAnswers(qint32 buttons) {
    switch (buttons & 0xF) {
    case msg::OKCancel:
        return {msg::OK, msg::Cancel};
    case msg::AbortRetryIgnore:
        return {msg::Abort, msg::Retry, msg::Ignore};
    case msg::YesNoCancel:
        return {msg::Yes, msg::No, msg::Cancel};
    case msg::YesNo:
        return {msg::Yes, msg::No};
    case msg::RetryCancel:
        return {msg::Retry, msg::Cancel};
    default:
        return {msg::OK};
    }
}

// The answer of the default button: the first button unless a default-button flag names another.
inline qint16 defaultAnswer(qint32 buttons) {
    const QList<qint16> answers = buttonAnswers(buttons);
    const qsizetype index = (buttons >> 8) & 0xF;
    return answers.at(index < answers.size() ? index : 0);
}

inline QString answerName(qint16 answer) {
    switch (answer) {
    case msg::OK:
        return QStringLiteral("OK");
    case msg::Cancel:
        return QStringLiteral("Cancel");
    case msg::Abort:
        return QStringLiteral("Abort");
    case msg::Retry:
        return QStringLiteral("Retry");
    case msg::Ignore:
        return QStringLiteral("Ignore");
    case msg::Yes:
        return QStringLiteral("Yes");
    case msg::No:
        return QStringLiteral("No");
    default:
        return QString::number(answer);
    }
}

// The caption of an answer's button: the plain word with its first letter as access key ("&Yes"). The
// seven words begin with seven different letters, so every set's keys differ.
inline QString answerButtonText(qint16 answer) {
    return QLatin1Char('&') + answerName(answer);
}

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Modal; returns the answer of the button pressed.
    virtual qint16 messageBox(const QString& message, qint32 buttons, const QString& caption,
                              const QString& heading, const QString& subHeading, qint32 kind, bool flag) = 0;
    // Modal; returns the text, or the empty text on cancel.
    virtual QString inputBox(const QString& prompt, const QString& title, const QString& defaultText,
                             bool masked, bool numeric) = 0;
    // Modal.
    virtual void errorDialog(const QString& description, long number, const QString& location,
                             const QString& title, const QString& programName, qint32 level, bool flag) = 0;
};

// The dialogs of this process; a scripted set until a program installs its own. The caller keeps
// ownership; nullptr restores the built-in scripted set.
Dialogs& dialogs();
void setDialogs(Dialogs* d);

} // namespace ql
