#include "platform/Files.h"

#include "platform/Drives.h"
#include "platform/linux/ExtendedAttributes.h"

#include <array>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// Whether two names are one file of one name, as a file and its name in another case are on a disk that ignores case.
bool SameEntry(const char *one, const char *other)
{
    struct stat first;
    struct stat second;
    return ::lstat(one, &first) == 0 && ::lstat(other, &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino && first.st_nlink == 1;
}

/// Gives a copied file the rights, times and extended attributes of its source.
bool CopyFacts(const char *from, const struct stat &facts, const char *to)
{
    const int file = ::open(to, O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const std::array<timespec, 2> times{facts.st_atim, facts.st_mtim};
    const bool done = CopyExtendedAttributes(from, file) && ::fchmod(file, facts.st_mode & 07777U) == 0 &&
                      ::futimens(file, times.data()) == 0;
    ::close(file);
    return done;
}

/// Moves a regular file to another file system, where nothing stands yet.
bool MoveAcross(const QString &from, const QString &to)
{
    const QByteArray source = ToHostBytes(from);
    const QByteArray target = ToHostBytes(to);
    struct stat facts;
    struct stat other;
    if (::lstat(source.constData(), &facts) != 0 || !S_ISREG(facts.st_mode) ||
        ::lstat(target.constData(), &other) == 0 || !CopyFile(from, to))
        return false;
    if (CopyFacts(source.constData(), facts, target.constData()) && ::unlink(source.constData()) == 0)
        return true;
    ::unlink(target.constData());
    return false;
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
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno == EXDEV)
        return MoveAcross(from, to);
    if (errno == EEXIST) {
        return source != target && SameEntry(source.constData(), target.constData()) &&
               ::rename(source.constData(), target.constData()) == 0;
    }
    // Some file systems cannot be told to keep what is there.
    struct stat facts;
    const bool cannotAsk = errno == EINVAL || errno == ENOSYS;
    if (!cannotAsk || ::lstat(target.constData(), &facts) == 0 || errno != ENOENT)
        return false;
    return ::rename(source.constData(), target.constData()) == 0;
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
