#include "purge/Duplicates.h"

#include <QStringList>

#include <algorithm>

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
    // Equal keys come together by their hashes, which are compared sooner than texts.
    std::vector<std::pair<std::size_t, int>> sorted;
    sorted.reserve(static_cast<std::size_t>(keys.size()));
    for (const QString &key : keys)
        sorted.emplace_back(qHash(key), static_cast<int>(sorted.size()));
    std::sort(sorted.begin(), sorted.end(), [&keys](const auto &a, const auto &b) {
        if (a.first != b.first)
            return a.first < b.first;
        return keys[a.second] != keys[b.second] ? keys[a.second] < keys[b.second] : a.second < b.second;
    });

    progress.SetLimits(0, grid.Count());
    std::vector<int> rows;
    bool repeats = false;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        progress.SetValue(static_cast<int>(i) + 1);
        const QString &key = keys[sorted[i].second];
        const bool before = repeats;
        repeats = i > 0 && sorted[i].first == sorted[i - 1].first && key == keys[sorted[i - 1].second];
        if (repeats && !before && choice.FirstToo && !key.isEmpty())
            rows.push_back(sorted[i - 1].second + 1);
        if (repeats || key.isEmpty())
            rows.push_back(sorted[i].second + 1);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}
