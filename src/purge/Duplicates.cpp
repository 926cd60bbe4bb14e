#include "purge/Duplicates.h"

#include <QStringList>

#include <algorithm>
#include <numeric>

namespace
{
/// A key for each row, in grid order.
QStringList BuildDupKeys(const Grid &grid, const DupChoice &choice)
{
    QStringList keys;
    keys.reserve(grid.Count());
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        const QString key = choice.Base == BaseFileName   ? item.Text
                            : choice.Base == BasePathOnly ? item.Folder
                                                          : item.FullPath();
        keys.append(choice.IgnoreCase ? key.toLower() : key);
    }
    return keys;
}
} // namespace

std::vector<int> FindDuplicates(const Grid &grid, const DupChoice &choice, const Progress &progress)
{
    progress.SetLimits(0, 7);
    progress.SetValue(1);
    const QStringList keys = BuildDupKeys(grid, choice);
    progress.SetValue(2);
    std::vector<int> sorted(static_cast<std::size_t>(grid.Count()));
    std::iota(sorted.begin(), sorted.end(), 0);
    std::stable_sort(sorted.begin(), sorted.end(), [&keys](int a, int b) { return keys[a] < keys[b]; });

    progress.SetLimits(0, grid.Count());
    std::vector<int> rows;
    QString previous;
    int run = 0;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        progress.SetValue(static_cast<int>(i) + 1);
        const QString &key = keys[sorted[i]];
        if (key != previous) {
            previous = key;
            run = 0;
            continue;
        }
        // An empty key at the very start has no row before it.
        if (++run == 1 && choice.FirstToo && i > 0)
            rows.push_back(sorted[i - 1] + 1);
        rows.push_back(sorted[i] + 1);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}
