#include "playlist/Sorting.h"

#include "platform/Names.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <numeric>
#include <span>

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
        return item.Measured() ? item.OriginalOrder : 0;
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

/// A row, and the four characters of its text that are looked at.
struct TextKey {
    quint64 Piece;
    int Row;
};
constexpr qsizetype pieceSize = 4;

/// Whether the code units of a text compare like its characters, and none of them is 0.
bool HoldsPlainUnits(QStringView text)
{
    return std::none_of(text.begin(), text.end(), [](QChar unit) { return unit.isNull() || unit.isSurrogate(); });
}

/// Sorts rows by their texts without regard to case. Four characters at a time, since numbers that lie side by side
/// are compared far sooner than texts that lie all over the memory.
class TextSort
{
public:
    TextSort(const std::vector<QString> &textsOfRows, bool fromTheEnd) : texts(textsOfRows), descending(fromTheEnd)
    {
        byPieces = std::all_of(texts.begin(), texts.end(), HoldsPlainUnits);
    }

    void Sort(std::span<TextKey> keys, qsizetype from = 0) const
    {
        constexpr std::size_t fewRows = 8;
        constexpr qsizetype longestText = 256;
        if (!byPieces || keys.size() < fewRows || from >= longestText) {
            SortBy(keys, [this](const TextKey &a, const TextKey &b) {
                return Text(a).compare(Text(b), Qt::CaseInsensitive) < 0;
            });
            return;
        }
        for (TextKey &key : keys)
            key.Piece = FoldedPiece(Text(key), from);
        SortBy(keys, [](const TextKey &a, const TextKey &b) { return a.Piece < b.Piece; });
        SortEqualPieces(keys, from);
    }

private:
    const QString &Text(const TextKey &key) const { return texts[static_cast<std::size_t>(key.Row - 1)]; }

    template <typename Less>
    void SortBy(std::span<TextKey> keys, Less less) const
    {
        if (descending)
            std::stable_sort(keys.begin(), keys.end(), [&](const TextKey &a, const TextKey &b) { return less(b, a); });
        else
            std::stable_sort(keys.begin(), keys.end(), less);
    }

    void SortEqualPieces(std::span<TextKey> keys, qsizetype from) const
    {
        for (auto first = keys.begin(); first != keys.end();) {
            const auto last =
                std::find_if(first, keys.end(), [&](const TextKey &key) { return key.Piece != first->Piece; });
            const bool ended = (first->Piece & 0xFFFF) == 0;
            if (!ended && last - first > 1)
                Sort({first, last}, from + pieceSize);
            first = last;
        }
    }

    const std::vector<QString> &texts;
    bool descending;
    bool byPieces;
};

Order OrderByText(const Grid &grid, int column, bool descending)
{
    std::vector<QString> texts;
    std::vector<TextKey> keys;
    texts.reserve(static_cast<std::size_t>(grid.Count()));
    keys.reserve(texts.capacity());
    for (int row = 1; row <= grid.Count(); ++row) {
        texts.push_back(grid.CellText(row, column));
        keys.push_back({0, row});
    }
    TextSort(texts, descending).Sort(keys);
    Order order(keys.size());
    std::transform(keys.begin(), keys.end(), order.begin(), [](const TextKey &key) { return key.Row; });
    return order;
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
    grid.Rearrange(order);
    grid.SortKey = column - 1;
    grid.SortOrder = sortOrder;
}
