#include "playlist/M3UFile.h"

#include "platform/CodePage.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Names.h"
#include "playlist/Grid.h"
#include "text/FolderWalk.h"
#include "text/PathText.h"
#include "text/TextFiles.h"

#include <algorithm>
#include <array>
#include <bit>

using namespace Qt::StringLiterals;

namespace
{
constexpr std::size_t TypeCount = 4;

/// The extensions of FileTypes, a full stop and three letters each, as FoldedPiece tells them.
std::array<quint64, TypeCount> ExtensionPieces()
{
    std::array<quint64, TypeCount> pieces{};
    std::transform(FileTypes().begin(), FileTypes().end(), pieces.begin(),
                   [](const QString &mask) { return FoldedPiece(mask, 1); });
    return pieces;
}

/// How many of the extensions of FileTypes a line holds, each anywhere and counted once.
int ExtensionsIn(QStringView line)
{
    static const std::array<quint64, TypeCount> extensions = ExtensionPieces();
    unsigned found = 0;
    for (auto stop = std::find(line.begin(), line.end(), u'.'); stop != line.end();
         stop = std::find(stop + 1, line.end(), u'.')) {
        const quint64 piece = FoldedPiece(line, stop - line.begin());
        for (std::size_t i = 0; i < TypeCount; ++i)
            found |= piece == extensions[i] ? 1U << i : 0U;
    }
    return std::popcount(found);
}

/// Appends each line that is no comment as often as timesOf(line) says.
template <typename TimesOf>
bool TakeEntries(QStringView text, const QString &path, QStringList &list, TimesOf timesOf)
{
    const QString folder = AbsolutePath(FolderOf(path), CurrentDirectory());
    const qsizetype before = list.size();
    ForEachLine(text, [&](QStringView line) {
        // One more than fits tells that not all do.
        const bool isFull = list.size() - before > Grid::MaxRows;
        const int times = isFull || line.isEmpty() || line[0] == u'#' ? 0 : timesOf(line);
        if (times > 0)
            list.append(FromPlaylistLine(line, folder));
        for (int more = 1; more < times; ++more)
            list.append(list.constLast());
    });
    return list.size() > before;
}
} // namespace

bool IsPlaylist(const QString &extension)
{
    return extension == ".m3u"_L1 || extension == ".m3u8"_L1 || extension == ".bm"_L1;
}

bool ReadM3UFile(const QString &path, QStringList &list)
{
    QString text;
    return ReadTextFile(path, text) && TakeEntries(text, path, list, ExtensionsIn);
}

bool ReadSessionFile(const QString &path, QStringList &list)
{
    QByteArray content;
    return ReadWholeFile(path, content) && TakeSession(content, path, list);
}

bool TakeSession(const QByteArray &content, const QString &path, QStringList &list)
{
    return TakeEntries(DecodeText(content), path, list, [](QStringView) { return 1; });
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
    return WriteLinesToFile(path, lines,
                            GetExtension(path).toLower() == ".m3u8"_L1 ? TextForm::Utf8 : TextForm::HostPage);
}
