#pragma once
// The input box: a prompt and one line of text. Modal; the text on OK, the empty text on cancel.
// Masked mode hides what is typed; numeric mode takes digits, sign and the locale's decimal mark.
#include <QDialog>

class QLineEdit;

namespace ql {

class frmInputDialog : public QDialog {
    Q_OBJECT
public:
    frmInputDialog(const QString& prompt, const QString& title, const QString& defaultText, bool masked,
                   bool numeric, QWidget* parent = nullptr);
    QString text() const;

private:
    QLineEdit* m_edit;
};

QString runInputDialog(const QString& prompt, const QString& title, const QString& defaultText, bool masked,
                       bool numeric, QWidget* parent = nullptr);

} // namespace ql
