#pragma once

#include "platform/Host.h"

/// The real host: HeadlessHost with Qt's dialogs and the desktop's programs behind its prompts and shell. Needs a
/// QApplication. Dialogs are owned by the active window.
Host QtHost(const QString &applicationName);
