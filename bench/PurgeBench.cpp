#include "BenchRows.h"
#include "BenchSupport.h"
#include "BenchTree.h"
#include "MediaFiles.h"

#include "platform/Drives.h"
#include "purge/Duplicates.h"
#include "purge/MissingItems.h"
#include "purge/Restoration.h"

#include <QCoreApplication>

#include <memory>
#include <numeric>
#include <stdexcept>

using namespace Qt::StringLiterals;

// What the purge dialog does, without its window.

namespace
{
const Grid &RowsOf(int count)
{
    static Grid full;
    static Grid part;
    Grid &grid = count == FullList ? full : part;
    if (grid.Count() == 0)
        grid.Append(BenchRecords(count));
    return grid;
}

Side DuplicatesIn(int count, DupBase base)
{
    return {[base, &grid = RowsOf(count)] { benchmark::DoNotOptimize(FindDuplicates(grid, {base}, {}).size()); },
            static_cast<std::size_t>(count)};
}

/// Builds the keys of the rows and sorts them.
void SortKeys(const Grid &grid, DupBase base)
{
    QStringList keys;
    keys.reserve(grid.Count());
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        keys.append(base == BaseFileName ? item.Text : base == BasePathOnly ? item.Folder : item.FullPath());
    }
    std::vector<int> order(static_cast<std::size_t>(keys.size()));
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&keys](int a, int b) { return keys[a] < keys[b]; });
    benchmark::DoNotOptimize(order.back());
}

void DuplicatesOverSort(benchmark::State &state, DupBase base)
{
    Compare(state, 1.3, {[base] { SortKeys(RowsOf(FullList), base); }, FullList}, DuplicatesIn(FullList, base));
}

void DuplicatesGrowth(benchmark::State &state, DupBase base)
{
    Compare(state, 1.2, DuplicatesIn(ShortList, base), DuplicatesIn(FullList, base));
}

/// A list of so many files that are all there.
class ListOfFiles
{
public:
    explicit ListOfFiles(int count)
    {
        for (int i = 0; i < count; ++i)
            paths.push_back(Files().AbsolutePaths[static_cast<std::size_t>(i)]);
        grid.Append(paths.size(), [this](std::size_t i) {
            FileRecord record;
            const QString path = FromHostBytes(QByteArray::fromStdString(paths[i]));
            record.FileName = path.section(u'\\', -1);
            record.Folder = path.chopped(record.FileName.size());
            return record;
        });
    }

    Side Bare() const
    {
        return {[this] { StatBare(paths); }, paths.size()};
    }
    Side Missing() const
    {
        return {[this] {
                    if (!FindMissing(grid, {}).Rows.empty())
                        throw std::runtime_error("A file of the benchmark is missing.");
                },
                paths.size()};
    }

private:
    static const ListedFiles &Files()
    {
        static const ListedFiles files;
        return files;
    }

    std::vector<std::string> paths;
    Grid grid;
};

void FindMissingOverBareStats(benchmark::State &state)
{
    const ListOfFiles list(FullList);
    Compare(state, 1.3, list.Bare(), list.Missing());
}

void FindMissingGrowth(benchmark::State &state)
{
    const ListOfFiles part(ShortList);
    const ListOfFiles full(FullList);
    Compare(state, 1.2, part.Missing(), full.Missing());
}

const BenchTree &Tree()
{
    static const BenchTree tree;
    return tree;
}

/// A search below the tree for so many missing files, of which every tenth has been moved there.
Side SearchFor(int count)
{
    QStringList missing;
    for (int i = 0; i < count; ++i) {
        const QString name = i % 10 == 0 ? u"1 - The title of %1.mp3"_s : u"Nowhere %1.mp3"_s;
        missing.append(u"q:\\Music\\Album %1\\"_s.arg(i / 12) + name.arg(i / 2));
    }
    return {[missing, root = FromHostPath(Tree().Folder.path())] {
                if (SearchDrives({root}, missing, false, {}).Count != missing.size() / 10)
                    throw std::runtime_error("The tree of the benchmark is not searched.");
            },
            BenchTree::FileCount};
}

void SearchOverBareListing(benchmark::State &state)
{
    const std::string folder = Tree().Folder.path().toStdString();
    Compare(state, 1.5, {[&] { benchmark::DoNotOptimize(ListBare(folder)); }, BenchTree::FileCount}, SearchFor(10000));
}

void SearchForManyOverFew(benchmark::State &state)
{
    Compare(state, 1.1, SearchFor(10), SearchFor(10000));
}

/// Files of one folder, missing from another one that a list of so many rows knows.
class Restoring
{
public:
    Restoring(QStringList filePaths, int rowCount) : paths(std::move(filePaths)), rows(rowCount)
    {
        for (const QString &path : std::as_const(paths)) {
            missing.Files.append(path.section(u'\\', -1));
            missing.Rows.push_back(rows - static_cast<int>(paths.size()) + static_cast<int>(missing.Files.size()));
        }
    }

    Side Restore()
    {
        return {[this] {
                    const QString folder = paths.front().chopped(missing.Files.front().size());
                    if (RestoreFolder(*grid, missing, folder, {}) != missing.Files.size())
                        throw std::runtime_error("The files of the benchmark are not restored.");
                },
                static_cast<std::size_t>(paths.size()), [this] { Reset(); }};
    }

    Side Analyse()
    {
        return {[this] {
                    for (const QString &path : std::as_const(paths))
                        benchmark::DoNotOptimize(AnalyseFile(path).Size);
                },
                static_cast<std::size_t>(paths.size())};
    }

private:
    void Reset()
    {
        grid = std::make_unique<Grid>();
        grid->Append(BenchRecords(rows - static_cast<int>(missing.Files.size())));
        grid->Append(static_cast<std::size_t>(missing.Files.size()), [this](std::size_t i) {
            FileRecord record;
            record.Folder = missing.Folder;
            record.FileName = missing.Files[static_cast<qsizetype>(i)];
            return record;
        });
    }

    QStringList paths;
    int rows;
    MissingFolder missing{u"q:\\Music\\"_s, {}, {}};
    std::unique_ptr<Grid> grid;
};

void RestoreOverAnalysing(benchmark::State &state)
{
    constexpr int files = 5000;
    static const MediaFolder folder(files, [](int, std::minstd_rand &) { return MediaShape{4000, 30000, true, true}; });
    Restoring restoring(folder.Paths, FullList);
    Compare(state, 1.2, restoring.Analyse(), restoring.Restore());
}

void RestoreGrowth(benchmark::State &state)
{
    const auto pathsIn = [](const QTemporaryDir &folder, int count) {
        QStringList paths;
        for (int i = 0; i < count; ++i) {
            const QString name = folder.filePath(QString::number(i) + u".wma"_s);
            WriteBenchFile(name, "x");
            paths.append(FromHostPath(name));
        }
        return paths;
    };
    const QTemporaryDir part;
    const QTemporaryDir full;
    Restoring few(pathsIn(part, ShortList), ShortList);
    Restoring many(pathsIn(full, FullList), FullList);
    Compare(state, 1.2, few.Restore(), many.Restore());
}

BENCHMARK_CAPTURE(DuplicatesOverSort, Filename, BaseFileName)->UseManualTime();
BENCHMARK_CAPTURE(DuplicatesOverSort, PathOnly, BasePathOnly)->UseManualTime();
BENCHMARK_CAPTURE(DuplicatesOverSort, FullPath, BaseFullPath)->UseManualTime();
BENCHMARK_CAPTURE(DuplicatesGrowth, Filename, BaseFileName)->UseManualTime();
BENCHMARK_CAPTURE(DuplicatesGrowth, PathOnly, BasePathOnly)->UseManualTime();
BENCHMARK_CAPTURE(DuplicatesGrowth, FullPath, BaseFullPath)->UseManualTime();
BENCHMARK(FindMissingOverBareStats)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(FindMissingGrowth)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SearchOverBareListing)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SearchForManyOverFew)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(RestoreOverAnalysing)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(RestoreGrowth)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
