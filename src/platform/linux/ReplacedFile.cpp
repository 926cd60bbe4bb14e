#include "platform/ReplacedFile.h"

#include "platform/Drives.h"
#include "platform/linux/ExtendedAttributes.h"
#include "platform/linux/TemporaryName.h"

#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

QByteArray FolderPrefix(const QByteArray &path)
{
    return path.first(path.lastIndexOf('/') + 1);
}

/// Where a path leads when its last part is a symbolic link, also when nothing stands there yet. Nothing for a loop.
std::optional<QByteArray> FollowLinks(QByteArray path)
{
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks; ++i) {
        QByteArray next(4096, Qt::Uninitialized);
        const ssize_t size = ::readlink(path.constData(), next.data(), static_cast<std::size_t>(next.size()));
        if (size < 0)
            return path;
        next.truncate(size);
        path = next.startsWith('/') ? next : FolderPrefix(path) + next;
    }
    return std::nullopt;
}

/// A disk that gives all files one owner and mode refuses even the mode that the file has.
bool GiveMode(int descriptor, mode_t mode)
{
    struct stat facts;
    return (::fstat(descriptor, &facts) == 0 && (facts.st_mode & 07777U) == mode) || ::fchmod(descriptor, mode) == 0;
}

bool IsFolder(const QByteArray &path)
{
    struct stat facts;
    return ::stat(path.constData(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

/// What has failed is asked for afterwards.
void DropKeepingFault(WayBack &wayBack)
{
    const int fault = errno;
    wayBack.Drop();
    errno = fault;
}

} // namespace

QByteArray TemporaryName(const QByteArray &target)
{
    quint64 draw = 0;
    if (::getrandom(&draw, sizeof draw, 0) != static_cast<ssize_t>(sizeof draw))
        draw = static_cast<quint64>(::getpid());
    return FolderPrefix(target) + ".vantrel-" + QByteArray::number(draw, 36) + ".tmp";
}

ReplacedFile::~ReplacedFile()
{
    if (copy.isEmpty())
        return;
    // Where the folder is gone as well, the copy may come back with its disk.
    if (::unlink(copy.constData()) == 0 || (errno == ENOENT && IsFolder(FolderPrefix(copy))))
        wayBack.Drop();
    else
        wayBack.Abandon();
}

bool ReplacedFile::Begin(const QString &path)
{
    const QByteArray bytes = ToHostBytes(path);
    const auto followed = bytes.isEmpty() ? std::nullopt : FollowLinks(bytes);
    if (!followed || !copy.isEmpty())
        return false;
    target = *followed;
    struct stat facts;
    existed = ::stat(target.constData(), &facts) == 0;
    if (!existed && errno != ENOENT)
        return false;
    if (existed && (!S_ISREG(facts.st_mode) || (facts.st_mode & S_IWUSR) == 0 ||
                    ::faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0))
        return false;
    constexpr int mostTries = 100;
    for (int i = 0; i < mostTries; ++i) {
        const QByteArray name = TemporaryName(target);
        // Where it cannot be noted, a copy that nobody takes away is the worst that happens.
        wayBack.NoteCopy(FromHostBytes(name));
        // The content of a private file stays private from the first byte; a new file gets what the user's mask leaves.
        if (file.Create(name, existed)) {
            copy = name;
            return true;
        }
        DropKeepingFault(wayBack);
        if (errno != EEXIST && errno != EINTR)
            return false;
    }
    return false;
}

bool ReplacedFile::Settle()
{
    const int descriptor = static_cast<int>(file.Handle());
    if (descriptor < 0)
        return false;
    if (existed) {
        struct stat facts;
        if (::stat(target.constData(), &facts) != 0)
            return false;
        // Another owner's file becomes ours where the host gives none away; the rights are set after that, since a
        // change of owner takes some of them.
        if (::fchown(descriptor, facts.st_uid, facts.st_gid) != 0 &&
            ::fchown(descriptor, static_cast<uid_t>(-1), facts.st_gid) != 0)
            errno = 0;
        if (!CopyExtendedAttributes(target.constData(), descriptor) || !GiveMode(descriptor, facts.st_mode & 07777U))
            return false;
    }
    return file.Flush() && file.Close();
}

bool ReplacedFile::TakePlace()
{
    if (::rename(copy.constData(), target.constData()) != 0)
        return false;
    copy.clear();
    wayBack.Drop();
    return true;
}

bool DeleteMadeFile(const QString &path)
{
    const QByteArray bytes = ToHostBytes(path);
    const auto followed = bytes.isEmpty() ? std::nullopt : FollowLinks(bytes);
    return followed && ::unlink(followed->constData()) == 0;
}
