#pragma once

#include "playlist/Grid.h"

#include <QStringList>

/// What a preview plays: all rows; the selected ones; all audio files on disk in their folders; all rows from the first
/// selected one on. Without a selection each of them means all rows.
enum PreviewMode { PreviewAll = 0, PreviewSelected = 1, PreviewFolders = 2, PreviewFrom = 3 };

/// The full paths to be played, in playing order; files that are gone are among them.
QStringList PreviewPaths(const Grid &grid, PreviewMode mode);
