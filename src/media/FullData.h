#pragma once

#include <QString>

struct VorbisTag;

/// Whether files that are no MP3 are opened for their data too; off at first. One switch for the whole process.
bool FullData();
void SetFullData(bool on);

/// What a file that is no MP3 holds, read by TagLib.
struct AudioData {
    /// Milliseconds.
    int Length = 0;
    /// Kilobits a second, on average.
    int Bitrate = 0;
    /// Hertz.
    int SampleRate = 0;
    int Channels = 0;
};

/// False for what cannot be opened, holds no audio or is larger than TagLib can address on this host.
bool ReadAudioData(const QString &path, AudioData &data);
/// Fills the fields for which the file has a comment; false if there is none.
bool ReadComments(const QString &path, VorbisTag &tag);
