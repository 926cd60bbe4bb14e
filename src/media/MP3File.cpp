#include "media/MP3File.h"

#include "platform/Drives.h"
#include "platform/Files.h"

using namespace Qt::StringLiterals;

void MP3File::ReadMPEG(const QString &path)
{
    stream = StreamFacts();
    fileSize = 0;
    InputFile file;
    if (!file.Open(path))
        throw MediaError(ShownPath(path) % u" cannot be opened."_s);
    fileSize = file.Size();
    const StreamState state = ReadStream(file, stream);
    if (state == StreamState::Unreadable)
        throw MediaError(ShownPath(path) % u" cannot be read."_s);
    if (state == StreamState::NoAudio)
        throw MediaError(ShownPath(path) % u" holds no MPEG audio."_s);
}

double MP3File::SongLength() const
{
    return stream.Seconds;
}

QString MP3File::Layer() const
{
    switch (stream.First.Layer) {
    case 1:
        return u"I"_s;
    case 2:
        return u"II"_s;
    case 3:
        return u"III"_s;
    default:
        return QString();
    }
}

QString MP3File::MPEGVersion() const
{
    if (stream.First.Layer == 0)
        return QString();
    switch (stream.First.Version) {
    case MPEGVersion::V1:
        return u"1.0"_s;
    case MPEGVersion::V2:
        return u"2.0"_s;
    default:
        return u"2.5"_s;
    }
}

QString MP3File::Bitrate() const
{
    if (stream.First.Layer == 0)
        return QString();
    const QString number = QString::number(stream.Kilobits);
    return stream.Variable ? QString(number % u" VBR"_s) : number;
}

double MP3File::SampleRate() const
{
    return stream.First.SampleRate;
}

bool MP3File::CRCProtection() const
{
    return stream.First.CRC;
}

bool MP3File::Copyrighted() const
{
    return stream.First.Copyrighted;
}

bool MP3File::Original() const
{
    return stream.First.Original;
}

QString MP3File::Emphasis() const
{
    if (stream.First.Layer == 0)
        return QString();
    switch (stream.First.Emphasis) {
    case 1:
        return u"50/15 microsec"_s;
    case 3:
        return u"CCIT J.17"_s;
    default:
        return u"None"_s;
    }
}

QString MP3File::Mode() const
{
    if (stream.First.Layer == 0)
        return QString();
    switch (stream.First.Mode) {
    case ChannelMode::Stereo:
        return u"Stereo"_s;
    case ChannelMode::JointStereo:
        return u"Joint Stereo"_s;
    case ChannelMode::DualChannel:
        return u"Dual Channel"_s;
    default:
        return u"Single Channel"_s;
    }
}

qint64 MP3File::FileSize() const
{
    return fileSize;
}
