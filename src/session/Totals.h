#pragma once

#include "playlist/Grid.h"

/// What one pass over the rows tells the status bar and the commands. Lengths in seconds, sizes in bytes.
struct PlaylistTotals {
    int Count = 0;
    int SelectedCount = 0;
    bool FirstSelected = false;
    bool LastSelected = false;
    qint64 Length = 0;
    qint64 Size = 0;
    qint64 SelectedLength = 0;
    qint64 SelectedSize = 0;
    /// The one selected row, else the row with the focus; 0 for none.
    int CurrentRow = 0;
    /// Length of the rows up to CurrentRow, itself included.
    qint64 RunningTime = 0;
};

/// A missing row has no numbers of its own: it counts with those of the row before it, 0 before the first measured
/// row. The totals are defined so.
PlaylistTotals CountTotals(const Grid &grid);

/// "1 item", "1,204 items".
QString CountedItems(qint64 count);
