#include "app/Tools.h"

#include "autocreate/AutoCreateWizard.h"
#include "compilation/MP3CDWizard.h"
#include "platform/Drives.h"
#include "purge/FilterForm.h"
#include "rename/RenameForm.h"
#include "reports/ReportForm.h"
#include "search/frmSearch.h"
#include "session/Main.h"
#include "sidetools/Bookmarks.h"
#include "sidetools/Shortcuts.h"
#include "sidetools/frmAbout.h"
#include "sidetools/frmDrives.h"
#include "sidetools/frmTip.h"
#include "statistics/PlaylistStats.h"
#include "tageditor/Id3Info.h"

namespace
{
template <typename Form>
ToolForm *MakeForm(Main &main)
{
    return new Form(main);
}

constexpr Tool tools[] = {
    {"MEditId3", "Id3Info", &MakeForm<Id3Info>},
    {"MToolsFilter", "FilterForm", &MakeForm<FilterForm>, nullptr, true},
    {"MToolsReport", "ReportForm", &MakeForm<ReportForm>},
    {"MToolsM3UWiz", "AutoCreateWizard", &MakeForm<AutoCreateWizard>, nullptr, true},
    {"MToolsMP3CDWiz", "MP3CDWizard", &MakeForm<MP3CDWizard>},
    {"MToolsRename", "RenameForm", &MakeForm<RenameForm>, nullptr, true},
    {"MToolsSearch", "frmSearch", &MakeForm<frmSearch>},
    {"MViewDetails", "PlaylistStats", &MakeForm<PlaylistStats>},
    {"MToolsLoadWinamp", nullptr, nullptr, &LoadBookmarks},
    {"MToolsSaveWinamp", nullptr, nullptr, &SaveBookmarks},
    {"MToolsLocWinamp", nullptr, nullptr, [](Main &main) { ChooseBookmarkFile(main); }},
    {"MToolsShortCutFind", nullptr, nullptr, &FindFiles, false,
     [](const Main &main) { return main.World().Shell.Find.Exists(); }},
    {"MToolsShortCutExplore", nullptr, nullptr, &ExploreFiles},
    {"MToolsShortCutVolume", nullptr, nullptr, &OpenVolumeControl, false,
     [](const Main &main) { return main.World().Shell.VolumeControl.Exists(); }},
    {"MToolsDrives", "frmDrives", &MakeForm<frmDrives>, nullptr, false, [](const Main &) { return CanMapDrives(); }},
    {"MHelpTip", "frmTip", &MakeForm<frmTip>},
    {"MHelpAbout", "frmAbout", &MakeForm<frmAbout>},
};
} // namespace

std::span<const Tool> Tools()
{
    return tools;
}
