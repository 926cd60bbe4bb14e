#include "session/Main.h"
#include "app/Tools.h"
#include "platform/Arguments.h"
#include "platform/QtHost.h"
#include "session/Icons.h"
#include "session/Palettes.h"
#include "session/ProgramName.h"
#include "session/SplashFrm.h"

#include <QApplication>
#include <QSessionManager>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"playlist-editor"_s);
    QApplication::setDesktopFileName(u"vantrel-playlist-editor"_s);
    UseProgramStyle();
    QApplication::setWindowIcon(Icon("app"_L1));

    const Host host = QtHost(ApplicationName());
    LoadDriveMappings(host.Settings);
    const QString commandLine = PathOfCommandLine(ProgramArguments(argc, argv));
    Main window(host, Tools());
    SplashFrm splash([&] {
        window.show();
        window.Run([&] { window.RestoreSession(commandLine); });
    });
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &window, [&window](QSessionManager &manager) {
        if (!window.EndWithHost(manager.allowsInteraction()))
            manager.cancel();
        manager.release();
    });
    splash.show();
    return QApplication::exec();
}
