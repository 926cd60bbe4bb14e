#pragma once

#include "playlist/Grid.h"

/// What a search of the playlist looks for.
struct SearchQuery {
    /// Found anywhere in a text, as it stands; not empty.
    QString Term;
    bool CaseSensitive = false;
    bool SelectedOnly = false;
    /// The columns that are looked through, from 1.
    QList<int> Columns;
};

/// The rows, from the top down, of which a column holds the term. Texts are taken as the grid shows them.
std::vector<qint16> CollectMatches(const Grid &grid, const SearchQuery &query);
