#include "autocreate/FolderPlaylists.h"

#include "platform/Drives.h"
#include "playlist/M3UFile.h"
#include "playlist/NamingFormat.h"
#include "text/PathText.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace
{
QHash<QString, QStringList> NamesByFolder(const QStringList &files)
{
    QHash<QString, QStringList> names;
    for (const QString &path : files)
        names[GetFolderPart(path)].append(GetFileName(path));
    return names;
}

QStringList LinesOf(const PlannedPlaylist &playlist, const QHash<QString, QStringList> &names)
{
    QStringList lines = names.value(playlist.Folder);
    if (!playlist.Prefix.isEmpty()) {
        for (QString &line : lines)
            line.prepend(playlist.Prefix);
    }
    return lines;
}
} // namespace

std::vector<PlannedPlaylist> PlanPlaylists(const AutoCreateRequest &request, const std::function<QDateTime()> &now)
{
    const bool inBase = request.Mode != AutoCreateMode::RootFolderOnly;
    const bool inRoot = request.Mode != AutoCreateMode::BaseFolderOnly;
    std::vector<PlannedPlaylist> plan;
    bool rootDone = false;
    for (const QString &folder : request.RequestedFolders) {
        const QString name = ExpandNamingFormat(request.Format, folder, now());
        const bool isRoot = folder == request.Root;
        if (inBase)
            plan.push_back({folder + name, folder, {}});
        if (inRoot && !isRoot)
            plan.push_back({request.Root + name, folder, WithoutFolder(folder, request.Root)});
        if (inRoot && isRoot && !inBase)
            plan.push_back({request.Root + name, folder, {}, !rootDone});
        rootDone = rootDone || isRoot;
    }
    return plan;
}

QStringList RequestedPaths(const std::vector<PlannedPlaylist> &plan)
{
    QStringList paths;
    for (const PlannedPlaylist &playlist : plan) {
        if (playlist.IsRequested)
            paths.append(playlist.Path);
    }
    return paths;
}

AutoCreateCounts WritePlaylists(const std::vector<PlannedPlaylist> &plan, const QStringList &files, MadeFiles &made,
                                const ReportLine &report, const Progress &progress)
{
    const QHash<QString, QStringList> names = NamesByFolder(files);
    AutoCreateCounts counts;
    counts.Requested = RequestedPaths(plan).size();
    int written = 0;
    for (const PlannedPlaylist &playlist : plan) {
        if (progress.Stopped()) {
            report(u"Ended by the user: %1 of %2 files were tried"_s.arg(written).arg(plan.size()));
            break;
        }
        const bool done =
            made.Make(playlist.Path, [&] { return WritePlaylistFile(playlist.Path, LinesOf(playlist, names)); });
        ++(done ? counts.Done : counts.Failed);
        report((done ? u"> - "_s : u"X - "_s) + ShownPath(playlist.Path));
        progress.SetValue(++written);
    }
    return counts;
}

AutoCreateCounts UndoPlaylists(MadeFiles &made, const ReportLine &report)
{
    AutoCreateCounts counts;
    counts.Requested = made.Count();
    // The last one first, since a playlist may have been written twice.
    QList<MadeFiles::TakenBack> results(made.Count());
    for (qsizetype i = made.Count(); i-- > 0;)
        results[i] = made.TakeBack(i);
    for (qsizetype i = 0; i < made.Count(); ++i) {
        const MadeFiles::TakenBack result = results[i];
        const QString what = result == MadeFiles::TakenBack::Deleted   ? u"Successfully Deleted file: "_s
                             : result == MadeFiles::TakenBack::PutBack ? u"Put back the former file: "_s
                                                                       : u"Could not Delete file: "_s;
        report(what + ShownPath(made.Path(i)));
        ++(result != MadeFiles::TakenBack::Failed ? counts.Done : counts.Failed);
    }
    return counts;
}
