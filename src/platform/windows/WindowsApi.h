#pragma once

#include "platform/DiskFile.h"

#include <QString>

#include <string>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

// The header turns these names into others; here they are the program's own.
#undef CopyFile
#undef DeleteFile
#undef GetFileAttributes
#undef SetCurrentDirectory
#undef SetFileAttributes

/// A path from its root, without "." and "..".
std::wstring FullPath(const std::wstring &path);
/// A path as the wide functions take it: a bare drive is its root, and a long path gets the prefix that lifts the
/// limit of 260 characters.
std::wstring WidePath(const QString &path);
/// The same without that prefix, for the functions that do not know it.
std::wstring ShortWidePath(const QString &path);

QString TextFromWide(const wchar_t *text);

/// A handle that closes itself.
class OwnedHandle
{
public:
    explicit OwnedHandle(HANDLE opened) : handle(opened) {}
    ~OwnedHandle() { Close(); }
    OwnedHandle(const OwnedHandle &) = delete;
    OwnedHandle &operator=(const OwnedHandle &) = delete;

    bool IsOpen() const { return handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle; }
    void Close()
    {
        if (IsOpen())
            CloseHandle(handle);
        handle = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE handle;
};

/// Opens a file or folder for questions about it only, through its links.
HANDLE OpenForFacts(const std::wstring &path);
/// Without a size where they cannot be told.
DiskFacts FactsFrom(HANDLE file);
