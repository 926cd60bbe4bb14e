#include "media/MP3File.h"
#include "media/TagBytes.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <taglib/attachedpictureframe.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <random>

using namespace Qt::StringLiterals;

namespace
{
/// Every frame that the editor shows, for the order of calls.
const QList<QByteArray> shownFrames{"TIT2", "TPE1", "TALB", "TYER", "TRCK", "TCOM", "TOPE",
                                    "TCOP", "TENC", "WXXX", "USLT", "TXXX", "WOAR", "TCON"};

/// What a tag editor has no field for.
QList<QByteArray> UnshownFrames(int version)
{
    const QByteArray flags = version == 4 ? Raw("\x40\x00") : Raw("\x80\x00");
    const QByteArray grouped = version == 4 ? Raw("\x00\x40") : Raw("\x00\x20");
    const QByteArray encrypted = version == 4 ? Raw("\x00\x04") : Raw("\x00\x40");
    return {
        Frame(version, "POPM", Raw("a@b.example\0\xC4\0\0\0\7")),
        Frame(version, "PRIV", Raw("owner\0\0\1\2\xFF\xE0\xFF"), flags),
        Frame(version, "UFID", Raw("http://id.example\0") + QByteArray(16, '\x81')),
        Frame(version, "CHAP", Raw("ch1\0\0\0\0\0\0\0\1\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF")),
        Frame(version, "GEOB",
              Raw("\1text/plain\0\xFF\xFE"
                  "a\0\0\0\xFF\xFE\0\0xyz")),
        Frame(version, "XYZW", Raw("\0\1\2"), grouped),
        Frame(version, "TXXX", Raw("\0replaygain_track_gain\0-7.0 dB")),
        Frame(version, "TXXX", Raw("\0no value\0")),
        Frame(version, "TXXX", Raw("\1o\0r\0d\0\0\0e\0r\0")),
        Frame(version, "USLT", Raw("\0engno description")),
        Frame(version, "WXXX", Raw("\0shop\0http://shop.example")),
        Frame(version, "TPE2", Raw("\1\xFF\xFE\x3D"), flags),
        Frame(version, "TIT3", Raw("\7not a text")),
        Frame(version, "TPOS", Raw("cipher"), encrypted),
        Frame(version, "COMM", Raw("\7xxxnot a comment")),
        Frame(version, "WOAS", Raw("http://source.example")),
        Frame(version, "SYLT", QByteArray(300, '\xFF')),
    };
}
} // namespace

class TagsTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir folder;
    const QString hostPath = folder.filePath(u"song.mp3"_s);
    const QString path = FromHostPath(hostPath);
    const QByteArray audio = DataFile(u"cbr128-mpeg1-joint-bare.mp3"_s);

    static QByteArray DataFile(const QString &name)
    {
        QByteArray content;
        ReadWholeFile(FromHostPath(QStringLiteral(TEST_DATA) + u'/' + name), content);
        return content;
    }

    void Put(const QByteArray &content) const
    {
        QFile file(hostPath);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    QByteArray Content() const
    {
        QByteArray content;
        ReadWholeFile(path, content);
        return content;
    }

    /// A file with these bytes before the audio, read.
    void Load(MP3File &file, const QByteArray &front) const
    {
        Put(front + audio);
        file.ReadTags(path, false);
    }

    /// The road of an update: one text changes, everything goes back.
    void ChangeTitle(const QString &title) const
    {
        MP3File file;
        file.ResetFile(path);
        file.ReadTags(path, false);
        file.SetFrame("TIT2", title);
        file.WriteTags(path, file.HasID3v1() ? MP3File::TagChange::Write : MP3File::TagChange::Remove,
                       MP3File::TagChange::Write);
    }

    QString TitleNow() const
    {
        MP3File file;
        file.ReadTags(path, false);
        return file.GetFrame("TIT2");
    }

    static QString Error(const std::function<void()> &call)
    {
        try {
            call();
        } catch (const MediaError &error) {
            return error.Text();
        }
        return QString();
    }

private Q_SLOTS:
    void EveryVersionIsRead()
    {
        const QByteArray utf16 = Raw("\1\xFF\xFE\x14\x04\x30\x04");
        const std::pair<QByteArray, QString> cases[] = {
            {Tag(2, Raw("TT2\0\0\6\0Title"
                        "TYE\0\0\5\0"
                        "1997")),
             u"Title|1997"_s},
            {Tag(3, Frame(3, "TIT2", utf16) +
                        Frame(3, "TYER",
                              Raw("\0"
                                  "1997")) +
                        QByteArray(50, '\0')),
             u"Да|1997"_s},
            {Tag(4, Frame(4, "TIT2", Raw("\3\xF0\x9F\x8E\xB5\0b")) + Frame(4, "TDRC",
                                                                           Raw("\0"
                                                                               "1997-05-06"))),
             u"🎵/b|1997"_s},
            // Unsynchronised: the whole tag, or each frame.
            {Tag(3, Frame(3, "TIT2", Raw("\0\xFF\xE0z")).replace("\xFF\xE0", Raw("\xFF\0\xE0")), 0x80), u"ÿàz|"_s},
            {Tag(4, Frame(4, "TIT2", Raw("\0\xFF\0\xE0z"), Raw("\0\2"))), u"ÿàz|"_s},
            {Tag(4, Frame(4, "TIT2", Raw("\0\xFF\0\xE0z")), 0x80), u"ÿàz|"_s},
            // Extended headers, a footer, plain sizes in a 2.4 tag, a group, an old id in a new tag.
            {Tag(3, Raw("\0\0\0\6\0\0\0\0\0\0") + Frame(3, "TIT2", Raw("\0e3")), 0x40), u"e3|"_s},
            {Tag(4, Raw("\0\0\0\x0D\1\x30\5\1\2\3\4\5\1\7").replace(3, 1, Raw("\x0E")) + Frame(4, "TIT2", Raw("\0e4")),
                 0x40),
             u"e4|"_s},
            {Tag(4, Frame(4, "TIT2", Raw("\0foot")), 0x10) + QByteArray(10, '3'), u"foot|"_s},
            {Tag(4, Frame(3, "TENC", QByteArray(200, 'x')) + Frame(4, "TIT2", Raw("\0plain"))), u"plain|"_s},
            {Tag(4, Frame(3, "TENC", QByteArray(300, '\0')) + Frame(4, "TIT2", Raw("\0plain"))), u"plain|"_s},
            {Tag(3, Frame(3, "TCP ",
                          Raw("\0"
                              "1")) +
                        Frame(3, "TIT2", Raw("G\0group"), Raw("\0\x20"))),
             u"group|"_s},
            {Tag(3, Frame(3, "TT2", Raw("\0old")).replace("TT2", Raw("TT2\0")) + Frame(3, "TIT2", Raw("\0new"))),
             u"new|"_s},
            {Tag(3, Frame(3, "TIT2", qCompress(Raw("\0packed")), Raw("\0\x80"))), u"packed|"_s},
            {Tag(4, Frame(4, "TIT2", 'G' + Number(201, 7) + qCompress('\0' + QByteArray(200, 'p')).sliced(4),
                          Raw("\0\x49"))),
             QString(QString(200, u'p') + u'|')},
            {Tag(4, Frame(4, "TIT2", Raw("\0\0\0\7\0length"), Raw("\0\1"))), u"length|"_s},
            // Too much for the memory, a wrong length, and a text that cannot be decoded make way for a new one.
            {Tag(3, Frame(3, "TIT2", qCompress('\0' + QByteArray(20 << 20, 'x')), Raw("\0\x80"))), u"|"_s},
            {Tag(3, Frame(3, "TIT2", qCompress(Raw("\0packed")).replace(3, 1, "\1"), Raw("\0\x80"))), u"|"_s},
            {Tag(3, Frame(3, "TIT2", Raw("\7undecoded"))), u"|"_s},
        };
        for (const auto &[tag, expected] : cases) {
            MP3File file;
            Load(file, tag);
            QVERIFY(file.HasID3v2());
            QCOMPARE(QString(file.GetFrame("TIT2") + u'|' + file.GetFrame("TYER")), expected);
            // What was followed is written without complaint, and read back, also where unsynchronising adds bytes.
            file.SetFrame("TIT2", u"ÿЖ"_s);
            file.Comments().Add(u"text"_s, u"ÿ"_s);
            file.WriteID3v2(path);
            file.ReadID3v2(path, false);
            QCOMPARE(QString(file.GetFrame("TIT2") + file.Comments().Items().constFirst().Description), u"ÿЖÿ"_s);
            QCOMPARE(Content().count("TIT2"), 1);
            QVERIFY(Content().endsWith(audio));
        }
    }

    void OldFramesAreConverted()
    {
        MP3File file;
        Load(file,
             Tag(2, Raw("TT2\0\0\3\0\xFF\0\xE0TP2\0\0\5\0bandPIC\0\0\x09\0JPG\3\0abcPIC\0\0\2\0xXX1\0\0\1z"), 0x80));
        QCOMPARE(file.GetFrame("TIT2"), u"ÿà"_s);
        file.WriteID3v2(path);
        const QByteArray expected = Frame(3, "TPE2", Raw("\0band")) + Frame(3, "APIC", Raw("\0image/jpeg\0\3\0abc")) +
                                    Frame(3, "XPIC", Raw("\0x")) + Frame(3, "XXX1", "z");
        QVERIFY(Content().contains(expected));
    }

    void TextsSurviveInEveryScript()
    {
        for (const int version : {3, 4}) {
            for (const QString &text : scripts) {
                MP3File file;
                Load(file, Tag(version, Frame(version, "TENC", Raw("\0x"))));
                for (const QByteArray &id : shownFrames)
                    file.SetFrame(id, id == "TYER" ? u"1997"_s : id.startsWith('W') ? u"http://a.example"_s : text);
                file.SetMood(text);
                file.Comments().Add(text, text);
                file.WriteID3v2(path);
                QCOMPARE(static_cast<int>(Content()[3]), version);
                QCOMPARE(Content().contains(text.toUtf8()), version == 4);

                MP3File again;
                again.ReadTags(path, true);
                for (const QByteArray &id : shownFrames)
                    QCOMPARE(again.GetFrame(id), file.GetFrame(id));
                QCOMPARE(again.GetFrame("TIT2"), text);
                QCOMPARE(again.Mood(), text);
                QCOMPARE(again.Comments().Items().size(), 1);
                QCOMPARE(again.Comments().Items().first().Description, text);
                QCOMPARE(again.Bitrate(), u"128"_s);

                TagLib::MPEG::File other(QFile::encodeName(hostPath).constData(), false);
                QCOMPARE(QString::fromStdString(other.ID3v2Tag()->title().to8Bit(true)), text);
                QCOMPARE(other.ID3v2Tag()->year(), 1997U);
            }
        }
    }

    void WhatIsNotShownSurvives()
    {
        for (const int version : {3, 4}) {
            const QByteArray mine = Frame(version, "TXXX", Raw("\0\0mine")) + Frame(version, "WXXX", Raw("\0\0mine"));
            const QByteArray extended =
                version == 4 ? Raw("\0\0\0\x0E\1\x30\5\1\2\3\4\5\1\7") : Raw("\0\0\0\6\0\0\0\0\0\0");
            QByteArray body = extended + Frame(version, "TIT2", Raw("\0old"), Raw("\x40\0"));
            for (const QByteArray &frame : UnshownFrames(version))
                body += frame;
            Put(Tag(version, body + mine + QByteArray(20, '\0'), 0x60).replace(4, 1, "\1") + audio);
            MP3File file;
            file.ReadTags(path, false);
            file.Images().Clear();
            file.Comments().Clear();
            for (const QByteArray &id : shownFrames)
                file.SetFrame(id,
                              u"a new text that does not fit where the old one stood: %1"_s.arg(QLatin1StringView(id)));
            file.WriteID3v2(path);

            const QByteArray written = Content();
            for (const QByteArray &frame : UnshownFrames(version))
                QVERIFY2(written.contains(frame), frame.toHex().constData());
            QVERIFY(!written.contains(mine));
            QVERIFY(written.endsWith(audio));
            QCOMPARE(written.sliced(4, 2), Raw("\1\x60"));
            QCOMPARE(written.sliced(written.indexOf("TIT2") + 8, 2), Raw("\x40\0"));
            if (version == 4) {
                // Without the checksum.
                QVERIFY(written.sliced(10).startsWith(Raw("\0\0\0\x08\1\x10\1\7TIT2")));
            } else {
                const qsizetype tagEnd = written.size() - audio.size();
                const qsizetype padding = tagEnd - written.lastIndexOf("TCON", tagEnd) - 4;
                QCOMPARE(written.sliced(16, 4), Number(static_cast<quint32>(padding), 8));
            }

            // Emptied again, what is left are the frames that were never shown.
            for (const QByteArray &id : shownFrames)
                file.SetFrame(id, {});
            file.WriteID3v2(path);
            for (const QByteArray &frame : UnshownFrames(version))
                QVERIFY2(Content().contains(frame), frame.constData());
        }
    }

    void UntouchedTextIsNotRewritten()
    {
        // Encodings and forms that we would never choose.
        const QByteArray frames =
            Frame(3, "TIT2",
                  Raw("\1\xFF\xFE"
                      "a\0\0\0")) +
            Frame(3, "TCON", Raw("\0(17)(Pop)")) + Frame(3, "USLT", Raw("\1deu\xFE\xFF\0\0\xFE\xFF\0z")) +
            Frame(3, "COMM", Raw("\0fra\0bonjour")) + Frame(3, "COMM", Raw("\0eng\0hello")) +
            Frame(3, "WXXX", Raw("\1\xFF\xFE\x16\x04\0\0http://old")) + Frame(3, "TPE1", Raw("\1\xFF\xFE\0\xD8"));
        MP3File file;
        Load(file, Tag(3, frames + QByteArray(100, '\0')));
        QCOMPARE(file.GetFrame("TCON"), u"Rock/Pop"_s);
        const QByteArray before = Content();
        for (const QByteArray &id : shownFrames)
            file.SetFrame(id, file.GetFrame(id));
        const QList<MP3Comment> comments = file.Comments().Items();
        QCOMPARE(comments.size(), 2);
        file.Comments().Clear();
        for (const MP3Comment &comment : comments)
            file.Comments().Add(comment.Text, comment.Description);
        file.WriteID3v2(path);
        QCOMPARE(Content(), before);
        file.Comments().Clear();
        file.Comments().Add(u"hello"_s, {});
        file.Comments().Add(u"bonjour"_s, u"new"_s);
        file.WriteID3v2(path);
        QVERIFY(!Content().contains("fra") && Content().contains(Raw("engnew\0bonjour")) &&
                Content().contains(Frame(3, "COMM", Raw("\0eng\0hello"))));
        file.SetFrame("USLT", u"new"_s);
        file.WriteID3v2(path);
        QVERIFY(Content().contains(Frame(3, "USLT", Raw("\0deu\0new"))));
        file.SetFrame("WXXX", u"http://new"_s);
        file.WriteID3v2(path);
        QVERIFY(Content().contains(Frame(3, "WXXX", Raw("\1\xFF\xFE\x16\x04\0\0http://new"))));
    }

    void RoomFitsTheTag()
    {
        MP3File file;
        Load(file, Tag(3, Frame(3, "TIT2", Raw("\0x")) + QByteArray(100'000, '\0')));
        const qsizetype before = Content().size();
        file.SetFrame("TIT2", u"y"_s);
        file.WriteID3v2(path);
        QVERIFY(Content().size() < audio.size() + 9000);
        // The audio stays at its place in a block of the disk.
        QCOMPARE((before - Content().size()) % 4096, 0);
        // What looks like an ID3v1 tag is a part of the ID3v2 tag.
        const QByteArray frame = Frame(3, "PRIV", "TAG" + QByteArray(125, 'x'));
        Put(Tag(3, frame));
        file.ReadTags(path, false);
        file.SetFrame("TIT2", u"y"_s);
        file.WriteTags(path, MP3File::TagChange::Remove, MP3File::TagChange::Write);
        QVERIFY(Content().contains(frame));
    }

    void FramesFollowTheirRules()
    {
        MP3File file;
        Load(file, Tag(4, Frame(4, "TDRC",
                                Raw("\0"
                                    "2001-05-06")) +
                              Frame(4, "TXXX", Raw("\0key\0value")) + Frame(4, "TALB", Raw("\0one")) +
                              Frame(4, "TALB", Raw("\0two"))));
        file.SetFrame("TYER", u"2001"_s);
        file.SetFrame("TALB", {});
        QCOMPARE(file.GetFrame("TXXX"), u"value"_s);
        file.SetFrame("TXXX", u"other"_s);
        file.SetFrame("WOAR", u"http://x.example/ж"_s);
        file.SetTempo(u"fast"_s);
        file.Comments().Add(u"plain"_s, {});
        file.WriteID3v2(path);
        QVERIFY(Content().contains("2001-05-06") && Content().contains(Raw("key\0other")) &&
                !Content().contains("two"));
        QVERIFY(Content().contains("http://x.example/%D0%B6"));
        QVERIFY(Content().contains(Raw("engMusicMatch_Tempo\0fast")));
        QCOMPARE(file.Comments().Count(), 1);
        file.SetFrame("TYER", u"2002"_s);
        file.SetTempo({});
        file.WriteID3v2(path);
        QVERIFY(!Content().contains("2001") && !Content().contains("MusicMatch"));

        const QPair<QByteArray, QString> genres[]{
            {"17", u"Rock"_s},     {"(17)Rock", u"Rock"_s},           {"(4)Eurodisco", u"Disco/Eurodisco"_s},
            {"((x)", u"(x)"_s},    {"(RX)(CR)", u"Remix/Cover"_s},    {"255", u"255"_s},
            {"(open", u"(open"_s}, {"(Live) take", u"(Live) take"_s}, {Raw("8\0My own"), u"Jazz/My own"_s}};
        for (const auto &[stored, shown] : genres) {
            Load(file, Tag(4, Frame(4, "TCON", '\0' + stored)));
            QCOMPARE(file.GetFrame("TCON"), shown);
        }
        QCOMPARE(MP3File::GenreList().split(u'|').size(), 192);
        QCOMPARE(MP3File::GenreList().section(u'|', 17, 17), u"Rock"_s);
    }

    void PicturesComeAndGo()
    {
        const QString bitmap = folder.filePath(u"tmp.bmp"_s);
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(bitmap));
        const QByteArray broken = Frame(3, "APIC", Raw("\0PNG\0\3damaged\0no picture"));
        MP3File file;
        Load(file, Tag(3, Frame(3, "TIT2", Raw("\0t")) + broken));
        QCOMPARE(file.Images().Count(), 1);
        const MP3Image old = file.Images().Item(1);
        QCOMPARE(QString(old.Description + u' ' + old.MIMEType), u"damaged image/png"_s);
        QVERIFY(old.Picture().isNull());
        QCOMPARE(old.Size(), 10);
        QVERIFY(file.Images().Item(2).Data.isEmpty() && file.Images().Item(0).Data.isEmpty());

        file.Images().Clear();
        QCOMPARE(file.Images().Count(), 0);
        file.Images().Add(FromHostPath(bitmap), u"Обложка"_s);
        Put(QByteArray());
        QVERIFY(WriteWholeFile(FromHostPath(bitmap), old.Data));
        file.Images().Add(FromHostPath(bitmap), u"second"_s);
        file.Images().Add(FromHostPath(bitmap), u"damaged"_s);
        QVERIFY(QFile::remove(bitmap));
        QVERIFY(!Error([&] { file.Images().Add(FromHostPath(bitmap), u"gone"_s); }).isEmpty());
        Put(audio);
        file.WriteID3v2(path);
        QVERIFY(Content().contains(broken));

        MP3File again;
        again.ReadTags(path, false);
        QCOMPARE(again.Images().Count(), 3);
        QCOMPARE(again.Images().Item(2).Picture().convertToFormat(QImage::Format_RGB32), image);
        QCOMPARE(again.Images().Item(2).MIMEType, u"image/bmp"_s);
        TagLib::MPEG::File other(QFile::encodeName(hostPath).constData(), false);
        const auto pictures = other.ID3v2Tag()->frameList("APIC");
        const auto *added = dynamic_cast<TagLib::ID3v2::AttachedPictureFrame *>(pictures[1]);
        QCOMPARE(added->type(), TagLib::ID3v2::AttachedPictureFrame::FrontCover);
        QCOMPARE(QString::fromStdString(added->description().to8Bit(true)), u"Обложка"_s);
        added = dynamic_cast<TagLib::ID3v2::AttachedPictureFrame *>(pictures.back());
        QCOMPARE(added->type(), TagLib::ID3v2::AttachedPictureFrame::Other);
        QCOMPARE(QString::fromStdString(added->description().to8Bit(true)), u"second"_s);
    }

    void ID3v1FieldsAreCut()
    {
        MP3File file;
        Load(file, {});
        QVERIFY(!file.HasID3v1() && !file.HasID3v2());
        QCOMPARE(file.Title(), QString());
        file.SetTitle(u"A title of more than thirty characters"_s);
        file.SetArtist(u"Béla Жук"_s);
        file.SetYear(u"19975"_s);
        file.SetComment(QString(30, u'c'));
        file.SetGenre(254);
        file.WriteID3v1(path);
        QCOMPARE(Content().size(), audio.size() + 128);
        file.ReadTags(path, false);
        QVERIFY(file.HasID3v1());
        QCOMPARE(QString(file.Title() + u'|' + file.Artist() + u'|' + file.Year() + u'|' + file.Comment()),
                 u"A title of more than thirty ch|Béla ???|1997|cccccccccccccccccccccccccccccc"_s);
        file.SetTrack(255);
        file.WriteID3v1(path);
        file.ReadID3v1(path, false);
        QCOMPARE(QString(file.Comment() + QString::number(file.Track()) + u' ' + QString::number(file.Genre())),
                 QString(QString(28, u'c') + u"255 254"));
        // Not left open: an open file is not replaced everywhere.
        QCOMPARE(TagLib::MPEG::File(QFile::encodeName(hostPath).constData(), false).ID3v1Tag()->track(), 255U);
        file.SetTrack(0);
        file.WriteID3v1(path);
        file.ReadID3v1(path, false);
        QCOMPARE(file.Track(), quint8{0});
        file.RemoveID3v1(path);
        QCOMPARE(Content(), audio);
        // Fields that nobody changes keep their bytes, blanks and all.
        const QByteArray blanks = "TAG" + QByteArray(124, ' ') + '\x01';
        Put(audio + blanks);
        file.ReadTags(path, false);
        QCOMPARE(file.Album(), QString());
        file.WriteID3v1(path);
        QVERIFY(Content() == audio + blanks);
        // What merely looks like one: an APE tag's mark, and a frame of a tag that fills the file.
        const QByteArray frame = Frame(3, "PRIV", "TAG" + QByteArray(125, 'x'));
        for (const QByteArray &content :
             QList<QByteArray>{audio + "APE" + "TAGEX" + QByteArray(123, 'x'), Tag(3, frame)}) {
            Put(content);
            file.ReadTags(path, false);
            QVERIFY(!file.HasID3v1());
            file.RemoveID3v1(path);
            QVERIFY(Content() == content);
        }
    }

    void ReusedObjectForgetsTheFileBefore()
    {
        MP3File file;
        Put(Tag(3, Frame(3, "TIT2", Raw("\0x"))) + audio + "TAG" + QByteArray(125, 'y'));
        file.ReadTags(path, true);
        QVERIFY(file.HasID3v1() && file.HasID3v2() && file.SongLength() > 1);
        Put("no audio at all");
        file.ResetFile(path);
        file.ReadTags(path, true);
        QVERIFY(!file.HasID3v1() && !file.HasID3v2());
        QCOMPARE(QString(file.GetFrame("TIT2") + file.Title() + file.Bitrate()), QString());
        QFile::remove(hostPath);
        QVERIFY(Error([&] { file.ReadTags(path, true); }).contains(u"cannot be opened"));
        QVERIFY(Error([&] { file.WriteID3v2(path); }).contains(u"cannot be opened"));
    }

    void EveryFileKeepsItsAudio()
    {
        const QDir data(QStringLiteral(TEST_DATA));
        for (const QString &name : data.entryList({u"*.mp3"_s}, QDir::Files)) {
            const QByteArray before = DataFile(name);
            Put(before);
            MP3File file;
            file.ReadTags(path, true);
            const double length = file.SongLength();
            const QString error = Error([this] { ChangeTitle(u"Титул"_s + QString(5000, u'x')); });
            if (name == u"tag-beyond-end.mp3") {
                QVERIFY(error.contains(u"more bytes than the file holds"));
                QVERIFY(Content() == before);
                continue;
            }
            QCOMPARE(error, QString());
            const bool tagged = before.startsWith("ID3");
            const qsizetype oldFront =
                tagged ? 10 + (before[6] << 21 | before[7] << 14 | before[8] << 7 | before[9]) : 0;
            QVERIFY2(Content().endsWith(before.sliced(oldFront + (tagged && (before[5] & 0x10) ? 10 : 0))),
                     qPrintable(name));
            file.ReadTags(path, true);
            QCOMPARE(file.SongLength(), length);
            file.RemoveID3v2(path);
            QVERIFY2(before.endsWith(Content()), qPrintable(name));
            file.ReadTags(path, false);
            QVERIFY(!file.HasID3v2());
        }
    }

    void DamagedTagsAreNotWrittenOver()
    {
        const QByteArray title = Frame(3, "TIT2", Raw("\0kept"));
        const std::tuple<QByteArray, QString> cases[] = {
            {Tag(3, title + Frame(3, "TPE1", Raw("\0x")).replace(7, 1, "\x7F")), u"a frame longer than the tag"_s},
            {Tag(3, title + "no frame at all, just bytes"), u"bytes that belong to no frame"_s},
            {Tag(3, title + QByteArray(20, '\0') + "hidden" + QByteArray(20, '\0')),
             u"bytes that belong to no frame"_s},
            {Tag(3, Tag(3, title)), u"bytes that belong to no frame"_s},
            {Tag(3, title).replace(7, 1, "\x7F"), u"more bytes than the file holds"_s},
            {Tag(3, title).replace(7, 1, "\xFF"), u"size cannot be read"_s},
            {Tag(5, title), u"unknown version"_s},
            {Tag(3, Raw("\0\0\1\6\0\0\0\0\0\0") + title, 0x40), u"damaged extended header"_s},
            {Tag(4, Raw("\0\0\0\x09\1\x20\5") + title, 0x40), u"damaged extended header"_s},
            {Tag(2, Raw("TT2\0\0\5\0kept"), 0x40), u"compressed"_s},
            {Tag(3, title) + Tag(4, "second, broken"), u"bytes that belong to no frame"_s},
        };
        for (const auto &[tag, reason] : cases) {
            MP3File file;
            Load(file, tag);
            const QByteArray before = Content();
            const bool second = tag.contains("second");
            if (tag[3] == 3 && tag[5] == 0 && static_cast<quint8>(tag[7]) != 0xFF && !tag.contains(Raw("\0\0\0\0ID3")))
                QVERIFY(file.GetFrame("TIT2") == u"kept" || tag.count("ID3") > 1);
            if (!second)
                QVERIFY2(Error([&] { file.WriteID3v2(path); }).contains(reason), qPrintable(reason));
            QVERIFY2(Error([&] { file.RemoveID3v2(path); }).contains(reason), qPrintable(reason));
            QVERIFY(Content() == before);
            // The other tag is written all the same.
            file.SetTitle(u"v1"_s);
            QVERIFY(Error([&] {
                        file.WriteTags(path, MP3File::TagChange::Write, MP3File::TagChange::Remove);
                    }).contains(reason));
            QVERIFY(Content().startsWith(before) && Content().size() == before.size() + 128);
            // Nor is what was read of them written over a good tag.
            const QByteArray good = Tag(4, Frame(4, "TIT2", Raw("\0other"))) + audio;
            Put(good);
            if (!second)
                QVERIFY(Error([&] { file.WriteID3v2(path); }).contains(reason) && Content() == good);
        }
    }

    void RandomDamageHarmsNothing()
    {
        std::mt19937 random(20240101);
        QByteArray body;
        for (const QByteArray &frame : UnshownFrames(4))
            body += frame;
        const QByteArray sources[] = {DataFile(u"tag-id3v23.mp3"_s), DataFile(u"tag-id3v24-unsynchronised.mp3"_s),
                                      Tag(4, body) + audio.first(2000),
                                      Tag(2, Raw("PIC\0\0\x0C\0JPG\3d\0abcdef")) + audio.first(500)};
        for (int round = 0; round < 600; ++round) {
            QByteArray content = sources[round % 4];
            for (int change = 0; change < 3; ++change)
                content[static_cast<qsizetype>(random() % 300)] = static_cast<char>(random());
            if (round % 5 == 0)
                content.truncate(static_cast<qsizetype>(random() % 400));
            Put(content);
            MP3File file;
            file.ReadTags(path, false);
            for (const QByteArray &id : shownFrames)
                file.GetFrame(id);
            const bool held = file.HasID3v2();
            file.Images().Items();
            file.Comments().Clear();
            file.SetFrame("TIT2", u"changed"_s);
            if (Error([&] { file.WriteID3v2(path); }).isEmpty()) {
                QVERIFY(
                    Content().endsWith(content.last(std::min<qsizetype>(content.size(), 400)).last(held ? 100 : 0)));
                QCOMPARE(TitleNow(), u"changed"_s);
            } else {
                QVERIFY(Content() == content);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TagsTest)
#include "TagsTest.moc"
