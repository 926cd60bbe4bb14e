#include "BenchRows.h"
#include "BenchSupport.h"
#include "BenchTree.h"

#include "platform/Drives.h"
#include "statistics/PlaylistFigures.h"

#include <QCoreApplication>

#include <stdexcept>

// The figures of a playlist over the bare stats of its files.

namespace
{
/// The rows of a playlist of the first files of the tree.
struct StatisticsRows {
    explicit StatisticsRows(int count)
    {
        static const ListedFiles files;
        HostPaths.assign(files.AbsolutePaths.begin(), files.AbsolutePaths.begin() + count);
        for (const std::string &path : HostPaths)
            Paths.append(FromHostBytes(QByteArray::fromStdString(path)));
        Rows.Append(HostPaths.size(), [this](std::size_t i) { return AnalyseFile(Paths[static_cast<qsizetype>(i)]); });
    }

    Side Figures() const
    {
        return {[this] {
                    if (ComputeFigures(Rows, Paths, {}).TotalSize != Rows.Count())
                        throw std::runtime_error("The figures of the benchmark are wrong.");
                },
                HostPaths.size()};
    }

    std::vector<std::string> HostPaths;
    QStringList Paths;
    Grid Rows;
};

const StatisticsRows &FullStatistics()
{
    static const StatisticsRows rows(FullList);
    return rows;
}

void StatisticsOverBareStats(benchmark::State &state)
{
    const StatisticsRows &rows = FullStatistics();
    Compare(state, 1.3, {[&] { StatBare(rows.HostPaths); }, FullList}, rows.Figures());
}

void StatisticsGrowth(benchmark::State &state)
{
    const StatisticsRows part(ShortList);
    Compare(state, 1.2, part.Figures(), FullStatistics().Figures());
}

BENCHMARK(StatisticsOverBareStats)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(StatisticsGrowth)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
