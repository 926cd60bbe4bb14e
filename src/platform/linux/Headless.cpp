#include "platform/HostHeadless.h"

#include <QByteArray>
#include <QtGlobal>

void PrepareHostHeadless()
{
    // Qt makes the user's runtime folder where it is missing, or one among the temporary files. Nobody, not even an
    // administrator, can make a folder below these.
    qputenv("XDG_RUNTIME_DIR", "/dev/null/none");
    qputenv("TMPDIR", "/dev/null");
}
