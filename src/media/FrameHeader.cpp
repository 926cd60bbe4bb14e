#include "media/FrameHeader.h"

namespace
{
// Kilobits per second by the header's index; 0 is free format, and index 15 is no frame.
constexpr int BitRates[2][3][15] = {
    {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
     {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
     {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}},
    {{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}},
};
constexpr int SampleRates[3][3] = {{44100, 48000, 32000}, {22050, 24000, 16000}, {11025, 12000, 8000}};
constexpr int NoRate = 15;

MPEGVersion VersionOf(int bits)
{
    return bits == 3 ? MPEGVersion::V1 : bits == 2 ? MPEGVersion::V2 : MPEGVersion::V25;
}

int SamplesOf(int layer, MPEGVersion version)
{
    if (layer == 1)
        return 384;
    return layer == 3 && version != MPEGVersion::V1 ? 576 : 1152;
}
} // namespace

bool ParseFrameHeader(const unsigned char *bytes, FrameHeader &header)
{
    const int versionBits = bytes[1] >> 3 & 3;
    const int layerBits = bytes[1] >> 1 & 3;
    const int rateIndex = bytes[2] >> 4;
    const int sampleIndex = bytes[2] >> 2 & 3;
    if (bytes[0] != 0xFF || (bytes[1] & 0xE0) != 0xE0 || versionBits == 1 || layerBits == 0 || rateIndex == NoRate ||
        sampleIndex == 3)
        return false;
    header.Version = VersionOf(versionBits);
    header.Layer = 4 - layerBits;
    header.BitRate = BitRates[header.Version == MPEGVersion::V1 ? 0 : 1][header.Layer - 1][rateIndex] * 1000;
    header.SampleRate = SampleRates[static_cast<int>(header.Version)][sampleIndex];
    header.Samples = SamplesOf(header.Layer, header.Version);
    header.Slot = header.Layer == 1 ? 4 : 1;
    header.Padded = (bytes[2] & 2) != 0;
    header.CRC = (bytes[1] & 1) == 0;
    header.Mode = static_cast<ChannelMode>(bytes[3] >> 6);
    header.Copyrighted = (bytes[3] & 8) != 0;
    header.Original = (bytes[3] & 4) != 0;
    header.Emphasis = bytes[3] & 3;
    return true;
}

bool SameStream(const FrameHeader &one, const FrameHeader &other)
{
    return one.Version == other.Version && one.Layer == other.Layer && one.SampleRate == other.SampleRate &&
           (one.BitRate == 0) == (other.BitRate == 0);
}

FramePattern::FramePattern(const unsigned char *bytes, int unpaddedSize) : stream(Word(bytes) & StreamBits)
{
    FrameHeader header;
    if (!ParseFrameHeader(bytes, header))
        return;
    slot = header.Slot;
    if (header.BitRate == 0) {
        sizes[0] = unpaddedSize;
        return;
    }
    const int *list = BitRates[header.Version == MPEGVersion::V1 ? 0 : 1][header.Layer - 1];
    for (std::size_t index = 1; index < NoRate; ++index) {
        header.BitRate = list[index] * 1000;
        rates[index] = header.BitRate;
        sizes[index] = header.UnpaddedSize();
    }
}
