#include "BenchSupport.h"
#include "MediaFiles.h"

#include "media/MP3File.h"

#include <taglib/mpegfile.h>

#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

// The time of ReadMPEG over the bare system calls for the same bytes, with all files in the host's cache.

namespace
{
constexpr int Files = 10000;
constexpr int LongFiles = 200;

const MediaFolder &RealLibrary()
{
    static const MediaFolder library(Files, CommonShape);
    return library;
}

const MediaFolder &LongLibrary(bool variable)
{
    static const MediaFolder constant(LongFiles, [](int, std::minstd_rand &) {
        return MediaShape{4000, 4000000, false, false};
    });
    static const MediaFolder varied(LongFiles, [](int, std::minstd_rand &) {
        return MediaShape{4000, 4000000, true, false};
    });
    return variable ? varied : constant;
}

void ReadWhole(const MediaFolder &library)
{
    std::vector<char> buffer(256 * 1024);
    for (const std::string &path : library.HostPaths) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        while (read(file, buffer.data(), buffer.size()) > 0)
            benchmark::DoNotOptimize(buffer.data());
        close(file);
    }
}

void ReadStreams(const MediaFolder &library)
{
    for (const QString &path : library.Paths) {
        MP3File file;
        file.ReadMPEG(path);
        benchmark::DoNotOptimize(file.SongLength());
    }
}

void ReadWithTagLib(const MediaFolder &library)
{
    for (const std::string &path : library.HostPaths) {
        const TagLib::MPEG::File file(path.c_str(), true);
        benchmark::DoNotOptimize(file.audioProperties()->lengthInMilliseconds());
    }
}

void ReadMPEGOverBareCalls(benchmark::State &state)
{
    const MediaFolder &library = RealLibrary();
    CompareInTurn(
        state, Files, 1.2, [&] { ReadBare(library); }, [&] { ReadStreams(library); });
}

void ReadMPEGOverTagLib(benchmark::State &state)
{
    const MediaFolder &library = RealLibrary();
    CompareInTurn(
        state, Files, 0.1, [&] { ReadWithTagLib(library); }, [&] { ReadStreams(library); });
}

void ConstantRateWithoutHeaderOverBareCalls(benchmark::State &state)
{
    const MediaFolder &library = LongLibrary(false);
    CompareInTurn(
        state, LongFiles, 12, [&] { ReadBare(library); }, [&] { ReadStreams(library); });
}

void VariableRateWithoutHeaderOverReadingIt(benchmark::State &state)
{
    const MediaFolder &library = LongLibrary(true);
    CompareInTurn(
        state, LongFiles, 1.5, [&] { ReadWhole(library); }, [&] { ReadStreams(library); });
}

BENCHMARK(ReadMPEGOverBareCalls)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReadMPEGOverTagLib)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(ConstantRateWithoutHeaderOverBareCalls)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(VariableRateWithoutHeaderOverReadingIt)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);
} // namespace

BENCHMARK_MAIN();
