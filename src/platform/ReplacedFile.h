#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>

/// A file in the course of being replaced whole: a copy beside it takes the new content and then its place. Destroying
/// it before Commit leaves the old file as it was and no copy behind.
class ReplacedFile
{
public:
    ReplacedFile() = default;
    ~ReplacedFile();
    ReplacedFile(const ReplacedFile &) = delete;
    ReplacedFile &operator=(const ReplacedFile &) = delete;

    /// False when the file may not be written or no copy can be made beside it.
    bool Begin(const QString &path);
    bool Append(QByteArrayView content);
    /// Flushes the copy, gives it the rights and extended attributes of the old file, and puts it in its place.
    bool Commit();

private:
    /// Host names, UTF-8 on Windows; empty when no copy is open.
    QByteArray target;
    QByteArray copy;
    std::intptr_t handle = -1;
    bool existed = false;
};
