#include "media/StreamReader.h"

#include "media/FileWindow.h"
#include "media/RateHeader.h"
#include "media/StreamBytes.h"
#include "media/TagEdges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <vector>

namespace
{
// Enough of a file's front to see a tag, and of the audio's front for two frames of any usual rate and what follows:
// in a long list every kilobyte that is not fetched counts.
constexpr std::size_t TagBytes = 256;
constexpr std::size_t FrontBytes = 2560;
// Forward reading, where much of the file is wanted.
constexpr std::size_t BlockBytes = 256 * 1024;
// Streams up to this size are walked: that costs no more than looking at places.
constexpr std::int64_t WalkedBytes = 64 * 1024;
constexpr int Places = 24;
// So many frames in a row are no chance.
constexpr int SettledRun = 8;
// The longest frame of free format that is looked for: 640 kilobits at 16 kilohertz, layer II.
constexpr std::size_t LongestFree = 5764;
constexpr std::size_t ShortestFree = 24;
constexpr int MostFreeKilobits = 640;
// More syncs in a free format frame than this are no frame.
constexpr int FreeTries = 4;
// More streams of free format than this are not followed through one file.
constexpr int FreeWalks = 4;
// Places that only look like a frame of free format are no longer measured behind so many; junk that is not made for it
// has one in a hundred kilobytes.
constexpr int FreeMisses = 4096;
constexpr std::int64_t ID3v1Bytes = 128;

struct Frame {
    std::int64_t Position = 0;
    int Size = 0;
    FrameHeader Header;
    FramePattern Pattern;
};

// Where frames of one kind begin, and the longest row of them.
struct Start {
    Frame First;
    int Run = 0;
};

struct Count {
    double Seconds = 0;
    std::int64_t Bytes = 0;
    bool Variable = false;
};

double SecondsOf(const FrameHeader &kind, std::int64_t samples)
{
    return static_cast<double>(samples) / kind.SampleRate;
}

int KilobitsOf(std::int64_t bytes, double seconds)
{
    return static_cast<int>(std::lround(8.0 * static_cast<double>(bytes) / seconds / 1000));
}

class StreamReader
{
public:
    explicit StreamReader(const InputFile &input) : file(input), window(input, 0) {}
    StreamState Read();
    StreamFacts Facts;

private:
    std::int64_t End();
    bool FindStream();
    bool FindFrame(std::int64_t from, Frame &frame);
    bool FindNext(std::int64_t from, Frame &frame);
    std::int64_t FindSync(std::int64_t from);
    bool IsFrame(std::int64_t position, Frame &frame);
    bool IsNext(std::int64_t position, const Frame &last, Frame &frame);
    bool IsOtherRate(std::int64_t position, const Frame &last, Frame &frame);
    bool IsFollowed(const Frame &frame);
    int RunFrom(const Frame &frame);
    int MeasureFree(std::int64_t position, const FrameHeader &kind);
    bool IsThirdFree(std::int64_t position, Bytes bytes, std::size_t place, const FrameHeader &kind);
    bool FillsAudio(const Frame &frame);
    bool EndsAt(std::int64_t position);

    bool TakeHeader(const Frame &frame);
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
    Count CountFrames(Frame frame);
    std::int64_t CountRow(const Frame &frame, int rate, Count &count);

    double LengthOf(std::int64_t frames) const { return SecondsOf(first.Header, frames * first.Header.Samples); }
    int SteadyKilobits() const;

    const InputFile &file;
    FileWindow window;
    // Behind the leading tags.
    std::int64_t begin = 0;
    std::optional<std::int64_t> end;
    int freeWalks = 0;
    int freeMisses = 0;
    // The first frame of all, which may carry a header, and the first one with sound.
    Frame front;
    Frame first;
    std::optional<RateHeader> header;
};

// Only asked for where the front does not settle the matter, since it costs a read.
std::int64_t StreamReader::End()
{
    if (!end)
        end = FindAudioEnd(file, begin);
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

// Sets the first frame of all. A short row of frames may be chance: it is the stream's beginning when a long one of its
// kind follows, and the stream itself when the file has no longer one.
bool StreamReader::FindStream()
{
    std::vector<Start> starts;
    Start start;
    for (std::int64_t from = begin; FindFrame(from, start.First); from = start.First.Position + 1) {
        const auto known = std::find_if(starts.begin(), starts.end(), [&start](const Start &other) {
            return SameStream(other.First.Header, start.First.Header);
        });
        const bool isNew = known == starts.end();
        front = isNew ? start.First : known->First;
        if (isNew && TakeHeader(front))
            return true;
        // As little as settles it at first; a search needs blocks.
        window.SetAhead(starts.empty() ? SettledRun * static_cast<std::size_t>(front.Pattern.Largest()) : BlockBytes);
        start.Run = RunFrom(start.First);
        if (start.Run == SettledRun)
            return true;
        if (isNew)
            starts.push_back(start);
        else
            known->Run = std::max(known->Run, start.Run);
    }
    const auto best = std::max_element(starts.begin(), starts.end(),
                                       [](const Start &one, const Start &other) { return one.Run < other.Run; });
    if (best == starts.end())
        return false;
    front = best->First;
    return true;
}

// The first place from there on where a frame is followed by another one of its kind.
bool StreamReader::FindFrame(std::int64_t from, Frame &frame)
{
    for (std::int64_t position = FindSync(from); position >= 0; position = FindSync(position + 1)) {
        if (IsFrame(position, frame))
            return true;
    }
    return false;
}

// The same where a stream breaks off, given a frame of it.
bool StreamReader::FindNext(std::int64_t from, Frame &frame)
{
    const Frame last = frame;
    for (std::int64_t position = FindSync(from); position >= 0; position = FindSync(position + 1)) {
        if (IsNext(position, last, frame))
            return true;
        // At another sample rate at once, or for some time behind something else.
        if (IsOtherRate(position, last, frame) && (position == from || RunFrom(frame) == SettledRun))
            return true;
    }
    return false;
}

bool StreamReader::IsFrame(std::int64_t position, Frame &frame)
{
    const Bytes bytes = window.At(position, FrameHeaderBytes);
    if (bytes.size() < FrameHeaderBytes || !ParseFrameHeader(bytes.data(), frame.Header))
        return false;
    // The window moves on.
    std::array<unsigned char, FrameHeaderBytes> kept{};
    std::copy_n(bytes.begin(), FrameHeaderBytes, kept.begin());
    frame.Position = position;
    int unpadded = 0;
    if (frame.Header.BitRate != 0) {
        frame.Size = frame.Header.Size();
        if (!IsFollowed(frame))
            return false;
    } else {
        unpadded = freeMisses < FreeMisses ? MeasureFree(position, frame.Header) : 0;
        if (unpadded == 0) {
            ++freeMisses;
            return false;
        }
        frame.Size = unpadded + (frame.Header.Padded ? frame.Header.Slot : 0);
    }
    frame.Pattern = FramePattern(kept.data(), unpadded);
    return frame.Header.BitRate != 0 || FillsAudio(frame);
}

// Whether a frame of the same kind as the last one stands there.
bool StreamReader::IsNext(std::int64_t position, const Frame &last, Frame &frame)
{
    const Bytes bytes = window.At(position, FrameHeaderBytes);
    if (bytes.size() < FrameHeaderBytes || last.Pattern.SizeOf(bytes.data()) == 0)
        return false;
    frame.Position = position;
    frame.Size = last.Pattern.SizeOf(bytes.data());
    frame.Pattern = last.Pattern;
    return ParseFrameHeader(bytes.data(), frame.Header) && IsFollowed(frame);
}

// Whether the stream can go on there at another sample rate. One of free format does not.
bool StreamReader::IsOtherRate(std::int64_t position, const Frame &last, Frame &frame)
{
    const Bytes bytes = window.At(position, FrameHeaderBytes);
    FrameHeader kind;
    return bytes.size() >= FrameHeaderBytes && ParseFrameHeader(bytes.data(), kind) && kind.BitRate != 0 &&
           last.Header.BitRate != 0 && kind.Layer == last.Header.Layer && IsFrame(position, frame);
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

// The frames of one kind in a row from there, as far as they matter. Two that reach the audio's end could go on.
int StreamReader::RunFrom(const Frame &frame)
{
    window.At(frame.Position, SettledRun * static_cast<std::size_t>(frame.Pattern.Largest()));
    std::int64_t position = frame.Position;
    for (int run = 0; run < SettledRun; ++run) {
        const Bytes bytes = window.At(position, FrameHeaderBytes);
        const int size = bytes.size() < FrameHeaderBytes ? 0 : frame.Pattern.SizeOf(bytes.data());
        if (size == 0)
            return run > 1 && (position >= End() || EndsAt(position)) ? SettledRun : run;
        position += size;
    }
    return SettledRun;
}

// The length of an unpadded frame, told by the two frames that follow; 0 when there are none.
int StreamReader::MeasureFree(std::int64_t position, const FrameHeader &kind)
{
    constexpr std::size_t Reach = 2 * LongestFree + 16;
    Bytes bytes = window.At(position, Reach);
    bytes = bytes.first(std::min(bytes.size(), Reach));
    // What cannot be read is not looked at.
    const auto needed = static_cast<std::size_t>(std::min<std::int64_t>(Reach, End() - position));
    if (bytes.size() < std::max(needed, ShortestFree + FrameHeaderBytes))
        return 0;
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
        if (unpadded % kind.Slot != 0 || KilobitsOf(unpadded, SecondsOf(kind, kind.Samples)) > MostFreeKilobits)
            continue;
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

// What repeats at one distance is found in pictures, in texts and in waves; free format is believed when its frames are
// most of the file, and in no file of another kind that says so.
bool StreamReader::FillsAudio(const Frame &frame)
{
    if (freeWalks == FreeWalks)
        return false;
    ++freeWalks;
    return 2 * CountFrames(frame).Bytes > End() - begin && !Starts(window.At(begin, 4), "RIFF");
}

StreamState StreamReader::Read()
{
    window.At(0, TagBytes);
    window.SetAhead(FrontBytes);
    begin = SkipLeadingTags(window, file.Size());
    if (!FindStream())
        return window.Failed() ? StreamState::Unreadable : StreamState::NoAudio;
    first = front;
    // A header with nothing behind it still tells the stream's kind.
    if (header && !FindNext(front.Position + front.Size, first))
        first = front;
    Facts.First = first.Header;
    if (!BelieveHeader())
        Measure();
    return window.Failed() ? StreamState::Unreadable : StreamState::Known;
}

// A frame that carries a header of the encoder's has no sound.
bool StreamReader::TakeHeader(const Frame &frame)
{
    const auto size = static_cast<std::size_t>(frame.Size);
    const Bytes bytes = window.At(frame.Position, size);
    RateHeader found;
    if (frame.Header.Layer != 3 || bytes.size() < size || !ReadRateHeader(bytes.first(size), found))
        return false;
    header = found;
    return true;
}

// Length and rate from the header, when the audio that is there bears it out.
bool StreamReader::BelieveHeader()
{
    if (!header || header->Frames <= 0 || header->Bytes <= 0 || !IsPlausible())
        return false;
    const double bytesPerSecond = static_cast<double>(header->Bytes) / LengthOf(header->Frames);
    const std::int64_t surplus = file.Size() - front.Position - header->Bytes;
    if (!HeaderFits(surplus, bytesPerSecond) && !HeaderFits(surplus - ID3v1Bytes, bytesPerSecond)) {
        const std::int64_t rest = End() - front.Position - header->Bytes;
        if (!HeaderFits(rest, bytesPerSecond)) {
            const std::int64_t allowed = std::max<std::int64_t>(2000, header->Bytes / 50);
            Frame behind = first;
            // More bytes are well when they hold no frames; fewer mean a cut stream.
            if (rest < 0 || rest > allowed || FindNext(front.Position + header->Bytes, behind))
                return false;
        }
    }
    const double seconds = LengthOf(header->Frames);
    Facts.Seconds = seconds - SecondsOf(first.Header, header->Delay + header->Padding);
    Facts.Variable = IsVariable();
    Facts.Kilobits = Facts.Variable ? KilobitsOf(header->Bytes - front.Size, seconds) : SteadyKilobits();
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
    // Some encoders count the header's frame in one number and not in the other.
    if (header->Bytes <= front.Size || header->Delay + header->Padding >= header->Frames * first.Header.Samples ||
        header->Bytes + front.Size < header->Frames * first.Pattern.Smallest() ||
        header->Bytes - front.Size > header->Frames * first.Pattern.Largest())
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
    const double seconds = LengthOf(header->Frames);
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
    Facts.Seconds = LengthOf(frames);
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

// A header with nothing behind it is no sound.
void StreamReader::Walk()
{
    const Count count = header && first.Position == front.Position ? Count() : CountFrames(first);
    Facts.Seconds = count.Seconds;
    Facts.Variable = count.Variable;
    Facts.Kilobits = count.Variable ? KilobitsOf(count.Bytes, count.Seconds) : SteadyKilobits();
}

// Every frame from there on. Where the row of frames breaks, the next real one is looked for.
Count StreamReader::CountFrames(Frame frame)
{
    window.SetAhead(BlockBytes);
    const int rate = frame.Header.BitRate;
    Count count;
    std::int64_t position = 0;
    do {
        position = CountRow(frame, rate, count);
        // A frame that the audio's end cuts is not to be found again.
        if (position == frame.Position)
            ++position;
    } while (FindNext(position, frame) && frame.Position < End());
    return count;
}

// Counts whole frames of one kind that follow each other; returns where the row ends.
std::int64_t StreamReader::CountRow(const Frame &frame, int rate, Count &count)
{
    const std::int64_t audioEnd = End();
    const FramePattern &pattern = frame.Pattern;
    std::int64_t position = frame.Position;
    std::int64_t frames = 0;
    for (bool more = true; more;) {
        const Bytes bytes = window.At(position, FrameHeaderBytes);
        const auto last = static_cast<std::int64_t>(bytes.size()) - static_cast<std::int64_t>(FrameHeaderBytes);
        std::int64_t offset = 0;
        more = false;
        while (offset <= last) {
            const int size = pattern.SizeOf(bytes.data() + offset);
            more = size != 0 && position + offset + size <= audioEnd;
            if (!more)
                break;
            count.Variable = count.Variable || pattern.BitRateOf(bytes.data() + offset) != rate;
            offset += size;
            ++frames;
        }
        position += offset;
    }
    count.Bytes += position - frame.Position;
    count.Seconds += SecondsOf(frame.Header, frames * frame.Header.Samples);
    return position;
}

int StreamReader::SteadyKilobits() const
{
    const int unpadded = first.Size - (first.Header.Padded ? first.Header.Slot : 0);
    return first.Header.BitRate == 0 ? KilobitsOf(unpadded, LengthOf(1)) : first.Header.BitRate / 1000;
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
