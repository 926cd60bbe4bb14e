#include "media/TitleTexts.h"

#include "media/MP3File.h"
#include "media/VorbisTag.h"
#include "text/FormatText.h"

using namespace Qt::StringLiterals;

namespace
{
QString JoinCleaned(QString artist, QString title)
{
    artist = CleanText(artist);
    title = CleanText(title);
    if (title.isEmpty())
        return artist;
    if (artist.isEmpty())
        artist = u"Unknown Artist"_s;
    return artist + u" - "_s + title;
}
} // namespace

bool GetID3Tag(const QString &path, MP3File &file)
{
    try {
        file.ReadTags(path, true);
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

QString ID3TitleText(const QString &path)
{
    MP3File file;
    if (!GetID3Tag(path, file))
        return QString();
    QString artist;
    QString title;
    if (file.HasID3v2()) {
        artist = file.GetFrame("TPE1");
        title = file.GetFrame("TIT2");
    }
    // The older tag serves whole: its artist and title belong together.
    if ((artist.isEmpty() || title.isEmpty()) && file.HasID3v1()) {
        artist = file.Artist();
        title = file.Title();
    }
    return JoinCleaned(artist, title);
}

QString OGGTitleText(const QString &path)
{
    VorbisTag tag;
    return ReadVorbisTag(path, tag) ? JoinCleaned(tag.Artist, tag.Title) : QString();
}
