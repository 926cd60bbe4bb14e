#pragma once

class Main;

// The exchange with the bookmark file of the player.

/// Adds the items of the bookmark file, which the user is asked for when it is not there.
void LoadBookmarks(Main &main);
/// Replaces the bookmark file by the playlist, after a copy of it beside it.
void SaveBookmarks(Main &main);
/// Lets the user point to the bookmark file. True when one was chosen.
bool ChooseBookmarkFile(Main &main);
