#include "sidetools/BookmarkFile.h"

#include "media/TitleTexts.h"
#include "platform/Drives.h"
#include "text/FormatText.h"
#include "text/PathText.h"
#include "text/TextFiles.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
QString TagTitle(const QString &path, const QString &extension)
{
    if (extension == ".mp3"_L1)
        return ID3TitleText(path);
    return extension == ".ogg"_L1 ? OGGTitleText(path) : QString();
}

/// What a reader may take for the end of a line.
bool IsNoPartOfALine(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}
} // namespace

QString BookmarkTitle(const QString &path)
{
    const QString name = GetFileName(path);
    const QString extension = GetExtension(name);
    QString title = TagTitle(path, extension.toLower());
    if (title.isEmpty())
        title = ShownPath(RemoveText(name, extension));
    std::replace_if(title.begin(), title.end(), IsNoPartOfALine, u' ');
    return ProperCase(title);
}

bool WriteBookmarkFile(const QString &path, const QStringList &files)
{
    QStringList lines;
    lines.reserve(2 * files.size());
    for (const QString &file : files)
        lines << ToPlaylistLine(file) << BookmarkTitle(file);
    return WriteLinesToFile(path, lines);
}
