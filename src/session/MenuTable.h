#pragma once

#include <QStringView>

#include <span>

class Main;

/// One line of the menu bar, top to bottom. The one map from command to action: menu item, shortcut, icon, tooltip and
/// handler are declared here, and everything else reads it.
struct MenuEntry {
    /// 0 for a menu of the bar; each line belongs to the last line before it that is one level up.
    int Level;
    /// The control's name; empty for a separator.
    const char *Name;
    QStringView Caption;
    /// Portable text of a key sequence, empty for none.
    QStringView Shortcut;
    /// Name of the icon, empty for none.
    const char *Icon;
    /// None for a menu (it has no tip either), for an array of menu items, and for the command of a tool.
    void (Main::*Handler)();
    /// What the command does, for its tooltip.
    QStringView Tip;
    bool Checkable = false;
    /// For an array of menu items, named by their indices from 0: their handler and their captions.
    void (Main::*ArrayHandler)(int) = nullptr;
    std::span<const QStringView> Captions{};
};

std::span<const MenuEntry> MenuTable();
