#include "PayList.h"
#include "data/PayFreeze.h"
#include "runtime/VbError.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <QRegularExpression>

namespace ql {

namespace {

[[noreturn]] void noCurrentRecord() {
    raiseError(3021, QStringLiteral("DAO.Recordset"), QStringLiteral("No current record."));
}

} // namespace

// A list over the pays of Wages holds only their keys, in the query's order, and reads the row it
// stands on when it gets there: picking an employee with years of pays costs about what one with a few
// weeks does. Another query is read whole, as before.
struct PayList::Impl {
    Database* db = nullptr;
    QString sql;
    QString keySql; // the query's keys, in its order; empty when the query is not over Wages alone
    QList<qint32> keys;
    std::unique_ptr<Recordset> rs; // the whole query, or the current row of a keyed list
    int rowOf = -1;                // the position whose row rs holds, in a keyed list
    bool loaded = false; // read since the database was set
    int count = 0;
    int pos = -1; // -1 before the first row (BOF), count at the end (EOF)
    QMap<QString, QVariant> staged;

    bool keyed() const { return !keySql.isEmpty(); }
    bool onRow() const { return loaded && pos >= 0 && pos < count; }

    // The recordset standing on the current row (only while onRow()).
    Recordset* current() {
        if (!keyed()) return rs.get();
        if (rowOf != pos) {
            rs = db->openRecordset(
                QStringLiteral("SELECT Wages.* FROM Wages WHERE Wages.WageID = %1").arg(keys.at(pos)),
                RecordsetType::Dynaset);
            rowOf = pos;
        }
        if (rs->EOF_()) // removed by someone else since the list was read
            raiseError(3167, QStringLiteral("DAO.Recordset"), QStringLiteral("Record is deleted."));
        return rs.get();
    }

    void load() {
        loaded = false; // until the read succeeds
        rs.reset();
        rowOf = -1;
        keys.clear();
        count = 0;
        if (keyed()) {
            const QVariantList stored = db->firstColumn(keySql);
            keys.reserve(stored.size());
            for (const QVariant& key : stored) keys.append(qint32(key.toLongLong())); // an integer key
            count = int(keys.size());
            loaded = true;
            return;
        }
        rs = db->openRecordset(sql, RecordsetType::Dynaset);
        if (!rs->EOF_()) {
            rs->MoveLast();
            count = rs->RecordCount();
            rs->MoveFirst();
        }
        loaded = true;
    }
};

PayList::PayList() : d(std::make_unique<Impl>()) {}
PayList::~PayList() = default;

void PayList::setDatabase(Database* db) {
    d->db = db;
    d->rs.reset();
    d->loaded = false;
    d->rowOf = -1;
    d->keys.clear();
    d->count = 0;
    d->pos = -1;
    d->staged.clear();
}

void PayList::setRecordSource(const QString& sql) {
    d->sql = sql;
    static const QRegularExpression wagesOnly(
        QStringLiteral("^\\s*SELECT\\s+Wages\\.\\*\\s+FROM\\s+Wages(\\s+(WHERE|ORDER)\\b.*)?$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch m = wagesOnly.match(sql);
    d->keySql = m.hasMatch() ? QStringLiteral("SELECT Wages.WageID FROM Wages") + m.captured(1) : QString();
}
const QString& PayList::recordSource() const { return d->sql; }

void PayList::UpdateRecord() {
    if (d->staged.isEmpty())
        return;
    if (!d->onRow()) {
        d->staged.clear();
        return;
    }
    // The values leave the stage before the store, so that a failing store is not repeated forever.
    const QMap<QString, QVariant> values = std::exchange(d->staged, {});
    Recordset* rs = d->current();
    rs->Edit();
    try {
        for (auto it = values.cbegin(); it != values.cend(); ++it) {
            QVariant v = it.value();
            if (v.userType() == QMetaType::QString && v.toString().trimmed().isEmpty())
                v = Null();
            rs->setValue(it.key(), v);
        }
        rs->Update();
    } catch (const VbError& e) {
        rs->CancelUpdate();
        // What the labels show of a committed or posted pay is never written over its figures.
        if (e.description().contains(frozenPayText())) return;
        throw;
    } catch (...) {
        rs->CancelUpdate();
        throw;
    }
}

void PayList::Refresh() {
    if (!d->db || d->sql.isEmpty())
        noCurrentRecord();
    UpdateRecord();
    d->load();
    d->pos = 0;
    fireReposition();
}

void PayList::MoveFirst() {
    UpdateRecord();
    if (!d->loaded || d->count == 0)
        noCurrentRecord();
    if (!d->keyed()) d->rs->MoveFirst();
    d->pos = 0;
    fireReposition();
}

void PayList::MoveLast() {
    UpdateRecord();
    if (!d->loaded || d->count == 0)
        noCurrentRecord();
    if (!d->keyed()) d->rs->MoveLast();
    d->pos = d->count - 1;
    fireReposition();
}

void PayList::MoveNext() {
    UpdateRecord();
    if (!d->loaded || d->pos >= d->count)
        noCurrentRecord();
    if (!d->keyed()) d->rs->MoveNext();
    ++d->pos;
    fireReposition();
}

void PayList::MovePrevious() {
    UpdateRecord();
    if (!d->loaded || d->pos < 0)
        noCurrentRecord();
    if (!d->keyed()) d->rs->MovePrevious();
    --d->pos;
    fireReposition();
}

bool PayList::EOF_() const { return !d->loaded || d->count == 0 || d->pos >= d->count; }
bool PayList::BOF() const { return !d->loaded || d->count == 0 || d->pos < 0; }
int PayList::RecordCount() const { return d->count; }
int PayList::AbsolutePosition() const { return d->onRow() ? d->pos : -1; }

QVariant PayList::value(const QString& column) const {
    auto it = d->staged.constFind(column);
    if (it != d->staged.constEnd())
        return it.value();
    if (!d->onRow())
        return Null();
    // The key is known without reading the row: walking the list for a pay reads no rows.
    if (d->keyed() && (column.compare(QLatin1String("WageID"), Qt::CaseInsensitive) == 0 ||
                       column.compare(QLatin1String("Wages.WageID"), Qt::CaseInsensitive) == 0))
        return QVariant(d->keys.at(d->pos));
    return d->current()->value(column);
}

void PayList::stage(const QString& column, const QVariant& v) {
    if (d->onRow())
        d->staged.insert(column, v);
}

bool PayList::hasStaged() const { return !d->staged.isEmpty(); }

void PayList::discardStaged() {
    d->staged.clear();
}

void PayList::setValueNow(const QString& column, const QVariant& v) {
    if (!d->onRow())
        noCurrentRecord();
    d->staged.remove(column);
    Recordset* rs = d->current();
    rs->Edit();
    try {
        rs->setValue(column, v);
        rs->Update();
    } catch (...) {
        rs->CancelUpdate();
        throw;
    }
}

void PayList::Delete() {
    if (!d->onRow())
        noCurrentRecord();
    d->staged.clear();
    const int at = d->pos;
    d->current()->Delete();
    // Read the list again so that count and position stay exact; stand where the deleted row stood.
    d->load();
    d->pos = 0;
    while (d->pos < at && d->pos < d->count) {
        if (!d->keyed()) d->rs->MoveNext();
        ++d->pos;
    }
    if (d->count == 0)
        fireReposition();
}

void PayList::fireReposition() {
    if (onReposition)
        onReposition();
}

} // namespace ql
