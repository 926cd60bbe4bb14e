#include "platform/Files.h"

#include "platform/Drives.h"

#include <QtEndian>

#include <array>

#include <sys/stat.h>
#include <sys/xattr.h>

namespace
{

constexpr const char *AttributeName = "user.DOSATTRIB";
constexpr int KeptBits = AttributeHidden | AttributeSystem | AttributeArchive;
constexpr int SettableBits = KeptBits | AttributeReadOnly;

// File servers of today keep a binary record behind an empty text: its version (16 bits) at 2, which fields are valid
// at 8 and the attributes at 12 (32 bits each), all little-endian.
constexpr qsizetype VersionOffset = 2;
constexpr qsizetype ValidOffset = 8;
constexpr qsizetype BitsOffset = 12;
constexpr quint32 ValidBits = 1;

bool IsServerRecord(const QByteArray &value)
{
    if (value.size() < BitsOffset + 4 || value[0] != '\0')
        return false;
    const auto version = qFromLittleEndian<quint16>(value.constData() + VersionOffset);
    return version >= 3 && version <= 5;
}

QByteArray ReadValue(const char *path)
{
    std::array<char, 256> buffer{};
    const ssize_t size = ::getxattr(path, AttributeName, buffer.data(), buffer.size());
    return size > 0 ? QByteArray(buffer.data(), size) : QByteArray();
}

int ParseValue(const QByteArray &value)
{
    if (IsServerRecord(value)) {
        const auto valid = qFromLittleEndian<quint32>(value.constData() + ValidOffset);
        const auto bits = qFromLittleEndian<quint32>(value.constData() + BitsOffset);
        return (valid & ValidBits) != 0 ? static_cast<int>(bits & KeptBits) : 0;
    }
    const qsizetype end = value.indexOf('\0');
    bool valid = false;
    const uint bits = (end < 0 ? value : value.first(end)).trimmed().toUInt(&valid, 16);
    return valid ? static_cast<int>(bits & KeptBits) : 0;
}

QByteArray MakeValue(const QByteArray &old, int bits)
{
    if (!IsServerRecord(old))
        return "0x" + QByteArray::number(bits, 16);
    QByteArray value = old;
    const auto valid = qFromLittleEndian<quint32>(value.constData() + ValidOffset);
    qToLittleEndian<quint32>(valid | ValidBits, value.data() + ValidOffset);
    qToLittleEndian<quint32>(static_cast<quint32>(bits), value.data() + BitsOffset);
    return value;
}

mode_t ModeFor(mode_t mode, bool readOnly)
{
    constexpr mode_t writable = S_IWUSR | S_IWGRP | S_IWOTH;
    return (readOnly ? mode & ~writable : mode | S_IWUSR) & 07777U;
}

} // namespace

int FileAttributes(const QString &path)
{
    const QByteArray bytes = ToHostBytes(path);
    struct stat facts;
    if (bytes.isEmpty() || ::stat(bytes.constData(), &facts) != 0)
        return -1;
    int attributes = ParseValue(ReadValue(bytes.constData()));
    if ((facts.st_mode & S_IWUSR) == 0)
        attributes |= AttributeReadOnly;
    if (S_ISDIR(facts.st_mode))
        attributes |= AttributeDirectory;
    return attributes == 0 ? AttributeNormal : attributes;
}

bool SetFileAttributes(const QString &path, int attributes)
{
    const QByteArray bytes = ToHostBytes(path);
    struct stat facts;
    if (bytes.isEmpty() || ::stat(bytes.constData(), &facts) != 0)
        return false;
    const mode_t old = facts.st_mode & 07777U;
    mode_t mode = old;
    const QByteArray value = ReadValue(bytes.constData());
    if (ParseValue(value) != (attributes & KeptBits)) {
        // A user's extended attributes can be written only where the file can.
        if (mode != ModeFor(mode, false)) {
            mode = ModeFor(mode, false);
            if (::chmod(bytes.constData(), mode) != 0)
                return false;
        }
        int bits = attributes & SettableBits;
        if (S_ISDIR(facts.st_mode))
            bits |= AttributeDirectory;
        const QByteArray fresh = MakeValue(value, bits);
        if (::setxattr(bytes.constData(), AttributeName, fresh.constData(), static_cast<std::size_t>(fresh.size()),
                       0) != 0) {
            if (mode != old)
                ::chmod(bytes.constData(), old);
            return false;
        }
    }
    const mode_t wanted = ModeFor(old, (attributes & AttributeReadOnly) != 0);
    return wanted == mode || ::chmod(bytes.constData(), wanted) == 0;
}
