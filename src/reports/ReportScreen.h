#pragma once
// The report screen ("Reports") without widgets: the report control, the caption that tells the user
// what is about to be printed, the memo box, the two output buttons and the timer that starts the
// report a second after a button is pressed. The widget frm_crystal shows it; tests and the command
// line drive it directly.
#include "ReportControl.h"
#include <QString>
#include <QTimer>
#include <functional>

namespace ql {

class ReportScreen {
public:
    ReportScreen();
    ~ReportScreen();
    ReportScreen(const ReportScreen&) = delete;
    ReportScreen& operator=(const ReportScreen&) = delete;

    const QString caption = QStringLiteral("Reports");
    ReportControl cry_report;
    QTimer cry_timer;
    QString lbl_ReportInfo;

    struct CheckBox {
        bool visible = false; // only a caller that prints memos shows it
        bool value = false;
    } chkMemo;
    const QString lblMemo = QStringLiteral("Show &Memos");
    // The key of section PAYMENTS under which the memo box's state is kept.
    QString memoKey = QStringLiteral("ShowMemos");
    // Shows the memo box, ticked as it was last left.
    void showMemoChoice();

    // cmdCry(0) prints to the screen, cmdCry(1) to the printer.
    void cmdCry_Click(int index);
    void StartPrint();
    void cry_timer_Timer();
    void PrintIt();
    void refreshsubreport();
    void cmd_goback_Click();
    void Form_Unload();

    // The blocking wait after the report has started; the tests replace it.
    std::function<void(int milliseconds)> wait;
    // The widget closes itself here.
    std::function<void()> onClose;

private:
    bool m_unloaded = false;
};

// Shows the report screen modally, owned by the active window; returns when it is closed. Without
// an installed way to show it (no desktop) nothing is shown and nothing prints.
using ReportScreenShow = std::function<void(ReportScreen&)>;
ReportScreenShow setReportScreenShow(ReportScreenShow show);
void ShowReportScreen(ReportScreen& screen);

} // namespace ql
