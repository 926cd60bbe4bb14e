#include "BenchRows.h"
#include "BenchSupport.h"
#include "BenchWindow.h"
#include "MediaLists.h"

#include "platform/Drives.h"

#include <memory>

using namespace Qt::StringLiterals;

// AddPath on playlists of MPEG files, through the whole window.

QString MediaList(int entries)
{
    static const MediaFolder files(2500, CommonShape);
    static const QTemporaryDir folder;
    const QString name = folder.filePath(QString::number(entries) + u".m3u"_s);
    QByteArray lines;
    for (int entry = 0; entry < entries; ++entry)
        lines +=
            QByteArray::fromStdString(files.HostPaths[static_cast<std::size_t>(entry) % files.HostPaths.size()]) + '\n';
    WriteBenchFile(name, lines);
    return FromHostPath(name);
}

namespace
{
Side AddingOf(BenchWindow &window, int entries)
{
    return {[&window, path = MediaList(entries)] { window.Window.AddPath(path, false); },
            static_cast<std::size_t>(entries),
            [&window] {
                window.Window.ListView1.Clear();
                window.Settle();
            }};
}

void AddPathGrowth(benchmark::State &state)
{
    BenchWindow window;
    Compare(state, 1.2, AddingOf(window, ShortList), AddingOf(window, FullList));
}

/// All that the window adds, and so the progress form too.
void AddPathOverLoadingWithoutWindow(benchmark::State &state)
{
    BenchWindow window;
    std::unique_ptr<Grid> grid;
    const Side floor{[&, path = MediaList(FullList)] { LoadPlaylist(*grid, path); }, FullList,
                     [&] { grid = std::make_unique<Grid>(); }};
    Compare(state, 1.05, floor, AddingOf(window, FullList));
}

BENCHMARK(AddPathGrowth)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
BENCHMARK(AddPathOverLoadingWithoutWindow)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
} // namespace
