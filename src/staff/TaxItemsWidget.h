#pragma once
// The employee editor's box of the employee's tax items: ESCT rate, child support, payroll giving and
// the student loan's special rate, commissioner's rate and extra deductions. Typed as on the command
// line, checked by the same rules, saved after the employee with the standing lines they stand for.
#include <QGroupBox>
#include <QHash>
#include <QString>

class QLineEdit;

namespace ql {

class Database;

class TaxItemsWidget : public QGroupBox {
    Q_OBJECT
public:
    // takenKeys: the access keys the editor has given out; the box takes its own from what is left.
    TaxItemsWidget(QString& takenKeys, QWidget* parent = nullptr);
    void load(Database& wage, qint32 employeeID);
    // The problem of what is typed (empty when none) and the option of the box it is in.
    QString problem(QString& option) const;
    // Stores the items typed for the (just saved) employee and puts back the standing lines of those
    // above 0. Call only after problem() found none.
    void save(Database& wage, qint32 employeeID) const;
    QLineEdit* field(const QString& option) const { return m_boxes.value(option); }
    QWidget* firstField() const;
    QWidget* lastField() const;

private:
    QList<QPair<QString, QString>> typedValues() const;

    QHash<QString, QLineEdit*> m_boxes;
    QString m_esctShown; // the ESCT rate as loaded: set again only when it was changed
};

} // namespace ql
