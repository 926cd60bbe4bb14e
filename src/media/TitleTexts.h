#pragma once

#include <QString>

class MP3File;

/// Reads the tags and the stream of a file; false, and nothing raised, for all but a file that could be read.
bool GetID3Tag(const QString &path, MP3File &file);

/// Artist and title of a file's tags, cleaned, as "Artist - Title": the artist alone without a title, "Unknown Artist"
/// without an artist. Empty when the file cannot be read or has neither.
QString ID3TitleText(const QString &path);
QString OGGTitleText(const QString &path);
