#pragma once

#include <QByteArray>

/// The id of version 2.3 for a frame of version 2.2. Frames that 2.3 does not know become experimental ones: "X" and
/// their old id.
QByteArray ID3v23Id(const QByteArray &id);

/// A picture of version 2.2, which names its format in three characters, as one of version 2.3, with a MIME type.
/// Empty when it is cut.
QByteArray ID3v23Picture(const QByteArray &data);
