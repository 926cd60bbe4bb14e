#pragma once

#include <QDateTime>
#include <QString>

/// Expands a naming format over a folder path into the file name of a playlist, with ".m3u"; empty if nothing is left.
/// Tokens: "%0", "%1", ... are the pieces of the path between its backslashes, counted from its end (so "%0" is empty
/// for a path with a trailing backslash), "%DATE" is now as "MM-DD-YYYY", "%TIME" as "hh-mm-ss" of 24 hours. An empty
/// format means all folders up to the root. Empty as well for a name beyond 32,767 characters.
QString ExpandNamingFormat(const QString &format, const QString &path, const QDateTime &now);
