#include "media/FullData.h"

#include "media/FileWindow.h"
#include "media/TagLibText.h"
#include "media/VorbisTag.h"
#include "text/PathText.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <memory>

#include <taglib/asffile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/tag.h>
#include <taglib/tiostream.h>
#include <taglib/tpropertymap.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>

using namespace Qt::StringLiterals;

namespace
{
bool fullData = false;

/// A file of ours as TagLib reads it. TagLib asks for a few bytes at a time, so they come from a window.
class InputStream final : public TagLib::IOStream
{
public:
    explicit InputStream(const QString &path) : window(file, 4096)
    {
        constexpr auto most = static_cast<std::int64_t>(std::numeric_limits<long>::max());
        open = file.Open(path) && file.Size() <= most;
    }

    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override
    {
        const long rest = std::max(this->length() - position, 0L);
        const auto count = std::min(length, static_cast<unsigned long>(rest));
        const auto bytes = window.At(position, count);
        const auto got = std::min<std::size_t>(count, bytes.size());
        position += static_cast<long>(got);
        return {reinterpret_cast<const char *>(bytes.data()), static_cast<unsigned int>(got)};
    }
    void seek(long offset, Position from) override
    {
        const long start = from == Beginning ? 0 : from == Current ? position : length();
        position = std::max(start + offset, 0L);
    }
    long tell() const override { return position; }
    long length() override { return static_cast<long>(file.Size()); }
    bool isOpen() const override { return open; }

    bool readOnly() const override { return true; }
    void writeBlock(const TagLib::ByteVector &) override {}
    void insert(const TagLib::ByteVector &, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    void truncate(long) override {}

private:
    InputFile file;
    FileWindow window;
    long position = 0;
    bool open = false;
};

template <typename Reader>
std::unique_ptr<TagLib::File> Read(InputStream &stream, bool withStream)
{
    stream.seek(0, TagLib::IOStream::Beginning);
    return std::make_unique<Reader>(&stream, withStream);
}

template <typename Reader, typename... Others>
std::unique_ptr<TagLib::File> ReadBy(InputStream &stream, bool withStream)
{
    if (Reader::isSupported(&stream))
        return Read<Reader>(stream, withStream);
    if constexpr (sizeof...(Others) > 0)
        return ReadBy<Others...>(stream, withStream);
    return nullptr;
}

/// What TagLib makes of a file; null when it is none of the kinds that the program knows. Others are not tried: some of
/// TagLib's readers follow a damaged file without end.
std::unique_ptr<TagLib::File> OpenFile(const QString &path, InputStream &stream, bool withStream)
{
    using namespace TagLib;
    if (auto file =
            ReadBy<Ogg::Vorbis::File, RIFF::WAV::File, ASF::File, Ogg::Opus::File, Ogg::FLAC::File, Ogg::Speex::File>(
                stream, withStream))
        return file;
    // A tag may stand in front of it.
    return GetExtension(GetFileName(path)).toLower() == ".ogg"_L1 ? Read<Ogg::Vorbis::File>(stream, withStream)
                                                                  : nullptr;
}

/// Runs a routine with what TagLib makes of a file; false when it makes nothing of it.
template <typename Take>
bool WithFile(const QString &path, bool withStream, Take take)
{
    InputStream stream(path);
    if (!stream.isOpen())
        return false;
    try {
        const auto file = OpenFile(path, stream, withStream);
        return file != nullptr && file->isValid() && take(*file);
    } catch (const std::exception &) {
        return false;
    }
}

QString Text(const TagLib::PropertyMap &comments, const char *key)
{
    const auto values = comments.find(key);
    return values == comments.end() ? QString() : FromTagLib(values->second.toString(" / "));
}
} // namespace

bool FullData()
{
    return fullData;
}

void SetFullData(bool on)
{
    fullData = on;
}

bool ReadAudioData(const QString &path, AudioData &data)
{
    return WithFile(path, true, [&data](const TagLib::File &file) {
        const TagLib::AudioProperties *stream = file.audioProperties();
        if (stream == nullptr || stream->sampleRate() <= 0)
            return false;
        data = {stream->lengthInMilliseconds(), stream->bitrate(), stream->sampleRate(), stream->channels()};
        return true;
    });
}

bool ReadComments(const QString &path, VorbisTag &tag)
{
    return WithFile(path, false, [&tag](const TagLib::File &file) {
        const TagLib::PropertyMap comments = file.properties();
        tag.Title = Text(comments, "TITLE");
        tag.Artist = Text(comments, "ARTIST");
        tag.Album = Text(comments, "ALBUM");
        tag.Genre = Text(comments, "GENRE");
        tag.Date = Text(comments, "DATE");
        tag.Comment = Text(comments, "COMMENT");
        tag.EncodedUsing = Text(comments, "ENCODING");
        tag.TrackNumber = static_cast<qint16>(std::min(file.tag()->track(), 32767U));
        return !comments.isEmpty();
    });
}
