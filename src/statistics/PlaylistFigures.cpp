#include "statistics/PlaylistFigures.h"

#include "platform/Files.h"
#include "text/FileLists.h"
#include "text/PathText.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
void AddRow(PlaylistFigures &figures, const PlaylistItem &item, const QString &path)
{
    const FileFacts facts = ExamineFile(path);
    if (facts.Exists) {
        figures.TotalSize += facts.Size;
    } else {
        figures.SizeMark = u">"_s;
        ++figures.MissingCount;
    }
    constexpr int lineEnd = 2;
    figures.PlaylistSize += path.size() + lineEnd;
    if (item.Length > 0)
        figures.TotalSeconds += item.Length;
    else
        figures.TimeMark = u">"_s;
}
} // namespace

PlaylistFigures ComputeFigures(const Grid &grid, const QStringList &paths, const QString &playlistPath)
{
    PlaylistFigures figures;
    QStringList folders;
    ListDistinctFolders(paths, folders);
    figures.FileCount = static_cast<int>(paths.size());
    figures.FolderCount = static_cast<int>(folders.size());
    const QString root = FindCommonRoot(folders);
    figures.RelativeFolder = root.isEmpty() ? u"'Multiple volumes or bad playlist'"_s : QString(root + u'\\');
    figures.PlaylistName = playlistPath.isEmpty() ? u"'Unsaved Playlist'"_s : GetFileName(playlistPath);
    for (int row = 1; row <= grid.Count(); ++row)
        AddRow(figures, grid.Item(row), paths[row - 1]);
    const int existing = figures.FileCount - figures.MissingCount;
    if (existing > 0) {
        // The rounding mode of a process is halves to even.
        figures.AverageSeconds = std::llrint(static_cast<double>(figures.TotalSeconds) / existing);
        figures.AverageSize = static_cast<double>(figures.TotalSize) / existing;
    }
    return figures;
}
