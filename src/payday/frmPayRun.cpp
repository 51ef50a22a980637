#include "frmPayRun.h"
#include "PayRunCommitter.h"
#include "cashbook/PaySlipPrinter.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frmPaydayFiles.h"
#include "mail/frmEmailSettings.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "ui/Skin.h"
#include <QApplication>
#include <QScreen>
#include <QComboBox>
#include <QDateEdit>
#include <QFontMetrics>
#include <QLineEdit>
#include <QScrollBar>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTableWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

namespace ql {

namespace {

QString money(Currency c) {
    return Format(QVariant::fromValue(c), QStringLiteral("Currency"));
}
QString shortDate(const QDate& d) {
    return d.isValid() ? dateText(QVariant(d)) : QString();
}

QTableWidgetItem* cell(const QString& text, bool right = false) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    if (right) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

const QStringList kColumns{QStringLiteral("Pay"),       QStringLiteral("Employee"),
                           QStringLiteral("Period"),    QStringLiteral("Gross"),
                           QStringLiteral("PAYE"),      QStringLiteral("Deductions"),
                           QStringLiteral("Take-home"), QStringLiteral("State")};

} // namespace

frmPayRun::frmPayRun(Database& wage, QWidget* parent) : QDialog(parent), m_wage(wage) {
    setWindowTitle(QStringLiteral("Pay Run"));
    // The run's payslips are made by the commit and go where the run's choice sends them.
    commitPay = installedPayCommitter() ? installedPayCommitter() : CommitAsTheDialogDoes(true);
    emailSlips = [this](const QList<PayRunSlip>& slips) { return EmailRunSlips(m_wage, slips); };
    setModal(true);
    dtpRunDate = new QDateEdit(Today(), this);
    dtpRunDate->setObjectName(QStringLiteral("dtpRunDate"));
    dtpRunDate->setAccessibleName(QStringLiteral("Pay date of the run"));
    dtpRunDate->setCalendarPopup(true);
    dtpRunDate->setDisplayFormat(QStringLiteral("dd MMM yyyy"));
    auto* lblDate = new QLabel(QStringLiteral("Pay &date:"), this);
    lblDate->setBuddy(dtpRunDate);
    cmdPropose = new QPushButton(QStringLiteral("&Propose"), this);
    cmdPropose->setAccessibleName(QStringLiteral("Propose the pays due"));
    tgrdRun = new QTableWidget(0, static_cast<int>(kColumns.size()), this);
    tgrdRun->setObjectName(QStringLiteral("tgrdRun"));
    tgrdRun->setAccessibleName(QStringLiteral("Pays of the run"));
    tgrdRun->setHorizontalHeaderLabels(kColumns);
    tgrdRun->verticalHeader()->hide();
    tgrdRun->setSelectionBehavior(QAbstractItemView::SelectRows);
    tgrdRun->setSelectionMode(QAbstractItemView::SingleSelection);
    tgrdRun->setWordWrap(false);
    tgrdRun->setTextElideMode(Qt::ElideNone);
    tgrdRun->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    tgrdRun->horizontalHeader()->setStretchLastSection(true);
    // The totals of every column, beneath the list and as wide as its columns.
    tgrdTotals = new QTableWidget(1, static_cast<int>(kColumns.size()), this);
    tgrdTotals->setObjectName(QStringLiteral("tgrdTotals"));
    tgrdTotals->setAccessibleName(QStringLiteral("Totals of the run"));
    tgrdTotals->horizontalHeader()->hide();
    tgrdTotals->verticalHeader()->hide();
    tgrdTotals->setFocusPolicy(Qt::NoFocus);
    tgrdTotals->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tgrdTotals->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tgrdTotals->setWordWrap(false);
    tgrdTotals->setFixedHeight(tgrdTotals->verticalHeader()->defaultSectionSize() + 2 * tgrdTotals->frameWidth());
    tgrdTotals->horizontalHeader()->setStretchLastSection(true);
    connect(tgrdRun->horizontalHeader(), &QHeaderView::sectionResized, tgrdTotals,
            [this](int column, int, int width) { tgrdTotals->setColumnWidth(column, width); });
    connect(tgrdRun->horizontalScrollBar(), &QScrollBar::valueChanged, tgrdTotals->horizontalScrollBar(),
            &QScrollBar::setValue);
    connect(tgrdRun, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (item && item->column() == 0) fillTotals();
    });
    lblTotal = new QLabel(this);
    lblTotal->setObjectName(QStringLiteral("lblTotal"));
    lblTotal->setAccessibleName(QStringLiteral("Take-home total of the run"));
    cmdAddPays = new QPushButton(QStringLiteral("&Add pays"), this);
    cmdAddPays->setAccessibleName(QStringLiteral("Add the missing pays"));
    cmdOpen = new QPushButton(QStringLiteral("Open in &ledger"), this);
    cmdOpen->setAccessibleName(QStringLiteral("Open the selected pay in the wage ledger"));
    cmdCommit = new QPushButton(QStringLiteral("Co&mmit"), this);
    cmdCommit->setAccessibleName(QStringLiteral("Commit the pays of the run"));
    cboPayslips = new QComboBox(this);
    cboPayslips->setObjectName(QStringLiteral("cboPayslips"));
    cboPayslips->setAccessibleName(QStringLiteral("Payslips of the run"));
    for (int i = 0; i <= static_cast<int>(SlipDelivery::Email); ++i)
        cboPayslips->addItem(SlipDeliveryCaption(SlipDelivery(i)));
    cboPayslips->setCurrentIndex(static_cast<int>(ReadSlipDelivery()));
    auto* lblPayslips = new QLabel(QStringLiteral("Pay&slips:"), this);
    lblPayslips->setBuddy(cboPayslips);
    txtSlipFolder = new QLineEdit(ReadSlipFolder(), this);
    txtSlipFolder->setObjectName(QStringLiteral("txtSlipFolder"));
    txtSlipFolder->setAccessibleName(QStringLiteral("Folder of the PDF payslips"));
    auto* lblFolder = new QLabel(QStringLiteral("F&older:"), this);
    lblFolder->setBuddy(txtSlipFolder);
    cmdMailServer = new QPushButton(QStringLiteral("Mail ser&ver..."), this);
    cmdMailServer->setObjectName(QStringLiteral("cmdMailServer"));
    cmdMailServer->setAccessibleName(QStringLiteral("Email settings: the mail server the payslips go through"));
    const auto showFolder = [this, lblFolder] {
        const bool pdf = cboPayslips->currentIndex() == static_cast<int>(SlipDelivery::PdfFolder);
        lblFolder->setVisible(pdf);
        txtSlipFolder->setVisible(pdf);
        cmdMailServer->setVisible(cboPayslips->currentIndex() == static_cast<int>(SlipDelivery::Email));
    };
    showFolder();
    connect(cboPayslips, qOverload<int>(&QComboBox::currentIndexChanged), this, showFolder);
    cmdFiles = new QPushButton(QStringLiteral("Payday &files..."), this);
    cmdFiles->setAccessibleName(QStringLiteral("Payday filing and bank files of the run"));
    auto* cmdClose = new QPushButton(QStringLiteral("&Close"), this);
    cmdClose->setAccessibleName(QStringLiteral("Close"));
    for (QPushButton* b : {cmdPropose, cmdAddPays, cmdOpen, cmdCommit, cmdFiles, cmdClose, cmdMailServer})
        b->setAutoDefault(false);

    auto* top = new QHBoxLayout;
    top->addWidget(lblDate);
    top->addWidget(dtpRunDate);
    top->addWidget(cmdPropose);
    top->addStretch();
    top->addWidget(lblPayslips);
    top->addWidget(cboPayslips);
    top->addWidget(lblFolder);
    top->addWidget(txtSlipFolder, 1);
    top->addWidget(cmdMailServer);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblTotal);
    bottom->addStretch();
    bottom->addWidget(cmdOpen);
    bottom->addWidget(cmdAddPays);
    bottom->addWidget(cmdCommit);
    bottom->addWidget(cmdFiles);
    bottom->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    auto* list = new QVBoxLayout;
    list->setSpacing(0);
    list->addWidget(tgrdRun);
    list->addWidget(tgrdTotals);
    layout->addLayout(list, 1);
    layout->addLayout(bottom);
    setTabOrder(dtpRunDate, cmdPropose);
    setTabOrder(cmdPropose, cboPayslips);
    setTabOrder(cboPayslips, txtSlipFolder);
    setTabOrder(txtSlipFolder, cmdMailServer);
    setTabOrder(cmdMailServer, tgrdRun);
    setTabOrder(tgrdRun, cmdOpen);
    setTabOrder(cmdOpen, cmdAddPays);
    setTabOrder(cmdAddPays, cmdCommit);
    setTabOrder(cmdCommit, cmdFiles);
    setTabOrder(cmdFiles, cmdClose);
    resize(SizeOnScreen(QSize(900, 400)));

    connect(cmdPropose, &QPushButton::clicked, this, [this] { propose(); });
    connect(dtpRunDate, &QDateEdit::dateChanged, this, [this] { propose(); });
    connect(cmdAddPays, &QPushButton::clicked, this, [this] { addPays(); });
    connect(cmdCommit, &QPushButton::clicked, this, [this] { commitPays(); });
    connect(cmdMailServer, &QPushButton::clicked, this, [this] { ShowEmailSettings(this); });
    connect(cmdOpen, &QPushButton::clicked, this, [this] {
        const int row = tgrdRun->currentRow();
        if (row < 0 || row >= m_items.size() || !openInLedger) return;
        openInLedger(m_items.at(row).employeeID, m_items.at(row).wageID);
        propose();
    });
    connect(cmdFiles, &QPushButton::clicked, this, [this] {
        // The files go by payment date; the run's pays are paid on its date.
        frmPaydayFiles files(m_wage, this);
        files.dtpPaymentDate->setDate(dtpRunDate->date());
        files.exec();
    });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    propose();
}

QSet<qint32> frmPayRun::leftOut() const {
    QSet<qint32> out;
    for (int r = 0; r < tgrdRun->rowCount() && r < m_items.size(); ++r)
        if (tgrdRun->item(r, 0)->checkState() != Qt::Checked) out.insert(m_items.at(r).employeeID);
    return out;
}

void frmPayRun::propose() {
    const QSet<qint32> out = leftOut();
    m_items = ProposePayRun(m_wage, dtpRunDate->date());
    fill();
    leaveOut(out);
}

void frmPayRun::leaveOut(const QSet<qint32>& out) {
    const QSignalBlocker quiet(tgrdRun);
    for (int r = 0; r < m_items.size(); ++r)
        if (out.contains(m_items.at(r).employeeID)) tgrdRun->item(r, 0)->setCheckState(Qt::Unchecked);
    fillTotals();
}

void frmPayRun::fillTotals() {
    const QSet<qint32> out = leftOut();
    Currency gross, paye, deductions, takeHome;
    int pays = 0;
    for (const PayRunItem& i : m_items) {
        if (out.contains(i.employeeID)) continue;
        ++pays;
        gross += i.gross;
        paye += i.paye;
        deductions += i.deductions;
        takeHome += i.takeHome;
    }
    const QStringList cells{QStringLiteral("Total"), QStringLiteral("%1 pays").arg(pays), QString(),
                            money(gross),  money(paye),  money(deductions),  money(takeHome), QString()};
    for (int c = 0; c < cells.size(); ++c) {
        QTableWidgetItem* item = cell(cells.at(c), c >= 3 && c <= 6);
        QFont bold = item->font();
        bold.setBold(true);
        item->setFont(bold);
        tgrdTotals->setItem(0, c, item);
    }
    // Each column as wide as its widest cell, the totals' included, so that no figure is cut short.
    tgrdRun->resizeColumnsToContents();
    for (int c = 0; c + 1 < tgrdRun->columnCount(); ++c) {
        const QTableWidgetItem* total = tgrdTotals->item(0, c);
        const int needed = QFontMetrics(total->font()).horizontalAdvance(total->text()) + 16;
        if (tgrdRun->columnWidth(c) < needed) tgrdRun->setColumnWidth(c, needed);
    }
    tgrdTotals->setAccessibleDescription(QStringLiteral("%1 pays: gross %2, PAYE %3, deductions %4, take-home %5")
                                             .arg(pays)
                                             .arg(money(gross), money(paye), money(deductions), money(takeHome)));
}

QList<PayRunItem> frmPayRun::toCommit() const {
    const QSet<qint32> out = leftOut();
    QList<PayRunItem> list;
    for (const PayRunItem& i : m_items)
        if (i.wageID != 0 && !i.committed() && !out.contains(i.employeeID)) list << i;
    return list;
}

QString frmPayRun::confirmationText() const {
    const QList<PayRunItem> pays = toCommit();
    if (pays.isEmpty()) return QString();
    Currency gross, paye, deductions, takeHome;
    for (const PayRunItem& i : pays) {
        gross += i.gross;
        paye += i.paye;
        deductions += i.deductions;
        takeHome += i.takeHome;
    }
    const QString date = shortDate(dtpRunDate->date());
    return QStringLiteral("Commit %1 pays of %2?\n\nGross: %3\nPAYE: %4\nDeductions: %5\nTake-home: %6\n\n")
               .arg(pays.size())
               .arg(date, money(gross), money(paye), money(deductions), money(takeHome)) +
           SlipDeliveryPhrase(SlipDelivery(cboPayslips->currentIndex()), txtSlipFolder->text()) +
           QStringLiteral("\nNext, Payday files writes the payday filing file for Inland Revenue and the "
                          "bank's direct-credit file of %1.")
               .arg(date);
}

void frmPayRun::fill() {
    const QSignalBlocker quiet(tgrdRun);
    tgrdRun->setRowCount(static_cast<int>(m_items.size()));
    for (int r = 0; r < m_items.size(); ++r) {
        const PayRunItem& i = m_items.at(r);
        auto* pay = cell(shortDate(i.payDate));
        pay->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        pay->setCheckState(Qt::Checked);
        tgrdRun->setItem(r, 0, pay);
        tgrdRun->setItem(r, 1, cell(i.name));
        tgrdRun->setItem(
            r, 2, cell(QStringLiteral("%1 to %2").arg(shortDate(i.periodStart), shortDate(i.payDate))));
        const bool known = i.wageID != 0;
        tgrdRun->setItem(r, 3, cell(known ? money(i.gross) : QString(), true));
        tgrdRun->setItem(r, 4, cell(known ? money(i.paye) : QString(), true));
        tgrdRun->setItem(r, 5, cell(known ? money(i.deductions) : QString(), true));
        tgrdRun->setItem(r, 6, cell(known ? money(i.takeHome) : QString(), true));
        tgrdRun->setItem(r, 7,
                         cell(i.committed() ? QStringLiteral("Committed (%1)").arg(i.reference)
                              : known       ? QStringLiteral("Added")
                                            : QStringLiteral("To add")));
    }
    lblTotal->setText(
        QStringLiteral("%1 pays, take-home %2").arg(m_items.size()).arg(money(PayRunTotal(m_items))));
    fillTotals();
    cmdAddPays->setEnabled(
        std::any_of(m_items.cbegin(), m_items.cend(), [](const PayRunItem& i) { return i.wageID == 0; }));
    cmdCommit->setEnabled(bool(commitPay) &&
                          std::any_of(m_items.cbegin(), m_items.cend(),
                                      [](const PayRunItem& i) { return i.wageID != 0 && !i.committed(); }));
}

int frmPayRun::addPays() {
    const QSet<qint32> out = leftOut();
    QList<PayRunItem> toAdd;
    for (const PayRunItem& i : m_items)
        if (i.wageID == 0 && !out.contains(i.employeeID)) toAdd << i;
    QStringList failures;
    int added = 0;
    {
        QProgressDialog progress(QStringLiteral("Adding the pays of the run..."), QStringLiteral("&Cancel"),
                                 0, static_cast<int>(toAdd.size()), this);
        progress.setWindowTitle(QStringLiteral("Pay Run"));
        progress.setAccessibleName(QStringLiteral("Progress of the pay run"));
        progress.setWindowModality(Qt::WindowModal);
        progress.setMinimumDuration(0);
        PayRunAdder adder;
        for (int n = 0; n < toAdd.size(); ++n) {
            progress.setValue(n);
            progress.setLabelText(QStringLiteral("Adding the pay of %1...").arg(toAdd.at(n).name));
            QApplication::processEvents();
            if (progress.wasCanceled()) break;
            QString failure;
            if (adder.add(toAdd.at(n), failure))
                ++added;
            else
                failures << failure;
        }
        progress.setValue(static_cast<int>(toAdd.size()));
    }
    propose();
    if (!failures.isEmpty())
        ShowMessage(QStringLiteral("%1 pays were added. These were not:\n").arg(added) + failures.join(u'\n'),
                    msg::OKOnly, Firm(), QStringLiteral("Pay Run"), QString(), msg::Warning, true);
    return added;
}

int frmPayRun::commitPays() {
    if (!commitPay) return 0;
    {
        // The list and the question show the figures the commit will give each pay.
        const QSet<qint32> out = leftOut();
        SettlePayRunItems(m_items, out);
        RefreshPayRunItems(m_wage, m_items);
        fill();
        leaveOut(out);
    }
    const QString question = confirmationText();
    if (question.isEmpty()) return 0;
    if (ShowMessage(question, msg::YesNo, Firm(), QStringLiteral("Pay Run"), QStringLiteral("Commit the run"),
                    msg::Question, true) != msg::Yes)
        return 0;
    const auto delivery = SlipDelivery(cboPayslips->currentIndex());
    SaveSlipDelivery(delivery);
    if (delivery == SlipDelivery::PdfFolder) SaveSlipFolder(txtSlipFolder->text());
    PayRunCommit result;
    QList<PayRunSlip> slips;
    QStringList slipFailures;
    {
        // No report screen per pay: the commit's payslips are kept for the run.
        PayRunSlips kept;
        QProgressDialog progress(QStringLiteral("Committing the pays of the run..."),
                                 QStringLiteral("&Cancel"), 0, 1, this);
        progress.setWindowTitle(QStringLiteral("Pay Run"));
        progress.setAccessibleName(QStringLiteral("Progress of the pay run"));
        progress.setWindowModality(Qt::WindowModal);
        progress.setMinimumDuration(0);
        result = CommitPayRun(m_items, leftOut(), commitPay, [&](int done, int total, const QString& name) {
            progress.setMaximum(total);
            progress.setValue(done);
            if (!name.isEmpty())
                progress.setLabelText(QStringLiteral("Committing the pay of %1...").arg(name));
            QApplication::processEvents();
            return !progress.wasCanceled();
        });
        slips = kept.slips;
        slipFailures = kept.failures;
    }
    // The run's pays stay listed with their references, whatever their dates.
    const QSet<qint32> out = leftOut();
    RefreshPayRunItems(m_wage, m_items);
    fill();
    leaveOut(out);
    QString text = QStringLiteral("%1 pays were committed.").arg(result.done.size());
    if (!result.done.isEmpty()) text += u'\n' + result.done.join(u'\n');
    if (!result.failure.isEmpty()) text += QStringLiteral("\n\nThe run stopped at %1\n").arg(result.failure);
    if (!result.notDone.isEmpty())
        text += QStringLiteral("\nNot committed yet:\n") + result.notDone.join(u'\n') +
                QStringLiteral("\n\nRun the pay run again to finish them.");
    if (delivery != SlipDelivery::None && !result.done.isEmpty()) {
        const QString told = deliverSlips(slips, slipFailures);
        if (!told.isEmpty()) text += QStringLiteral("\n\n") + told;
        if (!slipFailures.isEmpty())
            text += QStringLiteral("\nThese payslips did not go:\n") + slipFailures.join(u'\n');
    }
    if (!result.done.isEmpty())
        text += QStringLiteral("\n\nNext: Payday files writes the payday filing and bank files of %1.")
                    .arg(shortDate(dtpRunDate->date()));
    ShowMessage(text, msg::OKOnly, Firm(), QStringLiteral("Pay Run"), QString(),
                result.failure.isEmpty() && slipFailures.isEmpty() ? msg::Information : msg::Warning, true);
    if (!result.done.isEmpty()) {
        cmdFiles->setDefault(true);
        cmdFiles->setFocus();
    }
    return static_cast<int>(result.done.size());
}

void ShowPayRun(Database& wage, QWidget* owner, std::function<void(qint32, qint32)> openInLedger,
                PayCommitter commitPay) {
    frmPayRun d(wage, owner);
    d.openInLedger = std::move(openInLedger);
    if (commitPay) d.commitPay = std::move(commitPay);
    d.propose();
    d.exec();
}

frmPayRun* OpenPayRun(Database& wage, QWidget* owner, std::function<void(qint32, qint32)> openInLedger,
                      std::function<void()> onClosed) {
    static QPointer<frmPayRun> open;
    if (open) {
        open->raise();
        open->activateWindow();
        return open;
    }
    auto* d = new frmPayRun(wage, owner);
    d->setAttribute(Qt::WA_DeleteOnClose);
    d->setModal(false);
    d->openInLedger = std::move(openInLedger);
    if (onClosed) QObject::connect(d, &QDialog::finished, d, [onClosed] { onClosed(); });
    d->propose();
    d->show();
    open = d;
    return d;
}

} // namespace ql
