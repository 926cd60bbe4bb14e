#include "media/FullWalk.h"

namespace
{
// Kilobits per second by the header's index: layers I, II, III of MPEG 1, layer I of MPEG 2, its other layers.
constexpr int Rates[5][15] = {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
                              {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
                              {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
                              {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
                              {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}};

struct Stream {
    const QByteArray &file;
    qsizetype first = 0;
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
    bool IsSame(qsizetype at) const { return Kind(at) != 0 && Kind(at) == Kind(first); }
    bool IsFree() const { return Byte(first + 2) < 16; }
    bool IsVersion1() const { return (Byte(first + 1) & 0x18) == 0x18; }
    int Layer() const { return 4 - (Byte(first + 1) >> 1 & 3); }
    int Samples() const { return Layer() == 1 ? 384 : Layer() == 3 && !IsVersion1() ? 576 : 1152; }
    int SampleRate() const
    {
        constexpr int rates[] = {44100, 48000, 32000};
        const int rate = rates[Byte(first + 2) >> 2 & 3];
        return IsVersion1() ? rate : (Byte(first + 1) & 0x18) == 0x10 ? rate / 2 : rate / 4;
    }
    int Rate(qsizetype at) const { return Rates[IsVersion1() ? Layer() - 1 : Layer() == 1 ? 3 : 4][Byte(at + 2) >> 4]; }
    int Size(qsizetype at) const
    {
        const int padding = Byte(at + 2) >> 1 & 1;
        if (freeBytes != 0)
            return freeBytes + padding;
        if (Layer() == 1)
            return (12000 * Rate(at) / SampleRate() + padding) * 4;
        return Samples() / 8 * 1000 * Rate(at) / SampleRate() + padding;
    }
    bool IsWhole(qsizetype at) const { return IsSame(at) && at + Size(at) <= file.size(); }
    bool IsReal(qsizetype at) const { return IsWhole(at) && (at + Size(at) == file.size() || IsSame(at + Size(at))); }
    // Free format: the frame that begins here ends where the next of its kind begins, and so does that one.
    bool MeasureFree()
    {
        for (qsizetype next = first + 24; next < first + 3000 && freeBytes == 0; ++next) {
            if (!IsSame(next))
                continue;
            freeBytes = static_cast<int>(next - first) - (Byte(first + 2) >> 1 & 1);
            if (!IsSame(next + Size(next)))
                freeBytes = 0;
        }
        return freeBytes != 0;
    }
    void PassTags()
    {
        while (file.mid(first, 3) == "ID3" && Byte(first + 9) >= 0) {
            const qsizetype size =
                Byte(first + 6) << 21 | Byte(first + 7) << 14 | Byte(first + 8) << 7 | Byte(first + 9);
            const qsizetype next = first + size + ((Byte(first + 5) & 16) != 0 ? 20 : 10);
            if (next > file.size())
                break;
            first = next;
        }
    }
    // Frames, and the samples of silence that the encoder added, when the first frame carries such a header.
    bool HasLengthHeader(qint64 &frames, qint64 &silence) const
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
    stream.PassTags();
    while (stream.first < file.size() && !(stream.Kind(stream.first) != 0 &&
                                           (!stream.IsFree() || stream.MeasureFree()) && stream.IsReal(stream.first)))
        ++stream.first;
    HasAudio = stream.first < file.size();
    if (!HasAudio)
        return;
    qsizetype at = stream.first;
    qint64 promised = 0;
    qint64 silence = 0;
    if (stream.HasLengthHeader(promised, silence))
        at += stream.Size(at);
    qint64 frames = 0;
    qint64 bytes = 0;
    int rate = -1;
    for (bool inRow = false; at + 4 <= file.size();) {
        inRow = inRow ? stream.IsWhole(at) : stream.IsReal(at);
        if (!inRow) {
            ++at;
            continue;
        }
        Variable = Variable || (rate >= 0 && rate != stream.Rate(at));
        rate = stream.Rate(at);
        ++frames;
        bytes += stream.Size(at);
        at += stream.Size(at);
    }
    const qint64 samples = frames * stream.Samples();
    Seconds = static_cast<double>(samples - (promised == frames ? silence : 0)) / stream.SampleRate();
    if (frames > 0)
        Kilobits = static_cast<double>(bytes) * 8 * stream.SampleRate() / (1000.0 * static_cast<double>(samples));
}

QByteArray SilentStream(int rateIndex, int frames, bool padding)
{
    const qint64 size = 144000 * Rates[2][rateIndex] / 44100;
    const qint64 rest = 144000 * Rates[2][rateIndex] % 44100;
    QByteArray stream;
    for (qint64 frame = 0; frame < frames; ++frame) {
        const bool padded = padding && (frame + 1) * rest / 44100 > frame * rest / 44100;
        stream += "\xFF\xFB";
        stream += static_cast<char>(rateIndex << 4 | (padded ? 2 : 0));
        stream += QByteArray(size + (padded ? 1 : 0) - 3, '\0');
    }
    return stream;
}
