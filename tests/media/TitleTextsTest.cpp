#include "media/TitleTexts.h"
#include "media/MP3File.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TitleTextsTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir folder;
    const QString path = FromHostPath(folder.filePath(u"a.mp3"_s));

    static QByteArray Ogg(const QByteArray &artist, const QByteArray &title)
    {
        const QByteArray comments = "ARTIST=" + artist + QByteArray("x\0\0\0TITLE=", 10) + title + "\1\5vorbis";
        return "\3vorbis\x1D" + comments + QByteArray(4096, 'x');
    }
    bool Write(const QByteArray &content) const { return WriteWholeFile(path, content); }
    /// The title text of a file with these tags, "artist|title" each; empty for none.
    QString TextOf(const QString &id3v2, const QString &id3v1) const
    {
        Write(QByteArray(500, 'x'));
        MP3File file;
        if (!id3v2.isEmpty()) {
            file.SetFrame("TPE1", id3v2.section(u'|', 0, 0));
            file.SetFrame("TIT2", id3v2.section(u'|', 1));
            file.WriteID3v2(path);
        }
        if (!id3v1.isEmpty()) {
            file.SetArtist(id3v1.section(u'|', 0, 0));
            file.SetTitle(id3v1.section(u'|', 1));
            file.WriteID3v1(path);
        }
        return ID3TitleText(path);
    }

private Q_SLOTS:
    void JoinsArtistAndTitle()
    {
        const std::pair<QString, QString> cases[] = {
            {u"The_Lanterns|Slow, Harbour"_s, u"The Lanterns - Slow Harbour"_s},
            {u"Artist|"_s, u"Artist"_s},
            {u"|Title"_s, u"Unknown Artist - Title"_s},
            {u"Artist|???"_s, u"Artist -  "_s},
            {u"|!"_s, u"Unknown Artist -  "_s},
            {u"|"_s, QString()},
        };
        for (const auto &[tag, text] : cases) {
            QCOMPARE(TextOf(tag, {}), text);
            QCOMPARE(TextOf({}, tag), text);
            QVERIFY(Write(Ogg(tag.section(u'|', 0, 0).toUtf8(), tag.section(u'|', 1).toUtf8())));
            QCOMPARE(OGGTitleText(path), text);
        }
    }

    void ID3v1FillsGapsWhole()
    {
        QCOMPARE(TextOf(u"New|Song"_s, u"Old|Tune"_s), u"New - Song"_s);
        QCOMPARE(TextOf(u"New|"_s, u"Old|Tune"_s), u"Old - Tune"_s);
        QCOMPARE(TextOf(u"|Song"_s, u"Old|Tune"_s), u"Old - Tune"_s);
        QCOMPARE(TextOf(u"New|"_s, u"|"_s), QString());
    }

    void UnreadableFilesHaveNone()
    {
        for (const QString &name : QStringList{FromHostPath(folder.path()), path + u"gone"_s, QString()}) {
            MP3File file;
            QVERIFY(!GetID3Tag(name, file));
            QCOMPARE(ID3TitleText(name), QString());
            QCOMPARE(OGGTitleText(name), QString());
        }
        QVERIFY(Write("neither"));
        QCOMPARE(OGGTitleText(path), QString());
    }
};

QTEST_GUILESS_MAIN(TitleTextsTest)
#include "TitleTextsTest.moc"
