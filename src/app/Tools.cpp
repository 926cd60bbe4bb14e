#include "app/Tools.h"

#include "autocreate/AutoCreateWizard.h"
#include "purge/FilterForm.h"
#include "rename/RenameForm.h"
#include "reports/ReportForm.h"
#include "search/frmSearch.h"
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
    {"MToolsRename", "RenameForm", &MakeForm<RenameForm>, nullptr, true},
    {"MToolsSearch", "frmSearch", &MakeForm<frmSearch>},
    {"MViewDetails", "PlaylistStats", &MakeForm<PlaylistStats>},
};
} // namespace

std::span<const Tool> Tools()
{
    return tools;
}
