#pragma once
// Answers the wage screen's question for the date of a first pay with a date fixed beforehand, so that
// a pay can be added for an employee without pays and without a person at the screen; every other
// dialog goes on to the program's own, its text kept for the caller's message.
#include "Dialogs.h"

namespace ql {

class FirstPayAnswer : public Dialogs {
public:
    FirstPayAnswer(Dialogs& inner, QString date) : m_inner(inner), m_date(std::move(date)) {}
    qint16 messageBox(const QString& message, qint32 buttons, const QString& caption, const QString& heading,
                      const QString& subHeading, qint32 kind, bool flag) override {
        lastMessage = message;
        return m_inner.messageBox(message, buttons, caption, heading, subHeading, kind, flag);
    }
    QString inputBox(const QString&, const QString&, const QString&, bool, bool) override {
        ++asked;
        return m_date;
    }
    void errorDialog(const QString& description, long number, const QString& location, const QString& title,
                     const QString& programName, qint32 level, bool flag) override {
        lastMessage = description;
        m_inner.errorDialog(description, number, location, title, programName, level, flag);
    }
    int asked = 0;
    QString lastMessage;

private:
    Dialogs& m_inner;
    QString m_date;
};

} // namespace ql
