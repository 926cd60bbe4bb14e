#pragma once

#include <QString>
#include <QStringList>

// Operations on lists of full paths. Those with a result list append to it.

/// Appends the folder of each path, with its trailing backslash, that differs from the folder of the path before it:
/// only neighbouring repeats are dropped. True if any was added.
bool ListDistinctFolders(const QStringList &paths, QStringList &list);
/// Appends the file names of the paths whose folder is exactly the given one. True if any was added.
bool ListFilesInFolder(const QStringList &paths, QStringList &list, const QString &folder);
/// Appends the entries that contain the text. True if any was added.
bool FilterByText(const QStringList &texts, QStringList &list, const QString &text);
/// Removes every occurrence of the folder and a backslash from each path. Paths outside the folder stay absolute; an
/// empty folder changes nothing.
void MakePathsRelative(QStringList &paths, const QString &folder);
/// Drops the paths at which nothing stands. True if none was dropped.
bool RemoveMissingPaths(QStringList &paths);
void ClearList(QStringList &list);
/// The deepest folder that the paths have in common, without a trailing backslash; empty if there is none. A piece of
/// the longest folder counts as common when every folder holds its text anywhere.
QString FindCommonRoot(const QStringList &paths);
