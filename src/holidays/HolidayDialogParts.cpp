#include "HolidayDialogParts.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include "staff/EmployeeStore.h"
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QLineEdit>
#include <QPushButton>

namespace ql {

QDialogButtonBox* SaveCancelButtons(QDialog* dialog, const QString& saveName) {
    auto* buttons = new QDialogButtonBox(dialog);
    QPushButton* save = buttons->addButton(QStringLiteral("&Save"), QDialogButtonBox::AcceptRole);
    QPushButton* cancel = buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    save->setObjectName(QStringLiteral("cmdSave"));
    save->setAccessibleName(saveName);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

QString EmployeeCaption(Database& wage, qint32 employeeID) {
    try {
        Database farm;
        farm.open(DataFileName());
        const EmployeeDetails d = LoadEmployee(wage, farm, employeeID);
        const QString name = d.LastName.isEmpty() ? d.FirstName : d.LastName + QStringLiteral(", ") + d.FirstName;
        if (!name.trimmed().isEmpty()) return name;
    } catch (const VbError&) {
        // no address: the employee is named by number
    }
    return QStringLiteral("Employee %1").arg(employeeID);
}

bool ExecAndReturn(QDialog& dialog, QWidget* owner) {
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (owner && owner->window()->isVisible()) owner->window()->activateWindow();
    return accepted;
}

void MakeReadOnlyList(QTableWidget* table) {
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
}

QPushButton* NamedButton(QWidget* parent, const QString& caption, const QString& name, const QString& accessible) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAccessibleName(accessible);
    return b;
}

bool EmployeeOnPayroll(Database& wage, qint32 employeeID) {
    return employeeID > 0 &&
           wage.scalar(QStringLiteral("SELECT count(*) FROM Employees WHERE EmployeeID = %1").arg(employeeID)).toInt() > 0;
}

bool PayOnPayroll(Database& wage, qint32 wageID, qint32 employeeID) {
    if (wageID <= 0) return false;
    QString sql = QStringLiteral("SELECT count(*) FROM Wages WHERE WageID = %1").arg(wageID);
    if (employeeID > 0) sql += QStringLiteral(" AND EmployeeID = %1").arg(employeeID);
    return wage.scalar(sql).toInt() > 0;
}

QString NoPayText() {
    return QStringLiteral("There is no pay to show: choose an employee with a pay, or add a pay first.");
}

void NameInnerEdit(QWidget* box) {
    for (QLineEdit* inner : box->findChildren<QLineEdit*>())
        inner->setAccessibleName(box->accessibleName());
}

} // namespace ql
