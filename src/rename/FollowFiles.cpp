#include "rename/FollowFiles.h"

#include "platform/Files.h"
#include "platform/Names.h"
#include "playlist/Grid.h"
#include "rename/RenameRun.h"

#include <QHash>
#include <QSet>

#include <optional>

namespace
{
/// Numbers of folders: the same one for all paths of a folder.
class FolderNumbers
{
public:
    int Of(const QString &folder)
    {
        // Neighbours mostly share their folder.
        if (folder != lastFolder || byPath.isEmpty()) {
            lastFolder = folder;
            const auto known = byPath.constFind(folder);
            lastNumber = known != byPath.cend() ? *known : Add(folder);
        }
        return lastNumber;
    }

private:
    int Add(const QString &folder)
    {
        const auto fresh = static_cast<int>(byPath.size());
        const FolderIdentity identity = IdentifyFolder(folder);
        const auto place = std::pair(identity.Device, identity.Number);
        const int number = identity.Valid ? byPlace.value(place, fresh) : fresh;
        if (identity.Valid)
            byPlace.insert(place, number);
        byPath.insert(folder, number);
        return number;
    }

    QHash<QString, int> byPath;
    QHash<std::pair<std::uint64_t, std::uint64_t>, int> byPlace;
    QString lastFolder;
    int lastNumber = 0;
};

/// The renames of a run by the files that they rename.
class Renames
{
public:
    Renames(const QStringList &fromPaths, const QStringList &toPaths)
        : from(fromPaths), to(toPaths), ignoresCase(static_cast<std::size_t>(from.size()))
    {
        next.resize(static_cast<std::size_t>(from.size()), -1);
        // From the last to the first, so that a chain is in order.
        for (auto i = static_cast<int>(from.size()) - 1; i >= 0; --i) {
            if (from[i] == to[i])
                continue;
            const qsizetype nameStart = from[i].lastIndexOf(u'\\') + 1;
            const quint64 name = FoldedHash(QStringView(from[i]).sliced(nameStart));
            names.insert(name);
            int &first = firstOf[{folders.Of(from[i].first(nameStart)), name}];
            next[static_cast<std::size_t>(i)] = first - 1;
            first = i + 1;
        }
    }

    /// The name that a file of this name has after them all.
    QString Follow(const QString &folder, const QString &oldName)
    {
        QString name = oldName;
        int after = -1;
        for (int found = Find(folder, name, after); found >= 0; found = Find(folder, name, after)) {
            name = to[found].sliced(to[found].lastIndexOf(u'\\') + 1);
            after = found;
        }
        return name;
    }

private:
    /// The first rename of the file behind another one; -1 for none.
    int Find(const QString &folder, const QString &name, int after)
    {
        const quint64 hash = FoldedHash(name);
        if (!names.contains(hash))
            return -1;
        int found = firstOf.value({folders.Of(folder), hash}) - 1;
        while (found >= 0 && (found <= after || !Means(found, name)))
            found = next[static_cast<std::size_t>(found)];
        return found;
    }

    bool Means(int index, const QString &name)
    {
        if (from[index].endsWith(name))
            return true;
        std::optional<bool> &anyCase = ignoresCase[static_cast<std::size_t>(index)];
        return anyCase ? *anyCase : anyCase.emplace(IgnoresCase(to[index]));
    }

    const QStringList &from;
    const QStringList &to;
    FolderNumbers folders;
    QSet<quint64> names;
    /// By folder and name: the first rename, from 1, and behind each the next one of the same file, from 0.
    QHash<std::pair<int, quint64>, int> firstOf;
    std::vector<int> next;
    std::vector<std::optional<bool>> ignoresCase;
};
} // namespace

std::vector<int> FollowFiles(Grid &grid, const QStringList &from, const QStringList &to)
{
    Renames renames(from, to);
    std::vector<std::pair<int, QString>> names;
    std::vector<int> followers;
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        const QString name = renames.Follow(item.Folder, item.Text);
        if (name == item.Text)
            continue;
        names.emplace_back(row, name);
        followers.push_back(row);
    }
    grid.Rename(names);
    return followers;
}
