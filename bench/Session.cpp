#include "FirstPaint.h"

#include "app/Tools.h"
#include "platform/QtHost.h"
#include "session/Icons.h"
#include "session/Main.h"
#include "session/ProgramName.h"
#include "session/SplashFrm.h"

#include <QDialog>

using namespace Qt::StringLiterals;

// The program as it starts with the session that was stored last, up to its first painting, and to that of the tip if
// there is to be one.
int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"playlist-editor"_s);
    QApplication::setWindowIcon(Icon("app"_L1));
    const Host host = QtHost(ApplicationName());
    LoadDriveMappings(host.Settings);
    Main window(host, Tools());
    bool restored = false;
    SplashFrm splash([&] {
        window.show();
        window.Run([&] { window.RestoreSession({}); });
        restored = true;
    });
    splash.show();
    while (!restored)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    FirstPaint::WaitFor(window);
    if (!window.TipsAtStartup())
        return 0;
    const auto tip = [&window] { return window.findChild<QDialog *>(u"frmTip"_s); };
    while (tip() == nullptr)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    FirstPaint::WaitFor(*tip());
}
