#include "sidetools/frmAbout.h"

#include "session/Icons.h"
#include "session/Main.h"
#include "session/ProgramName.h"
#include "sidetools/AboutText.h"
#include "ui_frmAbout.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

frmAbout::frmAbout(Main &mainWindow) : ToolForm(mainWindow)
{
    ui = std::make_unique<Ui::frmAbout>();
    ui->setupUi(this);
    ui->Image1->setPixmap(Icon("app"_L1).pixmap(64));
    ui->lblTitle->setText(ProgramTitle());
    ui->lblVersion->setText(u"Version "_s + ProgramVersion());
    ui->txtFacts->setPlainText(AboutText(main.World(), main.SessionFile()));
    ui->cmdOK->setFocus();
    ConnectClicks<frmAbout>({
        {ui->cmdCopy, &frmAbout::cmdCopy_Click},
        {ui->cmdSysInfo, &frmAbout::cmdSysInfo_Click},
        {ui->cmdOK, &frmAbout::CmdClose_Click},
    });
}

frmAbout::~frmAbout() = default;

void frmAbout::cmdCopy_Click()
{
    QGuiApplication::clipboard()->setText(ui->txtFacts->toPlainText());
}

void frmAbout::cmdSysInfo_Click()
{
    if (!main.World().Shell.SystemInformation.Open())
        main.World().Prompts.Message({u"System Information Is Unavailable At This Time"_s, PromptIcon::Warning});
}
