#include "platform/Files.h"

#include "platform/Carriers.h"
#include "platform/Drives.h"
#include "platform/Names.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace
{

enum class EntryKind { File, Folder, Other };

EntryKind KindOfMode(mode_t mode)
{
    if (S_ISREG(mode))
        return EntryKind::File;
    return S_ISDIR(mode) ? EntryKind::Folder : EntryKind::Other;
}

/// A link counts as a file when it leads to one, and never as a folder.
EntryKind KindOfLink(DIR *folder, const char *name)
{
    struct stat facts;
    const bool file = ::fstatat(::dirfd(folder), name, &facts, 0) == 0 && S_ISREG(facts.st_mode);
    return file ? EntryKind::File : EntryKind::Other;
}

EntryKind KindOfEntry(DIR *folder, const dirent &entry)
{
    switch (entry.d_type) {
    case DT_REG:
        return EntryKind::File;
    case DT_DIR:
        return EntryKind::Folder;
    case DT_LNK:
        return KindOfLink(folder, entry.d_name);
    case DT_UNKNOWN:
        break;
    default:
        return EntryKind::Other;
    }
    struct stat facts;
    if (::fstatat(::dirfd(folder), entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) != 0)
        return EntryKind::Other;
    return S_ISLNK(facts.st_mode) ? KindOfLink(folder, entry.d_name) : KindOfMode(facts.st_mode);
}

bool IsSelfOrParent(const char *name)
{
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

// File systems that the kernel makes up; <linux/magic.h> lacks some of them.
constexpr std::array<unsigned long, 17> PseudoFileSystems{
    PROC_SUPER_MAGIC,
    SYSFS_MAGIC,
    CGROUP_SUPER_MAGIC,
    CGROUP2_SUPER_MAGIC,
    DEVPTS_SUPER_MAGIC,
    DEBUGFS_MAGIC,
    TRACEFS_MAGIC,
    SECURITYFS_MAGIC,
    SELINUX_MAGIC,
    BPF_FS_MAGIC,
    PSTOREFS_MAGIC,
    EFIVARFS_MAGIC,
    BINFMTFS_MAGIC,
    NSFS_MAGIC,
    0x62656570 /* configfs */,
    0x19800202 /* mqueue */,
    0x65735543 /* fusectl */,
};

/// devtmpfs shows itself as tmpfs, which may as well hold files of the user; it stands at "/dev".
bool IsDeviceFolder(const char *folder)
{
    struct stat facts;
    struct stat devices;
    struct stat root;
    return ::stat(folder, &facts) == 0 && ::stat("/dev", &devices) == 0 && ::stat("/", &root) == 0 &&
           facts.st_dev == devices.st_dev && devices.st_dev != root.st_dev;
}

} // namespace

FolderReader::FolderReader(const QString &folder) : path(folder)
{
    const QByteArray bytes = ToHostBytes(path);
    handle = bytes.isEmpty() ? nullptr : ::opendir(bytes.constData());
}

FolderReader::~FolderReader()
{
    if (handle != nullptr)
        ::closedir(static_cast<DIR *>(handle));
}

FolderIdentity FolderReader::Identify() const
{
    struct stat facts;
    if (handle == nullptr || ::fstat(::dirfd(static_cast<DIR *>(handle)), &facts) != 0)
        return {};
    return {true, facts.st_dev, facts.st_ino};
}

bool FolderReader::List(FolderEntries &entries) const
{
    entries.Files.clear();
    entries.Folders.clear();
    if (handle == nullptr)
        return false;
    auto *open = static_cast<DIR *>(handle);
    errno = 0;
    while (const dirent *entry = ::readdir(open)) {
        if (!IsSelfOrParent(entry->d_name)) {
            const EntryKind kind = KindOfEntry(open, *entry);
            if (kind != EntryKind::Other) {
                QStringList &list = kind == EntryKind::File ? entries.Files : entries.Folders;
                list.emplaceBack(
                    TextFromBytes(QByteArrayView(entry->d_name, std::strlen(entry->d_name)), Carriage::Inside));
            }
        }
        errno = 0;
    }
    if (errno != 0) {
        entries = {};
        return false;
    }
    SortNames(entries.Files);
    SortNames(entries.Folders);
    return true;
}

FolderIdentity IdentifyFolder(const QString &folder)
{
    const QByteArray bytes = ToHostBytes(folder);
    struct stat facts;
    if (bytes.isEmpty() || ::stat(bytes.constData(), &facts) != 0 || !S_ISDIR(facts.st_mode))
        return {};
    return {true, facts.st_dev, facts.st_ino};
}

bool HoldsUserFiles(const QString &folder)
{
    const QByteArray bytes = ToHostBytes(folder);
    struct statfs facts;
    if (bytes.isEmpty() || ::statfs(bytes.constData(), &facts) != 0)
        return false;
    const auto type = static_cast<unsigned long>(facts.f_type) & 0xFFFFFFFFUL;
    if (std::find(PseudoFileSystems.begin(), PseudoFileSystems.end(), type) != PseudoFileSystems.end())
        return false;
    return type != TMPFS_MAGIC || !IsDeviceFolder(bytes.constData());
}
