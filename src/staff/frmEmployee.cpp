#include "frmEmployee.h"
#include "EmployeeFields.h"
#include "EmployeeStore.h"
#include "StaffLookups.h"
#include "AccessKeys.h"
#include "TaxItemsWidget.h"
#include "data/Database.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "holidays/FinalPayOnFinish.h"
#include "holidays/HolidaySetupDialog.h"
#include "runtime/VbError.h"
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace ql {

namespace {

QComboBox* combo(QWidget* parent, const QStringList& items, bool editable) {
    auto* c = new QComboBox(parent);
    c->addItems(items);
    c->setEditable(editable);
    return c;
}

const char* hint(const QString& option) {
    if (option == QLatin1String("start") || option == QLatin1String("birth") || option == QLatin1String("finish") ||
        option == QLatin1String("kiwisaver-start"))
        return "1/04/2026";
    if (option == QLatin1String("deduction")) return "Board=120; Union Fees=1.5%";
    if (option == QLatin1String("account")) return "01-0902-0068389-00";
    if (option == QLatin1String("ird")) return "123-456-789";
    if (option == QLatin1String("stc-rate")) return "per cent, as on the certificate";
    return "";
}

} // namespace

EmployeePanel::EmployeePanel(Database& wage, QWidget* parent) : QWidget(parent), m_wage(wage) {
    setObjectName(QStringLiteral("EmployeePanel"));
    auto* grid = new QGridLayout;
    // Save and Cancel, and the set-up assistant's Back, Next, Later and Finish, keep their own keys.
    QString taken = QStringLiteral("scbnlf");
    int row = 0;
    const QList<EmployeeField>& fields = EmployeeFields();
    const int half = static_cast<int>(fields.size() + 1) / 2;
    for (int i = 0; i < fields.size(); ++i) {
        const EmployeeField& f = fields.at(i);
        QWidget* w = nullptr;
        if (f.option == QLatin1String("tax-code")) {
            auto* c = combo(this, KnownTaxCodes(wage), true);
            // "S" is a code of its own: no completion to "SB" behind the user's back.
            c->setCompleter(nullptr);
            w = c;
        } else if (f.option == QLatin1String("interval")) {
            QStringList names;
            for (const PayIntervalChoice& c : PayIntervalChoices(wage)) names << c.option;
            w = combo(this, names, false);
        } else if (f.option == QLatin1String("occupation")) {
            QStringList names{QString()};
            for (const OccupationChoice& c : OccupationChoices(wage)) names << c.name;
            w = combo(this, names, true);
        } else if (f.option == QLatin1String("kiwisaver")) {
            w = combo(this,
                      {QStringLiteral("no"), QStringLiteral("opted-out"), QStringLiteral("3"), QStringLiteral("3.5"),
                       QStringLiteral("4"), QStringLiteral("6"), QStringLiteral("8"), QStringLiteral("10")},
                      false);
        } else {
            auto* e = new QLineEdit(this);
            e->setPlaceholderText(QString::fromLatin1(hint(f.option)));
            w = e;
        }
        w->setObjectName(QStringLiteral("txt_") + EmployeeColumnName(f.option));
        w->setAccessibleName(f.label);
        auto* label = new QLabel(WithAccessKey(f.label, taken), this);
        label->setBuddy(w);
        const int column = i < half ? 0 : 2;
        row = i < half ? i : i - half;
        grid->addWidget(label, row, column);
        grid->addWidget(w, row, column + 1);
        m_fields.insert(f.option, w);
    }
    // The tab order follows the columns: down the first, then down the second.
    for (int i = 1; i < fields.size(); ++i)
        setTabOrder(m_fields.value(fields.at(i - 1).option), m_fields.value(fields.at(i).option));
    // The special tax code's rate is offered only with that code (a disabled box is passed over by Tab).
    if (auto* code = qobject_cast<QComboBox*>(m_fields.value(QStringLiteral("tax-code")))) {
        QWidget* rate = m_fields.value(QStringLiteral("stc-rate"));
        if (rate) {
            auto follow = [rate](const QString& text) { rate->setEnabled(IsSpecialTaxCode(text)); };
            connect(code, &QComboBox::currentTextChanged, rate, follow);
            follow(code->currentText());
        }
    }
    // The tax items are a page of their own (Ctrl+Tab or the page's access key): the details take
    // nearly every key, and a hidden page's captions give theirs up, so the items have keys of their own.
    m_pages = new QTabWidget(this);
    m_pages->setObjectName(QStringLiteral("tabEmployee"));
    m_pages->setAccessibleName(QStringLiteral("Employee pages"));
    // Tab goes from field to field as before, never to the page titles.
    m_pages->tabBar()->setFocusPolicy(Qt::NoFocus);
    auto* details = new QWidget(m_pages);
    details->setLayout(grid);
    QString pageKeys = QStringLiteral("scbnlf");
    m_pages->addTab(details, WithAccessKey(QStringLiteral("Details"), taken).chopped(1));
    const QString taxTitle = WithAccessKey(QStringLiteral("Tax items"), taken).chopped(1);
    pageKeys += taken.right(2);
    m_taxItems = new TaxItemsWidget(pageKeys, m_pages);
    m_pages->addTab(m_taxItems, taxTitle);
    lblProblems = new QLabel(this);
    lblProblems->setObjectName(QStringLiteral("lblProblems"));
    lblProblems->setAccessibleName(QStringLiteral("Problems"));
    lblProblems->setWordWrap(true);
    lblProblems->setStyleSheet(QStringLiteral("color: #a00000"));
    lblProblems->hide();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    layout->addWidget(lblProblems);
}

void EmployeePanel::load(const EmployeeDetails& details) {
    m_details = details;
    for (const EmployeeField& f : EmployeeFields()) {
        const QString value = f.write(details);
        QWidget* w = m_fields.value(f.option);
        if (auto* c = qobject_cast<QComboBox*>(w)) {
            const int i = c->findText(value, Qt::MatchFixedString);
            if (i >= 0)
                c->setCurrentIndex(i);
            else if (c->isEditable())
                c->setEditText(value);
        } else if (auto* e = qobject_cast<QLineEdit*>(w)) {
            e->setText(value);
        }
    }
    m_taxItems->load(m_wage, details.EmployeeID);
    lblProblems->hide();
}

QString EmployeePanel::typed(const QString& option) const {
    QWidget* w = m_fields.value(option);
    if (auto* c = qobject_cast<QComboBox*>(w)) return c->currentText();
    if (auto* e = qobject_cast<QLineEdit*>(w)) return e->text();
    return QString();
}

void EmployeePanel::showProblems(const QString& text, const QString& firstOption) {
    lblProblems->setText(text);
    lblProblems->show();
    if (QWidget* box = m_taxItems->field(firstOption)) {
        m_pages->setCurrentWidget(m_taxItems);
        box->setFocus();
    } else if (QWidget* w = m_fields.value(firstOption)) {
        m_pages->setCurrentIndex(0);
        w->setFocus();
    }
}

bool EmployeePanel::save() {
    EmployeeDetails d = m_details;
    QList<QPair<QString, QString>> values;
    for (const EmployeeField& f : EmployeeFields()) {
        QWidget* w = m_fields.value(f.option);
        const QString t = w && !w->isEnabled() ? QString() : typed(f.option);
        if (f.repeatable) {
            values << qMakePair(f.option, QString());
            for (const QString& part : t.split(u';', Qt::SkipEmptyParts)) values << qMakePair(f.option, part.trimmed());
        } else if (f.option != QLatin1String("rate") && f.option != QLatin1String("salary")) {
            values << qMakePair(f.option, t);
        }
    }
    // The way of pay: the one filled in; both filled in is a problem the save names.
    const QString rate = typed(QStringLiteral("rate")).trimmed(), salary = typed(QStringLiteral("salary")).trimmed();
    d.PayRate = Currency();
    d.YearlyTotal = Currency();
    if (!rate.isEmpty()) values << qMakePair(QStringLiteral("rate"), rate);
    if (!salary.isEmpty()) values << qMakePair(QStringLiteral("salary"), salary);
    QList<FieldProblem> problems = ApplyEmployeeValues(d, values);
    if (problems.isEmpty()) problems = EmployeeProblems(m_wage, d);
    if (!problems.isEmpty()) {
        showProblems(ProblemText(problems), problems.first().option);
        return false;
    }
    // The tax items are checked before anything is written, as on the command line.
    QString taxOption;
    const QString taxProblem = m_taxItems->problem(taxOption);
    if (!taxProblem.isEmpty()) {
        showProblems(taxProblem, taxOption);
        return false;
    }
    // A finish date given now makes the final pay first, while the employee is still on the roster.
    QString finalPay;
    try {
        if (d.EmployeeID != 0 && d.DateFinished.isValid() && !m_details.DateFinished.isValid())
            finalPay = holidays::FinalPayText(holidays::MakeFinalPay(d.EmployeeID, d.DateFinished));
        Database farm;
        farm.open(DataFileName());
        const qint32 id = SaveEmployee(m_wage, farm, d);
        m_taxItems->save(m_wage, id);
        m_details = LoadEmployee(m_wage, farm, id);
    } catch (const VbError& e) {
        showProblems(e.description(), QString());
        return false;
    }
    lblProblems->hide();
    if (!finalPay.isEmpty())
        ShowMessage(finalPay.replace(QLatin1Char('\n'), QStringLiteral("\r\n")), msg::OKOnly, Firm(),
                    QStringLiteral("Final pay"), d.FirstName + u' ' + d.LastName, msg::Information, false);
    return true;
}

frmEmployee::frmEmployee(Database& wage, qint32 employeeID, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmEmployee"));
    setWindowTitle(employeeID ? QStringLiteral("Employee") : QStringLiteral("New Employee"));
    setModal(true);
    m_panel = new EmployeePanel(wage, this);
    if (employeeID) {
        Database farm;
        farm.open(DataFileName());
        m_panel->load(LoadEmployee(wage, farm, employeeID));
    } else {
        EmployeeDetails blank;
        blank.Interval = QStringLiteral("weekly");
        blank.TaxCode = QStringLiteral("M");
        m_panel->load(blank);
    }
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* save = buttons->addButton(QStringLiteral("&Save"), QDialogButtonBox::AcceptRole);
    QPushButton* cancel = buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    save->setObjectName(QStringLiteral("cmdSave"));
    save->setAccessibleName(QStringLiteral("Save"));
    save->setDefault(true);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    // A saved employee's usual week and holiday terms. The details take nearly every letter, so the key
    // stands beside the caption as theirs do when they run out.
    if (employeeID) {
        QPushButton* holidays = buttons->addButton(QStringLiteral("Work Pattern and Holidays (&J)..."),
                                                   QDialogButtonBox::ActionRole);
        holidays->setObjectName(QStringLiteral("cmdHolidays"));
        holidays->setAccessibleName(QStringLiteral("Work pattern and holiday terms of this employee"));
        connect(holidays, &QPushButton::clicked, this,
                [this, &wage, employeeID] { ShowHolidaySetup(wage, employeeID, this); });
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &frmEmployee::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_panel);
    layout->addWidget(buttons);
}

void frmEmployee::accept() {
    if (m_panel->save()) QDialog::accept();
}

qint32 EditEmployee(Database& wage, qint32 employeeID, QWidget* owner) {
    frmEmployee d(wage, employeeID, owner);
    return d.exec() == QDialog::Accepted ? d.panel()->employeeID() : 0;
}

} // namespace ql
