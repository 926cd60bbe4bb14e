#pragma once

#include "platform/Host.h"

/// The prompts as Qt's dialogs, owned by the active window.
Prompts QtPrompts();

/// A file filter "Text (*.a)|*.a|More|*.b;*.c|" in Qt's form "Text (*.a);;More (*.b *.c)".
QString QtFilter(const QString &filter);
