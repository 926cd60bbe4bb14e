#pragma once

#include <QString>
#include <QStringList>

/// The title of a file for a bookmark: artist and title of its tags where it has some, else its name without extension,
/// in proper case. One line, whatever the file holds.
QString BookmarkTitle(const QString &path);

/// Replaces a bookmark file, which holds two lines for each file: its path in the host's form, and its title. False,
/// and the old file untouched, on any failure.
bool WriteBookmarkFile(const QString &path, const QStringList &files);
