#pragma once

#include <QByteArray>

/// The plain way to a stream's length: every frame of a file held in memory. What ReadMPEG is measured against.
struct FullWalk {
    explicit FullWalk(const QByteArray &file);

    bool HasAudio = false;
    double Seconds = 0;
    /// Mean kilobits per second of all frames with sound; 0 when there are none.
    double Kilobits = 0;
    bool Variable = false;
};

/// Silent frames of layer III, MPEG 1, 44,100 hertz, stereo, of the rate with this index (1 to 14), padded as encoders
/// do it, or never.
QByteArray SilentStream(int rateIndex, int frames, bool padding = true);
