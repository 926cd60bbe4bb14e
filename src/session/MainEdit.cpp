#include "platform/Drives.h"
#include "platform/PlaylistLines.h"
#include "playlist/M3UFile.h"
#include "playlist/RowCommands.h"
#include "session/DragData.h"
#include "session/GridView.h"
#include "session/Hourglass.h"
#include "session/Main.h"
#include "session/StatusPanel.h"
#include "text/EntryFinder.h"
#include "text/FileLists.h"
#include "text/FolderWalk.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <utility>

using namespace Qt::StringLiterals;

void Main::AddFile(const QString &path, int index)
{
    ListView1.Insert(AnalyseFile(path), index);
}

void Main::RefreshRows(const QList<int> &rows, const QStringList &paths)
{
    EntryReader reader(CurrentDirectory());
    ListView1.Replace(
        {rows.cbegin(), rows.cend()},
        [&](std::size_t i) {
            const QString &path = paths[static_cast<qsizetype>(i)];
            FileRecord record = reader.Analyse(path);
            PlaylistDirty |= record.Folder + record.FileName != path;
            return record;
        },
        true);
    // What the files were before does not come back.
    ListView1.Steps().End();
}

void Main::SaveFileArrayFromList(bool allItems)
{
    const Hourglass hourglass(view);
    FileArray.reserve(FileArray.size() + ListView1.Count());
    for (int row = 1; row <= ListView1.Count(); ++row) {
        const PlaylistItem &item = ListView1.Item(row);
        if (allItems || item.Selected)
            FileArray.append(item.FullPath());
    }
}

void Main::DestroyFileArray()
{
    ClearList(FileArray);
}

void Main::ReadFileArray(int minimum, const QString &folder, Status::Ending ending,
                         const std::function<void(const RecordOf &)> &take)
{
    status->Open(u"Get File Info..."_s, minimum, static_cast<int>(FileArray.size()), ending);
    const auto closeStatus = qScopeGuard([this] { status->Close(); });
    EntryReader reader(folder);
    take([&](std::size_t i) -> std::optional<FileRecord> {
        const QString &path = FileArray[static_cast<qsizetype>(i)];
        if (stopped.isEmpty() && !status->Step(static_cast<int>(i) + 1, path))
            TellStopped(static_cast<qsizetype>(i), FileArray.size());
        return stopped.isEmpty() ? std::optional(reader.Analyse(path)) : std::nullopt;
    });
}

void Main::LoadFileArrayToList()
{
    const Hourglass hourglass(view);
    AddRows(1, CurrentDirectory(), Status::Ending::ByEscape);
}

void Main::AddRows(int minimum, const QString &folder, Status::Ending ending)
{
    ReadFileArray(minimum, folder, ending, [this](const RecordOf &recordOf) {
        ListView1.Append(static_cast<std::size_t>(FileArray.size()), recordOf);
    });
}

void Main::TellStopped(qsizetype done, qsizetype of)
{
    stopped = u"Stopped after "_s + GroupedDigits(done) + u" of " + GroupedDigits(of);
}

void Main::AddItemsOf(const PathInfo &info)
{
    if (info.IsFolder) {
        if (FindAudioFiles(info.Path))
            AddRows(0, info.Path, Status::Ending::ByEscape);
    } else if (FileTypes().contains(u'*' + info.Extension)) {
        AddFile(info.Path, 0);
    } else if (IsPlaylist(info.Extension)) {
        // Its entries count from its folder also where that cannot be entered.
        const QString folder = AbsolutePath(FolderOf(info.Path), CurrentDirectory());
        SetCurrentDirectory(folder);
        DestroyFileArray();
        const bool ofSession = info.Path == SessionFile();
        if (ofSession ? ReadSessionFile(info.Path, FileArray) : ReadM3UFile(info.Path, FileArray))
            AddRows(1, folder, ofSession ? Status::Ending::Never : Status::Ending::ByEscape);
    }
}

bool Main::FindAudioFiles(const QString &folder)
{
    DestroyFileArray();
    LongRun run(nullptr, panels[3]);
    const Progress progress = run.AsProgress();
    WalkFolder(folder, FileTypes(), FileArray, true, [&](const QString &current) {
        progress.SetText(current);
        // One more than fits tells that not all do.
        return !run.Stopped() && FileArray.size() <= Grid::MaxRows - ListView1.Count();
    });
    ShowMessage({});
    if (run.Stopped())
        stopped = u"Stopped"_s;
    return !run.Stopped();
}

PathInfo Main::AnalyseOrFind(const QString &path)
{
    const PathInfo info = AnalysePath(path);
    if (info.Valid || path.isEmpty())
        return info;
    EntryFinder own;
    const QString found = (batchOfDrop ? *batchOfDrop : own).Find(path, CurrentDirectory());
    return found.isEmpty() ? info : AnalysePath(found);
}

bool Main::AddPath(const QString &path, bool selectNew)
{
    const Hourglass hourglass(view);
    stopped.clear();
    const int before = ListView1.Count();
    const auto finish = [&] {
        if (ListView1.Count() == before)
            return false;
        if (selectNew) {
            SelectNone(ListView1);
            int first = before;
            SelectRange(first, ListView1.Count());
        }
        if (!batchOfDrop)
            view->MakeVisible(ListView1.Count());
        PlaylistDirty = true;
        return true;
    };
    try {
        AddItemsOf(AnalyseOrFind(path));
    } catch (const PlaylistFull &) {
        finish();
        throw;
    }
    return finish();
}

void Main::SelectRange(int &first, int last)
{
    ++first;
    ListView1.Reselect(
        [&](int row, const PlaylistItem &item) { return item.Selected || (row >= first && row <= last); });
    ListView1.SetFocusedRow(last);
    if (!batchOfDrop)
        ListView1_Click();
}

void Main::DropFiles(const QStringList &paths)
{
    if (paths.isEmpty()) {
        Answer(u"Nothing to add: what was dropped holds no files"_s);
        return;
    }
    batchOfDrop.emplace();
    const Hourglass hourglass(view);
    const int before = ListView1.Count();
    // The rows of the last path that brings any are selected, all at once, since there may be many paths.
    int first = before;
    int rowsSoFar = before;
    const auto endBatch = qScopeGuard([&] {
        if (ListView1.Count() > rowsSoFar)
            first = rowsSoFar;
        if (ListView1.Count() > before) {
            SelectNone(ListView1);
            SelectRange(first, ListView1.Count());
            view->MakeVisible(ListView1.Count());
        }
        batchOfDrop.reset();
        ListView1_Click();
    });
    QString without;
    LongRun run(nullptr, panels[3]);
    const Progress progress = run.AsProgress();
    auto clearCount = qScopeGuard([this] { ShowMessage({}); });
    for (qsizetype i = 0; i < paths.size() && stopped.isEmpty(); ++i) {
        progress.SetText(GroupedDigits(i + 1) + u" of " + GroupedDigits(paths.size()) + u"; Escape ends it");
        if (run.Stopped()) {
            TellStopped(i, paths.size());
            break;
        }
        if (ListView1.Count() > rowsSoFar)
            first = std::exchange(rowsSoFar, ListView1.Count());
        if (!AddPath(paths[i], false))
            without = paths[i];
    }
    clearCount.dismiss();
    AnswerAdded(before, without);
}

void Main::DropRows(int before, bool again)
{
    // The list may have become shorter meanwhile.
    before = std::min(before, ListView1.Count() + 1);
    if (!again) {
        PlaylistDirty |= MoveRows(u"Move", [before](Grid &grid) { return MoveTo(grid, before); }).Moved;
        return;
    }
    const Hourglass hourglass(view);
    const int count = ListView1.Count();
    ListView1.AddSelectedAgain(before);
    PlaylistDirty |= ListView1.Count() > count;
    ListView1_Click();
    AnswerAdded(count, {});
}

QString Main::UnmappedDrives(int before) const
{
    const QStringList known = DriveLetters();
    QStringList unknown;
    for (int row = before + 1; row <= ListView1.Count(); ++row) {
        const QString drive = ListView1.Item(row).Folder.left(2);
        if (ListView1.Item(row).Ghosted && HasDrive(drive) && !known.contains(drive) && !unknown.contains(drive))
            unknown.append(drive);
    }
    if (unknown.isEmpty())
        return {};
    return (unknown.size() == 1 ? u"Drive "_s : u"Drives "_s) + unknown.join(u", "_s) +
           (unknown.size() == 1 ? u" is not there"_s : u" are not there"_s);
}

void Main::AnswerAdded(int before, const QString &without)
{
    const int added = ListView1.Count() - before;
    QStringList answers;
    if (!stopped.isEmpty())
        answers.append(stopped);
    if (added > 0)
        answers.append(u"Added "_s + CountedItems(added));
    if (!without.isEmpty() && stopped.isEmpty())
        answers.append(u"No items in "_s + without);
    if (const QString drives = UnmappedDrives(before); !drives.isEmpty())
        answers.append(drives);
    Answer(answers.join(u"; "_s));
}

QMimeData *Main::MakeDragData()
{
    DestroyFileArray();
    SaveFileArrayFromList(false);
    return DragDataOf(FileArray);
}

QString Main::BrowseForFolder(const QString &browseTitle, bool editBox)
{
    return host.Prompts.Folder({browseTitle, editBox}).value_or(QString());
}

void Main::MEditAddDir_Click()
{
    const Hourglass hourglass(this);
    const QString folder = BrowseForFolder(u"Select Folder..."_s, true);
    if (!folder.isEmpty()) {
        const int before = ListView1.Count();
        AnswerAdded(before, AddPath(folder, true) ? QString() : folder);
    }
    ListView1_Click();
}

void Main::MEditAddFiles_Click()
{
    const QString types = FileTypes().join(u';') + u";*.m3u;*.m3u8"_s;
    const QStringList paths = host.Prompts.OpenFiles(
        {u"Add Files"_s, u"Audio Files and Playlists (%1)|%1|All Files (*.*)|*.*|"_s.arg(types), {}, {}});
    if (!paths.isEmpty())
        DropFiles(paths);
}

void Main::MEditCopy_Click()
{
    const Hourglass hourglass(view);
    QMimeData *files = MakeDragData();
    QStringList lines;
    for (const QString &path : std::as_const(FileArray))
        lines.append(ToHostPath(path));
    files->setText(lines.join(u'\n'));
    QGuiApplication::clipboard()->setMimeData(files);
    Answer(u"Copied "_s + CountedItems(lines.size()));
}

void Main::MEditPaste_Click()
{
    const QMimeData *content = QGuiApplication::clipboard()->mimeData();
    const QStringList paths = content != nullptr ? PathsOf(*content) : QStringList();
    if (paths.isEmpty())
        Answer(u"Nothing to add: the clipboard holds no files and no paths"_s);
    else
        DropFiles(paths);
}

void Main::MEditRemove_Click()
{
    const Hourglass hourglass(view);
    const int removed = ListView1.RemoveIf([](const PlaylistItem &item) { return item.Selected; });
    if (removed > 0) {
        PlaylistDirty = true;
        Answer(u"Removed "_s + CountedItems(removed));
    }
    ListView1_Click();
}

RowMove Main::MoveRows(QStringView verb, const std::function<RowMove(Grid &)> &command)
{
    const Hourglass hourglass(view);
    NameStep(verb + u' ' + CountedItems(CountTotals(ListView1).SelectedCount));
    const RowMove move = command(ListView1);
    view->MakeVisible(move.LastRow);
    ListView1_Click();
    return move;
}

void Main::ChangeRows(const std::function<void(Grid &)> &command)
{
    const Hourglass hourglass(view);
    command(ListView1);
    ListView1_Click();
}

void Main::MarkRows(QStringView verb, SmallIcon icon)
{
    NameStep(verb + u' ' + CountedItems(CountTotals(ListView1).SelectedCount));
    ChangeRows([icon](Grid &grid) { SetCheckMark(grid, icon); });
}

void Main::MEditMoveUp_Click()
{
    PlaylistDirty |= MoveRows(u"Move", MoveUp).Moved;
}

void Main::MEditMoveDown_Click()
{
    PlaylistDirty |= MoveRows(u"Move", MoveDown).Moved;
}

void Main::MEditSelTop_Click()
{
    MoveRows(u"Move", MoveToTop);
}

void Main::MEditSelBottom_Click()
{
    MoveRows(u"Move", MoveToBottom);
}

void Main::MEditSelShuffle_Click()
{
    MoveRows(u"Shuffle", [this](Grid &grid) { return ShuffleSelection(grid, host.Clock); });
}

void Main::MEditSelAll_Click()
{
    ChangeRows(SelectAll);
}

void Main::MEditSelNone_Click()
{
    ChangeRows(SelectNone);
}

void Main::MEditSelInv_Click()
{
    ChangeRows(InvertSelection);
}

void Main::MEditSelAlt_Click()
{
    ChangeRows(AlternateSelection);
}

void Main::MEditSelRnd_Click()
{
    ChangeRows([this](Grid &grid) { RandomSelection(grid, host.Clock); });
}

void Main::MEditSelFol_Click()
{
    ChangeRows(SelectInFolder);
}

void Main::MEditSelectMark_Click()
{
    ChangeRows(SelectCheckMarked);
}

void Main::MEditSeMarkBlue_Click()
{
    MarkRows(u"Mark", IconBlue);
}

void Main::MEditSeMarkGreen_Click()
{
    MarkRows(u"Mark", IconGreen);
}

void Main::MEditSeMarkRed_Click()
{
    MarkRows(u"Mark", IconRed);
}

void Main::MEditSeUnMark_Click()
{
    MarkRows(u"Unmark", IconNormal);
}

QString Main::NameOfStep() const
{
    const int added = ListView1.Steps().OpenStep().CountAdded();
    return (added < 0 ? u"Remove "_s : u"Add "_s) + CountedItems(std::abs(added));
}

void Main::ShowSteps()
{
    const auto show = [this](const char *command, const QString &caption, const HistoryStep *step) {
        Command(command)->setEnabled(step != nullptr);
        Command(command)->setText(step == nullptr ? caption : caption + u' ' + step->Name);
    };
    show("MEditUndo", u"U&ndo"_s, ListView1.Steps().Undoable());
    show("MEditRedo", u"Red&o"_s, ListView1.Steps().Redoable());
}

void Main::TellStep(const char *verb, const QString &name)
{
    if (name.isEmpty())
        return;
    view->MakeVisible(ListView1.FocusedRow());
    ListView1_Click();
    Answer(QLatin1StringView(verb) + u' ' + name);
}

void Main::MEditUndo_Click()
{
    const Hourglass hourglass(view);
    TellStep("Undone:", ListView1.Undo(PlaylistDirty));
}

void Main::MEditRedo_Click()
{
    const Hourglass hourglass(view);
    TellStep("Done again:", ListView1.Redo(PlaylistDirty));
}
