#include "text/FolderWalk.h"

#include "platform/Names.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
QString WithBackslash(const QString &folder)
{
    return folder.endsWith(u'\\') ? folder : folder + u'\\';
}

struct FolderMask {
    explicit FolderMask(const QString &mask) : Match(mask), Shown(FileTypes().contains(mask) ? QString() : mask) {}

    NameMask Match;
    /// What stands for the names found; empty for the names themselves.
    QString Shown;
};

// The folder ends in a backslash.
void AppendMatches(QStringView folder, const QStringList &names, const FolderMask &mask, QStringList &list)
{
    for (const QString &name : names) {
        if (mask.Match.Matches(name))
            list.append(folder + (mask.Shown.isEmpty() ? name : mask.Shown));
    }
}
} // namespace

const QStringList &FileTypes()
{
    static const QStringList masks{u"*.mp3"_s, u"*.wav"_s, u"*.ogg"_s, u"*.wma"_s};
    return masks;
}

bool IsAudioFile(QStringView name)
{
    static const std::vector<NameMask> masks(FileTypes().begin(), FileTypes().end());
    return std::any_of(masks.begin(), masks.end(), [name](const NameMask &mask) { return mask.Matches(name); });
}

void ListFolderFiles(const QString &folder, const QString &mask, QStringList &list)
{
    FolderEntries entries;
    if (ListFolder(folder, entries))
        AppendMatches(WithBackslash(folder), entries.Files, FolderMask(mask), list);
}

void WalkTree(const QString &root, const std::function<bool(const QString &folder, const FolderReader &open)> &enter,
              const std::function<bool(const QString &prefix, const FolderEntries &entries)> &listed)
{
    // A stack of our own, since a tree may be deeper than that of the process. The next folder is its last entry.
    std::vector<QString> waiting{root};
    FolderEntries entries;
    while (!waiting.empty()) {
        const QString current = std::move(waiting.back());
        waiting.pop_back();
        const FolderReader open(current);
        if (!enter(current, open) || !open.List(entries))
            continue;
        const QString prefix = WithBackslash(current);
        if (!listed(prefix, entries))
            continue;
        for (auto name = entries.Folders.crbegin(); name != entries.Folders.crend(); ++name)
            waiting.push_back(prefix + *name);
    }
}

void WalkFolder(const QString &folder, const QStringList &masks, QStringList &list, bool recursive,
                const std::function<bool(const QString &folder)> &enter)
{
    const auto isEntered = [&](const QString &current, const FolderReader &) { return !enter || enter(current); };
    const std::vector<FolderMask> folderMasks(masks.begin(), masks.end());
    WalkTree(folder, isEntered, [&](const QString &prefix, const FolderEntries &entries) {
        for (const FolderMask &mask : folderMasks)
            AppendMatches(prefix, entries.Files, mask, list);
        return recursive;
    });
}
