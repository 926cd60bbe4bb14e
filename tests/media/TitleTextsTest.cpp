#include "media/TitleTexts.h"
#include "media/MP3File.h"
#include "media/SetAttributes.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TitleTextsTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir folder;
    const QString path = FromHostPath(folder.filePath(u"a.mp3"_s));

    static QByteArray Frame(const QByteArray &id, const QByteArray &text)
    {
        return id + QByteArray(3, '\0') + static_cast<char>(text.size() + 1) + QByteArray(3, '\0') + text;
    }
    static QByteArray ID3v2(const QByteArray &artist, const QByteArray &title)
    {
        const QByteArray frames = Frame("TPE1", artist) + Frame("TIT2", title);
        return QByteArray("ID3\3\0\0\0\0\0", 9) + static_cast<char>(frames.size()) + frames;
    }
    static QByteArray ID3v1(const QByteArray &artist, const QByteArray &title)
    {
        return "TAG" + title.leftJustified(30, '\0') + artist.leftJustified(30, '\0') + QByteArray(65, '\0');
    }
    static QByteArray Ogg(const QByteArray &artist, const QByteArray &title)
    {
        const QByteArray comments = "ARTIST=" + artist + QByteArray("x\0\0\0TITLE=", 10) + title + "\1\5vorbis";
        return "\3vorbis\x1D" + comments + QByteArray(4096, 'x');
    }
    bool Write(const QByteArray &content) const
    {
        QFile file(ToHostPath(path));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

private Q_SLOTS:
    void JoinsArtistAndTitle()
    {
        const std::tuple<QByteArray, QByteArray, QString> cases[] = {
            {"The_Lanterns", "Slow, Harbour", u"The Lanterns - Slow Harbour"_s},
            {"Artist", "", u"Artist"_s},
            {"", "Title", u"Unknown Artist - Title"_s},
            {"Artist", "???", u"Artist -  "_s},
            {"", "!", u"Unknown Artist -  "_s},
            {"", "", QString()},
        };
        const QByteArray audio(500, 'x');
        for (const auto &[artist, title, text] : cases) {
            QVERIFY(Write(ID3v2(artist, title) + audio));
            QCOMPARE(ID3TitleText(path), text);
            QVERIFY(Write(audio + ID3v1(artist, title)));
            QCOMPARE(ID3TitleText(path), text);
            QVERIFY(Write(Ogg(artist, title)));
            QCOMPARE(OGGTitleText(path), text);
        }
    }

    void ID3v1FillsGapsWhole()
    {
        const std::tuple<QByteArray, QByteArray, QString> cases[] = {
            {"New", "Song", u"New - Song"_s},
            {"New", "", u"Old - Tune"_s},
            {"", "Song", u"Old - Tune"_s},
        };
        for (const auto &[artist, title, text] : cases) {
            QVERIFY(Write(ID3v2(artist, title) + QByteArray(500, 'x') + ID3v1("Old", "Tune")));
            QCOMPARE(ID3TitleText(path), text);
        }
        QVERIFY(Write(ID3v2("New", "") + QByteArray(500, 'x') + ID3v1("", "")));
        QCOMPARE(ID3TitleText(path), QString());
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

    void AttributesAreSetAndCleared()
    {
        // A host without a clearable archive attribute is asked for the others only.
        QVERIFY(Write("x"));
        const int kept = SetFileAttributes(path, AttributeNormal) ? FileAttributes(path) & AttributeArchive : 0;
        constexpr int all = AttributeReadOnly | AttributeArchive | AttributeSystem | AttributeHidden;
        // Attributes before, requests, attributes after.
        const std::tuple<int, AttributeRequests, int> cases[] = {
            {all, {}, all},
            {all, {.ReadOnly = u"CLR"_s}, all & ~AttributeReadOnly},
            {all, {.Archive = u"CLR"_s, .Hidden = u"CLR"_s}, AttributeReadOnly | AttributeSystem},
            {AttributeNormal, {.System = u"SET"_s}, AttributeSystem},
            {AttributeHidden, {u"SET"_s, u"SET"_s, u"SET"_s, u"SET"_s, u"CLR"_s}, all & ~AttributeHidden},
            {AttributeReadOnly, {u"CLR"_s, u"CLR"_s, u"CLR"_s, u"CLR"_s, u"CLR"_s}, AttributeNormal},
        };
        if (!SetFileAttributes(path, all))
            QSKIP("The file system of the temporary folder keeps no extended attributes");
        for (const auto &[before, requests, after] : cases) {
            QVERIFY(SetFileAttributes(path, before) && SetAttributes(path, requests));
            QCOMPARE(FileAttributes(path) & ~kept, kept == 0 ? after : after & ~(kept | AttributeNormal));
        }
        QVERIFY(Write("y") && !SetAttributes(path + u"gone"_s, {}));
    }
};

QTEST_GUILESS_MAIN(TitleTextsTest)
#include "TitleTextsTest.moc"
