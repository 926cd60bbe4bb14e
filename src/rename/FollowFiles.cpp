#include "rename/FollowFiles.h"

#include "platform/Files.h"
#include "playlist/Grid.h"
#include "rename/RenameRun.h"
#include "text/PathText.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace
{
struct FileKey {
    int Folder = 0;
    /// With its case folded.
    QString Name;

    bool operator==(const FileKey &) const = default;
};

size_t qHash(const FileKey &key, size_t seed = 0)
{
    return qHashMulti(seed, key.Folder, key.Name);
}

/// Numbers of folders: the same one for all paths of a folder.
class FolderNumbers
{
public:
    int Of(const QString &folder)
    {
        const auto known = byPath.constFind(folder);
        if (known != byPath.cend())
            return *known;
        const auto fresh = static_cast<int>(byPath.size());
        const FolderIdentity identity = IdentifyFolder(folder);
        const auto place = std::pair(identity.Device, identity.Number);
        const int number = identity.Valid && byPlace.contains(place) ? byPlace.value(place) : fresh;
        if (identity.Valid)
            byPlace.insert(place, number);
        byPath.insert(folder, number);
        return number;
    }

private:
    QHash<QString, int> byPath;
    QHash<std::pair<std::uint64_t, std::uint64_t>, int> byPlace;
};

/// The rows of a grid by the files that they reach; only files of the given names, which have their case folded.
class FileRows
{
public:
    FileRows(const Grid &followed, QSet<QString> askedNames) : grid(followed), names(std::move(askedNames))
    {
        for (int row = 1; row <= grid.Count(); ++row)
            Add(row, grid.Item(row).Folder, grid.Item(row).Text);
    }

    void Move(const QString &from, const QString &to)
    {
        const QString oldName = GetFileName(from);
        const QString newName = GetFileName(to);
        const QString folder = from.chopped(oldName.size());
        const FileKey key{folders.Of(folder), oldName.toCaseFolded()};
        const QList<int> candidates = rows.values(key);
        rows.remove(key);
        std::optional<bool> anyCase;
        for (const int row : candidates) {
            if (NameOf(row) != oldName && !(anyCase ? *anyCase : anyCase.emplace(IgnoresCase(to)))) {
                rows.insert(key, row);
                continue;
            }
            newNames.insert(row, newName);
            Add(row, folder, newName);
        }
    }

    std::vector<std::pair<int, QString>> Moved() const
    {
        std::vector<std::pair<int, QString>> moved;
        for (auto row = newNames.cbegin(); row != newNames.cend(); ++row)
            moved.emplace_back(row.key(), row.value());
        std::sort(moved.begin(), moved.end());
        return moved;
    }

private:
    QString NameOf(int row) const
    {
        const auto name = newNames.constFind(row);
        return name != newNames.cend() ? *name : grid.Item(row).Text;
    }

    void Add(int row, const QString &folder, const QString &name)
    {
        const QString folded = name.toCaseFolded();
        if (names.contains(folded))
            rows.insert({folders.Of(folder), folded}, row);
    }

    const Grid &grid;
    QSet<QString> names;
    FolderNumbers folders;
    QMultiHash<FileKey, int> rows;
    QHash<int, QString> newNames;
};
} // namespace

std::vector<int> FollowFiles(Grid &grid, const QStringList &from, const QStringList &to)
{
    QSet<QString> names;
    for (qsizetype i = 0; i < from.size(); ++i) {
        if (from[i] != to[i])
            names.insert(GetFileName(from[i]).toCaseFolded());
    }
    FileRows rows(grid, std::move(names));
    for (qsizetype i = 0; i < from.size(); ++i) {
        if (from[i] != to[i])
            rows.Move(from[i], to[i]);
    }
    const auto moved = rows.Moved();
    grid.Rename(moved);
    std::vector<int> followers;
    for (const auto &[row, name] : moved)
        followers.push_back(row);
    return followers;
}
