#include "frmEmployees.h"
#include "EmployeeCsv.h"
#include "EmployeeStore.h"
#include "frmEmployee.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/VbError.h"
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace ql {

namespace {

QPushButton* button(QWidget* parent, const char* caption, const char* name, const char* accessible) {
    auto* b = new QPushButton(QString::fromLatin1(caption), parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setAccessibleName(QString::fromLatin1(accessible));
    b->setAutoDefault(false);
    return b;
}

} // namespace

frmEmployees::frmEmployees(Database& wage, QWidget* parent) : QDialog(parent), m_wage(wage) {
    setObjectName(QStringLiteral("frmEmployees"));
    setWindowTitle(QStringLiteral("Employees"));
    setModal(true);
    grdEmployees = new QTableWidget(0, 6, this);
    grdEmployees->setObjectName(QStringLiteral("grdEmployees"));
    grdEmployees->setAccessibleName(QStringLiteral("Employees"));
    grdEmployees->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Occupation"),
                                             QStringLiteral("Pay interval"), QStringLiteral("Tax code"),
                                             QStringLiteral("Started"), QStringLiteral("Finished")});
    grdEmployees->setSelectionBehavior(QAbstractItemView::SelectRows);
    grdEmployees->setSelectionMode(QAbstractItemView::SingleSelection);
    grdEmployees->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grdEmployees->verticalHeader()->hide();
    grdEmployees->horizontalHeader()->setStretchLastSection(true);
    connect(grdEmployees, &QTableWidget::cellActivated, this, [this] { editSelected(); });

    QPushButton* cmdAdd = button(this, "&Add...", "cmdAdd", "Add employee");
    QPushButton* cmdEdit = button(this, "&Edit...", "cmdEdit", "Edit employee");
    QPushButton* cmdImport = button(this, "&Import...", "cmdImport", "Import employees");
    QPushButton* cmdExport = button(this, "E&xport...", "cmdExport", "Export employees");
    QPushButton* cmdClose = button(this, "&Close", "cmdClose", "Close");
    connect(cmdAdd, &QPushButton::clicked, this, &frmEmployees::add);
    connect(cmdEdit, &QPushButton::clicked, this, &frmEmployees::editSelected);
    connect(cmdImport, &QPushButton::clicked, this, &frmEmployees::importFile);
    connect(cmdExport, &QPushButton::clicked, this, &frmEmployees::exportFile);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {cmdAdd, cmdEdit, cmdImport, cmdExport}) buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grdEmployees);
    layout->addLayout(buttons);
    resize(720, 380);
    refill();
}

void frmEmployees::refill(qint32 select) {
    Database farm;
    farm.open(DataFileName());
    const QList<EmployeeDetails> list = LoadEmployees(m_wage, farm);
    grdEmployees->setRowCount(static_cast<int>(list.size()));
    for (int r = 0; r < list.size(); ++r) {
        const EmployeeDetails& d = list.at(r);
        const QStringList cells{d.LastName + QStringLiteral(", ") + d.FirstName, d.Occupation, d.Interval, d.TaxCode,
                                d.DateHired.toString(QStringLiteral("d/MM/yyyy")),
                                d.DateFinished.toString(QStringLiteral("d/MM/yyyy"))};
        for (int c = 0; c < cells.size(); ++c) {
            auto* item = new QTableWidgetItem(cells.at(c));
            item->setData(Qt::UserRole, d.EmployeeID);
            grdEmployees->setItem(r, c, item);
        }
        if (d.EmployeeID == select || (select == 0 && r == 0)) grdEmployees->selectRow(r);
    }
    grdEmployees->resizeColumnsToContents();
    // Sizing to the contents takes the last column out of its stretch: give it back.
    grdEmployees->horizontalHeader()->setStretchLastSection(false);
    grdEmployees->horizontalHeader()->setStretchLastSection(true);
}

void frmEmployees::editSelected() {
    const int row = grdEmployees->currentRow();
    if (row < 0) return;
    const qint32 id = grdEmployees->item(row, 0)->data(Qt::UserRole).toInt();
    if (EditEmployee(m_wage, id, this)) {
        m_changed = true;
        refill(id);
    }
}

void frmEmployees::add() {
    if (const qint32 id = EditEmployee(m_wage, 0, this)) {
        m_changed = true;
        refill(id);
    }
}

void frmEmployees::importFile() {
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Import Employees"), QString(),
                                                      QStringLiteral("CSV files (*.csv);;All files (*)"));
    if (path.isEmpty()) return;
    try {
        Database farm;
        farm.open(DataFileName());
        const QList<qint32> ids = ImportEmployees(m_wage, farm, path);
        m_changed = true;
        refill(ids.value(0));
        ShowMessage(QStringLiteral("%1 employees imported.").arg(ids.size()), msg::OKOnly, Firm(),
                    QStringLiteral("Import Employees"), QString(), msg::Information, true);
    } catch (const VbError& e) {
        ShowMessage(QStringLiteral("Nothing was imported:\r\n\r\n") + e.description(), msg::OKOnly, Firm(),
                    QStringLiteral("Import Employees"), QString(), msg::Warning, true);
    }
}

void frmEmployees::exportFile() {
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Export Employees"),
                                                      QStringLiteral("employees.csv"),
                                                      QStringLiteral("CSV files (*.csv)"));
    if (path.isEmpty()) return;
    try {
        Database farm;
        farm.open(DataFileName());
        const int n = ExportEmployees(m_wage, farm, path);
        ShowMessage(QStringLiteral("%1 employees written to %2.").arg(n).arg(path), msg::OKOnly, Firm(),
                    QStringLiteral("Export Employees"), QString(), msg::Information, true);
    } catch (const VbError& e) {
        ShowMessage(e.description(), msg::OKOnly, Firm(), QStringLiteral("Export Employees"), QString(), msg::Warning,
                    true);
    }
}

bool ShowEmployees(Database& wage, QWidget* owner, qint32 shown) {
    frmEmployees d(wage, owner);
    if (shown > 0) d.refill(shown);
    d.exec();
    return d.changed();
}

} // namespace ql
