#include "playlist/Sorting.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <numeric>

namespace
{
qint64 NumberKey(const Grid &grid, int row, int column)
{
    const PlaylistItem &item = grid.Item(row);
    switch (column) {
    case ColumnHiddenLen:
        return item.Measured() ? item.Length : 0;
    case ColumnHiddenSize:
        return item.Size;
    case ColumnOriginalOrder:
        return item.OriginalOrder;
    default:
        break;
    }
    const QString cell = grid.CellText(row, column);
    bool ok = cell.isEmpty();
    const double number = ok ? 0 : cell.toDouble(&ok);
    if (!ok)
        throw NotSortable();
    return static_cast<qint64>(number);
}

qint64 DateKey(const Grid &grid, int row, int column)
{
    const QString cell = grid.CellText(row, column);
    const QDateTime date = QLocale().toDateTime(cell, QLocale::ShortFormat);
    if (!date.isValid())
        throw NotSortable();
    return date.toMSecsSinceEpoch();
}

using Order = std::vector<int>;

template <typename Less>
Order SortedOrder(const Grid &grid, bool descending, Less less)
{
    Order order(static_cast<std::size_t>(grid.Count()));
    std::iota(order.begin(), order.end(), 1);
    if (descending)
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return less(b, a); });
    else
        std::stable_sort(order.begin(), order.end(), less);
    return order;
}

Order OrderByKeys(const Grid &grid, int column, bool descending, qint64 (*keyOf)(const Grid &, int, int))
{
    std::vector<qint64> keys(static_cast<std::size_t>(grid.Count()) + 1);
    for (int row = 1; row <= grid.Count(); ++row)
        keys[static_cast<std::size_t>(row)] = keyOf(grid, row, column);
    return SortedOrder(grid, descending, [&](int a, int b) {
        return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
    });
}

int CompareText(const QString &a, const QString &b)
{
    // Rows share the data of equal folders and stream texts.
    return a.constData() == b.constData() ? 0 : a.compare(b, Qt::CaseInsensitive);
}

Order OrderByText(const Grid &grid, int column, bool descending)
{
    if (column == ColumnFileName || column == ColumnPath) {
        const auto text = column == ColumnFileName ? &PlaylistItem::Text : &PlaylistItem::Folder;
        return SortedOrder(grid, descending,
                           [&](int a, int b) { return CompareText(grid.Item(a).*text, grid.Item(b).*text) < 0; });
    }
    std::vector<QString> cells(static_cast<std::size_t>(grid.Count()) + 1);
    for (int row = 1; row <= grid.Count(); ++row)
        cells[static_cast<std::size_t>(row)] = grid.CellText(row, column);
    return SortedOrder(grid, descending, [&](int a, int b) {
        return CompareText(cells[static_cast<std::size_t>(a)], cells[static_cast<std::size_t>(b)]) < 0;
    });
}
} // namespace

NotSortable::NotSortable() : std::runtime_error("The list cannot be sorted: a cell of the column has another form.") {}

SortChoice SortChoiceOf(int clickedColumn)
{
    switch (clickedColumn) {
    case ColumnTime:
        return {ColumnHiddenLen, SortNumber};
    case ColumnSize:
        return {ColumnHiddenSize, SortNumber};
    case ColumnOriginalOrder:
        return {ColumnOriginalOrder, SortNumber};
    default:
        return {clickedColumn, SortText};
    }
}

void SortGrid(Grid &grid, int column, SortType type)
{
    const int sortOrder = grid.SortKey == column - 1 ? 1 - grid.SortOrder : 0;
    const bool descending = sortOrder == 1;
    const Order order = type == SortText
                            ? OrderByText(grid, column, descending)
                            : OrderByKeys(grid, column, descending, type == SortNumber ? NumberKey : DateKey);
    grid.SortKey = column - 1;
    grid.SortOrder = sortOrder;
    grid.Rearrange(order);
}
