#pragma once
// The array behind a detail grid: rows and columns from 0, cells as variants (text or numbers), and
// what the grid shows of each column (caption, visibility, alignment, a value list of names for
// stored ids). The grid's editable flag lives here too. Qt Core only: screens adapt it to a view.
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace ql {

// One entry of a column's value list: the stored value, the name shown, and an optional second value.
struct GridValueItem {
    QVariant value;
    QString name;
    QVariant extra;
};

struct GridColumn {
    QString caption;
    bool visible = true;
    bool rightAligned = false;
    int width = 0;
    // The value list (drop-down) of the column.
    QList<GridValueItem> valueItems;
    int presentation = 0; // 2: list only, 3: list or typed text
    bool translate = false;
    bool validate = false;
    int maxComboItems = 0;

    // The name shown for a stored value, or the value's text when the list has none.
    QString displayText(const QVariant& stored) const;
};

class GridArray {
public:
    GridArray() = default;
    GridArray(int rows, int columns) { resize(rows, columns); }

    // Redimensions the cells, keeping those that still fit; new cells are empty (Null).
    void resize(int rows, int columns);
    void clear() { resize(0, 0); }
    int rowCount() const { return m_rows; }
    int columnCount() const { return m_columns; }
    // Bounds as the array gives them: lower 0, upper count - 1 (dimension 1 rows, 2 columns).
    int lowerBound(int) const { return 0; }
    int upperBound(int dimension) const { return (dimension == 2 ? m_columns : m_rows) - 1; }

    // Out of range raises 9, Subscript out of range.
    QVariant value(int row, int column) const;
    void setValue(int row, int column, const QVariant& v);

    // A new empty row before row (row == rowCount() appends).
    void insertRow(int row);
    void deleteRow(int row);

    // Column captions, from column 0.
    void setHeadings(const QStringList& captions);
    QStringList headings() const;
    // Column display data; asking for a column beyond the known ones creates it.
    GridColumn& column(int index);
    const GridColumn& column(int index) const;
    // The column whose caption equals caption (without regard to case), or -1.
    int columnByCaption(const QString& caption) const;

    bool editable() const { return m_editable; }
    void setEditable(bool editable) { m_editable = editable; }

private:
    void check(int row, int column) const;
    int m_rows = 0;
    int m_columns = 0;
    QList<QVariant> m_cells; // row-major
    mutable QList<GridColumn> m_columnInfo;
    bool m_editable = true;
};

// Sum of the numeric cells of a column, as a Single; other cells count as nothing (GridHelpers.cpp).
float SumGridColumn(const GridArray& array, int column);
// The same over the rows whose keyColumn cell equals key.
float SumGridColumnWhere(const GridArray& array, int sumColumn, int keyColumn, const QVariant& key);

} // namespace ql
