#include "compilation/MP3CDWizard.h"

#include "compilation/BuildCompilation.h"
#include "compilation/DiscIcon.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "reports/WriteReport.h"
#include "session/Hourglass.h"
#include "session/Icons.h"
#include "session/LongRun.h"
#include "session/Main.h"
#include "text/FormatText.h"

#include "ui_MP3CDWizard.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace
{
/// Pixels on the screen.
constexpr int pictureSide = 64;
} // namespace

void MP3CDWizard::EnableFileOptions()
{
    const bool table = ui->chkCreateTable->isChecked();
    for (QWidget *control : {ui->LoadReportSet, ui->DefReportSet, ui->PrevReportSet})
        control->setEnabled(table);
    const bool autorun = ui->chkCreateAutorun->isChecked();
    const bool icon = ui->chkAutoIcon->isChecked();
    ui->chkAutoIcon->setEnabled(autorun);
    ui->chkAutoBigList->setEnabled(autorun);
    ui->chkAutoIndex->setEnabled(autorun && ui->chkCopyBrowser->isChecked());
    for (QWidget *control : {static_cast<QWidget *>(ui->LabelIcon), static_cast<QWidget *>(ui->IconChooser),
                             static_cast<QWidget *>(ui->CDIcon)})
        control->setEnabled(autorun && icon);
    ui->CDIcon->setVisible(icon);
}

void MP3CDWizard::TakeAwayBrowser()
{
    ui->chkCopyBrowser->setChecked(false);
    ui->chkAutoIndex->setChecked(false);
    ui->chkCopyBrowser->setEnabled(false);
    ui->ShowSoftware->setEnabled(false);
}

void MP3CDWizard::PrepareFileOptions()
{
    if (!ExamineFile(main.World().ProgramFolder + u'\\' + BrowserProgram).Exists)
        TakeAwayBrowser();
    if (ReportFile.isEmpty() || !LoadReport(ReportFile)) {
        if (!ReportFile.isEmpty())
            main.World().Prompts.Message(
                {u"Could not load the Report Settings used in the previous session, using default."_s,
                 PromptIcon::Warning});
        ReportRecord = DefaultRecord();
        ReportFile.clear();
    }
    const bool shown = !IconFile.isEmpty() && ShowIconFile(IconFile);
    if (!shown && ui->IconChooser->currentIndex() == CustomPicture)
        ui->IconChooser->setCurrentIndex(UsualPicture);
}

ReportSettings MP3CDWizard::DefaultRecord() const
{
    ReportSettings record = DefaultReportSettings();
    record.Title = Name();
    record.Description = {};
    record.ColumnChecked.fill(true);
    return record;
}

bool MP3CDWizard::LoadReport(const QString &path)
{
    const bool loaded = LoadReportSettings(path, ReportRecord);
    if (loaded)
        ReportRecord.SaveRel = true;
    return loaded;
}

void MP3CDWizard::ShowPicture(const QIcon &picture)
{
    Picture = picture;
    PictureIsIcon = false;
    ui->CDIcon->setPixmap(picture.pixmap(QSize(pictureSide, pictureSide), devicePixelRatioF()));
}

bool MP3CDWizard::ShowIconFile(const QString &path)
{
    const DiscPicture picture = ReadDiscPicture(path);
    if (picture.Picture.isNull())
        return false;
    ShowPicture(picture.Picture);
    PictureIsIcon = picture.IsIcon;
    return true;
}

void MP3CDWizard::IconChooser_Click(int index)
{
    if (index != CustomPicture) {
        IconFile.clear();
        return;
    }
    const auto path = main.World().Prompts.OpenFile({u"Custom"_s, u"Icons (*.ico)|*.ico|"_s, u"rpt"_s, u"*.ico"_s});
    IconFile = path && ShowIconFile(*path) ? *path : QString();
    if (IconFile.isEmpty())
        ui->IconChooser->setCurrentIndex(UsualPicture);
}

void MP3CDWizard::LoadReportSet_Click()
{
    const auto path =
        main.World().Prompts.OpenFile({u"Load"_s, u"Report Settings (*.rpt)|*.rpt|"_s, u"rpt"_s, u"*.rpt"_s});
    if (!path)
        return;
    if (!LoadReport(*path)) {
        main.World().Prompts.Message({u"Could not read the file!"_s, PromptIcon::Warning});
        return;
    }
    ReportRecord.Title = Name();
    ReportRecord.Description = {};
    ReportFile = *path;
}

void MP3CDWizard::DefReportSet_Click()
{
    ReportRecord = DefaultRecord();
}

void MP3CDWizard::PrevReportSet_Click()
{
    const QString path = CompilationFolder + u"\\tmp.htm";
    ReportRecord.Title = CompilationTitle(Name(), main.World().Clock.Now());
    bool written = false;
    bool stopped = false;
    {
        const Hourglass hourglass(this);
        ui->ProgressBar1->show();
        const auto hideBar = qScopeGuard([this] { ui->ProgressBar1->hide(); });
        LongRun run(ui->ProgressBar1, nullptr);
        written = Previews.Make(path, [&] {
            return WriteWholeReport(path, CompilationFiles, ReportRecord, run.AsProgress(), main.World().Clock);
        });
        stopped = run.Stopped();
    }
    if (written)
        OpenPreview(path);
    else
        Report(ui->lblFilesReport,
               stopped ? u"Stopped: no report was written."_s : u"Could not write the file: "_s + ShownPath(path));
}

void MP3CDWizard::OpenPreview(const QString &path)
{
    const bool opened = main.World().Shell.Open(path);
    Report(ui->lblFilesReport, opened ? QString() : u"No program opened the file: "_s + ToHostPath(path));
}

void MP3CDWizard::ShowSoftware_Click()
{
    const QString path = CompilationFolder + u'\\' + BrowserOnDisc;
    const QString program = main.World().ProgramFolder + u'\\' + BrowserProgram;
    if (Previews.Make(path, [&] { return CopyFilePath(program, path); })) {
        OpenPreview(path);
        return;
    }
    main.World().Prompts.Message(
        {u"Failed to locate the browser software, it may not be installed correctly or not packaged with this program, "
         "please contact the program vendor..."_s,
         PromptIcon::Stop});
    TakeAwayBrowser();
}

CompilationPlan MP3CDWizard::Plan() const
{
    const bool ownIcon = PictureIsIcon && ui->IconChooser->currentIndex() == CustomPicture;
    return {.Folder = CompilationFolder,
            .Name = Name(),
            .ProgramFolder = main.World().ProgramFolder,
            .CopyBrowser = ui->chkCopyBrowser->isChecked(),
            .CreateTable = ui->chkCreateTable->isChecked(),
            .CreateAutorun = ui->chkCreateAutorun->isChecked(),
            .AutoIcon = ui->chkAutoIcon->isChecked(),
            .AutoBigList = ui->chkAutoBigList->isChecked(),
            .AutoIndex = ui->chkAutoIndex->isChecked(),
            .IconFile = ownIcon ? IconFile : QString(),
            .Icon = IconFileContent(Picture)};
}

void MP3CDWizard::RunBuild()
{
    EnableSteps(false, false);
    const auto done = qScopeGuard([this] {
        EnableSteps(true, false);
        ui->CmdClose->setFocus();
    });
    const Hourglass hourglass(this);
    LongRun run(ui->ProgressBar2, ui->lblReport);
    const BuildOutcome outcome = BuildCompilation(Plan(), CompilationFiles, ui->DragToBurn->Files, ReportRecord,
                                                  run.AsProgress(), main.World().Clock);
    hasFailed = outcome.Result != BuildResult::Done;
    if (!hasFailed)
        ReportSuccess(outcome.IconSaved);
    else
        ReportFailure(run.Stopped());
    if (outcome.Result == BuildResult::LeftBehind)
        Report(ui->lblReport, u"Done: Process failed, and not all of the files could be removed. The next start of the "
                              "program tries it again."_s);
}

void MP3CDWizard::ReportSuccess(bool iconSaved)
{
    SaveSettings();
    main.Answer(u"Compilation of "_s + Counted(CompilationFiles.size(), u"file"_s) + u" created" +
                (iconSaved ? u"" : u"; the icon could not be saved"));
    Report(ui->lblReport, u"Done: The process completed successfully."_s);
    ui->Label7->setText(
        u"The compilation is now ready to burn. You can either drag the Icon below into any CD-Writing software that "
        "supports drag and drop, or click 'Open Folder' and copy the contents of that folder into to the new CD's "
        "Root...Click 'Next>' to create another CD or 'X' to close the Wizard."_s);
    ui->DragToBurn->addItem(new QListWidgetItem(Icon("disc-46"_L1), Name()));
    ui->DragToBurn->DragPicture = ui->CDIcon->pixmap();
}

void MP3CDWizard::ReportFailure(bool stopped)
{
    main.Answer(u"No compilation created"_s);
    Report(ui->lblReport, stopped ? u"Stopped: any files created were removed."_s
                                  : u"Done: Process failed, any files created were removed."_s);
    ui->Label7->setText(
        stopped ? u"Click 'Next>' to try again..."_s
                : u"The process failed, possibly due to a read/write error, check that there are no 'autorun', 'htm' "
                  "files etc set as read only in the compilation root and then click 'Next>' to try again..."_s);
}
