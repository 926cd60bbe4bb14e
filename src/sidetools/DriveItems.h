#pragma once

#include "session/InPieces.h"
#include "text/EntryFinder.h"

#include <QChar>
#include <QString>
#include <QStringList>

#include <functional>

class Grid;

/// Counts what a folder would bring back of the rows that lie on a drive if it stood for the drive.
class DriveItems
{
public:
    /// Each time that more is known, whenChanged is called.
    DriveItems(const Grid &playlist, std::function<void()> whenChanged);

    /// Starts anew with the drive of a letter and a folder (inside form).
    void Count(QChar driveLetter, const QString &driveFolder);
    void Stop() { pieces.Stop(); }
    /// How many of how many, as far as is known.
    QString Text() const;

private:
    const Grid &grid;
    QChar letter;
    QString folder;
    /// The paths of the rows on the drive, without it.
    QStringList paths;
    EntryFinder finder;
    qsizetype found = 0;
    InPieces pieces;
};
