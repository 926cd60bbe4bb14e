#include "session/DragData.h"

#include "platform/Drives.h"

#include <QMimeData>

QMimeData *DragDataOf(const QStringList &paths)
{
    QList<QUrl> urls;
    urls.reserve(paths.size());
    for (const QString &path : paths)
        urls.append(ToUrl(path));
    auto *files = new QMimeData;
    files->setUrls(urls);
    return files;
}
