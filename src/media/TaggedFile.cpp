#include "media/TaggedFile.h"

#include "media/ID3v2Bytes.h"
#include "media/MediaError.h"
#include "media/TagFrames.h"
#include "platform/Drives.h"
#include "platform/RebuiltFile.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
// The first read of a tag, which takes in most of them whole.
constexpr qint64 firstReadBytes = 4096;

/// The room that a tag takes: the old one where it fits well, so that the audio can stay where it is. Otherwise some
/// room is left for later changes, and the audio keeps its place within a block of the disk, so that a file system
/// that can share blocks between the old file and the copy does so.
qint64 RoomFor(qint64 needed, qint64 old)
{
    constexpr qint64 block = 4096;
    constexpr qint64 leastPadding = 1024;
    constexpr qint64 mostPadding = 64 * 1024;
    if (needed <= old && old - needed <= mostPadding)
        return old;
    const qint64 least = needed + leastPadding;
    return least + (old - least % block + block) % block;
}

/// Whether the ID3v2 tag that a file of this size begins with reaches into the place of an ID3v1 tag, so that a mark
/// there is part of a frame.
bool HoldsID3v1Place(QByteArrayView front, qint64 size)
{
    const qint64 tagEnd = ID3v2Size(front, "ID3").value_or(0);
    return tagEnd <= size && tagEnd > size - ID3v1Tag::Size;
}

QString Reason(RebuildState state)
{
    switch (state) {
    case RebuildState::ReadOnly:
        return u" is read-only."_s;
    case RebuildState::Changed:
        return u" was changed meanwhile."_s;
    case RebuildState::DiskFull:
        return u" cannot be written: the disk is full."_s;
    case RebuildState::CannotOpen:
        return u" cannot be opened for writing."_s;
    default:
        return u" cannot be written."_s;
    }
}
} // namespace

TagPresence FindTags(const QString &path)
{
    try {
        return TaggedFile(path).Tags();
    } catch (const MediaError &) {
        return {};
    }
}

TaggedFile::TaggedFile(const QString &filePath) : path(filePath)
{
    if (!file.Open(path))
        throw MediaError(ShownPath(path) % u" cannot be opened."_s);
    keepEnd = file.Size();
}

QByteArray TaggedFile::Read(qint64 offset, qint64 count) const
{
    QByteArray bytes(std::clamp<qint64>(file.Size() - offset, 0, count), Qt::Uninitialized);
    if (bytes.isEmpty())
        return bytes;
    const std::ptrdiff_t done =
        file.ReadAt(offset, {reinterpret_cast<unsigned char *>(bytes.data()), static_cast<std::size_t>(bytes.size())});
    if (done != bytes.size())
        throw MediaError(ShownPath(path) % u" cannot be read."_s);
    return bytes;
}

QByteArray TaggedFile::ID3v2BytesAt(qint64 offset) const
{
    QByteArray bytes = Read(offset, firstReadBytes);
    if (!bytes.startsWith("ID3"))
        return QByteArray();
    const qint64 size = ID3v2Size(bytes, "ID3").value_or(bytes.size());
    if (size > bytes.size())
        bytes = Read(offset, size);
    else
        bytes.truncate(size);
    DropMissingFooter(bytes);
    return bytes;
}

QByteArray TaggedFile::ID3v1Bytes() const
{
    constexpr qint64 before = 3;
    const qint64 count = std::min<qint64>(file.Size(), ID3v1Tag::Size + before);
    const QByteArray tail = Read(file.Size() - count, count);
    if (!ID3v1Tag::FromTail(tail).Present)
        return QByteArray();
    return HoldsID3v1Place(Read(0, ID3v2HeaderBytes), file.Size()) ? QByteArray() : tail.last(ID3v1Tag::Size);
}

ID3v2Tag TaggedFile::ReadID3v2() const
{
    const QByteArray bytes = ID3v2BytesAt(0);
    return bytes.isEmpty() ? ID3v2Tag() : ID3v2Tag::FromBytes(bytes);
}

ID3v2Tag TaggedFile::ReadTexts(std::span<const QByteArrayView> ids) const
{
    const QByteArray bytes = Read(0, firstReadBytes);
    if (bytes.startsWith("ID3")) {
        ID3v2Tag tag = ID3v2Tag::FromBytes(bytes);
        if (tag.Fault.isEmpty() || std::all_of(ids.begin(), ids.end(),
                                               [&tag](QByteArrayView id) { return AnswersFor(tag, id.toByteArray()); }))
            return tag;
    }
    return ReadID3v2();
}

ID3v1Tag TaggedFile::ReadID3v1() const
{
    return ID3v1Tag::FromTail(ID3v1Bytes());
}

TagPresence TaggedFile::Tags() const
{
    return {!ID3v1Bytes().isEmpty(), ID3v2Size(Read(0, ID3v2HeaderBytes), "ID3").has_value()};
}

void TaggedFile::RequireWhole(const QString &fault) const
{
    if (!fault.isEmpty())
        throw MediaError(ShownPath(path) % u' ' % fault % u", so it is not written over."_s);
}

void TaggedFile::RequireSize(const QByteArray &bytes) const
{
    if (ID3v2Size(bytes, "ID3") != std::optional<qint64>(bytes.size()))
        RequireWhole(ID3v2Tag::FaultOf(bytes));
}

void TaggedFile::PutID3v1(const ID3v1Tag &tag)
{
    const QByteArray old = ID3v1Bytes();
    back = tag.Bytes(old);
    keepEnd = file.Size() - old.size();
    const QByteArray newFront = Read(0, std::min<qint64>(keepEnd, ID3v2HeaderBytes)) + back;
    if (HoldsID3v1Place(newFront, keepEnd + ID3v1Tag::Size))
        throw MediaError(ShownPath(path) % u" ends within its ID3v2 tag, so no ID3v1 tag is written behind it."_s);
}

void TaggedFile::DropID3v1()
{
    back.clear();
    keepEnd = file.Size() - ID3v1Bytes().size();
}

void TaggedFile::PutID3v2(const ID3v2Tag &tag)
{
    RequireWhole(tag.Fault);
    QByteArray old = ID3v2BytesAt(0);
    if (!old.isEmpty())
        RequireWhole(ID3v2Tag::FaultOf(old));
    const qint64 oldSize = old.size();
    old.clear();
    const qint64 room = RoomFor(tag.Size(), oldSize);
    if (room > MostID3v2Bytes)
        throw MediaError(ShownPath(path) % u" cannot take a tag of more than 256 MB."_s);
    front = tag.Bytes(room);
    keepFrom = oldSize;
}

void TaggedFile::DropID3v2()
{
    qint64 end = 0;
    for (QByteArray old = ID3v2BytesAt(0); !old.isEmpty(); old = ID3v2BytesAt(end)) {
        RequireSize(old);
        end += old.size();
    }
    front.clear();
    keepFrom = end;
}

bool TaggedFile::Holds(qint64 offset, qint64 count, QByteArrayView bytes) const
{
    constexpr qint64 block = 64 * 1024;
    if (count != bytes.size())
        return false;
    for (qint64 done = 0; done < count; done += block) {
        const QByteArray held = Read(offset + done, std::min(block, count - done));
        if (held != bytes.sliced(done, held.size()))
            return false;
    }
    return true;
}

void TaggedFile::Write()
{
    keepEnd = std::max(keepEnd, keepFrom);
    if (Holds(0, keepFrom, front) && Holds(keepEnd, file.Size() - keepEnd, back))
        return;
    std::vector<FilePiece> pieces{{front}, {{}, keepFrom, keepEnd - keepFrom}, {back}};
    std::erase_if(pieces, [](const FilePiece &piece) { return piece.Bytes.isEmpty() && piece.Count == 0; });
    const RebuildState state = RebuildFile(path, file.Facts(), pieces);
    if (state != RebuildState::Done)
        throw MediaError(ShownPath(path) % Reason(state));
}
