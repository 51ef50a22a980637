#pragma once
// Dialogs without a screen, for tests and the command line. Every call is recorded. The message box
// answers from its queue, else with the default button of the set (the first one, as a desktop
// program's Enter key would press it: OK for OK/OK-Cancel, Yes for Yes/No). The input box answers
// from its queue, else with its default text, as if the user had pressed OK at once.
// Header only, so that it builds into the engine beside the screens' dialogs.
#include "Dialogs.h"
#include <QList>
#include <QString>
#include <deque>
#include <functional>

namespace ql {

struct DialogCall {
    enum Kind { Message, Input, Error } kind = Message;
    // Message box: message, caption, heading, subHeading; input box: message = prompt,
    // caption = title, text = default; error dialog: message = description, caption = title,
    // heading = location, text = program name.
    QString message;
    QString caption;
    QString heading;
    QString subHeading;
    QString text;
    qint32 buttons = 0;     // the button set of a message box
    qint32 kindOrLevel = 0; // message kind, or the error level
    bool flag = false;
    bool masked = false;
    bool numeric = false;
    QString answer;  // what the dialog returned, as text ("6", the input)
    long number = 0; // error number of an error dialog
};

class ScriptedDialogs : public Dialogs {
public:
    QList<DialogCall> calls;

    void queueAnswer(qint16 answer) { m_answers.push_back(answer); }
    void queueInput(const QString& text) { m_inputs.push_back(text); }
    // Each call is also told here, as one line of text (the command line prints it).
    void setEcho(std::function<void(const QString&)> echo) { m_echo = std::move(echo); }

    qint16 messageBox(const QString& message, qint32 buttons, const QString& caption, const QString& heading,
                      const QString& subHeading, qint32 kind, bool flag) override {
        qint16 answer = defaultAnswer(buttons);
        if (!m_answers.empty()) {
            answer = m_answers.front();
            m_answers.pop_front();
        }
        DialogCall c;
        c.kind = DialogCall::Message;
        c.message = message;
        c.caption = caption;
        c.heading = heading;
        c.subHeading = subHeading;
        c.buttons = buttons;
        c.kindOrLevel = kind;
        c.flag = flag;
        c.answer = QString::number(answer);
        calls.append(c);
        tell(heading + (subHeading.isEmpty() ? QString() : QStringLiteral(" - ") + subHeading) +
             QStringLiteral(": ") + message + QStringLiteral(" [") + answerName(answer) + QLatin1Char(']'));
        return answer;
    }

    QString inputBox(const QString& prompt, const QString& title, const QString& defaultText, bool masked,
                     bool numeric) override {
        QString answer = defaultText;
        if (!m_inputs.empty()) {
            answer = m_inputs.front();
            m_inputs.pop_front();
        }
        DialogCall c;
        c.kind = DialogCall::Input;
        c.message = prompt;
        c.caption = title;
        c.text = defaultText;
        c.masked = masked;
        c.numeric = numeric;
        c.answer = answer;
        calls.append(c);
        tell(prompt + QStringLiteral(" [") + answer + QLatin1Char(']'));
        return answer;
    }

    void errorDialog(const QString& description, long number, const QString& location, const QString& title,
                     const QString& programName, qint32 level, bool flag) override {
        DialogCall c;
        c.kind = DialogCall::Error;
        c.message = description;
        c.number = number;
        c.heading = location;
        c.caption = title;
        c.text = programName;
        c.kindOrLevel = level;
        c.flag = flag;
        calls.append(c);
        tell(QStringLiteral("Error ") + QString::number(number) + QStringLiteral(" in ") +
             location.trimmed() + QStringLiteral(": ") + description);
    }

private:
    void tell(const QString& line) {
        if (m_echo) m_echo(line);
    }
    std::deque<qint16> m_answers;
    std::deque<QString> m_inputs;
    std::function<void(const QString&)> m_echo;
};

} // namespace ql
