#include "frmSetupAssistant.h"
#include "EmployeeStore.h"
#include "EmployerDetails.h"
#include "frmEmployee.h"
#include "frmEmployerDetails.h"
#include "data/Database.h"
#include "frame/SettingGetters.h"
#include "payday/PaydayTables.h"
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace ql {

namespace {

const char* const kSteps[] = {
    "Step 1 of 3: your farm or business, and who looks after the payroll.",
    "Step 2 of 3: the bank account the pays leave from, how often PAYE is filed, and the cashbook accounts "
    "(Tax Information).",
    "Step 3 of 3: your first employee. More can be added later under Tools, Employees.",
};

} // namespace

int frmSetupAssistant::FirstPageToDo(Database& wage) {
    Database farm;
    farm.open(DataFileName());
    if (!EmployerIsSetUp(wage, farm)) return 0;
    if (LoadPaydaySettings(wage).payingAccount.isEmpty()) return 1;
    if (wage.scalar(QStringLiteral("SELECT count(*) FROM Employees")).toInt() == 0) return 2;
    return 3;
}

frmSetupAssistant::frmSetupAssistant(Database& wage, QWidget* parent) : QDialog(parent), m_wage(wage) {
    setObjectName(QStringLiteral("frmSetupAssistant"));
    setWindowTitle(QStringLiteral("Setting Up Your Payroll"));
    auto* welcome = new QLabel(QStringLiteral("There are no employees in the payroll yet. These three steps set up "
                                              "the employer and the first employee; Later keeps what is saved and "
                                              "comes back here next time."),
                               this);
    welcome->setWordWrap(true);
    welcome->setAccessibleName(QStringLiteral("Welcome"));
    lblStep = new QLabel(this);
    lblStep->setObjectName(QStringLiteral("lblStep"));
    lblStep->setAccessibleName(QStringLiteral("Step"));
    lblStep->setWordWrap(true);
    QFont bold = lblStep->font();
    bold.setBold(true);
    lblStep->setFont(bold);

    m_pages = new QStackedWidget(this);
    m_farm = new EmployerPanel(wage, 1, m_pages);
    m_bank = new EmployerPanel(wage, 2, m_pages);
    m_employee = new EmployeePanel(wage, m_pages);
    EmployeeDetails blank;
    blank.Interval = QStringLiteral("weekly");
    blank.TaxCode = QStringLiteral("M");
    m_employee->load(blank);
    m_pages->addWidget(m_farm);
    m_pages->addWidget(m_bank);
    m_pages->addWidget(m_employee);

    cmdBack = new QPushButton(QStringLiteral("&Back"), this);
    cmdNext = new QPushButton(QStringLiteral("&Next"), this);
    cmdLater = new QPushButton(QStringLiteral("&Later"), this);
    cmdBack->setObjectName(QStringLiteral("cmdBack"));
    cmdNext->setObjectName(QStringLiteral("cmdNext"));
    cmdLater->setObjectName(QStringLiteral("cmdLater"));
    cmdBack->setAccessibleName(QStringLiteral("Back"));
    cmdNext->setAccessibleName(QStringLiteral("Next"));
    cmdLater->setAccessibleName(QStringLiteral("Later"));
    for (QPushButton* b : {cmdBack, cmdLater}) b->setAutoDefault(false);
    cmdNext->setDefault(true);
    connect(cmdBack, &QPushButton::clicked, this, &frmSetupAssistant::back);
    connect(cmdNext, &QPushButton::clicked, this, &frmSetupAssistant::next);
    connect(cmdLater, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdLater);
    buttons->addStretch();
    buttons->addWidget(cmdBack);
    buttons->addWidget(cmdNext);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(welcome);
    layout->addWidget(lblStep);
    layout->addWidget(m_pages);
    layout->addLayout(buttons);
    showPage(qMin(FirstPageToDo(wage), 2));
}

int frmSetupAssistant::page() const {
    return m_pages->currentIndex();
}

void frmSetupAssistant::showPage(int page) {
    m_pages->setCurrentIndex(page);
    lblStep->setText(QString::fromLatin1(kSteps[page]));
    cmdBack->setEnabled(page > 0);
    cmdNext->setText(page == 2 ? QStringLiteral("&Finish") : QStringLiteral("&Next"));
    cmdNext->setAccessibleName(page == 2 ? QStringLiteral("Finish") : QStringLiteral("Next"));
    if (page == 0) m_farm->txtName->setFocus();
    if (page == 1) m_bank->txtAccount->setFocus();
    if (page == 2 && m_employee->field(QStringLiteral("first"))) m_employee->field(QStringLiteral("first"))->setFocus();
}

void frmSetupAssistant::next() {
    switch (page()) {
    case 0:
        if (!m_farm->save()) return;
        m_bank->load();
        showPage(1);
        break;
    case 1:
        if (!m_bank->save()) return;
        m_farm->load();
        showPage(2);
        break;
    default:
        if (m_employee->save()) accept();
    }
}

void frmSetupAssistant::back() {
    if (page() > 0) showPage(page() - 1);
}

bool RunSetupAssistant(Database& wage, QWidget* owner) {
    frmSetupAssistant d(wage, owner);
    d.resize(760, 560);
    d.exec();
    return wage.scalar(QStringLiteral("SELECT count(*) FROM Employees")).toInt() > 0;
}

} // namespace ql
