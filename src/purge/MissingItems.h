#pragma once

#include "playlist/Grid.h"
#include "text/Progress.h"

#include <QStringList>

#include <vector>

/// The rows whose file does not exist, in grid order.
struct MissingItems {
    /// Full paths.
    QStringList Paths;
    /// The number of each row.
    std::vector<int> Rows;
};

/// A relative path always counts as missing, also when a file answers to it. When stopped: those found so far.
MissingItems FindMissing(const Grid &grid, const Progress &progress);

/// On which drives that are not there rows lie, and how many: "1,204 of them lie on e:, which is not there". Empty when
/// there are none. Asks for each drive once.
QString AbsentDrivesText(const Grid &grid);
