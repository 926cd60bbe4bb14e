#include "rename/RenameRun.h"

#include "platform/DiskFile.h"
#include "platform/Files.h"
#include "platform/Names.h"
#include "text/FolderWalk.h"
#include "text/PathText.h"

#include <QSet>

#include <algorithm>

RenameNumbers::RenameNumbers(int itemCount, bool countsPerFolder, std::function<int(const QString &folder)> filesIn)
    : perFolder(countsPerFolder), audioFilesIn(std::move(filesIn)), all{0, itemCount}
{
}

RenameNumbers::Place RenameNumbers::Next(const QString &path)
{
    Place *place = &all;
    if (perFolder) {
        const QString folder = RemoveText(path, QString(u'\\' + GetFileName(path)));
        const auto known = folders.find(folder);
        place = known != folders.end() ? &*known : &*folders.insert(folder, {0, audioFilesIn(folder)});
    }
    ++place->Number;
    return *place;
}

int CountAudioFiles(const QStringList &names)
{
    return static_cast<int>(std::count_if(names.begin(), names.end(), IsAudioFile));
}

int AudioFilesIn(const QString &folder)
{
    FolderEntries entries;
    ListFolder(folder, entries);
    return CountAudioFiles(entries.Files);
}

bool InSeveralFolders(const QStringList &paths)
{
    const QString first = paths.isEmpty() ? QString() : GetFolderPart(paths.front());
    return std::any_of(paths.begin(), paths.end(), [&](const QString &path) { return GetFolderPart(path) != first; });
}

bool AnyMissing(const QStringList &paths, const Progress &progress)
{
    // From so many files on a list of their folder takes less than a look at each.
    constexpr qsizetype worthListing = 8;
    QHash<QString, QStringList> listed;
    progress.SetLimits(0, static_cast<int>(paths.size()));
    for (qsizetype i = 0; i < paths.size() && !progress.Stopped(); ++i) {
        const QString &path = paths[i];
        const qsizetype nameStart = FileNameStart(path);
        const QString folder = path.first(nameStart);
        auto names = listed.constFind(folder);
        if (names == listed.cend() && i + worthListing <= paths.size() &&
            paths[i + worthListing - 1].startsWith(folder)) {
            FolderEntries entries;
            ListFolder(folder, entries);
            names = listed.insert(folder, entries.Files);
        }
        const bool isListed =
            names != listed.cend() &&
            std::binary_search(names->cbegin(), names->cend(), QStringView(path).sliced(nameStart), NameBefore);
        if (!isListed && !PathExists(path))
            return true;
        progress.SetValue(static_cast<int>(i) + 1);
    }
    return false;
}

RenameOutcome RunRename(const RenameRules &rules, const QStringList &paths, bool perFolder, const Progress &progress)
{
    const int count = static_cast<int>(paths.size());
    RenameNumbers numbers(count, perFolder, AudioFilesIn);
    RenameOutcome outcome;
    outcome.NewPaths.reserve(count);
    QSet<QString> renamed;
    renamed.reserve(count);
    progress.SetLimits(0, count + 1);
    for (const QString &path : paths) {
        if (progress.Stopped())
            break;
        const auto [number, total] = numbers.Next(path);
        // At the path of a file that was renamed already, another one may stand by now.
        const QString newPath = renamed.contains(path) ? path : ApplyRenameRules(rules, path, number, total, true);
        if (newPath != path) {
            ++outcome.Changed;
            renamed.insert(path);
        }
        outcome.NewPaths.append(newPath);
        progress.SetValue(static_cast<int>(outcome.NewPaths.size()));
    }
    return outcome;
}

UndoOutcome UndoRename(QStringList &oldPaths, QStringList &newPaths, const Progress &progress)
{
    UndoOutcome outcome;
    // What stays in the lists, from the last to the first.
    QStringList keptOld;
    QStringList keptNew;
    progress.SetLimits(0, static_cast<int>(newPaths.size()));
    int done = 0;
    while (!newPaths.isEmpty() && !progress.Stopped()) {
        const QString oldPath = oldPaths.takeLast();
        const QString newPath = newPaths.takeLast();
        const bool changed = oldPath != newPath;
        const bool restored = changed && RenameFilePath(oldPath, newPath);
        outcome.Attempted += changed ? 1 : 0;
        outcome.Failed += changed && !restored ? 1 : 0;
        (restored ? outcome.To : keptOld).append(oldPath);
        (restored ? outcome.From : keptNew).append(newPath);
        progress.SetValue(++done);
    }
    oldPaths.append(QStringList(keptOld.crbegin(), keptOld.crend()));
    newPaths.append(QStringList(keptNew.crbegin(), keptNew.crend()));
    return outcome;
}

bool IgnoresCase(const QString &path)
{
    const QString name = GetFileName(path);
    const QString upper = name.toUpper();
    const QString other = path.chopped(name.size()) + (upper != name ? upper : name.toLower());
    const DiskFacts facts = DiskFactsOf(path);
    return other != path && facts.Size >= 0 && facts.Links == 1 && facts == DiskFactsOf(other);
}
