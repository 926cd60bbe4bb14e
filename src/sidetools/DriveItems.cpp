#include "sidetools/DriveItems.h"

#include "platform/Files.h"
#include "playlist/Grid.h"

#include <utility>

using namespace Qt::StringLiterals;

DriveItems::DriveItems(const Grid &playlist, std::function<void()> whenChanged)
    : grid(playlist), pieces([this](qsizetype n) { found += finder.Find(folder + paths[n], folder).isEmpty() ? 0 : 1; },
                             std::move(whenChanged))
{
}

void DriveItems::Count(QChar driveLetter, const QString &driveFolder)
{
    letter = driveLetter;
    folder = driveFolder;
    paths.clear();
    finder = {};
    found = 0;
    const QString drive = letter + u":\\"_s;
    for (int row = 1; row <= grid.Count(); ++row) {
        if (grid.Item(row).Folder.startsWith(drive))
            paths.append(grid.Item(row).FullPath().sliced(2));
    }
    pieces.Start(ExamineFile(folder + u'\\').IsFolder ? paths.size() : 0);
}

QString DriveItems::Text() const
{
    const QString text = u"%1: %2 of %3 items found"_s.arg(letter).arg(found).arg(paths.size());
    return pieces.IsThrough() ? text : text + u" so far";
}
