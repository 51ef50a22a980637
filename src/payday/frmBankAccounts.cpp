#include "frmBankAccounts.h"
#include "BankAccount.h"
#include "PaydayEmployees.h"
#include "PaydayTables.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace ql {

namespace {
constexpr int kIdRole = Qt::UserRole + 1;
constexpr int kOldRole = Qt::UserRole + 2;
} // namespace

frmBankAccounts::frmBankAccounts(Database& wage, QWidget* parent) : QDialog(parent), m_wage(wage) {
    setWindowTitle(QStringLiteral("Employee Bank Accounts"));
    setModal(true);
    tgrdAccounts = new QTableWidget(this);
    tgrdAccounts->setObjectName(QStringLiteral("tgrdAccounts"));
    tgrdAccounts->setAccessibleName(QStringLiteral("Employees and their bank accounts"));
    tgrdAccounts->setColumnCount(2);
    tgrdAccounts->setHorizontalHeaderLabels({QStringLiteral("Employee"), QStringLiteral("Bank account")});
    tgrdAccounts->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    tgrdAccounts->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    tgrdAccounts->verticalHeader()->hide();
    tgrdAccounts->setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_filling = true;
    const QList<Payee> payees = CurrentPayees(wage);
    tgrdAccounts->setRowCount(static_cast<int>(payees.size()));
    for (int r = 0; r < payees.size(); ++r) {
        auto* name = new QTableWidgetItem(payees.at(r).name);
        name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        auto* account = new QTableWidgetItem(payees.at(r).account);
        account->setData(kIdRole, payees.at(r).employeeID);
        account->setData(kOldRole, payees.at(r).account);
        tgrdAccounts->setItem(r, 0, name);
        tgrdAccounts->setItem(r, 1, account);
    }
    m_filling = false;
    connect(tgrdAccounts, &QTableWidget::itemChanged, this, &frmBankAccounts::itemChanged);
    if (tgrdAccounts->rowCount() > 0) tgrdAccounts->setCurrentCell(0, 1);

    auto* label = new QLabel(QStringLiteral("&Type each account as bank-branch-account-suffix, for example "
                                            "01-0902-0068389-00."),
                             this);
    label->setBuddy(tgrdAccounts);
    label->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("&Close"));
    buttons->button(QDialogButtonBox::Close)->setAccessibleName(QStringLiteral("Close"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(tgrdAccounts);
    layout->addWidget(buttons);
    resize(520, 320);
}

bool frmBankAccounts::commitRow(int row, const QString& typed) {
    QTableWidgetItem* item = tgrdAccounts->item(row, 1);
    if (!item) return false;
    const qint32 employeeID = item->data(kIdRole).toInt();
    try {
        SetEmployeeBankAccount(m_wage, employeeID, typed);
    } catch (const VbError& e) {
        ShowMessage(e.description(), msg::OKOnly, Firm(), QStringLiteral("Please Check"),
                    tgrdAccounts->item(row, 0)->text(), msg::Warning, true);
        m_filling = true;
        item->setText(item->data(kOldRole).toString());
        m_filling = false;
        return false;
    }
    m_filling = true;
    item->setText(typed.trimmed());
    item->setData(kOldRole, typed.trimmed());
    m_filling = false;
    return true;
}

void frmBankAccounts::itemChanged(QTableWidgetItem* item) {
    if (m_filling || item->column() != 1) return;
    commitRow(item->row(), item->text());
}

void ShowEmployeeBankAccounts(Database& wage, QWidget* owner) {
    frmBankAccounts d(wage, owner);
    d.exec();
}

} // namespace ql
