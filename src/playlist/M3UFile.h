#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Whether a file of this extension, in lower case, is read as a playlist.
bool IsPlaylist(const QString &extension);

/// Appends the entries of a playlist file as inside paths; relative ones stay relative, to be joined to the file's
/// folder by AnalyseFile. An entry is a line that is no comment ("#") and holds one of the extensions of FileTypes
/// anywhere; it is appended once for each of them it holds. False if there was none or the file cannot be read.
bool ReadM3UFile(const QString &path, QStringList &list);
/// The same for a list that the program wrote for itself: each line that is no comment is one entry.
bool ReadSessionFile(const QString &path, QStringList &list);
/// The same where the file's content has been read.
bool TakeSession(const QByteArray &content, const QString &path, QStringList &list);

/// Writes the paths as the lines of a playlist in the host's form, those of a ".m3u8" file in UTF-8. False, and the old
/// file untouched, on any failure.
bool WritePlaylistFile(const QString &path, const QStringList &paths);
