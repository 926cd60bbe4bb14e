#pragma once

#include <QString>

QString ProgramTitle();
/// What a text is put behind to search the web for it.
QString WebSearchAddress();
/// Major, minor and revision, as "2.0.0".
QString ProgramVersion();
/// The name under which all settings are stored: the title followed by the major and the minor version.
QString ApplicationName();
