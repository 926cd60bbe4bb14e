#pragma once

#include "playlist/Grid.h"
#include "text/Progress.h"

#include <vector>

/// What rows are compared by, in the order of the choices.
enum DupBase { BaseFileName, BasePathOnly, BaseFullPath };

struct DupChoice {
    DupBase Base = BaseFullPath;
    bool IgnoreCase = false;
    /// The first one of equal rows counts too.
    bool FirstToo = false;
};

/// The numbers of the rows, ascending, that an earlier row is equal to. Texts are compared by code unit. An empty text
/// is a repetition from its first row on.
std::vector<int> FindDuplicates(const Grid &grid, const DupChoice &choice, const Progress &progress);
