#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

/// The size of a tag has 28 bits.
constexpr qint64 MostID3v2Bytes = (qint64{1} << 28) - 1;

/// One frame of an ID3v2 tag as it lies there.
struct TagFrame {
    /// Four characters.
    QByteArray Id;
    /// The two flag bytes of the tag's version, the first one high.
    quint16 Flags = 0;
    /// What stands behind the frame's header; unsynchronisation of a whole 2.3 tag is undone, that of a 2.4 frame not.
    QByteArray Data;
    /// Taken out of the tag and not written, but kept to be put back.
    bool Dropped = false;
    /// Not in the tag that was read.
    bool Added = false;
    /// A packed frame that is damaged, or that the tag's limits leave packed.
    mutable bool Shut = false;
    /// What a packed frame holds, kept from the first time that it was asked for.
    mutable QByteArray Unpacked = QByteArray();
};

/// An ID3v2 tag as a row of frames with raw bytes, so that what nobody changes is written back byte for byte. Versions
/// 2.3 and 2.4 keep their version; a 2.2 tag becomes 2.3 when it is read.
class ID3v2Tag
{
public:
    bool Present = false;
    /// 3 or 4.
    int Version = 3;
    std::vector<TagFrame> Frames;
    /// Why the tag cannot be followed to its end, to be read behind the file's name; empty for a good tag. The frames
    /// before the fault are there all the same.
    QString Fault;

    /// A tag from its bytes: header, frames, padding, and the footer if it has one.
    static ID3v2Tag FromBytes(const QByteArray &bytes);
    /// The fault alone, without a copy of the frames.
    static QString FaultOf(const QByteArray &bytes);

    /// Bytes that the tag needs without padding.
    qint64 Size() const;
    /// The tag, with zeros behind its frames to make up a size of at least Size.
    QByteArray Bytes(qint64 size) const;

    /// What a frame holds once group, compression and unsynchronisation are taken off; nothing for an encrypted or
    /// damaged frame. In the order of the tag, packed frames are unpacked as long as they come to no more than 16 MB
    /// (256 KB packed).
    std::optional<QByteArray> Content(const TagFrame &frame) const;
    /// Gives a frame new content and leaves of its flags those that tell what to do when tag or file change.
    void SetContent(TagFrame &frame, const QByteArray &content) const;
    void Append(const QByteArray &id, const QByteArray &content);
    using FrameTest = std::function<bool(const TagFrame &)>;
    /// Takes frames out; those of the tag that was read can be put back.
    void Drop(const FrameTest &which);
    /// Puts a frame behind the last one of its kind, or where the first one was: a dropped one that is the same, as it
    /// was, else a new one.
    void PutBehind(const FrameTest &isKind, const FrameTest &isSame, const QByteArray &id,
                   const std::function<QByteArray()> &content);

private:
    friend class ID3v2Parser;

    bool WholeUnsynchronised() const { return unsynchronised && Version == 3; }
    void LimitPacked();
    void AppendBody(QByteArray &bytes) const;
    QByteArray UnsynchronisedBody() const;

    quint8 revision = 0;
    /// Every 2.4 frame is unsynchronised, or the whole 2.3 tag.
    bool unsynchronised = false;
    bool experimental = false;
    /// Without its checksum, which would not be true any more; empty for none.
    QByteArray extendedHeader;
};
