#include "session/ProgramName.h"

using namespace Qt::StringLiterals;

QString ProgramTitle()
{
    return u"Vantrel Playlist Editor"_s;
}

QString WebSearchAddress()
{
    return u"https://search.vantrel.example/search?hl=en&q="_s;
}

QString ProgramVersion()
{
    return QStringLiteral(PLAYLIST_EDITOR_VERSION);
}

QString ApplicationName()
{
    const QString version = ProgramVersion();
    return ProgramTitle() + version.section(u'.', 0, 0) + version.section(u'.', 1, 1);
}
