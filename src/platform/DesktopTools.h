#pragma once

#include "platform/Host.h"

/// Gives a shell this host's programs for what no document stands for: search, volume, system information.
void AddDesktopTools(Shell &shell);
