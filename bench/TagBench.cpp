#include "BenchSupport.h"
#include "MediaFiles.h"

#include "media/MP3File.h"
#include "media/MediaError.h"

#include <taglib/mpegfile.h>

#include <array>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// Reading tags over TagLib's own reading of the same files, and an update over a copy of the file.

namespace
{
constexpr int Files = 5000;

const MediaFolder &TaggedLibrary()
{
    static const MediaFolder library(Files, CommonShape);
    return library;
}

void ReadWithTagLib()
{
    for (const std::string &path : TaggedLibrary().HostPaths) {
        const TagLib::MPEG::File file(path.c_str(), false);
        benchmark::DoNotOptimize(file.tag());
    }
}

void ReadTagsOverTagLib(benchmark::State &state)
{
    CompareInTurn(state, Files, 0.6, ReadWithTagLib, [] {
        for (const QString &path : TaggedLibrary().Paths) {
            MP3File file;
            file.ReadTags(path, false);
            benchmark::DoNotOptimize(file.HasID3v2());
        }
    });
}

/// With every text that the tag editor shows.
void ReadTagsAndTextsOverTagLib(benchmark::State &state)
{
    constexpr std::array frames{"TIT2", "TPE1", "TALB", "TYER", "TRCK", "TCOM", "TOPE",
                                "TCOP", "TENC", "WXXX", "USLT", "TXXX", "WOAR", "TCON"};
    CompareInTurn(state, Files, 1, ReadWithTagLib, [&] {
        for (const QString &path : TaggedLibrary().Paths) {
            MP3File file;
            file.ReadTags(path, false);
            for (const char *id : frames)
                benchmark::DoNotOptimize(file.GetFrame(id));
        }
    });
}

/// One file of 10 MB with a tag of 4 KB.
class LongFile
{
public:
    LongFile() : files(1, [](int, std::minstd_rand &) { return MediaShape{4096, 10'000'000, true, true}; })
    {
        Copy(name, original);
    }

    /// What a plain copy of the file takes.
    void CopyFile() const
    {
        Copy(name, name + ".copy");
        unlink((name + ".copy").c_str());
    }

    void Restore() const { Copy(original, name); }

    /// Both tags, with a title of this length.
    void Update(int number, qsizetype length)
    {
        const QString &path = files.Paths.front();
        MP3File file;
        file.ResetFile(path);
        file.ReadTags(path, false);
        file.SetFrame("TIT2", QString::number(number).leftJustified(length, u'x'));
        file.SetTitle(QString::number(number));
        file.WriteTags(path, MP3File::TagChange::Write, MP3File::TagChange::Write);
    }

private:
    static void Copy(const std::string &source, const std::string &target)
    {
        const int from = open(source.c_str(), O_RDONLY | O_CLOEXEC);
        const int to = open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        while (copy_file_range(from, nullptr, to, nullptr, 1 << 30, 0) > 0) {
        }
        if (fsync(to) != 0)
            throw std::runtime_error("a copy of the file could not be written");
        close(from);
        close(to);
    }

    MediaFolder files;
    const std::string name = files.HostPaths.front();
    const std::string original = name + ".original";
};

void CompareUpdate(benchmark::State &state, qsizetype titleLength)
{
    LongFile file;
    int number = 0;
    const Side floor{[&] { file.CopyFile(); }};
    Compare(state, 1.2, floor, {[&] { file.Update(++number, titleLength); }, 1, [&] { file.Restore(); }});
}

void UpdateOverCopy(benchmark::State &state)
{
    CompareUpdate(state, 50);
}

/// The new title does not fit into the room of the tag, so that the audio moves.
void GrowingUpdateOverCopy(benchmark::State &state)
{
    CompareUpdate(state, 5000);
}

BENCHMARK(ReadTagsOverTagLib)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReadTagsAndTextsOverTagLib)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(UpdateOverCopy)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(41);
BENCHMARK(GrowingUpdateOverCopy)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(41);
} // namespace
