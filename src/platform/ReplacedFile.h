#pragma once

#include "platform/DiskFile.h"
#include "platform/WayBack.h"

/// A file in the course of being replaced whole: a copy beside it takes the new content and then its place. Destroying
/// it before the copy is in its place leaves the old file as it was and no copy behind.
class ReplacedFile
{
public:
    ReplacedFile() = default;
    ~ReplacedFile();
    ReplacedFile(const ReplacedFile &) = delete;
    ReplacedFile &operator=(const ReplacedFile &) = delete;

    /// False when the file may not be written or no copy can be made beside it.
    bool Begin(const QString &path);
    /// The copy, for who does not write it from front to back.
    DiskFile &Copy() { return file; }
    bool Append(QByteArrayView content);
    bool Commit() { return Settle() && TakePlace(); }
    /// Gives the copy the rights, owner and extended attributes of the old file, flushes and closes it.
    bool Settle();
    /// Puts the settled copy in the place of the file.
    bool TakePlace();

private:
    DiskFile file;
    /// Host names, UTF-8 on Windows; the copy's is empty when there is none.
    QByteArray target;
    QByteArray copy;
    WayBack wayBack;
    std::int64_t size = 0;
    bool existed = false;
};

/// Deletes the file that was made at a path where none stood: a symbolic link stays and its target goes. False on any
/// failure.
bool DeleteMadeFile(const QString &path);
