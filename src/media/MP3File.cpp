#include "media/MP3File.h"

#include "media/Genres.h"
#include "media/TagFrames.h"
#include "media/TaggedFile.h"
#include "platform/Drives.h"
#include "platform/Files.h"

using namespace Qt::StringLiterals;

QString MP3File::GetFrame(QByteArrayView id) const
{
    return TagText(v2, id.toByteArray());
}

bool MP3File::IsDescribed(QByteArrayView id) const
{
    return IsTextDescribed(v2, id.toByteArray());
}

void MP3File::SetFrame(QByteArrayView id, const QString &text)
{
    SetTagText(v2, id.toByteArray(), text);
}

void MP3File::SetShownFrame(QByteArrayView id, const QString &text)
{
    SetShownText(v2, id.toByteArray(), text);
}

void MP3File::WriteID3v2(const QString &path)
{
    TaggedFile file(path);
    file.PutID3v2(v2);
    file.Write();
}

void MP3File::WriteID3v1(const QString &path)
{
    TaggedFile file(path);
    file.PutID3v1(v1);
    file.Write();
}

void MP3File::ReadID3v1(const QString &path, bool withMPEG)
{
    v1 = ID3v1Tag();
    const TaggedFile file(path);
    v1 = file.ReadID3v1();
    ReadStreamOf(file, withMPEG);
}

void MP3File::RemoveID3v1(const QString &path)
{
    TaggedFile file(path);
    file.DropID3v1();
    file.Write();
}

void MP3File::RemoveID3v2(const QString &path)
{
    TaggedFile file(path);
    file.DropID3v2();
    file.Write();
}

void MP3File::ResetFile(const QString &)
{
    v1 = ID3v1Tag();
    v2 = ID3v2Tag();
    stream = StreamFacts();
    fileSize = 0;
}

void MP3File::ReadID3v2(const QString &path, bool withMPEG)
{
    v2 = ID3v2Tag();
    const TaggedFile file(path);
    v2 = file.ReadID3v2();
    ReadStreamOf(file, withMPEG);
}

void MP3File::ReadTags(const QString &path, bool withMPEG)
{
    v1 = ID3v1Tag();
    v2 = ID3v2Tag();
    const TaggedFile file(path);
    v2 = file.ReadID3v2();
    v1 = file.ReadID3v1();
    ReadStreamOf(file, withMPEG);
}

void MP3File::ReadTexts(const QString &path, std::span<const QByteArrayView> ids, bool withMPEG)
{
    v1 = ID3v1Tag();
    v2 = ID3v2Tag();
    const TaggedFile file(path);
    v2 = file.ReadTexts(ids);
    v1 = file.ReadID3v1();
    ReadStreamOf(file, withMPEG);
}

void MP3File::ReadStreamOf(const TaggedFile &file, bool wanted)
{
    stream = StreamFacts();
    fileSize = file.Input().Size();
    if (wanted)
        ReadStream(file.Input(), stream);
}

void MP3File::WriteTags(const QString &path, TagChange id3v1, TagChange id3v2, const std::optional<DiskFacts> &asRead)
{
    TaggedFile file(path);
    if (asRead && !file.Input().Facts().HasSameContent(*asRead))
        throw MediaError(ShownPath(path) % u" was changed meanwhile."_s);
    if (id3v1 == TagChange::Write)
        file.PutID3v1(v1);
    else
        file.DropID3v1();
    try {
        if (id3v2 == TagChange::Write)
            file.PutID3v2(v2);
        else
            file.DropID3v2();
    } catch (const MediaError &) {
        file.Write();
        throw;
    }
    file.Write();
}

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
    return stream.Variable ? QString(number % u" VBR") : number;
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

QString MP3File::GenreList()
{
    return GenreNames().join(u'|');
}

QString MP3File::Tempo() const
{
    return NamedValue(v2, TempoDescription);
}

void MP3File::SetTempo(const QString &text)
{
    SetNamedValue(v2, TempoDescription, text);
}

QString MP3File::Mood() const
{
    return NamedValue(v2, MoodDescription);
}

void MP3File::SetMood(const QString &text)
{
    SetNamedValue(v2, MoodDescription, text);
}

QString MP3File::Situation() const
{
    return NamedValue(v2, SituationDescription);
}

void MP3File::SetSituation(const QString &text)
{
    SetNamedValue(v2, SituationDescription, text);
}

QString MP3File::Preference() const
{
    return NamedValue(v2, PreferenceDescription);
}

void MP3File::SetPreference(const QString &text)
{
    SetNamedValue(v2, PreferenceDescription, text);
}
