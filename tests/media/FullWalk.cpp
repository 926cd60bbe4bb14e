#include "media/FullWalk.h"

#include <map>

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
        if (kind == 0 || at + Size(at) > file.size())
            return 0;
        int run = 0;
        for (; run < Enough && Kind(at) == kind; ++run)
            at += Size(at);
        return at < file.size() ? run : run > 1 ? Enough : 2;
    }
    // The frames in a row that are wanted at a place, given the last one, which may end right there.
    int Wanted(qsizetype at, qsizetype last, bool inRow) const
    {
        if (Kind(at) == Kind(last))
            return inRow ? 1 : 2;
        return IsFree(at) || IsFree(last) || Layer(at) != Layer(last) ? Enough + 1 : inRow ? 2 : Enough;
    }
    qsizetype Begin() const
    {
        qsizetype begin = 0;
        while (file.mid(begin, 3) == "ID3" && Byte(begin + 9) >= 0) {
            const qsizetype size =
                Byte(begin + 6) << 21 | Byte(begin + 7) << 14 | Byte(begin + 8) << 7 | Byte(begin + 9);
            const qsizetype next = begin + size + ((Byte(begin + 5) & 16) != 0 ? 20 : 10);
            if (next > file.size())
                break;
            begin = next;
        }
        return begin;
    }
    // Free format: frames of one length fill the file.
    bool IsFreeStream(qsizetype first, qsizetype begin)
    {
        for (qsizetype next = first + 24; next < first + 3000; ++next) {
            freeBytes = static_cast<int>(next - first) - (Byte(first + 2) >> 1 & 1);
            if (Kind(next) != Kind(first) || Run(first) < 3)
                continue;
            FullWalk walk;
            Count(first, false, walk);
            return 2 * walk.Bytes > file.size() - begin;
        }
        return false;
    }
    // The first frame of the longest row, or of the first one that settles it; shorter rows of its kind count.
    qsizetype First()
    {
        const qsizetype begin = Begin();
        std::map<int, qsizetype> firsts;
        qsizetype best = -1;
        int longest = 1;
        for (qsizetype at = begin; at < file.size() && longest < Enough; ++at) {
            if (Kind(at) == 0)
                continue;
            if (IsFree(at) && IsFreeStream(at, begin))
                return at;
            const int run = IsFree(at) ? 0 : Run(at);
            const qsizetype first = run < 2 ? at : firsts.try_emplace(Kind(at), at).first->second;
            if (run > longest) {
                longest = run;
                best = first;
            }
        }
        return best;
    }
    void Count(qsizetype at, bool passFirst, FullWalk &walk) const
    {
        qsizetype last = at;
        at += passFirst ? Size(at) : 0;
        bool inRow = false;
        while (at + 4 <= file.size()) {
            inRow = Kind(at) != 0 && Run(at) >= Wanted(at, last, inRow);
            if (!inRow) {
                ++at;
                continue;
            }
            walk.Variable = walk.Variable || (walk.Frames > 0 && Rate(last) != Rate(at));
            ++walk.Frames;
            walk.Bytes += Size(at);
            walk.Seconds += static_cast<double>(Samples(at)) / Hertz(at);
            last = at;
            at += Size(at);
        }
    }
    // Frames, and the samples of silence that the encoder added, when the first frame carries such a header.
    bool HasLengthHeader(qsizetype first, qint64 &frames, qint64 &silence) const
    {
        for (const char *mark : {"Xing", "Info", "VBRI"}) {
            const qsizetype at = file.indexOf(mark, first);
            if (at < 0 || at > first + 38)
                continue;
            for (int place = 0; place < 4; ++place)
                frames = frames * 256 + Byte(at + (*mark == 'V' ? 14 : 8) + place);
            // Behind the flags, both counts, the table and the quality, as all of these files have them.
            if (*mark != 'V' && Byte(at + 120) != 0)
                silence = Byte(at + 141) * 16 + Byte(at + 142) / 16 + Byte(at + 142) % 16 * 256 + Byte(at + 143);
            return true;
        }
        return false;
    }
};
} // namespace

FullWalk::FullWalk(const QByteArray &file)
{
    Stream stream{file};
    const qsizetype first = stream.First();
    HasAudio = first >= 0;
    if (!HasAudio)
        return;
    SampleRate = stream.Hertz(first);
    qint64 promised = 0;
    qint64 silence = 0;
    stream.Count(first, stream.HasLengthHeader(first, promised, silence), *this);
    if (Frames > 0)
        Kilobits = static_cast<double>(Bytes) * 8 / (1000.0 * Seconds);
    if (promised == Frames)
        Seconds -= static_cast<double>(silence) / SampleRate;
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
