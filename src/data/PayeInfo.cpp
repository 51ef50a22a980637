#include "PayeInfo.h"
#include "ComboModel.h"
#include "Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Trap.h"
#include <optional>

namespace ql {

namespace {

// Runs one statement of a procedure that skips failing statements, keeping the last failure.
template <class F> void step(std::optional<VbError>& last, F&& statement) {
    try {
        statement();
    } catch (const VbError& e) {
        last = e;
    } catch (const std::exception& e) {
        last = toVbError(e);
    }
}

int lengthOf(const QVariant& v) {
    if (IsNull(v)) return 0;
    if (v.userType() == QMetaType::QString) return int(v.toString().size());
    return int(CStr(v).size());
}

PayeInfoDialog& installedDialog() {
    static PayeInfoDialog dialog;
    return dialog;
}

// A recordset that failed to open is an object never set.
Recordset& opened(const std::unique_ptr<Recordset>& rs) {
    if (!rs)
        raiseError(91, QStringLiteral("Quillary"),
                   QStringLiteral("Object variable or With block variable not set"));
    return *rs;
}

} // namespace

QVariant LoadPayeInfo(Database& db, const QString& column, const QVariant& defaultValue) {
    std::optional<VbError> last;
    std::unique_ptr<Recordset> rs;
    QVariant result;
    step(last, [&] { rs = db.openRecordset(QStringLiteral("PayeInfo"), RecordsetType::Snapshot); });
    step(last, [&] {
        if (!opened(rs).EOF_()) {
            const QVariant v = opened(rs).value(column);
            if (!IsNull(v)) result = v;
        }
    });
    step(last, [&] {
        if (lengthOf(result) == 0) result = defaultValue;
    });
    step(last, [&] { opened(rs).Close(); });
    if (last) showSettingsError(*last, QStringLiteral("commoncode.payeinfo"));
    return result;
}

void SavePayeInfo(Database& db, const QString& column, const QVariant& value) {
    std::optional<VbError> last;
    std::unique_ptr<Recordset> rs;
    step(last, [&] { rs = db.openRecordset(QStringLiteral("PayeInfo"), RecordsetType::Dynaset); });
    step(last, [&] {
        if (opened(rs).EOF_())
            opened(rs).AddNew();
        else
            opened(rs).Edit();
    });
    step(last, [&] {
        switch (opened(rs).fieldType(opened(rs).fieldIndex(column))) {
        case FieldType::Long:
            opened(rs).setValue(column, CLng(value));
            break;
        case FieldType::Text:
            opened(rs).setValue(column, CStr(value));
            break;
        case FieldType::Date:
            opened(rs).setValue(column, CDate(value));
            break;
        case FieldType::Boolean:
            opened(rs).setValue(column, CBool(value));
            break;
        default:
            break;
        }
    });
    step(last, [&] { opened(rs).Update(); });
    step(last, [&] { opened(rs).Close(); });
    if (last && last->number() > 0) showSettingsError(*last, QStringLiteral("commoncode.savepayeinfo"));
}

void setPayeInfoDialog(PayeInfoDialog dialog) {
    installedDialog() = std::move(dialog);
}

QString runPayeInfoDialog(QObject* owner) {
    if (!installedDialog()) return QStringLiteral("Cancelled");
    return installedDialog()(owner);
}

} // namespace ql
