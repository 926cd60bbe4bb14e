#pragma once

#include "platform/Drives.h"

/// Whether file names may hold what Windows forbids: colons, quotes, control characters, bytes that are no text. Where
/// paths have slashes they may.
inline bool NamesHoldAnything()
{
    return ToHostBytes(QStringLiteral("a\\b")) == "a/b";
}
