#include "QuickViewRows.h"
#include "data/Database.h"
#include "data/RowReader.h"
#include "runtime/VbError.h"
#include <algorithm>
#include <cstring>
#include <sqlite3.h>

namespace ql {

namespace {
// The ten columns of the list after the key; Net is calculated as the list shows it.
const QString kColumns = QStringLiteral(
    "Date, Hours, Gross, TaxAllow, PAYE, [TotalTaxable]-[PAYE] AS Net, NonTaxAllow, Deductions, takehome, "
    "KiwiSaverContribution");
// Whether each pay is committed, and with which reference and date, read with the page.
const QString kCommitColumns = QStringLiteral(", Reference, PaymentDate");
} // namespace

void QuickViewRows::load(Database& database, const QString& where, bool dateOrder) {
    // Hours are a Single, Net a Double, the rest Currency.
    const QVariantList first = database.firstRow(
        QStringLiteral("SELECT count(*), cursums('S', Hours, Gross, TaxAllow, PAYE, [TotalTaxable]-[PAYE], "
                       "NonTaxAllow, Deductions, takehome, KiwiSaverContribution) FROM Wages WHERE ") +
        where);
    const QByteArray sums = first.value(1).toByteArray();
    std::array<Currency, 10> totals{};
    for (int c = 1; c < columnCount() && sums.size() >= qsizetype(c * sizeof(std::int64_t)); ++c) {
        std::int64_t raw = 0;
        std::memcpy(&raw, sums.constData() + (c - 1) * sizeof(std::int64_t), sizeof raw);
        totals[size_t(c)] = Currency::fromRaw(raw);
    }
    m_database = &database;
    m_where = where;
    m_dateOrder = dateOrder;
    m_rowCount = int(first.value(0).toLongLong());
    m_totals = totals;
    m_pages.assign(size_t((m_rowCount + PageSize - 1) / PageSize), {});
    m_loaded = stamp();
    m_stale = false;
}

// The rows this connection has changed, and SQLite's count of changes by other connections.
QuickViewRows::Stamp QuickViewRows::stamp() const {
    if (!m_database || !m_database->isOpen()) return {};
    return {qint64(sqlite3_total_changes64(m_database->handle())),
            m_database->scalar(QStringLiteral("PRAGMA data_version")).toLongLong()};
}

// A database that cannot be asked counts as unchanged: the rows shown stay, and no reload fails again
// and again each time the screen comes to the front.
bool QuickViewRows::changedSinceLoad() const {
    try {
        return m_database && !(stamp() == m_loaded);
    } catch (const VbError&) {
        return false;
    }
}

QVariant QuickViewRows::value(int row, int column) const {
    if (column < 0 || column >= columnCount()) raiseError(err::SubscriptOutOfRange);
    return cell(row, column);
}

QVariant QuickViewRows::reference(int row) const {
    return cell(row, columnCount());
}

QVariant QuickViewRows::paymentDate(int row) const {
    return cell(row, columnCount() + 1);
}

QVariant QuickViewRows::cell(int row, int index) const {
    if (row < 0 || row >= rowCount()) raiseError(err::SubscriptOutOfRange);
    const int page = row / PageSize;
    if (m_pages[size_t(page)].empty()) readPage(page);
    return m_pages[size_t(page)][size_t((row % PageSize) * Stride + index)];
}

Currency QuickViewRows::total(int column) const {
    if (column < 1 || column >= columnCount()) raiseError(err::SubscriptOutOfRange);
    return m_totals[size_t(column)];
}

// The page's rows as the database holds them when it is read; rows that have gone since the load
// leave their cells empty.
void QuickViewRows::readPage(int page) const {
    const int first = page * PageSize;
    const int count = std::min(rowCount(), first + PageSize) - first;
    std::vector<QVariant> cells(size_t(count * Stride));
    if (changedSinceLoad()) m_stale = true;
    RowReader rows(*m_database, QStringLiteral("SELECT ") + kColumns + kCommitColumns +
                                    QStringLiteral(" FROM Wages WHERE ") +
                                    m_where +
                                    (m_dateOrder ? QStringLiteral(" ORDER BY Wages.Date")
                                                 : QStringLiteral(" ORDER BY Wages.WageID")) +
                                    QStringLiteral(" LIMIT %1 OFFSET %2").arg(count).arg(first));
    for (int r = 0; r < count && rows.next(); ++r)
        for (int c = 0; c < Stride; ++c)
            cells[size_t(r * Stride + c)] = rows.value(c);
    m_pages[size_t(page)] = std::move(cells);
}

} // namespace ql
