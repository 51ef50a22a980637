#include "frmPayeInfo.h"
#include "data/PayeInfo.h"
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

namespace {

// An access key on the first letter of text not taken yet.
QString withAccessKey(const QString& text, QString& taken) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i).toLower();
        if (c.isLetter() && !taken.contains(c)) {
            taken += c;
            return text.left(i) + QLatin1Char('&') + text.mid(i);
        }
    }
    return text;
}

QString plain(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

} // namespace

frmPayeInfo::frmPayeInfo(QWidget* owner) : QDialog(owner) {
    setObjectName(QStringLiteral("frmPayeInfo"));
    setWindowTitle(PayeInfoForm::title());
    setAccessibleName(PayeInfoForm::title());
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_form.Form_Load();
    QGuiApplication::restoreOverrideCursor();

    auto* outer = new QVBoxLayout(this);
    auto* heading = new QLabel(m_form.captions.value(QStringLiteral("lblPAYE1")), this);
    heading->setObjectName(QStringLiteral("lblPAYE1"));
    QFont big = heading->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.4);
    heading->setFont(big);
    outer->addWidget(heading);

    auto* fields = new QFormLayout;
    outer->addLayout(fields);
    QString taken = QStringLiteral("oc"); // OK and Cancel
    auto row = [&](const char* labelName, QWidget* field) {
        const QString name = QString::fromLatin1(labelName);
        auto* label = new QLabel(withAccessKey(m_form.captions.value(name), taken), this);
        label->setObjectName(name);
        label->setBuddy(field);
        if (field->accessibleName().isEmpty()) field->setAccessibleName(m_form.captions.value(name));
        m_labels.insert(name, label);
        fields->addRow(label, field);
    };
    m_freq = combo(QStringLiteral("cmbFreq1(0)"), m_form.cmbFreq1(0));
    row("Label1", m_freq);
    m_start = new QLineEdit(m_form.txt_GSTDate2, this);
    m_start->setObjectName(QStringLiteral("txt_GSTDate(2)"));
    m_start->setAccessibleName(m_form.captions.value(QStringLiteral("lblPAYEStart")));
    row("lblPAYEStart", m_start);
    m_holding = combo(QStringLiteral("cmbHolding1"), m_form.cmbHolding1);
    row("lblHolding", m_holding);
    m_wage = combo(QStringLiteral("cmbWage1"), m_form.cmbWage1);
    row("Label16", m_wage);
    m_adjust = combo(QStringLiteral("cmbAdjust"), m_form.cmbAdjust);
    m_adjust->setToolTip(PayeInfoForm::adjustTip());
    m_adjust->installEventFilter(this);
    row("lblAdjust", m_adjust);
    m_payment = combo(QStringLiteral("cmbPayment"), m_form.cmbPayment);
    row("lblpayment", m_payment);
    m_taxOffice = combo(QStringLiteral("cmbTaxOffice"), m_form.cmbTaxOffice);
    row("lblTaxOffice", m_taxOffice);
    m_nonCash = new QCheckBox(this);
    m_nonCash->setObjectName(QStringLiteral("chkNonCash"));
    m_nonCash->setChecked(m_form.chkNonCash);
    row("lblNoncash", m_nonCash);
    m_nonCash->setAccessibleName(m_form.captions.value(QStringLiteral("lblNoncash")));

    m_noncashHelp = new QLabel(this);
    m_noncashHelp->setObjectName(QStringLiteral("lblPayeNoncash"));
    m_noncashHelp->setAccessibleName(QStringLiteral("Payment method help"));
    m_noncashHelp->setWordWrap(true);
    outer->addWidget(m_noncashHelp);
    m_info = new QLabel(this);
    m_info->setObjectName(QStringLiteral("lbltaxationInfo"));
    m_info->setAccessibleName(QStringLiteral("Cashbook help"));
    m_info->setWordWrap(true);
    m_info->setFrameShape(QFrame::StyledPanel);
    m_info->setMargin(6);
    outer->addWidget(m_info);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_ok = new QPushButton(m_form.captions.value(QStringLiteral("cmdPartners(0)")), this);
    m_ok->setObjectName(QStringLiteral("cmdPartners(0)"));
    m_ok->setAccessibleName(QStringLiteral("OK"));
    m_ok->setDefault(true);
    m_cancel =
        new QPushButton(QStringLiteral("&") + m_form.captions.value(QStringLiteral("cmdPartners(2)")), this);
    m_cancel->setObjectName(QStringLiteral("cmdPartners(2)"));
    m_cancel->setAccessibleName(QStringLiteral("Cancel"));
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    outer->addLayout(buttons);
    connect(m_ok, &QPushButton::clicked, this, [this] { press(0); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { press(2); });

    connect(m_wage, &QComboBox::activated, this, [this](int i) {
        m_form.cmbWage1.setSelectedIndex(i);
        m_form.cmbWage1_Click();
        showHelp();
    });
    connect(m_holding, &QComboBox::activated, this, [this](int i) {
        m_form.cmbHolding1.setSelectedIndex(i);
        m_form.cmbHolding1_Click();
        showHelp();
    });
    connect(m_payment, &QComboBox::activated, this, [this](int i) {
        m_form.cmbPayment.setSelectedIndex(i);
        m_form.cmbPayment_Click();
        showHelp();
    });
    connect(m_taxOffice, &QComboBox::activated, this, [this](int i) {
        m_form.cmbTaxOffice.setSelectedIndex(i);
        m_form.cmbTaxOffice_Click();
        showHelp();
    });
    connect(m_freq, &QComboBox::activated, this, [this](int i) { m_form.cmbFreq1(0).setSelectedIndex(i); });
    connect(m_adjust, &QComboBox::activated, this, [this](int i) {
        m_form.cmbAdjust.setSelectedIndex(i);
        m_form.cmbAdjust_Click();
        m_adjust->setCurrentIndex(m_form.cmbAdjust.selectedIndex());
    });
    connect(m_nonCash, &QCheckBox::toggled, this, [this](bool on) {
        m_form.chkNonCash = on;
        m_form.chkNonCash_Click();
        showHelp();
    });
    connect(m_start, &QLineEdit::textChanged, this, [this](const QString& t) { m_form.txt_GSTDate2 = t; });

    setTabOrder(m_freq, m_start);
    setTabOrder(m_start, m_holding);
    setTabOrder(m_holding, m_wage);
    setTabOrder(m_wage, m_adjust);
    setTabOrder(m_adjust, m_payment);
    setTabOrder(m_payment, m_taxOffice);
    setTabOrder(m_taxOffice, m_nonCash);
    setTabOrder(m_nonCash, m_ok);
    setTabOrder(m_ok, m_cancel);
    showHelp();
    setMinimumWidth(520);
}

frmPayeInfo::~frmPayeInfo() {
    unloadOnce();
}

QComboBox* frmPayeInfo::combo(const QString& name, ComboModel& model) {
    auto* box = new QComboBox(this);
    box->setObjectName(name);
    showCombo(box, model);
    return box;
}

void frmPayeInfo::showCombo(QComboBox* box, const ComboModel& model) {
    box->clear();
    for (int i = 0; i < model.count(); ++i)
        box->addItem(model.text(i), model.itemData(i));
    box->setCurrentIndex(model.selectedIndex());
}

void frmPayeInfo::showHelp() {
    m_info->setText(plain(m_form.lbltaxationInfo));
    m_noncashHelp->setText(plain(m_form.lblPayeNoncash));
}

void frmPayeInfo::press(int index) {
    if (m_form.cmdPartners_Click(index)) {
        m_closing = true;
        done(index == 0 ? Accepted : Rejected);
    }
}

void frmPayeInfo::reject() {
    if (m_closing) {
        QDialog::reject();
        return;
    }
    press(2);
}

void frmPayeInfo::done(int r) {
    unloadOnce();
    QDialog::done(r);
}

void frmPayeInfo::closeEvent(QCloseEvent* event) {
    // The window's close button unloads without a button's click: the result stays as it is.
    m_closing = true;
    QDialog::closeEvent(event);
}

bool frmPayeInfo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_adjust && event->type() == QEvent::FocusIn) m_form.cmbAdjust_GotFocus();
    return QDialog::eventFilter(watched, event);
}

void frmPayeInfo::unloadOnce() {
    if (m_unloaded) return;
    m_unloaded = true;
    m_form.Form_Unload();
}

QString ShowPayeInfoDialog(QWidget* owner) {
    frmPayeInfo dialog(owner);
    dialog.exec();
    return dialog.result();
}

void installPayeInfoDialog() {
    setPayeInfoDialog([](QObject* owner) { return ShowPayeInfoDialog(qobject_cast<QWidget*>(owner)); });
}

} // namespace ql
