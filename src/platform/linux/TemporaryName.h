#pragma once

#include <QByteArray>

/// A name in the folder of a host path for a file that stands there for a moment only; a new one at each call.
QByteArray TemporaryName(const QByteArray &beside);
