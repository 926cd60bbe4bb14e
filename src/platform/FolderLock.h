#pragma once

#include <QString>

#include <cstdint>

/// Lets no other process of the program store in a folder while this lives. One that stands still is waited for a
/// second, and no longer.
class FolderLock
{
public:
    explicit FolderLock(const QString &folder);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

private:
    std::intptr_t handle;
};
