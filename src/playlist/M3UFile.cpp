#include "playlist/M3UFile.h"

#include "platform/Drives.h"
#include "text/FolderWalk.h"
#include "text/PathText.h"
#include "text/TextFiles.h"

#include <bit>

using namespace Qt::StringLiterals;

namespace
{
/// How many of the extensions of FileTypes a line holds, each anywhere and counted once. They all start with a full
/// stop and hold no second one, so that each full stop of the line is looked at once.
int ExtensionsIn(QStringView line)
{
    const QStringList &masks = FileTypes();
    unsigned found = 0;
    for (qsizetype stop = line.indexOf(u'.'); stop >= 0; stop = line.indexOf(u'.', stop + 1)) {
        const QStringView rest = line.sliced(stop);
        for (qsizetype i = 0; i < masks.size(); ++i)
            found |= rest.startsWith(QStringView(masks[i]).sliced(1), Qt::CaseInsensitive) ? 1U << i : 0U;
    }
    return std::popcount(found);
}

/// Appends each line that is no comment as often as timesOf(line) says.
template <typename TimesOf>
bool ReadEntries(const QString &path, QStringList &list, TimesOf timesOf)
{
    QStringList lines;
    if (!ReadLinesFromFile(lines, path))
        return false;
    const QString folder = AbsolutePath(FolderOf(path), CurrentDirectory());
    const qsizetype before = list.size();
    for (const QString &line : std::as_const(lines)) {
        const int times = line.isEmpty() || line[0] == u'#' ? 0 : timesOf(line);
        if (times > 0)
            list.insert(list.size(), times, FromPlaylistLine(line, folder));
    }
    return list.size() > before;
}
} // namespace

bool ReadM3UFile(const QString &path, QStringList &list)
{
    return ReadEntries(path, list, ExtensionsIn);
}

bool ReadSessionFile(const QString &path, QStringList &list)
{
    return ReadEntries(path, list, [](QStringView) { return 1; });
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
