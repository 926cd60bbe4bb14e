#pragma once

#include "text/MadeFiles.h"
#include "text/Progress.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

// One playlist for each folder of a list: planned, checked, written, taken back.

enum class AutoCreateMode { BaseFolderOnly, RootFolderOnly, BothFolders };

struct AutoCreateRequest {
    AutoCreateMode Mode = AutoCreateMode::BaseFolderOnly;
    /// The root that all items have in common, with its trailing backslash.
    QString Root;
    /// With their trailing backslashes; one that comes back later stands again.
    QStringList RequestedFolders;
    /// See ExpandNamingFormat.
    QString Format;
};

/// A playlist to be written.
struct PlannedPlaylist {
    QString Path;
    /// The folder whose files it lists, and what stands before each of their names.
    QString Folder;
    QString Prefix;
    /// Counts as requested. The root's own playlist does so once; it is written again when the root comes back.
    bool IsRequested = true;
};

/// What a run did; counts of files.
struct AutoCreateCounts {
    qsizetype Requested = 0;
    qsizetype Done = 0;
    qsizetype Failed = 0;
};

using ReportLine = std::function<void(const QString &line)>;

/// The playlists in the order in which they are written: for each folder the one in it, then the one in the root. A
/// name that comes out empty gives the bare folder as the path. now is asked for each name.
std::vector<PlannedPlaylist> PlanPlaylists(const AutoCreateRequest &request, const std::function<QDateTime()> &now);

/// The paths that count as requested.
QStringList RequestedPaths(const std::vector<PlannedPlaylist> &plan);

/// Writes each playlist with the files of its folder, in their order. files are full paths. What was written stands in
/// made.
AutoCreateCounts WritePlaylists(const std::vector<PlannedPlaylist> &plan, const QStringList &files, MadeFiles &made,
                                const ReportLine &report, const Progress &progress);

/// Deletes the files of a run, and gives back what they replaced.
AutoCreateCounts UndoPlaylists(MadeFiles &made, const ReportLine &report);
