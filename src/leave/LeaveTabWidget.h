#pragma once
// The leave tab of the wage screen: the five sub-tabs, tgrdLeave, the period, the option "Current
// Year"/"All Years" and the totals. It shows a LeaveScreen and forwards the user's events to it.
//
// The main window embeds it in its leave tab and calls:
//   entering()                  when its tab moves to the leave tab (option from AllLeave, page filled)
//   leaving()                   when its tab leaves the leave tab (save, then AllLeave stored)
//   saveBeforeEmployeeChange()  before cboEmployee changes the employee
//   loadEmployee()              after the change, when the leave tab is up
//   initLeave()                 on going to the address book from the leave tab and on its report back
//   save()                      when a title button is clicked (the save comes first)
//   unload(leaveTabUp)          in its unload
#include <QWidget>
#include <memory>

class QLabel;
class QLineEdit;
class QRadioButton;
class QTabBar;

namespace ql {

class LeaveScreen;
class LeaveGridWidget;
class HolidayPayWidget;

class LeaveTabWidget : public QWidget {
    Q_OBJECT
public:
    // With a screen model of its own.
    explicit LeaveTabWidget(QWidget* parent = nullptr);
    // Showing a model that the caller keeps (e.g. the wage screen's).
    explicit LeaveTabWidget(LeaveScreen& model, QWidget* parent = nullptr);
    ~LeaveTabWidget() override;
    LeaveScreen& screen() { return *m_screen; }
    LeaveGridWidget* grid() const { return m_grid; }
    HolidayPayWidget* holidayPay() const { return m_holidayPay; }

    void entering();
    void leaving();
    void saveBeforeEmployeeChange();
    void loadEmployee();
    void initLeave();
    void save();
    void unload(bool leaveTabUp);
    void nextPage(); // Ctrl+Tab: the next sub-tab, from the last to the first

    // Shows the model's state in the widgets.
    void refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    template <class F> void act(const char* location, F&& body);
    QLineEdit* totalBox(const QString& name, const QString& accessibleName);

    std::unique_ptr<LeaveScreen> m_own;
    LeaveScreen* m_screen;
    QTabBar* m_tabLeave = nullptr;
    LeaveGridWidget* m_grid = nullptr;
    QRadioButton* m_opt[2] = {nullptr, nullptr};
    QLabel* m_lblHired = nullptr;
    QLabel* m_lblfDate = nullptr;
    QLabel* m_lbltDate = nullptr;
    QLabel* m_lblCForward = nullptr;
    QLineEdit* m_txtLeaveCForward = nullptr;
    QLineEdit* m_txtLeaveAdded = nullptr;
    QLineEdit* m_txtLeaveTaken = nullptr;
    QLineEdit* m_txtLeaveAvailable = nullptr;
    QLineEdit* m_txtLeaveTotal = nullptr;
    HolidayPayWidget* m_holidayPay = nullptr; // the rate of a chosen leave and "Add leave to this pay"
    bool m_refreshing = false;
};

} // namespace ql
