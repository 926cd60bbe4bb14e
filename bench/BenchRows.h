#pragma once

#include "playlist/Grid.h"

#include <vector>

// Playlists as the benchmarks of rows and windows take them.

inline constexpr int FullList = Grid::MaxRows;
/// What a row costs in a full list is held against what it costs in a list of so many.
inline constexpr int ShortList = 10000;

/// Files of albums of twelve in one folder each, in the order of their folders' random names; one in 50 is missing.
std::vector<FileRecord> BenchRecords(int count);

/// What opening a playlist takes without a window: its lines, the facts of their files, the rows.
void LoadPlaylist(Grid &grid, const QString &path);
