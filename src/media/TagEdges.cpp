#include "media/TagEdges.h"

#include "media/ID3v2Bytes.h"
#include "media/StreamBytes.h"

#include <algorithm>
#include <string_view>

namespace
{
constexpr std::int64_t APEBytes = 32;
constexpr std::int64_t ID3v1Bytes = 128;
constexpr std::int64_t EnhancedBytes = 227;
constexpr std::int64_t LyricsEndBytes = 9;
constexpr std::int64_t LyricsSizeBytes = 6;
// The first version of Lyrics3 states no size; its text is shorter than this.
constexpr std::int64_t LyricsLongest = 5100 + 11;
// Enough for the marks of the tags that usually stand there.
constexpr std::size_t TailBytes = 512;

std::int64_t LittleEndian(const unsigned char *bytes)
{
    return std::int64_t{bytes[3]} << 24 | std::int64_t{bytes[2]} << 16 | std::int64_t{bytes[1]} << 8 | bytes[0];
}

// Bytes of a whole tag from either of its ends; 0 when there is none.
std::int64_t ID3v2Span(Bytes bytes, QByteArrayView mark)
{
    return ID3v2Size(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())), mark).value_or(0);
}

// The size in either end counts the items and the footer; the flag says whether there is a header as well.
std::int64_t APESize(Bytes bytes)
{
    constexpr std::int64_t HasHeader = std::int64_t{1} << 31;
    if (bytes.size() < APEBytes || !Starts(bytes, "APETAGEX"))
        return 0;
    const std::int64_t version = LittleEndian(bytes.data() + 8);
    const std::int64_t size = LittleEndian(bytes.data() + 12);
    if ((version != 1000 && version != 2000) || size < APEBytes)
        return 0;
    const bool header = version == 2000 && (LittleEndian(bytes.data() + 20) & HasHeader) != 0;
    return size + (header ? APEBytes : 0);
}

// The tags at a file's end; each function gives the bytes of its tag when one ends at "end", else 0.
class Tail
{
public:
    Tail(const InputFile &file, std::int64_t lowest) : window(file, TailBytes), start(lowest), end(file.Size())
    {
        // One read for the usual marks.
        window.At(std::max<std::int64_t>(start, end - static_cast<std::int64_t>(TailBytes)), 1);
    }

    std::int64_t Strip()
    {
        for (;;) {
            const std::int64_t size = TagBytes();
            if (size == 0 || size > end - start)
                return end;
            end -= size;
        }
    }

private:
    Bytes Last(std::int64_t count)
    {
        if (count > end - start)
            return {};
        const Bytes bytes = window.At(end - count, static_cast<std::size_t>(count));
        return bytes.size() < static_cast<std::size_t>(count) ? Bytes() : bytes.first(static_cast<std::size_t>(count));
    }

    std::int64_t TagBytes()
    {
        if (Starts(Last(ID3v1Bytes), "TAG"))
            return ID3v1Bytes;
        if (Starts(Last(EnhancedBytes), "TAG+"))
            return EnhancedBytes;
        if (const std::int64_t size = APESize(Last(APEBytes)); size > 0)
            return size;
        if (const std::int64_t size = ID3v2Span(Last(ID3v2HeaderBytes), "3DI"); size > 0)
            return size;
        return LyricsSize();
    }

    std::int64_t LyricsSize()
    {
        const Bytes mark = Last(LyricsEndBytes);
        if (Starts(mark, "LYRICSEND"))
            return OldLyricsSize();
        if (!Starts(mark, "LYRICS200"))
            return 0;
        const Bytes digits = Last(LyricsEndBytes + LyricsSizeBytes);
        if (digits.empty())
            return 0;
        std::int64_t size = 0;
        for (const unsigned char digit : digits.first(LyricsSizeBytes)) {
            if (digit < '0' || digit > '9')
                return 0;
            size = size * 10 + (digit - '0');
        }
        size += LyricsEndBytes + LyricsSizeBytes;
        if (size > end - start)
            return 0;
        return Starts(window.At(end - size, 11), "LYRICSBEGIN") ? size : 0;
    }

    std::int64_t OldLyricsSize()
    {
        const std::int64_t reach = std::min(LyricsLongest + LyricsEndBytes, end - start);
        const Bytes text = Last(reach);
        constexpr std::string_view Begin = "LYRICSBEGIN";
        const auto found = std::find_end(text.begin(), text.end(), Begin.begin(), Begin.end());
        return text.end() - found;
    }

    FileWindow window;
    std::int64_t start;
    std::int64_t end;
};
} // namespace

std::int64_t SkipLeadingTags(FileWindow &window, std::int64_t fileSize)
{
    std::int64_t position = 0;
    for (;;) {
        Bytes front = window.At(position, APEBytes);
        std::int64_t size = ID3v2Span(front, "ID3");
        if (size == 0)
            size = APESize(front);
        if (size == 0 || size > fileSize - position)
            return position;
        position += size;
    }
}

std::int64_t FindAudioEnd(const InputFile &file, std::int64_t start)
{
    return Tail(file, start).Strip();
}
