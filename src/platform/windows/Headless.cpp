#include "platform/HostHeadless.h"

#include "platform/windows/WindowsApi.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace
{
UINT consolePage = 0;
} // namespace

void PrepareHostHeadless()
{
    // Without a display Qt looks for fonts beside itself.
    if (!qEnvironmentVariableIsSet("QT_QPA_FONTDIR"))
        qputenv("QT_QPA_FONTDIR", qgetenv("SystemRoot") + "\\Fonts");
    // What is printed is UTF-8; the console has its own page back afterwards.
    consolePage = GetConsoleOutputCP();
    if (consolePage != 0 && SetConsoleOutputCP(CP_UTF8))
        std::atexit([] {
            std::fflush(stdout);
            SetConsoleOutputCP(consolePage);
        });
}
