#include "BenchSupport.h"
#include "MediaFiles.h"

#include "media/VorbisTag.h"
#include "platform/Drives.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// The time of ReadVorbisTag over the bare system calls for the same bytes, with all files in the host's cache.

namespace
{
constexpr std::size_t Files = 10000;
constexpr off_t HeaderPlace = 100;

// A file as an encoder of its time begins it: pages of no matter, eight comments, setup data.
QByteArray VorbisContent(std::size_t number)
{
    const auto counted = [](const QByteArray &text) -> QByteArray {
        return static_cast<char>(text.size()) + QByteArray(3, '\0') + text;
    };
    QByteArray content(HeaderPlace, '\2');
    content += "\3vorbis" + counted("Xiph.Org libVorbis I 20020717") + QByteArray("\x08\0\0\0", 4);
    for (const char *key : {"TITLE", "ARTIST", "ALBUM", "GENRE", "DATE", "COMMENT", "ENCODED_USING"})
        content += counted(QByteArray(key) + "=A text of the usual length");
    content += counted("TRACKNUMBER=" + QByteArray::number(static_cast<int>(number % 20))) + "\1\5vorbis";
    std::minstd_rand noise(static_cast<unsigned>(number));
    while (content.size() < 16384)
        content += static_cast<char>(noise() >> 8);
    return content;
}

struct VorbisFolder {
    QTemporaryDir Folder;
    QStringList Paths;
    std::vector<std::string> HostPaths;

    VorbisFolder()
    {
        for (std::size_t number = 0; number < Files; ++number) {
            const QString name = Folder.filePath(QString::number(number) + u".ogg"_s);
            WriteBenchFile(name, VorbisContent(number));
            Paths.append(FromHostPath(name));
            HostPaths.push_back(QFile::encodeName(name).toStdString());
        }
    }
};

void ReadBareHeaders(const VorbisFolder &library)
{
    std::array<char, 2048> buffer;
    for (const std::string &path : library.HostPaths) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat facts;
        fstat(file, &facts);
        benchmark::DoNotOptimize(pread(file, buffer.data(), buffer.size(), 0));
        benchmark::DoNotOptimize(pread(file, buffer.data(), buffer.size(), HeaderPlace));
        close(file);
    }
}

void ReadVorbisTagOverBareCalls(benchmark::State &state)
{
    const VorbisFolder library;
    bool allRead = true;
    CompareInTurn(
        state, Files, 1.5, [&] { ReadBareHeaders(library); },
        [&] {
            for (const QString &path : library.Paths) {
                VorbisTag tag;
                allRead = ReadVorbisTag(path, tag) && allRead;
                benchmark::DoNotOptimize(tag);
            }
        });
    if (!allRead)
        state.SkipWithError("A file's comments were not read.");
}

BENCHMARK(ReadVorbisTagOverBareCalls)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace
