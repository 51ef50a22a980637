#include "frm_crystal.h"
#include "ui/Skin.h"
#include "ReportPreviewDialog.h"
#include "ReportScreen.h"
#include "frame/OpenForms.h"
#include "reports/paint/ReportPages.h"
#include "reports/paint/ReportPdf.h"
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

namespace ql {

frm_crystal::frm_crystal(ReportScreen& screen, QWidget* parent) : QDialog(parent), m_screen(screen) {
    setObjectName(QStringLiteral("frm_crystal"));
    setWindowTitle(screen.caption);
    setAccessibleName(screen.caption);
    auto* layout = new QVBoxLayout(this);

    m_info = new QLabel(QString(screen.lbl_ReportInfo).replace(QStringLiteral("\r\n"), QStringLiteral("\n")),
                        this);
    m_info->setObjectName(QStringLiteral("lbl_ReportInfo"));
    m_info->setAccessibleName(QStringLiteral("About to print"));
    m_info->setAlignment(Qt::AlignCenter);
    m_info->setMinimumWidth(340);
    QFont f = m_info->font();
    f.setPointSizeF(f.pointSizeF() * 1.15);
    m_info->setFont(f);
    layout->addWidget(m_info, 1);

    m_chkMemo = new QCheckBox(screen.lblMemo, this);
    m_chkMemo->setObjectName(QStringLiteral("chkMemo"));
    m_chkMemo->setAccessibleName(QStringLiteral("Show memos"));
    m_chkMemo->setChecked(screen.chkMemo.value);
    m_chkMemo->setVisible(screen.chkMemo.visible);
    connect(m_chkMemo, &QCheckBox::toggled, this, [this](bool on) { m_screen.chkMemo.value = on; });
    layout->addWidget(m_chkMemo, 0, Qt::AlignHCenter);

    auto* buttons = new QHBoxLayout;
    const char* const captions[] = {"&Screen", "&Printer"};
    const char* const names[] = {"Print to the screen", "Print to the printer"};
    for (int i = 0; i < 2; ++i) {
        m_cmdCry[i] = new QPushButton(QString::fromLatin1(captions[i]), this);
        m_cmdCry[i]->setObjectName(QStringLiteral("cmdCry(%1)").arg(i));
        m_cmdCry[i]->setAccessibleName(QString::fromLatin1(names[i]));
        connect(m_cmdCry[i], &QPushButton::clicked, this, [this, i] { m_screen.cmdCry_Click(i); });
        buttons->addWidget(m_cmdCry[i]);
    }
    m_goBack = new QPushButton(QStringLiteral("&Back"), this);
    m_goBack->setObjectName(QStringLiteral("cmd_goback"));
    m_goBack->setAccessibleName(QStringLiteral("Back"));
    connect(m_goBack, &QPushButton::clicked, this, [this] { m_screen.cmd_goback_Click(); });
    buttons->addWidget(m_goBack);
    layout->addLayout(buttons);
    m_cmdCry[0]->setDefault(true);
    m_cmdCry[0]->setFocus();
    setTabOrder(m_chkMemo, m_cmdCry[0]);
    setTabOrder(m_cmdCry[0], m_cmdCry[1]);
    setTabOrder(m_cmdCry[1], m_goBack);

    screen.onClose = [this] { accept(); };
    SkinForm(this);
    adjustSize();
    CentreForm(this);
    registerOpenForm(this, [this] { reject(); });
}

frm_crystal::~frm_crystal() {
    unregisterOpenForm(this);
    m_screen.onClose = nullptr;
}

void frm_crystal::closeEvent(QCloseEvent* event) {
    m_screen.Form_Unload();
    QDialog::closeEvent(event);
}

namespace {

void preview(const PreparedReport& report, const ReportControl&) {
    PreviewReports(QList<PreparedReport>{report}, report.name, QApplication::activeWindow(),
                   reportScreenActions(report));
}

void print(const PreparedReport& report, const ReportControl&) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(reportPageLayout(report));
    printer.setDocName(report.name);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("ReportPrintDialog"));
    if (dialog.exec() == QDialog::Accepted) paintReport(report, printer);
}

} // namespace

void installReportScreens() {
    setReportOutput(crpt::ToWindow, preview);
    setReportOutput(crpt::ToPrinter, print);
    installPdfOutput();
    setReportScreenShow([](ReportScreen& screen) {
        frm_crystal form(screen, QApplication::activeWindow());
        form.exec();
    });
}

} // namespace ql
