// The wage screen and other processes writing the same payroll file.
#include "WageScreen.h"
#include "data/PayFreeze.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"
#include <utility>

namespace ql {

void WageScreen::standOnAgain(qint32 wageID) {
    skipErrors([&] {
        datPays.Refresh();
        for (datPays.MoveFirst(); !datPays.EOF_(); datPays.MoveNext())
            if (CLng(datPays.value(QStringLiteral("WageID"))) == wageID) break;
        if (datPays.EOF_() && datPays.RecordCount() > 0) datPays.MoveLast();
    });
}

bool WageScreen::payrollWriteLocked() {
    Database& db = App().WageDatabase;
    if (!db.isOpen() || db.inTransaction()) return false;
    try {
        db.beginWriteTrans();
        db.rollback();
    } catch (const VbError& e) {
        return e.number() == 3260;
    }
    return false;
}

bool WageScreen::followOtherWriters(bool wholeList) {
    Database& db = App().WageDatabase;
    if (!db.isOpen()) return false;
    // The version moves only with commits made through other connections, never with this one's own.
    qint64 version = -1;
    skipErrors([&] { version = db.scalar(QStringLiteral("PRAGMA data_version")).toLongLong(); });
    if (version < 0) return false;
    const qint64 seen = std::exchange(m_dataVersion, version);
    if (seen == version) return false;
    // Without an earlier version to compare, only the shown pay is looked at.
    if (seen < 0) wholeList = false;
    const QVariant id = datPays.value(QStringLiteral("WageID"));
    if (IsNull(id)) return false;
    const qint32 wageID = CLng(id);
    bool stale = wholeList;
    if (!stale) {
        skipErrors([&] {
            const QVariantList now = db.firstRow(
                QStringLiteral("SELECT Reference, PaymentDate FROM Wages WHERE WageID = %1").arg(wageID));
            auto text = [](const QVariant& v) { return IsNull(v) ? QString() : v.toString(); };
            stale = now.isEmpty() || text(now.at(0)) != text(datPays.value(QStringLiteral("Reference"))) ||
                    (text(now.at(0)).isEmpty() && PayFrozen(db, wageID));
        });
    }
    if (!stale) return false;
    standOnAgain(wageID);
    changed();
    return true;
}

} // namespace ql
