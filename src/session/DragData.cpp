#include "session/DragData.h"

#include "platform/Drives.h"

#include <QMimeData>

using namespace Qt::StringLiterals;

namespace
{
/// The path that a line stands for; empty for none.
QString PathOfLine(QStringView line)
{
    line = line.trimmed();
    if (line.size() > 1 && line.front() == u'"' && line.back() == u'"')
        line = line.sliced(1, line.size() - 2);
    if (line.startsWith("file:"_L1, Qt::CaseInsensitive))
        return FromUrl(QUrl(line.toString()));
    const QString path = FromPlaylistLine(line, {});
    const bool onDrive = path.size() > 2 && path[0].isLetter() && path[1] == u':' && path[2] == u'\\';
    return onDrive || path.startsWith("\\\\"_L1) ? path : QString();
}
} // namespace

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

QStringList FilesOf(const QMimeData &content)
{
    QStringList paths;
    for (const QUrl &url : content.urls())
        paths.append(FromUrl(url));
    paths.removeAll(QString());
    return paths;
}

QStringList PathsOf(const QMimeData &content)
{
    if (content.hasUrls())
        return FilesOf(content);
    QStringList paths;
    const QString text = content.text();
    for (const QStringView line : QStringView(text).split(u'\n'))
        paths.append(PathOfLine(line));
    paths.removeAll(QString());
    return paths;
}
