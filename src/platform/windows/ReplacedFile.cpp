#include "platform/ReplacedFile.h"

#include "platform/Drives.h"
#include "platform/windows/WindowsApi.h"

#include <QRandomGenerator>

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
    if (!ReplaceFileW(target.c_str(), copy.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)) {
        const DWORD error = GetLastError();
        if (!MoveFileExW(copy.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            // The second try calls a file that another program holds a matter of rights.
            SetLastError(error);
            return false;
        }
    }
    // Not every implementation of the first call keeps them. A backup by the archive bit takes what was written.
    if (attributes != INVALID_FILE_ATTRIBUTES)
        SetFileAttributesW(target.c_str(), attributes | FILE_ATTRIBUTE_ARCHIVE);
    return true;
}

} // namespace

ReplacedFile::~ReplacedFile()
{
    file.Close();
    if (copy.isEmpty())
        return;
    // A replacement that failed half-way may have taken the old file away; then the copy is all there is.
    const bool isAllThereIs = existed && !Exists(WideOf(target)) && Exists(WideOf(copy));
    if (isAllThereIs || DeleteFileW(WideOf(copy).c_str()))
        wayBack.Drop();
    else
        wayBack.Abandon();
}

bool ReplacedFile::Begin(const QString &path)
{
    if (path.isEmpty() || !copy.isEmpty())
        return false;
    const std::wstring given = WidePath(path);
    const DWORD attributes = GetFileAttributesW(given.c_str());
    const std::wstring followed = FollowLinks(given, attributes);
    const DWORD found = GetFileAttributesW(followed.c_str());
    existed = found != INVALID_FILE_ATTRIBUTES;
    if (existed && ((found & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0 || !MayBeWritten(followed)))
        return false;
    const QByteArray name = HostBytesOf(CopyName(followed));
    // Where it cannot be noted, a copy that nobody takes away is the worst that happens.
    wayBack.NoteCopy(FromHostBytes(name));
    if (!file.Create(name, existed)) {
        const DWORD error = GetLastError();
        wayBack.Drop();
        SetLastError(error);
        return false;
    }
    target = HostBytesOf(followed);
    copy = name;
    return true;
}

bool ReplacedFile::Settle()
{
    return file.IsOpen() && file.Flush() && file.Close();
}

bool ReplacedFile::TakePlace()
{
    const std::wstring to = WideOf(target);
    const std::wstring from = WideOf(copy);
    const bool placed =
        existed ? Replace(to, from)
                : MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    if (placed) {
        copy.clear();
        wayBack.Drop();
    }
    return placed;
}

bool DeleteMadeFile(const QString &path)
{
    const std::wstring given = WidePath(path);
    return !path.isEmpty() && DeleteFileW(FollowLinks(given, GetFileAttributesW(given.c_str())).c_str()) != 0;
}
