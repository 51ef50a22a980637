#pragma once
// The report screen ("Reports") on the desktop: what is about to be printed, the buttons to the
// screen and to the printer, the memo box and the way back. It shows a ReportScreen and forwards the
// user's presses to it.
#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;

namespace ql {

class ReportScreen;

class frm_crystal : public QDialog {
    Q_OBJECT
public:
    explicit frm_crystal(ReportScreen& screen, QWidget* parent = nullptr);
    ~frm_crystal() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    ReportScreen& m_screen;
    QLabel* m_info = nullptr;
    QPushButton* m_cmdCry[2] = {nullptr, nullptr};
    QPushButton* m_goBack = nullptr;
    QCheckBox* m_chkMemo = nullptr;
};

// Makes the desktop's report screen the one prints show, and the preview window (opened maximised)
// and the printer (through the print dialog) the outputs of destinations 0 and 1; PDF files are
// destination 2.
void installReportScreens();

} // namespace ql
