#pragma once

#include <QString>

#include <optional>

/// The address in an Internet shortcut file (".url"): the line behind "[InternetShortcut]" without "URL=". A file that
/// does not have one gives its last line, an empty one its own path, and one that cannot be read nothing.
std::optional<QString> InternetShortcutTarget(const QString &path);
