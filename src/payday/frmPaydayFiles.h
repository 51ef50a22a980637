#pragma once
// "Payday Files": for a payment date, the payday filing file for Inland Revenue, the Employee Details
// file of new and departing employees, and the bank's direct-credit file; with the settings and the
// employees' bank accounts a button away. Files that may not be written say why and who to fix.
#include "PaydayFiles.h"
#include "data/Database.h"
#include <QDialog>
#include <functional>

class QComboBox;
class QDateEdit;
class QPushButton;

namespace ql {

class frmPaydayFiles : public QDialog {
public:
    frmPaydayFiles(Database& wage, QWidget* parent = nullptr);
    QDateEdit* dtpPaymentDate;
    QDateEdit* dtpSince;
    QComboBox* cboBankFormat;
    QPushButton* cmdPaydayFile;
    QPushButton* cmdDetailsFile;
    QPushButton* cmdBankFile;
    QPushButton* cmdSettings;
    QPushButton* cmdAccounts;

    // Asks where to save (a save dialog unless a test replaces it); the empty text cancels.
    std::function<QString(const QString& caption, const QString& suggested)> choosePath;

    // Each makes its file and saves it; true when a file was written.
    bool makePaydayFile();
    bool makeDetailsFile();
    bool makeBankFile();

private:
    // The path written, or the empty text when cancelled or failed (the failure told).
    QString save(const QString& caption, const QString& suggested, const QString& text, const QString& what,
                 const FileCheck& check);
    void tell(const QString& caption, const QString& text);
    void selectFormatOfPayingAccount();
    Database& m_wage;
};

void ShowPaydayFiles(Database& wage, QWidget* owner);

} // namespace ql
