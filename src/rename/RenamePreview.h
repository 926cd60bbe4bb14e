#pragma once

#include "rename/RenameRun.h"

#include <QSet>

#include <unordered_map>
#include <vector>

/// What is known of folders while a preview is shown; each is listed once.
class FolderNames
{
public:
    struct Folder {
        bool Listed = false;
        bool IgnoresCase = false;
        int AudioFiles = 0;
        QSet<QString> Names;

        /// The same for all spellings of a name that are one file.
        QString Key(const QString &name) const { return IgnoresCase ? name.toCaseFolded() : name; }
    };

    /// Of a folder with or without its trailing backslash.
    const Folder &Of(QString folder);

private:
    /// Folders stay in their places.
    std::unordered_map<QString, Folder> folders;
};

enum class PreviewState {
    Unchanged,
    Renamed,
    /// The file has its new name by an earlier row.
    SameFile,
    /// An earlier item takes the name.
    Taken,
    /// A file of the name stands in the folder.
    Exists,
    /// The name would lead elsewhere.
    Refused,
    Missing,
};

struct PreviewItem {
    QString OldName;
    QString NewName;
    PreviewState State = PreviewState::Unchanged;
};

/// What a run would do. Shorter than the list of items when it was ended.
struct RenamePreview {
    std::vector<PreviewItem> Items;

    int Count(PreviewState state) const;
};
/// Goes through the items as a run would, numbers folder by folder and in order; renames nothing.
RenamePreview PreviewRename(const RenameRules &rules, const QStringList &paths, FolderNames &folders,
                            const Progress &progress);
