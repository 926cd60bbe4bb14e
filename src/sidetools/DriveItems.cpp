#include "sidetools/DriveItems.h"

#include "platform/Files.h"
#include "playlist/Grid.h"
#include "text/EntryFinder.h"

using namespace Qt::StringLiterals;

DriveItems CountDriveItems(const Grid &grid, QChar letter, const QString &folder)
{
    const QString drive = letter + u":\\"_s;
    const bool isThere = ExamineFile(folder + u'\\').IsFolder;
    EntryFinder finder;
    DriveItems items;
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        if (!item.Folder.startsWith(drive))
            continue;
        ++items.All;
        if (isThere && !finder.Find(folder + item.FullPath().sliced(2), folder).isEmpty())
            ++items.Found;
    }
    return items;
}
