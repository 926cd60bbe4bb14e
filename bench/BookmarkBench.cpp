#include "BenchSupport.h"
#include "MediaFiles.h"

#include "media/TitleTexts.h"
#include "platform/Drives.h"
#include "sidetools/BookmarkFile.h"

#include <QTemporaryDir>

#include <stdexcept>

using namespace Qt::StringLiterals;

// A bookmark file, over the titles of the same files.

namespace
{
void BookmarksOverTitles(benchmark::State &state)
{
    const MediaFolder files(10000, CommonShape);
    const QTemporaryDir folder;
    const QString path = FromHostPath(folder.filePath(u"winamp.bm"_s));
    CompareInTurn(
        state, files.HostPaths.size(), 1.2,
        [&] {
            for (const QString &file : files.Paths)
                benchmark::DoNotOptimize(ID3TitleText(file));
        },
        [&] {
            if (!WriteBookmarkFile(path, files.Paths))
                throw std::runtime_error("The bookmark file of the benchmark is not written.");
        });
}

BENCHMARK(BookmarksOverTitles)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace
