#pragma once
// "Employee Bank Accounts": the account each current employee's take-home pay goes to. An account is
// checked as soon as it is typed; a failing one is refused with the reason and the old one stays.
#include "data/Database.h"
#include <QDialog>

class QTableWidget;
class QTableWidgetItem;

namespace ql {

class frmBankAccounts : public QDialog {
public:
    frmBankAccounts(Database& wage, QWidget* parent = nullptr);
    QTableWidget* tgrdAccounts;
    // Stores the account typed in row; false (and the old text back) when it fails its check.
    bool commitRow(int row, const QString& typed);

private:
    void itemChanged(QTableWidgetItem* item);
    Database& m_wage;
    bool m_filling = false;
};

void ShowEmployeeBankAccounts(Database& wage, QWidget* owner);

} // namespace ql
