#pragma once

#include <QStringList>

#include <vector>

class Grid;

/// Lets every row follow its file from a path to the path beside it in the other list, in order; equal paths mean
/// nothing. A row counts by the file that it reaches, whatever letter or link leads to its folder, and in whatever case
/// its name is written where the file system ignores case. Returns the rows that follow, in their order.
std::vector<int> FollowFiles(Grid &grid, const QStringList &from, const QStringList &to);
