#include "platform/Files.h"

#include "platform/Drives.h"
#include "platform/WayBack.h"
#include "platform/linux/TemporaryName.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

bool IsRegularFile(const QByteArray &path)
{
    struct stat facts;
    return ::lstat(path.constData(), &facts) == 0 && S_ISREG(facts.st_mode);
}

bool SameFile(const QByteArray &one, const QByteArray &other)
{
    struct stat first;
    struct stat second;
    return ::lstat(one.constData(), &first) == 0 && ::lstat(other.constData(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

/// Takes a name where nothing stands yet, by an empty file.
bool Reserve(const QByteArray &path)
{
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    return file >= 0 && ::close(file) == 0;
}

/// Renames where the file system cannot be told to keep what is there: by a second link to the file, or over an empty
/// file of ours that holds the new name.
bool RenameByLink(const QByteArray &source, const QByteArray &target)
{
    if (::link(source.constData(), target.constData()) == 0) {
        if (::unlink(source.constData()) == 0)
            return true;
    } else {
        if (errno == EEXIST || errno == EXDEV || !IsRegularFile(source) || !Reserve(target))
            return false;
        if (::rename(source.constData(), target.constData()) == 0)
            return true;
    }
    const int fault = errno;
    ::unlink(target.constData());
    errno = fault;
    return false;
}

/// Renames unless something stands at the target; errno tells why not.
bool RenameKeeping(const QByteArray &source, const QByteArray &target)
{
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return true;
    return (errno == EINVAL || errno == ENOSYS) && RenameByLink(source, target);
}

/// Gives a file its name in another case where the file system ignores case, and takes one name for the other.
bool Respell(const QByteArray &source, const QByteArray &target)
{
    if (!SameFile(source, target))
        return false;
    // A rename from one name to the other would do nothing. That the names are two of one file shows at the end.
    const QByteArray between = TemporaryName(target);
    WayBack wayBack;
    if (!wayBack.NoteRename(FromHostBytes(between), FromHostBytes(source)))
        return false;
    const bool isAway = RenameKeeping(source, between);
    const bool done = isAway && RenameKeeping(between, target);
    if (done || !isAway || RenameKeeping(between, source))
        wayBack.Drop();
    return done;
}

} // namespace

FileFacts ExamineFile(const QString &path)
{
    const QByteArray bytes = ToHostBytes(path);
    struct stat facts;
    if (bytes.isEmpty() || ::stat(bytes.constData(), &facts) != 0)
        return {};
    const bool folder = S_ISDIR(facts.st_mode);
    return {true, folder, folder ? 0 : facts.st_size};
}

bool RenameFile(const QString &from, const QString &to)
{
    const QByteArray source = ToHostBytes(from);
    const QByteArray target = ToHostBytes(to);
    if (source.isEmpty() || target.isEmpty())
        return false;
    if (RenameKeeping(source, target))
        return true;
    return errno == EEXIST && source != target && from.compare(to, Qt::CaseInsensitive) == 0 && Respell(source, target);
}

bool DeleteFile(const QString &path)
{
    const QByteArray bytes = ToHostBytes(path);
    return !bytes.isEmpty() && ::unlink(bytes.constData()) == 0;
}

bool EnsureFolder(const QString &folder)
{
    const QByteArray bytes = ToHostBytes(folder);
    for (qsizetype end = 0; end >= 0 && !bytes.isEmpty();) {
        end = bytes.indexOf('/', end + 1);
        const QByteArray part = end < 0 ? bytes : bytes.first(end);
        ::mkdir(part.constData(), 0777);
    }
    return ExamineFile(folder).IsFolder;
}
