#include "BenchRows.h"
#include "BenchSupport.h"
#include "MediaFiles.h"

#include "autocreate/FolderPlaylists.h"
#include "platform/Drives.h"
#include "playlist/M3UFile.h"
#include "text/FileLists.h"

#include <QDir>

using namespace Qt::StringLiterals;

// A playlist for each folder, over the bare writing of the same lines to the same files.

namespace
{
/// Rows in folders of seven that exist, without the files.
struct Albums {
    explicit Albums(int rows)
    {
        const QString root = FromHostPath(Folder.path()) + u'\\';
        for (int row = 0; row < rows; ++row) {
            const QString album = u"Artist %1\\Album %2\\"_s.arg(row / 70).arg(row / 7);
            if (row % 7 == 0)
                QDir(Folder.path()).mkpath(QString(album).replace(u'\\', u'/'));
            Files.append(root + album + u"%1 - The title of a song.mp3"_s.arg(row % 7 + 1));
        }
        ListDistinctFolders(Files, Folders);
        FirstPlan = Plan();
    }

    std::vector<PlannedPlaylist> Plan() const
    {
        return PlanPlaylists({AutoCreateMode::BaseFolderOnly, FindCommonRoot(Files) + u'\\', Folders, u"%1-%2"_s},
                             [] { return QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)); });
    }

    void PlanAndWrite() const
    {
        MadeFiles made;
        WritePlaylists(Plan(), Files, made, [](const QString &) {}, {});
    }

    QTemporaryDir Folder;
    QStringList Files;
    QStringList Folders;
    std::vector<PlannedPlaylist> FirstPlan;
};

void AutoCreateOverBareWriting(benchmark::State &state)
{
    static const Albums albums(FullList);
    CompareInTurn(
        state, FullList, 1.3,
        [] {
            qsizetype row = 0;
            for (const PlannedPlaylist &playlist : albums.FirstPlan) {
                QStringList lines;
                for (; row < albums.Files.size() && albums.Files[row].startsWith(playlist.Folder); ++row)
                    lines.append(albums.Files[row].mid(playlist.Folder.size()));
                WritePlaylistFile(playlist.Path, lines);
            }
        },
        [] { albums.PlanAndWrite(); });
}

void AutoCreateGrowth(benchmark::State &state)
{
    static const Albums few(10000);
    static const Albums many(FullList);
    Compare(state, 1.2, {[] { few.PlanAndWrite(); }, 10000}, {[] { many.PlanAndWrite(); }, FullList});
}

BENCHMARK(AutoCreateOverBareWriting)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(AutoCreateGrowth)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace
