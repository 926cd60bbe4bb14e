#pragma once

class Main;

// The fixed entries of the menu of shortcuts.

/// Opens the desktop's file search.
void FindFiles(Main &main);
/// Opens the folder that the files of the playlist have in common, or the current one when they have none.
void ExploreFiles(Main &main);
void OpenVolumeControl(Main &main);
