#include "WageAccounts.h"
#include "data/PayeInfo.h"
#include "data/Recordset.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"

namespace ql {

bool CheckWageAccounts(Database& db) {
    bool complete = false;
    trap(QStringLiteral(" CheckWageAccounts"), [&] {
        auto info =
            db.openRecordset(QStringLiteral("Select Distinctrow Wageaccount, PayeAccount, PaymentAccount, "
                                            "AdjustAccount From Payeinfo"),
                             RecordsetType::Snapshot);
        auto accounts = db.openRecordset(QStringLiteral("Select Distinctrow  * from [Secondary codes] "),
                                         RecordsetType::Snapshot);
        bool found = true;
        if (!info->EOF_()) {
            for (int i = 0; i < 4 && found; ++i) {
                const QVariant account = info->value(i);
                if (IsNull(account)) {
                    found = false;
                } else {
                    accounts->FindFirst(QStringLiteral("[Secondary Codes ID] = ") + CStr(account));
                    found = !accounts->NoMatch();
                }
            }
        }
        info->Close();
        accounts->Close();
        complete = found;
    });
    return complete;
}

QString ShowPayeInfo(QObject* owner) {
    return runPayeInfoDialog(owner);
}

QString EnsureWageAccounts(QObject* owner) {
    QString result;
    Database farm;
    farm.open(DataFileName());
    if (!CheckWageAccounts(farm)) {
        for (;;) {
            result = ShowPayeInfo(owner);
            if (!result.isEmpty()) break;
            if (CheckWageAccounts(farm)) break;
            const qint16 answer =
                ShowMessage(QStringLiteral("Need account information to update the Cashbook\r\n\r\n"
                                           "OR Cancel then turn 'Update Cashbook' off to continue"),
                            msg::OKCancel, Firm(), QStringLiteral("Information Required"), QString(),
                            msg::Information, true);
            if (answer == msg::Cancel) {
                result = QStringLiteral("Cancelled");
                break;
            }
        }
    }
    farm.close();
    return result;
}

qint32 getWageCash() {
    qint32 value = 0;
    trap(QStringLiteral("getWageCash"), [&] {
        auto rs = App().WageDatabase.openRecordset(QStringLiteral("WageInfo"), RecordsetType::Snapshot);
        if (!rs->EOF_()) {
            const QVariant cash = rs->value(QStringLiteral("Cashbook"));
            if (!IsNull(cash) && CBool(cash)) value = 1;
        }
        rs->Close();
    });
    return value;
}

void SwitchWageCash(qint32 value) {
    trap(QStringLiteral("SwitchWageCash"), [&] {
        auto rs = App().WageDatabase.openRecordset(QStringLiteral("WageInfo"), RecordsetType::Dynaset);
        if (rs->EOF_())
            rs->AddNew();
        else
            rs->Edit();
        rs->setValue(QStringLiteral("Cashbook"), value != 0);
        rs->Update();
        rs->Close();
    });
}

} // namespace ql
