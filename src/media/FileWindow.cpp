#include "media/FileWindow.h"

#include <algorithm>

std::span<const unsigned char> FileWindow::At(std::int64_t offset, std::size_t count)
{
    const std::int64_t behind = start + static_cast<std::int64_t>(length);
    const bool holds = offset >= start && offset < behind &&
                       (behind - offset >= static_cast<std::int64_t>(count) || behind >= file.Size());
    if (!holds) {
        if (offset < 0 || offset >= file.Size() || failed)
            return {};
        // More than was asked, so that a search that asks at every byte does not read every byte anew.
        std::size_t wanted = ahead == 0 || count <= ahead ? std::max(count, ahead) : 4 * count;
        wanted = static_cast<std::size_t>(std::min(static_cast<std::int64_t>(wanted), file.Size() - offset));
        if (wanted > buffer.size()) {
            larger = std::make_unique_for_overwrite<unsigned char[]>(wanted);
            buffer = {larger.get(), wanted};
        }
        const std::ptrdiff_t got = file.ReadAt(offset, buffer.first(wanted));
        failed = got < 0;
        start = offset;
        length = static_cast<std::size_t>(std::max<std::ptrdiff_t>(got, 0));
    }
    const auto skipped = static_cast<std::size_t>(offset - start);
    return buffer.subspan(skipped, length - skipped);
}
