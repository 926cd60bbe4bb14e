#include "FuzzTarget.h"

#include "playlist/FileRecord.h"
#include "playlist/M3UFile.h"
#include "sidetools/BookmarkFile.h"
#include "text/PathText.h"

using namespace Qt::StringLiterals;

namespace
{
QStringList SessionOf(const QString &path)
{
    QStringList entries;
    ReadSessionFile(path, entries);
    return entries;
}

/// The paths of the rows that entries become; without those whose name is cut out of their folder
/// too, and without half characters, which nothing can hold.
QStringList RowsOf(const QStringList &entries)
{
    QStringList rows;
    EntryReader reader(FuzzFolder());
    for (const QString &entry : entries) {
        const FileRecord record = reader.Analyse(entry);
        const bool isCut = entry.first(FileNameStart(entry)).contains(record.FileName);
        if (!isCut && !record.Folder.contains(record.FileName) && entry.isValidUtf16())
            rows.append(record.Folder + record.FileName);
    }
    return rows;
}

void TakeList(const QByteArray &input)
{
    const QString path = PutFile(u"list.m3u"_s, input);
    QStringList entries;
    ReadM3UFile(path, entries);
    const qsizetype lines = SessionOf(path).size();
    Require(lines <= input.size() && entries.size() <= 4 * lines, "no more entries than the file holds");

    entries.removeDuplicates();
    const QStringList rows = RowsOf(entries.first(qMin(entries.size(), 16)));
    const QString session = FuzzFolder() + u"\\session.m3u8"_s;
    Require(WritePlaylistFile(session, rows), "a list is written");
    Require(RowsOf(SessionOf(session)) == rows, "rows keep their files");

    const QString bookmarks = FuzzFolder() + u"\\marks.bm"_s;
    Require(WriteBookmarkFile(bookmarks, rows), "bookmarks are written");
    entries.clear();
    ReadM3UFile(bookmarks, entries);
    const QStringList marked = RowsOf(entries);
    for (const QString &row : rows)
        Require(marked.contains(row), "a bookmark is read as it was written");
    Require(ContentOf(path) == input, "reading leaves the file as it is");
}

const FuzzTarget target("m3u", TakeList);
} // namespace
