#include "FuzzTarget.h"

#include "media/MP3File.h"

#include <array>

using namespace Qt::StringLiterals;

namespace
{
constexpr std::array<QByteArrayView, 14> ids{"TIT2", "TPE1", "TALB", "TYER", "TRCK", "TCOM", "TOPE",
                                             "TCOP", "TENC", "WXXX", "USLT", "TXXX", "WOAR", "TCON"};

/// Every text of a tag but one.
QStringList TextsWithout(const MP3File &file, QByteArrayView id)
{
    QStringList texts{file.Tempo(), file.Mood(), file.Situation(), file.Preference()};
    for (const QByteArrayView each : ids)
        texts.append(each == id ? QString() : file.GetFrame(each));
    return texts;
}

/// What stands behind the tags; false where that is not known.
bool WithoutTag(const QByteArray &content, QByteArray &rest)
{
    const QString path = PutFile(u"bare.mp3"_s, content);
    try {
        MP3File().RemoveID3v2(path);
    } catch (const MediaError &) {
        Require(ContentOf(path) == content, "a failed removal leaves the file");
        return false;
    }
    rest = ContentOf(path);
    return true;
}

void TakeID3v2(const QByteArray &input)
{
    const QString path = PutFile(u"song.mp3"_s, input);
    MP3File file;
    file.ReadTags(path, false);
    MP3File shown;
    shown.ReadTexts(path, ids, false);
    Require(TextsWithout(shown, {}).sliced(4) == TextsWithout(file, {}).sliced(4), "a report shows the same texts");
    const QByteArrayView id = ids[static_cast<std::size_t>(input.size()) % ids.size()];
    file.SetFrame(id, u"1999"_s);
    try {
        file.WriteID3v2(path);
    } catch (const MediaError &) {
        Require(ContentOf(path) == input && FilesThere().size() == 1, "a failed writing leaves the file");
        return;
    }
    MP3File again;
    again.ReadTags(path, false);
    Require(again.GetFrame(id) == u"1999"_s, "the new text is there");
    Require(TextsWithout(again, id) == TextsWithout(file, id), "the other texts stay");
    Require(again.Comments().Items() == file.Comments().Items(), "the comments stay");
    Require(again.Images().Items() == file.Images().Items(), "the pictures stay");
    Require(FilesThere().size() == 1, "nothing is left behind");
    const QByteArray written = ContentOf(path);
    QByteArray before;
    QByteArray after;
    if (WithoutTag(input, before))
        Require(WithoutTag(written, after) && before == after, "the audio stays");
}

const FuzzTarget target("id3v2", TakeID3v2);
} // namespace
