#include "tageditor/SetAttributes.h"

#include "platform/Files.h"

using namespace Qt::StringLiterals;

bool SetAttributes(const QString &path, const AttributeRequests &requests)
{
    const int old = FileAttributes(path);
    if (old < 0)
        return false;
    const auto requested = [old](const QString &request, int attribute) {
        const bool on = request.isEmpty() ? (old & attribute) != 0 : request == u"SET"_s;
        return on ? attribute : 0;
    };
    const int fresh = requested(requests.Normal, AttributeNormal) | requested(requests.ReadOnly, AttributeReadOnly) |
                      requested(requests.Archive, AttributeArchive) | requested(requests.System, AttributeSystem) |
                      requested(requests.Hidden, AttributeHidden);
    return SetFileAttributes(path, fresh);
}
