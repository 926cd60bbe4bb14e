#include "purge/Restoration.h"

#include "platform/Names.h"
#include "text/FileLists.h"
#include "text/FolderWalk.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include <QHash>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
/// The audio files of a folder by their names.
class NamedFiles
{
public:
    explicit NamedFiles(const QStringList &paths)
    {
        for (const QString &path : paths)
            byName.insert(GetFileName(path), path);
    }

    /// The path of the file that answers to a name; empty for none.
    QString Find(const QString &name)
    {
        const auto exact = byName.constFind(name);
        if (exact != byName.cend())
            return *exact;
        if (byFoldedName.isEmpty()) {
            for (auto file = byName.cbegin(); file != byName.cend(); ++file)
                byFoldedName.insert(FoldedName(file.key()), *file);
        }
        return byFoldedName.value(FoldedName(name));
    }

private:
    QHash<QString, QString> byName;
    /// Made for the first name that no file has just so.
    QHash<QString, QString> byFoldedName;
};

using RowFiles = std::vector<std::pair<int, QString>>;

/// The rows of a folder's missing files that a file answers to, each with that file.
RowFiles RowsToRestore(const Grid &grid, const MissingFolder &missing, NamedFiles files)
{
    QHash<QString, QString> fileOf;
    for (const QString &name : missing.Files)
        fileOf.insert(name, files.Find(name));
    RowFiles rows;
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        if (item.Folder != missing.Folder)
            continue;
        const QString file = fileOf.value(item.Text);
        if (!file.isEmpty())
            rows.emplace_back(row, file);
    }
    return rows;
}
} // namespace

MissingFolder FolderOfMissing(const QStringList &missingPaths, const QString &folder)
{
    MissingFolder missing{folder, {}};
    ListFilesInFolder(missingPaths, missing.Files, folder);
    return missing;
}

QString WorthText(const Suggestion &suggestion)
{
    return GroupedDigits(suggestion.Held) + u" of " + GroupedDigits(suggestion.Missing) +
           (suggestion.Missing == 1 ? u" file" : u" files");
}

std::vector<Suggestion> SuggestFolders(const MissingFolder &missing, const FoundItems &found, bool usePathInfo)
{
    const QString name = missing.Files.value(0);
    const QString probe = usePathInfo ? missing.Folder + name : name;
    const QSet<QString> wanted(missing.Files.cbegin(), missing.Files.cend());
    std::vector<Suggestion> suggestions;
    for (const FoundFolder &folder : found.Folders) {
        QStringList hits;
        if (!FilterByText(folder.Items, hits, probe))
            continue;
        QSet<QString> held;
        for (const QString &item : folder.Items)
            held.insert(GetFileName(item));
        held &= wanted;
        suggestions.push_back({folder.Folder, static_cast<int>(held.size()), static_cast<int>(wanted.size())});
    }
    std::stable_sort(suggestions.begin(), suggestions.end(),
                     [](const Suggestion &a, const Suggestion &b) { return a.Held > b.Held; });
    return suggestions;
}

QStringList ListAudioFiles(const QString &folder)
{
    QStringList paths;
    WalkFolder(folder, FileTypes(), paths, false);
    return paths;
}

int RestoreFolder(Grid &grid, const MissingFolder &missing, const QString &folder, const Progress &progress)
{
    const RowFiles rows = RowsToRestore(grid, missing, NamedFiles(ListAudioFiles(folder)));
    progress.SetLimits(0, static_cast<int>(rows.size()));
    QHash<QString, FileRecord> analysed;
    std::vector<std::pair<int, FileRecord>> records;
    for (const auto &[row, path] : rows) {
        if (progress.Stopped())
            break;
        auto record = analysed.constFind(path);
        if (record == analysed.cend())
            record = analysed.insert(path, AnalyseFile(path));
        records.emplace_back(row, *record);
        progress.SetValue(static_cast<int>(records.size()));
    }
    grid.Replace(records, false);
    return static_cast<int>(records.size());
}

int AppendFiles(Grid &grid, const QStringList &paths, const Progress &progress)
{
    const std::size_t tooMany = static_cast<std::size_t>(Grid::MaxRows - grid.Count()) + 1;
    progress.SetLimits(0, static_cast<int>(paths.size()));
    std::vector<FileRecord> records;
    for (const QString &path : paths) {
        if (progress.Stopped() || records.size() == tooMany)
            break;
        records.push_back(AnalyseFile(path));
        progress.SetValue(static_cast<int>(records.size()));
    }
    grid.Append(records);
    return static_cast<int>(records.size());
}
