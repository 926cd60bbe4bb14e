#include "search/frmSearch.h"

#include "search/CollectMatches.h"
#include "session/GridView.h"
#include "session/Hourglass.h"
#include "session/Main.h"
#include "ui_frmSearch.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace
{
/// An entry of the options that bears a check.
struct OptionEntry {
    const char *Name;
    QStringView Caption;
    bool CheckedAtStart;
    QStringView Tip;
    /// The column that it lets be searched; 0 for none.
    int Column = 0;
};

constexpr OptionEntry options[] = {
    {"Mselonly", u"&Search Only Selected...", false, u"Look through the selected items only"},
    {"Mcasesensitive", u"&Case Sensitive...", false, u"Tell small letters from capitals"},
    {"Mkeepalive", u"&Keep Alive...", true, u"Keep the search when this window closes"},
    {"MFilename", u"&Filename", true, u"Look through this column", ColumnFileName},
    {"Mfolder", u"Fol&der", true, u"Look through this column", ColumnPath},
    {"Mtime", u"&Time", false, u"Look through this column", ColumnTime},
    {"MSize", u"&Size", false, u"Look through this column", ColumnSize},
    {"Mid", u"&Id", false, u"Look through this column", ColumnID},
    {"MLayer", u"La&yer", false, u"Look through this column", ColumnLayer},
    {"Mbitrate", u"&Bitrate", false, u"Look through this column", ColumnBitrate},
    {"Msamplerate", u"Sample &Rate", false, u"Look through this column", ColumnSamplerate},
    {"Mmode", u"&Mode", false, u"Look through this column", ColumnMode},
};
} // namespace

frmSearch::frmSearch(Main &mainWindow) : ToolForm(mainWindow)
{
    ui = std::make_unique<Ui::frmSearch>();
    ui->setupUi(this);
    // A completed word would be taken for one that was typed.
    ui->txtSearch->setCompleter(nullptr);
    ui->txtSearch->view()->installEventFilter(this);
    BuildOptions();
    Form_Load();
    ConnectClicks<frmSearch>({
        {ui->cmdNext, &frmSearch::cmdNext_Click},
        {ui->cmdBack, &frmSearch::cmdBack_Click},
        {ui->cmdSelAl, &frmSearch::cmdSelAl_Click},
        {ui->cmdPreview, &frmSearch::cmdPreview_Click},
        {ui->cmdOptions, &frmSearch::cmdOptions_Click},
        {ui->cmdClose, &frmSearch::CmdClose_Click},
    });
    connect(ui->txtSearch, &QComboBox::editTextChanged, this, &frmSearch::QueryChanged);
    connect(ui->txtSearch->lineEdit(), &QLineEdit::returnPressed, this, [this] { Run([this] { cmdSelAl_Click(); }); });
}

frmSearch::~frmSearch() = default;

void frmSearch::BuildOptions()
{
    Moptions = new QMenu(this);
    Moptions->setObjectName("Moptions"_L1);
    auto *MColumns = new QMenu(u"Search &In.."_s, Moptions);
    for (QMenu *menu : {Moptions, MColumns})
        menu->setToolTipsVisible(true);
    for (const OptionEntry &option : options) {
        QAction *entry = (option.Column == 0 ? Moptions : MColumns)->addAction(option.Caption.toString());
        entry->setObjectName(QLatin1StringView(option.Name));
        entry->setCheckable(true);
        entry->setToolTip(option.Tip.toString());
        if (entry->objectName() != "Mkeepalive"_L1)
            connect(entry, &QAction::triggered, this, &frmSearch::QueryChanged);
    }
    Moptions->addMenu(MColumns);
    Moptions->addSeparator();
    QAction *MReselect = Moptions->addAction(u"&Reselect Original Items..."_s);
    MReselect->setObjectName("MReselect"_L1);
    MReselect->setToolTip(u"Select what was selected when this window opened"_s);
    connect(MReselect, &QAction::triggered, this, [this] { Run([this] { MReselect_Click(); }); });
}

void frmSearch::Form_Load()
{
    for (const OptionEntry &option : options)
        findChild<QAction *>(QLatin1StringView(option.Name))->setChecked(option.CheckedAtStart);
    ui->txtSearch->clear();
    ui->lblReport->clear();
    Matches.clear();
    OriginalSelection.clear();
    SearchPosition = -1;
}

void frmSearch::Form_Activate()
{
    SaveSelection();
    EnableByText();
    ui->txtSearch->setFocus();
    ui->txtSearch->lineEdit()->selectAll();
}

void frmSearch::CmdClose_Click()
{
    if (!IsChecked("Mkeepalive"))
        Form_Load();
    ToolForm::CmdClose_Click();
}

bool frmSearch::eventFilter(QObject *watched, QEvent *event)
{
    // The drop-down opens.
    if (watched == ui->txtSearch->view() && event->type() == QEvent::Show)
        EnableByText();
    return ToolForm::eventFilter(watched, event);
}

bool frmSearch::IsChecked(const char *name) const
{
    return findChild<QAction *>(QLatin1StringView(name))->isChecked();
}

void frmSearch::QueryChanged()
{
    SearchPosition = -1;
    EnableByText();
}

void frmSearch::EnableByText()
{
    EnableCommands(!ui->txtSearch->currentText().isEmpty());
}

void frmSearch::EnableCommands(bool on)
{
    for (QWidget *command : {ui->cmdNext, ui->cmdBack, ui->cmdPreview, ui->cmdSelAl})
        command->setEnabled(on);
}

void frmSearch::RunSearch()
{
    Matches.clear();
    Report(ui->lblReport, u"Searching..."_s);
    const QString term = ui->txtSearch->currentText();
    if (term.isEmpty()) {
        Report(ui->lblReport, u"Enter a search string..."_s);
        return;
    }
    SearchQuery query{term, IsChecked("Mcasesensitive"), IsChecked("Mselonly"), {}};
    for (const OptionEntry &option : options) {
        if (option.Column != 0 && IsChecked(option.Name))
            query.Columns.append(option.Column);
    }
    {
        const Hourglass hourglass(this);
        Matches = CollectMatches(main.ListView1, query);
    }
    if (!Matches.empty()) {
        AddSearchHistory(term);
        SearchPosition = 0;
    }
    EnableCommands(!Matches.empty());
    Report(ui->lblReport, u"Found: "_s + QString::number(Matches.size()) + u" Items."_s);
}

void frmSearch::AddSearchHistory(const QString &text)
{
    if (ui->txtSearch->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        ui->txtSearch->addItem(text);
}

void frmSearch::SaveSelection()
{
    const Grid &grid = main.ListView1;
    OriginalSelection.resize(std::max(OriginalSelection.size(), static_cast<std::size_t>(grid.Count()) + 1));
    for (int row = 1; row <= grid.Count(); ++row) {
        if (grid.Item(row).Selected)
            OriginalSelection[static_cast<std::size_t>(row)] = true;
    }
}

void frmSearch::RestoreSelection()
{
    main.ListView1.Reselect(
        [this](int row, const PlaylistItem &) { return OriginalSelection[static_cast<std::size_t>(row)]; });
    main.ListView1_Click();
}

void frmSearch::MReselect_Click()
{
    RestoreSelection();
    SearchPosition = -1;
}

bool frmSearch::HasMatches()
{
    ui->txtSearch->setFocus();
    const int rows = main.ListView1.Count();
    std::erase_if(Matches, [rows](int row) { return row > rows; });
    if (Matches.empty())
        SearchPosition = -1;
    if (SearchPosition == -1)
        RunSearch();
    SearchPosition = std::min(SearchPosition, static_cast<int>(Matches.size()));
    return !Matches.empty();
}

void frmSearch::cmdNext_Click()
{
    if (!HasMatches())
        return;
    SearchPosition = SearchPosition == static_cast<int>(Matches.size()) ? 1 : SearchPosition + 1;
    ShowMatch();
}

void frmSearch::cmdBack_Click()
{
    if (!HasMatches())
        return;
    SearchPosition = SearchPosition > 1 ? SearchPosition - 1 : static_cast<int>(Matches.size());
    ShowMatch();
}

void frmSearch::ShowMatch()
{
    Report(ui->lblReport, u"Selected: %1/%2 Items."_s.arg(SearchPosition).arg(Matches.size()));
    const int match = Matches[static_cast<std::size_t>(SearchPosition - 1)];
    Grid &grid = main.ListView1;
    grid.Reselect([match](int row, const PlaylistItem &) { return row == match; });
    grid.SetFocusedRow(match);
    main.View()->MakeVisible(match);
    main.ListView1_Click();
}

void frmSearch::cmdSelAl_Click()
{
    if (!HasMatches())
        return;
    auto next = Matches.cbegin();
    main.ListView1.Reselect([&](int row, const PlaylistItem &) {
        const bool found = next != Matches.cend() && *next == row;
        next += found ? 1 : 0;
        return found;
    });
    // Where one look at each of them in turn would end.
    main.View()->MakeVisible(Matches.front());
    main.View()->MakeVisible(Matches.back());
    main.ListView1_Click();
}

void frmSearch::cmdPreview_Click()
{
    ui->txtSearch->setFocus();
    main.PrevM3U(PreviewSelected);
}

void frmSearch::cmdOptions_Click()
{
    Moptions->popup(ui->cmdOptions->mapToGlobal(ui->cmdOptions->rect().bottomLeft()));
}
