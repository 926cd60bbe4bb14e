#include "platform/Headless.h"

#include "platform/HostHeadless.h"

#include <QByteArray>
#include <QtGlobal>

void PrepareHeadless(int scale)
{
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    PrepareHostHeadless();
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
