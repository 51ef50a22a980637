#pragma once
// The wage screen on the desktop: shows a WageScreen and forwards the user's events to it.
#include "WageScreen.h"
#include "ledger/MainForm.h"
#include <QHash>
#include <QWidget>

class QCalendarWidget;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

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

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    template <class F> void act(const char* location, F&& body);
    QLabel* label(const QString& name, QWidget* parent);
    QPushButton* button(const QString& name, QWidget* parent);
    void move(int how);

    WageScreen m_screen;
    QComboBox* m_cboEmployee = nullptr;
    QStackedWidget* m_stack = nullptr;
    QCalendarWidget* m_calendar = nullptr;
    WageGridWidget* m_grid = nullptr;
    QWidget* m_payePanel = nullptr;
    QLineEdit* m_txtPAYE = nullptr;
    QHash<QString, QLabel*> m_labels;
    QHash<QString, QPushButton*> m_buttons;
    QHash<QObject*, QString> m_clickable; // label widget -> the summary label it stands for
    bool m_refreshing = false;
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
