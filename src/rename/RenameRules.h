#pragma once

#include "rename/RenameSettings.h"

#include <functional>

/// The text that a tag gives for a name, by the file's path and its extension in lower case; empty for none.
using TitleSource = std::function<QString(const QString &path, const QString &extension)>;
/// Reads the tag of an ".mp3" or ".ogg" file.
QString TagTitle(const QString &path, const QString &extension);

/// Settings made ready for many names.
struct RenameRules {
    RenameRules(const RenameSettings &settings, TitleSource titles = TagTitle); // NOLINT: settings are rules

    RenameSettings Settings;
    /// Those that are enabled, in order.
    std::vector<RenameRule> Enabled;
    TitleSource Titles;
};

/// The number with leading zeros, as wide as a total of up to 9,999; digits that cannot be padded to that width come
/// back as they are.
QString FormatSequenceNumber(int number, int total);

/// The full path that the rules make of a path. With commit the file is renamed, and a refusal gives the path back
/// unchanged, as does a name that would be empty or beyond all measure. Nothing of the new name is checked but what
/// StaysInFolder asks.
QString ApplyRenameRules(const RenameRules &rules, const QString &path, int number, int total, bool commit);

/// Whether a new path is one more name in the folder of the path: no part of it is a separator or leads elsewhere. Only
/// such a rename is tried, since a row keeps its folder.
bool StaysInFolder(const QString &path, const QString &newPath);
