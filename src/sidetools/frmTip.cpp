#include "sidetools/frmTip.h"

#include "session/Icons.h"
#include "session/Main.h"
#include "text/TextFiles.h"
#include "ui_frmTip.h"

using namespace Qt::StringLiterals;

frmTip::frmTip(Main &mainWindow) : ToolForm(mainWindow)
{
    ui = std::make_unique<Ui::frmTip>();
    ui->setupUi(this);
    ui->Image1->setPixmap(Icon("tip"_L1).pixmap(32));
    ui->lblTipText->setBackgroundRole(QPalette::Base);
    ui->chkLoadTipsAtStartup->setChecked(main.TipsAtStartup());
    main.World().Clock.Reseed();
    if (!LoadTips(main.World().ProgramFolder + u"\\VTLPLE20.htd"))
        ui->lblTipText->setText(u"Cannot find the Tip-Of-Day Data File. Please reinstall the application if you wish "
                                u"to use this feature."_s);
    ui->CurTip->setVisible(!tips.isEmpty());
    ConnectClicks<frmTip>({
        {ui->CmdNext, &frmTip::CmdNext_Click},
        {ui->CmdPrev, &frmTip::CmdPrev_Click},
        {ui->cmdNextTip, &frmTip::cmdNextTip_Click},
        {ui->chkLoadTipsAtStartup, &frmTip::chkLoadTipsAtStartup_Click},
        {ui->cmdOK, &frmTip::CmdClose_Click},
    });
}

frmTip::~frmTip() = default;

bool frmTip::LoadTips(const QString &path)
{
    return ReadLinesFromFile(tips, path) && !tips.isEmpty();
}

void frmTip::Form_Activate()
{
    cmdNextTip_Click();
    ui->cmdOK->setFocus();
}

void frmTip::ShowTip(int number)
{
    CurrentTip = number;
    ui->CurTip->setText(QString::number(CurrentTip));
    DisplayCurrentTip();
}

void frmTip::DisplayCurrentTip()
{
    if (!tips.isEmpty())
        ui->lblTipText->setText(tips[CurrentTip - 1]);
}

void frmTip::CmdNext_Click()
{
    ShowTip(CurrentTip < TipCount() ? CurrentTip + 1 : 1);
}

void frmTip::CmdPrev_Click()
{
    ShowTip(CurrentTip > 1 ? CurrentTip - 1 : TipCount());
}

void frmTip::cmdNextTip_Click()
{
    ShowTip(static_cast<int>(main.World().Clock.Random() * TipCount()) + 1);
}

void frmTip::chkLoadTipsAtStartup_Click()
{
    main.SetTipsAtStartup(ui->chkLoadTipsAtStartup->isChecked());
}
