#include "platform/FolderLock.h"

#include "platform/Drives.h"

#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

FolderLock::FolderLock(const QString &folder)
    : handle(::open(ToHostBytes(folder).constData(), O_RDONLY | O_CLOEXEC | O_DIRECTORY))
{
    constexpr int mostTries = 100;
    constexpr unsigned long pause = 10;
    for (int i = 0; i < mostTries && handle >= 0 && ::flock(static_cast<int>(handle), LOCK_EX | LOCK_NB) != 0; ++i)
        QThread::msleep(pause);
}

FolderLock::~FolderLock()
{
    if (handle >= 0)
        ::close(static_cast<int>(handle));
}
