#pragma once

#include <QByteArray>

/// The plain way to a stream's length: every frame of a file held in memory. What ReadMPEG is measured against.
struct FullWalk {
    FullWalk() = default;
    explicit FullWalk(const QByteArray &file);

    bool HasAudio = false;
    /// Of the first frame.
    int SampleRate = 0;
    qint64 Frames = 0;
    qint64 Bytes = 0;
    /// What the first frame says of the others: their number, and samples that are silence.
    qint64 Promised = 0;
    qint64 Silence = 0;
    /// Kilobits of the last frame; 0 for free format.
    int Rate = 0;
    double Seconds = 0;
    /// Mean kilobits per second of all frames with sound; 0 when there are none.
    double Kilobits = 0;
    bool Variable = false;
};

/// Silent frames, never padded; the kind is the header's second byte.
QByteArray SilentFrames(char kind, int rateIndex, int hertzIndex, int frames);

/// Silent frames of layer III, MPEG 1, stereo, of the rate with this index (1 to 14), padded as encoders do it, or
/// never, at 44,100, 48,000 or 32,000 hertz.
QByteArray SilentStream(int rateIndex, int frames, bool padding = true, int hertzIndex = 0);
