#include "media/FullWalk.h"

namespace
{
int Byte(const QByteArray &file, qsizetype place)
{
    return place < file.size() ? static_cast<unsigned char>(file[place]) : -1;
}

bool IsHeader(const QByteArray &file, qsizetype at)
{
    return at + 4 <= file.size() && Byte(file, at) == 255 && Byte(file, at + 1) >= 0xE0 &&
           (Byte(file, at + 1) & 0x18) != 8 && (Byte(file, at + 1) & 6) != 0 && Byte(file, at + 2) < 0xF0 &&
           (Byte(file, at + 2) & 0xC) != 0xC;
}

bool IsSame(const QByteArray &file, qsizetype one, qsizetype other)
{
    return IsHeader(file, one) && IsHeader(file, other) && (Byte(file, one + 1) & ~1) == (Byte(file, other + 1) & ~1) &&
           (Byte(file, one + 2) & 0xC) == (Byte(file, other + 2) & 0xC) &&
           (Byte(file, one + 2) < 16) == (Byte(file, other + 2) < 16);
}

struct Stream {
    const QByteArray &file;
    qsizetype first;
    int freeBytes = 0;

    bool IsVersion1() const { return (Byte(file, first + 1) & 0x18) == 0x18; }
    int Layer() const { return 4 - (Byte(file, first + 1) >> 1 & 3); }
    int Samples() const { return Layer() == 1 ? 384 : Layer() == 3 && !IsVersion1() ? 576 : 1152; }
    int SampleRate() const
    {
        static const int rates[] = {44100, 48000, 32000};
        const int rate = rates[Byte(file, first + 2) >> 2 & 3];
        return IsVersion1() ? rate : (Byte(file, first + 1) & 0x18) == 0x10 ? rate / 2 : rate / 4;
    }
    int Rate(qsizetype at) const
    {
        static const int rates[5][15] = {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
                                         {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
                                         {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
                                         {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
                                         {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}};
        return rates[IsVersion1() ? Layer() - 1 : Layer() == 1 ? 3 : 4][Byte(file, at + 2) >> 4];
    }
    int Size(qsizetype at) const
    {
        const int padding = Byte(file, at + 2) >> 1 & 1;
        if (freeBytes != 0)
            return freeBytes + padding;
        if (Layer() == 1)
            return (12000 * Rate(at) / SampleRate() + padding) * 4;
        return Samples() / 8 * 1000 * Rate(at) / SampleRate() + padding;
    }
    bool IsReal(qsizetype at) const
    {
        if (!IsSame(file, first, at) || at + Size(at) > file.size())
            return false;
        return at + Size(at) == file.size() || IsSame(file, at, at + Size(at));
    }
    // Free format: the frame that begins here ends where the next of its kind begins, and so does that one.
    bool MeasureFree()
    {
        for (qsizetype next = first + 24; next < first + 3000 && freeBytes == 0 && Byte(file, first + 2) < 16; ++next) {
            if (!IsSame(file, first, next))
                continue;
            freeBytes = static_cast<int>(next - first) - (Byte(file, first + 2) >> 1 & 1);
            if (!IsSame(file, first, next + Size(next)))
                freeBytes = 0;
        }
        return freeBytes != 0;
    }
};

// Frames, and the samples of silence that the encoder added, when the frame carries such a header.
bool HasLengthHeader(const QByteArray &frame, qint64 &frames, qint64 &silence)
{
    for (const char *mark : {"Xing", "Info", "VBRI"}) {
        const qsizetype at = frame.indexOf(mark);
        if (at < 0 || at > 38)
            continue;
        frames = 0;
        for (int place = 0; place < 4; ++place)
            frames = frames * 256 + Byte(frame, at + (*mark == 'V' ? 14 : 8) + place);
        // Behind the flags, both counts, the table and the quality, as all of these files have them.
        silence = *mark == 'V' || frame[at + 120] == 0 ? 0
                                                       : Byte(frame, at + 141) * 16 + Byte(frame, at + 142) / 16 +
                                                             Byte(frame, at + 142) % 16 * 256 + Byte(frame, at + 143);
        return true;
    }
    return false;
}

qsizetype BehindTags(const QByteArray &file)
{
    qsizetype at = 0;
    while (file.mid(at, 3) == "ID3" && Byte(file, at + 9) >= 0) {
        const qsizetype size =
            Byte(file, at + 6) << 21 | Byte(file, at + 7) << 14 | Byte(file, at + 8) << 7 | Byte(file, at + 9);
        const qsizetype next = at + size + ((Byte(file, at + 5) & 16) != 0 ? 20 : 10);
        if (next > file.size())
            break;
        at = next;
    }
    return at;
}
} // namespace

FullWalk::FullWalk(const QByteArray &file)
{
    Stream stream{file, BehindTags(file)};
    while (stream.first < file.size() &&
           !(IsHeader(file, stream.first) && (Byte(file, stream.first + 2) >= 16 || stream.MeasureFree()) &&
             stream.IsReal(stream.first)))
        ++stream.first;
    HasAudio = stream.first < file.size();
    if (!HasAudio)
        return;
    qsizetype at = stream.first;
    qint64 promised = 0;
    qint64 silence = 0;
    if (HasLengthHeader(file.mid(at, stream.Size(at)), promised, silence))
        at += stream.Size(at);
    qint64 frames = 0;
    qint64 bytes = 0;
    int rate = -1;
    for (bool inRow = false; at + 4 <= file.size();) {
        inRow = inRow ? IsSame(file, stream.first, at) && at + stream.Size(at) <= file.size() : stream.IsReal(at);
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
    const qint64 samples = frames * stream.Samples() - (promised == frames ? silence : 0);
    Seconds = static_cast<double>(samples) / stream.SampleRate();
    if (frames > 0)
        Kilobits = static_cast<double>(bytes) * 8 * stream.SampleRate() /
                   (1000.0 * static_cast<double>(frames * stream.Samples()));
}

QByteArray SilentFrame(int rateIndex, bool padded)
{
    constexpr int Rates[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    QByteArray frame(144000 * Rates[rateIndex] / 44100 + (padded ? 1 : 0), '\0');
    frame[0] = '\xFF';
    frame[1] = '\xFB';
    frame[2] = static_cast<char>(rateIndex << 4 | (padded ? 2 : 0));
    return frame;
}

QByteArray SilentStream(int rateIndex, int frames, bool padding)
{
    const qint64 size = SilentFrame(rateIndex, false).size();
    constexpr int Rates[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    const qint64 rest = 144000 * Rates[rateIndex] - size * 44100;
    QByteArray stream;
    stream.reserve(frames * (size + 1));
    for (qint64 frame = 0; frame < frames; ++frame)
        stream += SilentFrame(rateIndex, padding && (frame + 1) * rest / 44100 > frame * rest / 44100);
    return stream;
}
