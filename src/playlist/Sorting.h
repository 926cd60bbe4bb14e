#pragma once

#include "playlist/Grid.h"

#include <optional>

/// What the cells of a column are sorted as.
enum SortType { SortNumber = 0, SortText = 1, SortDate = 2 };

/// Raised when a cell cannot be read as what the column is sorted as; the rows are as they were.
class NotSortable : public std::runtime_error
{
public:
    NotSortable();
};

/// What a click on a column's header sorts on: the hidden numbers behind the texts of time and size.
struct SortChoice {
    int Column;
    SortType Type;
};
SortChoice SortChoiceOf(int clickedColumn);

/// Sorts the rows by a column (from 1): ascending, or the other way round when it already was sorted by this one. Text
/// compares without regard to case, empty cells are the number 0, equal rows keep their order. Raises NotSortable.
void SortGrid(Grid &grid, int column, SortType type);
