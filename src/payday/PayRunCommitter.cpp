#include "PayRunCommitter.h"
#include "cashbook/CommitModel.h"
#include "frame/Dialogs.h"
#include "payengine/PayView.h"

namespace ql {

namespace {

// Keeps the last message the commit told, passing every dialog on to the program's own.
class Listener : public Dialogs {
public:
    explicit Listener(Dialogs& inner) : m_inner(inner) {}
    qint16 messageBox(const QString& message, qint32 buttons, const QString& caption, const QString& heading,
                      const QString& subHeading, qint32 kind, bool flag) override {
        last = message;
        return m_inner.messageBox(message, buttons, caption, heading, subHeading, kind, flag);
    }
    QString inputBox(const QString& prompt, const QString& title, const QString& defaultText, bool masked,
                     bool numeric) override {
        return m_inner.inputBox(prompt, title, defaultText, masked, numeric);
    }
    void errorDialog(const QString& description, long number, const QString& location, const QString& title,
                     const QString& programName, qint32 level, bool flag) override {
        last = description;
        m_inner.errorDialog(description, number, location, title, programName, level, flag);
    }
    QString last;

private:
    Dialogs& m_inner;
};

} // namespace

PayCommitter CommitAsTheDialogDoes(bool print) {
    return [print](PayView& screen, const PayRunItem&) -> QString {
        Dialogs& outer = dialogs();
        Listener listener(outer);
        setDialogs(&listener);
        bool committed = false;
        bool foundCommitted = false;
        try {
            CommitModel commit(screen);
            commit.remembersChoices = false;
            commit.Form_Load();
            commit.setPrint(print);
            foundCommitted = commit.reprint;
            committed = !commit.reprint && commit.cmd_Commit_Click(0);
        } catch (...) {
            setDialogs(&outer);
            throw;
        }
        setDialogs(&outer);
        if (committed) return QString();
        if (foundCommitted) return QStringLiteral("The pay was committed meanwhile by another user or program.");
        return listener.last.isEmpty() ? QStringLiteral("The pay was not committed.") : listener.last;
    };
}

} // namespace ql
