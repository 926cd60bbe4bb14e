#include "platform/DiskFile.h"
#include "platform/Drives.h"
#include "playlist/M3UFile.h"
#include "playlist/NamingFormat.h"
#include "session/Hourglass.h"
#include "session/Main.h"
#include "text/FileLists.h"
#include "text/PathText.h"

#include <QAction>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto title = "[Vantrel] M3U Playlist Editor v2.0 "_L1;
constexpr auto playlistFilter = "M3U Playlist Files (*.m3u)|*.m3u|M3U8 Playlist Files (*.m3u8)|*.m3u8|"_L1;
constexpr auto playlistExtension = "m3u"_L1;
const QString unwritten = u"Unable to write to the specified file."_s;

FilePrompt PlaylistPrompt(const QString &promptTitle, const QString &proposal)
{
    return {promptTitle, playlistFilter, playlistExtension, proposal};
}
} // namespace

void Main::SetCurrentPlaylist(const QString &path)
{
    CurrentPlaylistPath = path;
    playlistAsLeft = DiskFactsOf(path);
    setWindowTitle(title + ShownPath(path));
}

bool Main::ConfirmSaveFirst()
{
    if (!PlaylistDirty || ListView1.Count() == 0)
        return true;
    const PromptAnswer answer = host.Prompts.Message(
        {u"Do you want to save the current playlist first?"_s, PromptIcon::Question, PromptButtons::YesNoCancel});
    return answer == PromptAnswer::Yes ? SavePlaylist(false, false) : answer == PromptAnswer::No;
}

void Main::OpenReplacing(const QString &path)
{
    ListView1.Steps().End();
    ListView1.Clear();
    PlaylistDirty = false;
    const DiskFacts asRead = DiskFactsOf(NormalisedPath(path));
    try {
        if (AddPath(path, false)) {
            UpdateRecentFiles(NormalisedPath(path));
            // What stands in the grid may not be the whole file, or the file no playlist: a save must not go there.
            const bool isSaveTarget = stopped.isEmpty() && IsPlaylist(GetExtension(path).toLower());
            SetCurrentPlaylist(isSaveTarget ? NormalisedPath(path) : QString());
            playlistAsLeft = asRead;
        }
        PlaylistDirty = false;
        AnswerOpened(path);
    } catch (const PlaylistFull &) {
        SetCurrentPlaylist({});
        throw;
    }
}

void Main::AnswerOpened(const QString &path)
{
    const QString drives = UnmappedDrives(0);
    if (!stopped.isEmpty())
        Answer(stopped);
    else if (ListView1.Count() == 0)
        Answer(u"No items in "_s + path);
    else if (!drives.isEmpty())
        Answer(drives);
}

void Main::OpenCommandLine(const QString &path)
{
    MFileNew_Click();
    const auto restored = qScopeGuard([this] { PlaylistDirty = false; });
    AddPath(path, false);
    ListView1_Click();
    AnswerOpened(path);
}

bool Main::OpenPlaylist(bool isImport)
{
    const auto chosen = host.Prompts.OpenFile(PlaylistPrompt(isImport ? u"Import"_s : u"Open"_s, {}));
    if (!chosen || (!isImport && !ConfirmSaveFirst()))
        return false;
    const int before = isImport ? ListView1.Count() : 0;
    QString without;
    if (isImport) {
        PlaylistDirty = true;
        without = AddPath(*chosen, true) ? QString() : *chosen;
    } else {
        OpenReplacing(*chosen);
    }
    MEditSelNone_Click();
    if (isImport)
        AnswerAdded(before, without);
    return ListView1.Count() > before;
}

void Main::MFileNew_Click()
{
    if (!ConfirmSaveFirst())
        return;
    ListView1.Steps().End();
    ListView1.Clear();
    ListView1_Click();
    SetCurrentPlaylist({});
    PlaylistDirty = false;
}

void Main::MFileOpen_Click()
{
    OpenPlaylist(false);
}

void Main::MFileImport_Click()
{
    OpenPlaylist(true);
}

void Main::MFileRecent_Click(int index)
{
    const QString path = recentFiles[index];
    if (path.isEmpty() || !ConfirmSaveFirst())
        return;
    if (!PathExists(path)) {
        host.Prompts.Message(
            {u"Could not open the file, check that it hasnt been moved, renamed or deleted!"_s, PromptIcon::Stop});
        return;
    }
    OpenReplacing(path);
    ListView1_Click();
}

void Main::MFileExit_Click()
{
    close();
}

void Main::MFileSave_Click()
{
    SavePlaylist(false, false);
}

void Main::MFileSaveAs_Click()
{
    SavePlaylist(true, false);
}

void Main::MFileSaveRel_Click()
{
    SavePlaylist(true, true);
}

QString Main::ProposedFileName(bool relative)
{
    if (!relative && !CurrentPlaylistPath.isEmpty())
        return CurrentPlaylistPath;
    const QString root = FindCommonRoot(FileArray);
    const QString name = root.isEmpty() ? u"playlist.m3u"_s : ExpandNamingFormat(u"%0"_s, root, host.Clock.Now());
    if (relative && !root.isEmpty())
        return root + u'\\' + name;
    if (relative)
        host.Prompts.Message({u"This playlist cannot be saved to a relative directory because it points to files at "
                              u"different Root locations or items that are pointed to incorrectly."_s,
                              PromptIcon::Information});
    return NormalisedPath(CurrentDirectory()) + u'\\' + name;
}

bool Main::SavePlaylist(bool forceDialog, bool relative)
{
    if (ListView1.Count() == 0)
        return false;
    DestroyFileArray();
    SaveFileArrayFromList(true);
    QString target = CurrentPlaylistPath;
    if (forceDialog || target.isEmpty()) {
        const auto chosen = host.Prompts.SaveFile(PlaylistPrompt(u"Save As"_s, ProposedFileName(relative)));
        if (!chosen)
            return false;
        target = *chosen;
    }
    NormalisePath(target);
    if (CheckExists(target))
        return false;
    DestroyFileArray();
    SaveFileArrayFromList(true);
    if (relative)
        MakePathsRelative(FileArray, FolderOf(target));
    return WritePlaylist(target);
}

bool Main::WritePlaylist(const QString &target)
{
    const Hourglass hourglass(this);
    ShowMessage(u"Saving file: "_s + target);
    const bool written = WritePlaylistFile(target, FileArray);
    ShowMessage({});
    if (!written) {
        host.Prompts.Message({unwritten, PromptIcon::Stop});
        return false;
    }
    SetCurrentPlaylist(target);
    UpdateRecentFiles(target);
    PlaylistDirty = false;
    ListView1.Steps().MarkSaved();
    Answer(u"Saved "_s + CountedItems(FileArray.size()));
    return true;
}

bool Main::CheckExists(const QString &path)
{
    if (IsAbsent(path))
        return false;
    // What nobody can look at is not replaced without the question.
    if (!PathExists(path)) {
        host.Prompts.Message({unwritten, PromptIcon::Stop});
        return true;
    }
    const bool isChanged = path == CurrentPlaylistPath && !DiskFactsOf(path).HasSameContent(playlistAsLeft);
    return host.Prompts.Message({ShownPath(path) + u" exists, do you want to replace it?", PromptIcon::Question,
                                 PromptButtons::YesNoCancel,
                                 isChanged ? u"Another program has changed it meanwhile."_s : QString()}) !=
           PromptAnswer::Yes;
}

void Main::TellNotTakenBack(const QStringList &paths)
{
    QStringList shown;
    for (const QString &path : paths)
        shown.append(ToHostPath(path));
    if (!shown.isEmpty())
        host.Prompts.Message({u"Could not take back the file: " + shown.join(u'\n'), PromptIcon::Warning});
}

void Main::UpdateRecentFiles(const QString &path)
{
    if (path.isEmpty() || recentFiles.contains(path))
        return;
    recentFiles.prepend(path);
    recentFiles.removeLast();
    ShowRecentFiles();
}

void Main::ShowRecentFiles()
{
    for (int i = 0; i < RecentCount; ++i) {
        QString shown = ShownPath(recentFiles[i]);
        QAction *action = Command(ElementName("MFileRecent", i));
        action->setVisible(!shown.isEmpty());
        action->setText(u'&' + QString::number(i + 1) + u": " + shown.replace(u'&', "&&"_L1));
    }
    menus["MFileRec"]->setEnabled(!recentFiles.first().isEmpty());
}
