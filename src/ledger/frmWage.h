#pragma once
// The wage screen on the desktop: shows a WageScreen and forwards the user's events to it.
#include "WageScreen.h"
#include "ledger/MainForm.h"
#include <QHash>
#include <QPointer>
#include <QWidget>
#include <functional>

class QCalendarWidget;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTabWidget;
class QToolButton;
class QVBoxLayout;

namespace ql {

class WageGridWidget;

class frmWage : public QWidget {
    Q_OBJECT
public:
    explicit frmWage(QWidget* parent = nullptr);
    ~frmWage() override;
    WageScreen& screen() { return m_screen; }
    // Shows the model's state in the widgets.
    void refresh();
    void reloadGrid();

    // The title strip's buttons: 0 Modules, 1 Tools, 2 Reports, 3 Help. A QMenu set on a button
    // (setMenu) opens on its click and on Ctrl+M, Ctrl+T, Ctrl+R, Ctrl+H.
    QToolButton* titleButton(int index) const;
    // Runs before a title button's menu opens (after the leave grid is saved); index as above.
    std::function<void(int)> titleBarClick;

    // The "Pay Run" button of the footer (Alt+R): shown once the main window gives it something to do.
    void setPayRun(std::function<void()> run);
    QPushButton* payRunButton() const { return m_cmdPayRun; }

    // The leave ledger's page (tab 1): the widget is put into the page, which owns it from then on.
    // Its tab strip of the five kinds, when named "tabLeave" (a QTabWidget or QTabBar), is what
    // Ctrl+Tab steps through.
    void setLeaveWidget(QWidget* leave);
    QWidget* leaveWidget() const { return m_leave; }
    QTabWidget* tabMain() const { return m_tabMain; }

    // The controls by their names, for the main window's wiring and for tests.
    QPushButton* commandButton(const QString& name) const { return m_buttons.value(name); }
    QLabel* labelControl(const QString& name) const { return m_labels.value(name); }

    // The main window's first look: the skin, a size that fits the screen, centred.
    void applyLook();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    template <class F> void act(const char* location, F&& body);
    QLabel* label(const QString& name, QWidget* parent, const QString& accessibleName = QString());
    QPushButton* button(const QString& name, QWidget* parent, const QString& accessibleName);
    QWidget* buildTitleStrip();
    QWidget* buildSummary(QWidget* parent);
    QWidget* buildViews(QWidget* parent);
    QWidget* buildFooter();
    void connectEvents();
    void setTabOrders();
    void move(int how);
    void tabMainChanged(int index);
    void showTitleMenu(int index);
    void nextLeavePage();
    bool formKey(QObject* watched, QKeyEvent* key);
    void showMemo();
    void showAddEdit();
    void showCommit();
    void showQuickView();
    void refreshCombo();

    WageScreen m_screen;
    QWidget* m_titleStrip = nullptr;
    QLabel* m_title = nullptr;
    QToolButton* m_titleButtons[4] = {};
    QComboBox* m_cboEmployee = nullptr;
    QTabWidget* m_tabMain = nullptr;
    QWidget* m_leavePage = nullptr;
    QVBoxLayout* m_leaveLayout = nullptr;
    QWidget* m_leave = nullptr;
    QLabel* m_leavePlaceholder = nullptr;
    QStackedWidget* m_stack = nullptr;
    QCalendarWidget* m_calendar = nullptr;
    WageGridWidget* m_grid = nullptr;
    QWidget* m_payePanel = nullptr;
    QLineEdit* m_txtPAYE = nullptr;
    QHash<QString, QLabel*> m_labels;
    QHash<QString, QString> m_labelNames; // each label's accessible name as made, without its amount
    QHash<QString, QPushButton*> m_buttons;
    QPushButton* m_cmdPayRun = nullptr;
    std::function<void()> m_payRun;
    QHash<QObject*, QString> m_clickable; // label widget -> the summary label it stands for
    QPointer<QWidget> m_history;          // the wage history, open beside the screen
    int m_shownTab = 0;
    bool m_refreshing = false;
    bool m_switching = false;
};

// The main form as start-up sees it.
class WageMainForm : public MainForm {
public:
    WageMainForm();
    ~WageMainForm() override;
    PayView& view() override;
    void setTitle(const QString& title) override;
    QString title() const override;
    void show() override;
    void close() override;
    void GotMessage(qint32 wParam) override;
    frmWage* widget() const { return m_form; }

private:
    frmWage* m_form;
};

} // namespace ql
