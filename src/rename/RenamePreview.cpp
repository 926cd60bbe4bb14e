#include "rename/RenamePreview.h"

#include "platform/Files.h"
#include "text/PathText.h"

#include <algorithm>

namespace
{
/// A folder as the run would have left it at some point.
class FolderDuringRun
{
public:
    explicit FolderDuringRun(const FolderNames::Folder &before) : folder(&before) {}

    /// What becomes of a file that is given another name; if it is renamed, that has happened. For a file that has its
    /// name already, that name.
    PreviewState Rename(const QString &oldName, QString &newName)
    {
        const QString oldKey = folder->Key(oldName);
        const auto earlier = gone.constFind(oldKey);
        if (earlier != gone.cend()) {
            newName = *earlier;
            return PreviewState::SameFile;
        }
        const QString newKey = folder->Key(newName);
        if (folder->Listed && !Stands(oldKey))
            return PreviewState::Missing;
        if (newKey != oldKey && Stands(newKey))
            return taken.contains(newKey) ? PreviewState::Taken : PreviewState::Exists;
        gone.insert(oldKey, newName);
        taken.remove(oldKey);
        taken.insert(newKey);
        return PreviewState::Renamed;
    }

private:
    bool Stands(const QString &key) const
    {
        return taken.contains(key) || (folder->Names.contains(key) && !gone.contains(key));
    }

    const FolderNames::Folder *folder;
    /// The files that were renamed, and their new names.
    QHash<QString, QString> gone;
    QSet<QString> taken;
};
} // namespace

const FolderNames::Folder &FolderNames::Of(QString folder)
{
    if (!folder.endsWith(u'\\'))
        folder += u'\\';
    const auto [place, isNew] = folders.try_emplace(folder);
    Folder &fresh = place->second;
    if (!isNew)
        return fresh;
    FolderEntries entries;
    fresh.Listed = ListFolder(folder, entries);
    fresh.AudioFiles = CountAudioFiles(entries.Files);
    fresh.IgnoresCase = !entries.Files.isEmpty() && IgnoresCase(folder + entries.Files.front());
    fresh.Names.reserve(entries.Files.size() + entries.Folders.size());
    for (const QStringList &names : {entries.Files, entries.Folders}) {
        for (const QString &name : names)
            fresh.Names.insert(fresh.Key(name));
    }
    return fresh;
}

int RenamePreview::Count(PreviewState state) const
{
    return static_cast<int>(
        std::count_if(Items.begin(), Items.end(), [state](const PreviewItem &item) { return item.State == state; }));
}

RenamePreview PreviewRename(const RenameRules &rules, const QStringList &paths, FolderNames &folders,
                            const Progress &progress)
{
    RenamePreview preview;
    preview.Items.reserve(static_cast<std::size_t>(paths.size()));
    const bool numbered = IsSet(rules.Settings.Increment);
    RenameNumbers numbers(static_cast<int>(paths.size()), numbered,
                          [&folders](const QString &folder) { return folders.Of(folder).AudioFiles; });
    QHash<QString, FolderDuringRun> runs;
    progress.SetLimits(0, static_cast<int>(paths.size()));
    for (const QString &path : paths) {
        if (progress.Stopped())
            break;
        PreviewItem item;
        item.OldName = GetFileName(path);
        const auto [number, total] = numbers.Next(path);
        const QString newPath = ApplyRenameRules(rules, path, number, total, false);
        const QString folder = path.chopped(item.OldName.size());
        item.NewName = newPath.startsWith(folder) ? newPath.sliced(folder.size()) : newPath;
        if (newPath != path && !StaysInFolder(path, newPath)) {
            item.State = PreviewState::Refused;
        } else if (newPath != path) {
            auto run = runs.find(folder);
            if (run == runs.end())
                run = runs.insert(folder, FolderDuringRun(folders.Of(folder)));
            item.State = run->Rename(item.OldName, item.NewName);
        }
        preview.Items.push_back(std::move(item));
        progress.SetValue(static_cast<int>(preview.Items.size()));
    }
    return preview;
}
