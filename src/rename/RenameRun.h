#pragma once

#include "rename/RenameRules.h"
#include "text/Progress.h"

#include <QHash>
#include <QStringList>

/// Gives the items of a run their numbers: counted through, or folder by folder, where a folder that comes back counts
/// on from where it stopped and the total is the number of audio files in the folder.
class RenameNumbers
{
public:
    struct Place {
        int Number = 0;
        int Total = 0;
    };

    /// filesIn counts the audio files of a folder; it is asked once for each.
    RenameNumbers(int itemCount, bool countsPerFolder, std::function<int(const QString &folder)> filesIn);

    Place Next(const QString &path);

private:
    bool perFolder;
    std::function<int(const QString &)> audioFilesIn;
    Place all;
    QHash<QString, Place> folders;
};

/// Files that match one of FileTypes; 0 for a folder that cannot be read.
int AudioFilesIn(const QString &folder);
int CountAudioFiles(const QStringList &names);

/// Whether the paths lie in more than one folder, by exact text.
bool InSeveralFolders(const QStringList &paths);

/// Whether one of the files is missing; those of a folder with many of them are looked up in its list, which is read
/// once. When stopped: one of those that had their turn.
bool AnyMissing(const QStringList &paths, const Progress &progress);

/// What a run has done: the path that each item has now, as far as the run came.
struct RenameOutcome {
    QStringList NewPaths;
    int Changed = 0;
};
/// Renames the files, in order; Progress counts them. A file that is meant twice is renamed once.
RenameOutcome RunRename(const RenameRules &rules, const QStringList &paths, bool perFolder, const Progress &progress);

struct UndoOutcome {
    int Attempted = 0;
    int Failed = 0;
    /// What was given back, in order: the paths that the files had, and those that they have again.
    QStringList From;
    QStringList To;

    int Restored() const { return static_cast<int>(To.size()); }
};
/// Gives the files their old paths back, from the last to the first. What is restored leaves the lists.
UndoOutcome UndoRename(QStringList &oldPaths, QStringList &newPaths, const Progress &progress);

/// Whether the file system reaches the file at the path by its name in another case too.
bool IgnoresCase(const QString &path);
