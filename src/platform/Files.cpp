#include "platform/Files.h"

#include "platform/ReplacedFile.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace
{

constexpr std::int64_t LeastBuffer = 4 * 1024;
constexpr std::int64_t MostBuffer = 256 * 1024;

/// Hands the content of a file to a receiver in pieces, in order; false when the file or the receiver fails.
template <typename Receiver>
bool ReadPieces(const InputFile &file, Receiver receive)
{
    // The end is found beyond the size that is told.
    std::vector<unsigned char> buffer(static_cast<std::size_t>(std::clamp(file.Size() + 1, LeastBuffer, MostBuffer)));
    for (std::int64_t offset = 0;;) {
        const std::ptrdiff_t count = file.ReadAt(offset, buffer);
        if (count < 0)
            return false;
        if (count == 0)
            return true;
        if (!receive(QByteArrayView(reinterpret_cast<const char *>(buffer.data()), count)))
            return false;
        offset += count;
    }
}

} // namespace

bool ListFolder(const QString &folder, FolderEntries &entries)
{
    return FolderReader(folder).List(entries);
}

bool IsGone(const QString &path)
{
    return IsAbsent(path) && ExamineFile(path.first(path.lastIndexOf(u'\\') + 1)).IsFolder;
}

bool ReadWholeFile(const QString &path, QByteArray &content)
{
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    content.clear();
    InputFile file;
    if (!file.Open(path) || file.Size() > most)
        return false;
    content.reserve(file.Size());
    const bool read = ReadPieces(file, [&content](QByteArrayView piece) {
        content.append(piece);
        return content.size() <= most;
    });
    if (!read)
        content.clear();
    return read;
}

bool WriteWholeFile(const QString &path, const QByteArray &content)
{
    ReplacedFile file;
    return file.Begin(path) && file.Append(content) && file.Commit();
}

bool CopyFile(const QString &from, const QString &to)
{
    InputFile source;
    ReplacedFile target;
    if (!source.Open(from) || !target.Begin(to))
        return false;
    const bool copied = ReadPieces(source, [&target](QByteArrayView piece) { return target.Append(piece); });
    return copied && target.Commit();
}
