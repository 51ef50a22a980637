#pragma once
// "Memo": the free text kept with a pay (Wages.Details). Save writes the text, or Null for an empty
// box; Cancel writes nothing.
#include <QDialog>

class QPlainTextEdit;

namespace ql {

class PayList;

class frmMemo : public QDialog {
    Q_OBJECT
public:
    // pays: the pay list standing on the pay whose memo this is.
    explicit frmMemo(PayList& pays, QWidget* parent = nullptr);
    QPlainTextEdit* txtMemo = nullptr;

    void cmdSave_Click();
    void cmdCancel_Click();

protected:
    void showEvent(QShowEvent* event) override;

private:
    PayList& m_pays;
};

} // namespace ql
