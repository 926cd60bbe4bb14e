#include "BenchRows.h"
#include "BenchSupport.h"
#include "BenchTree.h"
#include "MediaFiles.h"

#include "media/FullData.h"
#include "platform/Drives.h"
#include "text/FolderWalk.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <taglib/fileref.h>

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

// About a thousand folders.
void OtherCaseOverAsWritten(benchmark::State &state)
{
    static const ListedFiles files(33);
    const QString folder = FromHostPath(files.Folder.path());
    std::unique_ptr<Grid> grid;
    const auto prepare = [&] { grid = std::make_unique<Grid>(); };
    const Side floor{[&] { LoadPlaylist(*grid, folder + u"\\relative.m3u"); }, FullList, prepare};
    const Side subject{[&] { LoadPlaylist(*grid, folder + u"\\capitals.m3u"); }, FullList, prepare};
    Compare(state, 3, floor, subject);
    if (!grid->Item(1).Measured() || !grid->Item(FullList).Measured())
        throw std::runtime_error("The files of the benchmark are not found in another case.");
}

void FullDataOverTagLib(benchmark::State &state)
{
    constexpr int count = 5000;
    const QTemporaryDir folder;
    QStringList paths;
    std::vector<std::string> hostPaths;
    for (int i = 0; i < count; ++i) {
        hostPaths.push_back(folder.filePath(QString::number(i) + u".ogg").toStdString());
        paths.append(FromHostPath(QString::fromStdString(hostPaths.back())));
        QFile::copy(QStringLiteral(TEST_DATA "/tagged-utf8.ogg"), QString::fromStdString(hostPaths.back()));
    }
    SetFullData(true);
    CompareInTurn(
        state, count, 1.3,
        [&] {
            for (const std::string &path : hostPaths)
                benchmark::DoNotOptimize(TagLib::FileRef(path.c_str()).audioProperties()->lengthInMilliseconds());
        },
        [&] {
            for (const QString &path : std::as_const(paths)) {
                if (AnalyseFile(path).Length == 0)
                    throw std::runtime_error("The files of the benchmark have no length.");
            }
        });
    SetFullData(false);
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
BENCHMARK(OtherCaseOverAsWritten)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(FullDataOverTagLib)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(WalkFolderOverBareListing)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
