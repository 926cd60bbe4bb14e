#include "platform/linux/ExtendedAttributes.h"

#include <QByteArray>
#include <QList>

#include <cerrno>
#include <optional>

#include <sys/xattr.h>

namespace
{

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
    for (const QByteArray &name : names.split('\0')) {
        const bool users = name.startsWith("user.");
        if (!users && name != "system.posix_acl_access")
            continue;
        const auto value = ReadAttribute(from, name.constData());
        const bool copied = value && ::fsetxattr(to, name.constData(), value->constData(),
                                                 static_cast<std::size_t>(value->size()), 0) == 0;
        if (users && !copied)
            return false;
    }
    return true;
}
