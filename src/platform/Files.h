#pragma once

#include "platform/DiskFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <span>

// Files and folders of the host, by inside paths. Nothing here asks or tells the user anything.

/// A file opened for reading, for the stream and tag readers: one open, one fstat, reads at any place.
class InputFile
{
public:
    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;

    /// False for anything that is not a readable regular file (a folder, a pipe, a device). Never blocks on a pipe.
    bool Open(const QString &path);
    /// The file when it was opened.
    const DiskFacts &Facts() const { return facts; }
    std::int64_t Size() const { return facts.Size; }
    /// Reads up to buffer.size() bytes from offset; returns the bytes read, 0 at or beyond the end, -1 on failure.
    std::ptrdiff_t ReadAt(std::int64_t offset, std::span<unsigned char> buffer) const;

private:
    std::intptr_t handle = -1;
    DiskFacts facts{.Size = 0};
};

/// Attribute bits as DOS knows them.
enum FileAttribute {
    AttributeReadOnly = 1,
    AttributeHidden = 2,
    AttributeSystem = 4,
    AttributeVolume = 8,
    AttributeDirectory = 16,
    AttributeArchive = 32,
    AttributeNormal = 128,
};

/// The attribute bits of a file or folder; -1 when it does not exist or cannot be examined. Off Windows read-only is
/// the owner's missing write bit; archive, system and hidden live in the extended attribute "user.DOSATTRIB" as
/// hexadecimal text ("0x20"), as file servers keep them. A file with none of them set is AttributeNormal.
int FileAttributes(const QString &path);
/// Sets read-only, hidden, system and archive to just these bits (AttributeNormal = none); false on failure.
bool SetFileAttributes(const QString &path, int attributes);

/// What stands at a path, by one call of the host.
struct FileFacts {
    bool Exists = false;
    bool IsFolder = false;
    /// Bytes; 0 for a folder.
    std::int64_t Size = 0;
};
FileFacts ExamineFile(const QString &path);
/// Whether a file is not there for certain, though its folder is.
bool IsGone(const QString &path);

/// The whole content; false when it cannot be opened or read. At most 2 GiB.
bool ReadWholeFile(const QString &path, QByteArray &content);
/// Replaces the file whole or not at all: a copy beside it is written, flushed and put in its place with the rights
/// and extended attributes of the old one, so that a full disk or a killed process leaves the old file. A symbolic
/// link stays and its target is replaced. False, and the old file untouched, on any failure, and always for a file
/// whose read-only attribute is set, also for root.
bool WriteWholeFile(const QString &path, const QByteArray &content);

/// The entries of one folder, each list sorted by name without regard to case, ties by code unit.
struct FolderEntries {
    /// Regular files and links to them.
    QStringList Files;
    /// Subfolders, without links to folders, "." and "..".
    QStringList Folders;
};
/// Lists a folder once. False when it cannot be read; the lists are then empty.
bool ListFolder(const QString &folder, FolderEntries &entries);

/// Which folder stands at a path: two paths of one folder have equal identities. Valid is false when there is none,
/// or its disk does not tell.
struct FolderIdentity {
    bool Valid = false;
    /// The file system, and the folder's number in it.
    std::uint64_t Device = 0;
    std::uint64_t Number = 0;

    bool operator==(const FolderIdentity &) const = default;
};
FolderIdentity IdentifyFolder(const QString &folder);

/// A folder that is open while this lives, to know which one it is before it is listed.
class FolderReader
{
public:
    explicit FolderReader(const QString &folder);
    ~FolderReader();
    FolderReader(const FolderReader &) = delete;
    FolderReader &operator=(const FolderReader &) = delete;

    /// IdentifyFolder, where the host lets it without a look at the path.
    FolderIdentity Identify() const;
    /// ListFolder; to be asked once.
    bool List(FolderEntries &entries) const;

private:
    QString path;
    void *handle = nullptr;
};

/// False for a folder of a pseudo file system (proc, sysfs, devtmpfs, cgroup and their like), where a search for the
/// user's files has no business, and for a folder that cannot be examined. One call of the host; within one device
/// the answer is the same.
bool HoldsUserFiles(const QString &folder);

/// Whether a name matches a mask of "*" and "?", without regard to case. "*.*" is every name, as on Windows.
bool MatchesMask(QStringView name, QStringView mask);

/// Renames within one file system. Never overwrites, and does not look beforehand; a change of case alone succeeds
/// also where the file system ignores case. False on any failure, and for a name that Windows would change.
bool RenameFile(const QString &from, const QString &to);
/// Deletes a file or a link; false for a folder and on any failure.
bool DeleteFile(const QString &path);
/// Copies content; overwrites the target whole or not at all. False on any failure, and for a read-only target.
bool CopyFile(const QString &from, const QString &to);

/// Creates a folder with those above it; true when it then exists.
bool EnsureFolder(const QString &folder);
