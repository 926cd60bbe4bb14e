#include "media/FullWalk.h"

#include <utility>

namespace
{
// Kilobits per second by the header's index: layers I, II, III of MPEG 1, layer I of MPEG 2, its other layers.
constexpr int Rates[5][15] = {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
                              {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
                              {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
                              {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
                              {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}};
constexpr int SampleRates[] = {44100, 48000, 32000};
// So many frames of one kind in a row settle a stream.
constexpr int Enough = 8;

struct Stream {
    const QByteArray &file;
    int freeBytes = 0;

    int Byte(qsizetype at) const { return at < file.size() ? static_cast<unsigned char>(file[at]) : -1; }
    // What the headers of one stream have in common; 0 for what is no header.
    int Kind(qsizetype at) const
    {
        const int version = Byte(at + 1);
        const int rate = Byte(at + 2);
        if (Byte(at) != 255 || version < 0xE0 || (version & 0x18) == 8 || (version & 6) == 0 || rate >= 0xF0 ||
            (rate & 0xC) == 0xC || at + 4 > file.size())
            return 0;
        return (version & ~1) << 8 | (rate & 0xC) | (rate < 16 ? 1 : 0);
    }
    bool IsFree(qsizetype at) const { return Byte(at + 2) < 16; }
    bool IsVersion1(qsizetype at) const { return (Byte(at + 1) & 0x18) == 0x18; }
    int Layer(qsizetype at) const { return 4 - (Byte(at + 1) >> 1 & 3); }
    int Samples(qsizetype at) const { return Layer(at) == 1 ? 384 : Layer(at) == 3 && !IsVersion1(at) ? 576 : 1152; }
    int Hertz(qsizetype at) const
    {
        return SampleRates[Byte(at + 2) >> 2 & 3] / (IsVersion1(at) ? 1 : (Byte(at + 1) & 0x18) == 0x10 ? 2 : 4);
    }
    int Rate(qsizetype at) const
    {
        return Rates[IsVersion1(at) ? Layer(at) - 1 : Layer(at) == 1 ? 3 : 4][Byte(at + 2) >> 4];
    }
    int Size(qsizetype at) const
    {
        const int padding = Byte(at + 2) >> 1 & 1;
        if (IsFree(at))
            return freeBytes + padding;
        return Layer(at) == 1 ? (12000 * Rate(at) / Hertz(at) + padding) * 4
                              : Samples(at) / 8 * 1000 * Rate(at) / Hertz(at) + padding;
    }
    // Whole frames of one kind in a row, as far as they matter. Those that reach the file's end could go on.
    int Run(qsizetype at) const
    {
        const int kind = Kind(at);
        int run = 0;
        if (kind == 0 || at + Size(at) > file.size())
            return run;
        for (; run < Enough && Kind(at) == kind; ++run)
            at += Size(at);
        return at < file.size() ? run : run > 1 ? Enough : 2;
    }
    // Whether the stream goes on there, given a frame of it, which may end right there.
    bool GoesOn(qsizetype at, qsizetype last, bool inRow) const
    {
        if (Kind(at) == Kind(last))
            return Run(at) >= (inRow ? 1 : 2);
        return Kind(at) != 0 && !IsFree(at) && !IsFree(last) && Layer(at) == Layer(last) &&
               Run(at) >= (inRow ? 2 : Enough);
    }
    qsizetype BehindTags() const
    {
        qsizetype at = 0;
        while (file.mid(at, 3) == "ID3" && Byte(at + 9) >= 0) {
            const int size = Byte(at + 6) << 21 | Byte(at + 7) << 14 | Byte(at + 8) << 7 | Byte(at + 9);
            const qsizetype next = at + size + ((Byte(at + 5) & 16) != 0 ? 20 : 10);
            if (next > file.size())
                break;
            at = next;
        }
        return at;
    }
    // A frame of the first row that settles the stream, or of the longest one; -1 for none.
    qsizetype Settled(qsizetype begin)
    {
        qsizetype settled = -1;
        for (qsizetype at = begin, longest = 1; at < file.size() && longest < Enough; ++at) {
            const int run = Kind(at) == 0 ? 0 : !IsFree(at) ? Run(at) : IsFreeStream(at, begin) ? Enough : 0;
            if (run > longest) {
                longest = run;
                settled = at;
            }
        }
        return settled;
    }
    // Free format: a frame ends where the next of its kind begins, and so does that one; such frames are most of the
    // file.
    bool IsFreeStream(qsizetype first, qsizetype begin)
    {
        for (qsizetype next = first + 24; next < first + 2000; ++next) {
            freeBytes = static_cast<int>(next - first) - (Byte(first + 2) >> 1 & 1);
            if (Kind(next) == Kind(first) && Run(first) > 2)
                break;
        }
        FullWalk walk;
        Count(first, first, walk);
        return 2 * walk.Bytes > file.size() - begin;
    }
    void Count(qsizetype at, qsizetype last, FullWalk &walk) const
    {
        bool first = true;
        for (bool inRow = false; at + 4 <= file.size();) {
            inRow = GoesOn(at, last, inRow);
            if (!inRow) {
                ++at;
                continue;
            }
            last = at;
            at += Size(at);
            if (std::exchange(first, false) && HasLengthHeader(last, walk))
                continue;
            walk.Variable = walk.Variable || (walk.Frames > 0 && walk.Rate != Rate(last));
            walk.Rate = Rate(last);
            ++walk.Frames;
            walk.Bytes += Size(last);
            walk.Seconds += static_cast<double>(Samples(last)) / Hertz(last);
        }
    }
    // Frames, and the samples of silence that the encoder added, when the first frame carries such a header.
    bool HasLengthHeader(qsizetype first, FullWalk &walk) const
    {
        for (const char *mark : {"Xing", "Info", "VBRI"}) {
            const qsizetype at = file.indexOf(mark, first);
            if (at < 0 || at > first + 38)
                continue;
            for (int place = 0; place < 4; ++place)
                walk.Promised = walk.Promised * 256 + Byte(at + (*mark == 'V' ? 14 : 8) + place);
            // Behind the flags, both counts, the table and the quality, as all of these files have them.
            if (*mark != 'V' && Byte(at + 120) != 0)
                walk.Silence = Byte(at + 141) * 16 + Byte(at + 142) / 16 + Byte(at + 142) % 16 * 256 + Byte(at + 143);
            return true;
        }
        return false;
    }
};
} // namespace

FullWalk::FullWalk(const QByteArray &file)
{
    Stream stream{file};
    const qsizetype begin = stream.BehindTags();
    const qsizetype settled = stream.Settled(begin);
    HasAudio = settled >= 0;
    if (!HasAudio)
        return;
    SampleRate = stream.Hertz(settled);
    stream.Count(begin, settled, *this);
    if (Frames > 0)
        Kilobits = static_cast<double>(Bytes) * 8 / (1000.0 * Seconds);
    if (Promised == Frames)
        Seconds -= static_cast<double>(Silence) / SampleRate;
}

QByteArray SilentFrames(char kind, int rateIndex, int hertzIndex, int frames)
{
    const char header[] = {'\xFF', kind, static_cast<char>(rateIndex << 4 | hertzIndex << 2), '\0'};
    const QByteArray bytes(header, 4);
    return bytes.leftJustified(Stream{bytes}.Size(0), '\0').repeated(frames);
}

QByteArray SilentStream(int rateIndex, int frames, bool padding, int hertzIndex)
{
    const qint64 hertz = SampleRates[hertzIndex];
    const qint64 size = 144000 * Rates[2][rateIndex] / hertz;
    const qint64 rest = 144000 * Rates[2][rateIndex] % hertz;
    QByteArray stream;
    for (qint64 frame = 0; frame < frames; ++frame) {
        const bool padded = padding && (frame + 1) * rest / hertz > frame * rest / hertz;
        stream += "\xFF\xFB";
        stream += static_cast<char>(rateIndex << 4 | hertzIndex << 2 | (padded ? 2 : 0));
        stream += QByteArray(size + (padded ? 1 : 0) - 3, '\0');
    }
    return stream;
}
