#pragma once

#include "purge/DriveSearch.h"
#include "purge/Restoration.h"
#include "session/ToolForm.h"

#include <QStringList>

#include <memory>
#include <vector>

class LongRun;

namespace Ui
{
class FilterForm;
}

/// The purge dialog: selects or removes repeated and missing rows, or searches the drives for the missing files and
/// leads the user through restoring them, folder by folder.
class FilterForm : public ToolForm
{
    Q_OBJECT

public:
    explicit FilterForm(Main &mainWindow);
    ~FilterForm() override;

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdSearch_Click();
    void NxtPath_Click();
    void SkipPath_Click();
    void AbortPath_Click();
    void FoundPaths_DblClick();
    void CmdClose_Click() override;

    /// By the ticks, the action, and whether a restoration goes on.
    void EnableControls();
    bool IsRestoring() const { return FolderIndex > 0; }
    /// Selects just these rows, ascending, and brings the last one into view.
    void SelectRows(const std::vector<int> &rows);

    // What was done, for the main window.
    QString PurgeDuplicates();
    QString PurgeMissing();
    QString SearchMissing(const MissingItems &items);
    void BeginRestoration(const MissingItems &items);

    /// Goes on to the next folder, or ends the restoration behind the last one.
    void NextFolder();
    void ShowFolder();
    void ShowFolderNumber();
    /// False when the user stopped it.
    bool ApplyChoice();
    void EndRestoration(const QString &report);

    std::unique_ptr<Ui::FilterForm> ui;

    // Of a restoration.
    MissingIndex missingIndex;
    /// A folder that comes back later, not next to its like, stands again.
    QStringList MissingFolders;
    struct FoundItems FoundItems;
    bool UsePathInfo = false;
    int RestoredCount = 0;
    /// The current one of MissingFolders, from 1; 0 while nothing is being restored.
    int FolderIndex = 0;
    MissingFolder missing;
    /// A row of FoundPaths each.
    std::vector<Suggestion> suggestions;
};
