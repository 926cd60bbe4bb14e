#include "platform/Drives.h"
#include "platform/Files.h"
#include "playlist/FileRecord.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
// MPEG 1 Layer III, 44100 Hz, joint stereo: 128 or 192 kbit/s.
const QByteArray Frame128 = QByteArray("\xFF\xFB\x90\x64", 4) + QByteArray(413, '\0');
const QByteArray Frame192 = QByteArray("\xFF\xFB\xB0\x64", 4) + QByteArray(622, '\0');
} // namespace

class AnalyseFileTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory;
    QString startDirectory;
    QString root;

private Q_SLOTS:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        root = FromHostPath(directory->path()) + u'\\';
        startDirectory = CurrentDirectory();
    }
    void cleanup() { SetCurrentDirectory(startDirectory); }

    void ReadsStreamData_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("bitrate");
        QTest::addColumn<int>("length");
        QTest::newRow("constant rate") << Frame128.repeated(96) << u"128 Kbit"_s << 3;
        QTest::newRow("variable rate") << QByteArray(Frame128 + Frame192).repeated(48) << u"160 VBR"_s << 3;
    }
    void ReadsStreamData()
    {
        QFETCH(QByteArray, content);
        const QString path = root + u"a.MP3"_s;
        QVERIFY(WriteWholeFile(path, content));
        const FileRecord record = AnalyseFile(path);
        QVERIFY(record.Valid);
        QCOMPARE(record.FileName, u"a.MP3"_s);
        QCOMPARE(record.Folder, root);
        QCOMPARE(record.Size, content.size());
        QTEST(int(record.Length), "length");
        QTEST(record.BitrateText, "bitrate");
        QCOMPARE(QStringList({record.FileType, record.LayerText, record.SampleRateText, record.ModeText}),
                 QStringList({u"MPEG 1.0"_s, u"Layer III"_s, u"44100 Hz"_s, u"Joint Stereo"_s}));
    }

    void TellsTypes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("type");
        QTest::newRow("ogg") << u"a.Ogg"_s << QByteArray("none") << true << u"OGG Vorbis"_s;
        QTest::newRow("wav") << u"a.wav"_s << QByteArray("RIFF") << true << u"WAV File"_s;
        QTest::newRow("vqf") << u"a.vqf"_s << QByteArray("x") << true << u"VQF File"_s;
        QTest::newRow("wma") << u"a.wma"_s << QByteArray("x") << true << QString();
        QTest::newRow("unknown") << u"noextension"_s << QByteArray("xyz") << true << QString();
        QTest::newRow("empty") << u"a.wav"_s << QByteArray() << true << u"WAV File"_s;
        QTest::newRow("mp3 without audio") << u"a.mp3"_s << QByteArray("no audio") << false << QString();
        QTest::newRow("empty mp3") << u"a.mp3"_s << QByteArray() << false << QString();
    }
    void TellsTypes()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QVERIFY(WriteWholeFile(root + name, content));
        const FileRecord record = AnalyseFile(root + name);
        QTEST(record.Valid, "valid");
        QTEST(record.FileType, "type");
        QCOMPARE(record.Size, content.size());
        QCOMPARE(record.Length, 0);
        QCOMPARE(record.Folder + record.FileName, root + name);
        QCOMPARE(record.LayerText + record.BitrateText + record.SampleRateText + record.ModeText, QString());
    }

    void FoldersAndMissingFilesHaveNoSize()
    {
        for (const QString &name : {u"folder.mp3"_s, u"folder.ogg"_s, u"gone.mp3"_s, u"gone.ogg"_s}) {
            if (name.startsWith(u"folder"_s))
                QVERIFY(QDir().mkdir(ToHostPath(root + name)));
            const FileRecord record = AnalyseFile(root + name);
            QVERIFY(!record.Valid);
            QCOMPARE(record.Size, 0);
            QCOMPARE(record.Folder + record.FileName, root + name);
        }
    }

    void NameIsCutFromFolder()
    {
        QVERIFY(QDir().mkdir(ToHostPath(root + u"a.wav"_s)));
        const FileRecord record = AnalyseFile(root + u"a.wav\\a.wav"_s);
        QCOMPARE(record.Folder, root + u'\\');
        QCOMPARE(record.FileName, u"a.wav"_s);
    }

    void RelativePathsCountFromCurrentDirectory_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("name") << u"a.ogg"_s;
        QTest::newRow("in a folder") << u"sub\\a.ogg"_s;
        QTest::newRow("missing") << u"gone.mp3"_s;
        QTest::newRow("missing in a folder") << u"sub\\gone.ogg"_s;
    }
    void RelativePathsCountFromCurrentDirectory()
    {
        QFETCH(QString, path);
        QVERIFY(QDir().mkdir(ToHostPath(root + u"sub"_s)));
        QVERIFY(WriteWholeFile(root + u"a.ogg"_s, "x") && WriteWholeFile(root + u"sub\\a.ogg"_s, "x"));
        QVERIFY(SetCurrentDirectory(root));
        const FileRecord record = AnalyseFile(path);
        QCOMPARE(record.Folder + record.FileName, root + path);
        QCOMPARE(record.Size, path.contains(u"gone"_s) ? 0 : 1);
    }

    void NetworkPathsStayAbsolute()
    {
        QCOMPARE(AnalyseFile(u"\\\\server\\Share\\a.ogg"_s).Folder, u"\\\\server\\Share\\"_s);
    }
};

QTEST_GUILESS_MAIN(AnalyseFileTest)
#include "AnalyseFileTest.moc"
