#include "media/MP3File.h"
#include "media/TagBytes.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <taglib/attachedpictureframe.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace
{
/// Every frame that the editor shows, for the order of calls.
const QList<QByteArray> shownFrames{"TIT2", "TPE1", "TALB", "TYER", "TRCK", "TCOM", "TOPE",
                                    "TCOP", "TENC", "WXXX", "USLT", "TXXX", "WOAR", "TCON"};

/// What a tag editor has no field for, as frames of a version.
QByteArrayList UnshownFrames(int version)
{
    const QByteArray flags = Zeros(version == 4 ? "\x40~" : "\x80~");
    const QByteArray grouped = Zeros(version == 4 ? "~\x40" : "~\x20");
    const QByteArray encrypted = Zeros(version == 4 ? "~\x04" : "~\x40");
    QByteArrayList frames{Frame(version, "PRIV", Zeros("owner~~\1\2\xFF\xE0\xFF"), flags),
                          Frame(version, "XYZW", Zeros("~\1\2"), grouped),
                          Frame(version, "TPE2", "\1\xFF\xFE\x3D", flags), Frame(version, "TPOS", "cipher", encrypted),
                          Frame(version, "SYLT", QByteArray(300, '\xFF'))};
    for (const char *frame :
         {"POPMa@b.example~\xC4~~~\7", "UFIDhttp://id.example~\x81\x81", "CHAPch1~~~~~~~~\1~\xFF\xFF\xFF\xFF",
          "GEOB\1text/plain~\xFF\xFE.~~~\xFF\xFE~~xyz", "TXXX~replaygain_track_gain~-7.0 dB", "TXXX~no value~",
          "TXXX\1o~r~d~~~e~r~", "USLT~engno description", "WXXX~shop~http://shop.example", "TIT3\7not a text",
          "COMM\7xxxnot a comment", "WOAShttp://source.example"})
        frames.append(Frames(version, frame));
    return frames;
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

    // Not flushed to the disk, which takes its time.
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

    /// The frames of the tag that the object now writes, as Frames takes them.
    QByteArray Written(MP3File &file) const
    {
        file.WriteID3v2(path);
        const QByteArray tag = Content().first(TagSize(Content()));
        const int bits = tag[3] == 4 ? 7 : 8;
        QByteArrayList frames;
        for (qsizetype at = 10; at < tag.size() && tag[at] != '\0';) {
            const qsizetype size = NumberOf(QByteArrayView(tag).sliced(at + 4, 4), bits);
            frames.append(tag.sliced(at, 4) + tag.sliced(at + 10, size).replace('\0', '~'));
            at += 10 + size;
        }
        return frames.join('|');
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
        const QByteArray packed = qCompress(Zeros("~packed"));
        const QByteArray extended3 = Zeros("~~~\6~~~~~~");
        const QByteArray extended4 = Zeros("~~~\x0E\1\x30\5\1\2\3\4\5\1\7");
        // The tag; the texts of title and year.
        const std::pair<QByteArray, QString> cases[] = {
            {Tag(2, Zeros("TT2~~\6~TitleTYE~~\5~1997")), u"Title|1997"_s},
            {Tag(3, Frames(3, "TIT2\1\xFF\xFE\x14\x04\x30\x04|TYER~1997") + QByteArray(50, '\0')), u"Да|1997"_s},
            {Tag(4, Frames(4, "TIT2\3\xF0\x9F\x8E\xB5~b|TDRC~1997-05-06")), u"🎵/b|1997"_s},
            // Unsynchronised: the whole tag, or each frame.
            {Tag(3, Frames(3, "TIT2~\xFF\xE0z").replace("\xFF\xE0", Zeros("\xFF~\xE0")), 0x80), u"ÿàz|"_s},
            {Tag(4, Frame(4, "TIT2", Zeros("~\xFF~\xE0z"), Zeros("~\2"))), u"ÿàz|"_s},
            {Tag(4, Frames(4, "TIT2~\xFF~\xE0z"), 0x80), u"ÿàz|"_s},
            // What is said to be unsynchronised and is not.
            {Tag(3, Frames(3, "TIT2\1\xFF\xFE\xFF~\xFF~"), 0x80), u"ÿÿ|"_s},
            {Tag(4, Frames(4, "TIT2\1\xFF\xFE\xFF~\xFF~"), 0x80), u"ÿÿ|"_s},
            // Extended headers, a footer, a group, an old id in a new tag.
            {Tag(3, extended3 + Frames(3, "TIT2~e3"), 0x40), u"e3|"_s},
            {Tag(3, QByteArray(extended3).replace(3, 2, "\x0A\x80") + "sum." + Frames(3, "TIT2~sum"), 0x40), u"sum|"_s},
            {Tag(4, extended4 + Frames(4, "TIT2~e4"), 0x40), u"e4|"_s},
            {Tag(4, Frames(4, "TIT2~foot"), 0x10) + "3DI" + QByteArray(7, '\0'), u"foot|"_s},
            {Tag(3, Frames(3, "TCP ~1") + Frame(3, "TIT2", Zeros("G~group"), Zeros("~\x20"))), u"group|"_s},
            {Tag(3, Frames(3, "TT2~~old").replace("TT2~", Zeros("TT2~")) + Frames(3, "TIT2~new")), u"new|"_s},
            // Plain sizes in a 2.4 tag: with a high bit, and where only they lead to a frame or to the padding.
            {Tag(4, Frame(3, "TENC", QByteArray(200, 'x')) + Frames(4, "TIT2~plain")), u"plain|"_s},
            {Tag(4, Frame(3, "TENC", QByteArray(300, '\0')) + Frames(4, "TIT2~plain")), u"plain|"_s},
            {Tag(4, Frame(3, "TIT2", QByteArray(300, '\0').replace(299, 1, "p")) + QByteArray(9, '\0')), u"p|"_s},
            {Tag(4, Frame(4, "TENC", QByteArray(300, 'x')) + Frames(4, "TIT2~safe")), u"safe|"_s},
            // Packed frames.
            {Tag(3, Frame(3, "TIT2", packed, Zeros("~\x80"))), u"packed|"_s},
            {Tag(3, Frame(3, "TIT2", packed.first(4) + 'G' + packed.sliced(4), Zeros("~\xA0"))), u"packed|"_s},
            {Tag(4, Frame(4, "TIT2", 'G' + Number(201, 7) + qCompress('\0' + QByteArray(200, 'p')).sliced(4),
                          Zeros("~\x49"))),
             QString(QString(200, u'p') + u'|')},
            {Tag(4, Frame(4, "TIT2", Zeros("~~~\7~length"), Zeros("~\1"))), u"length|"_s},
            // A wrong length, one that is missing, cut frames and a text that cannot be decoded make way for a new one.
            {Tag(3, Frame(3, "TIT2", QByteArray(packed).replace(3, 1, "\1"), Zeros("~\x80"))), u"|"_s},
            {Tag(4, Frame(4, "TIT2", packed, Zeros("~\x08"))), u"|"_s},
            {Tag(4, Frame(4, "TIT2", "abc", Zeros("~\x01"))), u"|"_s},
            {Tag(3, Frame(3, "TIT2", "abc", Zeros("~\x80"))), u"|"_s},
            {Tag(3, Frames(3, "TIT2\7undecoded")), u"|"_s},
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
        const char *oldIds[]{"TT2", "TP1", "TAL", "TYE", "TRK", "TCM", "TOA",
                             "TCR", "TEN", "WXX", "ULT", "TXX", "WAR", "TCO"};
        const QByteArrayList starts{"~~", "~eng~", "~~"};
        QByteArray body;
        for (qsizetype i = 0; i < shownFrames.size(); ++i) {
            const QByteArray start = i >= 9 && i < 12 ? starts[i - 9] : QByteArray(i == 12 ? "" : "~");
            const QByteArray data = Zeros(start) + shownFrames[i];
            body += oldIds[i] + Zeros("~~") + static_cast<char>(data.size()) + data;
        }
        body += Zeros("TP2~~\5~bandPIC~~\x09~JPG\3~abcPIC~~\x09~-->\3~urlPIC~~\2~xXX1~~\1zCOM~~\6~eng~c");
        MP3File file;
        Load(file, Tag(2, body));
        for (const QByteArray &id : shownFrames)
            QCOMPARE(file.GetFrame(id), QString::fromLatin1(id));
        const QByteArray written = Written(file);
        QVERIFY2(written.endsWith("|TPE2~band|APIC~image/jpeg~\3~abc|APIC~-->~\3~url|XPIC~x|XXX1z|COMM~eng~c"),
                 written.constData());
        QCOMPARE(static_cast<int>(Content()[3]), 3);
        Load(file, Tag(2, Zeros("TT2~~\3~\xFF~\xE0"), 0x80));
        QCOMPARE(file.GetFrame("TIT2"), u"ÿà"_s);
    }

    void OneLimitForWhatATagUnpacksTo()
    {
        // Four of them fill it; one that finds no room leaves it to a smaller one.
        const QByteArray large = qCompress(Zeros("~eng~") + QByteArray((4 << 20) - 5, 'x'));
        const QByteArray small = qCompress(Zeros("~t"));
        QByteArray noise(190'000, '\0');
        std::minstd_rand random(5);
        std::generate(noise.begin(), noise.end(), [&random] { return static_cast<char>('A' + random() % 26); });
        const QByteArray dense = qCompress(Zeros("~eng~") + noise);
        const QByteArray packed = Zeros("~\x80");
        const auto comments = [&](const QByteArray &content, int count) {
            return Frame(3, "COMM", content, packed).repeated(count);
        };
        const std::tuple<QByteArray, int, QString> cases[] = {{comments(large, 4), 4, QString()},
                                                              {comments(large, 50), 4, QString()},
                                                              {comments(dense, 2), 2, u"t"_s},
                                                              {comments(dense, 9), 2, u"t"_s}};
        for (const auto &[frames, count, title] : cases) {
            MP3File file;
            Load(file, Tag(3, frames + Frame(3, "TIT2", small, packed)));
            QCOMPARE(file.Comments().Count(), count);
            QCOMPARE(file.GetFrame("TIT2"), title);
        }
        const ID3v2Tag tag = ID3v2Tag::FromBytes(Tag(3, comments(large, 1)));
        QVERIFY(tag.Content(tag.Frames[0])->constData() == tag.Content(tag.Frames[0])->constData());
    }

    void TextsSurviveInEveryScript()
    {
        for (const int version : {3, 4}) {
            for (const QString &text : scripts) {
                MP3File file;
                Load(file, Tag(version, Frames(version, "TENC~x")));
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
                QCOMPARE(again.Comments().Items(), (QList<MP3Comment>{{text, text}}));
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
            const QByteArray extended = Zeros(version == 4 ? "~~~\x0E\1\x30\5\1\2\3\4\5\1\7" : "~~~\6~\1~~~~");
            const QByteArray mine = Frames(version, "TXXX~~mine|WXXX~~mine");
            const QByteArray unshown = UnshownFrames(version).join();
            const QByteArray title = Frame(version, "TIT2", Zeros("~old"), Zeros("\x40~"));
            Put(Tag(version, extended + title + unshown + mine + QByteArray(20, '\0'), 0x60).replace(4, 1, "\1") +
                audio);
            MP3File file;
            file.ReadTags(path, false);
            file.Images().Clear();
            file.Comments().Clear();
            for (const QByteArray &id : shownFrames)
                file.SetFrame(id, u"a new text that does not fit where the old one stood: "_s + QLatin1StringView(id));
            file.WriteID3v2(path);
            const QByteArray written = Content();
            for (const QByteArray &frame : UnshownFrames(version))
                QVERIFY2(written.contains(frame), frame.toHex().constData());
            QVERIFY(!written.contains(mine));
            QVERIFY(written.endsWith(audio));
            QCOMPARE(written.sliced(4, 2), "\1\x60");
            QCOMPARE(written.sliced(written.indexOf("TIT2") + 8, 2), Zeros("\x40~"));
            if (version == 4) {
                // Without the checksum.
                QVERIFY(written.sliced(10).startsWith(Zeros("~~~\x08\1\x10\1\7TIT2")));
            } else {
                const qsizetype padding = TagSize(written) - written.lastIndexOf("TCON", TagSize(written)) - 4;
                QCOMPARE(written.sliced(10, 6), Zeros("~~~\6~\1"));
                QCOMPARE(written.sliced(16, 4), Number(static_cast<quint32>(padding), 8));
            }

            // Emptied again, what is left are the frames that were never shown.
            for (const QByteArray &id : shownFrames)
                file.SetFrame(id, {});
            file.WriteID3v2(path);
            QVERIFY(Content().contains(unshown));
        }
    }

    void FramesFollowTheirRules()
    {
        // Version, frames, what is shown, what is set ("shown" for the frame that is shown), the frames then.
        const std::tuple<int, QByteArray, QByteArray, QString, QString, QByteArray> cases[] = {
            // One text, one frame, in the place of the first one.
            {3, "TPE1~x|TIT2~a|TALB~y|TIT2~b", "TIT2", u"a"_s, u"c"_s, "TPE1~x|TIT2~c|TALB~y"},
            {3, "TIT2\7?|TPE1~x|TIT2~b|TALB~y", "TIT2", u"b"_s, u"c"_s, "TPE1~x|TIT2~c|TALB~y"},
            {3, "TPE1~x|TIT2~a|TIT2~b", "TIT2", u"a"_s, u""_s, "TPE1~x"},
            {3, "TPE1~x|TIT2~a|TIT2~b", "TIT2", u"a"_s, u"a"_s, "TPE1~x|TIT2~a|TIT2~b"},
            {3, "WOARhttp://a|WOARhttp://b", "WOAR", u"http://a"_s, u"http://c"_s, "WOARhttp://c|WOARhttp://b"},
            {4, "TPE1~x", "WOAR", u""_s, u"http://x.example/ÿж"_s, "TPE1~x|WOARhttp://x.example/\xFF%D0%B6"},
            // What stays the same keeps an encoding and a form that we would never choose, and so does what is beside
            // it.
            {3, "TIT2\1\xFF\xFE.~~~", "TIT2", u"."_s, u"."_s, "TIT2\1\xFF\xFE.~~~"},
            {3, "TCON~(17)(Pop)", "TCON", u"Rock/Pop"_s, u"Rock/Pop"_s, "TCON~(17)(Pop)"},
            {3, "USLT\1deu\xFE\xFF~~\xFE\xFF~z", "USLT", u"z"_s, u"z"_s, "USLT\1deu\xFE\xFF~~\xFE\xFF~z"},
            {3, "USLT\1deu\xFE\xFF~~\xFE\xFF~z", "USLT", u"z"_s, u"new"_s, "USLT~deu~new"},
            {3, "TPE1\1\xFF\xFE~\xD8", "TPE1", QString(QChar(0xD800)), QString(QChar(0xD800)), "TPE1\1\xFF\xFE~\xD8"},
            // The year has two ids, of which the tag's version knows one.
            {3, "TYER~1999|TPE1~x|TDRC~2001-05", "TYER", u"1999"_s, u"2002"_s, "TYER~2002|TPE1~x"},
            {4, "TYER~1999|TPE1~x|TDRC~2001-05", "TYER", u"2001"_s, u"2002"_s, "TPE1~x|TDRC~2002"},
            {3, "TPE1~x|TDRC~2001-05|TALB~y", "TYER", u"2001"_s, u"2002"_s, "TPE1~x|TYER~2002|TALB~y"},
            {4, "TDRC~2001-05|TYER~2001", "TYER", u"2001"_s, u"2001"_s, "TDRC~2001-05|TYER~2001"},
            {4, "TPE1~x|TDRC~2001-05|TYER~2001", "TYER", u"2001"_s, u""_s, "TPE1~x"},
            // A frame with a description stands in for one without, where it is asked to.
            {3, "TXXX~gain~-7 dB", "TXXX", u"-7 dB"_s, u""_s, "TXXX~gain~-7 dB"},
            {3, "TXXX~gain~-7 dB", "TXXX", u"-7 dB"_s, u"mine"_s, "TXXX~gain~-7 dB|TXXX~~mine"},
            {3, "TXXX~gain~-7 dB|TPE1~x", "TXXX", u"-7 dB"_s, u"shown-1 dB"_s, "TXXX~gain~-1 dB|TPE1~x"},
            {3, "TXXX~gain~-7 dB|TPE1~x", "TXXX", u"-7 dB"_s, u"shown"_s, "TPE1~x"},
            {3, "TXXX~gain~-7|TXXX~~a|TXXX~~b", "TXXX", u"a"_s, u"showna"_s, "TXXX~gain~-7|TXXX~~a|TXXX~~b"},
            {3, "TXXX~gain~-7|TXXX~~a|TXXX~~b", "TXXX", u"a"_s, u"c"_s, "TXXX~gain~-7|TXXX~~c"},
            {3, "USLT~deu~a|USLT~eng~b|USLT~deu~c", "USLT", u"a"_s, u"d"_s, "USLT~deu~d|USLT~eng~b"},
            {4, "WXXX~shop~http://s", "WXXX", u"http://s"_s, u"http://m"_s, "WXXX~shop~http://s|WXXX~~http://m"},
            {4, "WXXX\3\xD0\x96~http://s", "WXXX", u"http://s"_s, u"shownhttp://m"_s, "WXXX\3\xD0\x96~http://m"},
        };
        for (const auto &[version, frames, id, before, text, after] : cases) {
            MP3File file;
            Load(file, Tag(version, Frames(version, frames)));
            QCOMPARE(file.GetFrame(id), before);
            const bool described = frames.startsWith("TXXX~gain~-7 dB") || frames.startsWith("WXXX");
            QCOMPARE(file.IsDescribed(id), described);
            if (text.startsWith(u"shown"))
                file.SetShownFrame(id, text.sliced(5));
            else
                file.SetFrame(id, text);
            QCOMPARE(Written(file), after);
        }

        const QPair<QByteArray, QString> genres[]{
            {"17", u"Rock"_s},     {"(17)Rock", u"Rock"_s},           {"(4)Eurodisco", u"Disco/Eurodisco"_s},
            {"((x)", u"(x)"_s},    {"(RX)(CR)", u"Remix/Cover"_s},    {"255", u"255"_s},
            {"(open", u"(open"_s}, {"(Live) take", u"(Live) take"_s}, {"8~My own", u"Jazz/My own"_s},
            {"-1", u"-1"_s},       {"(191)(192)", u"Psybient/192"_s}};
        for (const auto &[stored, shown] : genres) {
            MP3File file;
            Load(file, Tag(4, Frames(4, "TCON~" + stored)));
            QCOMPARE(file.GetFrame("TCON"), shown);
        }
        QCOMPARE(MP3File::GenreList().split(u'|').size(), 192);
        QCOMPARE(MP3File::GenreList().section(u'|', 17, 17), u"Rock"_s);
    }

    void CommentsAndPicturesKeepTheirRows()
    {
        const QByteArray before = "COMM~engone~1|TPE1~x|COMM~xxxtwo~2|COMM~engMusicMatch_Mood~m|COMM~fra~3";
        const std::pair<QList<MP3Comment>, QByteArray> cases[] = {
            {{{u"one"_s, u"1"_s}, {u"two"_s, u"2"_s}, {{}, u"3"_s}}, before},
            {{{u"one"_s, u"1"_s}, {u"two"_s, u"zwei"_s}, {{}, u"3"_s}},
             "COMM~engone~1|COMM~engtwo~zwei|TPE1~x|COMM~engMusicMatch_Mood~m|COMM~fra~3"},
            {{{u"one"_s, u"I"_s}, {u"two"_s, u"2"_s}}, "COMM~engone~I|TPE1~x|COMM~xxxtwo~2|COMM~engMusicMatch_Mood~m"},
            {{{{}, u"3"_s}, {u"one"_s, u"1"_s}, {u"new"_s, u"4"_s}},
             "TPE1~x|COMM~engMusicMatch_Mood~m|COMM~fra~3|COMM~engone~1|COMM~engnew~4"},
            {{}, "TPE1~x|COMM~engMusicMatch_Mood~m"},
        };
        for (const auto &[rows, after] : cases) {
            MP3File file;
            Load(file, Tag(3, Frames(3, before)));
            // What was added and cleared again leaves nothing.
            file.Comments().Add(u"passing"_s, u"by"_s);
            file.Comments().Clear();
            QCOMPARE(file.Comments().Count(), 0);
            for (const MP3Comment &row : rows)
                file.Comments().Add(row.Text, row.Description);
            QCOMPARE(file.Comments().Items(), rows);
            QCOMPARE(Written(file), after);
        }
        // The named values are comments that no row shows; of each there is one.
        MP3File file;
        Load(file, Tag(3, Frames(3, "COMM~xxxMusicMatch_Tempo~a|TPE1~x|COMM~engMusicMatch_Tempo~b")));
        file.SetTempo(file.Tempo() + u"!"_s);
        file.SetSituation(u"s"_s);
        file.SetPreference(u"p"_s);
        QCOMPARE(Written(file), "COMM~engMusicMatch_Tempo~a!|TPE1~x|COMM~engMusicMatch_Situation~s|"
                                "COMM~engMusicMatch_Preference~p");
        file.SetTempo({});
        QCOMPARE(QString(file.Tempo() + file.Mood() + file.Situation() + file.Preference()), u"sp"_s);
        QCOMPARE(file.Comments().Count(), 0);

        // A picture without a word on what it is says what it shows all the same.
        Load(file, Tag(3, Frames(3, "APIC~~\3~\xFF\xD8\xFF")));
        QVERIFY(file.Images().Item(1).Type == 3 && file.Images().Item(1).Data == "\xFF\xD8\xFF");
        // Pictures too; one that nobody can decode comes back as it was.
        const QByteArray broken = "APIC~PNG~\3damaged~no picture";
        Load(file, Tag(3, Frames(3, broken + "|TPE1~x|APIC~image/gif~\4second~GIF8")));
        QCOMPARE(file.Images().Count(), 2);
        const MP3Image old = file.Images().Item(1);
        QCOMPARE(QString(old.Description + u' ' + old.MIMEType), u"damaged image/png"_s);
        QVERIFY(old.Picture().isNull() && old.Size() == 10);
        QVERIFY(file.Images().Item(3).Data.isEmpty() && file.Images().Item(0).Data.isEmpty());
        file.Images().Clear();
        QCOMPARE(file.Images().Count(), 0);
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(folder.filePath(u"tmp.bmp"_s)));
        const QString bitmap = FromHostPath(folder.filePath(u"tmp.bmp"_s));
        file.Images().Add(bitmap, u"Обложка"_s);
        for (const auto &[data, description] :
             {std::pair("no picture"_ba, u"damaged"_s), {"\x89PNG"_ba, u"p"_s}, {"\xFF\xD8\xFF"_ba, u"j"_s}}) {
            QVERIFY(WriteWholeFile(bitmap, data));
            file.Images().Add(bitmap, description);
        }
        QVERIFY(QFile::remove(folder.filePath(u"tmp.bmp"_s)));
        QVERIFY(!Error([&] { file.Images().Add(bitmap, u"gone"_s); }).isEmpty());
        const QByteArray rest = "|APIC~image/png~~p~\x89PNG|APIC~image/jpeg~~j~\xFF\xD8\xFF|TPE1~x";
        QVERIFY(Written(file).endsWith(QByteArray('|' + broken + rest)));
        file.ReadTags(path, false);
        QCOMPARE(file.Images().Item(1).Picture().convertToFormat(QImage::Format_RGB32), image);
        QCOMPARE(file.Images().Item(1).MIMEType, u"image/bmp"_s);
        TagLib::MPEG::File other(QFile::encodeName(hostPath).constData(), false);
        const auto *added =
            dynamic_cast<TagLib::ID3v2::AttachedPictureFrame *>(other.ID3v2Tag()->frameList("APIC").front());
        QCOMPARE(added->type(), TagLib::ID3v2::AttachedPictureFrame::FrontCover);
        QCOMPARE(QString::fromStdString(added->description().to8Bit(true)), u"Обложка"_s);
    }

    void RoomFitsTheTag()
    {
        // The padding; whether the tag keeps its room.
        for (const auto &[padding, kept] : {std::pair(0, false), {1, true}, {65'537, true}, {65'538, false}}) {
            MP3File file;
            Load(file, Tag(3, Frames(3, "TIT2~x") + QByteArray(padding, '\0')));
            const qsizetype before = Content().size();
            file.SetFrame("TIT2", u"yy"_s);
            file.WriteID3v2(path);
            QCOMPARE(Content().size() == before, kept);
            // Otherwise the audio stays at its place in a block of the disk, with room for changes to come.
            QCOMPARE((before - Content().size()) % 4096, 0);
            QVERIFY(kept || (Content().size() < audio.size() + 9000 && TagSize(Content()) > 1024));
        }
        // What looks like an ID3v1 tag is a part of the ID3v2 tag, or of an APE tag.
        const QByteArray frame = Frame(3, "PRIV", "TAG" + QByteArray(125, 'x'));
        MP3File file;
        for (const QByteArray &content :
             QList<QByteArray>{audio + "APE" + "TAGEX" + QByteArray(123, 'x'), Tag(3, frame)}) {
            Put(content);
            file.ReadTags(path, false);
            QVERIFY(!file.HasID3v1());
            file.RemoveID3v1(path);
            QVERIFY(Content() == content);
        }
        file.SetFrame("TIT2", u"y"_s);
        file.WriteTags(path, MP3File::TagChange::Remove, MP3File::TagChange::Write);
        QVERIFY(Content().contains(frame));
    }

    void ID3v1FieldsAreCut()
    {
        MP3File file;
        Load(file, {});
        QVERIFY(!file.HasID3v1() && !file.HasID3v2());
        QCOMPARE(file.Title(), QString());
        const auto read = [&] {
            file.WriteID3v1(path);
            file.ReadTags(path, false);
            const QString numbers = QString::number(file.Track()) + u' ' + QString::number(file.Genre());
            return QStringList{file.Title(), file.Artist(), file.Album(), file.Year(), file.Comment(), numbers}.join(
                u'|');
        };
        file.SetTitle(u"A title of more than thirty characters"_s);
        file.SetArtist(u"Béla Жук"_s);
        file.SetYear(u"19975"_s);
        file.SetComment(QString(30, u'c'));
        file.SetGenre(254);
        QCOMPARE(read(), u"A title of more than thirty ch|Béla ???||1997|cccccccccccccccccccccccccccccc|0 254"_s);
        QCOMPARE(Content().size(), audio.size() + 128);
        file.SetTrack(255);
        file.SetAlbum(u"al"_s);
        QCOMPARE(read(), u"A title of more than thirty ch|Béla ???|al|1997|cccccccccccccccccccccccccccc|255 254"_s);
        // Not left open: an open file is not replaced everywhere.
        QCOMPARE(TagLib::MPEG::File(QFile::encodeName(hostPath).constData(), false).ID3v1Tag()->track(), 255U);
        file.SetTrack(0);
        file.SetTitle({});
        QCOMPARE(read(), u"|Béla ???|al|1997|cccccccccccccccccccccccccccc|0 254"_s);
        file.RemoveID3v1(path);
        QCOMPARE(Content(), audio);
        // Fields that nobody changes keep their bytes, blanks and all.
        const QByteArray blanks = "TAG" + QByteArray(124, ' ') + '\x01';
        Put(audio + blanks);
        file.ReadTags(path, false);
        QCOMPARE(read(), u"|||||0 1"_s);
        QVERIFY(Content() == audio + blanks);
    }

    void ReusedObjectForgetsTheFileBefore()
    {
        MP3File file;
        Put(Tag(3, Frames(3, "TIT2~x")) + audio + "TAG" + QByteArray(125, 'y'));
        file.ReadTags(path, true);
        QVERIFY(file.HasID3v1() && file.HasID3v2() && file.SongLength() > 1 && file.FileSize() == Content().size());
        for (const bool reset : {true, false}) {
            Put("no audio at all");
            if (reset)
                file.ResetFile(path);
            else
                file.ReadTags(path, true);
            QVERIFY(!file.HasID3v1() && !file.HasID3v2() && file.FileSize() == (reset ? 0 : 15));
            QCOMPARE(QString(file.GetFrame("TIT2") + file.Title() + file.Bitrate()), QString());
        }
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
            file.SetFrame("TIT2", u"Титул"_s + QString(5000, u'x'));
            const auto change = file.HasID3v1() ? MP3File::TagChange::Write : MP3File::TagChange::Remove;
            const QString error = Error([&] { file.WriteTags(path, change, MP3File::TagChange::Write); });
            if (name == u"tag-beyond-end.mp3") {
                QVERIFY(error.contains(u"more bytes than the file holds"));
                QVERIFY(Content() == before);
                continue;
            }
            QCOMPARE(error, QString());
            QVERIFY2(Content().endsWith(before.sliced(TagSize(before))), qPrintable(name));
            file.ReadTags(path, true);
            QCOMPARE(file.SongLength(), length);
            file.RemoveID3v2(path);
            QVERIFY2(before.endsWith(Content()), qPrintable(name));
            file.ReadTags(path, false);
            QVERIFY(!file.HasID3v2());
        }
        // A footer that is claimed and not there, which only version 2.4 could have.
        for (const int version : {3, 4}) {
            const QByteArray tag = Tag(version, Frames(version, "TIT2~kept"), 0x10);
            MP3File file;
            Load(file, tag);
            file.SetFrame("TPE1", u"new"_s);
            file.WriteID3v2(path);
            QVERIFY(Content().endsWith(audio));
            file.ReadTags(path, false);
            QCOMPARE(QString(file.GetFrame("TIT2") + file.GetFrame("TPE1")), u"keptnew"_s);
            Put(tag + audio);
            file.RemoveID3v2(path);
            QCOMPARE(Content(), audio);
        }
    }

    void DamagedTagsAreNotWrittenOver()
    {
        const QByteArray title = Frames(3, "TIT2~kept");
        const QByteArray hidden = QByteArray(20, '\0') + "hidden" + QByteArray(20, '\0');
        const QString noFrame = u"bytes that belong to no frame"_s;
        const QString extended = u"damaged extended header"_s;
        // The tag, the reason, and whether its size is known to fit, so that it can be removed.
        const std::tuple<QByteArray, QString, bool> cases[] = {
            {Tag(3, title + Frames(3, "TPE1~x").replace(7, 1, "\x7F")), u"a frame longer than the tag"_s, true},
            {Tag(3, title + "no frame at all, just bytes"), noFrame, true},
            {Tag(3, title + hidden), noFrame, true},
            {Tag(3, Tag(3, title)), noFrame, true},
            {Tag(3, title).replace(7, 1, "\x7F"), u"more bytes than the file holds"_s, false},
            {Tag(3, title).replace(7, 1, "\xFF"), u"size cannot be read"_s, false},
            {Tag(5, title), u"unknown version"_s, true},
            {Tag(3, Zeros("~~\1\6~~~~~~") + title, 0x40), extended, true},
            {Tag(3, "short", 0x40), extended, true},
            {Tag(4, Zeros("~~~\x09\1\x20\5") + title, 0x40), extended, true},
            {Tag(4, Zeros("~~~\x07\1~\1") + title, 0x40).replace(13, 1, "\x7F"), extended, true},
            {Tag(2, Zeros("TT2~~\5~kept"), 0x40), u"compressed"_s, true},
            {Tag(3, title.repeated(5000)), u"more frames than can be kept"_s, true},
        };
        for (const auto &[tag, reason, removable] : cases) {
            MP3File file;
            Load(file, tag);
            const QByteArray before = Content();
            QVERIFY(file.HasID3v2() || reason[0] == u's');
            if (tag.startsWith(Tag(3, title).first(4)) && tag.sliced(10).startsWith(title) && reason[0] != u's')
                QCOMPARE(file.GetFrame("TIT2"), u"kept"_s);
            QVERIFY2(Error([&] { file.WriteID3v2(path); }).contains(reason), qPrintable(reason));
            QVERIFY(Content() == before);
            // The other tag is written all the same.
            file.SetTitle(u"v1"_s);
            QVERIFY(Error([&] {
                        file.WriteTags(path, MP3File::TagChange::Write, MP3File::TagChange::Write);
                    }).contains(reason));
            QVERIFY(Content().startsWith(before) && Content().size() == before.size() + 128);
            QCOMPARE(Error([&] { file.RemoveID3v2(path); }).contains(reason), !removable);
            QVERIFY(removable ? Content().startsWith(audio.first(99)) : Content().startsWith(before));
            // Nor is a file written that has changed since it was read.
            const DiskFacts asRead = DiskFactsOf(path);
            Put(audio + "more");
            QVERIFY(Error([&] {
                        file.WriteTags(path, MP3File::TagChange::Write, MP3File::TagChange::Remove, asRead);
                    }).endsWith(u"was changed meanwhile."));
            QVERIFY(Content() == audio + "more");
            // Nor is what was read of it written over a good tag.
            const QByteArray good = Tag(4, Frames(4, "TIT2~other")) + audio;
            Put(good);
            QVERIFY(Error([&] { file.WriteID3v2(path); }).contains(reason) && Content() == good);
        }
    }

    void RandomDamageHarmsNothing()
    {
        std::mt19937 random(20240101);
        const QByteArray sources[] = {DataFile(u"tag-id3v23.mp3"_s), DataFile(u"tag-id3v24-unsynchronised.mp3"_s),
                                      Tag(4, UnshownFrames(4).join()) + audio.first(2000),
                                      Tag(2, Zeros("PIC~~\x0C~JPG\3d~abcdef")) + audio.first(500)};
        int written = 0;
        for (int round = 0; round < 300; ++round) {
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
            file.Images().Items();
            file.Comments().Clear();
            file.SetFrame("TIT2", u"changed"_s);
            if (Error([&] { file.WriteID3v2(path); }).isEmpty()) {
                // All that is no tag, also where there is none, stands behind the new one.
                QVERIFY(Content().sliced(TagSize(Content())) == content.sliced(TagSize(content)));
                file.ReadTags(path, false);
                QCOMPARE(file.GetFrame("TIT2"), u"changed"_s);
                ++written;
            } else {
                QVERIFY(Content() == content);
            }
        }
        QVERIFY(written > 50 && written < 250);
    }
};

QTEST_GUILESS_MAIN(TagsTest)
#include "TagsTest.moc"
