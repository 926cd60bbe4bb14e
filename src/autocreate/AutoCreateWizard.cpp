#include "autocreate/AutoCreateWizard.h"

#include "platform/Drives.h"
#include "playlist/NamingFormat.h"
#include "session/Hourglass.h"
#include "session/LongRun.h"
#include "session/Main.h"
#include "text/FileLists.h"
#include "text/FormatText.h"

#include "ui_AutoCreateWizard.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace
{
constexpr int LastStep = 3;

const QString &FirstFormat()
{
    static const QString format = u"%1-%2"_s;
    return format;
}

bool HoldsTwins(const QStringList &paths)
{
    return QSet<QString>(paths.cbegin(), paths.cend()).size() < paths.size();
}
} // namespace

AutoCreateWizard::AutoCreateWizard(Main &mainWindow) : WizardForm(mainWindow)
{
    ui = std::make_unique<Ui::AutoCreateWizard>();
    ui->setupUi(this);
    SetSteps(ui->FrameStep, ui->CmdNext, ui->CmdBack);
    MoveByLabel(ui->Label6);
    ConnectClicks<AutoCreateWizard>({
        {ui->CmdNext, &AutoCreateWizard::CmdNext_Click},
        {ui->CmdBack, &AutoCreateWizard::CmdBack_Click},
        {ui->CmdTest, &AutoCreateWizard::CmdTest_Click},
        {ui->cmdUndo, &AutoCreateWizard::cmdUndo_Click},
        {ui->CmdClose, &AutoCreateWizard::CmdClose_Click},
    });
    connect(ui->lstPaths, &TickList::itemDoubleClicked, this,
            [this](QTreeWidgetItem *row) { Run([&] { lstPaths_DblClick(row); }); });
}

AutoCreateWizard::~AutoCreateWizard() = default;

void AutoCreateWizard::Form_Activate()
{
    ui->BaseFolderOnly->setChecked(true);
    ui->Parameters->setText(FirstFormat());
    ResetWizard();
}

void AutoCreateWizard::ResetWizard()
{
    StepIndex = 0;
    ShowFrame(0);
    EnableSteps(true, false);
    ui->Label1->setText(u"Welcome to the 'Autocreate M3U's Wizard'. This Wizard will automatically create M3U files in "
                        "the folders of all the folders listed in the current playlist. Please choose where you would "
                        "like this process to create the files..."_s);
    for (QWidget *mode : {ui->BaseFolderOnly, ui->RootFolderOnly, ui->BothFolders})
        mode->setEnabled(true);
    ui->lstPaths->clear();
    ui->lstReport->clear();
    ui->TestOutput->clear();
    ui->Label5->setText(u"The process is now ready to begin. Click Next> to begin creating the M3U files..."_s);
    CreatedFiles.Clear();
    ui->cmdUndo->setEnabled(false);
    FillPaths();
}

void AutoCreateWizard::FillPaths()
{
    const Hourglass hourglass(this);
    main.DestroyFileArray();
    main.SaveFileArrayFromList(true);
    QStringList folders;
    ListDistinctFolders(main.FileArray, folders);
    for (const QString &folder : std::as_const(folders)) {
        if (AnalysePath(folder).IsFolder)
            ui->lstPaths->AddRow({ShownPath(folder)}, true)->setData(0, Qt::UserRole, folder);
    }
    const bool any = ui->lstPaths->RowCount() > 0;
    SampleFolder = any ? ui->lstPaths->topLevelItem(0)->data(0, Qt::UserRole).toString() : QString();
    if (any)
        return;
    ui->Label1->setText(u"This Wizard can only work with items that are pointed to correctly in the Playlist..."_s);
    for (QWidget *control : {static_cast<QWidget *>(ui->BaseFolderOnly), static_cast<QWidget *>(ui->RootFolderOnly),
                             static_cast<QWidget *>(ui->BothFolders), static_cast<QWidget *>(ui->CmdNext)})
        control->setEnabled(false);
}

void AutoCreateWizard::CmdNext_Click()
{
    ++StepIndex;
    if (StepIndex <= LastStep) {
        ShowFrame(StepIndex);
        EnableSteps(true, true);
    } else if (StepIndex == LastStep + 1) {
        EnableSteps(false, false);
        CreateFiles();
        EnableSteps(true, false);
        ui->CmdClose->setFocus();
    } else {
        ResetWizard();
    }
}

void AutoCreateWizard::CmdBack_Click()
{
    --StepIndex;
    ShowFrame(StepIndex);
    EnableSteps(true, StepIndex > 0);
}

void AutoCreateWizard::CmdTest_Click()
{
    const QString folder = SampleFolder.isEmpty() ? u"c:\\test\\mp3s\\artist\\title"_s : SampleFolder;
    const QString name = ExpandNamingFormat(ui->Parameters->text(), folder, main.World().Clock.Now());
    ui->TestOutput->setText(ShownPath(name));
    if (!name.isEmpty())
        return;
    main.World().Prompts.Message({u"The resultant File name will not be valid."_s, PromptIcon::Warning});
    ui->Parameters->setText(FirstFormat());
    ui->Parameters->setFocus();
}

void AutoCreateWizard::lstPaths_DblClick(QTreeWidgetItem *row)
{
    main.World().Shell.Explore(row->data(0, Qt::UserRole).toString());
}

AutoCreateMode AutoCreateWizard::Mode() const
{
    return ui->BaseFolderOnly->isChecked()   ? AutoCreateMode::BaseFolderOnly
           : ui->RootFolderOnly->isChecked() ? AutoCreateMode::RootFolderOnly
                                             : AutoCreateMode::BothFolders;
}

QStringList AutoCreateWizard::RequestedFolders() const
{
    QStringList folders;
    for (int row = 0; row < ui->lstPaths->RowCount(); ++row) {
        if (ui->lstPaths->IsTicked(row))
            folders.append(ui->lstPaths->topLevelItem(row)->data(0, Qt::UserRole).toString());
    }
    return folders;
}

QString AutoCreateWizard::FindRoot()
{
    AddLine(u"Searching for Root Folder..."_s);
    const QString root = FindCommonRoot(main.FileArray);
    if (!root.isEmpty()) {
        AddLine(u"Root Folder found as: "_s + ShownPath(root));
        return root + u'\\';
    }
    AddLine(u"Could not parse Root Folder, Changing mode..."_s);
    AddLine(u"Set mode: Create M3Us in Base folder only..."_s);
    ui->BaseFolderOnly->setChecked(true);
    return {};
}

bool AutoCreateWizard::ReportPlan(const QStringList &plannedFiles)
{
    if (plannedFiles.isEmpty()) {
        AddLine(u"No files requested..."_s);
        AddLine(u"PROCESS COMPLETE!"_s);
        return false;
    }
    for (const QString &path : plannedFiles)
        AddLine(ShownPath(path));
    AddLine(u"Searching for duplicates..."_s);
    if (!HoldsTwins(plannedFiles)) {
        AddLine(u"No duplicates found..."_s);
        return true;
    }
    for (const QString &line :
         {u"Duplicate Filenames found..."_s, u"PROCESS FAILED!"_s, u"You need to check the filenaming format"_s,
          u"to make sure it does not result in"_s, u"duplicate files being created. Try"_s,
          u"adding lower-level folders to the"_s, u"name. E.G %1. Click Next> to continue."_s})
        AddLine(line);
    return false;
}

void AutoCreateWizard::CreateFiles()
{
    const Hourglass hourglass(this);
    const auto showEnd = qScopeGuard([this] { ShowLastLine(); });
    main.DestroyFileArray();
    main.SaveFileArrayFromList(true);
    const QString root = FindRoot();
    AddLine(u"Building a list of files to be created..."_s);
    const auto plan = PlanPlaylists({Mode(), root, RequestedFolders(), ui->Parameters->text()}, main.World().Clock.Now);
    if (!ReportPlan(RequestedPaths(plan))) {
        AnswerCounts(u"written"_s, {});
        return;
    }
    AddLine(u"Creating Files..."_s);
    LongRun run(nullptr, nullptr);
    const AutoCreateCounts counts = WritePlaylists(
        plan, main.FileArray, CreatedFiles, [this](const QString &line) { AddLine(line); }, run.AsProgress());
    ReportCounts(counts, u" Files written OK"_s, u" Files could not be created"_s);
    AnswerCounts(u"written"_s, counts);
    ui->Label5->setText(u"Process Complete, Click Next> to repeat the Wizard. If you wish to delete the files created "
                        "click Undo."_s);
    ui->cmdUndo->setEnabled(CreatedFiles.Count() > 0);
}

void AutoCreateWizard::ReportCounts(const AutoCreateCounts &counts, const QString &done, const QString &failed)
{
    AddLine(u"PROCESS COMPLETE!"_s);
    AddLine(QString::number(counts.Requested) + u" Files Requested"_s);
    AddLine(QString::number(counts.Done) + done);
    AddLine(QString::number(counts.Failed) + failed);
}

void AutoCreateWizard::AnswerCounts(const QString &done, const AutoCreateCounts &counts)
{
    const QString failed = counts.Failed > 0 ? u", "_s + GroupedDigits(counts.Failed) + u" failed" : QString();
    main.Answer(Counted(counts.Done, u"playlist"_s) + u' ' + done + failed);
}

void AutoCreateWizard::cmdUndo_Click()
{
    if (main.World().Prompts.Message(
            {u"Delete all files created?"_s, PromptIcon::Question, PromptButtons::YesNoCancel}) != PromptAnswer::Yes)
        return;
    const Hourglass hourglass(this);
    AddLine(u"User request UNDO...."_s);
    const AutoCreateCounts counts = UndoPlaylists(CreatedFiles, [this](const QString &line) { AddLine(line); });
    ReportCounts(counts, u" Files deleted OK"_s, u" Files could not be deleted [in use, missing?]"_s);
    AnswerCounts(u"deleted"_s, counts);
    ui->cmdUndo->setEnabled(counts.Failed > 0);
    ShowLastLine();
}

void AutoCreateWizard::AddLine(const QString &line)
{
    ui->lstReport->addItem(line);
    if (pace.Due())
        ShowLastLine();
}

void AutoCreateWizard::ShowLastLine()
{
    ui->lstReport->scrollToBottom();
    ui->lstReport->repaint();
}
