#include "BenchRows.h"
#include "BenchSupport.h"
#include "BenchTree.h"
#include "MediaFiles.h"

#include "platform/Drives.h"
#include "text/FolderWalk.h"

#include <QCoreApplication>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

// What the disk is asked for, over the bare system calls, with everything in the host's cache.

namespace
{
void AnalyseFileOverBareCalls(benchmark::State &state)
{
    static const MediaFolder files(10000, CommonShape);
    CompareInTurn(
        state, files.HostPaths.size(), 1.6, [] { ReadBare(files); },
        [] {
            for (const QString &path : files.Paths)
                benchmark::DoNotOptimize(AnalyseFile(path).Size);
        });
}

void PlaylistOverBareStats(benchmark::State &state, bool relative)
{
    static const ListedFiles files;
    const QString folder = FromHostPath(files.Folder.path());
    const QString playlist = folder + (relative ? u"\\relative.m3u"_s : u"\\absolute.m3u"_s);
    SetCurrentDirectory(folder);
    const auto &paths = relative ? files.RelativePaths : files.AbsolutePaths;
    std::unique_ptr<Grid> grid;
    const Side floor{[&] { StatBare(paths); }, FullList};
    const Side subject{[&] { LoadPlaylist(*grid, playlist); }, FullList, [&] { grid = std::make_unique<Grid>(); }};
    Compare(state, 2, floor, subject);
    if (grid->Count() != FullList || !grid->Item(FullList).Measured())
        throw std::runtime_error("The playlist of the benchmark is not read.");
}

void WalkFolderOverBareListing(benchmark::State &state)
{
    static const BenchTree tree;
    const std::string hostFolder = tree.Folder.path().toStdString();
    const QString folder = FromHostPath(tree.Folder.path());
    CompareInTurn(
        state, BenchTree::FileCount, 1.5, [&] { benchmark::DoNotOptimize(ListBare(hostFolder)); },
        [&] {
            QStringList found;
            WalkFolder(folder, FileTypes(), found, true);
            if (found.size() < BenchTree::FileCount / 2)
                throw std::runtime_error("The tree of the benchmark is not walked.");
        });
}

BENCHMARK(AnalyseFileOverBareCalls)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PlaylistOverBareStats, Absolute, false)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PlaylistOverBareStats, Relative, true)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(WalkFolderOverBareListing)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
