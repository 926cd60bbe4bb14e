#include "platform/Files.h"
#include "platform/Drives.h"
#include "playlist/FileLists.h"
#include "playlist/FileRecord.h"
#include "playlist/FolderWalk.h"
#include "playlist/M3UFile.h"
#include "playlist/PathText.h"
#include "playlist/TextFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class FilesTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory;
    QString startDirectory;
    // Inside form, without a trailing backslash.
    QString root;
    // Deleted one by one: QTemporaryDir cannot delete a name that is not valid UTF-8.
    QStringList made;

    QString MakeFile(const QString &name, const QByteArray &content = "x")
    {
        const QString path = root + u'\\' + name;
        if (!WriteWholeFile(path, content))
            qFatal("cannot write %s", qPrintable(path));
        made.append(path);
        return path;
    }
    QString MakeFolder(const QString &name)
    {
        const QString path = root + u'\\' + name;
        if (!QDir().mkpath(ToHostPath(path)))
            qFatal("cannot make %s", qPrintable(path));
        return path;
    }

private Q_SLOTS:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        root = FromHostPath(directory->path());
        startDirectory = CurrentDirectory();
    }
    void cleanup()
    {
        SetCurrentDirectory(startDirectory);
        SetDriveMappings({});
        for (const QString &path : std::as_const(made))
            DeleteFile(path);
        made.clear();
    }

    void ReadsPlaylists_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("entries");
        const QStringList two{u"a.mp3"_s, u"b.ogg"_s};
        QTest::newRow("no bytes") << QByteArray() << QStringList();
        QTest::newRow("CR LF") << QByteArray("a.mp3\r\nb.ogg\r\n") << two;
        QTest::newRow("CR alone") << QByteArray("a.mp3\rb.ogg") << two;
        QTest::newRow("LF alone") << QByteArray("a.mp3\nb.ogg\n") << two;
        QTest::newRow("mixed, empty lines") << QByteArray("\r\r\n\na.mp3\r\r\nb.ogg\n\r") << two;
        QTest::newRow("comments") << QByteArray("#EXTM3U\r\n#EXTINF:1,a.mp3\r\na.mp3\r\n#x.ogg\r\nb.ogg") << two;
        QTest::newRow("other types") << QByteArray("a.mp3\r\nc.flac\r\nmp3\r\nx.m3u\r\nlist.m3u\r\nb.ogg") << two;
        QTest::newRow("drive letter") << QByteArray("C:\\Music\\A.MP3\r\n") << QStringList{u"c:\\Music\\A.MP3"_s};
        QTest::newRow("two extensions") << QByteArray("x.mp3.wav\r\nx.wav.wav\r\n")
                                        << QStringList{u"x.mp3.wav"_s, u"x.mp3.wav"_s, u"x.wav.wav"_s};
        QTest::newRow("extension anywhere") << QByteArray("a.mp3.d\\..mp\\x") << QStringList{u"a.mp3.d\\..mp\\x"_s};
        QTest::newRow("blanks stay") << QByteArray("  a.mp3 ") << QStringList{u"  a.mp3 "_s};
        QTest::newRow("mark, UTF-8") << QByteArray("\xEF\xBB\xBF"
                                                   "a\xC3\xA9.mp3")
                                     << QStringList{u"aé.mp3"_s};
        QTest::newRow("UTF-8") << QByteArray("\xE5\xA4\x9C.wma\r\n") << QStringList{u"夜.wma"_s};
        QTest::newRow("Windows-1252") << QByteArray("caf\xE9 \x80.mp3\r\n") << QStringList{u"café €.mp3"_s};
        QByteArray garbage;
        for (int i = 0; i < 4096; ++i)
            garbage += static_cast<char>(i * 7 % 256);
        QTest::newRow("garbage") << garbage << QStringList();
        QTest::newRow("NUL bytes") << QByteArray("\0\0\0\na.mp3\nb.ogg\n\0", 17) << two;
    }
    void ReadsPlaylists()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, entries);
        QStringList list{u"before"_s};
        QCOMPARE(ReadM3UFile(MakeFile(u"list.m3u"_s, content), list), !entries.isEmpty());
        entries.prepend(u"before"_s);
        QCOMPARE(list, entries);
    }

    void ReadsLongPlaylists()
    {
        const QString longName = QString(1 << 20, u'.') + u".mp3"_s;
        QByteArray content = longName.toUtf8() + '\n';
        for (int i = 0; i < 40000; ++i)
            content += "sub/" + QByteArray::number(i) + ".mp3\n";
        QStringList list;
        QVERIFY(ReadM3UFile(MakeFile(u"list.m3u"_s, content), list));
        QCOMPARE(list.size(), 40001);
        QCOMPARE(list.first(), longName);
        QCOMPARE(list.last(), FromPlaylistLine(u"sub/39999.mp3"_s));
        QVERIFY(!ReadM3UFile(root + u"\\missing.m3u"_s, list));
        QVERIFY(!ReadM3UFile(root, list));
        QCOMPARE(list.size(), 40001);
    }

    void SavedPlaylistsReadBack()
    {
        const QString mapped = MakeFolder(u"disk"_s);
        SetDriveMappings({{u'd', ToHostPath(mapped)}});
        const QStringList paths{u"\uFEFFmark.mp3"_s,
                                u"a.mp3"_s,
                                u"#1.mp3"_s,
                                u"sub\\#1.mp3"_s,
                                u" blank .ogg"_s,
                                u"d:\\Rock\\夜 é Я.mp3"_s,
                                u"x:\\away\\a.mp3"_s,
                                u"z:\\#\\#.mp3"_s,
                                u"z:\\back\uF05Cslash.mp3"_s,
                                u"z:\\new\uF00Aline\uF00D.mp3"_s,
                                u"z:\\caf\uF0E9.mp3"_s,
                                u"z:\\a: b\\C:d.mp3"_s};
        const QString file = root + u"\\list.m3u"_s;
        QVERIFY(WritePlaylistFile(file, paths));
        QStringList read;
        QVERIFY(ReadM3UFile(file, read));
        QCOMPARE(read, paths);
    }

    void RelativePlaylistsFindTheirFiles()
    {
        MakeFolder(u"sub"_s);
        QStringList paths;
        for (const QString &name : {u"#1.ogg"_s, u"sub\\#2.ogg"_s, u"C: and d.ogg"_s, u"sub\\B:c.ogg"_s, u"C:d.ogg"_s,
                                    u"back\uF05Cslash.ogg"_s, u"\uF0E9.ogg"_s, u"new\uF00Aline.ogg"_s, u"夜.ogg"_s})
            paths.append(MakeFile(name));
        QStringList lines = paths;
        MakePathsRelative(lines, root);
        const QString file = root + u"\\list.m3u"_s;
        QVERIFY(WritePlaylistFile(file, lines));
        QVERIFY(SetCurrentDirectory(root));
        QStringList read;
        QVERIFY(ReadM3UFile(file, read));
        QStringList found;
        for (const QString &path : std::as_const(read)) {
            const FileRecord record = AnalyseFile(path);
            QCOMPARE(record.Size, 1);
            found.append(record.Folder + record.FileName);
        }
        QCOMPARE(found, paths);
    }

    void LinesReadBack()
    {
        const QString file = root + u"\\lines.txt"_s;
        const QStringList lines{u"one"_s, QString(), u" two "_s, u"é夜"_s, QString()};
        QVERIFY(WriteLinesToFile(file, lines));
        QByteArray content;
        QVERIFY(ReadWholeFile(file, content));
        QVERIFY(content.startsWith("one\r\n\r\n two \r\n") && content.endsWith("\r\n\r\n"));
        QStringList read;
        QVERIFY(ReadLinesFromFile(read, file));
        QCOMPARE(read, lines);
        QVERIFY(!ReadLinesFromFile(read, root + u"\\missing.txt"_s));
        QVERIFY(!WriteLinesToFile(root + u"\\missing\\x.txt"_s, lines));
    }

    void WalksFolders()
    {
        MakeFolder(u"b\\deep"_s);
        MakeFolder(u"A"_s);
        QFile::link(directory->path(), ToHostPath(root + u"\\b\\loop"_s));
        QStringList expected;
        for (const QString &name : {u"2.MP3"_s, u"z.mp3"_s, u"1.wav"_s, u"A\\x.wma"_s, u"b\\1.mp3"_s, u"b\\0.ogg"_s,
                                    u"b\\deep\\.mp3"_s, u"b\\deep\\\uF0E9\uF05C.mp3"_s})
            expected.append(MakeFile(name));
        MakeFile(u"cover.jpg"_s);
        MakeFile(u"mp3"_s);

        QStringList list;
        QStringList told;
        WalkFolder(root + u'\\', FileTypes(), list, true, [&told](const QString &folder) { told.append(folder); });
        QCOMPARE(list, expected);
        QCOMPARE(told, QStringList({root + u'\\', root + u"\\A"_s, root + u"\\b"_s, root + u"\\b\\deep"_s}));

        list.clear();
        WalkFolder(root, {u"*.wav"_s, u"?.mp3"_s}, list, false);
        QCOMPARE(list, QStringList({expected[2], root + u"\\?.mp3"_s, root + u"\\?.mp3"_s}));
        WalkFolder(root + u"\\missing"_s, FileTypes(), list, true);
        ListFolderFiles(root, u"*.ogg"_s, list);
        QCOMPARE(list.size(), 3);
        ListFolderFiles(root, u"*.jpg"_s, list);
        QCOMPARE(list.last(), root + u"\\*.jpg"_s);
    }

    void WalksDeepTrees()
    {
        QString name = u"d"_s;
        for (int depth = 1; depth < 1500; ++depth)
            name += u"\\d"_s;
        MakeFolder(name);
        const QString file = MakeFile(name + u"\\end.mp3"_s);
        QStringList list;
        WalkFolder(root, FileTypes(), list, true);
        QCOMPARE(list, QStringList{file});
    }

    void TellsWhatStandsAtPaths()
    {
        const QString file = MakeFile(u"A.Tar.MP3"_s);
        QStringList paths{file, root + u"\\gone.mp3"_s, root + u'\\', u"x:\\away.mp3"_s, QString()};
        QVERIFY(!RemoveMissingPaths(paths));
        QCOMPARE(paths, QStringList({file, root + u'\\', QString()}));
        QVERIFY(RemoveMissingPaths(paths));

        const PathInfo info = AnalysePath(file);
        QVERIFY(info.Valid && info.IsFile && !info.IsFolder);
        QCOMPARE(info.Extension, u".mp3"_s);
        const PathInfo folder = AnalysePath(root + u'\\');
        QVERIFY(folder.Valid && folder.IsFolder && !folder.IsFile && folder.Extension.isEmpty());
        QCOMPARE(folder.Path, root);
        for (const QString &missing : QStringList{QString(), root + u"\\gone.mp3"_s, u"x:\\away.mp3"_s}) {
            const PathInfo nothing = AnalysePath(missing);
            QVERIFY(!nothing.Valid && !nothing.IsFile && !nothing.IsFolder);
        }
    }

    void ChangesFiles()
    {
        const QString first = MakeFile(u"first"_s);
        const QString second = root + u"\\second"_s;
        QVERIFY(RenameFilePath(second, first));
        QVERIFY(!PathExists(first) && PathExists(second));
        QVERIFY(CopyFilePath(second, first));
        QVERIFY(!RenameFilePath(second, first));
        QVERIFY(DeleteFilePath(second));
        QVERIFY(!DeleteFilePath(second));
        QVERIFY(!CopyFilePath(second, first));
        QVERIFY(PathExists(first));
    }
};

QTEST_GUILESS_MAIN(FilesTest)
#include "FilesTest.moc"
