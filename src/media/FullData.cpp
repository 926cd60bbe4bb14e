#include "media/FullData.h"

#include "media/FileWindow.h"
#include "media/TagLibText.h"
#include "media/VorbisTag.h"
#include "text/PathText.h"

#include <algorithm>
#include <limits>
#include <memory>

#include <taglib/fileref.h>
#include <taglib/tag.h>
#include <taglib/tiostream.h>
#include <taglib/tpropertymap.h>

using namespace Qt::StringLiterals;

namespace
{
bool fullData = false;

/// A file of ours as TagLib reads it. TagLib asks for a few bytes at a time, so they come from a window.
class InputStream final : public TagLib::IOStream
{
public:
    explicit InputStream(const QString &path)
        : extension(GetExtension(GetFileName(path)).toLatin1()), window(file, 4096)
    {
        constexpr auto most = static_cast<std::int64_t>(std::numeric_limits<long>::max());
        open = file.Open(path) && file.Size() <= most;
    }

    // TagLib chooses its reader by the extension alone.
    TagLib::FileName name() const override { return extension.constData(); }
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
    QByteArray extension;
    InputFile file;
    FileWindow window;
    long position = 0;
    bool open = false;
};

/// Runs a routine with what TagLib makes of a file; false when it makes nothing of it.
template <typename Take>
bool WithFile(const QString &path, bool withStream, Take take)
{
    InputStream stream(path);
    if (!stream.isOpen())
        return false;
    const TagLib::FileRef file(&stream, withStream);
    return !file.isNull() && file.file()->isValid() && take(file);
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
    return WithFile(path, true, [&data](const TagLib::FileRef &file) {
        const TagLib::AudioProperties *stream = file.audioProperties();
        if (stream == nullptr || stream->sampleRate() <= 0)
            return false;
        data = {stream->lengthInMilliseconds(), stream->bitrate(), stream->sampleRate(), stream->channels()};
        return true;
    });
}

bool ReadComments(const QString &path, VorbisTag &tag)
{
    return WithFile(path, false, [&tag](const TagLib::FileRef &file) {
        const TagLib::PropertyMap comments = file.file()->properties();
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
