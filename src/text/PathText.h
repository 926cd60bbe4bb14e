#pragma once

#include <QString>

// Splitting, normalising and testing of inside paths. Comparison of text is exact in all of them.

/// UTF-16 units; no host has a file with a longer name.
constexpr qsizetype LongestName = 255;
/// Where the file name of a path starts: behind the last backslash.
qsizetype FileNameStart(QStringView path);
/// What stands behind the last backslash; the whole text if it holds none.
QString GetFileName(const QString &path);
/// From the last full stop of a file name on, with the full stop; empty if the name has none.
QString GetExtension(const QString &name);
/// The path with every occurrence of its file name removed, so a folder ending in a backslash. One that no file can
/// have is removed at the end alone.
QString GetFolderPart(const QString &path);
/// Whether that is the folder part of the path, which need not be made for it.
bool IsFolderPart(const QString &folder, const QString &path);
/// The path less a backslash and its file name; empty for a bare name.
QString FolderOf(const QString &path);
/// Whether a path counts from no other folder: it holds a drive's colon or names a share.
bool IsAbsolute(const QString &path);
/// The path counted from a folder (without a trailing backslash), or from its drive when it starts with a backslash;
/// the folder for an empty one.
QString AbsolutePath(const QString &path, const QString &folder);
/// The path without the folder (with its trailing backslash) and without the separators behind that; other
/// occurrences of the folder go too. A path outside of it stays.
QString WithoutFolder(const QString &path, const QString &folder);
/// The text with every occurrence of part removed, from left to right in one pass. An empty part removes nothing.
QString RemoveText(QString text, QStringView part);
/// The text without the blanks (U+0020) at both its ends.
QString TrimBlanks(const QString &text);

/// Makes the drive letter lower case and removes one trailing backslash: a root becomes "c:". Changes the path in
/// place and returns it.
QString NormalisePath(QString &path);
/// The same for a path that is not to be changed.
QString NormalisedPath(QString path);

/// What stands at a path.
struct PathInfo {
    /// The path could be examined; else neither IsFolder nor IsFile is set.
    bool Valid = false;
    /// The normalised path, also of one that is not valid.
    QString Path;
    bool IsFolder = false;
    bool IsFile = false;
    /// The file's extension with its full stop, in lower case; empty for a folder.
    QString Extension;
};
PathInfo AnalysePath(const QString &path);

/// Whether a file or folder stands at the path. True for the empty text, which means the current directory.
bool PathExists(const QString &path);

/// True on success; none of these asks anything. CopyFilePath overwrites, RenameFilePath does not.
bool RenameFilePath(const QString &newPath, const QString &oldPath);
bool DeleteFilePath(const QString &path);
bool CopyFilePath(const QString &source, const QString &target);
