#include "platform/QtHost.h"

#include "platform/DesktopShell.h"
#include "platform/QtPrompts.h"

Host QtHost(const QString &applicationName)
{
    Host host = HeadlessHost(applicationName);
    host.Prompts = QtPrompts();
    host.Shell = DesktopShell();
    return host;
}
