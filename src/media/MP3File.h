#pragma once

#include "media/StreamReader.h"

#include <QString>

#include <stdexcept>

/// Raised by the tag library; what() and Text() are for a person to read.
class MediaError : public std::runtime_error
{
public:
    explicit MediaError(const QString &message) : std::runtime_error(message.toStdString()), text(message) {}
    const QString &Text() const { return text; }

private:
    QString text;
};

/// In-memory model of one MPEG audio file's stream data. Every operation that touches the disk takes the path anew and
/// leaves nothing open.
class MP3File
{
public:
    /// Reads only the MPEG stream data. Raises MediaError for a missing or locked file and for one that holds no MPEG
    /// audio; the stream properties are then those of a new object, but FileSize stays that of the file if it could
    /// be opened.
    void ReadMPEG(const QString &path);

    /// Playing time in seconds, with fractions.
    double SongLength() const;
    /// "I", "II" or "III".
    QString Layer() const;
    /// "1.0", "2.0" or "2.5".
    QString MPEGVersion() const;
    /// Kilobits per second as a number without a unit; for variable bit rate the rounded average, a blank and "VBR".
    QString Bitrate() const;
    /// Hertz.
    double SampleRate() const;
    bool CRCProtection() const;
    bool Copyrighted() const;
    bool Original() const;
    /// "None", "50/15 microsec" or "CCIT J.17".
    QString Emphasis() const;
    /// "Stereo", "Joint Stereo", "Dual Channel" or "Single Channel".
    QString Mode() const;
    /// Bytes of the file that ReadMPEG opened; 0 when it could not be opened. Saves its caller a second question to
    /// the disk.
    qint64 FileSize() const;

private:
    /// No layer (0) until a stream was read.
    StreamFacts stream;
    qint64 fileSize = 0;
};
