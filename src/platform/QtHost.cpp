#include "platform/QtHost.h"

#include "platform/DesktopShell.h"
#include "platform/DesktopTools.h"
#include "platform/QtPrompts.h"

#include <QGuiApplication>

using namespace Qt::StringLiterals;

Host QtHost(const QString &applicationName)
{
    Host host = HeadlessHost(applicationName);
    host.Prompts = QtPrompts();
    host.Shell = DesktopShell();
    AddDesktopTools(host.Shell);
    // Off Windows only X11 lets a program fade its own windows.
    host.WindowsCanFade = QGuiApplication::platformName() == "xcb"_L1;
    return host;
}
