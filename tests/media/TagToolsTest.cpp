#include "media/MP3File.h"
#include "media/TagBytes.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Other programs read what we write, and we what they write.
class TagToolsTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir folder;
    const QString hostPath = folder.filePath(u"song.mp3"_s);
    const QString path = FromHostPath(hostPath);
    // The interpreter that the distribution's modules belong to.
    const QString python = QStandardPaths::findExecutable(u"python3"_s, {u"/usr/bin"_s});

    static QByteArray Run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        return process.waitForFinished() && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
    }

    static QString Script(QStringView name) { return QStringLiteral(TEST_DATA) + u'/' + name; }

    bool HasMutagen() const { return !Run(python, {u"-c"_s, u"import mutagen; print(1)"_s}).isEmpty(); }

    QJsonObject Mutagen() const
    {
        const QByteArray text = Run(python, {Script(u"read-tags.py"), hostPath});
        return QJsonDocument::fromJson(text).object();
    }

    void PutAudio(const QByteArray &front) const
    {
        QByteArray audio;
        ReadWholeFile(FromHostPath(QStringLiteral(TEST_DATA) + u"/cbr128-mpeg1-joint-bare.mp3"_s), audio);
        WriteWholeFile(path, front + audio);
    }

    /// A file with all that the editor can put into its tags.
    void WriteEverything(int version, const QString &text) const
    {
        PutAudio(version == 4 ? Tag(4, Frame(4, "PRIV", Zeros("me~\1\xFF~\2"))) : QByteArray());
        MP3File file;
        file.ReadTags(path, false);
        for (const QByteArrayView id : {"TIT2", "TPE1", "TALB", "TCOM", "TOPE", "TCOP", "TENC", "TXXX", "USLT"})
            file.SetFrame(id, text);
        file.SetFrame("TYER", u"1997"_s);
        file.SetFrame("TRCK", u"3/12"_s);
        file.SetFrame("TCON", u"Rock"_s);
        file.SetFrame("WXXX", u"http://file.example"_s);
        file.SetFrame("WOAR", u"http://artist.example"_s);
        file.SetPreference(u"good"_s);
        file.Comments().Add(text, u"short"_s);
        file.SetTitle(u"Title 1"_s);
        file.SetTrack(3);
        file.SetGenre(17);
        file.WriteTags(path, MP3File::TagChange::Write, MP3File::TagChange::Write);
    }

private Q_SLOTS:
    void MutagenReadsOurs()
    {
        if (!HasMutagen())
            QSKIP("python3-mutagen is not installed");
        for (const int version : {3, 4}) {
            for (const QString &text : scripts) {
                WriteEverything(version, text);
                const QJsonObject tag = Mutagen();
                QCOMPARE(tag[u"version"].toString(), u"2.%1.0"_s.arg(version));
                for (const QString &key : {u"TIT2"_s, u"TPE1"_s, u"TALB"_s, u"TCOM"_s, u"TOPE"_s, u"TCOP"_s, u"TENC"_s,
                                           u"TXXX:"_s, u"USLT::eng"_s, u"COMM:short:eng"_s})
                    QCOMPARE(tag[key].toString(), text);
                QCOMPARE(tag[version == 4 ? u"TDRC"_s : u"TYER"_s].toString(), u"1997"_s);
                QCOMPARE(tag[u"TRCK"].toString() + tag[u"TCON"].toString() + tag[u"WXXX:"].toString() +
                             tag[u"WOAR:http://artist.example"].toString(),
                         u"3/12Rockhttp://file.examplehttp://artist.example"_s);
                QCOMPARE(tag[u"COMM:MusicMatch_Preference:eng"].toString(), u"good"_s);
                QCOMPARE(tag[u"private"].toString(), version == 4 ? u"[('me', [1, 255, 0, 2])]"_s : u"[]"_s);
            }
        }
    }

    void WeReadAndKeepMutagens()
    {
        if (!HasMutagen())
            QSKIP("python3-mutagen is not installed");
        for (const QString &version : {u"3"_s, u"4"_s}) {
            for (const QString &text : scripts) {
                PutAudio({});
                Run(python, {Script(u"write-tags.py"), hostPath, version, text});
                MP3File file;
                file.ReadTags(path, true);
                QVERIFY(file.HasID3v1() && file.HasID3v2());
                for (const QByteArrayView id : {"TIT2", "TPE1", "TALB", "TCOM", "TOPE", "TCOP", "TENC", "TXXX"})
                    QCOMPARE(file.GetFrame(id), text);
                QCOMPARE(file.GetFrame("USLT"), QString(text + u"\nzwei"));
                QCOMPARE(QString(file.GetFrame("TYER") + file.GetFrame("TRCK") + file.GetFrame("TCON") + file.Mood()),
                         u"19973/12Rockcalm"_s);
                QCOMPARE(QString(file.GetFrame("WXXX") + file.GetFrame("WOAR")),
                         u"http://file.examplehttp://artist.example"_s);
                QCOMPARE(file.Comments().Items().size(), 1);
                QCOMPARE(file.Comments().Items().front().Text, text);
                QCOMPARE(file.Images().Item(1).Size(), 1004);
                QCOMPARE(file.Images().Item(1).Description, text);

                const QJsonObject before = Mutagen();
                file.SetFrame("TIT2", u"changed"_s);
                file.WriteID3v2(path);
                QJsonObject after = Mutagen();
                QCOMPARE(after[u"TIT2"].toString(), u"changed"_s);
                after[u"TIT2"] = before[u"TIT2"];
                QCOMPARE(after, before);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TagToolsTest)
#include "TagToolsTest.moc"
