#pragma once

#include "playlist/Grid.h"

#include <QStringList>

/// What is told of a whole playlist. Sizes in bytes, lengths in seconds.
struct PlaylistFigures {
    int FileCount = 0;
    /// Neighbouring rows of one folder count once.
    int FolderCount = 0;
    /// What the playlist would take when written with bare paths, a character a byte.
    qint64 PlaylistSize = 0;
    /// Of the files that exist now.
    qint64 TotalSize = 0;
    int MissingCount = 0;
    qint64 TotalSeconds = 0;
    /// The averages are taken over the files that exist, those without a length too; 0 when there are none.
    qint64 AverageSeconds = 0;
    double AverageSize = 0;
    /// ">" when the total is a lower bound, else empty.
    QString SizeMark;
    QString TimeMark;
    /// The folder that all items have in common, or that there is none.
    QString RelativeFolder;
    QString PlaylistName;
};

/// The figures of a playlist, from its rows, their full paths and the disk, which is asked once a row. The playlist's
/// own path is empty for one without a file.
PlaylistFigures ComputeFigures(const Grid &grid, const QStringList &paths, const QString &playlistPath);
