#include "compilation/MP3CDWizard.h"

#include "compilation/BuildCompilation.h"
#include "compilation/CompilationFiles.h"
#include "compilation/DiscCapacity.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "session/Hourglass.h"
#include "session/Icons.h"
#include "session/LongRun.h"
#include "session/Main.h"
#include "text/FormatText.h"

#include "ui_MP3CDWizard.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace
{
constexpr int lastStep = 3;
constexpr int stockPictures = 50;
constexpr qsizetype longestName = 230;
constexpr int recentNames = 5;

const QString section = u"MP3CDWiz"_s;

QString RecentKey(int index)
{
    return u"RI"_s + QString::number(index + 1);
}

QIcon StockPicture(int number)
{
    return Icon(QLatin1StringView("disc-" + QByteArray::number(number)));
}

/// A number of the settings that is an entry of the list, else the usual one.
void ShowEntry(QComboBox *list, const QString &number, int usual)
{
    bool ok = false;
    const int index = number.toInt(&ok);
    list->setCurrentIndex(ok && index >= 0 && index < list->count() ? index : usual);
}

/// What the host takes for the folder itself, or the one above.
bool IsNoName(const QString &name)
{
    return std::all_of(name.begin(), name.end(), [](QChar unit) { return unit == u'.' || unit == u' '; });
}
} // namespace

MP3CDWizard::MP3CDWizard(Main &mainWindow) : WizardForm(mainWindow)
{
    ui = std::make_unique<Ui::MP3CDWizard>();
    ui->setupUi(this);
    SetSteps(ui->FrameStep, ui->CmdNext, ui->CmdBack);
    MoveByLabel(ui->LabelTitle);
    FillLists();
    ConnectControls();
}

MP3CDWizard::~MP3CDWizard()
{
    Previews.TakeAllBack();
}

void MP3CDWizard::FillLists()
{
    ui->ImSize->addItems(DiscNames());
    ui->IconChooser->addItem(u"Custom"_s);
    for (int number = 1; number <= stockPictures; ++number)
        ui->IconChooser->addItem(StockPicture(number), QString::number(number));
    // A completed name would be taken for one that was typed.
    ui->CDROMLoc->setCompleter(nullptr);
    // It takes the keys for its field.
    ui->CDROMLoc->installEventFilter(this);
    for (QWidget *coming : {static_cast<QWidget *>(ui->CDIcon), static_cast<QWidget *>(ui->ProgressBar1)}) {
        QSizePolicy policy = coming->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        coming->setSizePolicy(policy);
    }
    ui->ProgressBar1->hide();
}

void MP3CDWizard::ConnectControls()
{
    ConnectClicks<MP3CDWizard>({
        {ui->CmdNext, &MP3CDWizard::CmdNext_Click},
        {ui->CmdBack, &MP3CDWizard::CmdBack_Click},
        {ui->CmdClose, &MP3CDWizard::CmdClose_Click},
        {ui->BrowseAssembleLoc, &MP3CDWizard::BrowseAssembleLoc_Click},
        {ui->BrowseImageLoc, &MP3CDWizard::BrowseImageLoc_Click},
        {ui->OpenImageLoc, &MP3CDWizard::OpenImageLoc_Click},
        {ui->OpenFol, &MP3CDWizard::OpenImageLoc_Click},
        {ui->LoadReportSet, &MP3CDWizard::LoadReportSet_Click},
        {ui->DefReportSet, &MP3CDWizard::DefReportSet_Click},
        {ui->PrevReportSet, &MP3CDWizard::PrevReportSet_Click},
        {ui->ShowSoftware, &MP3CDWizard::ShowSoftware_Click},
    });
    connect(ui->AssembleLoc, &QLineEdit::textChanged, this, &MP3CDWizard::EnableFolders);
    connect(ui->CDROMLoc, &QComboBox::editTextChanged, this, &MP3CDWizard::EnableFolders);
    for (QCheckBox *box : {ui->chkCreateTable, ui->chkCopyBrowser, ui->chkCreateAutorun, ui->chkAutoIcon})
        connect(box, &QCheckBox::toggled, this, &MP3CDWizard::EnableFileOptions);
    const auto showStockPicture = [this](int index) {
        if (index > 0)
            ShowPicture(StockPicture(index));
    };
    connect(ui->IconChooser, &QComboBox::currentIndexChanged, this, showStockPicture);
    // Also the one that was chosen before, where another picture is shown.
    connect(ui->IconChooser, &QComboBox::activated, this, showStockPicture);
    connect(ui->IconChooser, &QComboBox::activated, this,
            [this](int index) { Run([&] { IconChooser_Click(index); }); });
}

void MP3CDWizard::CmdClose_Click()
{
    ToolForm::CmdClose_Click();
    main.TellNotTakenBack(Previews.TakeAllBack());
}

void MP3CDWizard::Form_Activate()
{
    ui->DragToBurn->Files.clear();
    ui->AssembleLoc->clear();
    ui->CDROMLoc->clear();
    IconFile.clear();
    ReportFile.clear();
    hasFailed = false;
    ResetWizard();
}

void MP3CDWizard::ResetWizard()
{
    StepIndex = 0;
    ShowFrame(0);
    ui->chkCopyBrowser->setEnabled(true);
    ui->ShowSoftware->setEnabled(true);
    // What was entered for a compilation that failed is there for another try.
    if (!hasFailed)
        LoadChoices();
    EnableFolders();
    EnableFileOptions();
    ui->lblCheckFilesReport->clear();
    ui->lblFilesReport->clear();
    ui->lblReport->setText(u"Click 'Next>' to create the files of the compilation."_s);
    ui->Label7->clear();
    ui->DragToBurn->clear();
}

void MP3CDWizard::LoadChoices()
{
    for (const auto &[key, box] : Boxes())
        box->setChecked(true);
    ui->ImSize->setCurrentIndex(UsualDisc);
    ui->IconChooser->setCurrentIndex(UsualPicture);
    LoadSettings();
}

QList<std::pair<QString, QCheckBox *>> MP3CDWizard::Boxes() const
{
    return {{u"CB"_s, ui->chkCopyBrowser}, {u"CT"_s, ui->chkCreateAutorun}, {u"AI"_s, ui->chkAutoIcon},
            {u"AB"_s, ui->chkAutoBigList}, {u"AX"_s, ui->chkAutoIndex},     {u"CA"_s, ui->chkCreateTable}};
}

void MP3CDWizard::LoadSettings()
{
    const auto text = [this](const QString &key) { return main.World().Settings.Read(section, key); };
    if (text(u"Init"_s).isEmpty())
        return;
    for (const auto &[key, box] : Boxes())
        box->setChecked(text(key) == "1"_L1);
    ui->AssembleLoc->setText(text(u"AL"_s));
    ShowEntry(ui->ImSize, text(u"SZ"_s), UsualDisc);
    ShowEntry(ui->IconChooser, text(u"IC"_s), UsualPicture);
    IconFile = text(u"IFL"_s);
    ReportFile = text(u"RFL"_s);
    const QString name = Name();
    ui->CDROMLoc->clear();
    for (int index = 0; index < recentNames; ++index) {
        if (const QString recent = text(RecentKey(index)); !recent.isEmpty())
            ui->CDROMLoc->addItem(recent);
    }
    ui->CDROMLoc->setEditText(name);
}

void MP3CDWizard::SaveSettings() const
{
    const auto write = [this](const QString &key, const QString &value) {
        main.World().Settings.Write(section, key, value);
    };
    write(u"Init"_s, u"1"_s);
    for (const auto &[key, box] : Boxes())
        write(key, box->isChecked() ? u"1"_s : u"0"_s);
    write(u"AL"_s, ui->AssembleLoc->text());
    write(u"SZ"_s, QString::number(ui->ImSize->currentIndex()));
    write(u"IC"_s, QString::number(ui->IconChooser->currentIndex()));
    write(u"IFL"_s, IconFile);
    write(u"RFL"_s, ReportFile);
    for (int index = 0; index < recentNames; ++index)
        write(RecentKey(index), ui->CDROMLoc->itemText(index));
}

void MP3CDWizard::EnableFolders()
{
    const bool root = !ui->AssembleLoc->text().isEmpty();
    ui->CDROMLoc->setEnabled(root);
    ui->BrowseImageLoc->setEnabled(root);
    EnableSteps(root && !Name().isEmpty(), false);
}

bool MP3CDWizard::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != ui->CDROMLoc || event->type() != QEvent::KeyPress)
        return WizardForm::eventFilter(watched, event);
    const QString typed = static_cast<QKeyEvent *>(event)->text();
    const bool isCharacter = !typed.isEmpty() && typed[0].isPrint();
    return isCharacter && (Name().size() >= longestName || u"\\/:"_s.contains(typed[0]));
}

QString MP3CDWizard::Name() const
{
    return ui->CDROMLoc->currentText();
}

void MP3CDWizard::BrowseAssembleLoc_Click()
{
    const auto folder = main.World().Prompts.Folder({u"Select Folder..."_s});
    if (folder)
        ui->AssembleLoc->setText(folder->endsWith(u'\\') ? *folder : *folder + u'\\');
}

void MP3CDWizard::BrowseImageLoc_Click()
{
    const auto folder = main.World().Prompts.Folder({u"Select Folder..."_s});
    if (!folder)
        return;
    const QString root = FromPlaylistLine(ui->AssembleLoc->text(), CurrentDirectory());
    if (folder->contains(root))
        ui->CDROMLoc->setEditText(RemoveText(*folder, root));
    else
        main.World().Prompts.Message(
            {u"The build folder must be a sub-folder of the Root specified..."_s, PromptIcon::Information});
}

void MP3CDWizard::OpenImageLoc_Click()
{
    main.World().Shell.Explore(CompilationFolder);
}

void MP3CDWizard::CmdNext_Click()
{
    if (StepIndex == 0 && !EnsureCompilationFolder()) {
        main.World().Prompts.Message({u"Could not create a new folder for the Image."_s, PromptIcon::Stop});
        return;
    }
    if (StepIndex == 1 && !CheckFiles())
        return;
    ++StepIndex;
    if (StepIndex > lastStep + 1) {
        ResetWizard();
    } else if (StepIndex > lastStep) {
        RunBuild();
    } else {
        if (StepIndex == 2)
            PrepareFileOptions();
        else
            main.TellNotTakenBack(Previews.TakeAllBack());
        ShowFrame(StepIndex);
        EnableSteps(true, true);
    }
}

void MP3CDWizard::CmdBack_Click()
{
    --StepIndex;
    ShowFrame(StepIndex);
    EnableSteps(true, StepIndex > 0);
}

bool MP3CDWizard::EnsureCompilationFolder()
{
    if (IsNoName(Name()))
        return false;
    const QString here = CurrentDirectory();
    const QString typed = ui->AssembleLoc->text() + Name();
    const PathInfo folder = AnalysePath(AbsolutePath(FromPlaylistLine(typed, here), here));
    const bool exists = folder.Valid || (AnalysePath(FolderOf(folder.Path)).IsFolder && EnsureFolder(folder.Path));
    if (exists) {
        CompilationFolder = folder.Path;
        ui->lblCheckFilesReport->setText(u"Folder: "_s + ShownPath(CompilationFolder));
        RememberName();
    }
    return exists;
}

void MP3CDWizard::RememberName()
{
    const QString name = Name();
    if (ui->CDROMLoc->findText(name) < 0)
        ui->CDROMLoc->insertItem(0, name);
    while (ui->CDROMLoc->count() > recentNames)
        ui->CDROMLoc->removeItem(recentNames);
    ui->CDROMLoc->setEditText(name);
}

bool MP3CDWizard::CheckFiles()
{
    CompilationCheck check;
    bool stopped = false;
    {
        const Hourglass hourglass(this);
        LongRun run(nullptr, ui->lblCheckFilesReport);
        check = CheckCompilationFiles(CompilationFolder, ui->ImSize->currentIndex(), run.AsProgress());
        stopped = run.Stopped();
    }
    CompilationFiles = check.Files;
    const QString found = stopped ? u"Stopped: media files found so far: "_s : u"Media files found: "_s;
    ui->lblCheckFilesReport->setText(found + GroupedDigits(check.Files.size()));
    if (check.State == CompilationState::Empty)
        main.World().Prompts.Message(
            {u"You must add at least one MP3 file to the compilation."_s, PromptIcon::Warning});
    else if (check.State == CompilationState::TooLarge)
        main.World().Prompts.Message({u"The total size of all the files is "_s + FormatFileSize(check.Excess) +
                                          u" more than the capacity of the CD-ROM!\nRemove some of the files and try "
                                          "again..."_s,
                                      PromptIcon::Warning});
    return check.State == CompilationState::Fits;
}
