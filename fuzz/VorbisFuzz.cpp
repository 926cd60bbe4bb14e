#include "FuzzTarget.h"

#include "media/TitleTexts.h"
#include "media/VorbisTag.h"

using namespace Qt::StringLiterals;

namespace
{
void TakeFile(const QByteArray &content)
{
    const QString path = PutFile(u"song.ogg"_s, content);
    VorbisTag tag;
    const bool found = ReadVorbisTag(path, tag);
    Require(found == tag.ErrorMessage.isEmpty(), "a failure says why");
    for (const QString &text : {tag.Title, tag.Artist, tag.Album, tag.Genre, tag.Date, tag.Comment, tag.EncodedUsing})
        Require(text.size() <= 2048, "a text comes from the header");
    Require(OGGTitleText(path).size() <= 3 * 2048, "a title comes from the header");
    Require(ContentOf(path) == content && FilesThere().size() == 1, "reading changes nothing");
}

void TakeComments(const QByteArray &input)
{
    TakeFile(input);
    // Shorter files are not looked at.
    if (input.size() < 4096)
        TakeFile(input.leftJustified(4096, '\0'));
}

const FuzzTarget target("vorbis", TakeComments);
} // namespace
