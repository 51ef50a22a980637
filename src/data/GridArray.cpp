#include "GridArray.h"
#include "runtime/VbError.h"

namespace ql {

QString GridColumn::displayText(const QVariant& stored) const {
    for (const GridValueItem& item : valueItems)
        if (item.value.isValid() && stored.isValid() && item.value.toString() == stored.toString())
            return item.name;
    return stored.toString();
}

void GridArray::resize(int rows, int columns) {
    rows = std::max(rows, 0);
    columns = std::max(columns, 0);
    QList<QVariant> cells(qsizetype(rows) * columns);
    for (int r = 0; r < std::min(rows, m_rows); ++r)
        for (int c = 0; c < std::min(columns, m_columns); ++c)
            cells[qsizetype(r) * columns + c] = m_cells[qsizetype(r) * m_columns + c];
    m_cells = std::move(cells);
    m_rows = rows;
    m_columns = columns;
    if (m_columnInfo.size() < columns) m_columnInfo.resize(columns);
}

void GridArray::check(int row, int column) const {
    if (row < 0 || row >= m_rows || column < 0 || column >= m_columns) raiseError(err::SubscriptOutOfRange);
}

QVariant GridArray::value(int row, int column) const {
    check(row, column);
    return m_cells[qsizetype(row) * m_columns + column];
}

void GridArray::setValue(int row, int column, const QVariant& v) {
    check(row, column);
    m_cells[qsizetype(row) * m_columns + column] = v;
}

void GridArray::insertRow(int row) {
    if (row < 0 || row > m_rows) raiseError(err::SubscriptOutOfRange);
    for (int c = 0; c < m_columns; ++c)
        m_cells.insert(qsizetype(row) * m_columns, QVariant());
    ++m_rows;
}

void GridArray::deleteRow(int row) {
    if (row < 0 || row >= m_rows) raiseError(err::SubscriptOutOfRange);
    m_cells.remove(qsizetype(row) * m_columns, m_columns);
    --m_rows;
}

void GridArray::setHeadings(const QStringList& captions) {
    if (m_columnInfo.size() < captions.size()) m_columnInfo.resize(captions.size());
    for (int i = 0; i < captions.size(); ++i)
        m_columnInfo[i].caption = captions[i];
}

QStringList GridArray::headings() const {
    QStringList out;
    for (const GridColumn& c : m_columnInfo)
        out << c.caption;
    return out;
}

GridColumn& GridArray::column(int index) {
    if (index < 0) raiseError(err::SubscriptOutOfRange);
    if (m_columnInfo.size() <= index) m_columnInfo.resize(index + 1);
    return m_columnInfo[index];
}

const GridColumn& GridArray::column(int index) const {
    if (index < 0) raiseError(err::SubscriptOutOfRange);
    if (m_columnInfo.size() <= index) m_columnInfo.resize(index + 1);
    return m_columnInfo[index];
}

int GridArray::columnByCaption(const QString& caption) const {
    for (int i = 0; i < m_columnInfo.size(); ++i)
        if (m_columnInfo[i].caption.compare(caption, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

} // namespace ql
