#pragma once
// "Add or Edit": what a date picked on the wage screen's calendar means. OK clears the three flags of
// AddEditChoice and sets the chosen one; Cancel leaves them as they were.
#include <QDialog>

class QRadioButton;

namespace ql {

class frmAddEdit : public QDialog {
    Q_OBJECT
public:
    explicit frmAddEdit(QWidget* parent = nullptr);
    QRadioButton* optAdd = nullptr;
    QRadioButton* optAddOneOFf = nullptr;
    QRadioButton* optEdit = nullptr;

    void cmdOKAY_Click();
    void cmdCancel_Click();
};

} // namespace ql
