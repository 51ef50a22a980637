#pragma once
// What the system uses of a DAO recordset over one query: moves, EOF/BOF, RecordCount, FindFirst,
// fields by name or position, AddNew/Edit/Update/Delete, LastModified and bookmarks. The rows are read
// when the query opens (a snapshot); a dynaset writes changes back by the rowid of the row's table.
#include "runtime/Currency.h"
#include <QString>
#include <QVariant>
#include <memory>
#include <vector>

namespace ql {

class Database;

// The declared type of a query column, as DAO reports it.
enum class FieldType { Boolean = 1, Byte = 2, Integer = 3, Long = 4, Currency = 5, Single = 6, Double = 7,
                       Date = 8, Text = 10, Memo = 12 };

class Recordset {
public:
    virtual ~Recordset() = default;

    virtual bool EOF_() const = 0; // EOF is a C macro
    virtual bool BOF() const = 0;
    // Rows visited so far, as DAO counts them; exact after MoveLast.
    virtual int RecordCount() const = 0;
    virtual void MoveFirst() = 0;
    virtual void MoveNext() = 0;
    virtual void MovePrevious() = 0;
    virtual void MoveLast() = 0;
    // criterion: a WHERE-clause text over the query's columns ("PaymentTypeID = 3").
    virtual void FindFirst(const QString& criterion) = 0;
    virtual void FindNext(const QString& criterion) = 0;
    virtual bool NoMatch() const = 0;

    virtual int fieldCount() const = 0;
    virtual QString fieldName(int index) const = 0;
    virtual FieldType fieldType(int index) const = 0;
    virtual int fieldIndex(const QString& name) const = 0; // -1 when absent
    // Values typed by the column (Currency as ql::Currency, Single as float, Date as QDate, ...);
    // a missing column raises 3265 "Item not found in this collection."
    virtual QVariant value(const QString& name) const = 0;
    virtual QVariant value(int index) const = 0;
    virtual void setValue(const QString& name, const QVariant& v) = 0;
    virtual void setValue(int index, const QVariant& v) = 0;

    virtual void AddNew() = 0;
    virtual void Edit() = 0;
    virtual void Update() = 0;
    virtual void CancelUpdate() = 0;
    virtual void Delete() = 0;
    virtual QByteArray Bookmark() const = 0;
    virtual void setBookmark(const QByteArray& bookmark) = 0;
    virtual QByteArray LastModified() const = 0;
    virtual void Requery() = 0;
    virtual void Close() = 0;
};

} // namespace ql
