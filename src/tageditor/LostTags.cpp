#include "tageditor/LostTags.h"

#include "media/TaggedFile.h"
#include "text/FormatText.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

LostTags::LostTags(std::function<void()> whenChanged) : changed(std::move(whenChanged))
{
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { CountSome(); });
}

void LostTags::Count(const QStringList &files)
{
    paths = files;
    read = 0;
    withID3v1 = 0;
    withID3v2 = 0;
    timer.start();
    CountSome();
}

void LostTags::CountSome()
{
    // So many that a slow disk gives them in a moment.
    constexpr qsizetype atOnce = 16;
    const qsizetype end = std::min(read + atOnce, paths.size());
    for (; read < end; ++read) {
        const TagPresence tags = FindTags(paths[read]);
        withID3v1 += tags.ID3v1 ? 1 : 0;
        withID3v2 += tags.ID3v2 ? 1 : 0;
    }
    if (read == paths.size())
        timer.stop();
    changed();
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
    return u"Update removes "_s + losses.join(" and "_L1) + (read == paths.size() ? u"."_s : u" so far."_s);
}
