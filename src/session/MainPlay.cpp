#include "platform/Files.h"
#include "platform/FolderLock.h"
#include "playlist/M3UFile.h"
#include "session/GridView.h"
#include "session/Hourglass.h"
#include "session/LongRun.h"
#include "session/Main.h"
#include "text/FileLists.h"

using namespace Qt::StringLiterals;

QString Main::SessionFile() const
{
    return host.ApplicationFolder + u"\\tmp.m3u";
}

void Main::PrevM3U(PreviewMode mode)
{
    if (ListView1.Count() == 0)
        return;
    const Hourglass hourglass(view);
    FileArray = PreviewPaths(ListView1, mode);
    RemoveMissingPaths(FileArray);
    if (FileArray.isEmpty()) {
        host.Prompts.Message({u"You cannot preview the item(s) because they are pointed to incorrectly.\n"
                              u"Use 'Purge Playlist Entries' to remove or relocate the missing items.."_s,
                              PromptIcon::Warning});
        return;
    }
    const QStringList paths = StorePreview() ? QStringList{SessionFile()} : FileArray;
    // A run would drop the release of the double click that has led here.
    const bool opened = paths.size() == 1 ? host.Shell.OpenElsewhere(paths.front()) : OpenEachElsewhere(paths);
    if (!opened)
        Answer(u"No player is registered for playlists"_s);
}

bool Main::OpenEachElsewhere(const QStringList &paths)
{
    bool opened = false;
    LongRun run(nullptr, nullptr);
    const Progress progress = run.AsProgress();
    for (qsizetype i = 0; i < paths.size() && !run.Stopped(); ++i) {
        opened |= host.Shell.OpenElsewhere(paths[i]);
        progress.SetValue(static_cast<int>(i) + 1);
    }
    return opened;
}

bool Main::StorePreview()
{
    EnsureFolder(host.ApplicationFolder);
    const FolderLock lock(host.ApplicationFolder);
    host.Settings.Refresh();
    const std::optional<QString> kept = KeepOtherSession();
    if (kept && !kept->isEmpty())
        UpdateRecentFiles(*kept);
    return kept && WriteSession();
}

void Main::MEditPlaySel_Click()
{
    PrevM3U(PreviewSelected);
}

void Main::MEditPlayFol_Click()
{
    PrevM3U(PreviewFolders);
}

void Main::MEditPlayLoc_Click()
{
    PrevM3U(PreviewFrom);
}

void Main::MEditPlayList_Click()
{
    PrevM3U(PreviewAll);
}

void Main::MEditSelLoc_Click()
{
    const Hourglass hourglass(this);
    DestroyFileArray();
    SaveFileArrayFromList(false);
    host.Shell.Explore(FindCommonRoot(FileArray));
}

void Main::MEditFileInfo_Click()
{
    const int row = CountTotals(ListView1).CurrentRow;
    if (row == 0)
        return;
    const QString path = ListView1.Item(row).FullPath();
    if (!host.Shell.Properties(path))
        ShowFileFacts(path);
}
