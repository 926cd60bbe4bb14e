#include "platform/windows/WindowsApi.h"

#include "platform/PlaylistLines.h"

namespace
{

// From the start of the process on a drive without a disk is passed over in silence.
[[maybe_unused]] const UINT formerErrorMode =
    SetErrorMode(SetErrorMode(SEM_FAILCRITICALERRORS) | SEM_FAILCRITICALERRORS);

} // namespace

std::wstring ShortWidePath(const QString &path)
{
    std::wstring wide = QString(path).replace(u'/', u'\\').toStdWString();
    if (path.size() == 2 && HasDrive(path))
        wide += L'\\';
    return wide;
}

std::wstring FullPath(const std::wstring &path)
{
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    return full.empty() ? path : full;
}

std::wstring WidePath(const QString &path)
{
    // Folders are limited more tightly than files, by the room for a short name.
    constexpr std::size_t mostPlain = MAX_PATH - 13;
    std::wstring wide = ShortWidePath(path);
    if (wide.size() < mostPlain || wide.starts_with(L"\\\\?\\"))
        return wide;
    // Behind the prefix nothing resolves parts that lead upwards.
    if (wide.find(L"\\..") != std::wstring::npos)
        wide = FullPath(wide);
    if (wide.starts_with(L"\\\\"))
        return L"\\\\?\\UNC" + wide.substr(1);
    return HasDrive(path) ? L"\\\\?\\" + wide : wide;
}

QString TextFromWide(const wchar_t *text)
{
    return QString::fromWCharArray(text);
}

HANDLE OpenForFacts(const std::wstring &path)
{
    return CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}
