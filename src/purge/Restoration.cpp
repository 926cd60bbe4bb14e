#include "purge/Restoration.h"

#include "platform/Drives.h"
#include "platform/Names.h"
#include "text/FileLists.h"
#include "text/FolderWalk.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
/// The files of a folder by their names.
class FolderFiles
{
public:
    explicit FolderFiles(const QString &folder) { ListFolder(folder, entries); }

    /// The name of the file that answers to a name; empty for none.
    QString Find(const QString &name)
    {
        const QStringList &names = entries.Files;
        // Rows mostly follow one another as their files do.
        if (next >= names.size() || names[next] != name)
            next = std::lower_bound(names.cbegin(), names.cend(), name, NameBefore) - names.cbegin();
        // Spellings of one name stand side by side.
        for (const qsizetype place : {next, next - 1}) {
            if (place >= 0 && place < names.size() && IsSameName(names[place], name)) {
                next = place + 1;
                return names[place];
            }
        }
        return {};
    }

private:
    FolderEntries entries;
    qsizetype next = 0;
};

bool IsAt(const Grid &grid, int row, const QString &folder, const QString &name)
{
    return row <= grid.Count() && grid.Item(row).Folder == folder && grid.Item(row).Text == name;
}
} // namespace

MissingIndex IndexMissing(const MissingItems &items)
{
    MissingIndex index;
    for (std::size_t i = 0; i < items.Rows.size(); ++i) {
        const QString &path = items.Paths[static_cast<qsizetype>(i)];
        const QString folder = GetFolderPart(path);
        MissingFolder &missing = index[folder];
        missing.Folder = folder;
        missing.Files.append(GetFileName(path));
        missing.Rows.push_back(items.Rows[i]);
    }
    return index;
}

QString WorthText(const Suggestion &suggestion)
{
    return GroupedDigits(suggestion.Held) + u" of " + Counted(suggestion.Missing, u"file"_s);
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
    FolderFiles files(folder);
    RowFolders folders(CurrentDirectory());
    progress.SetLimits(0, static_cast<int>(missing.Rows.size()));
    const auto recordOf = [&](std::size_t i) -> std::optional<FileRecord> {
        const QString &name = missing.Files[static_cast<qsizetype>(i)];
        if (progress.Stopped() || !IsAudioFile(name) || !IsAt(grid, missing.Rows[i], missing.Folder, name))
            return std::nullopt;
        progress.SetValue(static_cast<int>(i) + 1);
        const QString found = files.Find(name);
        if (found.isEmpty())
            return std::nullopt;
        FileRecord record = AnalyseFile(QString(folder + found), folders);
        // The text of the row is kept where it is the same.
        if (record.FileName == name)
            record.FileName = grid.Item(missing.Rows[i]).Text;
        return record;
    };
    return grid.Replace(missing.Rows, recordOf, false);
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
