#pragma once
// A list box or combo box without the widget: entries with text and item data, and the selected
// index. Screens show it; FillDaoVBCombo fills it from a query.
#include "Database.h"
#include "runtime/VbError.h"
#include <QList>
#include <QString>

namespace ql {

class ComboModel {
public:
    struct Item {
        QString text;
        qint32 itemData = 0;
    };

    void clear() {
        m_items.clear();
        m_selected = -1;
    }
    // Adds an entry and returns its index (NewIndex).
    int addItem(const QString& text, qint32 itemData = 0) {
        m_items.append(Item{text, itemData});
        return int(m_items.size()) - 1;
    }
    int count() const { return int(m_items.size()); }
    const Item& item(int index) const { return m_items.at(index); }
    QString text(int index) const { return m_items.at(index).text; }
    qint32 itemData(int index) const { return m_items.at(index).itemData; }
    void setItemData(int index, qint32 data) { m_items[index].itemData = data; }
    int selectedIndex() const { return m_selected; } // -1 when none
    void setSelectedIndex(int index) { m_selected = (index >= 0 && index < count()) ? index : -1; }
    QString selectedText() const { return m_selected >= 0 ? text(m_selected) : QString(); }

private:
    QList<Item> m_items;
    int m_selected = -1;
};

// Fills combo from sql on database: column 0 is the id, the text is column 1 with useItemData, else
// column 0. addNone puts noneText ("None" when empty) first, with item data 0. The entry whose id
// equals selected (or, with selected 0 and matchText, whose id is 0) is selected unless keepSelection.
// Errors are shown in the message form of the tax settings, place "CommonCode.DAOVBCombo FillDaoVBCombo".
void FillDaoVBCombo(const QString& sql, ComboModel& combo, Database& database, qint32 selected, bool addNone,
                    const QString& noneText, bool matchText, bool useItemData, bool keepSelection);

// The report form of the tax-settings procedures: a message box rather than the error dialog,
// naming the place of the failure.
void showSettingsError(const VbError& e, const QString& place);

} // namespace ql
