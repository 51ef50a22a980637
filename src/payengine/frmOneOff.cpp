#include "frmOneOff.h"
#include "PayView.h"
#include "frame/Messages.h"
#include "frame/OpenForms.h"
#include "runtime/Trap.h"
#include "ui/FHDatePicker.h"
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

namespace ql {

namespace {

// Runs a user event; an error that no procedure traps is reported and the dialog stays up.
template <class F> void act(const char* location, F&& body) {
    try {
        body();
    } catch (const VbError& e) {
        ReportError(e, QString::fromLatin1(location));
    } catch (const std::exception& e) {
        ReportError(toVbError(e), QString::fromLatin1(location));
    }
}

void fillCombo(QComboBox* box, const ComboModel& model) {
    box->clear();
    for (int i = 0; i < model.count(); ++i)
        box->addItem(model.text(i), model.itemData(i));
    box->setCurrentIndex(model.selectedIndex());
}

} // namespace

frmOneOff::frmOneOff(const QVariant& date, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmOneOff"));
    setWindowTitle(QStringLiteral("One-off Pay"));
    setAccessibleName(QStringLiteral("One-off Pay"));
    setModal(true);

    const char* const names[] = {"Text1(0)", "Text1(1)", "Text1(2)"};
    const char* const accessible[] = {"Date", "Amount", "PAYE"};
    for (int i = 0; i < 3; ++i) {
        m_text1[i] = new QLineEdit(this);
        m_text1[i]->setObjectName(QString::fromLatin1(names[i]));
        m_text1[i]->setAccessibleName(QString::fromLatin1(accessible[i]));
        m_text1[i]->installEventFilter(this);
    }
    m_text1[1]->setAlignment(Qt::AlignRight);
    m_text1[2]->setAlignment(Qt::AlignRight);
    m_picker = new FHDatePicker(this);
    m_picker->setObjectName(QStringLiteral("FHDatePicker"));
    m_picker->setAccessibleName(QStringLiteral("Pick the date"));
    m_picker->textBox()->setAccessibleName(QStringLiteral("Picked date"));
    m_cmbPayName = new QComboBox(this);
    m_cmbPayName->setObjectName(QStringLiteral("cmbPayName"));
    m_cmbPayName->setAccessibleName(QStringLiteral("Payment Type"));
    m_cmbTaxType = new QComboBox(this);
    m_cmbTaxType->setObjectName(QStringLiteral("cmbTaxType"));
    m_cmbTaxType->setAccessibleName(QStringLiteral("Tax Type"));
    m_notLiable = new QLineEdit(this);
    m_notLiable->setObjectName(QStringLiteral("txtNotLiable"));
    m_notLiable->setAccessibleName(QStringLiteral("Not liable for ACC levy"));
    m_notLiable->setAccessibleDescription(
        QStringLiteral("Of an extra pay: the part not liable for the ACC earners' levy, such as a redundancy payment"));
    m_notLiable->setAlignment(Qt::AlignRight);
    m_notLiable->installEventFilter(this);
    m_cmdOK = new QPushButton(QStringLiteral("&OK"), this);
    m_cmdOK->setObjectName(QStringLiteral("cmdOK"));
    m_cmdOK->setAccessibleName(QStringLiteral("OK"));
    m_cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    m_cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    m_cmdCancel->setAccessibleName(QStringLiteral("Cancel"));
    // Enter in a text box must not press a button behind the box's own check.
    m_cmdOK->setDefault(false);

    auto* grid = new QGridLayout;
    auto addRow = [&](int row, const QString& caption, QWidget* field, QWidget* extra = nullptr) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        grid->addWidget(label, row, 0);
        if (extra) {
            auto* line = new QHBoxLayout;
            line->addWidget(field, 1);
            line->addWidget(extra);
            grid->addLayout(line, row, 1);
        } else {
            grid->addWidget(field, row, 1);
        }
    };
    addRow(0, QStringLiteral("&Date"), m_text1[0], m_picker);
    addRow(1, QStringLiteral("&Payment Type"), m_cmbPayName);
    addRow(2, QStringLiteral("A&mount"), m_text1[1]);
    addRow(3, QStringLiteral("&Tax Type"), m_cmbTaxType);
    addRow(4, QStringLiteral("Not liable for ACC &levy"), m_notLiable);
    addRow(5, QStringLiteral("PA&YE"), m_text1[2]);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_cmdOK);
    buttons->addWidget(m_cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    setMinimumWidth(380);
    setTabOrder(m_text1[0], m_picker);
    setTabOrder(m_picker, m_cmbPayName);
    setTabOrder(m_cmbPayName, m_text1[1]);
    setTabOrder(m_text1[1], m_cmbTaxType);
    setTabOrder(m_cmbTaxType, m_notLiable);
    setTabOrder(m_notLiable, m_text1[2]);
    setTabOrder(m_text1[2], m_cmdOK);
    setTabOrder(m_cmdOK, m_cmdCancel);

    act("Form_Load", [&] { m_form.Form_Load(date); });
    m_showing = true;
    fillCombo(m_cmbPayName, m_form.cmbPayName);
    fillCombo(m_cmbTaxType, m_form.cmbTaxType);
    m_showing = false;
    showState();
    m_text1[0]->setFocus();

    connect(m_picker, &FHDatePicker::DateChanged, this, [this](const QDateTime&, const QDateTime& d) {
        if (m_showing) return;
        act("FHDatePicker_Change", [&] { m_form.picker_Change(d.date()); });
        showState();
    });
    connect(m_cmbPayName, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (!m_showing) m_form.cmbPayName.setSelectedIndex(i);
    });
    connect(m_cmbTaxType, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (m_showing) return;
        m_form.cmbTaxType.setSelectedIndex(i);
        act("cmbTaxType_Click", [&] { m_form.cmbTaxType_Click(); });
        showState();
    });
    connect(m_cmdOK, &QPushButton::clicked, this, [this] {
        // A click by the access key leaves the box first, as a click by the mouse does.
        for (QLineEdit* box : {m_text1[0], m_text1[1], m_text1[2], m_notLiable})
            if (focusWidget() == box && box->hasFocus()) m_cmdOK->setFocus(Qt::ShortcutFocusReason);
        if (m_cmdOK->isEnabled()) unloadAndClose(false);
    });
    connect(m_cmdCancel, &QPushButton::clicked, this, [this] { unloadAndClose(true); });
    registerOpenForm(this, [this] { close(); });
}

frmOneOff::~frmOneOff() {
    unregisterOpenForm(this);
}

QWidget* frmOneOff::picker() const {
    return m_picker;
}
QDate frmOneOff::pickerDate() const {
    return m_picker->date();
}
void frmOneOff::setPickerDate(const QDate& date) {
    m_picker->setDate(date);
}

void frmOneOff::showState() {
    m_showing = true;
    for (int i = 0; i < 3; ++i)
        if (m_text1[i]->text() != m_form.Text1[i]) m_text1[i]->setText(m_form.Text1[i]);
    if (m_notLiable->text() != m_form.notLiableText) m_notLiable->setText(m_form.notLiableText);
    if (m_form.pickerDate.isValid()) m_picker->setDate(m_form.pickerDate);
    m_cmbPayName->setCurrentIndex(m_form.cmbPayName.selectedIndex());
    m_cmbTaxType->setCurrentIndex(m_form.cmbTaxType.selectedIndex());
    m_cmdOK->setEnabled(m_form.cmdOKEnabled);
    m_showing = false;
}

// A focus change asked for inside a focus event takes effect once that change is over.
void frmOneOff::applyFocusRequest() {
    const QString target = m_form.focusRequest;
    m_form.focusRequest.clear();
    QWidget* w = target == QLatin1String("cmdOK")        ? static_cast<QWidget*>(m_cmdOK)
                 : target == QLatin1String("cmbTaxType") ? static_cast<QWidget*>(m_cmbTaxType)
                                                         : nullptr;
    if (w)
        QTimer::singleShot(0, w, [w] {
            if (w->isEnabled()) w->setFocus(Qt::OtherFocusReason);
        });
}

bool frmOneOff::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_notLiable && !m_closed && event->type() == QEvent::FocusOut) {
        m_form.notLiableText = m_notLiable->text();
        act("txtNotLiable_LostFocus", [&] { m_form.notLiable_LostFocus(); });
        showState();
    }
    for (int i = 0; i < 3; ++i) {
        if (watched != m_text1[i] || m_closed) continue;
        if (event->type() == QEvent::FocusIn) {
            m_form.Text1[i] = m_text1[i]->text();
            act("Text1_GotFocus", [&] { m_form.Text1_GotFocus(i); });
        } else if (event->type() == QEvent::FocusOut) {
            m_form.Text1[i] = m_text1[i]->text();
            act("Text1_LostFocus", [&] { m_form.Text1_LostFocus(i); });
            showState();
            applyFocusRequest();
        } else if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                m_form.Text1_Enter(i);
                if (m_form.focusRequest == QLatin1String("cmbTaxType")) {
                    m_form.focusRequest.clear();
                    m_cmbTaxType->setFocus(Qt::TabFocusReason);
                }
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmOneOff::unloadAndClose(bool cancelled) {
    if (m_closed) return;
    m_closed = true;
    if (cancelled)
        m_form.cmdCancel_Click();
    else
        m_form.cmdOK_Click();
    done(cancelled ? QDialog::Rejected : QDialog::Accepted);
}

void frmOneOff::reject() {
    unloadAndClose(true);
}

void frmOneOff::closeEvent(QCloseEvent* event) {
    // The title bar's close leaves the Cancelled flag as it is: false, so the pay is made.
    if (!m_closed) {
        m_closed = true;
        skipErrors([&] { m_form.Form_Unload(); });
        done(QDialog::Accepted);
    }
    event->accept();
}

qint32 OpenOneOffDialog(QWidget* owner, PayView& form, const QVariant& date) {
    qint32 made = 0;
    {
        frmOneOff dialog(date, owner);
        dialog.exec();
        made = dialog.form().madeWageID;
    }
    AfterOneOffDialog(form);
    return made;
}

} // namespace ql
