#include "platform/Files.h"

#include "platform/Names.h"
#include "platform/windows/WindowsApi.h"

#include <cwchar>
#include <memory>

namespace
{

struct CloseSearch {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};

bool IsSelfOrParent(const wchar_t *name)
{
    return std::wcscmp(name, L".") == 0 || std::wcscmp(name, L"..") == 0;
}

bool IsLink(const WIN32_FIND_DATAW &entry)
{
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK || entry.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

void AddEntry(const QString &prefix, const WIN32_FIND_DATAW &entry, FolderEntries &entries)
{
    const QString name = TextFromWide(entry.cFileName);
    const bool link = IsLink(entry);
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        if (!link)
            entries.Folders.append(name);
    } else if (!link || ExamineFile(prefix + name).Exists) {
        entries.Files.append(name);
    }
}

} // namespace

// A folder cannot be listed by a handle that tells which one it is.
FolderReader::FolderReader(const QString &folder) : path(folder) {}

FolderReader::~FolderReader() = default;

FolderIdentity FolderReader::Identify() const
{
    return IdentifyFolder(path);
}

bool FolderReader::List(FolderEntries &entries) const
{
    entries = {};
    if (path.isEmpty())
        return false;
    const bool separated = path.endsWith(u'\\') || path.endsWith(u'/');
    const QString prefix = separated ? path : QString(path + u'\\');
    WIN32_FIND_DATAW entry;
    const HANDLE found = FindFirstFileExW(WidePath(prefix + u'*').c_str(), FindExInfoBasic, &entry,
                                          FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    // The root of an empty disk has not even itself.
    if (found == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    const std::unique_ptr<HANDLE, CloseSearch> search(found);
    do {
        if (!IsSelfOrParent(entry.cFileName))
            AddEntry(prefix, entry, entries);
    } while (FindNextFileW(search.get(), &entry));
    if (GetLastError() != ERROR_NO_MORE_FILES) {
        entries = {};
        return false;
    }
    SortNames(entries.Files);
    SortNames(entries.Folders);
    return true;
}

FolderIdentity IdentifyFolder(const QString &folder)
{
    const OwnedHandle open(folder.isEmpty() ? INVALID_HANDLE_VALUE : OpenForFacts(WidePath(folder)));
    BY_HANDLE_FILE_INFORMATION facts;
    if (!open.IsOpen() || !GetFileInformationByHandle(open.Get(), &facts) ||
        (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        return {};
    const std::uint64_t number = (static_cast<std::uint64_t>(facts.nFileIndexHigh) << 32) | facts.nFileIndexLow;
    // Some servers have no numbers and say 0.
    return {number != 0, facts.dwVolumeSerialNumber, number};
}

bool HoldsUserFiles(const QString &folder)
{
    return ExamineFile(folder).IsFolder;
}
