#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Bytes of a frame's header.
constexpr std::size_t FrameHeaderBytes = 4;

enum class MPEGVersion : std::uint8_t { V1, V2, V25 };
enum class ChannelMode : std::uint8_t { Stereo, JointStereo, DualChannel, SingleChannel };

/// What the four bytes at the start of a frame say.
struct FrameHeader {
    MPEGVersion Version = MPEGVersion::V1;
    ChannelMode Mode = ChannelMode::Stereo;
    /// 1, 2 or 3.
    int Layer = 0;
    /// Bits per second; 0 for free format.
    int BitRate = 0;
    /// Hertz.
    int SampleRate = 0;
    /// Samples of one channel in the frame.
    int Samples = 0;
    /// Bytes of a padding slot.
    int Slot = 1;
    bool Padded = false;
    bool CRC = false;
    bool Copyrighted = false;
    bool Original = false;
    /// 0 none, 1 50/15 microseconds, 2 reserved, 3 CCIT J.17.
    int Emphasis = 0;

    /// Slots of all frames of this rate, times the sample rate, per frame: the exact mean length of a frame.
    std::int64_t SlotsTimesRate() const { return std::int64_t{Samples} / 8 / Slot * BitRate; }
    /// Bytes without and with this frame's padding; 0 for free format.
    int UnpaddedSize() const { return static_cast<int>(SlotsTimesRate() / SampleRate) * Slot; }
    int Size() const { return BitRate == 0 ? 0 : UnpaddedSize() + (Padded ? Slot : 0); }
};

/// False when the four bytes cannot be a frame's header.
bool ParseFrameHeader(const unsigned char *bytes, FrameHeader &header);

/// The frames of one stream, told from anything else by version, layer and sample rate, with the length of each. A
/// stream is of free format throughout or nowhere.
class FramePattern
{
public:
    FramePattern() = default;
    /// From the four bytes of a frame; unpaddedSize is the measured length of a free format frame, else ignored.
    FramePattern(const unsigned char *bytes, int unpaddedSize);

    /// Bytes of the frame whose header stands there; 0 when it is none of this stream.
    int SizeOf(const unsigned char *bytes) const
    {
        if ((Word(bytes) & StreamBits) != stream)
            return 0;
        const int size = sizes[bytes[2] >> 4];
        return size == 0 || (bytes[2] & 2) == 0 ? size : size + slot;
    }
    /// Bytes of the shortest and of the longest frame of this stream that can be.
    int Smallest() const { return sizes[0] != 0 ? sizes[0] : sizes[1]; }
    int Largest() const { return (sizes[0] != 0 ? sizes[0] : sizes[14]) + slot; }
    /// Bits per second of that frame; 0 for free format.
    int BitRateOf(const unsigned char *bytes) const { return rates[bytes[2] >> 4]; }

private:
    static constexpr std::uint32_t StreamBits = 0xFFFE0C00;
    static std::uint32_t Word(const unsigned char *bytes)
    {
        return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
               static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
    }

    std::uint32_t stream = 0;
    int slot = 1;
    std::array<int, 16> sizes{};
    std::array<int, 16> rates{};
};

/// Whether two possible headers are of one stream: version, layer, sample rate, and both or neither of free format.
bool SameStream(const FrameHeader &one, const FrameHeader &other);
