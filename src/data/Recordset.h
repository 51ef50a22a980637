#pragma once
// What the system uses of a DAO recordset over one query: moves, EOF/BOF, RecordCount, FindFirst,
// fields by name or position, AddNew/Edit/Update/Delete, LastModified and bookmarks. The rows are read
// when the query opens; a dynaset writes changes back by the rowid of the row's table (the table of
// the query's first column that comes from a table), a snapshot refuses changes (3027).
#include "runtime/Currency.h"
#include <QByteArray>
#include <QString>
#include <QVariant>
#include <memory>

namespace ql {

class Database;
struct Connection;
enum class RecordsetType;

// The declared type of a query column, as DAO reports it.
enum class FieldType {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Text = 10,
    Memo = 12
};

class Recordset {
public:
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    bool EOF_() const; // EOF is a C macro
    bool BOF() const;
    // Rows visited so far, as DAO counts them; exact after MoveLast.
    int RecordCount() const;
    // Moves discard a pending AddNew or Edit, as DAO does; moving past either end raises 3021.
    void MoveFirst();
    void MoveNext();
    void MovePrevious();
    void MoveLast();
    // criterion: a WHERE-clause text over the query's columns ("PaymentTypeID = 3"). A miss leaves the
    // current row where it was and sets NoMatch.
    void FindFirst(const QString& criterion);
    void FindNext(const QString& criterion);
    bool NoMatch() const;

    int fieldCount() const;
    QString fieldName(int index) const;
    FieldType fieldType(int index) const;
    // By name without regard to case, also "Table.Column"; -1 when absent.
    int fieldIndex(const QString& name) const;
    // Values typed by the column (Currency as ql::Currency, Single as float, Date as QDate, ...);
    // a missing column raises 3265 "Item not found in this collection."; no current row raises 3021.
    // During AddNew or Edit the values are those of the edit buffer.
    QVariant value(const QString& name) const;
    QVariant value(int index) const;
    // Converts to the column's type on store (text dates through CDate, text amounts through CCur);
    // outside AddNew/Edit raises 3020.
    void setValue(const QString& name, const QVariant& v);
    void setValue(int index, const QVariant& v);

    void AddNew();
    void Edit();
    void Update();
    void CancelUpdate();
    void Delete();
    bool isEditing() const; // an AddNew or Edit is pending
    QByteArray Bookmark() const;
    void setBookmark(const QByteArray& bookmark);
    // The bookmark of the row last added or changed; empty when none.
    QByteArray LastModified() const;
    void Requery();
    void Close();

private:
    friend class Database;
    Recordset(std::shared_ptr<Connection> conn, const QString& tableOrSql, RecordsetType type);
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace ql
