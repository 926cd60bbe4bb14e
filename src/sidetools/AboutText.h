#pragma once

#include "platform/Host.h"

/// What the report of a fault should tell of the program, a line each: version, what it is built with, what it runs on,
/// and where it keeps its data.
QString AboutText(const Host &host, const QString &sessionFile);
