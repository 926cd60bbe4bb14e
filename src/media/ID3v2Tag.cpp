#include "media/ID3v2Tag.h"

#include "media/ID3v2Bytes.h"
#include "media/ID3v2Parser.h"

#include <algorithm>

namespace
{
constexpr quint8 unsynchronisedFlag = 0x80;
constexpr quint8 extendedFlag = 0x40;
constexpr quint8 experimentalFlag = 0x20;

/// The flags of a frame that change what its data means, by version.
struct FrameFlags {
    quint16 Group;
    quint16 Compressed;
    quint16 Encrypted;
    quint16 Unsynchronised;
    quint16 LengthGiven;
    /// What to do when tag or file change.
    quint16 Status;
};
constexpr FrameFlags flagsOf3{0x0020, 0x0080, 0x0040, 0, 0, 0xE000};
constexpr FrameFlags flagsOf4{0x0040, 0x0008, 0x0004, 0x0002, 0x0001, 0x7000};

const FrameFlags &FlagsOf(int version)
{
    return version == 4 ? flagsOf4 : flagsOf3;
}

/// What stands behind the additions to a frame's header, and the length that a packed one tells of what it holds.
struct FrameBody {
    QByteArray Data;
    std::optional<quint32> Unpacks;
};

std::optional<FrameBody> BodyOf3(const TagFrame &frame)
{
    const bool compressed = (frame.Flags & flagsOf3.Compressed) != 0;
    const qsizetype extra = (compressed ? 4 : 0) + ((frame.Flags & flagsOf3.Group) != 0 ? 1 : 0);
    if (frame.Data.size() < extra)
        return std::nullopt;
    FrameBody body{frame.Data.mid(extra), {}};
    if (compressed)
        body.Unpacks = BigEndian(QByteArrayView(frame.Data).first(4));
    return body;
}

std::optional<FrameBody> BodyOf4(const TagFrame &frame, bool unsynchronised)
{
    const bool lengthGiven = (frame.Flags & flagsOf4.LengthGiven) != 0;
    const bool compressed = (frame.Flags & flagsOf4.Compressed) != 0;
    const bool marked = unsynchronised || (frame.Flags & flagsOf4.Unsynchronised) != 0;
    const QByteArray data = marked && CanBeUnsynchronised(frame.Data) ? Resynchronise(frame.Data) : frame.Data;
    const qsizetype group = (frame.Flags & flagsOf4.Group) != 0 ? 1 : 0;
    const qsizetype extra = group + (lengthGiven ? 4 : 0);
    if (data.size() < extra || (compressed && !lengthGiven))
        return std::nullopt;
    FrameBody body{data.mid(extra), {}};
    if (compressed)
        body.Unpacks = SyncSafe(QByteArrayView(data).sliced(group, 4));
    return body;
}

std::optional<FrameBody> BodyOf(const TagFrame &frame, int version, bool unsynchronised)
{
    return version == 4 ? BodyOf4(frame, unsynchronised) : BodyOf3(frame);
}

void AppendFrame(QByteArray &bytes, const TagFrame &frame, int version)
{
    const auto size = static_cast<quint32>(frame.Data.size());
    bytes += frame.Id;
    bytes += version == 4 ? SyncSafeBytes(size) : BigEndianBytes(size);
    bytes += static_cast<char>(frame.Flags >> 8);
    bytes += static_cast<char>(frame.Flags & 0xFF);
    bytes += frame.Data;
}
} // namespace

ID3v2Tag ID3v2Tag::FromBytes(const QByteArray &bytes)
{
    return ID3v2Parser(bytes).Parse();
}

QString ID3v2Tag::FaultOf(const QByteArray &bytes)
{
    return ID3v2Parser(bytes, false).Parse().Fault;
}

void ID3v2Tag::AppendBody(QByteArray &bytes) const
{
    bytes += extendedHeader;
    for (const TagFrame &frame : Frames) {
        if (!frame.Dropped)
            AppendFrame(bytes, frame, Version);
    }
}

QByteArray ID3v2Tag::UnsynchronisedBody() const
{
    QByteArray body;
    AppendBody(body);
    return Unsynchronise(body);
}

qint64 ID3v2Tag::Size() const
{
    if (WholeUnsynchronised())
        return ID3v2HeaderBytes + UnsynchronisedBody().size();
    qint64 size = ID3v2HeaderBytes + extendedHeader.size();
    for (const TagFrame &frame : Frames)
        size += frame.Dropped ? 0 : ID3v2HeaderBytes + frame.Data.size();
    return size;
}

// Pictures can be large, so the bytes are put together where they stay.
QByteArray ID3v2Tag::Bytes(qint64 size) const
{
    QByteArray bytes("ID3");
    bytes.reserve(size);
    bytes += static_cast<char>(Version);
    bytes += static_cast<char>(revision);
    bytes += static_cast<char>((unsynchronised ? unsynchronisedFlag : 0) |
                               (extendedHeader.isEmpty() ? 0 : extendedFlag) | (experimental ? experimentalFlag : 0));
    bytes += SyncSafeBytes(static_cast<quint32>(size - ID3v2HeaderBytes));
    if (WholeUnsynchronised())
        bytes += UnsynchronisedBody();
    else
        AppendBody(bytes);
    const qint64 padding = size - bytes.size();
    // A 2.3 tag's extended header tells the size of the padding in its last four bytes. An unsynchronised one is left
    // at zero, since the size could need a byte more there.
    if (Version == 3 && !extendedHeader.isEmpty() && !WholeUnsynchronised())
        bytes.replace(ID3v2HeaderBytes + extendedHeader.size() - 4, 4, BigEndianBytes(static_cast<quint32>(padding)));
    return bytes.append(padding, '\0');
}

std::optional<QByteArray> ID3v2Tag::Content(const TagFrame &frame) const
{
    if (frame.Shut || (frame.Flags & FlagsOf(Version).Encrypted) != 0)
        return std::nullopt;
    if (!frame.Unpacked.isEmpty())
        return frame.Unpacked;
    const std::optional<FrameBody> body = BodyOf(frame, Version, unsynchronised);
    if (!body)
        return std::nullopt;
    if (!body->Unpacks)
        return body->Data;
    frame.Unpacked = qUncompress(BigEndianBytes(*body->Unpacks) + body->Data);
    frame.Shut = frame.Unpacked.isEmpty() || frame.Unpacked.size() != static_cast<qsizetype>(*body->Unpacks);
    if (frame.Shut) {
        frame.Unpacked.clear();
        return std::nullopt;
    }
    return frame.Unpacked;
}

// A small file shall not fill the memory: unpacking gives up to a thousand times the bytes, whatever length is told.
void ID3v2Tag::LimitPacked()
{
    qsizetype packed = 256 * 1024;
    qint64 unpacked = 16 * 1024 * 1024;
    for (TagFrame &frame : Frames) {
        if ((frame.Flags & FlagsOf(Version).Compressed) == 0)
            continue;
        const std::optional<FrameBody> body = BodyOf(frame, Version, unsynchronised);
        frame.Shut = !body || body->Data.size() > packed || qint64{*body->Unpacks} > unpacked;
        if (!frame.Shut) {
            packed -= body->Data.size();
            unpacked -= *body->Unpacks;
        }
    }
}

void ID3v2Tag::SetContent(TagFrame &frame, const QByteArray &content) const
{
    const FrameFlags &flags = FlagsOf(Version);
    frame.Flags = frame.Flags & flags.Status;
    frame.Data = content;
    frame.Shut = false;
    frame.Unpacked.clear();
    if (Version == 4 && unsynchronised) {
        frame.Flags = frame.Flags | flags.Unsynchronised;
        frame.Data = Unsynchronise(content);
    }
}

void ID3v2Tag::Append(const QByteArray &id, const QByteArray &content)
{
    TagFrame frame{id, 0, {}};
    frame.Added = true;
    SetContent(frame, content);
    Frames.push_back(frame);
}

void ID3v2Tag::Drop(const FrameTest &which)
{
    std::erase_if(Frames, [&](const TagFrame &frame) { return frame.Added && which(frame); });
    for (TagFrame &frame : Frames)
        frame.Dropped = frame.Dropped || which(frame);
}

void ID3v2Tag::PutBehind(const FrameTest &isKind, const FrameTest &isSame, const QByteArray &id,
                         const std::function<QByteArray()> &content)
{
    const auto isLast = [&](const TagFrame &frame) { return !frame.Dropped && isKind(frame); };
    const auto isFirst = [&](const TagFrame &frame) { return frame.Dropped && isKind(frame); };
    const auto isOld = [&](const TagFrame &frame) { return frame.Dropped && isSame(frame); };
    auto place = std::find_if(Frames.rbegin(), Frames.rend(), isLast).base();
    if (place == Frames.begin())
        place = std::find_if(Frames.begin(), Frames.end(), isFirst);
    auto old = std::find_if(place, Frames.end(), isOld);
    if (old != Frames.end()) {
        old->Dropped = false;
        return;
    }
    old = std::find_if(Frames.begin(), place, isOld);
    if (old != place) {
        old->Dropped = false;
        std::rotate(old, old + 1, place);
        return;
    }
    const std::ptrdiff_t index = place - Frames.begin();
    Append(id, content());
    std::rotate(Frames.begin() + index, Frames.end() - 1, Frames.end());
}
