#pragma once

#include "media/ID3v2Tag.h"

/// Reads the bytes of one ID3v2 tag, of version 2.2 to 2.4, into frames.
class ID3v2Parser
{
public:
    /// The bytes must outlive the parser.
    explicit ID3v2Parser(const QByteArray &bytes, bool keepFrames = true) : source(bytes), keepsFrames(keepFrames) {}

    ID3v2Tag Parse();

private:
    bool ReadHeader();
    bool ReadExtendedHeader();
    bool ReadExtendedHeader3();
    bool ReadExtendedHeader4();
    void ReadFrames();
    /// False where the frames end.
    bool ReadFrame();
    bool IsId(qsizetype position) const;
    bool CanFollow(qsizetype position) const;
    bool IsPadding(qsizetype position) const;
    qsizetype FrameSize() const;
    void AddFrame(const QByteArray &id, quint16 flags, const QByteArray &data);
    bool Fail(const QString &fault);

    const QByteArray &source;
    bool keepsFrames;
    ID3v2Tag tag;
    /// Version as in the header, 2 to 4.
    int version = 0;
    /// Everything between header and footer, in the source where no unsynchronisation is taken off.
    QByteArray body;
    qsizetype position = 0;
    int frameCount = 0;
};
