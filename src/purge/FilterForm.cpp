#include "purge/FilterForm.h"

#include "platform/Drives.h"
#include "purge/Duplicates.h"
#include "purge/MissingItems.h"
#include "session/GridView.h"
#include "session/Hourglass.h"
#include "session/LongRun.h"
#include "session/Main.h"
#include "text/FileLists.h"
#include "text/FormatText.h"

#include "ui_FilterForm.h"

#include <QHeaderView>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace
{
/// The choices of `MissAction`.
enum MissChoice { SelectMissing, RemoveMissing, SearchForMissing };
/// The first choices of `DupAction` take every duplicate, the others spare the first of each.
constexpr int SelectAllButFirst = 2;
} // namespace

FilterForm::FilterForm(Main &mainWindow) : ToolForm(mainWindow), ui(std::make_unique<Ui::FilterForm>())
{
    ui->setupUi(this);
    ui->FoundPaths->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    ui->FoundPaths->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    ui->FoundPaths->header()->setStretchLastSection(false);
    ConnectClicks<FilterForm>({
        {ui->EnbDuplicate, &FilterForm::EnableControls},
        {ui->EnbPurge, &FilterForm::EnableControls},
        {ui->CmdSearch, &FilterForm::CmdSearch_Click},
        {ui->NxtPath, &FilterForm::NxtPath_Click},
        {ui->SkipPath, &FilterForm::SkipPath_Click},
        {ui->AbortPath, &FilterForm::AbortPath_Click},
        {ui->CmdClose, &FilterForm::CmdClose_Click},
    });
    connect(ui->MissAction, &QComboBox::currentIndexChanged, this, &FilterForm::EnableControls);
    connect(ui->FoundPaths, &QTreeWidget::itemDoubleClicked, this, [this] { Run([this] { FoundPaths_DblClick(); }); });
}

FilterForm::~FilterForm() = default;

void FilterForm::Form_Activate()
{
    ui->lbDrives->setText(AbsentDrivesText(main.ListView1));
    EnableControls();
}

void FilterForm::EnableControls()
{
    const bool duplicates = ui->EnbDuplicate->isChecked();
    const bool purge = ui->EnbPurge->isChecked();
    const bool idle = !IsRestoring();
    const bool search = ui->MissAction->currentIndex() == SearchForMissing;
    const auto enable = [](std::initializer_list<QWidget *> controls, bool on) {
        for (QWidget *control : controls)
            control->setEnabled(on);
    };
    ui->SSTab1->setTabEnabled(ui->SSTab1->indexOf(ui->Duplicate), idle);
    enable({ui->DupBase, ui->LabelDupBase, ui->DupAction, ui->LabelDupAction, ui->DupCase}, duplicates);
    enable({ui->EnbPurge}, idle);
    enable({ui->MissAction, ui->LabelMissAction}, purge && idle);
    enable({ui->DontUsePath}, search && idle);
    enable({ui->MissingPath, ui->LabelMissingPath, ui->FoundPaths, ui->FoundPathsInfo}, search);
    enable({ui->NxtPath, ui->SkipPath, ui->AbortPath}, !idle);
    enable({ui->CmdSearch}, idle && (duplicates || purge));
    (idle ? ui->CmdSearch : ui->NxtPath)->setDefault(true);
}

void FilterForm::SelectRows(const std::vector<int> &rows)
{
    auto next = rows.begin();
    main.ListView1.Reselect([&](int row, const PlaylistItem &) {
        const bool wanted = next != rows.end() && *next == row;
        next += wanted ? 1 : 0;
        return wanted;
    });
    main.View()->MakeVisible(rows.empty() ? 0 : rows.back());
    main.ListView1_Click();
}

void FilterForm::CmdSearch_Click()
{
    const Hourglass hourglass(this);
    QStringList answers;
    if (ui->EnbDuplicate->isChecked())
        answers.append(PurgeDuplicates());
    if (ui->EnbPurge->isChecked())
        answers.append(PurgeMissing());
    Form_Activate();
    main.Answer(answers.join(u"; "_s));
}

QString FilterForm::PurgeDuplicates()
{
    Report(ui->lbReport, u"Checking for Duplicate Items..."_s);
    const int action = ui->DupAction->currentIndex();
    const bool remove = action % 2 == 1;
    // The tick is the opposite of what its caption says.
    const DupChoice choice{static_cast<DupBase>(ui->DupBase->currentIndex()), ui->DupCase->isChecked(),
                           action < SelectAllButFirst};
    std::vector<int> rows;
    {
        LongRun run(ui->ProgressBar1, nullptr);
        rows = FindDuplicates(main.ListView1, choice, run.AsProgress());
    }
    ui->ProgressBar1->reset();
    SelectRows(rows);
    if (remove)
        main.MEditRemove_Click();
    if (rows.empty()) {
        Report(ui->lbReport, u"Done: No Duplicate Items were found."_s);
        return u"No duplicate items"_s;
    }
    const QString done = remove ? u"Removed "_s : u"Selected "_s;
    const auto count = static_cast<qint64>(rows.size());
    Report(ui->lbReport, u"Done: "_s + done + QString::number(count) + u" Duplicate Items");
    return done + Counted(count, u"duplicate item"_s);
}

QString FilterForm::PurgeMissing()
{
    Report(ui->lbReport, u"Destroying previous data..."_s);
    Report(ui->lbReport, u"Searching Playlist for Missing Files..."_s);
    MissingItems items;
    {
        LongRun run(ui->ProgressBar1, nullptr);
        items = FindMissing(main.ListView1, run.AsProgress());
        ui->ProgressBar1->reset();
        if (run.Stopped()) {
            Report(ui->lbReport, u"Stopped: The missing Items were left as they are..."_s);
            return u"Stopped, missing items left as they are"_s;
        }
    }
    if (items.Rows.empty()) {
        Report(ui->lbReport, u"Done: No missing Items Found..."_s);
        return u"No missing items"_s;
    }
    const auto count = static_cast<qint64>(items.Rows.size());
    const int action = ui->MissAction->currentIndex();
    SelectRows(action == SearchForMissing ? std::vector<int>() : items.Rows);
    if (action == SearchForMissing)
        return SearchMissing(items);
    if (action == RemoveMissing)
        main.MEditRemove_Click();
    const QString done = action == RemoveMissing ? u"Removed"_s : u"Selected"_s;
    Report(ui->lbReport, u"Done: "_s + QString::number(count) + u" Items " + done);
    return done + u' ' + Counted(count, u"missing item"_s);
}

QString FilterForm::SearchMissing(const MissingItems &items)
{
    Report(ui->lbReport, u"Searching for "_s + QString::number(items.Paths.size()) + u" Missing Items...");
    UsePathInfo = !ui->DontUsePath->isChecked();
    const QStringList roots = main.World().Roots();
    QString stop;
    {
        LongRun run(ui->ProgressBar1, nullptr);
        Progress progress = run.AsProgress();
        QString folder = roots.value(0);
        PaintPace pace;
        progress.SetText = [&, paint = progress.SetText](const QString &current) {
            folder = current;
            if (pace.Due())
                main.ShowMessage(folder);
            paint({});
        };
        FoundItems = SearchDrives(roots, items.Paths, UsePathInfo, progress);
        if (run.Stopped())
            stop = u" Stopped at "_s + ShownPath(folder);
    }
    ui->ProgressBar1->reset();
    main.ShowMessage({});
    if (FoundItems.Folders.empty()) {
        Report(ui->lbReport, u"No Items were found to match..."_s + stop);
    } else {
        Report(ui->lbReport, QString::number(FoundItems.Count) + u" Items were returned by the Search..." + stop);
        BeginRestoration(items);
    }
    return u"Found "_s + Counted(FoundItems.Count, u"file"_s) + u" for " +
           Counted(items.Paths.size(), u"missing item"_s);
}

void FilterForm::BeginRestoration(const MissingItems &items)
{
    RestoredCount = 0;
    MissingFolders.clear();
    ListDistinctFolders(items.Paths, MissingFolders);
    missingIndex = IndexMissing(items);
    ui->SSTab1->setCurrentWidget(ui->Purge);
    NextFolder();
    ui->FoundPaths->setFocus();
}

void FilterForm::NxtPath_Click()
{
    const Hourglass hourglass(this);
    if (ApplyChoice())
        NextFolder();
}

void FilterForm::SkipPath_Click()
{
    NextFolder();
}

void FilterForm::NextFolder()
{
    if (FolderIndex == MissingFolders.size()) {
        EndRestoration(RestoredCount > 0 ? u"Done: Restored "_s + QString::number(RestoredCount) + u" Items..."
                                         : u"Done: No items were restored..."_s);
        return;
    }
    ++FolderIndex;
    EnableControls();
    ShowFolder();
}

void FilterForm::ShowFolder()
{
    missing = missingIndex.value(MissingFolders[FolderIndex - 1]);
    suggestions = SuggestFolders(missing, FoundItems, UsePathInfo);
    const QString first = ShownPath(missing.Folder + missing.Files.value(0));
    ui->MissingPath->setText(first);
    ui->MissingPath->setToolTip(first);
    ui->FoundPaths->clear();
    for (const Suggestion &suggestion : suggestions) {
        const QString folder = ShownPath(suggestion.Folder);
        ui->FoundPaths->AddRow({folder, WorthText(suggestion)}, false)->setToolTip(0, folder);
    }
    if (suggestions.empty())
        ui->FoundPaths->addTopLevelItem(new QTreeWidgetItem({u"No Suggestions..."_s}));
    else
        ui->FoundPaths->SelectRow(0);
    ui->FoundPaths->topLevelItem(0)->setDisabled(suggestions.empty());
    ShowFolderNumber();
}

void FilterForm::ShowFolderNumber()
{
    ui->ProgressBar1->setFormat(u"Folder %v of %m"_s);
    ui->ProgressBar1->setRange(0, static_cast<int>(MissingFolders.size()));
    ui->ProgressBar1->setValue(FolderIndex);
}

bool FilterForm::ApplyChoice()
{
    if (suggestions.empty())
        return true;
    LongRun run(ui->ProgressBar1, nullptr);
    ui->ProgressBar1->setFormat({});
    const auto showNumber = qScopeGuard([this] { ShowFolderNumber(); });
    const int selected = ui->FoundPaths->SelectedRow();
    // Where the files of each folder begin.
    QMap<qsizetype, int> ticked;
    QStringList others;
    for (int row = 0; row < ui->FoundPaths->RowCount(); ++row) {
        if (row == selected || !ui->FoundPaths->IsTicked(row))
            continue;
        ticked.insert(others.size(), row);
        others += ListAudioFiles(suggestions[static_cast<std::size_t>(row)].Folder);
    }
    // When this is stopped or the playlist is full, the folder stays, and no file must be added twice.
    ui->FoundPaths->TickAll(false);
    int restored = 0;
    if (selected >= 0) {
        const QString &folder = suggestions[static_cast<std::size_t>(selected)].Folder;
        restored = RestoreFolder(main.ListView1, missing, folder, run.AsProgress());
    }
    RestoredCount += restored;
    if (restored > 0)
        main.NameStep(u"Restore "_s + CountedItems(restored));
    main.PlaylistDirty = main.PlaylistDirty || restored > 0 || !others.isEmpty();
    const int added = AppendFiles(main.ListView1, others, run.AsProgress());
    if (run.Stopped()) {
        for (auto rest = ticked.lowerBound(added); rest != ticked.end(); ++rest)
            ui->FoundPaths->SetTicked(*rest, true);
    }
    main.ListView1_Click();
    if (run.Stopped())
        Report(ui->lbReport, u"Stopped: Restored "_s + QString::number(RestoredCount) + u" Items so far...");
    return !run.Stopped();
}

void FilterForm::AbortPath_Click()
{
    EndRestoration(u"Done: Restoration Aborted..."_s);
}

void FilterForm::EndRestoration(const QString &report)
{
    main.Answer(u"Restored "_s + CountedItems(RestoredCount));
    FolderIndex = 0;
    FoundItems = {};
    missingIndex.clear();
    suggestions.clear();
    ui->MissingPath->clear();
    ui->FoundPaths->clear();
    ui->ProgressBar1->reset();
    ui->ProgressBar1->setFormat({});
    Form_Activate();
    ui->CmdSearch->setFocus();
    Report(ui->lbReport, report);
}

void FilterForm::FoundPaths_DblClick()
{
    const int row = ui->FoundPaths->SelectedRow();
    if (row >= 0)
        main.World().Shell.Explore(suggestions[static_cast<std::size_t>(row)].Folder);
}

void FilterForm::CmdClose_Click()
{
    if (IsRestoring())
        EndRestoration({});
    ui->lbReport->setText(u"Twiddling Thumbs..."_s);
    main.ListView1_Click();
    hide();
}
