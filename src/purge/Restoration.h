#pragma once

#include "playlist/Grid.h"
#include "purge/DriveSearch.h"
#include "purge/MissingItems.h"
#include "text/Progress.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

/// A folder of the playlist with missing items in it.
struct MissingFolder {
    /// Ending in a backslash.
    QString Folder;
    /// The names of all items that are missing from it, in grid order, and the row of each.
    QStringList Files;
    std::vector<int> Rows;
};
/// The missing items by their folders.
using MissingIndex = QHash<QString, MissingFolder>;
MissingIndex IndexMissing(const MissingItems &items);

/// A folder that may hold what is missing from another one.
struct Suggestion {
    /// Ending in a backslash.
    QString Folder;
    /// How many of the different missing files the search has found in it.
    int Held = 0;
    int Missing = 0;
};
/// "12 of 14 files".
QString WorthText(const Suggestion &suggestion);

/// The folders of the found items whose text contains that of the first missing one: its name, with path info all of
/// its path. The folder that holds most comes first, ties as they were found.
std::vector<Suggestion> SuggestFolders(const MissingFolder &missing, const FoundItems &found, bool usePathInfo);

/// The audio files of a folder, grouped by type.
QStringList ListAudioFiles(const QString &folder);

/// Puts the audio files of a folder, analysed anew, in place of all rows of the missing files whose names they bear; a
/// file of just that name goes before one that differs in case. A row that has been restored already stays. Selection,
/// focus and order stay. Returns how many rows were restored; when stopped, those that had their turn.
int RestoreFolder(Grid &grid, const MissingFolder &missing, const QString &folder, const Progress &progress);

/// Adds the files at the end; when stopped, those that had their turn. Raises PlaylistFull after those that fit.
int AppendFiles(Grid &grid, const QStringList &paths, const Progress &progress);
