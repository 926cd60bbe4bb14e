#include "session/SplashFrm.h"

#include "session/Hourglass.h"
#include "session/Icons.h"
#include "session/ProgramName.h"
#include "ui_SplashFrm.h"

#include <QCoreApplication>
#include <QScreen>

using namespace Qt::StringLiterals;

SplashFrm::SplashFrm(std::function<void()> showMainWindow)
    : QWidget(nullptr, Qt::SplashScreen), showMain(std::move(showMainWindow))
{
    ui = std::make_unique<Ui::SplashFrm>();
    ui->setupUi(this);
    ui->Image1->setPixmap(Icon("app"_L1).pixmap(96));
    ui->Label1->setText(ProgramTitle() + u" v" + ProgramVersion());
    ui->StartLabel->setText(u"Welcome. Build "_s + ProgramVersion().remove(u'.'));
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
    Timer1.setSingleShot(true);
    connect(&Timer1, &QTimer::timeout, this, &SplashFrm::Timer1_Timer);
    Timer1.start(0);
}

SplashFrm::~SplashFrm() = default;

void SplashFrm::Timer1_Timer()
{
    ui->StartLabel->setText(u"Restoring Playlist from Previous Session...WAIT"_s);
    // The window system has not shown anything yet.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    const Hourglass hourglass(this);
    showMain();
    hide();
}
