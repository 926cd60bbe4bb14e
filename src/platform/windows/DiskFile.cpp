#include "platform/DiskFile.h"

#include "platform/windows/WindowsApi.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace
{

constexpr DWORD AnySharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::int64_t MostBytes = 1 << 30;
// Not every version of the header names it.
constexpr DWORD DiskQuotaExceeded = 1295;

HANDLE HandleOf(std::intptr_t handle)
{
    return std::bit_cast<HANDLE>(handle);
}

std::intptr_t OpenWith(const std::wstring &path, DWORD sharing, DWORD disposition)
{
    return std::bit_cast<std::intptr_t>(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, sharing, nullptr,
                                                    disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

OVERLAPPED PlaceOf(std::int64_t offset)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

} // namespace

DiskFacts FactsFrom(HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION facts;
    if (!GetFileInformationByHandle(file, &facts))
        return {};
    const auto joined = [](DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; };
    return {
        facts.dwVolumeSerialNumber, joined(facts.nFileIndexHigh, facts.nFileIndexLow), facts.nNumberOfLinks,
        static_cast<std::int64_t>(joined(facts.nFileSizeHigh, facts.nFileSizeLow)),
        static_cast<std::int64_t>(joined(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime))};
}

DiskFacts DiskFactsOf(const QString &path)
{
    const OwnedHandle open(OpenForFacts(WidePath(path)));
    return open.IsOpen() ? FactsFrom(open.Get()) : DiskFacts();
}

bool IsAbsent(const QString &path)
{
    if (GetFileAttributesW(WidePath(path).c_str()) != INVALID_FILE_ATTRIBUTES)
        return false;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

FileFault LastFault()
{
    switch (GetLastError()) {
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
        return FileFault::Rights;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_UNABLE_TO_REMOVE_REPLACED:
        return FileFault::Held;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case DiskQuotaExceeded:
    case ERROR_FILE_TOO_LARGE:
        return FileFault::DiskFull;
    default:
        return FileFault::Other;
    }
}

bool DiskFile::Open(const QString &path)
{
    Close();
    handle = OpenWith(WidePath(path), AnySharing, OPEN_EXISTING);
    if (IsOpen() && GetFileType(HandleOf(handle)) != FILE_TYPE_DISK)
        Close();
    return IsOpen();
}

bool DiskFile::Create(const QByteArray &hostPath, bool /*isPrivate*/)
{
    Close();
    handle = OpenWith(WidePath(QString::fromUtf8(hostPath)), 0, CREATE_NEW);
    return IsOpen();
}

bool DiskFile::Close()
{
    const std::intptr_t file = std::exchange(handle, -1);
    return file == -1 || CloseHandle(HandleOf(file)) != 0;
}

bool DiskFile::HoldAlone()
{
    // What was created is not shared. Who opens what another one has left may not be alone; both then do the same.
    return true;
}

DiskFacts DiskFile::Facts() const
{
    return FactsFrom(HandleOf(handle));
}

bool DiskFile::ReadAt(std::int64_t offset, std::span<char> buffer) const
{
    while (!buffer.empty()) {
        OVERLAPPED place = PlaceOf(offset);
        const auto most = static_cast<DWORD>(std::min(static_cast<std::int64_t>(buffer.size()), MostBytes));
        DWORD count = 0;
        if (!ReadFile(HandleOf(handle), buffer.data(), most, &count, &place))
            return false;
        if (count == 0) {
            SetLastError(ERROR_HANDLE_EOF);
            return false;
        }
        buffer = buffer.subspan(count);
        offset += count;
    }
    return true;
}

bool DiskFile::WriteAt(std::int64_t offset, QByteArrayView content)
{
    while (!content.isEmpty()) {
        OVERLAPPED place = PlaceOf(offset);
        const auto most = static_cast<DWORD>(std::min<std::int64_t>(content.size(), MostBytes));
        DWORD count = 0;
        if (!WriteFile(HandleOf(handle), content.data(), most, &count, &place))
            return false;
        if (count == 0) {
            SetLastError(ERROR_WRITE_FAULT);
            return false;
        }
        content = content.sliced(static_cast<qsizetype>(count));
        offset += count;
    }
    return true;
}

bool DiskFile::Resize(std::int64_t size)
{
    FILE_END_OF_FILE_INFO end{};
    end.EndOfFile.QuadPart = size;
    return SetFileInformationByHandle(HandleOf(handle), FileEndOfFileInfo, &end, sizeof end) != 0;
}

bool DiskFile::Reserve(std::int64_t size)
{
    return size <= Facts().Size || Resize(size);
}

void DiskFile::BeginFlush() {}

bool DiskFile::Flush()
{
    return FlushFileBuffers(HandleOf(handle)) != 0;
}

bool DiskFile::CloneFrom(const DiskFile & /*source*/)
{
    return false;
}

std::int64_t DiskFile::CopyFrom(const DiskFile & /*source*/, std::int64_t /*from*/, std::int64_t /*to*/,
                                std::int64_t /*count*/)
{
    return 0;
}
