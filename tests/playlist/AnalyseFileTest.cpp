#include "platform/Drives.h"
#include "platform/Files.h"
#include "playlist/FileRecord.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class AnalyseFileTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir directory;
    const QString root = FromHostPath(directory.path()) + u'\\';

private Q_SLOTS:
    void ReadsStreamData()
    {
        // MPEG 1 Layer III, 44100 Hz, joint stereo: 128 and 192 kbit/s.
        const QByteArray frame128 = QByteArray("\xFF\xFB\x90\x64", 4) + QByteArray(413, '\0');
        const QByteArray frame192 = QByteArray("\xFF\xFB\xB0\x64", 4) + QByteArray(622, '\0');
        const std::pair<QByteArray, QString> cases[] = {{frame128.repeated(96), u"128 Kbit"_s},
                                                        {QByteArray(frame128 + frame192).repeated(48), u"160 VBR"_s}};
        for (const auto &[content, rate] : cases) {
            QVERIFY(WriteWholeFile(root + u"a.MP3"_s, content));
            const FileRecord record = AnalyseFile(root + u"a.MP3"_s);
            QVERIFY(record.Valid);
            QCOMPARE(record.FileName, u"a.MP3"_s);
            QCOMPARE(record.Folder, root);
            QCOMPARE(record.Size, content.size());
            QCOMPARE(record.Length, 3);
            QCOMPARE(QStringList({record.FileType, record.LayerText, record.SampleRateText, record.ModeText}),
                     QStringList({u"MPEG 1.0"_s, u"Layer III"_s, u"44100 Hz"_s, u"Joint Stereo"_s}));
            QCOMPARE(record.BitrateText, rate);
        }
    }

    void TellsTypes()
    {
        const std::tuple<QString, QByteArray, bool, QString> cases[] = {
            {u"a.Ogg"_s, "none", true, u"OGG Vorbis"_s}, {u"a.wav"_s, "", true, u"WAV File"_s},
            {u"a.vqf"_s, "x", true, u"VQF File"_s},      {u"a.wma"_s, "x", true, QString()},
            {u"noextension"_s, "xyz", true, QString()},  {u"a.mp3"_s, "no audio", false, QString()},
            {u"empty.mp3"_s, "", false, QString()},
        };
        for (const auto &[name, content, valid, type] : cases) {
            QVERIFY(WriteWholeFile(root + name, content));
            const FileRecord record = AnalyseFile(root + name);
            QCOMPARE(record.Valid, valid);
            QCOMPARE(record.FileType, type);
            QCOMPARE(record.Size, content.size());
            QCOMPARE(record.Length, 0);
            QCOMPARE(record.Folder + record.FileName, root + name);
            QCOMPARE(record.LayerText + record.BitrateText + record.SampleRateText + record.ModeText, QString());
        }
    }

    void FoldersAndMissingFilesHaveNoSize()
    {
        QVERIFY(EnsureFolder(root + u"folder.mp3"_s) && EnsureFolder(root + u"folder.ogg"_s));
        for (const QString &name : {u"folder.mp3"_s, u"folder.ogg"_s, u"gone.mp3"_s, u"gone.ogg"_s}) {
            const FileRecord record = AnalyseFile(root + name);
            QVERIFY(!record.Valid && record.Size == 0);
            QCOMPARE(record.Folder + record.FileName, root + name);
        }
    }

    void FoldersAreCutFromPaths()
    {
        QCOMPARE(AnalyseFile(root + u"a.wav\\a.wav"_s).Folder, root + u'\\');
        QCOMPARE(AnalyseFile(u"\\\\server\\Share\\a.ogg"_s).Folder, u"\\\\server\\Share\\"_s);
        const QString startDirectory = CurrentDirectory();
        QVERIFY(SetCurrentDirectory(root));
        QCOMPARE(AnalyseFile(u"sub\\gone.mp3"_s).Folder, root + u"sub\\"_s);
        QVERIFY(SetCurrentDirectory(startDirectory));
        // A run of rows: neighbours in one folder, names that are cut out of it, a drive, a root.
        QVERIFY(EnsureFolder(root + u"f.wav") && WriteWholeFile(root + u"f.wav\\b.wav", "abc"));
        QVERIFY(WriteWholeFile(root + u"b.wav", "ab"));
        RowFolders folders(root.chopped(1));
        const std::tuple<QString, QString, qint64> cases[] = {
            {u"b.wav"_s, root, 2},
            {u"gone.wav"_s, root, 0},
            {u"f.wav\\b.wav"_s, root + u"f.wav\\", 3},
            {u"f.wav\\f.wav"_s, root, 0},
            {u"f.wav\\e.wav"_s, root + u"f.wav\\", 0},
            {u"f.wav\\c:d.wav"_s, u"f.wav\\"_s, 0},
            {u"f.wav\\b.wav"_s, root + u"f.wav\\", 3},
            {root.sliced(2) + u"b.wav", root, 2},
            {u"\\gone"_s, root.first(2) + u'\\', 0},
            {u"Q:\\x\\y:z.wma"_s, u"q:\\x\\"_s, 0},
            {u"lists\\l"_s, root + u"ists\\", 0},
            {u"lists\\k"_s, root + u"lists\\", 0},
        };
        for (const auto &[path, folder, size] : cases) {
            const FileRecord record = AnalyseFile(path, folders);
            QCOMPARE(record.Folder, folder);
            QCOMPARE(record.Size, size);
        }
    }
};

QTEST_GUILESS_MAIN(AnalyseFileTest)
#include "AnalyseFileTest.moc"
