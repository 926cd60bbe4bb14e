#include "playlist/M3UFile.h"

#include "platform/Drives.h"
#include "playlist/FolderWalk.h"
#include "playlist/TextFiles.h"

using namespace Qt::StringLiterals;

namespace
{
// The extension starts with a full stop and holds no second one, so each full stop of the line is looked at once.
bool HoldsExtension(QStringView line, QStringView extension)
{
    for (qsizetype stop = line.indexOf(u'.'); stop >= 0; stop = line.indexOf(u'.', stop + 1)) {
        if (line.sliced(stop).startsWith(extension, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

void AppendEntry(QString line, QStringList &list)
{
    qsizetype times = 0;
    for (const QString &mask : FileTypes())
        times += HoldsExtension(line, QStringView(mask).sliced(1)) ? 1 : 0;
    if (times == 0)
        return;
    if (line[1] == u':')
        line[0] = line[0].toLower();
    const QString path = FromPlaylistLine(line);
    for (; times > 0; --times)
        list.append(path);
}
} // namespace

bool ReadM3UFile(const QString &path, QStringList &list)
{
    QStringList lines;
    if (!ReadLinesFromFile(lines, path))
        return false;
    const qsizetype before = list.size();
    for (const QString &line : std::as_const(lines)) {
        if (!line.isEmpty() && line[0] != u'#')
            AppendEntry(line, list);
    }
    return list.size() > before;
}

bool WritePlaylistFile(const QString &path, const QStringList &paths)
{
    QStringList lines;
    lines.reserve(paths.size());
    for (const QString &entry : paths)
        lines.append(ToPlaylistLine(entry));
    // A file name that starts with U+FEFF would lose it to the reader, who takes it for a byte order mark there.
    if (!lines.isEmpty() && lines.first().startsWith(QChar::ByteOrderMark))
        lines.first().prepend(u"./"_s);
    return WriteLinesToFile(path, lines);
}
