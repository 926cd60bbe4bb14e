#include "tageditor/Id3Info.h"

#include "session/GridView.h"
#include "session/Main.h"
#include "session/ProgramName.h"
#include "session/SingleClicks.h"
#include "text/FormatText.h"

#include "ui_Id3Info.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTabBar>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{
/// What the empty entry of the genres stands for in a tag.
constexpr int noGenre = 254;
} // namespace

Id3Info::Id3Info(Main &mainWindow) : ToolForm(mainWindow)
{
    ui = std::make_unique<Ui::Id3Info>();
    ui->setupUi(this);
    Form_Load();
    ConnectCommands();
    ConnectLists();
    ConnectFields();
    ColourFields();
}

Id3Info::~Id3Info() = default;

void Id3Info::Form_Load()
{
    // The two panels take turns in one place, and the bar keeps its own.
    for (QWidget *coming : {static_cast<QWidget *>(ui->FrameMPEGInfo), static_cast<QWidget *>(ui->ProgressBar1)}) {
        QSizePolicy policy = coming->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        coming->setSizePolicy(policy);
    }
    ui->ProgressBar1->hide();
    ui->GeneralLayout->addWidget(ui->FrameOGGInfo, 1, 0);

    ui->ID3v1Genre->addItem(QString(), noGenre);
    ui->ID3v2Genre->addItem(QString());
    int number = 0;
    for (const QString &genre : MP3File::GenreList().split(u'|')) {
        ui->ID3v1Genre->addItem(genre, number++);
        ui->ID3v2Genre->addItem(genre);
    }
    // A completed word would be taken for one that was typed.
    ui->ID3v2Genre->setCompleter(nullptr);
    for (auto *field : findChildren<QLineEdit *>())
        field->setMaxLength(std::numeric_limits<int>::max());
    for (QTableWidget *list : {ui->ID3v2LstComments, ui->ID3v2LstImages}) {
        list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() + 6);
        list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        list->setColumnWidth(0, list->fontMetrics().averageCharWidth() * 22);
    }
}

void Id3Info::ConnectCommands()
{
    ConnectClicks<Id3Info>({
        {ui->ID3v1Present, &Id3Info::ID3v1Present_Click},
        {ui->ID3v2Present, &Id3Info::ID3v2Present_Click},
        {ui->ID3v1Duplicate, &Id3Info::ID3v1Duplicate_Click},
        {ui->ID3v2Duplicate, &Id3Info::ID3v2Duplicate_Click},
        {ui->ID3v2AddComment, &Id3Info::ID3v2AddComment_Click},
        {ui->ID3v2EditComment, &Id3Info::ID3v2EditComment_Click},
        {ui->ID3v2RemoveComment, &Id3Info::ID3v2RemoveComment_Click},
        {ui->ID3v2ImageAdd, &Id3Info::ID3v2ImageAdd_Click},
        {ui->ID3v2ImageRemove, &Id3Info::ID3v2ImageRemove_Click},
        {ui->ID3v2ImageSave, &Id3Info::ID3v2ImageSave_Click},
        {ui->ID3v2ImageOpen, &Id3Info::ID3v2ImageOpen_Click},
        {ui->FileInfoReadOnly, &Id3Info::FileInfoReadOnly_Click},
        {ui->FileInfoArchive, &Id3Info::FileInfoArchive_Click},
        {ui->CmdPrev, &Id3Info::CmdPrev_Click},
        {ui->CmdNext, &Id3Info::CmdNext_Click},
        {ui->CmdCopy, &Id3Info::CmdCopy_Click},
        {ui->CmdPaste, &Id3Info::CmdPaste_Click},
        {ui->CmdRefresh, &Id3Info::CmdRefresh_Click},
        {ui->CmdListen, &Id3Info::CmdListen_Click},
        {ui->CmdUpdate, &Id3Info::CmdUpdate_Click},
        {ui->CmdClose, &Id3Info::CmdClose_Click},
    });
    // Behind an update the fields of several files are empty, and the next one takes their tags away.
    TakeSingleClicks(ui->CmdUpdate);
}

void Id3Info::ConnectLists()
{
    connect(ui->ID3v2LstComments, &QTableWidget::itemSelectionChanged, this, &Id3Info::ID3v2LstComments_Click);
    // The row that is selected already may not be the one whose text is shown.
    connect(ui->ID3v2LstComments, &QTableWidget::cellClicked, this, &Id3Info::ID3v2LstComments_Click);
    connect(ui->ID3v2LstImages, &QTableWidget::itemSelectionChanged, this, &Id3Info::ID3v2LstImages_Click);
    // A click on the page that is shown already, and a change by click or key.
    connect(ui->Id3MainTab, &QTabWidget::tabBarClicked, this, &Id3Info::Id3MainTab_Click);
    connect(ui->Id3MainTab, &QTabWidget::currentChanged, this, &Id3Info::Id3MainTab_Click);
}

void Id3Info::ConnectFields()
{
    for (QWidget *field : {ui->ID3v1Title, ui->ID3v2Title})
        WatchDoubleClick(field, field, &Id3Info::Title_DblClick);
    for (QWidget *field : {ui->ID3v2URL, ui->ID3v2ArtistURL})
        WatchDoubleClick(field, field, &Id3Info::URL_DblClick);
    WatchDoubleClick(ui->ID3v1Comment, ui->ID3v1Comment, &Id3Info::Comment_DblClick);
    WatchDoubleClick(ui->ID3v2Comment->viewport(), ui->ID3v2Comment, &Id3Info::Comment_DblClick);
    connect(ui->ID3v1Genre, &QComboBox::activated, this, [this] { unlistedGenre.reset(); });
}

void Id3Info::WatchDoubleClick(QObject *watched, QWidget *field, void (Id3Info::*handler)(QWidget *))
{
    watched->installEventFilter(this);
    doubleClicks.insert(watched, [this, field, handler] { main.Run([&] { (this->*handler)(field); }); });
}

bool Id3Info::eventFilter(QObject *watched, QEvent *event)
{
    const auto handler = doubleClicks.constFind(watched);
    if (event->type() != QEvent::MouseButtonDblClick || handler == doubleClicks.cend() ||
        static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton)
        return ToolForm::eventFilter(watched, event);
    (*handler)();
    return true;
}

void Id3Info::ColourFields()
{
    QPalette palette;
    palette.setColor(QPalette::Disabled, QPalette::Base, palette.color(QPalette::Active, QPalette::Button));
    setPalette(palette);
}

void Id3Info::changeEvent(QEvent *event)
{
    ToolForm::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        ColourFields();
}

void Id3Info::Id3MainTab_Click(int page)
{
    if (page == ui->Id3MainTab->indexOf(ui->ID3v2Page))
        ui->Id3v2Tab->setCurrentIndex(0);
}

bool Id3Info::AnyTagTicked() const
{
    return ui->ID3v1Present->isChecked() || ui->ID3v2Present->isChecked();
}

void Id3Info::EnableFields()
{
    const bool v1 = ui->ID3v1Present->isChecked();
    const bool v2 = ui->ID3v2Present->isChecked();
    ui->ID3v1InfoPage->setEnabled(v1);
    ui->ID3v1Duplicate->setEnabled(v1);
    for (QWidget *page :
         {ui->ID3v2InfoPage, ui->ID3v2CommentsPage, ui->ID3v2LyricsPage, ui->ID3v2ImagesPage, ui->ID3v2MiscPage})
        page->setEnabled(v2);
    ui->ID3v2Duplicate->setEnabled(v2);
    ShowLostTags();
}

void Id3Info::ShowLostTags()
{
    ui->lbLostTags->setText(unread ? u"The tags of this file could not be read."_s
                                   : lostTags.Text(!ui->ID3v1Present->isChecked(), !ui->ID3v2Present->isChecked()));
}

void Id3Info::ID3v1Present_Click()
{
    EnableFields();
    ui->CmdCopy->setEnabled(AnyTagTicked());
}

void Id3Info::ID3v2Present_Click()
{
    EnableFields();
    ui->CmdCopy->setEnabled(AnyTagTicked());
}

void Id3Info::ShowOnly(int row)
{
    Grid &grid = main.ListView1;
    grid.Reselect([row](int each, const PlaylistItem &) { return each == row; });
    grid.SetFocusedRow(row);
    main.View()->MakeVisible(row);
    Form_Activate();
}

void Id3Info::CmdPrev_Click()
{
    if (FirstIndex >= 2 && FirstIndex - 1 <= main.ListView1.Count() && ConfirmUpdateFirst())
        ShowOnly(FirstIndex - 1);
}

void Id3Info::CmdNext_Click()
{
    if (LastIndex != 0 && LastIndex < main.ListView1.Count() && ConfirmUpdateFirst())
        ShowOnly(LastIndex + 1);
}

void Id3Info::CmdRefresh_Click()
{
    if (ConfirmUpdateFirst())
        Form_Activate();
}

void Id3Info::CmdClose_Click()
{
    if (!ConfirmUpdateFirst())
        return;
    lostTags.Stop();
    ToolForm::CmdClose_Click();
}

void Id3Info::CmdListen_Click()
{
    main.PrevM3U(PreviewSelected);
}

void Id3Info::Title_DblClick(QWidget *field)
{
    if (IsOneFile())
        texts.Show(field, ProperCase(ui->FileInfo_0->text()).remove(".mp3"_L1));
}

void Id3Info::Comment_DblClick(QWidget *field)
{
    const QString text = texts.Text(field);
    if (!text.isEmpty())
        main.World().Shell.Browse(WebSearchAddress() + text);
}

void Id3Info::URL_DblClick(QWidget *field)
{
    const QString text = texts.Text(field).trimmed();
    if (!text.isEmpty())
        main.World().Shell.Browse(text.contains("http://"_L1) ? text : QString("http://"_L1 + text));
}
