#include "platform/FolderLock.h"

#include "platform/windows/WindowsApi.h"

#include <QCryptographicHash>

#include <bit>

namespace
{

/// A folder is not locked here, but a mutex whose name is made of its path, since a path is no name for one.
std::wstring MutexName(const QString &folder)
{
    const QByteArray path = folder.toLower().toUtf8();
    const QByteArray name = "Local\\vantrel-" + QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
    return QString::fromLatin1(name).toStdWString();
}

} // namespace

FolderLock::FolderLock(const QString &folder)
    : handle(std::bit_cast<std::intptr_t>(CreateMutexW(nullptr, FALSE, MutexName(folder).c_str())))
{
    constexpr DWORD mostWait = 1000;
    if (handle != 0)
        WaitForSingleObject(std::bit_cast<HANDLE>(handle), mostWait);
}

FolderLock::~FolderLock()
{
    if (handle == 0)
        return;
    // Refused where the wait was in vain.
    ReleaseMutex(std::bit_cast<HANDLE>(handle));
    CloseHandle(std::bit_cast<HANDLE>(handle));
}
