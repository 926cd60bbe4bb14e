#include "session/MenuTable.h"

#include "session/Main.h"

namespace
{
constexpr MenuEntry Separator(int level)
{
    return {level, "", {}, {}, "", nullptr, {}};
}

constexpr MenuEntry Submenu(int level, const char *name, QStringView caption, const char *icon = "")
{
    return {level, name, caption, {}, icon, nullptr, {}};
}

/// The command of a tool, which Main is given.
constexpr MenuEntry ForTool(int level, const char *name, QStringView caption, QStringView shortcut, const char *icon,
                            QStringView tip)
{
    return {level, name, caption, shortcut, icon, nullptr, tip};
}

/// An array of menu items that share a handler.
constexpr MenuEntry Array(int level, const char *name, std::span<const QStringView> captions,
                          void (Main::*handler)(int), QStringView tip, bool checkable = false)
{
    return {level, name, {}, {}, "", nullptr, tip, checkable, handler, captions};
}

// The recent files write their own captions.
constexpr QStringView recentFiles[Main::RecentCount];
constexpr QStringView transparencies[] = {u"OFF", u"5%",  u"10%", u"15%", u"20%", u"25%",
                                          u"30%", u"35%", u"40%", u"45%", u"50%"};
constexpr QStringView shortcuts[] = {u"Add.."};
constexpr QStringView columns[] = {u"Filename", u"Length",  u"Size",       u"Folder", u"ID",
                                   u"Layer",    u"Bitrate", u"Samplerate", u"Mode"};

// clang-format off
constexpr MenuEntry entries[] = {
    Submenu(0, "MFile", u"&File"),
    {1, "MFileNew", u"&New", u"Ctrl+N", "new", &Main::MFileNew_Click, u"Start an empty playlist"},
    {1, "MFileOpen", u"&Open", u"Ctrl+O", "open", &Main::MFileOpen_Click, u"Open a playlist"},
    {1, "MFileImport", u"&Import..", u"Ctrl+I", "import", &Main::MFileImport_Click,
     u"Add the items of a playlist to this one"},
    Separator(1),
    {1, "MFileSave", u"&Save", u"Ctrl+S", "save", &Main::MFileSave_Click, u"Save the playlist to its file"},
    {1, "MFileSaveAs", u"Save &As", {}, "save-as", &Main::MFileSaveAs_Click, u"Save the playlist to another file"},
    {1, "MFileSaveRel", u"Save to Relative Folder..", {}, "save-relative", &Main::MFileSaveRel_Click,
     u"Save the playlist with paths relative to its folder"},
    Separator(1),
    Submenu(1, "MFileRec", u"&Recent Files..", "recent"),
    Array(2, "MFileRecent", recentFiles, &Main::MFileRecent_Click, u"Open this playlist"),
    Separator(1),
    {1, "MFileExit", u"E&xit", u"Ctrl+X", "exit", &Main::MFileExit_Click, u"Close the program"},
    Submenu(0, "MEdit", u"&Edit"),
    {1, "MEditUndo", u"U&ndo", u"Alt+Backspace", "undo", &Main::MEditUndo_Click, u"Take back the last change of the list"},
    {1, "MEditRedo", u"Red&o", u"Shift+Alt+Backspace", "redo", &Main::MEditRedo_Click,
     u"Do again what has been undone"},
    Separator(1),
    {1, "MEditCopy", u"Cop&y", u"Ctrl+C", "copy", &Main::MEditCopy_Click,
     u"Put the files of the selected items, and their paths, on the clipboard"},
    {1, "MEditPaste", u"Past&e", u"Ctrl+V", "paste", &Main::MEditPaste_Click,
     u"Add the files, folders or paths that are on the clipboard"},
    Separator(1),
    Submenu(1, "MEditPlay", u"Play..", "play"),
    {2, "MEditPlaySel", u"&Play Selected", u"Shift+F1", "play", &Main::MEditPlaySel_Click, u"Play the selected items"},
    {2, "MEditPlayFol", u"Play Folder", u"Shift+F2", "play-folder", &Main::MEditPlayFol_Click,
     u"Play all audio files in the folders of the selected items"},
    {2, "MEditPlayLoc", u"Play From", u"Shift+F3", "play-from", &Main::MEditPlayLoc_Click,
     u"Play from the first selected item to the end"},
    {2, "MEditPlayList", u"Play List", u"Shift+F4", "play-list", &Main::MEditPlayList_Click, u"Play the whole list"},
    Separator(1),
    {1, "MEditAddDir", u"&Add Item", u"F1", "add-item", &Main::MEditAddDir_Click, u"Add the files of a folder"},
    {1, "MEditAddFiles", u"Add F&iles...", {}, "add-files", &Main::MEditAddFiles_Click,
     u"Add files that you choose, several at once"},
    {1, "MEditRemove", u"&Remove Item", u"Del", "remove", &Main::MEditRemove_Click,
     u"Remove the selected items from the playlist"},
    Separator(1),
    {1, "MEditMoveUp", u"Move &Up", u"F3", "move-up", &Main::MEditMoveUp_Click, u"Move the selected items up"},
    {1, "MEditMoveDown", u"Move &Down", u"F4", "move-down", &Main::MEditMoveDown_Click,
     u"Move the selected items down"},
    Separator(1),
    Submenu(1, "MEditSel", u"&Selection..", "select-all"),
    {2, "MEditSelAll", u"Select &All", u"Ctrl+A", "select-all", &Main::MEditSelAll_Click, u"Select every item"},
    {2, "MEditSelNone", u"Select &None", u"Ctrl+U", "select-none", &Main::MEditSelNone_Click, u"Select no item"},
    {2, "MEditSelFol", u"Select in Folder", u"Ctrl+K", "select-folder", &Main::MEditSelFol_Click,
     u"Select all items in the folders of the selected ones"},
    Separator(2),
    {2, "MEditSelTop", u"Move to &Top", u"Ctrl+T", "move-top", &Main::MEditSelTop_Click,
     u"Move the selected items to the top"},
    {2, "MEditSelBottom", u"Move to &Bottom", u"Ctrl+B", "move-bottom", &Main::MEditSelBottom_Click,
     u"Move the selected items to the bottom"},
    Separator(2),
    {2, "MEditSelInv", u"In&vert Selection", u"Ctrl+Z", "invert", &Main::MEditSelInv_Click,
     u"Select what is not selected"},
    {2, "MEditSelAlt", u"Alternate Selection", u"Ctrl+J", "alternate", &Main::MEditSelAlt_Click,
     u"Keep every second selected item"},
    {2, "MEditSelRnd", u"&Random Selection", u"Ctrl+R", "random", &Main::MEditSelRnd_Click, u"Select items at random"},
    {2, "MEditSelShuffle", u"Shuffle Selection", {}, "shuffle", &Main::MEditSelShuffle_Click,
     u"Exchange the selected items at random"},
    {1, "MEditSelLoc", u"Open &Folder..", u"Ctrl+F", "open-folder", &Main::MEditSelLoc_Click,
     u"Open the folder of the selected items"},
    Separator(1),
    Submenu(1, "MEditSeMark", u"Add &Check Mark...", "mark"),
    {2, "MEditSeMarkBlue", u"Blue..", u"Shift+Ins", "row-blue", &Main::MEditSeMarkBlue_Click,
     u"Give the selected items a blue mark"},
    {2, "MEditSeMarkGreen", u"Green...", {}, "row-green", &Main::MEditSeMarkGreen_Click,
     u"Give the selected items a green mark"},
    {2, "MEditSeMarkRed", u"Red...", {}, "row-red", &Main::MEditSeMarkRed_Click, u"Give the selected items a red mark"},
    {1, "MEditSeUnMark", u"Remove Check Mark...", u"Shift+Del", "unmark", &Main::MEditSeUnMark_Click,
     u"Take the mark off the selected items"},
    {1, "MEditSelectMark", u"Select Check Marked...", {}, "mark", &Main::MEditSelectMark_Click,
     u"Select just the items with a mark"},
    Separator(1),
    ForTool(1, "MEditId3", u"Edit ID3 &Tag..", u"Shift+F5", "tag", u"Show and edit the tags of the selected items"),
    {1, "MEditFileInfo", u"&Properties", u"Shift+F6", "properties", &Main::MEditFileInfo_Click,
     u"Show the properties of the file"},
    Submenu(0, "MView", u"&View"),
    {1, "MViewToolbar", u"&Toolbar", {}, "", &Main::MViewToolbar_Click, u"Show or hide the toolbar", true},
    {1, "MViewStatusBar", u"&StatusBar", {}, "", &Main::MViewStatusBar_Click, u"Show or hide the status bar", true},
    Separator(1),
    {1, "MViewNormal", u"Normal Mode...", {}, "normal", &Main::MViewNormal_Click, u"System colours, both bars shown"},
    {1, "MViewCompact", u"Compact Mode...", {}, "compact", &Main::MViewCompact_Click,
     u"Red on dark, the toolbar below, no status bar"},
    Submenu(1, "MViewTrans", u"Trans&parency", "transparency"),
    Array(2, "MViewTransVal", transparencies, &Main::MViewTransVal_Click,
     u"Let the desktop show through the window", true),
    Separator(1),
    Submenu(1, "MViewSort", u"Sort", "sort"),
    {2, "MViewSortFilename", u"by &Filename", {}, "", &Main::MViewSortFilename_Click, u"Sort by file name"},
    {2, "MViewSortTime", u"by &Length", {}, "", &Main::MViewSortTime_Click, u"Sort by length"},
    {2, "MViewSortSize", u"by &Size", {}, "", &Main::MViewSortSize_Click, u"Sort by size"},
    {2, "MViewSortFolder", u"by Fol&der", {}, "", &Main::MViewSortFolder_Click, u"Sort by folder"},
    {2, "MViewSortID", u"by &ID", {}, "", &Main::MViewSortID_Click, u"Sort by kind of file"},
    {2, "MViewSortLayer", u"by La&yer", {}, "", &Main::MViewSortLayer_Click, u"Sort by layer"},
    {2, "MViewSortBitrate", u"by &Bitrate", {}, "", &Main::MViewSortBitrate_Click, u"Sort by bit rate"},
    {2, "MViewSortSamplerate", u"by S&amplerate", {}, "", &Main::MViewSortSamplerate_Click, u"Sort by sample rate"},
    {2, "MViewSortMode", u"by &Mode", {}, "", &Main::MViewSortMode_Click, u"Sort by channel mode"},
    {2, "MViewSortOrig", u"by &Original Order", {}, "", &Main::MViewSortOrig_Click,
     u"Sort by the order in which items were added"},
    Separator(1),
    ForTool(1, "MViewDetails", u"Playlist Properties...", {}, "details", u"Show the figures of the playlist"),
    {1, "MViewRefresh", u"Refresh", u"F5", "refresh", &Main::MViewRefresh_Click, u"Read every file again"},
    Submenu(0, "MTools", u"&Tools"),
    ForTool(1, "MToolsSearch", u"&Search Playlist...", u"Ctrl+F3", "search", u"Search the playlist"),
    ForTool(1, "MToolsFilter", u"&Purge Playlist Entries...", u"Ctrl+F1", "purge",
     u"Find duplicate, missing and moved files"),
    ForTool(1, "MToolsRename", u"&Rectify MP3 Filenames...", u"Ctrl+F2", "rename", u"Rename files by rules"),
    Separator(1),
    Submenu(1, "MToolsWizards", u"&Wizards...", "wizard"),
    ForTool(2, "MToolsReport", u"&Generate Report...", u"Ctrl+G", "report", u"Write a report of the playlist"),
    ForTool(2, "MToolsM3UWiz", u"&Autocreate M3U's...", u"Ctrl+Q", "autocreate", u"Write a playlist for each folder"),
    ForTool(2, "MToolsMP3CDWiz", u"&Create MP3 CD-ROM...", u"Ctrl+D", "cdrom", u"Assemble a CD-ROM compilation"),
    Separator(1),
    Submenu(1, "MToolsWinamp", u"W&inAmp...", "winamp"),
    ForTool(2, "MToolsLoadWinamp", u"Import WinAmp Bookmark File", {}, "", u"Add the items of the bookmark file"),
    ForTool(2, "MToolsSaveWinamp", u"Save As WinAmp Bookmark File", {}, "", u"Save the items to the bookmark file"),
    ForTool(2, "MToolsLocWinamp", u"Use different Bookmark File", {}, "", u"Choose the bookmark file"),
    Submenu(1, "MToolsShortCut", u"Shortcuts...", "shortcut"),
    ForTool(2, "MToolsShortCutFind", u"Find Files...", {}, "search", u"Open the search of the desktop"),
    ForTool(2, "MToolsShortCutExplore", u"Explorer...", {}, "open-folder", u"Open the folder of the playlist's files"),
    ForTool(2, "MToolsShortCutVolume", u"Volume Control...", {}, "", u"Open the volume control"),
    Separator(2),
    {2, "MToolsShortCutDel", u"Clear", {}, "", &Main::MToolsShortCutDel_Click, u"Empty the list of shortcuts"},
    Array(2, "MToolsShortCutAdd", shortcuts, &Main::ShortcutClick, u"Add a file to this menu"),
    Separator(1),
    {1, "MToolsSaveSetting", u"Save settings on exit", {}, "", &Main::MToolsSaveSetting_Click,
     u"Keep window, columns and playlist for the next start", true},
    {1, "MToolsFullData", u"&Full data of all kinds", {}, "", &Main::MToolsFullData_Click,
     u"Read length, rates and comments of OGG, WAV and WMA files too", true},
    ForTool(1, "MToolsDrives", u"&Drives...", {}, "", u"Show and change the folders that stand for drives"),
    Submenu(0, "MHelp", u"&Help"),
    {1, "MHelpHelp", u"&Help", u"Ctrl+H", "help", &Main::MHelpHelp_Click, u"Open the help page"},
    ForTool(1, "MHelpTip", u"&Tip of the Day", {}, "tip", u"Show a tip"),
    {1, "MHelpWebsite", u"Visit Vantrel &Website", u"Ctrl+W", "website", &Main::MHelpWebsite_Click,
     u"Open the web page of the program"},
    ForTool(1, "MHelpAbout", u"&About", {}, "about", u"Show version and system"),
    Submenu(0, "MHidOption", u"GUI Options"),
    Submenu(1, "MHidOptionMenu", u"Menu"),
    {2, "MHidOptionMenuVisible", u"Visible", {}, "", &Main::MHidOptionMenuVisible_Click,
     u"Show or hide the menu bar", true},
    Submenu(1, "MHidOptionToolbar", u"Toolbar"),
    {2, "MHidOptionToolbarFlat", u"Flat", {}, "", &Main::MHidOptionToolbarFlat_Click, u"Flat buttons", true},
    {2, "MHidOptionToolbar3D", u"3D", {}, "", &Main::MHidOptionToolbar3D_Click, u"A raised toolbar", true},
    Submenu(1, "MHidOptionColumns", u"Columns"),
    Array(2, "MHidOptionColumnVis", columns, &Main::MHidOptionColumnVis_Click, u"Show or hide this column", true),
    Separator(2),
    {2, "MHidOptionColumnVisAll", u"Reset", {}, "", &Main::MHidOptionColumnVisAll_Click,
     u"Show all columns in their first widths"},
    Submenu(1, "MHidOptionTable", u"Table"),
    Submenu(2, "MHidOptionTableFont", u"Font"),
    {3, "MHidOptionTableFontChoose", u"Choose...", {}, "", &Main::MHidOptionTableFontChoose_Click,
     u"Choose the font of the list"},
    {3, "MHidOptionTableFontDefault", u"Default", {}, "", &Main::MHidOptionTableFontDefault_Click,
     u"The first font of the list", true},
    Submenu(2, "MHidOptionTableBC", u"Background Colour"),
    {3, "MHidOptionTableBCChoose", u"Choose...", {}, "", &Main::MHidOptionTableBCChoose_Click,
     u"Choose the background of the list"},
    {3, "MHidOptionTableBCDefault", u"Default", {}, "", &Main::MHidOptionTableBCDefault_Click,
     u"The system's window colour", true},
    Submenu(2, "MHidOptionTableFC", u"Foreground Colour"),
    {3, "MHidOptionTableFCChoose", u"Choose...", {}, "", &Main::MHidOptionTableFCChoose_Click,
     u"Choose the text colour of the list"},
    {3, "MHidOptionTableFCDefault", u"Default", {}, "", &Main::MHidOptionTableFCDefault_Click,
     u"The system's window text colour", true},
};
// clang-format on
} // namespace

std::span<const MenuEntry> MenuTable()
{
    return entries;
}
