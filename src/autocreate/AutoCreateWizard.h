#pragma once

#include "autocreate/FolderPlaylists.h"
#include "session/PaintPace.h"
#include "session/WizardForm.h"

#include <memory>

class QTreeWidgetItem;

namespace Ui
{
class AutoCreateWizard;
}

/// The wizard that writes a playlist for each folder of the open list, in that folder, in the root of all, or in both.
/// Each opening starts anew.
class AutoCreateWizard : public WizardForm
{
    Q_OBJECT

public:
    explicit AutoCreateWizard(Main &mainWindow);
    ~AutoCreateWizard() override;

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdNext_Click();
    void CmdBack_Click();
    void CmdTest_Click();
    void cmdUndo_Click();
    void lstPaths_DblClick(QTreeWidgetItem *row);

    /// The start of the wizard, and its restart after a run.
    void ResetWizard();
    void FillPaths();
    void CreateFiles();
    /// Finds the root of all items; without one the mode becomes that of the base folders.
    QString FindRoot();
    AutoCreateMode Mode() const;
    QStringList RequestedFolders() const;
    /// Tells which files will be made. False when there is none, or one twice.
    bool ReportPlan(const QStringList &plannedFiles);
    void ReportCounts(const AutoCreateCounts &counts, const QString &done, const QString &failed);
    /// Tells the main window how many playlists were written or deleted.
    void AnswerCounts(const QString &done, const AutoCreateCounts &counts);
    void AddLine(const QString &line);
    void ShowLastLine();

    std::unique_ptr<Ui::AutoCreateWizard> ui;
    PaintPace pace;
    int StepIndex = 0;
    /// The first folder of the list, for the naming test.
    QString SampleFolder;
    MadeFiles CreatedFiles;
};
