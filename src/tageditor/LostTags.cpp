#include "tageditor/LostTags.h"

#include "media/TaggedFile.h"
#include "text/FormatText.h"

#include <utility>

using namespace Qt::StringLiterals;

LostTags::LostTags(std::function<void()> whenChanged)
    : pieces([this](qsizetype n) { CountIn(paths[n]); }, std::move(whenChanged))
{
}

void LostTags::Count(const QStringList &files)
{
    paths = files;
    withID3v1 = 0;
    withID3v2 = 0;
    pieces.Start(paths.size());
}

void LostTags::CountIn(const QString &path)
{
    const TagPresence tags = FindTags(path);
    withID3v1 += tags.ID3v1 ? 1 : 0;
    withID3v2 += tags.ID3v2 ? 1 : 0;
}

QString LostTags::Text(bool removesID3v1, bool removesID3v2) const
{
    QStringList losses;
    if (removesID3v1 && withID3v1 > 0)
        losses.append(u"the ID3v1 tag of "_s + Counted(withID3v1, u"file"_s));
    if (removesID3v2 && withID3v2 > 0)
        losses.append(u"the ID3v2 tag of "_s + Counted(withID3v2, u"file"_s));
    if (losses.isEmpty())
        return QString();
    return u"Update removes "_s + losses.join(" and "_L1) + (pieces.IsThrough() ? u"."_s : u" so far."_s);
}
