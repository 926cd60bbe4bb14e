#include "session/Main.h"
#include "app/Tools.h"
#include "platform/Arguments.h"
#include "platform/QtHost.h"
#include "session/Icons.h"
#include "session/ProgramName.h"
#include "session/SplashFrm.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace
{
/// The whole command line is one path, whatever quotes and blanks it holds.
QByteArray CommandLine(int argc, char **argv)
{
    QByteArray line;
    for (const QByteArray &argument : ProgramArguments(argc, argv))
        line += (line.isEmpty() ? QByteArray() : QByteArray(" ")) + argument;
    return line.replace('"', QByteArray());
}
} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"playlist-editor"_s);
    QApplication::setDesktopFileName(u"vantrel-playlist-editor"_s);
    QApplication::setWindowIcon(Icon("app"_L1));

    const QString commandLine = PathOfArgument(CommandLine(argc, argv));
    const Host host = QtHost(ApplicationName());
    LoadDriveMappings(host.Settings);
    Main window(host, Tools());
    SplashFrm splash([&] {
        window.show();
        window.Run([&] { window.RestoreSession(commandLine); });
    });
    splash.show();
    return QApplication::exec();
}
