#include "frmAddEdit.h"
#include "AddEditChoice.h"
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace ql {

frmAddEdit::frmAddEdit(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAddEdit"));
    setWindowTitle(QStringLiteral("Add or Edit"));
    setAccessibleName(QStringLiteral("Add or Edit"));
    auto* layout = new QVBoxLayout(this);
    auto* group = new QGroupBox(this);
    group->setAccessibleName(QStringLiteral("What the picked date is for"));
    auto* options = new QVBoxLayout(group);
    auto option = [&](const char* name, const char* text) {
        auto* o = new QRadioButton(QString::fromLatin1(text), group);
        o->setObjectName(QString::fromLatin1(name));
        o->setAccessibleName(QString(o->text()).remove(QLatin1Char('&')));
        options->addWidget(o);
        return o;
    };
    optAdd = option("optAdd", "Add a &Regular payment");
    optAddOneOFf = option("optAddOneOFf", "Add '&One Off' payment");
    optEdit = option("optEdit", "&Edit payment date");
    optAdd->setChecked(true);
    layout->addWidget(group);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* ok = buttons->addButton(QStringLiteral("O&K"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("cmdOKAY"));
    ok->setAccessibleName(QStringLiteral("OK"));
    ok->setDefault(true);
    QPushButton* cancel = buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    layout->addWidget(buttons);
    connect(ok, &QPushButton::clicked, this, &frmAddEdit::cmdOKAY_Click);
    connect(cancel, &QPushButton::clicked, this, &frmAddEdit::cmdCancel_Click);
    optAdd->setFocus();
}

void frmAddEdit::cmdOKAY_Click() {
    CalendarChoice& choice = calendarChoice();
    choice = CalendarChoice{};
    choice.AddPayChoice = optAdd->isChecked();
    choice.OneOffChoice = optAddOneOFf->isChecked();
    choice.EditDateChoice = optEdit->isChecked();
    accept();
}

void frmAddEdit::cmdCancel_Click() {
    reject();
}

} // namespace ql
