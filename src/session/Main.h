#pragma once

#include "platform/DiskFile.h"
#include "platform/Host.h"
#include "playlist/Grid.h"
#include "playlist/Preview.h"
#include "playlist/Sorting.h"
#include "session/Colours.h"
#include "session/Status.h"
#include "session/Tool.h"
#include "session/Totals.h"
#include "text/EntryFinder.h"
#include "text/PathText.h"

#include <QHash>
#include <QMainWindow>
#include <QSet>
#include <QTimer>

#include <array>
#include <functional>
#include <optional>
#include <span>

class ClientArea;
class GridView;
class QMenu;
class QMimeData;
class QStatusBar;
class QToolButton;
class StatusPanel;
class Toolbar;
struct RowMove;

/// The main window: the surface of the program and the operations that its dialogs call. The work lies in the rooms.
class Main : public QMainWindow
{
    Q_OBJECT

public:
    static constexpr int RecentCount = 9;

    /// The commands of the tools that are not in the list stand disabled. The list must outlive the window.
    explicit Main(const Host &host, std::span<const Tool> tools = {});
    ~Main() override;

    /// The playlist.
    Grid ListView1;
    /// Full paths; the transfer buffer, filled and used at once. No mirror of the grid.
    QStringList FileArray;
    /// The playlist has changed since it was last loaded or saved.
    bool PlaylistDirty = false;
    /// The open M3U file; empty for a playlist that has no file yet.
    QString CurrentPlaylistPath;
    /// The bookmark file of the player; kept with the settings.
    QString BookmarkFilePath;

    /// Analyses the file and adds one row, at the end or at index (from 1). Raises PlaylistFull.
    void AddFile(const QString &path, int index);
    /// Puts each file, analysed anew, in place of the row beside it, as a new row that is selected.
    void RefreshRows(const QList<int> &rows, const QStringList &paths);
    /// Appends to FileArray the full path of each row, of all rows or of the selected ones, in grid order.
    void SaveFileArrayFromList(bool allItems);
    /// Adds a row for each entry of FileArray, with the progress form. Raises PlaylistFull after the rows that fit.
    void LoadFileArrayToList();
    void DestroyFileArray();
    /// Adds what a path stands for: an audio file, a folder's tree, or the entries of a playlist. True if rows were
    /// added. Raises PlaylistFull when not all did fit; all else is then done.
    bool AddPath(const QString &path, bool selectNew);
    /// True when the file exists and the user doesn't want it replaced.
    bool CheckExists(const QString &path);
    /// Says of which files a run could not be taken back, if of any.
    void TellNotTakenBack(const QStringList &paths);
    /// True when the caller may go on: nothing to save, saved, or not wanted.
    bool ConfirmSaveFirst();
    /// The host's session ends (log-off): asks and stores as closing the window does, which then asks no more until a
    /// command has run. Without asking when that may not be. False when the user wants to stay, or cannot be asked
    /// since the question of a close is open, or a command runs with a changed list or with a tool open.
    bool EndWithHost(bool mayAsk);
    /// True if written.
    bool SavePlaylist(bool forceDialog, bool relative);
    /// The start of a session: applies the settings, then starts a list with what a path of the command line stands
    /// for, or brings back the last session's. The list has no file of its own yet.
    void RestoreSession(const QString &commandLine);
    /// Starts a new list with what a path stands for.
    void OpenCommandLine(const QString &path);
    /// True on success.
    bool OpenPlaylist(bool isImport);
    /// The central refresh: totals, panels and the enabling of commands, from one pass over the rows.
    void ListView1_Click();
    /// Tells the user that the command needs items.
    void RequireItems();
    /// Sorts one of the program's grids by a column, from 1; a second sort by the same one reverses it.
    void msSortListview(Grid &grid, int column, SortType dataType);
    /// Hands rows to the program registered for playlists.
    void PrevM3U(PreviewMode mode);
    /// Where a window's client area may lie on this window's screen: its frame is left out.
    QRect Room() const;
    /// Moves a dialog to where it opens: beside a small main window, else centred over it; whole on the screen.
    void PositionForm(QWidget *dialog);
    /// Writes (save) or applies the settings of the window and the session. False when they cannot be written.
    bool SetFormState(bool save);
    /// Where the rows of a session are kept.
    QString SessionFile() const;
    /// Whether a tip is shown at each start.
    bool TipsAtStartup() const;
    void SetTipsAtStartup(bool on);
    /// Gives bars and grid their places in the client area.
    void Form_Resize();

    /// The command of a menu item by its control name, which must exist.
    QAction *Command(QByteArrayView name) const;
    /// The text of one of the four panels of the status bar, from 1.
    QString PanelText(int panel) const;
    /// Panel 4, painted at once.
    void ShowMessage(const QString &text);
    /// Says there what was done; the next command takes it away.
    void Answer(const QString &text);
    /// Tells how many rows have come since there were so many, and the path that gave none.
    void AnswerAdded(int before, const QString &without);
    /// The running command does nothing that a person would ask about, so what was said before stays.
    void KeepAnswer();
    GridView *View() const { return view; }
    const Host &World() const { return host; }

    /// Runs what an event asks for, through Attempt; what arrives while another command runs is passed over. What it
    /// changes in the list is one step of Undo.
    void Run(const std::function<void()> &command);
    /// What the running command is called when it is to be undone, as "Restore 12 items". One that only adds rows, or
    /// only removes some, needs no name.
    void NameStep(const QString &name) { stepName = name; }
    /// A failure that nobody caught is shown here, and the program goes on.
    void Attempt(const std::function<void()> &command);

    // Menu handlers, by control and event.
    void MFileNew_Click();
    void MFileOpen_Click();
    void MFileImport_Click();
    void MFileSave_Click();
    void MFileSaveAs_Click();
    void MFileSaveRel_Click();
    void MFileRecent_Click(int index);
    void MFileExit_Click();
    void MEditUndo_Click();
    void MEditRedo_Click();
    void MEditCopy_Click();
    void MEditPaste_Click();
    void MEditPlaySel_Click();
    void MEditPlayFol_Click();
    void MEditPlayLoc_Click();
    void MEditPlayList_Click();
    void MEditAddDir_Click();
    void MEditAddFiles_Click();
    void MEditRemove_Click();
    void MEditMoveUp_Click();
    void MEditMoveDown_Click();
    void MEditSelAll_Click();
    void MEditSelNone_Click();
    void MEditSelFol_Click();
    void MEditSelTop_Click();
    void MEditSelBottom_Click();
    void MEditSelInv_Click();
    void MEditSelAlt_Click();
    void MEditSelRnd_Click();
    void MEditSelShuffle_Click();
    void MEditSelLoc_Click();
    void MEditSeMarkBlue_Click();
    void MEditSeMarkGreen_Click();
    void MEditSeMarkRed_Click();
    void MEditSeUnMark_Click();
    void MEditSelectMark_Click();
    void MEditFileInfo_Click();
    void MViewToolbar_Click();
    void MViewStatusBar_Click();
    void MViewNormal_Click();
    void MViewCompact_Click();
    void MViewTransVal_Click(int index);
    void MViewSortFilename_Click();
    void MViewSortTime_Click();
    void MViewSortSize_Click();
    void MViewSortFolder_Click();
    void MViewSortID_Click();
    void MViewSortLayer_Click();
    void MViewSortBitrate_Click();
    void MViewSortSamplerate_Click();
    void MViewSortMode_Click();
    void MViewSortOrig_Click();
    void MViewRefresh_Click();
    void MToolsShortCutDel_Click();
    /// Adds a shortcut to the menu (0), or opens one (from 1).
    void ShortcutClick(int index);
    void MToolsSaveSetting_Click();
    void MToolsFullData_Click();
    void MHelpHelp_Click();
    void MHelpWebsite_Click();
    void TipTimer_Timer();
    void MHidOptionMenuVisible_Click();
    void MHidOptionToolbarFlat_Click();
    void MHidOptionToolbar3D_Click();
    void MHidOptionColumnVis_Click(int index);
    void MHidOptionColumnVisAll_Click();
    void MHidOptionTableFontChoose_Click();
    void MHidOptionTableFontDefault_Click();
    void MHidOptionTableBCChoose_Click();
    void MHidOptionTableBCDefault_Click();
    void MHidOptionTableFCChoose_Click();
    void MHidOptionTableFCDefault_Click();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void BuildGrid();
    void BuildMenus();
    void BuildToolbar();
    void ColourMenus();
    void BuildStatusBar();
    void AddToolsMenu(QToolButton *button);
    /// The tool of a command; none for a command that has no tool.
    const Tool *ToolOf(const QString &command) const;
    void OpenTool(const Tool &tool);
    /// A toolbar button runs its command whatever the state of the menu item; the command guards itself.
    void RunFromToolbar(QAction *command);
    void CheckDefaults();
    QAction *MakeCommand(const struct MenuEntry &entry, int index = 0);
    /// An element of an array of menu items.
    QAction *MakeElement(struct MenuEntry entry, int index, QStringView caption);
    QMenu *MakeMenu(const struct MenuEntry &entry, QMenu *parent);
    /// Shows those commands of a menu that are available on this host.
    void ShowAvailable(const QMenu &menu) const;

    /// Row numbers: selects rows first + 1 to last; first is increased by one in the caller's variable.
    void SelectRange(int &first, int last);
    void DropFiles(const QStringList &paths);
    void DropRows(int before, bool again);
    /// Tells of a list that was opened what a person would not expect of it.
    void AnswerOpened(const QString &path);
    /// Names the drives of missing rows behind the first ones that this host knows no folder for; empty for none.
    QString UnmappedDrives(int before) const;
    /// What stands at a path; what it may mean where nothing does.
    PathInfo AnalyseOrFind(const QString &path);
    void RestoreRows();
    QMimeData *MakeDragData();
    /// The record of an entry of FileArray, from 0; none once the user has ended the run.
    using RecordOf = std::function<std::optional<FileRecord>(std::size_t)>;
    /// Lets take read the entries of FileArray under the progress form; minimum is that of its bar, relative entries
    /// count from the folder.
    void ReadFileArray(int minimum, const QString &folder, Status::Ending ending,
                       const std::function<void(const RecordOf &recordOf)> &take);
    /// Adds a row for each entry of FileArray.
    void AddRows(int minimum, const QString &folder, Status::Ending ending);
    /// Puts the audio files of a folder's tree into FileArray. False when the user has ended that.
    bool FindAudioFiles(const QString &folder);
    void TellStopped(qsizetype done, qsizetype of);
    void AddItemsOf(const PathInfo &info);
    void SetCurrentPlaylist(const QString &path);
    /// Clears the grid and loads a playlist, whose name becomes the current one if it gave any rows.
    void OpenReplacing(const QString &path);
    void UpdateRecentFiles(const QString &path);
    void ShowRecentFiles();
    void AddShortcut(const QString &path);
    void OpenShortcut(const QString &path);
    QString ProposedFileName(bool relative);
    bool WritePlaylist(const QString &target);
    QString BrowseForFolder(const QString &title, bool editBox);

    void ShowPanels(const PlaylistTotals &totals);
    /// Smaller than this, the bars and the panels would lie over each other.
    void SetSmallestSize();
    void EnableCommands(const PlaylistTotals &totals);
    void SetPanel(int panel, const QString &text);
    QString NameOfStep() const;
    /// Tells in the Edit menu what can be undone and done again.
    void ShowSteps();
    void TellStep(const char *verb, const QString &name);

    /// What a click or a key in the list brings; it is no command.
    void RefreshUnlessRunning();
    void AskAndSort(int column);
    /// Runs a command that moves the selected rows, brings the last moved one into view, and refreshes.
    RowMove MoveRows(QStringView verb, const std::function<RowMove(Grid &)> &command);
    void MarkRows(QStringView verb, SmallIcon icon);
    /// Runs a command that changes selection or icons of rows, and refreshes.
    void ChangeRows(const std::function<void(Grid &)> &command);
    void SetToolbarAtTop(bool top);
    void DragToolbar(QPoint globalPosition);
    void CustomizeToolbar1();
    void ApplyGridColours();
    QFont DefaultGridFont() const;
    struct GridColour {
        ColourNumber Number;
        bool IsDefault;
    };
    void SetGridColours(GridColour background, GridColour foreground);
    /// The name of an element of an array of menu items, as "MFileRecent(3)".
    static QByteArray ElementName(const char *array, int index);
    void Check(QByteArrayView name, bool on);
    bool IsChecked(QByteArrayView name) const;
    void ShowMenus(bool on);
    /// True when the user closes a window whose session cannot be stored.
    bool ConfirmLoss();
    /// As the user closes them; false when one of them stays open.
    bool CloseTools();
    /// Asks and stores before the window goes. False when it shall stay.
    bool PrepareToEnd();
    /// Stores the session beside what another program of this kind has stored since this one read it.
    bool SaveState();
    void SaveShortcuts();
    /// Puts FileArray into the session file.
    bool WriteSession();
    /// Puts FileArray into the session file for a player, once what another program has stored there is kept.
    bool StorePreview();
    /// True when one of them was opened; Escape ends it.
    bool OpenEachElsewhere(const QStringList &paths);
    /// Keeps the list that another program has stored as its session meanwhile, in a file whose path it returns; empty
    /// when there is none, or nothing that FileArray lacks. Nothing when it cannot be kept: it must then stay.
    std::optional<QString> KeepOtherSession() const;
    QStringList StoredRecentFiles() const;
    QStringList StoredShortcuts() const;
    void SaveView();
    void LoadState();
    QMargins FrameMargins() const;
    void LoadPlace();
    void LoadBars();
    void LoadTable();
    /// The program registered for playlists, in lower case, tells whether the bookmark commands make sense.
    bool DetectPlayer();
    /// The menu of the bookmark commands, with the separator above it.
    void ShowBookmarkMenu(bool on);
    bool IsNtFamily() const;
    void ShowFileFacts(const QString &path);

    Host host;
    ClientArea *client = nullptr;
    GridView *view = nullptr;
    Toolbar *Toolbar1 = nullptr;
    QStatusBar *StatusBar1 = nullptr;
    Status *status = nullptr;
    std::span<const Tool> tools;
    /// Made on first use; they stay loaded.
    QHash<const Tool *, ToolForm *> toolForms;
    std::array<StatusPanel *, 4> panels{};
    QHash<QByteArray, QAction *> commands;
    QHash<QByteArray, QMenu *> menus;
    QSet<const QAction *> unavailable;
    /// The playlist's file when it was last read or written.
    DiskFacts playlistAsLeft;
    /// Paths of the recent files, the first one the newest; empty texts behind the last.
    QStringList recentFiles;
    /// Lets the first tip wait until the start is done.
    QTimer TipTimer;
    bool running = false;
    QString stepName;
    /// How far the running command came before the user ended it; empty when he did not.
    QString stopped;
    /// What panel 4 says of the last command, and what it said when the running one began; empty for nothing.
    QString told;
    QString toldBefore;
    /// The session has been restored, so it is stored when the window closes.
    bool keepsSession = false;
    /// What the session file held when this program last read or wrote it.
    QByteArray sessionContent;
    /// While the paths of a drop are added: what has been listed for them.
    std::optional<EntryFinder> batchOfDrop;
    /// The host's session is about to end, and no command has run since what was to be asked was asked.
    bool hostEnds = false;
    bool isClosing = false;

    // What Reset and Default go back to.
    std::array<int, ColumnMode> ColumnWidthDefaults{};
    QString GridFontDefaultName;

    bool toolbarAtTop = true;
    ColourNumber gridBackground = systemWindow;
    ColourNumber gridForeground = systemWindowText;
    int transparency = 0;
    QStringList ShortcutList;
    // As they were stored at the start.
    QStringList storedRecentFiles;
    QStringList storedShortcuts;
    /// Those whose folder was not there at the start: they are not shown, and come back with their disk.
    QStringList awayShortcuts;
};
