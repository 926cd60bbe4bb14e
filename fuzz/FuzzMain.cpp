#include "FuzzTarget.h"

#include <cstdint>

/// The entry that libFuzzer calls; a fuzzing program holds one target.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzTarget::All().first()(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
