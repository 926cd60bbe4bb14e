#include "playlist/RowCommands.h"

#include "playlist/RankList.h"

#include <algorithm>
#include <numeric>

namespace
{
std::vector<int> PresentOrder(const Grid &grid)
{
    std::vector<int> order(static_cast<std::size_t>(grid.Count()));
    std::iota(order.begin(), order.end(), 1);
    return order;
}

} // namespace

RowMove MoveTo(Grid &grid, int before)
{
    std::vector<int> order = PresentOrder(grid);
    const auto isSelected = [&](int row) { return grid.Item(row).Selected; };
    const auto place = order.begin() + (before - 1);
    const auto first = std::stable_partition(order.begin(), place, [&](int row) { return !isSelected(row); });
    const auto behind = std::stable_partition(place, order.end(), isSelected);
    if (first == behind)
        return {};
    const int last = static_cast<int>(behind - order.begin());
    const bool moved = !std::is_sorted(order.begin(), order.end());
    grid.Rearrange(order);
    return {moved, last};
}

RowMove MoveUp(Grid &grid)
{
    if (grid.Count() == 0 || grid.Item(1).Selected)
        return {};
    std::vector<int> order = PresentOrder(grid);
    int last = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        if (grid.Item(order[i]).Selected) {
            std::swap(order[i - 1], order[i]);
            last = static_cast<int>(i);
        }
    }
    if (last > 0)
        grid.Rearrange(order);
    return {last > 0, last};
}

RowMove MoveDown(Grid &grid)
{
    if (grid.Count() == 0 || grid.Item(grid.Count()).Selected)
        return {};
    std::vector<int> order = PresentOrder(grid);
    int last = 0;
    for (std::size_t i = order.size() - 1; i-- > 0;) {
        if (grid.Item(order[i]).Selected) {
            std::swap(order[i], order[i + 1]);
            last = static_cast<int>(i) + 2;
        }
    }
    if (last > 0)
        grid.Rearrange(order);
    return {last > 0, last};
}

RowMove MoveToTop(Grid &grid)
{
    return MoveTo(grid, 1);
}

RowMove MoveToBottom(Grid &grid)
{
    return MoveTo(grid, grid.Count() + 1);
}

ShuffleFailed::ShuffleFailed()
    : std::runtime_error("The selection could not be shuffled: the random draws gave no valid place. "
                         "The rows are as they were; try again.")
{
}

RowMove ShuffleSelection(Grid &grid, const Clock &clock)
{
    std::vector<int> positions;
    for (int row = 1; row <= grid.Count(); ++row) {
        if (grid.Item(row).Selected)
            positions.push_back(row);
    }
    const int count = static_cast<int>(positions.size());
    if (count < 2)
        return {};
    // A draw takes a place of the list of picked rows, from 1, and moves what stands there to the end. Place 0 and the
    // number of the row moved last are no valid draws.
    RankList picked(positions);
    int place = 0;
    int previous = 0;
    for (int round = 0; round < count; ++round) {
        clock.Reseed();
        for (int attempts = 0; (place == 0 || place == previous) && attempts < 10 * count; ++attempts)
            place = static_cast<int>(clock.Random() * count);
        if (place == 0)
            throw ShuffleFailed();
        previous = place = picked.MoveToEnd(place);
    }
    std::vector<int> order = PresentOrder(grid);
    const std::vector<int> partners = picked.Values();
    for (std::size_t i = 0; i < positions.size(); ++i)
        std::swap(order[static_cast<std::size_t>(positions[i] - 1)], order[static_cast<std::size_t>(partners[i] - 1)]);
    grid.Rearrange(order);
    return {true, partners.back()};
}

void SelectAll(Grid &grid)
{
    grid.Reselect([](int, const PlaylistItem &) { return true; });
}

void SelectNone(Grid &grid)
{
    grid.Reselect([](int, const PlaylistItem &) { return false; });
}

void InvertSelection(Grid &grid)
{
    grid.Reselect([](int, const PlaylistItem &item) { return !item.Selected; });
}

void AlternateSelection(Grid &grid)
{
    int below = 0;
    for (int row = 1; row <= grid.Count(); ++row)
        below += grid.Item(row).Selected ? 1 : 0;
    grid.Reselect([&](int, const PlaylistItem &item) { return item.Selected && below-- % 2 == 0; });
}

void RandomSelection(Grid &grid, const Clock &clock)
{
    const double half = grid.Count() / 2.0;
    int chosen = 0;
    grid.Reselect([&](int, const PlaylistItem &) {
        clock.Reseed();
        const bool choose = clock.Random() >= 0.5 && chosen <= half;
        chosen += choose ? 1 : 0;
        return choose;
    });
}

void SelectInFolder(Grid &grid)
{
    std::vector<bool> wanted(grid.PoolSize());
    for (int row = 1; row <= grid.Count(); ++row) {
        if (grid.Item(row).Selected)
            wanted[grid.Item(row).FolderNumber] = true;
    }
    grid.Reselect([&](int, const PlaylistItem &item) { return bool(wanted[item.FolderNumber]); });
}

void SelectCheckMarked(Grid &grid)
{
    grid.Reselect([](int, const PlaylistItem &item) { return item.SmallIcon >= IconBlue; });
}

void SetCheckMark(Grid &grid, SmallIcon icon)
{
    grid.UpdateIcons([icon](PlaylistItem &item) {
        if (item.Selected && item.SmallIcon != IconMissing)
            item.SmallIcon = icon;
    });
}
