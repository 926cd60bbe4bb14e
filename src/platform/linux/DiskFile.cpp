#include "platform/DiskFile.h"

#include "platform/Drives.h"
#include "platform/linux/FactsFrom.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

int Descriptor(std::intptr_t handle)
{
    return static_cast<int>(handle);
}

int OpenRetrying(const char *path, int flags)
{
    int file = -1;
    do
        file = ::open(path, flags | O_CLOEXEC | O_NOCTTY);
    while (file < 0 && errno == EINTR);
    return file;
}

} // namespace

int OpenRegular(const char *path, int flags, struct stat &facts)
{
    int file = OpenRetrying(path, flags | O_NONBLOCK);
    // A server that has lent the file to a client is given the time to call it back; who holds a pipe is not.
    if (file < 0 && errno == EWOULDBLOCK && ::stat(path, &facts) == 0 && S_ISREG(facts.st_mode))
        file = OpenRetrying(path, flags);
    if (file >= 0 && (::fstat(file, &facts) != 0 || !S_ISREG(facts.st_mode))) {
        ::close(file);
        file = -1;
    }
    return file;
}

DiskFacts FactsFrom(const struct stat &facts)
{
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    return {facts.st_dev, facts.st_ino, facts.st_nlink, facts.st_size,
            facts.st_mtim.tv_sec * nanoseconds + facts.st_mtim.tv_nsec};
}

DiskFacts DiskFactsOf(const QString &path)
{
    struct stat facts;
    return ::stat(ToHostBytes(path).constData(), &facts) == 0 ? FactsFrom(facts) : DiskFacts();
}

bool IsAbsent(const QString &path)
{
    struct stat facts;
    return ::stat(ToHostBytes(path).constData(), &facts) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

FileFault LastFault()
{
    switch (errno) {
    case EACCES:
    case EPERM:
    case EROFS:
        return FileFault::Rights;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return FileFault::DiskFull;
    case ETXTBSY:
    case EWOULDBLOCK:
        return FileFault::Held;
    default:
        return FileFault::Other;
    }
}

bool DiskFile::Open(const QString &path)
{
    const QByteArray bytes = ToHostBytes(path);
    Close();
    struct stat facts;
    handle = OpenRegular(bytes.constData(), O_RDWR, facts);
    return IsOpen();
}

bool DiskFile::Create(const QByteArray &hostPath, bool isPrivate)
{
    Close();
    handle = ::open(hostPath.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, isPrivate ? 0600 : 0666);
    return IsOpen();
}

bool DiskFile::Close()
{
    const int file = Descriptor(std::exchange(handle, -1));
    return file < 0 || ::close(file) == 0;
}

bool DiskFile::HoldAlone()
{
    if (::flock(Descriptor(handle), LOCK_EX | LOCK_NB) != 0)
        return false;
    // Who has had it may have deleted it.
    errno = EWOULDBLOCK;
    return Facts().Links > 0;
}

DiskFacts DiskFile::Facts() const
{
    struct stat facts;
    return ::fstat(Descriptor(handle), &facts) == 0 ? FactsFrom(facts) : DiskFacts();
}

bool DiskFile::ReadAt(std::int64_t offset, std::span<char> buffer) const
{
    while (!buffer.empty()) {
        const ssize_t count = ::pread(Descriptor(handle), buffer.data(), buffer.size(), offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count == 0)
            errno = EIO;
        if (count <= 0)
            return false;
        buffer = buffer.subspan(static_cast<std::size_t>(count));
        offset += count;
    }
    return true;
}

bool DiskFile::WriteAt(std::int64_t offset, QByteArrayView content)
{
    while (!content.isEmpty()) {
        const ssize_t count =
            ::pwrite(Descriptor(handle), content.data(), static_cast<std::size_t>(content.size()), offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count == 0)
            errno = EIO;
        if (count <= 0)
            return false;
        content = content.sliced(count);
        offset += count;
    }
    return true;
}

bool DiskFile::Resize(std::int64_t size)
{
    int result = -1;
    do {
        result = ::ftruncate(Descriptor(handle), size);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

bool DiskFile::Reserve(std::int64_t size)
{
    // From the start, since a file may have holes.
    int fault = 0;
    do {
        fault = size > 0 ? ::posix_fallocate(Descriptor(handle), 0, size) : 0;
    } while (fault == EINTR);
    errno = fault;
    return fault == 0;
}

void DiskFile::BeginFlush()
{
    ::sync_file_range(Descriptor(handle), 0, 0, SYNC_FILE_RANGE_WRITE);
}

bool DiskFile::Flush()
{
    return ::fsync(Descriptor(handle)) == 0;
}

bool DiskFile::CloneFrom(const DiskFile &source)
{
    return ::ioctl(Descriptor(handle), FICLONE, Descriptor(source.handle)) == 0;
}

std::int64_t DiskFile::CopyFrom(const DiskFile &source, std::int64_t from, std::int64_t to, std::int64_t count)
{
    const int file = Descriptor(handle);
    // Space taken at once costs less than block by block; where that cannot be, the copying tells.
    ::fallocate(file, FALLOC_FL_KEEP_SIZE, to, count);
    // Parts that begin at whole blocks of the source can be shared by both files where the target's are whole ones too.
    constexpr std::int64_t partSize = 2 << 20;
    std::int64_t done = 0;
    while (done < count) {
        loff_t read = from + done;
        loff_t write = to + done;
        const auto most = static_cast<std::size_t>(std::min(count - done, partSize - read % partSize));
        const ssize_t copied = ::copy_file_range(Descriptor(source.handle), &read, file, &write, most, 0);
        if (copied < 0 && errno == EINTR)
            continue;
        if (copied <= 0)
            break;
        // The disk works while the next bytes are copied.
        ::sync_file_range(file, to + done, copied, SYNC_FILE_RANGE_WRITE);
        done += copied;
    }
    return done;
}
