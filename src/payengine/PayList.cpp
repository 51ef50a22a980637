#include "PayList.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"

namespace ql {

struct PayList::Impl {
    Database* db = nullptr;
    QString sql;
    std::unique_ptr<Recordset> rs;
    int count = 0;
    int pos = -1; // -1 before the first row (BOF), count at the end (EOF)
    QMap<QString, QVariant> staged;

    bool onRow() const { return rs && pos >= 0 && pos < count; }
};

PayList::PayList() : d(std::make_unique<Impl>()) {}
PayList::~PayList() = default;

void PayList::setDatabase(Database* db) {
    d->db = db;
    d->rs.reset();
    d->count = 0;
    d->pos = -1;
    d->staged.clear();
}

void PayList::setRecordSource(const QString& sql) { d->sql = sql; }
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
    d->rs->Edit();
    try {
        for (auto it = values.cbegin(); it != values.cend(); ++it) {
            QVariant v = it.value();
            if (v.userType() == QMetaType::QString && v.toString().trimmed().isEmpty())
                v = Null();
            d->rs->setValue(it.key(), v);
        }
        d->rs->Update();
    } catch (...) {
        d->rs->CancelUpdate();
        throw;
    }
}

void PayList::Refresh() {
    if (!d->db || d->sql.isEmpty())
        raiseError(3021, QStringLiteral("DAO.Recordset"), QStringLiteral("No current record."));
    UpdateRecord();
    d->rs = d->db->openRecordset(d->sql, RecordsetType::Dynaset);
    d->count = 0;
    d->pos = 0;
    if (!d->rs->EOF_()) {
        d->rs->MoveLast();
        d->count = d->rs->RecordCount();
        d->rs->MoveFirst();
    }
    fireReposition();
}

void PayList::MoveFirst() {
    UpdateRecord();
    if (!d->rs || d->count == 0)
        raiseError(3021, QStringLiteral("DAO.Recordset"), QStringLiteral("No current record."));
    d->rs->MoveFirst();
    d->pos = 0;
    fireReposition();
}

void PayList::MoveLast() {
    UpdateRecord();
    if (!d->rs || d->count == 0)
        raiseError(3021, QStringLiteral("DAO.Recordset"), QStringLiteral("No current record."));
    d->rs->MoveLast();
    d->pos = d->count - 1;
    fireReposition();
}

void PayList::MoveNext() {
    UpdateRecord();
    if (!d->rs || d->pos >= d->count)
        raiseError(3021, QStringLiteral("DAO.Recordset"), QStringLiteral("No current record."));
    d->rs->MoveNext();
    ++d->pos;
    fireReposition();
}

void PayList::MovePrevious() {
    UpdateRecord();
    if (!d->rs || d->pos < 0)
        raiseError(3021, QStringLiteral("DAO.Recordset"), QStringLiteral("No current record."));
    d->rs->MovePrevious();
    --d->pos;
    fireReposition();
}

bool PayList::EOF_() const { return !d->rs || d->count == 0 || d->pos >= d->count; }
bool PayList::BOF() const { return !d->rs || d->count == 0 || d->pos < 0; }
int PayList::RecordCount() const { return d->count; }
int PayList::AbsolutePosition() const { return d->onRow() ? d->pos : -1; }

QVariant PayList::value(const QString& column) const {
    auto it = d->staged.constFind(column);
    if (it != d->staged.constEnd())
        return it.value();
    if (!d->onRow())
        return Null();
    return d->rs->value(column);
}

void PayList::stage(const QString& column, const QVariant& v) {
    if (d->onRow())
        d->staged.insert(column, v);
}

bool PayList::hasStaged() const { return !d->staged.isEmpty(); }

void PayList::setValueNow(const QString& column, const QVariant& v) {
    if (!d->onRow())
        raiseError(3021, QStringLiteral("DAO.Recordset"), QStringLiteral("No current record."));
    d->staged.remove(column);
    d->rs->Edit();
    try {
        d->rs->setValue(column, v);
        d->rs->Update();
    } catch (...) {
        d->rs->CancelUpdate();
        throw;
    }
}

void PayList::Delete() {
    if (!d->onRow())
        raiseError(3021, QStringLiteral("DAO.Recordset"), QStringLiteral("No current record."));
    d->staged.clear();
    const int at = d->pos;
    d->rs->Delete();
    // Read the list again so that count and position stay exact; stand where the deleted row stood.
    d->rs = d->db->openRecordset(d->sql, RecordsetType::Dynaset);
    d->count = 0;
    if (!d->rs->EOF_()) {
        d->rs->MoveLast();
        d->count = d->rs->RecordCount();
        d->rs->MoveFirst();
    }
    d->pos = 0;
    while (d->pos < at && d->pos < d->count) {
        d->rs->MoveNext();
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
