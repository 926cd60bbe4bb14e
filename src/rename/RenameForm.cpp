#include "rename/RenameForm.h"

#include "rename/PreviewModel.h"
#include "session/Hourglass.h"
#include "session/LongRun.h"
#include "session/Main.h"

#include "ui_RenameForm.h"

using namespace Qt::StringLiterals;

RenameForm::RenameForm(Main &mainWindow) : ToolForm(mainWindow), ui(std::make_unique<Ui::RenameForm>())
{
    ui->setupUi(this);
    Form_Load();
    ConnectControls();
}

RenameForm::~RenameForm() = default;

void RenameForm::Form_Load()
{
    for (int limit = RenameSettings::MinTruncval; limit <= RenameSettings::MaxTruncval; ++limit)
        ui->Truncval->addItem(QString::number(limit));
    ui->cmdUndo->setEnabled(false);
    Timer1.setSingleShot(true);
    Delay_Click();
    ui->TestList->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    previewModel = new PreviewModel(this);
    ui->PreviewList->setModel(previewModel);
    ui->PreviewList->header()->setSectionResizeMode(QHeaderView::Stretch);
    RestoreDefaultRenameSettings(Settings);
    ShowRenameSettings(Settings);
}

void RenameForm::ConnectControls()
{
    ConnectClicks<RenameForm>({
        {ui->AddRule, &RenameForm::AddRule_Click},
        {ui->RemoveRule, &RenameForm::RemoveRule_Click},
        {ui->Capitalise, &RenameForm::Options_Click},
        {ui->LowFilename, &RenameForm::Options_Click},
        {ui->Extension, &RenameForm::Options_Click},
        {ui->RenID3, &RenameForm::Options_Click},
        {ui->Increment, &RenameForm::Options_Click},
        {ui->Truncat, &RenameForm::Options_Click},
        {ui->RenTest, &RenameForm::RenTest_Click},
        {ui->RulesLoad, &RenameForm::RulesLoad_Click},
        {ui->RulesSave, &RenameForm::RulesSave_Click},
        {ui->RulesDef, &RenameForm::RulesDef_Click},
        {ui->AllowOnce, &RenameForm::AllowOnce_Click},
        {ui->Delay, &RenameForm::Delay_Click},
        {ui->CmdProcess, &RenameForm::CmdProcess_Click},
        {ui->cmdUndo, &RenameForm::cmdUndo_Click},
        {ui->CmdClose, &RenameForm::CmdClose_Click},
    });
    connect(ui->RuleList, &QTreeWidget::itemChanged, this, [this] { Run([this] { RuleList_Click(); }); });
    connect(ui->IncPosC, &QComboBox::activated, this, [this] { Run([this] { IncPosC_Click(); }); });
    connect(ui->Truncval, &QComboBox::activated, this, [this] { Run([this] { Truncval_Click(); }); });
    connect(ui->SSTab1, &QTabWidget::currentChanged, this, [this] { Run([this] { SSTab1_Click(); }); });
    connect(&Timer1, &QTimer::timeout, this, &RenameForm::Timer1_Timer);
}

void RenameForm::Report(const QString &text)
{
    ToolForm::Report(ui->lbReport, text);
}

bool RenameForm::CollectSelection()
{
    main.DestroyFileArray();
    main.SaveFileArrayFromList(false);
    if (main.FileArray.isEmpty())
        Report(u"Nothing Selected..."_s);
    return !main.FileArray.isEmpty();
}

void RenameForm::Form_Activate()
{
    Report(u"Twiddling Thumbs..."_s);
    const bool any = CollectSelection();
    if (any)
        Report(QString::number(main.FileArray.size()) + u" Items Selected.");
    ui->CmdProcess->setEnabled(any);
    RefreshFiles();
}

void RenameForm::CmdClose_Click()
{
    main.ListView1_Click();
    Report(u"Ready..."_s);
    ToolForm::CmdClose_Click();
}

void RenameForm::SSTab1_Click()
{
    if (ui->SSTab1->currentWidget() == ui->SummaryPage)
        ShowSummary();
    else if (ui->SSTab1->currentWidget() == ui->PreviewPage)
        ShowPreview();
}

void RenameForm::RefreshFiles()
{
    titles.clear();
    if (ui->SSTab1->currentWidget() == ui->PreviewPage)
        ShowPreview();
}

void RenameForm::ShowSummary()
{
    const Hourglass hourglass(this);
    ui->TestList->clear();
    for (const auto &[step, text] : SummaryOf(Settings))
        new QTreeWidgetItem(ui->TestList, {step, text});
    Report(u"Generated Report of Renaming Rules..."_s);
}

void RenameForm::ShowPreview()
{
    const Hourglass hourglass(this);
    main.DestroyFileArray();
    main.SaveFileArrayFromList(false);
    const QStringList paths = main.FileArray;
    const RenameRules rules(Settings, [this](const QString &path, const QString &extension) {
        const auto known = titles.constFind(path);
        return known != titles.cend() ? *known : *titles.insert(path, TagTitle(path, extension));
    });
    FolderNames folders;
    LongRun run(ui->ProgressBar1, nullptr);
    RenamePreview preview = PreviewRename(rules, paths, folders, run.AsProgress());
    ui->ProgressBar1->reset();
    ui->lbPreview->setText(PreviewText(preview, paths));
    previewModel->Show(std::move(preview.Items));
}

QString RenameForm::PreviewText(const RenamePreview &preview, const QStringList &paths) const
{
    const auto number = [&preview](PreviewState state) { return preview.Count(state); };
    QString text = u"%1 of %2 will be renamed"_s.arg(number(PreviewState::Renamed)).arg(paths.size());
    const std::tuple<int, QString, QString> others[] = {
        {number(PreviewState::Taken) + number(PreviewState::Exists), u"collides"_s, u"collide"_s},
        {number(PreviewState::Missing), u"is missing"_s, u"are missing"_s},
        {number(PreviewState::Refused), u"is refused"_s, u"are refused"_s},
    };
    for (const auto &[count, one, many] : others) {
        if (count > 0)
            text += u", %1 %2"_s.arg(count).arg(count == 1 ? one : many);
    }
    const auto shown = static_cast<qsizetype>(preview.Items.size());
    if (shown < paths.size())
        text += u", ended after %1 of %2"_s.arg(shown).arg(paths.size());
    if (IsSet(Settings.Increment) && InSeveralFolders(paths))
        text += u". The numbers start anew in each folder"_s;
    return text;
}
