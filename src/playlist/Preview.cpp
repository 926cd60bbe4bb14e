#include "playlist/Preview.h"

#include "text/FolderWalk.h"

namespace
{
/// Each folder of the selected rows once, in the order of first appearance.
QStringList SelectedFolders(const Grid &grid)
{
    QStringList folders;
    QSet<QString> known;
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        if (item.Selected && !known.contains(item.Folder)) {
            known.insert(item.Folder);
            folders.append(item.Folder);
        }
    }
    return folders;
}
} // namespace

QStringList PreviewPaths(const Grid &grid, PreviewMode mode)
{
    int first = 1;
    while (first <= grid.Count() && !grid.Item(first).Selected)
        ++first;
    if (first > grid.Count())
        mode = PreviewAll;

    QStringList paths;
    if (mode == PreviewFolders) {
        for (const QString &folder : SelectedFolders(grid))
            WalkFolder(folder, FileTypes(), paths, false);
        return paths;
    }
    for (int row = mode == PreviewFrom ? first : 1; row <= grid.Count(); ++row) {
        if (mode != PreviewSelected || grid.Item(row).Selected)
            paths.append(grid.Item(row).FullPath());
    }
    return paths;
}
