#pragma once
// datPays: the data source of the wage screen's pay list. It holds a query over Wages, a current row
// that moves, and the values that bound summary labels have staged for that row. Staged values are
// written to the row when the list stores its record: on every move, on Refresh, and on UpdateRecord.
// Each change of the current row (a move, a refresh, a delete) fires the reposition event.
#include "data/Database.h"
#include <QMap>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>

namespace ql {

class Recordset;

class PayList {
public:
    PayList();
    ~PayList();

    void setDatabase(Database* db);
    void setRecordSource(const QString& sql); // "SELECT Wages.* FROM Wages WHERE ... ORDER BY Wages.Date"
    const QString& recordSource() const;

    // Stores staged values, reruns the query, stands on the first row, fires the reposition event.
    void Refresh();
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    bool EOF_() const;
    bool BOF() const;
    int RecordCount() const;
    // Position of the current row counted from 0; -1 when there is none.
    int AbsolutePosition() const;

    // The current row's column, with its staged value if one is staged; Null at EOF/BOF.
    QVariant value(const QString& column) const;
    // Stages a value for the current row (what a bound control does when it changes).
    void stage(const QString& column, const QVariant& v);
    bool hasStaged() const;
    // Writes staged values into the current row now ("the list stores its current record").
    void UpdateRecord();
    // Forgets the values staged for the current row (its row is going).
    void discardStaged();
    // Edits one column of the current row and stores it at once (Edit, set, Update).
    void setValueNow(const QString& column, const QVariant& v);
    // Deletes the current row (the cascade removes its details); the list stands on the row that
    // followed, or at its end. Only a list left without rows fires the reposition event.
    void Delete();

    // The reposition event; the wage screen installs its handler.
    std::function<void()> onReposition;

private:
    void fireReposition();
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace ql
