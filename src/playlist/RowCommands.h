#pragma once

#include "platform/Host.h"
#include "playlist/Grid.h"

// The commands of the Edit menu on the rows of a grid. Each is one pass or a few, and tells the view once.

/// What a command that moves rows did.
struct RowMove {
    /// False when nothing could move.
    bool Moved = false;
    /// The row that the view should follow; 0 for none.
    int LastRow = 0;
};

/// Moves the selected rows one place up as blocks. Nothing moves while row 1 is selected.
RowMove MoveUp(Grid &grid);
/// Moves the selected rows one place down as blocks. Nothing moves while the last row is selected.
RowMove MoveDown(Grid &grid);
/// Moves the selected rows before a row, or behind the last one, in their order; the others keep theirs.
RowMove MoveTo(Grid &grid, int before);
/// The same to the top, or the bottom.
RowMove MoveToTop(Grid &grid);
RowMove MoveToBottom(Grid &grid);

/// Raised by a shuffle whose draws ran out; the rows are as they were.
class ShuffleFailed : public std::runtime_error
{
public:
    ShuffleFailed();
};
/// Exchanges the selected rows among their places, one exchange after the other, in an order drawn from the clock's
/// generator. Raises ShuffleFailed.
RowMove ShuffleSelection(Grid &grid, const Clock &clock);

void SelectAll(Grid &grid);
void SelectNone(Grid &grid);
void InvertSelection(Grid &grid);
/// Counted from the bottom, drops the first selected row, keeps the second, drops the third, and so on.
void AlternateSelection(Grid &grid);
/// Replaces the selection: each row with an even chance, until more than half of the rows are chosen. The generator is
/// reseeded for each row, so that the result comes in runs.
void RandomSelection(Grid &grid, const Clock &clock);
/// A selection in a folder grows to all rows of that folder.
void SelectInFolder(Grid &grid);
void SelectCheckMarked(Grid &grid);
/// Gives the selected rows a mark, or the normal icon; missing rows keep theirs.
void SetCheckMark(Grid &grid, SmallIcon icon);
