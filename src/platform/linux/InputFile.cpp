#include "platform/Files.h"

#include "platform/Drives.h"
#include "platform/linux/FactsFrom.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

InputFile::~InputFile()
{
    if (handle >= 0)
        ::close(static_cast<int>(handle));
}

bool InputFile::Open(const QString &path)
{
    if (handle >= 0)
        ::close(static_cast<int>(handle));
    handle = -1;
    facts = {.Size = 0};
    const QByteArray bytes = ToHostBytes(path);
    if (bytes.isEmpty())
        return false;
    struct stat found;
    const int file = OpenRegular(bytes.constData(), O_RDONLY, found);
    if (file < 0)
        return false;
    handle = file;
    facts = FactsFrom(found);
    return true;
}

std::ptrdiff_t InputFile::ReadAt(std::int64_t offset, std::span<unsigned char> buffer) const
{
    if (handle < 0 || offset < 0)
        return -1;
    std::size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = ::pread(static_cast<int>(handle), buffer.data() + done, buffer.size() - done,
                                      offset + static_cast<std::int64_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return -1;
        done += static_cast<std::size_t>(count);
        // A file server may answer in pieces; at the known end no further read is needed.
        if (count == 0 || offset + static_cast<std::int64_t>(done) >= facts.Size)
            break;
    }
    return static_cast<std::ptrdiff_t>(done);
}
