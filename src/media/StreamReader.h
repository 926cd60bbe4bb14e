#pragma once

#include "media/FrameHeader.h"
#include "platform/Files.h"

/// What is known of the stream of one MPEG audio file.
struct StreamFacts {
    /// The first frame that carries sound.
    FrameHeader First;
    /// Playing time.
    double Seconds = 0;
    /// Kilobits per second; for a variable rate the rounded average, for free format the measured one.
    int Kilobits = 0;
    bool Variable = false;
};

enum class StreamState { Known, NoAudio, Unreadable };

/// Reads the stream of an open file. Facts are set only when the state is Known. Linear in the file's size at worst;
/// a file whose front tells its length takes two or three reads.
StreamState ReadStream(const InputFile &file, StreamFacts &facts);
