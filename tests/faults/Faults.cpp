#include "faults/Faults.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <filesystem>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

// The functions of the C library that reach the disk, before those of the library itself: an executable's own come
// first, for Qt and TagLib too.

namespace
{

struct Watch {
    bool IsArmed = false;
    std::string Folder;
    FaultPlan Plan;
    std::string Calls;
};

Watch &TheWatch()
{
    static Watch watch;
    return watch;
}

bool IsWatched(const char *path)
{
    const Watch &watch = TheWatch();
    if (!watch.IsArmed || path == nullptr)
        return false;
    const std::string whole = path[0] == '/' ? path : (std::filesystem::current_path() / path).string();
    return whole.compare(0, watch.Folder.size(), watch.Folder) == 0;
}

std::string PathOf(const char *path)
{
    return path;
}

std::string PathOf(int file)
{
    std::array<char, 4096> target{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const long size = ::syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), target.data(), target.size() - 1);
    return size > 0 ? target.data() : "";
}

bool IsWatched(int file)
{
    if (!TheWatch().IsArmed)
        return false;
    const std::string path = PathOf(file);
    // What is no file has another name.
    return !path.empty() && path[0] == '/' && IsWatched(path.c_str());
}

void TakeRights(const std::string &path)
{
    ::syscall(SYS_fchmodat, AT_FDCWD, path.substr(0, path.rfind('/')).c_str(), 0555);
}

void EndFileSystem()
{
    // The journal is not written either.
    const std::uint32_t how = 2;
    constexpr unsigned long shutdown = _IOR('X', 125, std::uint32_t);
    const long folder = ::syscall(SYS_openat, AT_FDCWD, TheWatch().Folder.c_str(), O_RDONLY);
    ::ioctl(static_cast<int>(folder), shutdown, &how);
    ::syscall(SYS_close, folder);
}

enum class Verdict { Pass, Fail, Half, HalfThenKill, HalfThenFull };

bool IsPast(Fault kind)
{
    return TheWatch().Plan.Kind == kind && TheWatch().Calls.size() >= TheWatch().Plan.At;
}

Verdict Refuse(int fault)
{
    errno = fault;
    return Verdict::Fail;
}

[[noreturn]] void KillSelf()
{
    ::syscall(SYS_kill, ::getpid(), SIGKILL);
    for (;;)
        ::pause();
}

/// Counts a call. What takes room on the disk fails when it is full.
template <typename Subject>
Verdict Judge(Subject subject, char letter, bool takesRoom)
{
    if (!IsWatched(subject))
        return Verdict::Pass;
    Watch &watch = TheWatch();
    watch.Calls += letter;
    const bool isIt = watch.Calls.size() == watch.Plan.At;
    const bool writes = letter == 'w';
    switch (watch.Plan.Kind) {
    case Fault::None:
        break;
    case Fault::Error:
        return isIt ? Refuse(EIO) : Verdict::Pass;
    case Fault::Half:
        return isIt && writes ? Verdict::Half : Verdict::Pass;
    case Fault::Full:
        if (isIt && writes)
            return Verdict::HalfThenFull;
        return IsPast(Fault::Full) && takesRoom ? Refuse(ENOSPC) : Verdict::Pass;
    case Fault::ReadOnly:
        return IsPast(Fault::ReadOnly) ? Refuse(EROFS) : Verdict::Pass;
    case Fault::Gone:
        return IsPast(Fault::Gone) ? Refuse(EIO) : Verdict::Pass;
    case Fault::Kill:
        if (isIt)
            KillSelf();
        break;
    case Fault::KillHalf:
        return isIt && writes ? Verdict::HalfThenKill : Verdict::Pass;
    case Fault::Rights:
        if (isIt)
            TakeRights(PathOf(subject));
        break;
    case Fault::Pulled:
        if (isIt)
            EndFileSystem();
        break;
    case Fault::Meanwhile:
        if (isIt) {
            watch.IsArmed = false;
            watch.Plan.Meanwhile();
            watch.IsArmed = true;
        }
        break;
    case Fault::Held:
    case Fault::Filled:
    case Fault::Sealed:
        break;
    }
    return Verdict::Pass;
}

template <typename Subject>
bool Fails(Subject subject, bool takesRoom)
{
    return Judge(subject, 'c', takesRoom) == Verdict::Fail;
}

/// A call that only reads is not counted; it fails when the disk is gone.
template <typename Subject>
bool CannotRead(Subject subject)
{
    return IsPast(Fault::Gone) && IsWatched(subject) && Refuse(EIO) == Verdict::Fail;
}

/// What not every file system can do; uncounted where this one cannot.
template <typename Subject>
bool IsUnable(Subject subject, int fault)
{
    return TheWatch().Plan.IsPlain && IsWatched(subject) && Refuse(fault) == Verdict::Fail;
}

bool IsOpenForWriting(int file)
{
    return (::fcntl(file, F_GETFL) & O_ACCMODE) != O_RDONLY;
}

template <typename Function>
Function *Real(Function * /*ours*/, const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

template <typename Call>
ssize_t Write(int file, std::size_t count, Call call)
{
    const Verdict verdict = Judge(file, 'w', true);
    if (verdict == Verdict::Fail)
        return -1;
    if (verdict == Verdict::Pass)
        return call(count);
    const ssize_t done = call(std::max<std::size_t>(count / 2, 1));
    if (verdict == Verdict::HalfThenKill)
        KillSelf();
    return done;
}

bool Opens(const char *path, int flags)
{
    const bool creates = (flags & (O_CREAT | O_TRUNC)) != 0;
    return creates || (flags & O_ACCMODE) != O_RDONLY ? !Fails(path, creates) : !CannotRead(path);
}

} // namespace

void ArmFaults(const std::string &folder, const FaultPlan &plan)
{
    TheWatch() = {true, folder, plan, {}};
}

std::string DisarmFaults()
{
    TheWatch().IsArmed = false;
    TheWatch().Plan = {};
    return TheWatch().Calls;
}

// NAME of the library, its parameters, how it is called, and what lets it fail.
#define FAULTY(result, name, parameters, arguments, fails)                                                             \
    extern "C" result Faulty_##name parameters __asm__(#name);                                                         \
    extern "C" result Faulty_##name parameters                                                                         \
    {                                                                                                                  \
        static const auto real = Real(&Faulty_##name, #name);                                                          \
        return (fails) ? static_cast<result>(-1) : real arguments;                                                     \
    }

FAULTY(int, open, (const char *path, int flags, mode_t mode), (path, flags, mode), !Opens(path, flags))
FAULTY(int, open64, (const char *path, int flags, mode_t mode), (path, flags, mode), !Opens(path, flags))
FAULTY(int, openat, (int folder, const char *path, int flags, mode_t mode), (folder, path, flags, mode),
       !Opens(path, flags))
FAULTY(int, openat64, (int folder, const char *path, int flags, mode_t mode), (folder, path, flags, mode),
       !Opens(path, flags))
FAULTY(int, rename, (const char *from, const char *to), (from, to), Fails(to, true))
FAULTY(int, renameat2, (int from, const char *name, int to, const char *other, unsigned flags),
       (from, name, to, other, flags), (flags != 0 && IsUnable(other, EINVAL)) || Fails(other, true))
FAULTY(int, link, (const char *from, const char *to), (from, to), Fails(to, true))
FAULTY(int, linkat, (int from, const char *name, int to, const char *other, int flags), (from, name, to, other, flags),
       Fails(other, true))
FAULTY(int, unlink, (const char *path), (path), Fails(path, false))
FAULTY(int, unlinkat, (int folder, const char *path, int flags), (folder, path, flags), Fails(path, false))
FAULTY(int, remove, (const char *path), (path), Fails(path, false))
FAULTY(int, rmdir, (const char *path), (path), Fails(path, false))
FAULTY(int, mkdir, (const char *path, mode_t mode), (path, mode), Fails(path, true))
FAULTY(int, ftruncate, (int file, off_t size), (file, size), Fails(file, false))
FAULTY(int, ftruncate64, (int file, off_t size), (file, size), Fails(file, false))
FAULTY(int, fsync, (int file), (file), Fails(file, true))
FAULTY(int, fdatasync, (int file), (file), Fails(file, true))
FAULTY(int, fallocate, (int file, int mode, off_t offset, off_t size), (file, mode, offset, size),
       IsUnable(file, EOPNOTSUPP) || Fails(file, true))
FAULTY(int, sync_file_range, (int file, off_t offset, off_t size, unsigned flags), (file, offset, size, flags),
       Fails(file, true))
FAULTY(int, ioctl, (int file, unsigned long request, void *argument), (file, request, argument),
       request == FICLONE && (IsUnable(file, EOPNOTSUPP) || Fails(file, true)))
FAULTY(int, chmod, (const char *path, mode_t mode), (path, mode), Fails(path, false))
FAULTY(int, fchmod, (int file, mode_t mode), (file, mode), Fails(file, false))
FAULTY(int, fchown, (int file, uid_t user, gid_t group), (file, user, group), Fails(file, false))
FAULTY(int, setxattr, (const char *path, const char *name, const void *value, std::size_t size, int flags),
       (path, name, value, size, flags), Fails(path, true))
FAULTY(int, fsetxattr, (int file, const char *name, const void *value, std::size_t size, int flags),
       (file, name, value, size, flags), Fails(file, true))
FAULTY(int, futimens, (int file, const struct timespec *times), (file, times), Fails(file, false))
FAULTY(int, stat, (const char *path, void *facts), (path, facts), CannotRead(path))
FAULTY(int, stat64, (const char *path, void *facts), (path, facts), CannotRead(path))
FAULTY(int, lstat, (const char *path, void *facts), (path, facts), CannotRead(path))
FAULTY(int, lstat64, (const char *path, void *facts), (path, facts), CannotRead(path))
FAULTY(int, fstat, (int file, void *facts), (file, facts), CannotRead(file))
FAULTY(int, fstat64, (int file, void *facts), (file, facts), CannotRead(file))
FAULTY(int, statx, (int folder, const char *path, int flags, unsigned mask, void *facts),
       (folder, path, flags, mask, facts), *path == '\0' ? CannotRead(folder) : CannotRead(path))
FAULTY(int, access, (const char *path, int mode), (path, mode), CannotRead(path))
FAULTY(int, faccessat, (int folder, const char *path, int mode, int flags), (folder, path, mode, flags),
       CannotRead(path))
FAULTY(ssize_t, readlink, (const char *path, char *target, std::size_t size), (path, target, size), CannotRead(path))
FAULTY(ssize_t, listxattr, (const char *path, char *names, std::size_t size), (path, names, size), CannotRead(path))
FAULTY(ssize_t, getxattr, (const char *path, const char *name, void *value, std::size_t size),
       (path, name, value, size), CannotRead(path))
FAULTY(ssize_t, read, (int file, void *bytes, std::size_t count), (file, bytes, count), CannotRead(file))
FAULTY(ssize_t, pread, (int file, void *bytes, std::size_t count, off_t offset), (file, bytes, count, offset),
       CannotRead(file))
FAULTY(ssize_t, pread64, (int file, void *bytes, std::size_t count, off_t offset), (file, bytes, count, offset),
       CannotRead(file))

#undef FAULTY

extern "C" {
ssize_t FaultyWrite(int file, const void *bytes, std::size_t count) __asm__("write");
ssize_t FaultyWrite(int file, const void *bytes, std::size_t count)
{
    static const auto real = Real(&FaultyWrite, "write");
    return Write(file, count, [&](std::size_t most) { return real(file, bytes, most); });
}

ssize_t FaultyPwrite(int file, const void *bytes, std::size_t count, off_t offset) __asm__("pwrite");
ssize_t FaultyPwrite(int file, const void *bytes, std::size_t count, off_t offset)
{
    static const auto real = Real(&FaultyPwrite, "pwrite");
    return Write(file, count, [&](std::size_t most) { return real(file, bytes, most, offset); });
}
ssize_t FaultyPwrite64(int file, const void *bytes, std::size_t count, off_t offset) __asm__("pwrite64");
ssize_t FaultyPwrite64(int file, const void *bytes, std::size_t count, off_t offset)
{
    return FaultyPwrite(file, bytes, count, offset);
}

ssize_t FaultyCopy(int from, off_t *read, int to, off_t *write, std::size_t count,
                   unsigned flags) __asm__("copy_file_range");
ssize_t FaultyCopy(int from, off_t *read, int to, off_t *write, std::size_t count, unsigned flags)
{
    static const auto real = Real(&FaultyCopy, "copy_file_range");
    if (IsUnable(to, EOPNOTSUPP))
        return -1;
    return Write(to, count, [&](std::size_t most) { return real(from, read, to, write, most, flags); });
}

int FaultyReserve(int file, off_t offset, off_t size) __asm__("posix_fallocate");
int FaultyReserve(int file, off_t offset, off_t size)
{
    static const auto real = Real(&FaultyReserve, "posix_fallocate");
    return Fails(file, true) ? errno : real(file, offset, size);
}

int FaultyClose(int file) __asm__("close");
int FaultyClose(int file)
{
    static const auto real = Real(&FaultyClose, "close");
    // What could not be written before may be told now; the file is closed all the same.
    const bool fails = IsOpenForWriting(file) ? Fails(file, true) : CannotRead(file);
    const int fault = errno;
    const int result = real(file);
    errno = fails ? fault : errno;
    return fails ? -1 : result;
}

DIR *FaultyOpenDir(const char *path) __asm__("opendir");
DIR *FaultyOpenDir(const char *path)
{
    static const auto real = Real(&FaultyOpenDir, "opendir");
    return CannotRead(path) ? nullptr : real(path);
}
}

// Qt paints with threads, which a forked process has no longer. What runs in the pool itself paints alone, so every
// thread is told to be of it: QThreadPool::contains.
extern "C" bool IsPainter(const void *pool, const void *thread) __asm__("_ZNK11QThreadPool8containsEPK7QThread");
extern "C" bool IsPainter(const void * /*pool*/, const void * /*thread*/)
{
    return true;
}
