#pragma once
// What the pay engine reads and writes on the wage screen. The engine knows the screen's controls by
// their names ("lblGross", "lblpayment(10)", "txtPAYE", "cmdSelect(6)", "cmdPrintPay", "vsePAYE", ...);
// each control is a small state record. The summary labels are bound to columns of the current Wages
// row of datPays: setting a bound label's caption stages its value for that column, and a move of the
// list shows the new row's values as captions in the "Currency" format. The wage screen model
// (ledger/WageScreen) derives from this and implements the screen actions.
#include "PayList.h"
#include "data/GridArray.h"
#include <QHash>
#include <QString>
#include <QVariant>

namespace ql {

struct ControlState {
    QString caption;     // what the control shows (a label's caption, a text box's text, a button's caption)
    bool visible = true;
    bool enabled = true;
    bool locked = false; // text boxes
    bool down = false;   // checkable buttons (cmdSelect)
    quint32 backColor = 0xFFFFFF;
    quint32 foreColor = 0x000000;
    bool transparent = true;
    QVariant tag;        // a value a control keeps beside its caption (a combo's item data, a calendar's date)
};

class PayView {
public:
    PayView();
    virtual ~PayView();

    // The bound summary labels and their Wages columns.
    static const QHash<QString, QString>& boundLabels(); // "lblGross" -> "Gross", ...

    ControlState& control(const QString& name);
    const ControlState& control(const QString& name) const;
    QString caption(const QString& name) const { return control(name).caption; }
    // Sets a caption; on a bound summary label the caption's value is staged for its column and a plain
    // number is first shown in the "Currency" format, as the label formats itself when it changes.
    void setCaption(const QString& name, const QString& text);
    void setLabelValue(const QString& label, const QVariant& value); // shown in "Currency" format, staged

    // Shows the current row of datPays in the bound labels (0 in "Currency" format when the list is empty).
    void showBoundValues();

    PayList datPays;
    PayList datEmployee;         // the query of current employees
    GridArray WageGridArray;     // the lines of the open view
    QString PAYEText;            // the text of txtPAYE that stands as accepted

    // The text of cboEmployee: the shown employee's name as the list shows it.
    virtual QString employeeName() const { return caption(QStringLiteral("cboEmployee")); }
    // Asks whether to remove the shown employee from the payroll and does it; false when declined.
    virtual bool DeleteEmployee(const QString& /*employeeName*/) { return false; }
    // After a removal: InitData, FillEmployeeArray and, when anybody is left, FillEmployeeCombo.
    virtual void reloadEmployees() {}

    // Screen actions the engine starts. The wage screen model implements them.
    virtual void SelectLabel(const QString& label) = 0;     // the common start of a click on a summary label
    virtual void openView(int tab) = 0;                      // what a click on cmdSelect(tab) opens
    virtual void refreshGrid() {}                            // rebind and repaint the grid
    virtual void bringToFront(const QString& /*control*/) {}

private:
    QHash<QString, ControlState> m_controls;
};

// Whether the shown pay may be changed (App().PayEditable).
bool GetPayEditable();
void SetPayEditable(bool editable);

// Locks a committed pay's PAYE box in its pale colour; unlocks an editable one in the window colour.
void SetPAYELock(ControlState& textBox, bool editable);
constexpr quint32 LockedBoxColor = 0xE0FFFF;
constexpr quint32 WindowColor = 0x80000005; // the system's window colour

} // namespace ql
