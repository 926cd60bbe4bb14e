#include "MediaFiles.h"

#include "platform/Drives.h"

#include <benchmark/benchmark.h>

#include <QFile>

#include <array>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr std::array<int, 15> Kilobits = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};

// A frame of layer III, MPEG 1, 44,100 hertz; "Padded" as encoders do it, by the frame's number.
QByteArray Frame(std::size_t rate, qint64 number, std::minstd_rand &noise)
{
    const qint64 bits = qint64{144000} * Kilobits[rate];
    const bool padded = (number + 1) * (bits % 44100) / 44100 > number * (bits % 44100) / 44100;
    QByteArray frame(bits / 44100 + (padded ? 1 : 0), '\0');
    for (char &byte : frame)
        byte = static_cast<char>(noise() >> 9 & 0x7F);
    frame[0] = '\xFF';
    frame[1] = '\xFB';
    frame[2] = static_cast<char>(rate << 4 | (padded ? 2U : 0U));
    frame[3] = 0x44;
    return frame;
}

QByteArray BigEndian(qsizetype number)
{
    QByteArray bytes(4, '\0');
    for (int place = 3; place >= 0; --place, number >>= 8)
        bytes[place] = static_cast<char>(number & 0xFF);
    return bytes;
}

QByteArray WithHeader(const QByteArray &audio, qsizetype frames, bool variable, std::minstd_rand &noise)
{
    QByteArray head = Frame(9, 0, noise);
    std::fill(head.begin() + 4, head.end(), '\0');
    const QByteArray body = (variable ? "Xing" : "Info") + BigEndian(15) + BigEndian(frames) +
                            BigEndian(audio.size() + head.size()) + QByteArray(104, '\0') + "LAME3.100" +
                            QByteArray(12, '\0') + QByteArray("\x24\x04\x80", 3);
    head.replace(36, body.size(), body);
    return head + audio;
}

QByteArray TagFrame(const char *name, const QByteArray &body)
{
    return name + BigEndian(body.size()) + QByteArray(2, '\0') + body;
}

// Texts in UTF-16, identifiers, a comment and a picture that takes the rest, as taggers leave them; the last kilobyte
// is padding.
QByteArray Tag(qsizetype bytes)
{
    const QString text = u"A text of the usual length"_s;
    const QByteArray wide = "\1\xFF\xFE" + QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    QByteArray tag;
    for (const char *name : {"TIT2", "TPE1", "TPE2", "TALB", "TRCK", "TPOS", "TYER", "TCON", "TCOM", "TENC", "TPUB"}) {
        if (tag.size() + 100 < bytes)
            tag += TagFrame(name, wide);
    }
    for (int number = 0; number < 14 && tag.size() + 200 < bytes; ++number)
        tag += TagFrame("TXXX", QByteArray("\1\xFF\xFEi\0d\0\0\0", 9) + wide.mid(1));
    if (const qsizetype left = bytes - tag.size() - 1024; left > 1000)
        tag += TagFrame("APIC", QByteArray("\0image/jpeg\0\3\0", 14) + QByteArray(left - 24, 'p'));
    return tag + QByteArray(bytes - tag.size(), '\0');
}

QByteArray Content(const MediaShape &shape, std::minstd_rand &noise)
{
    QByteArray audio;
    audio.reserve(shape.AudioBytes + 1500);
    qsizetype frames = 0;
    while (audio.size() < shape.AudioBytes) {
        const std::size_t rate = shape.Variable ? 1 + (noise() >> 8) % 14 : 9;
        audio += Frame(rate, frames++, noise);
    }
    if (shape.HasHeader)
        audio = WithHeader(audio, frames, shape.Variable, noise);
    audio += "TAG" + QByteArray(30, 't') + QByteArray(95, '\0');
    const QByteArray tag = Tag(shape.TagBytes - 10);
    const qsizetype size = tag.size();
    const char head[] = {'I',
                         'D',
                         '3',
                         3,
                         0,
                         0,
                         0,
                         static_cast<char>(size >> 14 & 127),
                         static_cast<char>(size >> 7 & 127),
                         static_cast<char>(size & 127)};
    return QByteArray(head, sizeof head) + tag + audio;
}
} // namespace

MediaFolder::MediaFolder(int count, const std::function<MediaShape(int number, std::minstd_rand &noise)> &shapeOf)
{
    std::minstd_rand noise(5);
    for (int number = 0; number < count; ++number) {
        const MediaShape shape = shapeOf(number, noise);
        const QString name = folder.filePath(QString::number(number) + u".mp3"_s);
        WriteBenchFile(name, Content(shape, noise));
        Paths.append(FromHostPath(name));
        HostPaths.push_back(QFile::encodeName(name).toStdString());
        AudioStarts.push_back(shape.TagBytes);
    }
}

MediaShape CommonShape(int number, std::minstd_rand &noise)
{
    constexpr int bareEvery = 33;
    const bool bare = number % bareEvery == 0;
    return {1024 + qsizetype(noise() % (59 * 1024)), 100000, !bare && number % 2 == 1, !bare};
}

void ReadBare(const MediaFolder &files)
{
    std::array<char, 4096> buffer;
    for (std::size_t number = 0; number < files.HostPaths.size(); ++number) {
        const int file = open(files.HostPaths[number].c_str(), O_RDONLY | O_CLOEXEC);
        struct stat facts;
        fstat(file, &facts);
        benchmark::DoNotOptimize(pread(file, buffer.data(), buffer.size(), 0));
        benchmark::DoNotOptimize(pread(file, buffer.data(), buffer.size(), files.AudioStarts[number]));
        close(file);
    }
}

void WriteBenchFile(const QString &hostPath, const QByteArray &content)
{
    QFile file(hostPath);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("The files of the benchmark cannot be written.");
}
