#include "platform/Files.h"

#include "platform/windows/WindowsApi.h"

namespace
{

std::int64_t SizeOf(DWORD high, DWORD low)
{
    return (static_cast<std::int64_t>(high) << 32) | low;
}

/// What stands behind a link.
FileFacts ExamineLinked(const std::wstring &path)
{
    const OwnedHandle open(OpenForFacts(path));
    BY_HANDLE_FILE_INFORMATION facts;
    if (!open.IsOpen() || !GetFileInformationByHandle(open.Get(), &facts))
        return {};
    const bool folder = (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return {true, folder, folder ? 0 : SizeOf(facts.nFileSizeHigh, facts.nFileSizeLow)};
}

} // namespace

FileFacts ExamineFile(const QString &path)
{
    WIN32_FILE_ATTRIBUTE_DATA facts;
    const std::wstring wide = WidePath(path);
    if (path.isEmpty() || !GetFileAttributesExW(wide.c_str(), GetFileExInfoStandard, &facts))
        return {};
    if ((facts.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return ExamineLinked(wide);
    const bool folder = (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return {true, folder, folder ? 0 : SizeOf(facts.nFileSizeHigh, facts.nFileSizeLow)};
}

bool RenameFile(const QString &from, const QString &to)
{
    // Of these names Windows would silently make others.
    const bool keepsName = !to.endsWith(u'.') && !to.endsWith(u' ') && !to.contains(QChar::Null);
    return !from.isEmpty() && !to.isEmpty() && keepsName &&
           MoveFileExW(WidePath(from).c_str(), WidePath(to).c_str(), 0) != 0;
}

bool DeleteFile(const QString &path)
{
    return !path.isEmpty() && DeleteFileW(WidePath(path).c_str()) != 0;
}

bool EnsureFolder(const QString &folder)
{
    for (qsizetype end = 0; end >= 0 && !folder.isEmpty();) {
        end = folder.indexOf(u'\\', end + 1);
        CreateDirectoryW(WidePath(end < 0 ? folder : folder.first(end)).c_str(), nullptr);
    }
    return ExamineFile(folder).IsFolder;
}
