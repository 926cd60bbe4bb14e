#pragma once

#include <QByteArray>
#include <QString>

/// Bytes of a text file of this program. On Windows the system's ANSI code page, elsewhere UTF-8 without a mark. A
/// text that the page cannot hold is UTF-8 with a byte order mark instead, so that no path silently points elsewhere.
QByteArray EncodeText(const QString &text);

/// Text of a file somebody wrote: by its byte order mark (UTF-8, UTF-16), else UTF-8 if the bytes are valid UTF-8,
/// else Windows-1252 (on Windows the ANSI code page), line by line where most lines are UTF-8. Never fails.
QString DecodeText(const QByteArray &bytes);

/// Single bytes of a fixed record and back: the ANSI code page on Windows, Windows-1252 elsewhere; all 256 values
/// survive in both directions. A character the page does not hold becomes "?".
QByteArray EncodeRecordText(const QString &text);
QString DecodeRecordText(const QByteArray &bytes);
