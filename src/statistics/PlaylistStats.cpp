#include "statistics/PlaylistStats.h"

#include "platform/Drives.h"
#include "session/Hourglass.h"
#include "session/Main.h"
#include "statistics/PlaylistFigures.h"
#include "text/FormatText.h"
#include "ui_PlaylistStats.h"

using namespace Qt::StringLiterals;

PlaylistStats::PlaylistStats(Main &mainWindow) : ToolForm(mainWindow)
{
    ui = std::make_unique<Ui::PlaylistStats>();
    ui->setupUi(this);
    Timer1.setParent(this);
    Timer1.setSingleShot(true);
    Timer1.setInterval(100);
    connect(&Timer1, &QTimer::timeout, this, [this] { Run([this] { Timer1_Timer(); }); });
    ConnectClicks<PlaylistStats>({{ui->cmdClose, &PlaylistStats::CmdClose_Click}});
}

PlaylistStats::~PlaylistStats() = default;

void PlaylistStats::Form_Activate()
{
    for (QLabel *figure : {ui->lblPlaylistsize, ui->lblFilecount, ui->lblFoldercount, ui->lblTotalsize,
                           ui->lblMissingItems, ui->lblTotaltime, ui->lblAvtracklength, ui->lblAvtracksize})
        figure->setText(u"????"_s);
    ui->lblRelativeFolder->setText(u"????"_s);
    ui->lblplaylistfilename->setText(u"Refreshing..."_s);
    ui->Morethanwarn->clear();
    Timer1.start();
}

void PlaylistStats::CmdClose_Click()
{
    Timer1.stop();
    ToolForm::CmdClose_Click();
}

void PlaylistStats::Timer1_Timer()
{
    const Hourglass hourglass(this);
    main.DestroyFileArray();
    main.SaveFileArrayFromList(true);
    ShowFigures(ComputeFigures(main.ListView1, main.FileArray, main.CurrentPlaylistPath));
}

void PlaylistStats::ShowFigures(const PlaylistFigures &figures)
{
    ui->lblplaylistfilename->setText(ShownPath(figures.PlaylistName));
    ui->lblPlaylistsize->setText(GroupedDigits(figures.PlaylistSize) + u" bytes");
    ui->lblRelativeFolder->setText(ShownPath(figures.RelativeFolder));
    ui->lblFilecount->setText(QString::number(figures.FileCount) + u" items");
    ui->lblFoldercount->setText(QString::number(figures.FolderCount) + u" folders");
    ui->lblMissingItems->setText(QString::number(figures.MissingCount) + u" items");
    if (figures.TotalSize != 0) {
        ui->lblTotalsize->setText(figures.SizeMark + GroupedDigits(figures.TotalSize) + u" bytes");
        ui->lblAvtracksize->setText(figures.SizeMark + FormatFileSize(std::llround(figures.AverageSize)));
    }
    if (figures.TotalSeconds != 0)
        ui->lblTotaltime->setText(figures.TimeMark + FormatPlayTime(figures.TotalSeconds) + u" [hms]");
    if (figures.AverageSeconds != 0)
        ui->lblAvtracklength->setText(figures.TimeMark + FormatPlayTime(figures.AverageSeconds) + u" [hms]");
    if (!figures.SizeMark.isEmpty() || !figures.TimeMark.isEmpty())
        ui->Morethanwarn->setText(u"' > ' sign indicates 'More than'.."_s);
}
