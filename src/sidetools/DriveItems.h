#pragma once

#include <QChar>
#include <QString>

class Grid;

struct DriveItems {
    /// Rows on the drive.
    int All = 0;
    /// Those whose file would be there.
    int Found = 0;
};

/// What a folder (inside form) would bring back of the rows that lie on the drive of a letter if it stood for the
/// drive.
DriveItems CountDriveItems(const Grid &grid, QChar letter, const QString &folder);
