#include "platform/Headless.h"

#include <QByteArray>
#include <QtGlobal>

void PrepareHeadless(int scale)
{
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Without it Qt makes a folder for its sockets.
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
