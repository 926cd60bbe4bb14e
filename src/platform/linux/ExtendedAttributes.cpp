#include "platform/linux/ExtendedAttributes.h"

#include <QByteArray>
#include <QList>

#include <cerrno>
#include <optional>

#include <sys/xattr.h>

namespace
{

constexpr const char *AccessList = "system.posix_acl_access";

/// Value of an extended attribute; nothing when it cannot be read.
std::optional<QByteArray> ReadAttribute(const char *path, const char *name)
{
    const ssize_t size = ::getxattr(path, name, nullptr, 0);
    if (size < 0)
        return std::nullopt;
    QByteArray value(size, Qt::Uninitialized);
    const ssize_t read = ::getxattr(path, name, value.data(), static_cast<std::size_t>(size));
    if (read < 0)
        return std::nullopt;
    value.truncate(read);
    return value;
}

} // namespace

bool CopyExtendedAttributes(const char *from, int to)
{
    const ssize_t size = ::listxattr(from, nullptr, 0);
    if (size < 0)
        return errno == ENOTSUP;
    QByteArray names(size, Qt::Uninitialized);
    const ssize_t read = ::listxattr(from, names.data(), static_cast<std::size_t>(size));
    if (read < 0)
        return false;
    names.truncate(read);
    const QList<QByteArray> all = names.split('\0');
    // A new file has got the one that its folder gives to new ones.
    if (!all.contains(AccessList))
        ::fremovexattr(to, AccessList);
    for (const QByteArray &name : all) {
        const bool users = name.startsWith("user.");
        if (!users && name != AccessList)
            continue;
        const auto value = ReadAttribute(from, name.constData());
        const bool copied = value && ::fsetxattr(to, name.constData(), value->constData(),
                                                 static_cast<std::size_t>(value->size()), 0) == 0;
        if (users && !copied)
            return false;
    }
    return true;
}
