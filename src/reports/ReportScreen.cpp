#include "ReportScreen.h"
#include "ReportDriver.h"
#include "ReportLayout.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "frame/Texts.h"
#include "runtime/Trap.h"
#include <QCoreApplication>
#include <QFileInfo>
#include <QThread>

namespace ql {

namespace {
ReportScreenShow& shower() {
    static ReportScreenShow s;
    return s;
}
} // namespace

ReportScreen::ReportScreen() {
    cry_timer.setInterval(1000);
    QObject::connect(&cry_timer, &QTimer::timeout, &cry_timer, [this] { cry_timer_Timer(); });
    wait = [](int ms) { QThread::msleep(ms); };
}

ReportScreen::~ReportScreen() {
    Form_Unload();
}

void ReportScreen::showMemoChoice() {
    chkMemo.visible = true;
    skipErrors([&] {
        chkMemo.value = ReadIni(QStringLiteral("PAYMENTS"), memoKey, FamilyFile()).toUpper() == u'Y';
    });
}

void ReportScreen::cmdCry_Click(int index) {
    QCoreApplication::processEvents();
    cry_report.Destination = index;
    StartPrint();
}

void ReportScreen::StartPrint() {
    cry_timer.start(1000);
}

// The report starts from the timer, not from the click; the timer stops only after the wait, so that
// it cannot fire a second time while the report starts.
void ReportScreen::cry_timer_Timer() {
    PrintIt();
    if (wait) wait(1000);
    cry_timer.stop();
}

void ReportScreen::PrintIt() {
    try {
        const int next = NextFormula(cry_report);
        if (chkMemo.visible)
            cry_report.setFormulas(next, QStringLiteral("memo=") + (chkMemo.value ? u'1' : u'0'));
        UseCustomizedHeadings(cry_report);
        cry_report.WindowState = 2;
        cry_report.DiscardSavedData = true;
        while (true) {
            try {
                cry_report.setAction(1);
                break;
            } catch (const VbError& e) {
                if (e.number() != rpterr::DatabaseBusy) throw;
                // The suite's account reports are tried once more on their own; this screen leaves it
                // to the user.
                if (ShowMessage(QStringLiteral("Access Database problem.  Try report again"), 4, Firm(),
                                QStringLiteral("Database error"), QString(), 6, true) != 6)
                    return;
            }
        }
    } catch (const VbError& e) {
        if (e.number() == rpterr::DatabaseFailure) {
            ShowMessage(
                TranslateText(
                    QStringLiteral("Error '|0|' while viewing |1|.  Database may need to be verified."),
                    QStringList{e.description(), QFileInfo(cry_report.ReportFileName).fileName()}),
                0, Firm(), QStringLiteral("An Error has Occurred"), QString(), 6, true);
            return;
        }
        setErrNumber(e.number());
        ReportError(e.description(), QStringLiteral("Crystal"), QStringLiteral("PrintIt"),
                    QStringLiteral("An Error has Occurred"), 0, true);
    } catch (const std::exception& e) {
        const VbError v = toVbError(e);
        setErrNumber(v.number());
        ReportError(v.description(), QStringLiteral("Crystal"), QStringLiteral("PrintIt"),
                    QStringLiteral("An Error has Occurred"), 0, true);
    }
}

void ReportScreen::refreshsubreport() {
    trap(QStringLiteral("RefreshSubReport"), [&] {
        cry_report.WindowState = 2;
        cry_report.DiscardSavedData = true;
        cry_report.setAction(1);
    });
}

void ReportScreen::cmd_goback_Click() {
    Form_Unload();
    if (onClose) onClose();
}

void ReportScreen::Form_Unload() {
    if (m_unloaded) return;
    m_unloaded = true;
    cry_timer.stop();
    if (chkMemo.visible)
        skipErrors([&] {
            WriteSetting(QStringLiteral("PAYMENTS"), memoKey,
                         chkMemo.value ? QStringLiteral("Y") : QStringLiteral("N"));
        });
}

ReportScreenShow setReportScreenShow(ReportScreenShow show) {
    ReportScreenShow previous = shower();
    shower() = std::move(show);
    return previous;
}

void ShowReportScreen(ReportScreen& screen) {
    if (shower()) shower()(screen);
    screen.Form_Unload();
}

} // namespace ql
