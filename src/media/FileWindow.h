#pragma once

#include "platform/Files.h"

#include <array>
#include <memory>
#include <span>

/// A file seen through one buffer: what lies in it is not read again.
class FileWindow
{
public:
    /// readAhead: bytes to read at once at least; 0 reads just what is asked for.
    FileWindow(const InputFile &input, std::size_t readAhead) : file(input), ahead(readAhead) {}
    FileWindow(const FileWindow &) = delete;
    FileWindow &operator=(const FileWindow &) = delete;

    void SetAhead(std::size_t bytes) { ahead = bytes; }
    /// At least count bytes from offset, and all that the buffer holds behind them; fewer only where the file ends or
    /// cannot be read. Good until the next call.
    std::span<const unsigned char> At(std::int64_t offset, std::size_t count);
    /// Whether the host failed to read.
    bool Failed() const { return failed; }

private:
    const InputFile &file;
    std::size_t ahead;
    // Most files need no more than this.
    std::array<unsigned char, 4096> inside;
    std::unique_ptr<unsigned char[]> larger;
    std::span<unsigned char> buffer = inside;
    std::int64_t start = 0;
    std::size_t length = 0;
    bool failed = false;
};
