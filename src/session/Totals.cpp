#include "session/Totals.h"

#include "text/FormatText.h"

using namespace Qt::StringLiterals;

PlaylistTotals CountTotals(const Grid &grid)
{
    PlaylistTotals totals;
    totals.Count = grid.Count();
    const int focusedRow = grid.FocusedRow();
    int selectedRow = 0;
    qint64 runningToFocus = 0;
    qint64 runningToSelected = 0;
    qint64 length = 0;
    qint64 size = 0;
    for (int row = 1; row <= totals.Count; ++row) {
        const PlaylistItem &item = grid.Item(row);
        if (item.Measured()) {
            length = item.Length;
            size = item.Size;
        }
        totals.Length += length;
        totals.Size += size;
        if (row == focusedRow)
            runningToFocus = totals.Length;
        if (item.Selected) {
            ++totals.SelectedCount;
            totals.SelectedLength += length;
            totals.SelectedSize += size;
            selectedRow = row;
            runningToSelected = totals.Length;
        }
    }
    totals.FirstSelected = totals.SelectedCount > 0 && grid.Item(1).Selected;
    totals.LastSelected = selectedRow == totals.Count && totals.Count > 0;
    const bool one = totals.SelectedCount == 1;
    totals.CurrentRow = one ? selectedRow : focusedRow;
    totals.RunningTime = one ? runningToSelected : runningToFocus;
    return totals;
}

QString CountedItems(qint64 count)
{
    return Counted(count, u"item"_s);
}
