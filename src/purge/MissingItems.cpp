#include "purge/MissingItems.h"

#include "platform/PlaylistLines.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include <QMap>

using namespace Qt::StringLiterals;

namespace
{
bool IsMissing(const QString &path)
{
    const bool relative = !path.contains(u':') && !path.startsWith("\\\\"_L1);
    return relative || !PathExists(path);
}
} // namespace

MissingItems FindMissing(const Grid &grid, const Progress &progress)
{
    MissingItems missing;
    progress.SetLimits(0, grid.Count());
    for (int row = 1; row <= grid.Count() && !progress.Stopped(); ++row) {
        const QString path = grid.Item(row).FullPath();
        if (IsMissing(path)) {
            missing.Paths.append(path);
            missing.Rows.push_back(row);
        }
        progress.SetValue(row);
    }
    return missing;
}

QString AbsentDrivesText(const Grid &grid)
{
    QMap<QChar, int> rowsOf;
    for (int row = 1; row <= grid.Count(); ++row) {
        const QString &folder = grid.Item(row).Folder;
        if (HasDrive(folder))
            ++rowsOf[folder[0]];
    }
    QString text;
    int absent = 0;
    for (auto drive = rowsOf.cbegin(); drive != rowsOf.cend(); ++drive) {
        if (PathExists(drive.key() + u":\\"_s))
            continue;
        const QString lie = *drive == 1 ? u" of them lies on "_s : u" of them lie on "_s;
        text += (absent == 0 ? QString() : u", "_s) + GroupedDigits(*drive) + (absent == 0 ? lie : u" on "_s) +
                drive.key() + u':';
        ++absent;
    }
    if (absent == 0)
        return {};
    return text + (absent == 1 ? u", which is not there"_s : u", which are not there"_s);
}
