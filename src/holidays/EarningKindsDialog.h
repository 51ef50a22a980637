#pragma once
// Kinds of earnings on the screen: every payment, allowance and one-off name with its kind, which the
// user changes through the kind box below the list; Save writes the changed kinds together.
#include "NamedKinds.h"
#include <QDialog>

class QComboBox;
class QLabel;
class QTableWidget;

namespace ql {

class Database;

class EarningKindsDialog : public QDialog {
    Q_OBJECT
public:
    explicit EarningKindsDialog(Database& wage, QWidget* parent = nullptr);
    QTableWidget* table() const { return m_table; }
    QComboBox* kindBox() const { return m_kind; }
    // The row of a name, or -1.
    int rowOf(const QString& table, qint32 id) const;
    // The kind chosen for a row (saved or not).
    holidays::EarningKind chosenKind(int row) const { return m_chosen.at(row); }
    int changedCount() const;
    // Writes the changed kinds in one transaction; false when refused (the message was shown and
    // nothing was written).
    bool save();
    void accept() override;

private:
    void showRow(int row);
    void showChoice();

    Database& m_wage;
    QList<holidays::NamedKind> m_names;
    QList<holidays::EarningKind> m_chosen;
    QTableWidget* m_table = nullptr;
    QComboBox* m_kind = nullptr;
    QLabel* m_counts = nullptr;
    bool m_showing = false;
};

// Opens the dialog modally; true when kinds were saved.
bool ShowEarningKinds(Database& wage, QWidget* owner);

} // namespace ql
