#pragma once

#include <cstring>
#include <span>
#include <string_view>

/// A stretch of a file.
using Bytes = std::span<const unsigned char>;

inline bool Starts(Bytes bytes, std::string_view mark)
{
    return bytes.size() >= mark.size() && std::memcmp(bytes.data(), mark.data(), mark.size()) == 0;
}
