#pragma once

#include "media/FileWindow.h"

/// Where the audio can begin at the earliest: behind every ID3v2 and APE tag at the file's front. A tag that claims
/// more than the file holds is passed over, and the search begins at its own first byte.
std::int64_t SkipLeadingTags(FileWindow &window, std::int64_t fileSize);

/// Where the audio ends: before every ID3v1, APE, Lyrics3 and ID3v2 tag at the file's end, in whatever order they
/// stand, but never before start.
std::int64_t FindAudioEnd(const InputFile &file, std::int64_t start);
