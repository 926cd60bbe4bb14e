#include "platform/Headless.h"

#include <QByteArray>
#include <QtGlobal>

void PrepareHeadless(int scale)
{
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt makes the user's runtime folder where it is missing, or one among the temporary files. Nobody, not even an
    // administrator, can make a folder below these.
    qputenv("XDG_RUNTIME_DIR", "/dev/null/none");
    qputenv("TMPDIR", "/dev/null");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
