#include "rename/FollowFiles.h"
#include "rename/RenameForm.h"
#include "session/Hourglass.h"
#include "session/LongRun.h"
#include "session/Main.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include "ui_RenameForm.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
// Milliseconds until a run can follow another one.
constexpr int longDelay = 4000;
constexpr int shortDelay = 10;
} // namespace

bool RenameForm::ConfirmRun(bool &perFolder)
{
    if (!ui->Warning->isChecked()) {
        const PromptAnswer answer = main.World().Prompts.Message(
            {u"Warning, you are about to RENAME ALL FILTERABLE SELECTED mp3 files, If two filenames match after "
             "filtering only the first in the list will be renamed. It is also recommended that you remove duplicate "
             "items and evaluate the result of filename length limiting before processing. Do you want to continue "
             "the process?"_s,
             PromptIcon::None, PromptButtons::YesNo});
        if (answer != PromptAnswer::Yes)
            return false;
    }
    ui->Warning->setChecked(true);
    Report(u"Building List of Selected Items..."_s);
    return CollectSelection() && ConfirmMissing() && ConfirmFolders(perFolder);
}

bool RenameForm::ConfirmMissing()
{
    Report(u"Looking for Missing Items..."_s);
    {
        LongRun run(ui->ProgressBar1, nullptr);
        const bool missing = AnyMissing(main.FileArray, run.AsProgress());
        ui->ProgressBar1->reset();
        if (run.Stopped())
            Report(u"Stopped: No Item was renamed..."_s);
        if (run.Stopped() || !missing)
            return !run.Stopped();
    }
    const PromptAnswer answer = main.World().Prompts.Message(
        {u"Not all of the items you selected are pointed to correctly. Do you want to proceed? [This could cause "
         "inconsistency in the resultant filenames!]"_s,
         PromptIcon::None, PromptButtons::YesNoCancel});
    if (answer != PromptAnswer::Yes)
        Report(u"Use 'Remove Non-Existent Items' to Purge Missing Files..."_s);
    return answer == PromptAnswer::Yes;
}

bool RenameForm::ConfirmFolders(bool &perFolder)
{
    Report(u"Looking for Multiple Folders..."_s);
    perFolder = IsSet(Settings.Increment);
    if (!perFolder || !InSeveralFolders(main.FileArray))
        return true;
    const PromptAnswer answer = main.World().Prompts.Message(
        {u"You have chosen to add incremental numbers to each item to be renamed, yet the items selected exist in "
         "different folders! Do you want to 'Reset' the count for each individual folder? Clicking 'No' will simply "
         "increment the number for every item renamed."_s,
         PromptIcon::None, PromptButtons::YesNoCancel});
    perFolder = answer == PromptAnswer::Yes;
    if (answer == PromptAnswer::Cancel)
        Report(u"Select ALL files from a single folder to be sure..."_s);
    return answer != PromptAnswer::Cancel;
}

void RenameForm::CmdProcess_Click()
{
    bool perFolder = false;
    if (!ConfirmRun(perFolder))
        return;
    const Hourglass hourglass(this);
    Timer1.stop();
    ui->CmdProcess->setEnabled(false);
    Report(u"Destroying Old Undo File Items..."_s);
    const QStringList paths = main.FileArray;
    Report(u"Renaming Items..."_s);
    RenameOutcome outcome;
    {
        LongRun run(ui->ProgressBar1, nullptr);
        outcome = RunRename(Settings, paths, perFolder, run.AsProgress());
    }
    FinishRun(paths, outcome);
    RefreshFiles();
}

void RenameForm::FinishRun(const QStringList &paths, const RenameOutcome &outcome)
{
    const qsizetype selected = paths.size();
    const qsizetype done = outcome.NewPaths.size();
    // A run that has changed nothing leaves the undo of the one before.
    if (outcome.Changed > 0) {
        UndoOldPaths = paths.first(done);
        UndoNewPaths = outcome.NewPaths;
        FollowFiles(main.ListView1, UndoOldPaths, UndoNewPaths);
    }
    if (!ui->AllowOnce->isChecked())
        Timer1.start();
    ui->ProgressBar1->reset();
    QString report = u"Done: %1/%2 Items were Processed"_s.arg(outcome.Changed).arg(done);
    if (done < selected)
        report += u", ended after %1 of %2"_s.arg(done).arg(selected);
    Report(report);
    main.Answer(Counted(outcome.Changed, u"file"_s) + u" renamed");
    ui->cmdUndo->setEnabled(LeftToUndo() > 0);
    if (outcome.Changed > 0)
        main.PlaylistDirty = true;
    else
        ui->CmdProcess->setEnabled(true);
}

void RenameForm::cmdUndo_Click()
{
    const Hourglass hourglass(this);
    Report(u"Restoring Filenames..."_s);
    UndoOutcome outcome;
    {
        LongRun run(ui->ProgressBar1, nullptr);
        outcome = UndoRename(UndoOldPaths, UndoNewPaths, run.AsProgress());
    }
    const int untried = LeftToUndo() - outcome.Failed;
    const std::vector<int> rows = FollowFiles(main.ListView1, outcome.From, outcome.To);
    main.PlaylistDirty = main.PlaylistDirty || !rows.empty();
    // Rows that Undo would bring back have lost their files.
    if (outcome.Restored() > 0)
        main.ListView1.Steps().End();
    main.ListView1.Reselect(
        [&](int row, const PlaylistItem &) { return std::binary_search(rows.begin(), rows.end(), row); });
    ui->cmdUndo->setEnabled(LeftToUndo() > 0);
    ui->ProgressBar1->reset();
    QString report = u"Done: %1/%2 Items were Restored"_s.arg(outcome.Restored()).arg(outcome.Attempted);
    if (untried > 0)
        report += u", ended after %1 of %2"_s.arg(outcome.Attempted).arg(outcome.Attempted + untried);
    Report(report);
    if (outcome.Failed == 0 && untried == 0)
        Timer1.start();
    RefreshFiles();
}

int RenameForm::LeftToUndo() const
{
    int left = 0;
    for (qsizetype i = 0; i < UndoOldPaths.size(); ++i)
        left += UndoOldPaths[i] != UndoNewPaths[i] ? 1 : 0;
    return left;
}

void RenameForm::AllowOnce_Click()
{
    if (ui->AllowOnce->isChecked() && ui->cmdUndo->isEnabled())
        ui->CmdProcess->setEnabled(false);
    else if (!ui->AllowOnce->isChecked() && !ui->CmdProcess->isEnabled())
        Timer1.start();
}

void RenameForm::Delay_Click()
{
    Timer1.setInterval(ui->Delay->isChecked() ? longDelay : shortDelay);
}

void RenameForm::Timer1_Timer()
{
    ui->CmdProcess->setEnabled(true);
}
