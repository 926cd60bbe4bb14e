#include "platform/Files.h"

#include "platform/windows/WindowsApi.h"

namespace
{

constexpr DWORD SettableBits =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
constexpr DWORD ShownBits = SettableBits | FILE_ATTRIBUTE_DIRECTORY;
// Whether the file is indexed is none of the program's business and stays.
constexpr DWORD PreservedBits = FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

} // namespace

int FileAttributes(const QString &path)
{
    const DWORD found = path.isEmpty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(WidePath(path).c_str());
    if (found == INVALID_FILE_ATTRIBUTES)
        return -1;
    const DWORD shown = found & ShownBits;
    return shown == 0 ? static_cast<int>(AttributeNormal) : static_cast<int>(shown);
}

bool SetFileAttributes(const QString &path, int attributes)
{
    if (path.isEmpty())
        return false;
    const std::wstring wide = WidePath(path);
    const DWORD old = GetFileAttributesW(wide.c_str());
    if (old == INVALID_FILE_ATTRIBUTES)
        return false;
    const DWORD bits = (static_cast<DWORD>(attributes) & SettableBits) | (old & PreservedBits);
    return SetFileAttributesW(wide.c_str(), bits == 0 ? FILE_ATTRIBUTE_NORMAL : bits) != 0;
}
