#pragma once

#include <cstdint>
#include <span>

/// What an encoder wrote into a first frame without sound: the length of the stream that follows.
struct RateHeader {
    std::int64_t Frames = 0;
    /// Bytes of the stream, this frame included.
    std::int64_t Bytes = 0;
    /// Samples that the encoder put before and behind the sound.
    int Delay = 0;
    int Padding = 0;
    /// The encoder says that all frames have one rate.
    bool Constant = false;
};

/// Reads the Xing, Info or VBRI header of a frame; false when it has none, with Frames and Bytes 0 for a header that
/// leaves one of them out.
bool ReadRateHeader(std::span<const unsigned char> frame, RateHeader &header);
