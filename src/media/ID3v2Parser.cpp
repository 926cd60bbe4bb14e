#include "media/ID3v2Parser.h"

#include "media/ID3v22Frames.h"
#include "media/ID3v2Bytes.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr quint8 unsynchronisedFlag = 0x80;
// In version 2.2 this bit means a compression that was never defined.
constexpr quint8 extendedFlag = 0x40;
constexpr quint8 experimentalFlag = 0x20;

/// What is done with a tag takes the time of the square of them; hardly any tag has a hundred.
constexpr int mostFrames = 4096;

bool IsIdCharacter(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= '0' && character <= '9');
}
} // namespace

ID3v2Tag ID3v2Parser::Parse()
{
    if (ReadHeader() && ReadExtendedHeader())
        ReadFrames();
    tag.LimitPacked();
    return std::move(tag);
}

bool ID3v2Parser::Fail(const QString &fault)
{
    tag.Fault = fault;
    return false;
}

bool ID3v2Parser::ReadHeader()
{
    const std::optional<qint64> size = ID3v2Size(source, "ID3");
    if (!size)
        return Fail(u"has an ID3v2 tag whose size cannot be read"_s);
    tag.Present = true;
    version = static_cast<quint8>(source[3]);
    if (version < 2 || version > 4)
        return Fail(u"has an ID3v2 tag of an unknown version"_s);
    tag.Version = std::max(version, 3);
    const auto flags = static_cast<quint8>(source[5]);
    if (version == 2 && (flags & extendedFlag) != 0)
        return Fail(u"has a compressed ID3v2 tag"_s);
    body = QByteArray::fromRawData(
        source.constData() + ID3v2HeaderBytes,
        std::min<qsizetype>(SyncSafe(QByteArrayView(source).sliced(6, 4)), source.size() - ID3v2HeaderBytes));
    const bool unsynchronised = (flags & unsynchronisedFlag) != 0 && (version == 4 || CanBeUnsynchronised(body));
    if (unsynchronised && version < 4)
        body = Resynchronise(body);
    if (version > 2) {
        tag.revision = static_cast<quint8>(source[4]);
        tag.unsynchronised = unsynchronised;
        tag.experimental = (flags & experimentalFlag) != 0;
    }
    if (*size > source.size())
        tag.Fault = u"has an ID3v2 tag that claims more bytes than the file holds"_s;
    return true;
}

bool ID3v2Parser::ReadExtendedHeader()
{
    if (version == 2 || (static_cast<quint8>(source[5]) & extendedFlag) == 0)
        return true;
    if (version == 3 ? ReadExtendedHeader3() : ReadExtendedHeader4())
        return true;
    return Fail(u"has an ID3v2 tag with a damaged extended header"_s);
}

bool ID3v2Parser::ReadExtendedHeader3()
{
    constexpr qsizetype plainBytes = 10;
    constexpr qsizetype checksumBytes = 4;
    if (body.size() < plainBytes)
        return false;
    const qsizetype size = qsizetype{BigEndian(QByteArrayView(body).first(4))} + 4;
    if ((size != plainBytes && size != plainBytes + checksumBytes) || size > body.size())
        return false;
    constexpr quint8 checksumFlag = 0x80;
    QByteArray flags = body.sliced(4, 2);
    flags[0] = static_cast<char>(static_cast<quint8>(flags[0]) & ~checksumFlag);
    tag.extendedHeader = BigEndianBytes(plainBytes - 4) + flags + BigEndianBytes(0);
    position = size;
    return true;
}

bool ID3v2Parser::ReadExtendedHeader4()
{
    constexpr qsizetype leastBytes = 6;
    constexpr quint8 updateFlag = 0x40;
    constexpr quint8 checksumFlag = 0x20;
    constexpr quint8 restrictionsFlag = 0x10;
    if (body.size() < leastBytes || HasHighBit(QByteArrayView(body).first(4)))
        return false;
    const qsizetype size = SyncSafe(QByteArrayView(body).first(4));
    if (size < leastBytes || size > body.size() || body.at(4) != '\x01')
        return false;
    const auto flags = static_cast<quint8>(body.at(5));
    QByteArray kept;
    qsizetype at = leastBytes;
    for (const quint8 flag : {updateFlag, checksumFlag, restrictionsFlag}) {
        if ((flags & flag) == 0)
            continue;
        if (at >= size || at + 1 + static_cast<quint8>(body.at(at)) > size)
            return false;
        const qsizetype bytes = 1 + static_cast<quint8>(body.at(at));
        if (flag != checksumFlag)
            kept += body.sliced(at, bytes);
        at += bytes;
    }
    tag.extendedHeader = SyncSafeBytes(static_cast<quint32>(leastBytes + kept.size())) + '\x01' +
                         static_cast<char>(flags & ~checksumFlag) + kept;
    position = size;
    return true;
}

void ID3v2Parser::ReadFrames()
{
    while (position < body.size() && body.at(position) != '\0') {
        if (!ReadFrame())
            return;
    }
    // Padding hides nothing, or what it hides would be lost.
    if (tag.Fault.isEmpty() && !IsPadding(position))
        Fail(u"has an ID3v2 tag with bytes that belong to no frame"_s);
}

bool ID3v2Parser::ReadFrame()
{
    const qsizetype headerBytes = version == 2 ? 6 : ID3v2HeaderBytes;
    const bool cut = !tag.Fault.isEmpty();
    if (body.size() - position < headerBytes || !IsId(position))
        return cut ? false : Fail(u"has an ID3v2 tag with bytes that belong to no frame"_s);
    const qsizetype size = FrameSize();
    if (size > body.size() - position - headerBytes)
        return cut ? false : Fail(u"has an ID3v2 tag with a frame longer than the tag"_s);
    if (++frameCount > mostFrames)
        return Fail(u"has an ID3v2 tag with more frames than can be kept"_s);
    const QByteArray id = body.sliced(position, version == 2 ? 3 : 4);
    const auto flags =
        version == 2 ? quint16{0} : static_cast<quint16>(BigEndian(QByteArrayView(body).sliced(position + 8, 2)));
    if (keepsFrames)
        AddFrame(id, flags, body.sliced(position + headerBytes, size));
    position += headerBytes + size;
    return true;
}

void ID3v2Parser::AddFrame(const QByteArray &id, quint16 flags, const QByteArray &data)
{
    if (version > 2) {
        tag.Frames.push_back({id, flags, data});
        return;
    }
    const QByteArray converted = id == "PIC" ? ID3v23Picture(data) : data;
    if (converted.isEmpty() && !data.isEmpty())
        tag.Frames.push_back({"XPIC", flags, data});
    else
        tag.Frames.push_back({ID3v23Id(id), flags, converted});
}

// Some programs write ids of version 2.2 into a 2.3 tag, with a blank or a zero as the fourth character.
bool ID3v2Parser::IsId(qsizetype at) const
{
    const qsizetype count = version == 2 ? 3 : 4;
    if (body.size() - at < count)
        return false;
    const QByteArrayView id = QByteArrayView(body).sliced(at, count);
    const auto *const bad = std::find_if_not(id.begin(), id.end(), IsIdCharacter);
    return bad == id.end() || (count == 4 && bad == id.begin() + 3 && (*bad == ' ' || *bad == '\0'));
}

bool ID3v2Parser::CanFollow(qsizetype at) const
{
    return at <= body.size() && (IsId(at) || IsPadding(at));
}

bool ID3v2Parser::IsPadding(qsizetype at) const
{
    return std::all_of(body.begin() + at, body.end(), [](char byte) { return byte == '\0'; });
}

qsizetype ID3v2Parser::FrameSize() const
{
    const QByteArrayView bytes = QByteArrayView(body).sliced(position + (version == 2 ? 3 : 4), version == 2 ? 3 : 4);
    const qsizetype plain = BigEndian(bytes);
    if (version != 4)
        return plain;
    // Some programs write 2.4 frames with plain sizes.
    const qsizetype safe = SyncSafe(bytes);
    const qsizetype begin = position + ID3v2HeaderBytes;
    if (HasHighBit(bytes) || (plain != safe && !CanFollow(begin + safe) && CanFollow(begin + plain)))
        return plain;
    return safe;
}
