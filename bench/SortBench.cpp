#include "BenchRows.h"
#include "BenchSupport.h"

#include "playlist/Sorting.h"

#include <numeric>

// Sorting by a column over a bare sort of indices by ready keys and a permutation of the rows.

namespace
{
struct SortSet {
    explicit SortSet(int count)
    {
        Shown.Append(BenchRecords(count));
        Start = Shown.RowsForSelection();
    }

    void ResetGrid()
    {
        Shown.RowsForSelection() = Start;
        Shown.SortKey = -1;
    }

    Grid Shown;
    std::vector<PlaylistItem> Start;
};

SortSet &SetOf(int count)
{
    static SortSet full(FullList);
    static SortSet part(ShortList);
    return count == FullList ? full : part;
}

template <typename Less>
void SortBare(std::vector<PlaylistItem> &rows, Less less)
{
    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), less);
    std::vector<PlaylistItem> arranged;
    arranged.reserve(rows.size());
    for (const std::size_t row : order)
        arranged.push_back(std::move(rows[row]));
    rows = std::move(arranged);
}

Side SortOf(SortSet &set, SortChoice choice)
{
    return {[&set, choice] { SortGrid(set.Shown, choice.Column, choice.Type); }, set.Start.size(),
            [&set] { set.ResetGrid(); }};
}

void OverFloor(benchmark::State &state, SortChoice choice)
{
    SortSet &set = SetOf(FullList);
    set.ResetGrid();
    std::vector<PlaylistItem> bare;
    std::vector<QString> texts;
    std::vector<qint64> numbers;
    for (int row = 1; row <= set.Shown.Count(); ++row) {
        texts.push_back(set.Shown.CellText(row, choice.Column));
        numbers.push_back(texts.back().toLongLong());
    }
    const auto textBefore = [&](std::size_t a, std::size_t b) {
        return texts[a].compare(texts[b], Qt::CaseInsensitive) < 0;
    };
    const auto numberBefore = [&](std::size_t a, std::size_t b) { return numbers[a] < numbers[b]; };
    const Side floor{[&] { choice.Type == SortText ? SortBare(bare, textBefore) : SortBare(bare, numberBefore); },
                     set.Start.size(), [&] { bare = set.Start; }};
    Compare(state, 1.3, floor, SortOf(set, choice));
}

void Growth(benchmark::State &state, SortChoice choice)
{
    Compare(state, 1.3, SortOf(SetOf(ShortList), choice), SortOf(SetOf(FullList), choice));
}

[[maybe_unused]] const bool registered = [] {
    for (int column = ColumnFileName; column <= ColumnCount; ++column) {
        if (column == ColumnHiddenLen || column == ColumnHiddenSize)
            continue;
        const std::string name = "SortBy" + Grid::Caption(column).toStdString();
        benchmark::RegisterBenchmark((name + "/OverFloor").c_str(), OverFloor, SortChoiceOf(column))->UseManualTime();
        benchmark::RegisterBenchmark((name + "/Growth").c_str(), Growth, SortChoiceOf(column))->UseManualTime();
    }
    return true;
}();
} // namespace
