#pragma once

#include "rename/RenamePreview.h"
#include "session/ToolForm.h"

#include <QTimer>

#include <memory>

class PreviewModel;

namespace Ui
{
class RenameForm;
}

/// The batch rename of the selected items by rules. It stays loaded when it is closed, so that its last run can be
/// undone until the program ends.
class RenameForm : public ToolForm
{
    Q_OBJECT

public:
    explicit RenameForm(Main &mainWindow);
    ~RenameForm() override;

    /// Shows the record in the controls of the rule and option pages.
    void ShowRenameSettings(const RenameSettings &settings);

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdClose_Click() override;
    void AddRule_Click();
    void RemoveRule_Click();
    void RuleList_Click();
    /// The six boxes of the name.
    void Options_Click();
    void IncPosC_Click();
    void Truncval_Click();
    void RenTest_Click();
    void RulesLoad_Click();
    void RulesSave_Click();
    void RulesDef_Click();
    /// What the page in front shows follows the settings.
    void SSTab1_Click();
    void AllowOnce_Click();
    void Delay_Click();
    void CmdProcess_Click();
    void cmdUndo_Click();
    void Timer1_Timer();

    void Form_Load();
    void ConnectControls();
    void Report(const QString &text);
    /// Fills FileArray with the selected items; false, and it is told, when there are none.
    bool CollectSelection();
    /// The files are others now, or have other names.
    void RefreshFiles();
    void ShowSummary();
    void ShowPreview();
    QString PreviewText(const RenamePreview &preview, const QStringList &paths) const;
    /// What is asked before a run; false when it shall not take place.
    bool ConfirmRun(bool &perFolder);
    bool ConfirmMissing();
    bool ConfirmFolders(bool &perFolder);
    void FinishRun(const QStringList &paths, const RenameOutcome &outcome);
    int LeftToUndo() const;

    std::unique_ptr<Ui::RenameForm> ui;
    RenameSettings Settings;
    /// Full paths before and after the last run, an item beside the other.
    QStringList UndoOldPaths;
    QStringList UndoNewPaths;
    QTimer Timer1;
    PreviewModel *previewModel = nullptr;
    /// What the tags of the selected files give, by their paths.
    QHash<QString, QString> titles;
};
