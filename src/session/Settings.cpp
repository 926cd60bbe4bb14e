#include "session/Settings.h"

using namespace Qt::StringLiterals;

QString ApplicationName()
{
    return u"Vantrel Playlist Editor20"_s;
}
