#include "faults/Faults.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <string_view>

#include <dlfcn.h>
#include <fcntl.h>
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
    Fault Kind = Fault::None;
    std::size_t At = 0;
    std::function<void()> Meanwhile;
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
    // The program works in the folder, so a relative path lies in it.
    return watch.IsArmed && path != nullptr &&
           (path[0] != '/' || std::string_view(path).substr(0, watch.Folder.size()) == watch.Folder);
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
    return TheWatch().Kind == kind && TheWatch().Calls.size() >= TheWatch().At;
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
    const bool isIt = watch.Calls.size() == watch.At;
    const bool writes = letter == 'w';
    switch (watch.Kind) {
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
            watch.Meanwhile();
            watch.IsArmed = true;
        }
        break;
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
    if (verdict == Verdict::Pass || count < 2)
        return call(count);
    const ssize_t done = call(count / 2);
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

void ArmFaults(const std::string &folder, Fault fault, int at, const std::function<void()> &meanwhile)
{
    TheWatch() = {true, folder, fault, static_cast<std::size_t>(at), meanwhile, {}};
}

std::string DisarmFaults()
{
    TheWatch().IsArmed = false;
    TheWatch().Kind = Fault::None;
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
       (from, name, to, other, flags), Fails(other, true))
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
FAULTY(int, fallocate, (int file, int mode, off_t offset, off_t size), (file, mode, offset, size), Fails(file, true))
FAULTY(int, fchmod, (int file, mode_t mode), (file, mode), Fails(file, false))
FAULTY(int, fchown, (int file, uid_t user, gid_t group), (file, user, group), Fails(file, false))
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
    const bool fails = CannotRead(file);
    const int result = real(file);
    return fails ? -1 : result;
}
}

// Qt paints with threads, which a forked process has no longer. What runs in the pool itself paints alone, so every
// thread is told to be of it: QThreadPool::contains.
extern "C" bool IsPainter(const void *pool, const void *thread) __asm__("_ZNK11QThreadPool8containsEPK7QThread");
extern "C" bool IsPainter(const void * /*pool*/, const void * /*thread*/)
{
    return true;
}
