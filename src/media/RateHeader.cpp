#include "media/RateHeader.h"

#include "media/StreamBytes.h"

namespace
{
constexpr std::size_t XingPlaces[] = {13, 15, 21, 23, 36, 38};
constexpr std::size_t VBRIPlace = 36;
constexpr std::size_t TableBytes = 100;

Bytes Behind(Bytes bytes, std::size_t count)
{
    return bytes.size() > count ? bytes.subspan(count) : Bytes();
}

std::int64_t BigEndian(Bytes bytes)
{
    return std::int64_t{bytes[0]} << 24 | std::int64_t{bytes[1]} << 16 | std::int64_t{bytes[2]} << 8 | bytes[3];
}

// The encoder's extension: nine characters of its name, and twelve bytes further twice twelve bits of samples.
void ReadExtension(Bytes bytes, RateHeader &header)
{
    constexpr std::size_t DelayPlace = 21;
    if (bytes.size() < DelayPlace + 3)
        return;
    for (const unsigned char letter : bytes.first(4)) {
        if (letter < 0x20 || letter > 0x7E)
            return;
    }
    const Bytes samples = bytes.subspan(DelayPlace);
    header.Delay = samples[0] << 4 | samples[1] >> 4;
    header.Padding = (samples[1] & 15) << 8 | samples[2];
}

void ReadXing(Bytes bytes, RateHeader &header)
{
    enum Parts { HasFrames = 1, HasBytes = 2, HasTable = 4, HasQuality = 8 };
    if (bytes.size() < 8)
        return;
    const std::int64_t parts = BigEndian(bytes.subspan(4));
    bytes = Behind(bytes, 8);
    std::int64_t *const values[] = {&header.Frames, &header.Bytes};
    for (const int part : {HasFrames, HasBytes}) {
        if ((parts & part) == 0)
            continue;
        if (bytes.size() < 4)
            return;
        *values[part == HasFrames ? 0 : 1] = BigEndian(bytes);
        bytes = Behind(bytes, 4);
    }
    bytes = Behind(bytes, ((parts & HasTable) != 0 ? TableBytes : 0) + ((parts & HasQuality) != 0 ? 4 : 0));
    ReadExtension(bytes, header);
}
} // namespace

bool ReadRateHeader(std::span<const unsigned char> frame, RateHeader &header)
{
    header = RateHeader();
    for (const std::size_t place : XingPlaces) {
        const Bytes bytes = Behind(frame, place);
        header.Constant = Starts(bytes, "Info");
        if (header.Constant || Starts(bytes, "Xing")) {
            ReadXing(bytes, header);
            return true;
        }
    }
    const Bytes bytes = Behind(frame, VBRIPlace);
    if (!Starts(bytes, "VBRI"))
        return false;
    if (bytes.size() >= 18) {
        header.Bytes = BigEndian(bytes.subspan(10));
        header.Frames = BigEndian(bytes.subspan(14));
    }
    return true;
}
