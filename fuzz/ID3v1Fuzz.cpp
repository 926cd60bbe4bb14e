#include "FuzzTarget.h"

#include "media/MP3File.h"

using namespace Qt::StringLiterals;

namespace
{
void TakeID3v1(const QByteArray &input)
{
    const QString path = PutFile(u"song.mp3"_s, input);
    MP3File file;
    file.ReadID3v1(path, false);
    const qsizetype front = input.size() - (file.HasID3v1() ? ID3v1Tag::Size : 0);
    file.SetTitle(u"A title"_s);
    try {
        file.WriteID3v1(path);
    } catch (const MediaError &) {
        Require(ContentOf(path) == input, "a failed writing leaves the file");
        return;
    }
    MP3File again;
    again.ReadID3v1(path, false);
    Require(again.HasID3v1() && again.Title() == u"A title"_s, "the new text is there");
    Require(again.Artist() == file.Artist() && again.Album() == file.Album() && again.Year() == file.Year() &&
                again.Comment() == file.Comment() && again.Track() == file.Track() && again.Genre() == file.Genre(),
            "the other fields stay");
    Require(ContentOf(path).first(front) == input.first(front) && ContentOf(path).size() == front + ID3v1Tag::Size,
            "what is no tag stays");
    file.RemoveID3v1(path);
    Require(ContentOf(path) == input.first(front), "the tag alone goes");
    Require(FilesThere().size() == 1, "nothing is left behind");
}

const FuzzTarget target("id3v1", TakeID3v1);
} // namespace
