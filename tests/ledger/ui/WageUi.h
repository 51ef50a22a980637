#pragma once
// A fixture that starts the program's main screen offscreen on fresh databases, with helpers to reach
// its controls, press keys and answer modal dialogs.
#include "PayrollRows.h"
#include "TestEnv.h"
#include "frame/Messages.h"
#include "ledger/WageGridWidget.h"
#include "ledger/frmWage.h"
#include "startup/Startup.h"
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

namespace qltest {

class WageUiTest : public DocumentsTest {
protected:
    std::unique_ptr<PayrollRows> rows = std::make_unique<PayrollRows>();
    ql::frmWage* w = nullptr;
    qint64 hale = 0;
    qint64 haleAddress = 0;

    void SetUp() override {
        docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"), "[WINDOWS]\r\nCountry=64\r\n");
        ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName()).close();
        ql::installErrorReporter();
        haleAddress = rows->address(QStringLiteral("Hale"), QStringLiteral("Mere"));
        hale = rows->employee(haleAddress);
    }
    void TearDown() override {
        ql::UnloadAllForms();
        ql::setMainFormFactory(nullptr);
    }
    // Starts the program as the suite's menu does and shows the main window at a size.
    void start(QSize size = QSize(1000, 680)) {
        ql::setMainFormFactory([] { return std::make_unique<ql::WageMainForm>(); });
        ASSERT_TRUE(ql::Main(QStringLiteral("Quillary")));
        w = static_cast<ql::WageMainForm*>(ql::mainForm())->widget();
        w->resize(size);
        w->activateWindow();
        QApplication::setActiveWindow(w);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(w));
        ASSERT_TRUE(QTest::qWaitForWindowActive(w)); // access keys need an active window
    }
    ql::WageScreen& screen() { return w->screen(); }
    template <class T> T* child(const QString& name) const { return w->findChild<T*>(name); }
    QPushButton* button(const QString& name) const { return child<QPushButton>(name); }
    QString text(const QString& label) const { return child<QLabel>(label)->text(); }
    ql::WageGridWidget* grid() const { return child<ql::WageGridWidget>(QStringLiteral("tgrdwages")); }
    QWidget* shownView() const {
        return child<QStackedWidget>(QStringLiteral("vseWageDisplay"))->currentWidget();
    }
    int pays() const { return rows->wage.scalar(QStringLiteral("SELECT COUNT(*) FROM Wages")).toInt(); }

    // The last message with this heading, or nullptr.
    const ql::DialogCall* last(const QString& heading) const {
        for (qsizetype i = rows->dialogs.calls.size() - 1; i >= 0; --i)
            if (rows->dialogs.calls.at(i).heading == heading) return &rows->dialogs.calls.at(i);
        return nullptr;
    }
    int messages(const QString& heading) const {
        int n = 0;
        for (const ql::DialogCall& c : rows->dialogs.calls)
            n += c.heading == heading;
        return n;
    }
    // Makes the shown pay committed, as a commit would leave it, and shows it again.
    void commitShownPay(const QString& reference) {
        rows->wage.execute(QStringLiteral("UPDATE Wages SET Reference = ? WHERE WageID = ?"),
                           {reference, ql::App().CurrentWageID});
        screen().SetEmployee();
        w->refresh();
    }

public:
    // Runs handle on the next modal dialog once it is up (a dialog's exec() blocks the caller).
    static void onNextModal(std::function<void(QWidget*)> handle) {
        auto* timer = new QTimer;
        timer->setInterval(10);
        QObject::connect(timer, &QTimer::timeout, [timer, handle] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                timer->stop();
                timer->deleteLater();
                handle(modal);
            }
        });
        timer->start();
    }

protected:
    static void settle() { QApplication::processEvents(); }
    // Presses a key on whatever has the focus in the window.
    void key(Qt::Key k, Qt::KeyboardModifiers mods = Qt::NoModifier) {
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : w;
        QTest::keyClick(target, k, mods);
        if (mods & Qt::AltModifier)
            QTest::qWait(250); // an access key presses its button after the button's short animation
    }
    // Types each character into whatever has the focus at that moment, as keys arrive from a keyboard.
    void type(const QString& keys) {
        for (QChar c : keys) {
            QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : w;
            QTest::keyClicks(target, QString(c));
        }
    }
};

} // namespace qltest
