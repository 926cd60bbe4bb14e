#include "platform/ReplacedFile.h"

#include "platform/windows/WindowsApi.h"

#include <QRandomGenerator>

#include <algorithm>
#include <bit>
#include <vector>

namespace
{

std::wstring WideOf(const QByteArray &hostPath)
{
    return WidePath(QString::fromUtf8(hostPath));
}

/// Where a path leads when it is a symbolic link to a file that exists, else the path itself.
std::wstring FollowLinks(const std::wstring &path, DWORD attributes)
{
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return path;
    const OwnedHandle open(OpenForFacts(path));
    if (!open.IsOpen())
        return path;
    std::vector<wchar_t> buffer(32768);
    const DWORD size =
        GetFinalPathNameByHandleW(open.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), FILE_NAME_NORMALIZED);
    return size > 0 && size < buffer.size() ? std::wstring(buffer.data(), size) : path;
}

bool MayBeWritten(const std::wstring &path)
{
    const OwnedHandle open(CreateFileW(path.c_str(), GENERIC_WRITE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    return open.IsOpen() && GetFileType(open.Get()) == FILE_TYPE_DISK;
}

std::wstring CopyName(const std::wstring &target)
{
    const std::size_t separator = target.find_last_of(L"\\/:");
    const std::wstring folder = separator == std::wstring::npos ? std::wstring() : target.substr(0, separator + 1);
    return folder + L".vantrel-" + std::to_wstring(QRandomGenerator::system()->generate64()) + L".tmp";
}

QByteArray HostBytesOf(const std::wstring &path)
{
    return QString::fromStdWString(path).toUtf8();
}

bool Exists(const std::wstring &path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Puts a copy in the place of a file, which keeps its attributes, rights and streams where the disk can do that.
bool Replace(const std::wstring &target, const std::wstring &copy)
{
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (!ReplaceFileW(target.c_str(), copy.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) &&
        !MoveFileExW(copy.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return false;
    // Not every implementation of the first call keeps them.
    if (attributes != INVALID_FILE_ATTRIBUTES)
        SetFileAttributesW(target.c_str(), attributes);
    return true;
}

} // namespace

ReplacedFile::~ReplacedFile()
{
    if (handle != -1)
        CloseHandle(std::bit_cast<HANDLE>(handle));
    // A replacement that failed half-way may have taken the old file away; then the copy is all there is.
    if (!copy.isEmpty() && (!existed || Exists(WideOf(target))))
        DeleteFileW(WideOf(copy).c_str());
}

bool ReplacedFile::Begin(const QString &path)
{
    if (path.isEmpty() || handle != -1)
        return false;
    const std::wstring given = WidePath(path);
    const DWORD attributes = GetFileAttributesW(given.c_str());
    const std::wstring followed = FollowLinks(given, attributes);
    const DWORD found = GetFileAttributesW(followed.c_str());
    existed = found != INVALID_FILE_ATTRIBUTES;
    if (existed && ((found & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0 || !MayBeWritten(followed)))
        return false;
    const std::wstring name = CopyName(followed);
    const HANDLE file =
        CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    handle = std::bit_cast<std::intptr_t>(file);
    target = HostBytesOf(followed);
    copy = HostBytesOf(name);
    return true;
}

bool ReplacedFile::Append(QByteArrayView content)
{
    constexpr qsizetype mostBytes = 1 << 30;
    while (!content.isEmpty()) {
        DWORD count = 0;
        const auto piece = static_cast<DWORD>(std::min(content.size(), mostBytes));
        if (!WriteFile(std::bit_cast<HANDLE>(handle), content.data(), piece, &count, nullptr) || count == 0)
            return false;
        content = content.sliced(static_cast<qsizetype>(count));
    }
    return true;
}

bool ReplacedFile::Commit()
{
    if (handle == -1)
        return false;
    const HANDLE file = std::bit_cast<HANDLE>(handle);
    const bool flushed = FlushFileBuffers(file) != 0;
    handle = -1;
    if (!CloseHandle(file) || !flushed)
        return false;
    const std::wstring to = WideOf(target);
    const std::wstring from = WideOf(copy);
    const bool placed =
        existed ? Replace(to, from)
                : MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    if (placed)
        copy.clear();
    return placed;
}
