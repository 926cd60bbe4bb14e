#pragma once

class Main;
class ToolForm;

/// A tool of the program, as the list that `Main` is given names it: a command of the menu table without a tool stands
/// disabled.
struct Tool {
    /// Control name of the tool's command.
    const char *Command;
    /// The object name of its window; none for a tool that has no window.
    const char *Window;
    /// Makes the window, on first use; it stays loaded.
    ToolForm *(*Make)(Main &main);
    /// Does what the command of a tool without a window does.
    void (*Run)(Main &main) = nullptr;
    /// The command asks for items when the playlist has none.
    bool NeedsItems = false;
    /// The command is shown only where this holds, which is asked each time its menu opens; none for always.
    bool (*Available)(const Main &main) = nullptr;
};
