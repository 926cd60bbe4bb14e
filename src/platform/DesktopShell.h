#pragma once

#include "platform/Host.h"

/// The desktop's own programs on this host.
Shell DesktopShell();
