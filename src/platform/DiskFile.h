#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <span>

/// What a file is, to see whether it is another one by now.
struct DiskFacts {
    /// The file system, and the file's number in it.
    std::uint64_t Device = 0;
    std::uint64_t Number = 0;
    /// Names it has.
    std::uint64_t Links = 0;
    /// Bytes; -1 when there is no such file.
    std::int64_t Size = -1;
    /// When its content was last written, in the host's own count: only to be compared.
    std::int64_t Modified = 0;

    bool operator==(const DiskFacts &) const = default;
    /// As far as size and time tell. The other facts of a file that nobody touches are not the same ones for ever on
    /// every disk.
    bool HasSameContent(const DiskFacts &other) const { return Size == other.Size && Modified == other.Modified; }
};
DiskFacts DiskFactsOf(const QString &path);
/// Whether the host says for certain that nothing stands at a path; false when it cannot look.
bool IsAbsent(const QString &path);

/// Why the call that returned false just now did so.
enum class FileFault {
    /// The user may not do that, or the disk is read-only.
    Rights,
    /// Another program holds the file.
    Held,
    DiskFull,
    Other,
};
FileFault LastFault();

/// A regular file open for reading and writing at any place. It closes itself.
class DiskFile
{
public:
    DiskFile() = default;
    ~DiskFile() { Close(); }
    DiskFile(const DiskFile &) = delete;
    DiskFile &operator=(const DiskFile &) = delete;

    /// Opens a file that exists, through its links. Never blocks on a pipe.
    bool Open(const QString &path);
    /// Creates a file, at a path of the host (UTF-8 on Windows), where nothing stands yet. A private one is its owner's
    /// alone.
    bool Create(const QByteArray &hostPath, bool isPrivate);
    bool Close();
    /// Keeps the file for this process alone, among those that ask for it, until it is closed. False when another one
    /// has it or has deleted it (Held).
    bool HoldAlone();
    bool IsOpen() const { return handle != -1; }
    std::intptr_t Handle() const { return handle; }
    DiskFacts Facts() const;

    /// Fills the whole buffer; false also when the file ends before.
    bool ReadAt(std::int64_t offset, std::span<char> buffer) const;
    bool WriteAt(std::int64_t offset, QByteArrayView content);
    bool Resize(std::int64_t size);
    /// Takes the space of a file of this size, so that writing to it finds the disk not full. Never shortens the file;
    /// a failure may leave it longer.
    bool Reserve(std::int64_t size);
    /// Lets the host begin to write to the disk what Flush will wait for.
    void BeginFlush();
    bool Flush();

    /// Makes this empty file share the whole content of another one; false where the file system cannot.
    bool CloneFrom(const DiskFile &source);
    /// Has the host copy a stretch of another file; returns how many bytes from its start it did, 0 where it cannot.
    std::int64_t CopyFrom(const DiskFile &source, std::int64_t from, std::int64_t to, std::int64_t count);

private:
    std::intptr_t handle = -1;
};
