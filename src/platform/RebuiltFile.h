#pragma once

#include "platform/DiskFile.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <span>

/// A stretch of a file that is put together anew: bytes of its own, or bytes of the file as it is now.
struct FilePiece {
    QByteArray Bytes;
    /// Used when Bytes is empty: Count bytes of the old file from offset From.
    std::int64_t From = 0;
    std::int64_t Count = 0;
};

enum class RebuildState {
    Done,
    /// There is no such regular file, or it cannot be opened for writing (rights, or another program holds it).
    CannotOpen,
    /// The read-only attribute is set, also for root.
    ReadOnly,
    /// The file is another one, or has been written to, since the pieces were planned.
    Changed,
    DiskFull,
    /// The copy could not be written or does not read back as it was written.
    Failed,
};

/// Gives a file a new content made of pieces, whose old stretches keep their order and do not overlap (else Failed). A
/// copy beside the file (a clone where the file system can and the old stretches stay at their offsets) is written,
/// read back and compared, flushed, and takes the file's place with its rights, attributes and extended attributes, and
/// its owner where the host lets it, so that a killed process or a full disk leaves the old file or the new one. A
/// symbolic link stays and its target is rebuilt. A file with several hard links, or in a folder that takes no copy, is
/// written in place instead, after the space for it has been reserved and what is written over has been noted
/// (WayBack): what fails on the way is taken back, and what a killed process leaves half-written is at the next start.
/// In every state but Done the file is as it was. planned: the file when the pieces were planned.
RebuildState RebuildFile(const QString &path, const DiskFacts &planned, std::span<const FilePiece> pieces);
