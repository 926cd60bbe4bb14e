#include "media/StreamReader.h"

#include "media/FileWindow.h"
#include "media/RateHeader.h"
#include "media/TagEdges.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

namespace
{
using Bytes = std::span<const unsigned char>;

// Enough of a file's front to see a tag, and of the audio's front for two frames of any usual rate and what follows:
// in a long list every kilobyte that is not fetched counts.
constexpr std::size_t TagBytes = 256;
constexpr std::size_t FrontBytes = 2560;
// Forward reading, where much of the file is wanted.
constexpr std::size_t BlockBytes = 256 * 1024;
// Streams up to this size are walked: that costs no more than looking at places.
constexpr std::int64_t WalkedBytes = 64 * 1024;
constexpr int Places = 24;
// The longest frame of free format that is looked for: 640 kilobits at 16 kilohertz, layer II.
constexpr std::size_t LongestFree = 5764;
constexpr std::size_t ShortestFree = 24;
// More syncs in a free format frame than this are no frame.
constexpr int FreeTries = 4;
constexpr std::int64_t ID3v1Bytes = 128;

struct Frame {
    std::int64_t Position = 0;
    int Size = 0;
    FrameHeader Header;
    FramePattern Pattern;
};

struct Count {
    std::int64_t Frames = 0;
    std::int64_t Bytes = 0;
    bool Variable = false;
};

class StreamReader
{
public:
    explicit StreamReader(const InputFile &input) : file(input), window(input, 0) {}
    StreamState Read();
    StreamFacts Facts;

private:
    std::int64_t End();
    bool FindFrame(std::int64_t from, const FramePattern *stream, Frame &frame);
    std::int64_t FindSync(std::int64_t from);
    bool Confirm(std::int64_t position, const FramePattern *stream, Frame &frame);
    bool IsFollowed(const Frame &frame);
    int MeasureFree(std::int64_t position, const FrameHeader &kind);
    bool IsThirdFree(std::int64_t position, Bytes bytes, std::size_t place, const FrameHeader &kind);
    bool EndsAt(std::int64_t position);

    bool BelieveHeader();
    bool HeaderFits(std::int64_t surplus, double bytesPerSecond);
    bool IsPlausible() const;
    bool IsVariable();

    void Measure();
    bool IsConstant(std::int64_t audioEnd, std::int64_t &frames);
    bool HasSteadyRate(std::int64_t audioEnd, std::int64_t padding, std::int64_t &frames);
    bool HasFrameAt(std::int64_t number, std::int64_t padding, std::int64_t &position);
    std::int64_t CountLast(std::int64_t position, std::int64_t audioEnd);
    void Walk();
    std::int64_t CountRow(std::int64_t position, Count &count);

    void SetLength(std::int64_t frames, std::int64_t silentSamples);
    int AverageKilobits(std::int64_t bytes, std::int64_t frames) const;
    int SteadyKilobits() const;

    const InputFile &file;
    FileWindow window;
    std::optional<std::int64_t> end;
    // The first frame of all, which may carry a header, and the first one with sound.
    Frame front;
    Frame first;
    std::optional<RateHeader> header;
};

// Only asked for where the front does not settle the matter, since it costs a read.
std::int64_t StreamReader::End()
{
    if (!end)
        end = FindAudioEnd(file, front.Position);
    return *end;
}

// Whether the audio ends there, or breaks off within the next header.
bool StreamReader::EndsAt(std::int64_t position)
{
    const std::int64_t left = End() - position;
    if (left <= 0 || left >= static_cast<std::int64_t>(FrameHeaderBytes))
        return left == 0;
    const Bytes bytes = window.At(position, static_cast<std::size_t>(left));
    return !bytes.empty() && bytes[0] == 0xFF && (left == 1 || (bytes.size() > 1 && (bytes[1] & 0xE0) == 0xE0));
}

// The next place with the bits of a sync; -1 at the file's end.
std::int64_t StreamReader::FindSync(std::int64_t from)
{
    for (;;) {
        const Bytes bytes = window.At(from, FrameHeaderBytes);
        if (bytes.size() < FrameHeaderBytes)
            return -1;
        const unsigned char *place = bytes.data();
        const unsigned char *const last = place + bytes.size() - FrameHeaderBytes;
        while (place <= last) {
            const auto left = static_cast<std::size_t>(last - place) + 1;
            place = static_cast<const unsigned char *>(std::memchr(place, 0xFF, left));
            if (place == nullptr)
                break;
            if ((place[1] & 0xE0) == 0xE0)
                return from + (place - bytes.data());
            ++place;
        }
        from += last - bytes.data() + 1;
        window.SetAhead(BlockBytes);
    }
}

// The first real frame from a place on; of a given stream when there is one.
bool StreamReader::FindFrame(std::int64_t from, const FramePattern *stream, Frame &frame)
{
    for (std::int64_t position = FindSync(from); position >= 0; position = FindSync(position + 1)) {
        if (Confirm(position, stream, frame))
            return true;
    }
    return false;
}

bool StreamReader::Confirm(std::int64_t position, const FramePattern *stream, Frame &frame)
{
    const Bytes bytes = window.At(position, FrameHeaderBytes);
    if (bytes.size() < FrameHeaderBytes || (stream != nullptr && stream->SizeOf(bytes.data()) == 0) ||
        !ParseFrameHeader(bytes.data(), frame.Header))
        return false;
    frame.Position = position;
    if (stream != nullptr) {
        frame.Pattern = *stream;
        frame.Size = stream->SizeOf(bytes.data());
        return IsFollowed(frame);
    }
    if (frame.Header.BitRate != 0) {
        frame.Size = frame.Header.Size();
        if (!IsFollowed(frame))
            return false;
        frame.Pattern = FramePattern(window.At(position, FrameHeaderBytes).data(), 0);
        return true;
    }
    const int unpadded = MeasureFree(position, frame.Header);
    if (unpadded == 0)
        return false;
    frame.Size = unpadded + (frame.Header.Padded ? frame.Header.Slot : 0);
    frame.Pattern = FramePattern(window.At(position, FrameHeaderBytes).data(), unpadded);
    return true;
}

bool StreamReader::IsFollowed(const Frame &frame)
{
    const auto size = static_cast<std::size_t>(frame.Size);
    const Bytes bytes = window.At(frame.Position, size + FrameHeaderBytes);
    FrameHeader next;
    if (bytes.size() >= size + FrameHeaderBytes && ParseFrameHeader(bytes.data() + size, next) &&
        SameStream(frame.Header, next))
        return true;
    return EndsAt(frame.Position + frame.Size);
}

// The length of an unpadded frame, told by the two frames that follow; 0 when there are none.
int StreamReader::MeasureFree(std::int64_t position, const FrameHeader &kind)
{
    constexpr std::size_t Reach = 2 * LongestFree + 16;
    Bytes bytes = window.At(position, Reach);
    bytes = bytes.first(std::min(bytes.size(), Reach));
    const std::size_t limit = std::min(LongestFree, bytes.size() - FrameHeaderBytes);
    int tries = 0;
    for (std::size_t size = ShortestFree; size <= limit; ++size) {
        const void *place = std::memchr(bytes.data() + size, 0xFF, limit - size + 1);
        if (place == nullptr)
            return 0;
        size = static_cast<std::size_t>(static_cast<const unsigned char *>(place) - bytes.data());
        FrameHeader second;
        if (!ParseFrameHeader(bytes.data() + size, second) || !SameStream(kind, second))
            continue;
        const int unpadded = static_cast<int>(size) - (kind.Padded ? kind.Slot : 0);
        const auto third = size + static_cast<std::size_t>(unpadded + (second.Padded ? second.Slot : 0));
        if (IsThirdFree(position, bytes, third, kind))
            return unpadded;
        if (++tries == FreeTries)
            return 0;
    }
    return 0;
}

bool StreamReader::IsThirdFree(std::int64_t position, Bytes bytes, std::size_t place, const FrameHeader &kind)
{
    FrameHeader third;
    if (place + FrameHeaderBytes <= bytes.size())
        return ParseFrameHeader(bytes.data() + place, third) && SameStream(kind, third);
    return EndsAt(position + static_cast<std::int64_t>(place));
}

StreamState StreamReader::Read()
{
    window.At(0, TagBytes);
    window.SetAhead(FrontBytes);
    const std::int64_t begin = SkipLeadingTags(window, file.Size());
    if (!FindFrame(begin, nullptr, front))
        return window.Failed() ? StreamState::Unreadable : StreamState::NoAudio;
    first = front;
    const auto size = static_cast<std::size_t>(front.Size);
    const Bytes bytes = window.At(front.Position, size);
    RateHeader found;
    if (front.Header.Layer == 3 && bytes.size() >= size && ReadRateHeader(bytes.first(size), found)) {
        header = found;
        // A header with nothing behind it still tells the stream's kind.
        if (!FindFrame(front.Position + front.Size, &front.Pattern, first))
            first = front;
    }
    Facts.First = first.Header;
    if (!BelieveHeader())
        Measure();
    return window.Failed() ? StreamState::Unreadable : StreamState::Known;
}

// Length and rate from the header, when the audio that is there bears it out.
bool StreamReader::BelieveHeader()
{
    if (!header || header->Frames <= 0 || header->Bytes <= 0 || !IsPlausible())
        return false;
    const double seconds = static_cast<double>(header->Frames * first.Header.Samples) / first.Header.SampleRate;
    const double bytesPerSecond = static_cast<double>(header->Bytes) / seconds;
    const std::int64_t surplus = file.Size() - front.Position - header->Bytes;
    if (!HeaderFits(surplus, bytesPerSecond) && !HeaderFits(surplus - ID3v1Bytes, bytesPerSecond)) {
        const std::int64_t rest = End() - front.Position - header->Bytes;
        if (!HeaderFits(rest, bytesPerSecond)) {
            const std::int64_t allowed = std::max<std::int64_t>(2000, header->Bytes / 50);
            Frame behind;
            // More bytes are well when they hold no frames; fewer mean a cut stream.
            if (rest < 0 || rest > allowed || FindFrame(front.Position + header->Bytes, &first.Pattern, behind))
                return false;
        }
    }
    SetLength(header->Frames, header->Delay + header->Padding);
    Facts.Variable = IsVariable();
    Facts.Kilobits = Facts.Variable ? AverageKilobits(header->Bytes - front.Size, header->Frames) : SteadyKilobits();
    return true;
}

// Whether the bytes beyond what the header counts (or missing from it) are less than can be heard. Some encoders do
// not count the header's own frame.
bool StreamReader::HeaderFits(std::int64_t surplus, double bytesPerSecond)
{
    constexpr double Unheard = 0.05;
    const double allowed = Unheard * bytesPerSecond;
    return static_cast<double>(surplus) >= -allowed && static_cast<double>(surplus) <= allowed + front.Size;
}

// Whether frames and bytes can belong to one stream of this kind.
bool StreamReader::IsPlausible() const
{
    const std::int64_t samples = header->Frames * first.Header.Samples;
    const std::int64_t mean = header->Bytes / header->Frames;
    if (header->Delay + header->Padding >= samples || mean < static_cast<std::int64_t>(ShortestFree) / 2 ||
        mean > static_cast<std::int64_t>(LongestFree))
        return false;
    if (!header->Constant || first.Header.BitRate == 0)
        return true;
    const std::int64_t unpadded = header->Frames * first.Header.UnpaddedSize();
    const std::int64_t spare = 2 * front.Size + 2 * first.Size;
    return header->Bytes >= unpadded - spare && header->Bytes <= unpadded + header->Frames + spare;
}

// For a believed header. An average that no frame in sight has says it without another read.
bool StreamReader::IsVariable()
{
    if (header->Constant || first.Header.BitRate == 0)
        return false;
    constexpr double Near = 0.02;
    const double rate = first.Header.BitRate;
    const double seconds = static_cast<double>(header->Frames * first.Header.Samples) / first.Header.SampleRate;
    const double most = 8.0 * static_cast<double>(header->Bytes) / seconds;
    const double least = 8.0 * static_cast<double>(header->Bytes - front.Size) / seconds;
    if (rate > most * (1 + Near) || rate < least * (1 - Near))
        return true;
    std::int64_t frames = 0;
    return !IsConstant(std::min(front.Position + header->Bytes, file.Size()), frames);
}

// Length and rate without a header to believe.
void StreamReader::Measure()
{
    std::int64_t frames = 0;
    if (first.Header.BitRate == 0 || End() - first.Position <= WalkedBytes || !IsConstant(End(), frames)) {
        Walk();
        return;
    }
    SetLength(frames, 0);
    Facts.Kilobits = SteadyKilobits();
}

// Looks at places spread over the stream: whether at each one a frame of the first one's rate stands where it must.
// The number of frames then follows from the bytes.
bool StreamReader::IsConstant(std::int64_t audioEnd, std::int64_t &frames)
{
    const std::int64_t padding = first.Header.SlotsTimesRate() % first.Header.SampleRate;
    // Some encoders never pad.
    return HasSteadyRate(audioEnd, padding, frames) || (padding != 0 && HasSteadyRate(audioEnd, 0, frames));
}

// padding: padded frames in as many frames as the sample rate has hertz.
bool StreamReader::HasSteadyRate(std::int64_t audioEnd, std::int64_t padding, std::int64_t &frames)
{
    const FrameHeader &kind = first.Header;
    const double mean = kind.UnpaddedSize() + static_cast<double>(kind.Slot * padding) / kind.SampleRate;
    const double room = static_cast<double>(audioEnd - first.Position) / mean;
    const std::int64_t last = std::max<std::int64_t>(static_cast<std::int64_t>(room) - 2, 0);
    std::int64_t position = first.Position;
    window.SetAhead(0);
    // The first ones are read already, and lie so near that two ways of padding cannot meet there by chance.
    for (const std::int64_t number : {1, 2, 32}) {
        if (number < last && !HasFrameAt(number, padding, position))
            return false;
    }
    for (int place = 1; place <= Places && last > 0; ++place) {
        if (!HasFrameAt(last * place / Places, padding, position))
            return false;
    }
    window.SetAhead(FrontBytes);
    const std::int64_t behind = CountLast(last == 0 ? first.Position : position, audioEnd);
    frames = last + behind;
    return behind > 0;
}

// Whether the frame of that number, from 0, begins where frames of one rate put it.
bool StreamReader::HasFrameAt(std::int64_t number, std::int64_t padding, std::int64_t &position)
{
    const FrameHeader &kind = first.Header;
    const std::int64_t padded = number * padding / kind.SampleRate;
    const std::int64_t around = padding == 0 ? 0 : 1;
    const std::int64_t base = first.Position + number * kind.UnpaddedSize();
    const std::int64_t lowest = std::max<std::int64_t>(padded - around, 0);
    const std::int64_t highest = padded + 2 * around;
    const std::size_t reach = static_cast<std::size_t>((highest - lowest) * kind.Slot) + FrameHeaderBytes;
    const Bytes bytes = window.At(base + lowest * kind.Slot, reach);
    for (std::int64_t pads = lowest; pads <= highest; ++pads) {
        const auto offset = static_cast<std::size_t>((pads - lowest) * kind.Slot);
        if (offset + FrameHeaderBytes > bytes.size())
            return false;
        position = base + pads * kind.Slot;
        if (first.Pattern.SizeOf(bytes.data() + offset) != 0 &&
            first.Pattern.BitRateOf(bytes.data() + offset) == kind.BitRate)
            return true;
    }
    return false;
}

// The whole frames from there to the end of the audio; 0 when something else than frames of one rate stands there.
std::int64_t StreamReader::CountLast(std::int64_t position, std::int64_t audioEnd)
{
    std::int64_t count = 0;
    while (audioEnd - position >= static_cast<std::int64_t>(FrameHeaderBytes)) {
        const Bytes bytes = window.At(position, FrameHeaderBytes);
        if (bytes.size() < FrameHeaderBytes || first.Pattern.BitRateOf(bytes.data()) != first.Header.BitRate)
            return 0;
        const int size = first.Pattern.SizeOf(bytes.data());
        if (size == 0)
            return 0;
        if (position + size > audioEnd)
            break;
        position += size;
        ++count;
    }
    return count;
}

// Every frame, from the first with sound on. Where the row of frames breaks, the next real one is looked for.
void StreamReader::Walk()
{
    window.SetAhead(BlockBytes);
    Count count;
    Frame next = first;
    // A header with nothing behind it is no sound.
    bool more = !header || first.Position != front.Position;
    while (more) {
        const std::int64_t position = CountRow(next.Position, count);
        more = FindFrame(position + 1, &first.Pattern, next) && next.Position < End();
    }
    SetLength(count.Frames, 0);
    Facts.Variable = count.Variable;
    Facts.Kilobits = count.Variable ? AverageKilobits(count.Bytes, count.Frames) : SteadyKilobits();
}

// Counts whole frames that follow each other; returns where the row ends.
std::int64_t StreamReader::CountRow(std::int64_t position, Count &count)
{
    const std::int64_t audioEnd = End();
    for (;;) {
        const Bytes bytes = window.At(position, FrameHeaderBytes);
        std::int64_t offset = 0;
        const auto last = static_cast<std::int64_t>(bytes.size()) - static_cast<std::int64_t>(FrameHeaderBytes);
        while (offset <= last) {
            const int size = first.Pattern.SizeOf(bytes.data() + offset);
            if (size == 0 || position + offset + size > audioEnd)
                return position + offset;
            count.Variable = count.Variable || first.Pattern.BitRateOf(bytes.data() + offset) != first.Header.BitRate;
            count.Bytes += size;
            ++count.Frames;
            offset += size;
        }
        if (offset == 0)
            return position;
        position += offset;
    }
}

void StreamReader::SetLength(std::int64_t frames, std::int64_t silentSamples)
{
    Facts.Seconds = static_cast<double>(frames * first.Header.Samples - silentSamples) /
                    static_cast<double>(first.Header.SampleRate);
}

int StreamReader::SteadyKilobits() const
{
    const int unpadded = first.Size - (first.Header.Padded ? first.Header.Slot : 0);
    return first.Header.BitRate == 0 ? AverageKilobits(unpadded, 1) : first.Header.BitRate / 1000;
}

int StreamReader::AverageKilobits(std::int64_t bytes, std::int64_t frames) const
{
    const double seconds = static_cast<double>(frames * first.Header.Samples) / first.Header.SampleRate;
    return static_cast<int>(std::lround(8.0 * static_cast<double>(bytes) / seconds / 1000));
}
} // namespace

StreamState ReadStream(const InputFile &file, StreamFacts &facts)
{
    StreamReader reader(file);
    const StreamState state = reader.Read();
    if (state == StreamState::Known)
        facts = reader.Facts;
    return state;
}
