#include "BenchRows.h"
#include "BenchSupport.h"

#include "search/CollectMatches.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

// A search of names and folders over one pass that folds and looks through the same texts.

namespace
{
const Grid &GridOf(int count)
{
    const auto made = [](int rows) {
        auto *grid = new Grid;
        grid->Append(BenchRecords(rows));
        return grid;
    };
    static const Grid *const full = made(FullList);
    static const Grid *const part = made(ShortList);
    return count == FullList ? *full : *part;
}

const SearchQuery &Query()
{
    static const SearchQuery query{u"Garden"_s, false, false, {ColumnFileName, ColumnPath}};
    return query;
}

void PassOver(const Grid &grid)
{
    const QString term = Query().Term.toLower();
    int found = 0;
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        found += item.Text.toLower().contains(term) ? 1 : 0;
        found += item.Folder.toLower().contains(term) ? 1 : 0;
    }
    benchmark::DoNotOptimize(found);
}

Side SearchIn(int count)
{
    return {[&grid = GridOf(count)] {
                if (CollectMatches(grid, Query()).empty())
                    throw std::runtime_error("The search of the benchmark finds nothing.");
            },
            static_cast<std::size_t>(count)};
}

void SearchOverBarePass(benchmark::State &state)
{
    Compare(state, 2, {[] { PassOver(GridOf(FullList)); }, FullList}, SearchIn(FullList));
}

void SearchGrowth(benchmark::State &state)
{
    Compare(state, 1.2, SearchIn(ShortList), SearchIn(FullList));
}

BENCHMARK(SearchOverBarePass)->UseManualTime();
BENCHMARK(SearchGrowth)->UseManualTime();
} // namespace
