#include "sidetools/AboutText.h"

#include "platform/Drives.h"
#include "session/ProgramName.h"

#include <taglib/taglib.h>

#include <QStringList>

using namespace Qt::StringLiterals;

QString AboutText(const Host &host, const QString &sessionFile)
{
    const QString tagLib = u"%1.%2.%3"_s.arg(TAGLIB_MAJOR_VERSION).arg(TAGLIB_MINOR_VERSION).arg(TAGLIB_PATCH_VERSION);
    const QStringList lines{
        u"%1 %2, licence: MIT"_s.arg(ProgramTitle(), ProgramVersion()),
        u"Built with Qt " QT_VERSION_STR ", TagLib %1 and " COMPILER_NAME ""_s.arg(tagLib),
        u"Runs with Qt %1 on %2"_s.arg(QLatin1StringView(qVersion()), host.System),
        u"Settings: "_s + host.Settings.Place,
        u"Session: "_s + ToHostPath(sessionFile),
    };
    return lines.join(u'\n');
}
