#include "rename/RenameRun.h"

#include "platform/DiskFile.h"
#include "platform/Files.h"
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
    const auto isAudio = [](const QString &name) {
        return std::any_of(FileTypes().begin(), FileTypes().end(),
                           [&name](const QString &mask) { return MatchesMask(name, mask); });
    };
    return static_cast<int>(std::count_if(names.begin(), names.end(), isAudio));
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

RenameOutcome RunRename(const RenameRules &rules, const QStringList &paths, bool perFolder, const Progress &progress)
{
    const int count = static_cast<int>(paths.size());
    RenameNumbers numbers(count, perFolder, AudioFilesIn);
    RenameOutcome outcome;
    outcome.NewPaths.reserve(count);
    QSet<QString> renamed;
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
