#include "ComboModel.h"
#include "Recordset.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "runtime/Convert.h"

namespace ql {

void showSettingsError(const VbError& e, const QString& place) {
    const QString number = QString::number(e.number());
    ShowMessage(QStringLiteral("Description - ") + e.description() + u'(' + number +
                    QStringLiteral(") was generated in ") + place,
                msg::OKOnly, Firm() + QStringLiteral(" Error"), QStringLiteral("An Error has Occurred"),
                QStringLiteral("Error ") + number, msg::Information, false);
}

namespace {

bool idEquals(const QVariant& id, qint32 value) {
    return !IsNull(id) && IsNumeric(id) && CDbl(id) == double(value);
}

} // namespace

void FillDaoVBCombo(const QString& sql, ComboModel& combo, Database& database, qint32 selected, bool addNone,
                    const QString& noneText, bool matchText, bool useItemData, bool keepSelection) {
    std::unique_ptr<Recordset> rs;
    try {
        rs = database.openRecordset(sql, RecordsetType::Snapshot);
        const QString none = noneText.isEmpty() ? QStringLiteral("None") : noneText;
        const int textColumn = useItemData ? 1 : 0;
        combo.clear();
        if (addNone) {
            const int i = combo.addItem(none);
            if (useItemData) combo.setItemData(i, 0);
        }
        int marked = -1;
        while (!rs->EOF_()) {
            const QVariant text = rs->value(textColumn);
            if (!IsNull(text)) {
                const int i = combo.addItem(CStr(text));
                const QVariant id = rs->value(0);
                if (useItemData) combo.setItemData(i, CLng(id));
                if (selected != 0 && idEquals(id, selected))
                    marked = i;
                else if (selected == 0 && matchText && idEquals(id, 0))
                    marked = i;
            }
            rs->MoveNext();
        }
        if (!keepSelection && combo.count() > 0 && marked >= 0) combo.setSelectedIndex(marked);
        rs->Close();
    } catch (const VbError& e) {
        showSettingsError(e, QStringLiteral("CommonCode.DAOVBCombo FillDaoVBCombo"));
    }
}

} // namespace ql
