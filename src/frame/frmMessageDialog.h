#pragma once
// The message box: caption as window title, a bold heading, an optional sub-heading, the body, the
// kind as an icon and the buttons of the set. Modal; the answer is the code of the button pressed.
#include <QDialog>

class QLabel;

namespace ql {

class frmMessageDialog : public QDialog {
    Q_OBJECT
public:
    frmMessageDialog(const QString& message, qint32 buttons, const QString& caption, const QString& heading,
                     const QString& subHeading, qint32 kind, QWidget* parent = nullptr);
    qint16 answer() const { return m_answer; }

    // A label text with "&" as access-key marks, as a plain text: "&&" shows one "&", a single "&"
    // marks the next character and is not shown.
    static QString shownAccessKeyText(const QString& text);

private:
    qint16 m_answer;
};

// Runs the dialog and returns the answer. Each button has its word's first letter as access key;
// closing the window or Escape answers Cancel where the set has it, else the set's last button.
qint16 runMessageDialog(const QString& message, qint32 buttons, const QString& caption,
                        const QString& heading, const QString& subHeading, qint32 kind,
                        QWidget* parent = nullptr);

} // namespace ql
