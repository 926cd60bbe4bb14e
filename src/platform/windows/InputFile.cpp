#include "platform/Files.h"

#include "platform/windows/WindowsApi.h"

#include <algorithm>
#include <bit>

namespace
{

HANDLE HandleOf(std::intptr_t handle)
{
    return std::bit_cast<HANDLE>(handle);
}

/// Reads at a place; the bytes read, 0 at the end, -1 on failure.
std::ptrdiff_t ReadPiece(HANDLE file, std::int64_t offset, std::span<unsigned char> buffer)
{
    constexpr std::size_t mostBytes = 1U << 30;
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD count = 0;
    if (!ReadFile(file, buffer.data(), static_cast<DWORD>(std::min(buffer.size(), mostBytes)), &count, &place))
        return GetLastError() == ERROR_HANDLE_EOF ? 0 : -1;
    return static_cast<std::ptrdiff_t>(count);
}

} // namespace

InputFile::~InputFile()
{
    if (handle != -1)
        CloseHandle(HandleOf(handle));
}

bool InputFile::Open(const QString &path)
{
    if (handle != -1)
        CloseHandle(HandleOf(handle));
    handle = -1;
    facts = {.Size = 0};
    const HANDLE file =
        CreateFileW(WidePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DiskFacts found = GetFileType(file) == FILE_TYPE_DISK ? FactsFrom(file) : DiskFacts();
    LARGE_INTEGER size{};
    if (found.Size < 0 && GetFileType(file) == FILE_TYPE_DISK && GetFileSizeEx(file, &size))
        found.Size = size.QuadPart;
    if (found.Size < 0) {
        CloseHandle(file);
        return false;
    }
    handle = std::bit_cast<std::intptr_t>(file);
    facts = found;
    return true;
}

std::ptrdiff_t InputFile::ReadAt(std::int64_t offset, std::span<unsigned char> buffer) const
{
    if (handle == -1 || offset < 0)
        return -1;
    std::size_t done = 0;
    while (done < buffer.size()) {
        const std::int64_t place = offset + static_cast<std::int64_t>(done);
        const std::ptrdiff_t count = ReadPiece(HandleOf(handle), place, buffer.subspan(done));
        if (count < 0)
            return -1;
        done += static_cast<std::size_t>(count);
        if (count == 0 || place + count >= facts.Size)
            break;
    }
    return static_cast<std::ptrdiff_t>(done);
}
