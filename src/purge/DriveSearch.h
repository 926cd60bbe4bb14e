#pragma once

#include "text/Progress.h"

#include <QString>
#include <QStringList>

#include <vector>

/// A folder in which a search has found missing items.
struct FoundFolder {
    /// As it is on the disk, ending in a backslash.
    QString Folder;
    /// The folder from which a target was looked up and the target, as it is spelled in the playlist.
    QStringList Items;
};

/// Everything a search has returned, in the order of the walk.
struct FoundItems {
    std::vector<FoundFolder> Folders;
    /// Each missing item counts once for each file that answers to it.
    int Count = 0;
};

/// Looks below the roots for files that answer to the missing paths: to their names alone, or with path info to all of
/// the path that stands behind its drive, anywhere below a root. Case does not matter. One walk serves all paths; it
/// enters each folder once, also where two roots or mounts lead to it, as far as disks tell folders apart, and passes
/// over links to folders, pseudo file systems, and what cannot be read. It tells each folder it enters; its value is
/// the place of the root's letter, from "a" to "h" 0 to 7, beyond it 1 to 18. When stopped: what was found by then.
FoundItems SearchDrives(const QStringList &roots, const QStringList &missingPaths, bool usePathInfo,
                        const Progress &progress);
