#pragma once
// The list of the wage history, read as it is shown. The load counts the pays and adds up their
// figures in one pass over the index of an employee's pays; the cells of a page of rows are read when
// one of them is first asked for. So a long history opens about as fast as a short one, and a grid
// reads only the rows it paints.
#include "runtime/Currency.h"
#include <QString>
#include <QStringList>
#include <QVariant>
#include <array>
#include <vector>

namespace ql {

class Database;

class QuickViewRows {
public:
    static constexpr int PageSize = 64;

    // The pays of Wages that `where` selects ("EmployeeID = 1 AND ..."), by date or in the order of
    // entry (WageID). Failures raise; the rows are then those of the last load that succeeded.
    void load(Database& database, const QString& where, bool dateOrder);

    int rowCount() const { return m_rowCount; }
    int columnCount() const { return 10; }
    // A cell as the query gives it; out of range raises 9, Subscript out of range.
    QVariant value(int row, int column) const;
    // Beside the ten columns, read with them: the pay's reference (null while it is not committed) and
    // the date it was paid. Out of range raises as value does.
    QVariant reference(int row) const;
    QVariant paymentDate(int row) const;
    // The exact sum of the numeric cells of column 1 to 9 over all rows.
    Currency total(int column) const;
    // Whether the database may have changed since the load (by this connection or another); a page
    // read after such a change marks the rows stale, as they may then disagree with the count and
    // the totals until the next load.
    bool changedSinceLoad() const;
    bool stale() const { return m_stale; }

    void setHeadings(const QStringList& captions) { m_headings = captions; }
    QStringList headings() const { return m_headings; }
    bool editable() const { return false; }

private:
    void readPage(int page) const;
    struct Stamp {
        qint64 changes = -1;
        qint64 dataVersion = -1;
        bool operator==(const Stamp&) const = default;
    };
    Stamp stamp() const;

    Database* m_database = nullptr;
    QString m_where;
    bool m_dateOrder = true;
    int m_rowCount = 0;
    std::array<Currency, 10> m_totals{};
    QStringList m_headings;
    QVariant cell(int row, int index) const;
    // The ten columns, then Reference and PaymentDate.
    static constexpr int Stride = 12;

    mutable std::vector<std::vector<QVariant>> m_pages; // PageSize rows of Stride cells; empty until read
    Stamp m_loaded;
    mutable bool m_stale = false;
};

} // namespace ql
